#include "device/pe/imports.h"

#include <algorithm>
#include <utility>

namespace pe {
namespace {

constexpr char kPrefix[] = "__import:";
constexpr std::size_t kDescriptor = 20, kWord = 4;

}  // namespace

std::vector<ImportedDll> ImportsOf(const ElfImage& image, const std::string& name) {
    std::vector<const ElfSymbol*> slots;
    for (const ElfSymbol& symbol : image.symbols) {
        if (symbol.placed && symbol.name.rfind(kPrefix, 0) == 0) slots.push_back(&symbol);
    }
    std::sort(slots.begin(), slots.end(), [](auto* a, auto* b) { return a->address < b->address; });
    std::vector<ImportedDll> dlls;
    for (const ElfSymbol* slot : slots) {
        const std::string rest = slot->name.substr(sizeof(kPrefix) - 1);
        const std::size_t colon = rest.find(':');
        if (colon == std::string::npos) throw BadFile(name + ": \"" + slot->name + "\" names no function");
        const std::string dll = rest.substr(0, colon) + ".dll";
        if (dlls.empty() || dlls.back().name != dll) dlls.push_back({dll, slot->address, {}});
        ImportedDll& last = dlls.back();
        if (slot->address != last.firstSlot + kWord * last.functions.size())
            throw BadFile(name + ": the slots of " + dll + " have a gap before " + rest);
        last.functions.push_back(rest.substr(colon + 1));
    }
    return dlls;
}

Bytes ImportDirectory(const std::vector<ImportedDll>& dlls, std::uint32_t rva, std::uint32_t imageBase,
                      std::vector<std::vector<std::uint32_t>>& slots) {
    Bytes bytes(kDescriptor * (dlls.size() + 1));
    slots.clear();
    for (std::size_t i = 0; i < dlls.size(); ++i) {
        // The functions' names, each behind a hint that says nothing.
        std::vector<std::uint32_t> words;
        for (const std::string& function : dlls[i].functions) {
            Pad(bytes, 2);
            words.push_back(rva + static_cast<std::uint32_t>(bytes.size()));
            Add16(bytes, 0);
            bytes.insert(bytes.end(), function.begin(), function.end());
            bytes.push_back(0);
        }
        const auto dllName = static_cast<std::uint32_t>(bytes.size());
        bytes.insert(bytes.end(), dlls[i].name.begin(), dlls[i].name.end());
        bytes.push_back(0);
        Pad(bytes, 4);
        const auto lookup = static_cast<std::uint32_t>(bytes.size());
        for (const std::uint32_t word : words) Add32(bytes, word);
        Add32(bytes, 0);
        slots.push_back(std::move(words));
        Put32(bytes, kDescriptor * i, rva + lookup);
        Put32(bytes, kDescriptor * i + 12, rva + dllName);
        Put32(bytes, kDescriptor * i + 16, dlls[i].firstSlot - imageBase);
    }
    return bytes;
}

}  // namespace pe
