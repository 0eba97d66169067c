#include "tests/support/import_watch.h"

#include <psapi.h>

#include <cstring>

namespace test {
namespace {

bool (*g_wanted)(HMODULE module) = nullptr;
const InsteadRow* g_rows = nullptr;
int g_rowCount = 0;

void* Exported(const wchar_t* dll, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(dll), name));
}

// A linker may put a module's tables at any address.
template <typename Table>
Table At(const BYTE* place) {
    Table table;
    std::memcpy(&table, place, sizeof table);
    return table;
}

void Patch(BYTE* slot) {
    for (int i = 0; i < g_rowCount; ++i) {
        const InsteadRow& row = g_rows[i];
        // Looked up anew each time: the DLL may have come only now.
        void* const original = Exported(row.dll, row.name);
        if (original == nullptr || At<void*>(slot) != original) continue;
        if (row.original != nullptr) *row.original = original;
        DWORD before = 0;
        VirtualProtect(slot, sizeof row.instead, PAGE_READWRITE, &before);
        std::memcpy(slot, &row.instead, sizeof row.instead);
        VirtualProtect(slot, sizeof row.instead, before, &before);
        return;
    }
}

void Watch(HMODULE module) {
    if (!g_wanted(module)) return;
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto begin = At<IMAGE_DOS_HEADER>(base);
    const auto nt = At<IMAGE_NT_HEADERS>(base + begin.e_lfanew);
    const DWORD table = nt.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    if (table == 0) return;
    for (const BYTE* row = base + table;; row += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        const auto dll = At<IMAGE_IMPORT_DESCRIPTOR>(row);
        if (dll.Name == 0) return;
        for (BYTE* slot = base + dll.FirstThunk; At<void*>(slot) != nullptr; slot += sizeof(void*))
            Patch(slot);
    }
}

void WatchWhatIsLoaded() {
    HMODULE modules[256];
    DWORD size = 0;
    K32EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &size);
    for (DWORD i = 0; i < size / sizeof *modules && i < 256; ++i) Watch(modules[i]);
}

// What the loader tells of a module, as the documents of LdrRegisterDllNotification give it.
struct LoadedModule {
    ULONG flags;
    const void* fullName;
    const void* baseName;
    void* base;
    ULONG size;
};
constexpr ULONG kModuleLoaded = 1;

void CALLBACK OnModule(ULONG reason, const LoadedModule* module, void* /*context*/) {
    if (reason == kModuleLoaded) Watch(static_cast<HMODULE>(module->base));
}

void WatchWhatComes() {
    using Register = LONG(WINAPI*)(ULONG, decltype(&OnModule), void*, void**);
    const auto registerNotice =
        reinterpret_cast<Register>(Exported(L"ntdll.dll", "LdrRegisterDllNotification"));
    void* cookie = nullptr;
    if (registerNotice != nullptr) registerNotice(0, OnModule, nullptr, &cookie);
}

}  // namespace

void WatchImports(bool (*wanted)(HMODULE module), const InsteadRow* rows, int count) {
    g_wanted = wanted;
    g_rows = rows;
    g_rowCount = count;
    WatchWhatIsLoaded();
    WatchWhatComes();
}

}  // namespace test
