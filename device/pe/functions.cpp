#include "device/pe/functions.h"

#include <algorithm>
#include <map>
#include <set>

namespace pe {
namespace {

constexpr char kGuarded[] = "__guarded:";
constexpr std::uint32_t kInstruction = 4;
constexpr std::uint32_t kLongest_instructions = (1U << 22) - 1, kLongestProlog_instructions = 0xFF;

std::uint32_t WordAt(const ElfSection& code, std::uint32_t address) {
    const std::size_t at = address - code.address;
    return static_cast<std::uint32_t>(code.bytes[at] | code.bytes[at + 1] << 8 | code.bytes[at + 2] << 16) |
           static_cast<std::uint32_t>(code.bytes[at + 3]) << 24;
}

// Saves registers, moves the stack pointer or sets up the frame pointer: what the unwinder runs backwards.
bool IsProlog(std::uint32_t instruction) {
    struct Form {
        std::uint32_t mask, value;
    };
    constexpr Form kForms[] = {
        {0xFFFF0000, 0xE92D0000},  // stmdb sp!, {…}
        {0xFFFFF000, 0xE24DD000},  // sub sp, sp, #…
        {0xFFFFF000, 0xE28DB000},  // add r11, sp, #…
        {0xFFFFFFFF, 0xE1A0B00D},  // mov r11, sp
        {0xFFFF0FFF, 0xE52D0004},  // str …, [sp, #-4]!
    };
    return std::any_of(std::begin(kForms), std::end(kForms),
                       [=](const Form& form) { return (instruction & form.mask) == form.value; });
}

std::uint32_t PrologOf(const ElfSection& code, const FunctionRow& row) {
    std::uint32_t count = 0;
    while (count < row.length_instructions && count < kLongestProlog_instructions &&
           IsProlog(WordAt(code, row.begin + kInstruction * count)))
        ++count;
    return count;
}

}  // namespace

std::vector<FunctionRow> FunctionsOf(const ElfImage& image, const std::string& name) {
    std::set<std::uint32_t> guarded;
    std::map<std::uint32_t, std::uint32_t> sizes;
    for (const ElfSymbol& symbol : image.symbols) {
        if (!symbol.placed) continue;
        if (symbol.name.rfind(kGuarded, 0) == 0) guarded.insert(symbol.address);
        if (!symbol.function || symbol.size == 0) continue;
        // Bit 0 would say Thumb.
        if ((symbol.address & 3) != 0) throw BadFile(name + ": \"" + symbol.name + "\" is no ARM code");
        sizes[symbol.address] = std::max(sizes[symbol.address], symbol.size);
    }
    std::vector<FunctionRow> rows;
    for (const auto& [address, size] : sizes) {
        const std::uint32_t begin = address;
        const auto code =
            std::find_if(image.sections.begin(), image.sections.end(), [=](const auto& section) {
                return section.code && section.address <= begin && begin - section.address < section.size;
            });
        if (code == image.sections.end()) continue;
        FunctionRow row = {begin, RoundUp(size, kInstruction) / kInstruction, 0, guarded.count(begin) != 0};
        if (row.length_instructions > kLongest_instructions || begin - code->address + size > code->size)
            throw BadFile(name + ": the function at " + std::to_string(begin) + " is too long");
        if (!rows.empty() && rows.back().begin + kInstruction * rows.back().length_instructions > begin)
            throw BadFile(name + ": two functions overlap at " + std::to_string(begin));
        row.prolog_instructions = PrologOf(*code, row);
        rows.push_back(row);
    }
    return rows;
}

Bytes FunctionTable(const std::vector<FunctionRow>& rows) {
    constexpr std::uint32_t kArmCode = 1U << 30, kHasHandler = 1U << 31;
    Bytes bytes;
    for (const FunctionRow& row : rows) {
        Add32(bytes, row.begin);
        Add32(bytes, row.prolog_instructions | row.length_instructions << 8 | kArmCode |
                         (row.guarded ? kHasHandler : 0));
    }
    return bytes;
}

}  // namespace pe
