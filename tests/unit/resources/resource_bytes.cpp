// Finds a resource and gives its bytes as they stand in the module.
#include "tests/unit/resources/resource_bytes.h"

ResourceBytes FindBytes(LPCWSTR type, unsigned id, HMODULE module) {
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), type);
    if (found == nullptr) return {};
    const HGLOBAL loaded = LoadResource(module, found);
    return {static_cast<const std::uint8_t*>(LockResource(loaded)), SizeofResource(module, found)};
}
