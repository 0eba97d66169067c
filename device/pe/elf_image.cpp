#include "device/pe/elf_image.h"

#include <algorithm>
#include <array>
#include <set>

namespace pe {
namespace {

constexpr std::uint32_t kMagic = 0x464C457F;
constexpr std::uint16_t kExecutable = 2, kArm = 40;
constexpr std::uint32_t kSymbolTable = 2, kNoBits = 8, kRelocations = 9, kRelocationsWithAddend = 4;
constexpr std::uint32_t kWritten = 1, kMapped = 2, kCode = 4;
constexpr std::uint16_t kUndefined = 0, kFirstReserved = 0xFF00;
constexpr unsigned kFunction = 2;

// ARM IHI 0044, 4.6.1. Only words that hold an address as it is have to change when the image moves.
// clang-format off
constexpr std::array<std::uint8_t, 2> kAbsolute = {2 /* ABS32 */, 38 /* TARGET1 */};
constexpr std::array<std::uint8_t, 9> kRelative = {
    0 /* NONE */, 1 /* PC24 */, 3 /* REL32 */, 28 /* CALL */, 29 /* JUMP24 */, 40 /* V4BX */, 41 /* TARGET2 */,
    42 /* PREL31 */, 10 /* THM_CALL */};
// clang-format on

struct Header {
    std::uint32_t name, type, flags, address, offset, size, link, info, entrySize;
};

class Parser {
  public:
    Parser(const Bytes& file, const std::string& name) : read_(file, name) {
        if (file.size() < 52 || read_.U32(0) != kMagic) read_.Fail("is no ELF file");
        if (file[4] != 1 || file[5] != 1 || read_.U16(16) != kExecutable || read_.U16(18) != kArm)
            read_.Fail("is no linked program for a 32-bit little-endian ARM");
        image_.entry = read_.U32(24);
        ReadHeaders();
        ReadSections();
        ReadSymbols();
        ReadRelocations();
    }
    [[nodiscard]] ElfImage Take() { return std::move(image_); }

  private:
    void ReadHeaders() {
        const std::size_t table = read_.U32(32), each = read_.U16(46), count = read_.U16(48);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = table + i * each;
            headers_.push_back({read_.U32(at), read_.U32(at + 4), read_.U32(at + 8), read_.U32(at + 12),
                                read_.U32(at + 16), read_.U32(at + 20), read_.U32(at + 24),
                                read_.U32(at + 28), read_.U32(at + 36)});
        }
        const std::size_t names = read_.U16(50);
        if (names >= headers_.size()) read_.Fail("has no names for its sections");
        names_ = headers_[names].offset;
    }

    void ReadSections() {
        for (const Header& header : headers_) {
            if ((header.flags & kMapped) == 0 || header.size == 0) continue;
            ElfSection section = {read_.Text(names_ + header.name),
                                  header.address,
                                  header.size,
                                  {},
                                  (header.flags & kWritten) != 0,
                                  (header.flags & kCode) != 0};
            if (header.type != kNoBits) section.bytes = read_.Part(header.offset, header.size);
            image_.sections.push_back(std::move(section));
        }
        std::sort(image_.sections.begin(), image_.sections.end(),
                  [](const auto& a, const auto& b) { return a.address < b.address; });
    }

    void ReadSymbols() {
        const auto table = std::find_if(headers_.begin(), headers_.end(),
                                        [](const Header& header) { return header.type == kSymbolTable; });
        if (table == headers_.end() || table->link >= headers_.size()) read_.Fail("has no symbols");
        const std::size_t names = headers_[table->link].offset;
        for (std::size_t at = table->offset; at < table->offset + table->size; at += 16) {
            const std::uint16_t section = read_.U16(at + 14);
            const bool placed = section != kUndefined && section < kFirstReserved &&
                                section < headers_.size() && (headers_[section].flags & kMapped) != 0;
            image_.symbols.push_back({read_.Text(names + read_.U32(at)), read_.U32(at + 4), read_.U32(at + 8),
                                      (read_.U16(at + 12) & 0xF) == kFunction, placed});
        }
    }

    void ReadRelocations() {
        bool any = false;
        std::set<std::uint32_t> words;
        for (const Header& header : headers_) {
            if (header.type == kRelocationsWithAddend)
                read_.Fail("has relocations of a kind that ARM has not");
            if (header.type != kRelocations || header.info >= headers_.size()) continue;
            if ((headers_[header.info].flags & kMapped) == 0) continue;
            any = true;
            for (std::size_t at = header.offset; at < header.offset + header.size; at += 8)
                ReadRelocation(read_.U32(at), read_.U32(at + 4), words);
        }
        if (!any) read_.Fail("has no relocations: link it with --emit-relocs");
        image_.absoluteWords.assign(words.begin(), words.end());
    }

    void ReadRelocation(std::uint32_t address, std::uint32_t info, std::set<std::uint32_t>& words) const {
        const auto kind = static_cast<std::uint8_t>(info);
        const std::size_t symbol = info >> 8;
        if (std::count(kRelative.begin(), kRelative.end(), kind) != 0) return;
        if (symbol >= image_.symbols.size()) read_.Fail("has a relocation of a symbol that is not there");
        if (std::count(kAbsolute.begin(), kAbsolute.end(), kind) == 0)
            read_.Fail("has a relocation of kind " + std::to_string(kind) + " of \"" +
                       image_.symbols[symbol].name + "\", which the phone's format cannot express");
        // A number, or the nothing of a weak name: the same wherever the image lies.
        if (image_.symbols[symbol].placed) words.insert(address);
    }

    Reader read_;
    std::vector<Header> headers_;
    std::size_t names_ = 0;
    ElfImage image_;
};

}  // namespace

ElfImage ReadElf(const Bytes& file, const std::string& name) {
    return Parser(file, name).Take();
}

}  // namespace pe
