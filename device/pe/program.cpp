#include "device/pe/program.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "device/pe/functions.h"
#include "device/pe/imports.h"
#include "device/pe/resources.h"

namespace pe {
namespace {

constexpr std::uint32_t kImageBase = 0x10000, kPage = 0x1000, kFilePage = 0x200;
constexpr std::uint32_t kPeAt = 0x80, kOptionalAt = kPeAt + 24, kOptionalSize = 224, kSectionRow = 40;
constexpr std::uint32_t kMachineArm = 0x01C0, kSubsystemCeGui = 9, kMajor = 5, kMinor = 2;
// Runs, and at its own address too; no line numbers, no symbols; 32 bits.
constexpr std::uint32_t kCharacteristics = 0x0002 | 0x0004 | 0x0008 | 0x0100;
constexpr std::uint32_t kStack = 0x10000, kHeap = 0x100000;
constexpr std::uint32_t kCode = 0x60000020, kConstants = 0x40000040, kData = 0xC0000040,
                        kDiscarded = 0x02000000;
enum Directory { kImport = 1, kResource = 2, kException = 3, kFixup = 5, kImportSlots = 12 };

struct Section {
    std::string name;
    std::uint32_t rva = 0, size = 0, flags = 0;
    Bytes bytes;
};

// What stands at an offset of a header, in two bytes or in four.
struct Field {
    std::uint32_t at, bytes, value;
};

void PutFields(Bytes& file, std::uint32_t from, std::initializer_list<Field> fields) {
    for (const Field& field : fields) (field.bytes == 2 ? Put16 : Put32)(file, from + field.at, field.value);
}

class Builder {
  public:
    Builder(const ElfImage& image, const Bytes& resources, std::string name)
        : image_(image), name_(std::move(name)), words_(image.absoluteWords), directories_(16) {
        TakeSections();
        AddImports();
        AddFunctions();
        if (!resources.empty()) AddResources(resources);
        AddFixups();
    }

    [[nodiscard]] Bytes File() const {
        const std::uint32_t headers =
            RoundUp(kOptionalAt + kOptionalSize + kSectionRow * sections_.size(), kFilePage);
        if (headers > kPage) Fail("has too many sections");
        Bytes file(headers);
        PutHeaders(file, headers);
        std::uint32_t row = kOptionalAt + kOptionalSize;
        for (const Section& section : sections_) {
            PutSectionRow(file, row, section);
            file.insert(file.end(), section.bytes.begin(), section.bytes.end());
            Pad(file, kFilePage);
            row += kSectionRow;
        }
        return file;
    }

  private:
    [[noreturn]] void Fail(const std::string& what) const { throw BadFile(name_ + ": " + what); }

    // What begins on a page begins a section of the file; what follows within one belongs to it.
    void TakeSections() {
        for (const ElfSection& part : image_.sections) {
            if (part.address < kImageBase + kPage) Fail("\"" + part.name + "\" lies where the headers go");
            const std::uint32_t rva = part.address - kImageBase;
            if (rva % kPage == 0 || sections_.empty()) {
                if (rva % kPage != 0) Fail("\"" + part.name + "\" does not begin on a page");
                const std::uint32_t flags = part.code ? kCode : part.writable ? kData : kConstants;
                sections_.push_back({part.name, rva, 0, flags, {}});
            }
            Section& section = sections_.back();
            if (part.writable && section.flags != kData)
                Fail("\"" + part.name + "\" is written to, and shares a page with \"" + section.name + "\"");
            section.size = rva + part.size - section.rva;
            if (part.bytes.empty()) continue;
            section.bytes.resize(rva - section.rva);
            section.bytes.insert(section.bytes.end(), part.bytes.begin(), part.bytes.end());
        }
        if (sections_.empty()) Fail("holds nothing");
    }

    [[nodiscard]] std::uint32_t NextRva() const {
        return RoundUp(sections_.back().rva + sections_.back().size, kPage);
    }

    void Append(const char* name, std::uint32_t flags, Bytes bytes, Directory directory) {
        const std::uint32_t rva = NextRva();
        const auto size = static_cast<std::uint32_t>(bytes.size());
        directories_[directory] = {rva, size};
        sections_.push_back({name, rva, size, flags, std::move(bytes)});
    }

    void PutWord(std::uint32_t address, std::uint32_t value) {
        for (Section& section : sections_) {
            const std::uint32_t at = address - kImageBase - section.rva;
            if (address - kImageBase < section.rva || at + 4 > section.bytes.size()) continue;
            Put32(section.bytes, at, value);
            return;
        }
        Fail("has an import slot outside its sections");
    }

    void AddImports() {
        const std::vector<ImportedDll> dlls = ImportsOf(image_, name_);
        if (dlls.empty()) Fail("imports nothing");
        std::vector<std::vector<std::uint32_t>> slots;
        Bytes directory = ImportDirectory(dlls, NextRva(), kImageBase, slots);
        std::uint32_t last = 0;
        for (std::size_t i = 0; i < dlls.size(); ++i) {
            for (std::size_t j = 0; j < slots[i].size(); ++j) {
                last = dlls[i].firstSlot + 4 * static_cast<std::uint32_t>(j);
                PutWord(last, slots[i][j]);
            }
        }
        const std::uint32_t first = dlls.front().firstSlot;
        directories_[kImportSlots] = {first - kImageBase, last + 8 - first};
        Append(".idata", kConstants, std::move(directory), kImport);
    }

    void AddFunctions() {
        const std::vector<FunctionRow> rows = FunctionsOf(image_, name_);
        const std::uint32_t begin = NextRva() + kImageBase;
        for (std::size_t i = 0; i < rows.size(); ++i)
            words_.push_back(begin + 8 * static_cast<std::uint32_t>(i));
        Append(".pdata", kConstants, FunctionTable(rows), kException);
    }

    void AddResources(const Bytes& resources) {
        Append(".rsrc", kConstants, ResourceSection(resources, "the resources", NextRva()), kResource);
    }

    // PE format, "The .reloc Section": blocks of a page each, a row of 16 bits a word; an even number of
    // rows.
    void AddFixups() {
        constexpr std::uint32_t kHighLow = 3U << 12;
        std::sort(words_.begin(), words_.end());
        Bytes bytes;
        for (auto word = words_.begin(); word != words_.end();) {
            const std::uint32_t page = (*word - kImageBase) / kPage * kPage;
            const std::size_t block = bytes.size();
            Add32(bytes, page);
            Add32(bytes, 0);
            for (; word != words_.end() && *word - kImageBase - page < kPage; ++word)
                Add16(bytes, kHighLow | (*word - kImageBase - page));
            Pad(bytes, 4);
            Put32(bytes, block + 4, static_cast<std::uint32_t>(bytes.size() - block));
        }
        Append(".reloc", kConstants | kDiscarded, std::move(bytes), kFixup);
    }

    void PutHeaders(Bytes& file, std::uint32_t headers) const {
        std::memcpy(file.data(), "MZ", 2);
        Put32(file, 0x3C, kPeAt);
        std::memcpy(file.data() + kPeAt, "PE\0\0", 4);
        std::uint32_t code = 0, data = 0;
        for (const Section& section : sections_) {
            std::uint32_t& sum = section.flags == kCode ? code : data;
            sum += RoundUp(section.bytes.size(), kFilePage);
        }
        const auto sections = static_cast<std::uint32_t>(sections_.size());
        const auto directories = static_cast<std::uint32_t>(directories_.size());
        PutFields(file, kPeAt,
                  {
                      {4, 2, kMachineArm},
                      {6, 2, sections},
                      {20, 2, kOptionalSize},
                      {22, 2, kCharacteristics},
                  });
        PutFields(file, kOptionalAt,
                  {
                      {0, 2, 0x10B},
                      {4, 4, code},
                      {8, 4, data},
                      {16, 4, image_.entry - kImageBase},
                      {20, 4, sections_.front().rva},
                      {24, 4, sections > 1 ? sections_[1].rva : 0},
                      {28, 4, kImageBase},
                      {32, 4, kPage},
                      {36, 4, kFilePage},
                      {40, 2, kMajor},
                      {42, 2, kMinor},
                      {48, 2, kMajor},
                      {50, 2, kMinor},
                      {56, 4, NextRva()},
                      {60, 4, headers},
                      {68, 2, kSubsystemCeGui},
                      {72, 4, kStack},
                      {76, 4, kPage},
                      {80, 4, kHeap},
                      {84, 4, kPage},
                      {92, 4, directories},
                  });
        for (std::uint32_t i = 0; i < directories; ++i)
            PutFields(file, kOptionalAt + 96 + 8 * i,
                      {{0, 4, directories_[i].rva}, {4, 4, directories_[i].size}});
    }

    static void PutSectionRow(Bytes& file, std::uint32_t at, const Section& section) {
        std::memcpy(file.data() + at, section.name.data(), std::min<std::size_t>(section.name.size(), 8));
        const std::uint32_t begin = section.bytes.empty() ? 0 : static_cast<std::uint32_t>(file.size());
        PutFields(file, at,
                  {
                      {8, 4, section.size},
                      {12, 4, section.rva},
                      {16, 4, RoundUp(section.bytes.size(), kFilePage)},
                      {20, 4, begin},
                      {36, 4, section.flags},
                  });
    }

    struct Place {
        std::uint32_t rva = 0, size = 0;
    };

    const ElfImage& image_;
    std::string name_;
    std::vector<std::uint32_t> words_;
    std::vector<Section> sections_;
    std::vector<Place> directories_;
};

}  // namespace

Bytes MakeProgram(const ElfImage& image, const Bytes& resources, const std::string& name) {
    return Builder(image, resources, name).File();
}

}  // namespace pe
