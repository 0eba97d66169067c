// What makes the phone's program of the linker's: bad input is named, and the tables are laid out as the
// loader wants.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "device/pe/functions.h"
#include "device/pe/imports.h"
#include "device/pe/program.h"
#include "device/pe/resources.h"

namespace {

using pe::BadFile;
using pe::Bytes;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

Bytes LinkedProgram() {
    std::ifstream file(KORA_DEVICE_ELF, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Complaint(const std::function<void()>& action) {
    try {
        action();
    } catch (const BadFile& error) {
        return error.what();
    }
    return "no complaint";
}

std::string ElfComplaint(const Bytes& file) {
    return Complaint([&] { static_cast<void>(pe::ReadElf(file, "UI.elf")); });
}

TEST(Converter, AnotherFileIsRefusedByName) {
    EXPECT_EQ(ElfComplaint(Bytes(100)), "UI.elf: is no ELF file");
    EXPECT_EQ(ElfComplaint({}), "UI.elf: is no ELF file");
}

TEST(Converter, AProgramForAnotherProcessorIsRefused) {
    Bytes file = LinkedProgram();
    pe::Put16(file, 18, 62);
    EXPECT_EQ(ElfComplaint(file), "UI.elf: is no linked program for a 32-bit little-endian ARM");
}

TEST(Converter, AFileThatIsCutOffAnywhereIsRefusedAndNeverReadBeyondItsEnd) {
    const Bytes whole = LinkedProgram();
    ASSERT_GT(whole.size(), 10000u);
    for (std::size_t size = 0; size < whole.size(); size += whole.size() / 97) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_THAT(ElfComplaint(cut), HasSubstr("UI.elf: ")) << size;
    }
}

TEST(Converter, TheSameInputGivesTheSameBytes) {
    const pe::ElfImage image = pe::ReadElf(LinkedProgram(), "UI.elf");
    EXPECT_EQ(pe::MakeProgram(image, {}, "UI.elf"), pe::MakeProgram(image, {}, "UI.elf"));
}

pe::ElfSymbol Slot(const std::string& name, std::uint32_t address) {
    return {"__import:" + name, address, 4, false, true};
}

TEST(Converter, SlotsOfADllLieSideBySideInTheOrderOfTheirAddresses) {
    pe::ElfImage image;
    image.symbols = {Slot("A:Second", 0x20004), Slot("B:Other", 0x2000C), Slot("A:First", 0x20000)};
    const auto dlls = pe::ImportsOf(image, "UI.elf");
    ASSERT_EQ(dlls.size(), 2u);
    EXPECT_EQ(dlls[0].name, "A.dll");
    EXPECT_THAT(dlls[0].functions, ElementsAre("First", "Second"));
    EXPECT_EQ(dlls[1].firstSlot, 0x2000Cu);
}

TEST(Converter, AGapAmongTheSlotsOfADllIsRefused) {
    pe::ElfImage image;
    image.symbols = {Slot("A:First", 0x20000), Slot("A:Second", 0x20008)};
    EXPECT_EQ(Complaint([&] { static_cast<void>(pe::ImportsOf(image, "UI.elf")); }),
              "UI.elf: the slots of A.dll have a gap before A:Second");
}

TEST(Converter, AFunctionsRowTellsPrologLengthAndHandler) {
    // ARM IHI: bits 0 to 7 the prolog, 8 to 29 the length, both in instructions; 30 says ARM, 31 a handler.
    const Bytes rows = pe::FunctionTable({{0x11000, 5, 2, false}, {0x11014, 3, 1, true}});
    const pe::Reader read(rows, "rows");
    EXPECT_EQ(read.U32(0), 0x11000u);
    EXPECT_EQ(read.U32(4), 0x40000502u);
    EXPECT_EQ(read.U32(8), 0x11014u);
    EXPECT_EQ(read.U32(12), 0xC0000301u);
}

TEST(Converter, APrologIsWhatSavesRegistersAndMakesRoom) {
    pe::ElfImage image;
    pe::ElfSection code = {".text", 0x11000, 16, Bytes(16), false, true};
    pe::Put32(code.bytes, 0, 0xE92D4010);   // stmdb sp!, {r4, lr}
    pe::Put32(code.bytes, 4, 0xE24DD008);   // sub sp, sp, #8
    pe::Put32(code.bytes, 8, 0xE3A00001);   // mov r0, #1
    pe::Put32(code.bytes, 12, 0xE24DD008);  // no prolog any more
    image.sections = {code};
    image.symbols = {{"Function", 0x11000, 16, true, true}, {"__guarded:Function", 0x11000, 0, false, true}};
    const auto rows = pe::FunctionsOf(image, "UI.elf");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].prolog_instructions, 2u);
    EXPECT_EQ(rows[0].length_instructions, 4u);
    EXPECT_TRUE(rows[0].guarded);
}

TEST(Converter, ThumbCodeIsRefusedByTheNameOfItsFunction) {
    pe::ElfImage image;
    image.sections = {{".text", 0x11000, 16, Bytes(16), false, true}};
    image.symbols = {{"Function", 0x11001, 4, true, true}};
    EXPECT_EQ(Complaint([&] { static_cast<void>(pe::FunctionsOf(image, "UI.elf")); }),
              "UI.elf: \"Function\" is no ARM code");
}

// One entry of a .res file: its sizes, a type and a name as numbers, and the data.
void AddResource(Bytes& file, std::uint16_t type, std::uint16_t name, const std::string& data) {
    pe::Add32(file, static_cast<std::uint32_t>(data.size()));
    pe::Add32(file, 32);
    for (const std::uint16_t number : {std::uint16_t{0xFFFF}, type, std::uint16_t{0xFFFF}, name})
        pe::Add16(file, number);
    pe::Add32(file, 0);
    pe::Add16(file, 0);
    pe::Add16(file, 0x409);
    pe::Add32(file, 0);
    pe::Add32(file, 0);
    file.insert(file.end(), data.begin(), data.end());
    pe::Pad(file, 4);
}

Bytes EmptyResources() {
    Bytes file;
    AddResource(file, 0, 0, "");
    return file;
}

TEST(Converter, ResourcesAreSortedByTypeThenNameAndTheirDataIsFound) {
    Bytes file = EmptyResources();
    AddResource(file, 6, 2, "later");
    AddResource(file, 6, 1, "early");
    AddResource(file, 2, 9, "first");
    const Bytes section = pe::ResourceSection(file, "ui.res", 0x5000);
    const pe::Reader read(section, "section");
    EXPECT_EQ(read.U16(14), 2u) << "two types";
    EXPECT_EQ(read.U32(16), 2u);
    EXPECT_EQ(read.U32(24), 6u);
    const std::uint32_t names = read.U32(28) & 0x7FFFFFFF;
    EXPECT_EQ(read.U32(names + 16), 1u);
    const std::uint32_t languages = read.U32(names + 20) & 0x7FFFFFFF;
    EXPECT_EQ(read.U32(languages + 16), 0x409u);
    const std::uint32_t row = read.U32(languages + 20);
    const Bytes data = read.Part(read.U32(row) - 0x5000, read.U32(row + 4));
    EXPECT_EQ(std::string(data.begin(), data.end()), "early");
}

TEST(Converter, AResourceThatIsThereTwiceIsRefused) {
    Bytes file = EmptyResources();
    AddResource(file, 6, 1, "one");
    AddResource(file, 6, 1, "two");
    EXPECT_THAT(Complaint([&] { static_cast<void>(pe::ResourceSection(file, "ui.res", 0)); }),
                HasSubstr("ui.res: holds a resource twice"));
}

TEST(Converter, ResourcesThatAreCutOffAreRefused) {
    Bytes file = EmptyResources();
    AddResource(file, 6, 1, "some text");
    file.resize(file.size() - 8);
    EXPECT_THAT(Complaint([&] { static_cast<void>(pe::ResourceSection(file, "ui.res", 0)); }),
                HasSubstr("ui.res: ends at byte"));
    EXPECT_THAT(Complaint([&] { static_cast<void>(pe::ResourceSection(Bytes(8), "ui.res", 0)); }),
                HasSubstr("is no .res file"));
}

}  // namespace
