#include "tests/support/object_counts.h"

#include <tlhelp32.h>

#include "tests/support/process_counts.h"

namespace test {
namespace {

constexpr DWORD kUnknown = ~0u;

// Where the radio has COREDLL; null when it has not.
BYTE* CoredllOf(DWORD process) {
    const HANDLE modules = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process);
    MODULEENTRY32W module = {};
    module.dwSize = sizeof module;
    BYTE* found = nullptr;
    for (BOOL more = Module32FirstW(modules, &module); more; more = Module32NextW(modules, &module)) {
        if (_wcsicmp(module.szModule, L"COREDLL.dll") == 0) found = module.modBaseAddr;
    }
    CloseHandle(modules);
    return found;
}

// How far the count lies from the start of the library, which is the same in every program.
std::ptrdiff_t OffsetOfCount() {
    static const HMODULE coredll =
        LoadLibraryExW((BuildFolder() + L"\\COREDLL.dll").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    const auto count = reinterpret_cast<BYTE*>(GetProcAddress(coredll, "HandsetGdiObjects"));
    return count == nullptr ? 0 : count - reinterpret_cast<BYTE*>(coredll);
}

// Read from outside: the radio itself does nothing for it, and so nothing stays behind in it.
DWORD ReadGdiCount(const Radio& radio) {
    const BYTE* coredll = CoredllOf(radio.ProcessId());
    const std::ptrdiff_t offset = OffsetOfCount();
    if (coredll == nullptr || offset == 0) return kUnknown;
    DWORD count = kUnknown;
    SIZE_T read = 0;
    return ReadProcessMemory(radio.Process(), coredll + offset, &count, sizeof count, &read) ? count
                                                                                             : kUnknown;
}

}  // namespace

ObjectCounts CountObjects(const Radio& radio) {
    return {static_cast<DWORD>(HandlesOf(radio.ProcessId())), ReadGdiCount(radio)};
}

}  // namespace test
