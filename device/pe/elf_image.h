// What the linker made: an ELF file for a 32-bit ARM, little-endian, with the relocations kept (System V ABI,
// and ARM IHI 0044 "ELF for the ARM Architecture").
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "device/pe/bytes.h"

namespace pe {

// A section that is mapped when the program runs. Addresses are those that the linker chose.
struct ElfSection {
    std::string name;
    std::uint32_t address = 0;
    std::uint32_t size = 0;
    Bytes bytes;  // empty when the section holds zeroes alone
    bool writable = false;
    bool code = false;
};

struct ElfSymbol {
    std::string name;
    std::uint32_t address = 0;
    std::uint32_t size = 0;
    bool function = false;
    bool placed = false;  // in a section that is mapped
};

struct ElfImage {
    std::uint32_t entry = 0;
    std::vector<ElfSection> sections;  // by address
    std::vector<ElfSymbol> symbols;
    std::vector<std::uint32_t>
        absoluteWords;  // addresses of words that hold an address of the image, ascending
};

// Throws BadFile for what is no such file and for relocations that could not be kept when the image moves.
[[nodiscard]] ElfImage ReadElf(const Bytes& file, const std::string& name);

}  // namespace pe
