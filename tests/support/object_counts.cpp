#include "tests/support/object_counts.h"

#include <tlhelp32.h>

#include "tests/support/process_counts.h"

namespace test {
namespace {

constexpr DWORD kUnknown = ~0u;
constexpr DWORD kAnswerWithin_ms = 20000;

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

// How far the call lies from the start of the library, which is the same in every program.
std::ptrdiff_t OffsetOfCount() {
    static const HMODULE coredll =
        LoadLibraryExW((BuildFolder() + L"\\COREDLL.dll").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    const auto call = reinterpret_cast<BYTE*>(GetProcAddress(coredll, "HandsetGdiObjectCount"));
    return call == nullptr ? 0 : call - reinterpret_cast<BYTE*>(coredll);
}

// A thread of the radio asks, and its exit code is the answer.
DWORD AskGdiCount(const Radio& radio) {
    BYTE* coredll = CoredllOf(radio.ProcessId());
    const std::ptrdiff_t offset = OffsetOfCount();
    if (coredll == nullptr || offset == 0) return kUnknown;
    const HANDLE thread =
        CreateRemoteThread(radio.Process(), nullptr, 0,
                           reinterpret_cast<LPTHREAD_START_ROUTINE>(coredll + offset), nullptr, 0, nullptr);
    if (thread == nullptr) return kUnknown;
    DWORD count = kUnknown;
    if (WaitForSingleObject(thread, kAnswerWithin_ms) == WAIT_OBJECT_0) GetExitCodeThread(thread, &count);
    CloseHandle(thread);
    return count;
}

}  // namespace

ObjectCounts CountObjects(const Radio& radio) {
    return {static_cast<DWORD>(HandlesOf(radio.ProcessId())), AskGdiCount(radio)};
}

}  // namespace test
