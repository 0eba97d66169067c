// A DLL that a checked run puts into its programs: it has Wine look at every block that one of their modules
// frees, and now and then at all heaps. Left to itself Wine looks at the blocks' ends only together with
// every other block of the heap and at every call, its own calls included, and then a dialog takes seconds to
// open.
#include <windows.h>

#include <malloc.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iterator>

#include "tests/support/import_watch.h"

namespace {

constexpr unsigned kCallsPerSurvey = 256;
// What is damaged stays damaged, and every survey would tell it again.
constexpr unsigned kMostComplaints = 20;

HMODULE g_self = nullptr;
std::atomic<unsigned> g_calls{0};
std::atomic<unsigned> g_complaints{0};

void Complain(const char* what, const void* block, void* caller) {
    if (g_complaints.fetch_add(1) >= kMostComplaints) return;
    HMODULE module = nullptr;
    char name[MAX_PATH] = "";
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const char*>(caller), &module);
    GetModuleFileNameA(module, name, MAX_PATH);
    char line[MAX_PATH + 150];
    std::snprintf(
        line, sizeof line, "heap_watch:err:heap: %s, %p, seen from %s+0x%llx\n", what, block, name,
        reinterpret_cast<unsigned long long>(caller) - reinterpret_cast<unsigned long long>(module));
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line, static_cast<DWORD>(std::strlen(line)), &written, nullptr);
}

// Every block of every heap: tails, heads, and freed ones that Wine has not given out again.
void Survey(void* caller) {
    HANDLE heaps[100];
    const DWORD count = GetProcessHeaps(100, heaps);
    for (DWORD i = 0; i < count && i < 100; ++i) {
        if (!HeapValidate(heaps[i], 0, nullptr)) Complain("a damaged heap", heaps[i], caller);
    }
}

void LookAt(HANDLE heap, const void* block, void* caller) {
    if (block == nullptr) return;
    // Only its size tells a block that is free already from a live one.
    if (!HeapValidate(heap, 0, block) || HeapSize(heap, 0, block) == static_cast<SIZE_T>(-1)) {
        Complain("a damaged or freed block is let go", block, caller);
    }
    if (g_calls.fetch_add(1) % kCallsPerSurvey == kCallsPerSurvey - 1) Survey(caller);
}

HANDLE RuntimeHeap() {
    return reinterpret_cast<HANDLE>(_get_heap_handle());
}

void CDECL CheckedFree(void* block) {
    LookAt(RuntimeHeap(), block, __builtin_return_address(0));
    std::free(block);
}

void* CDECL CheckedRealloc(void* block, std::size_t size) {
    LookAt(RuntimeHeap(), block, __builtin_return_address(0));
    return std::realloc(block, size);
}

BOOL WINAPI CheckedHeapFree(HANDLE heap, DWORD flags, void* block) {
    LookAt(heap, block, __builtin_return_address(0));
    return HeapFree(heap, flags, block);
}

HLOCAL WINAPI CheckedLocalFree(HLOCAL memory) {
    // A fixed block is one of the heap, and begins like one; a movable one is a handle.
    const bool fixed = reinterpret_cast<ULONG_PTR>(memory) % MEMORY_ALLOCATION_ALIGNMENT == 0;
    if (fixed) LookAt(GetProcessHeap(), memory, __builtin_return_address(0));
    return LocalFree(memory);
}

void* g_taskFree = nullptr;

void WINAPI CheckedTaskFree(void* block) {
    LookAt(GetProcessHeap(), block, __builtin_return_address(0));
    reinterpret_cast<void(WINAPI*)(void*)>(g_taskFree)(block);
}

const test::InsteadRow kRows[] = {
    {L"msvcrt.dll", "free", reinterpret_cast<void*>(CheckedFree)},
    {L"msvcrt.dll", "realloc", reinterpret_cast<void*>(CheckedRealloc)},
    {L"kernel32.dll", "HeapFree", reinterpret_cast<void*>(CheckedHeapFree)},
    {L"kernel32.dll", "LocalFree", reinterpret_cast<void*>(CheckedLocalFree)},
    {L"ole32.dll", "CoTaskMemFree", reinterpret_cast<void*>(CheckedTaskFree), &g_taskFree},
};

// The system's own modules are not ours to look after.
bool IsOurs(HMODULE module) {
    WCHAR file[MAX_PATH] = L"", windows[MAX_PATH] = L"";
    GetModuleFileNameW(module, file, MAX_PATH);
    GetSystemDirectoryW(windows, MAX_PATH);
    return module != g_self && _wcsnicmp(file, windows, std::wcslen(windows)) != 0;
}

}  // namespace

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        g_self = self;
        test::WatchImports(IsOurs, kRows, static_cast<int>(std::size(kRows)));
    }
    if (reason == DLL_PROCESS_DETACH) Survey(__builtin_return_address(0));
    return TRUE;
}
