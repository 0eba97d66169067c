// What would not work on the phone does not get through: each of these is compiled and linked, or looked at,
// as the phone's program is.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/device/disassembly.h"
#include "tests/device/own_folder.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

// What a command says, as one text.
std::string Output(const std::string& command) {
    std::string text;
    for (const std::string& line : device::OutputOf(command)) text += line + "\n";
    return text;
}

class Refusals : public ::testing::Test {
  protected:
    device::CFolder folder;

    std::string Path(const char* name) const { return folder.Path(name); }

    // What the compiler says of this source, compiled as the application is; by the build's own command.
    std::string Compile(const std::string& source) const {
        std::ofstream(Path("tried.cpp")) << source;
        std::string command =
            Output("ninja -C '" KORA_DEVICE_BUILD
                   "' -t commands tuner/CMakeFiles/app_tuner.dir/frequency.cpp.obj | tail -n 1");
        command = command.substr(0, command.find(" -MD "));
        return Output("cd '" KORA_DEVICE_BUILD "' && " + command + " -o '" + Path("tried.o") + "' -c '" +
                      Path("tried.cpp") + "'");
    }

    // What the linker says when it is linked against the device's stubs alone.
    std::string Link() const {
        return Output(
            "ld.lld -e Tried --defsym=__aeabi_unwind_cpp_pr0=0 "
            "--defsym=__aeabi_unwind_cpp_pr1=0 --target2=rel -o '" +
            Path("tried.elf") + "' '" + Path("tried.o") + "' '" + KORA_DEVICE_BUILD "/device/stubs.o'");
    }
};

TEST_F(Refusals, WhatTheDeviceHasIsLinked) {
    EXPECT_EQ(Compile("#include <windows.h>\n"
                      "extern \"C\" __attribute__((visibility(\"default\"))) int Tried();\n"
                      "int Tried() { return GetSystemMetrics(0); }\n"),
              "");
    EXPECT_THAT(Link(), Not(HasSubstr("error")));
}

TEST_F(Refusals, ACallThatTheDeviceLacksIsNotLinked) {
    EXPECT_EQ(Compile("#include <windows.h>\n"
                      "extern \"C\" int Tried();\n"
                      "int Tried() { return GetConsoleWindow() != nullptr; }\n"),
              "");
    EXPECT_THAT(Link(), HasSubstr("undefined symbol: GetConsoleWindow"));
}

TEST_F(Refusals, WideFormattingWithACountOfItsOwnIsNotLinked) {
    EXPECT_EQ(Compile("#include <cstddef>\n"
                      "#include <cwchar>\n"
                      "extern \"C\" int Tried(wchar_t* text, std::size_t count);\n"
                      "int Tried(wchar_t* text, std::size_t count) { return std::swprintf(text, count, "
                      "L\"%d\", 7); }\n"),
              "");
    // What the function of the headers is made of, and nothing else, is missing.
    const std::string said = Link();
    EXPECT_THAT(said, HasSubstr("undefined symbol: _vsnwprintf"));
    EXPECT_EQ(said.find("undefined symbol"), said.rfind("undefined symbol")) << said;
}

TEST_F(Refusals, AnInstructionOfALaterProcessorIsSeen) {
    std::ofstream(Path("tried.s"))
        << "    .arch armv5te\n    .arm\n    .globl Tried\nTried:\n    clz r0, r1\n    blx r0\n";
    ASSERT_EQ(
        Output("clang --target=armv5te-none-eabi -c '" + Path("tried.s") + "' -o '" + Path("tried.o") + "'"),
        "");
    EXPECT_THAT(device::Disassemble(Path("tried.o")).beyond, SizeIs(2));
}

TEST_F(Refusals, EveryKindOfInstructionThatCameAfterTheProcessorIsSeen) {
    const char* const kLater[] = {
        // version 5
        "blx r0", "blxne r0", "blx Tried", "bkpt #1", "clz r0, r1", "clzeq r0, r1",
        "cdp2 p1, 1, c2, c3, c4, 5", "ldc2 p1, c2, [r3]", "stc2 p1, c2, [r3]", "mcr2 p1, 1, r2, c3, c4, 5",
        "mrc2 p1, 1, r2, c3, c4, 5",
        // version 5TE
        "ldrd r0, r1, [r2]", "ldrdne r0, r1, [r2]", "strd r0, r1, [r2]", "pld [r0]", "mcrr p1, 2, r3, r4, c5",
        "mrrc p1, 2, r3, r4, c5", "qadd r0, r1, r2", "qsub r0, r1, r2", "qdadd r0, r1, r2",
        "qdsub r0, r1, r2", "smulbb r0, r1, r2", "smlatb r0, r1, r2, r3", "smlalbt r0, r1, r2, r3",
        "smulwb r0, r1, r2", "smlawt r0, r1, r2, r3",
        // version 6
        "rev r0, r1", "uxtb r0, r1", "sxtah r0, r1, r2", "ldrex r0, [r1]", "strex r0, r1, [r2]",
        "uadd8 r0, r1, r2", "usat r0, #3, r1", "ssat r0, #3, r1", "sel r0, r1, r2", "pkhbt r0, r1, r2",
        "smlad r0, r1, r2, r3", "smmul r0, r1, r2", "umaal r0, r1, r2, r3", "usad8 r0, r1, r2", "setend be",
        "cpsid i",
        // version 7
        "movw r0, #1", "movt r0, #1", "bfc r0, #1, #2", "ubfx r0, r1, #2, #3", "mls r0, r1, r2, r3", "dmb sy",
        "ldrht r0, [r1], #0", "pli [r0]", "nop", "wfi", "udiv r0, r1, r2"};
    std::ofstream source(Path("tried.s"));
    source << "    .syntax unified\n    .arch armv7ve\n    .arm\n    .globl Tried\nTried:\n";
    for (const char* line : kLater) source << "    " << line << "\n";
    source.close();
    ASSERT_EQ(
        Output("arm-none-eabi-as -march=armv7ve '" + Path("tried.s") + "' -o '" + Path("tried.o") + "'"), "");
    const device::Disassembly code = device::Disassemble(Path("tried.o"));
    EXPECT_EQ(code.instructions, std::size(kLater));
    EXPECT_THAT(code.beyond, SizeIs(std::size(kLater)));
}

TEST_F(Refusals, ARecordOfAnotherSizeIsNotCompiled) {
    const std::string records = "#include \"device/runtime/records.cpp\"\n";
    EXPECT_EQ(Compile(records), "");
    // A member more at the end of the file dialog's record.
    EXPECT_THAT(Compile("#define lpTemplateName lpTemplateName; void* pLater\n" + records),
                HasSubstr("static_assert failed"));
}

}  // namespace
