// One row for each function of the program, by which the system's unwinder finds its way (PE format,
// ".pdata", in the two-word form of Windows CE for ARM).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "device/pe/elf_image.h"

namespace pe {

struct FunctionRow {
    std::uint32_t begin = 0;  // address
    std::uint32_t length_instructions = 0;
    std::uint32_t prolog_instructions = 0;
    bool guarded = false;  // the two words before it name its exception handler and that one's data
};

// By address. A function with a symbol "__guarded:NAME" at its begin is guarded. Throws BadFile when two
// functions overlap or one is longer than a row can say.
[[nodiscard]] std::vector<FunctionRow> FunctionsOf(const ElfImage& image, const std::string& name);

[[nodiscard]] Bytes FunctionTable(const std::vector<FunctionRow>& rows);

}  // namespace pe
