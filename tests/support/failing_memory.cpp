#include "tests/support/failing_memory.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace test {
namespace {

std::atomic<DWORD> g_thread{0};  // whose allocations fail; 0 for nobody
std::size_t g_count = 0, g_number = 0;
bool g_struck = false;

// Whether the allocation that is asked for now fails.
bool Fails() {
    if (g_thread.load() != GetCurrentThreadId()) return false;
    const bool fails = g_count++ == g_number;
    g_struck = g_struck || fails;
    return fails;
}

void* CDECL Allocate(std::size_t size) {
    return Fails() ? nullptr : std::malloc(size);
}
void* CDECL Reallocate(void* block, std::size_t size) {
    return Fails() ? nullptr : std::realloc(block, size);
}

struct Row {
    const char* name;
    void* instead;
};
// What operator new and the database engine call.
const Row kRows[] = {
    {"malloc", reinterpret_cast<void*>(Allocate)},
    {"realloc", reinterpret_cast<void*>(Reallocate)},
};

// Where a module has the address of a function of the runtime that it imports.
void** ImportOf(HMODULE module, const char* function) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const DWORD table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* dll = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); dll->Name != 0; ++dll) {
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + dll->OriginalFirstThunk);
        auto** slot = reinterpret_cast<void**>(base + dll->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) == 0) return slot;
        }
    }
    return nullptr;
}

// Once a module, for good: nothing fails but for who asks for it.
void Redirect(const wchar_t* name) {
    const HMODULE module = GetModuleHandleW(name);
    ASSERT_NE(module, nullptr);
    int redirected = 0;
    for (const Row& row : kRows) {
        void** const slot = ImportOf(module, row.name);
        if (slot == nullptr) continue;
        ++redirected;
        if (*slot == row.instead) continue;
        DWORD before = 0;
        VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
        *slot = row.instead;
        VirtualProtect(slot, sizeof *slot, before, &before);
    }
    EXPECT_GT(redirected, 0);
}

}  // namespace

FailingMemory::FailingMemory(const wchar_t* module, std::size_t number) {
    Redirect(module);
    g_count = 0;
    g_number = number;
    g_struck = false;
    g_thread = GetCurrentThreadId();
}

FailingMemory::~FailingMemory() {
    g_thread = 0;
}

bool FailingMemory::Struck() const {
    return g_struck;
}

}  // namespace test
