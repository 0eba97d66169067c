// What the phone's loader would look at: headers, sections, imports, fixups, the table of functions, and that
// no instruction is beyond the phone's processor.
#include "tests/device/disassembly.h"
#include "tests/device/program_file.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <set>

namespace {

using device::FileSection;
using device::ProgramFile;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;
using Names = std::set<std::string>;

constexpr std::uint32_t kWritable = 0x80000000, kRunnable = 0x20000000;
constexpr std::uint32_t kMostCode = 128 * 1024;

const ProgramFile& Program() {
    static const ProgramFile program(KORA_DEVICE_PROGRAM);
    return program;
}

Names Listed(const std::string& name) {
    std::ifstream file(std::string(KORA_SOURCE_DIR "/tests/data/device-exports/") + name + ".txt");
    EXPECT_TRUE(file) << name;
    Names names;
    for (std::string line; std::getline(file, line);) names.insert(line);
    return names;
}

TEST(DeviceProgram, ItIsAWindowsCeProgramForArm) {
    const ProgramFile& program = Program();
    EXPECT_EQ(program.machine, 0x01C0);
    EXPECT_EQ(program.subsystem, 9);
    EXPECT_EQ(program.subsystemMajor, 5);
    EXPECT_EQ(program.subsystemMinor, 2);
    EXPECT_EQ(program.osMajor, 5);
    EXPECT_EQ(program.osMinor, 2);
    EXPECT_EQ(program.characteristics & 0x0103, 0x0102) << "runs, 32 bits, its fixups are there";
    EXPECT_EQ(program.base, 0x10000u);
}

TEST(DeviceProgram, AReaderThatNobodyHereWroteSeesTheSame) {
    const std::string program = KORA_DEVICE_PROGRAM;
    const auto lines =
        device::OutputOf("llvm-readobj --file-headers --sections --coff-imports '" + program + "'");
    EXPECT_THAT(lines, ::testing::Contains("  Machine: IMAGE_FILE_MACHINE_ARM (0x1C0)"));
    EXPECT_THAT(lines, ::testing::Contains("  Subsystem: IMAGE_SUBSYSTEM_WINDOWS_CE_GUI (0x9)"));
    std::size_t imports = 0, sections = 0;
    for (const std::string& line : lines) {
        imports += line.rfind("  Symbol: ", 0) == 0 ? 1 : 0;
        sections += line.rfind("    Name: ", 0) == 0 ? 1 : 0;
    }
    EXPECT_EQ(imports, Program().imports.size());
    EXPECT_EQ(sections, Program().sections.size());
}

TEST(DeviceProgram, SectionsLieOnPagesOneBehindTheOtherAndNoneIsBothWrittenAndRun) {
    std::uint32_t end = 0x1000;
    for (const FileSection& section : Program().sections) {
        EXPECT_EQ(section.rva % 0x1000, 0u) << section.name;
        EXPECT_GE(section.rva, end) << section.name;
        EXPECT_NE(section.flags & (kWritable | kRunnable), kWritable | kRunnable) << section.name;
        end = section.rva + section.size;
    }
    EXPECT_LE(end, Program().imageSize);
    const FileSection& code = Program().Section(".text");
    EXPECT_GE(Program().entry, code.rva);
    EXPECT_LT(Program().entry, code.rva + code.size);
}

TEST(DeviceProgram, ItsCodeIsSmall) {
    EXPECT_LE(Program().Section(".text").size, kMostCode);
    EXPECT_GT(Program().Section(".text").size, kMostCode / 4) << "the application is in it";
}

TEST(DeviceProgram, ItImportsOnlyWhatTheSixDllsOffer) {
    const std::map<std::string, std::vector<std::string>> lists = {
        {"COREDLL.dll", {"coredll"}},   {"AYGSHELL.dll", {"aygshell", "shell-helpers"}},
        {"COMMCTRL.dll", {"commctrl"}}, {"COMMDLG.dll", {"commdlg"}},
        {"OLE32.dll", {"ole32"}},       {"OLEAUT32.dll", {"oleaut32"}}};
    Names missing;
    for (const auto& import : Program().imports) {
        const auto list = lists.find(import.dll);
        ASSERT_NE(list, lists.end()) << import.dll;
        const bool offered =
            std::any_of(list->second.begin(), list->second.end(),
                        [&](const std::string& name) { return Listed(name).count(import.function) != 0; });
        if (!offered) missing.insert(import.dll + ": " + import.function);
    }
    EXPECT_THAT(missing, IsEmpty());
    EXPECT_GT(Program().imports.size(), 150u);
}

// The shell library exports these on the phone without a name of their own in the lists; by which one a phone
// has them is not known.
TEST(DeviceProgram, NineFunctionsOfTheShellLibraryAreTakenOnTrust) {
    Names open;
    for (const auto& import : Program().imports) {
        if (Listed("shell-helpers").count(import.function) != 0) open.insert(import.function);
    }
    EXPECT_EQ(open, Listed("shell-helpers"));
    EXPECT_EQ(open.size(), 9u);
}

TEST(DeviceProgram, FixupsPointAtWordsThatHoldAnAddressOfTheImage) {
    const ProgramFile& program = Program();
    EXPECT_GT(program.fixups.size(), 1000u);
    EXPECT_TRUE(std::is_sorted(program.fixups.begin(), program.fixups.end()));
    EXPECT_EQ(std::adjacent_find(program.fixups.begin(), program.fixups.end()), program.fixups.end());
    for (const std::uint32_t rva : program.fixups) {
        ASSERT_EQ(rva % 4, 0u);
        ASSERT_GE(program.Word(rva), program.base + 0x1000) << rva;
        ASSERT_LE(program.Word(rva), program.base + program.imageSize) << rva;
    }
}

TEST(DeviceProgram, TheTableOfFunctionsIsSortedAndCoversTheEntry) {
    const ProgramFile& program = Program();
    std::uint32_t end = 0;
    bool entry = false;
    for (const device::UnwindRow& row : program.functions) {
        ASSERT_GE(row.begin, end);
        ASSERT_TRUE(row.arm);
        ASSERT_LE(row.prolog, row.length);
        end = row.begin + 4 * row.length;
        entry = entry || row.begin == program.base + program.entry;
    }
    EXPECT_TRUE(entry);
    EXPECT_GT(program.functions.size(), 300u);
}

TEST(DeviceProgram, TheCabinetHoldsTheProgramAndWhatTheInstallerDoesWithIt) {
    const auto names = device::OutputOf("gcab -t '" KORA_DEVICE_BUILD "/Kora.cab'");
    EXPECT_THAT(names, ::testing::UnorderedElementsAre("_setup.xml", "UI.exe"));
}

TEST(DeviceProgram, NoInstructionIsBeyondTheProcessor) {
    const device::Disassembly code = device::Disassemble(KORA_DEVICE_ELF);
    EXPECT_THAT(code.beyond, IsEmpty());
    EXPECT_GT(code.instructions, 15000u);
}

}  // namespace
