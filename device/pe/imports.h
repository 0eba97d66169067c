// The imports of a program: which function is taken from which DLL, and the tables by which the loader finds
// them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "device/pe/elf_image.h"

namespace pe {

// A DLL's slots lie side by side and end with a zero word, as the linker script lays them.
struct ImportedDll {
    std::string name;
    std::uint32_t firstSlot = 0;  // its address
    std::vector<std::string> functions;
};

// In the order of their slots. Throws BadFile when a row of slots has a gap.
[[nodiscard]] std::vector<ImportedDll> ImportsOf(const ElfImage& image, const std::string& name);

// The bytes of the import directory (PE format, "The .idata Section") at `rva`. `slots[i][j]` becomes the
// word that belongs into slot j of DLL i until the loader has found the function.
[[nodiscard]] Bytes ImportDirectory(const std::vector<ImportedDll>& dlls, std::uint32_t rva,
                                    std::uint32_t imageBase, std::vector<std::vector<std::uint32_t>>& slots);

}  // namespace pe
