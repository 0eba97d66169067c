#include "tests/support/process_counts.h"

#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "handset/base/file_time.h"
#include "handset/base/owned.h"

namespace test {
namespace {

// SYSTEM_EXTENDED_HANDLE_INFORMATION: every handle of the system with its owner.
constexpr int kSystemExtendedHandleInformation = 64;
struct HandleEntry {
    void* object;
    ULONG_PTR process;
    ULONG_PTR handle;
    ULONG access;
    USHORT creator, type;
    ULONG attributes, reserved;
};
struct HandleTable {
    ULONG_PTR count;
    ULONG_PTR reserved;
    HandleEntry entries[1];
};

double Seconds(const FILETIME& time) {
    return static_cast<double>(handset::Ticks(time)) / 1e7;
}

}  // namespace

std::size_t ThreadsOf(DWORD process) {
    std::size_t threads = 0;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID == process) ++threads;
    }
    CloseHandle(snapshot);
    return threads;
}

std::string LookOfProcess(DWORD id) {
    const handset::OwnedHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    FILETIME began = {}, ended = {}, kernel = {}, user = {}, now = {};
    GetProcessTimes(process.get(), &began, &ended, &kernel, &user);
    GetSystemTimeAsFileTime(&now);
    char text[128];
    std::snprintf(text, sizeof text, "process %lu, %.1f s old, %.2f s of processor time, %u threads", id,
                  Seconds(now) - Seconds(began), Seconds(kernel) + Seconds(user),
                  static_cast<unsigned>(ThreadsOf(id)));
    return text;
}

std::size_t HandlesOf(DWORD process) {
    using Query = NTSTATUS(NTAPI*)(int, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<BYTE> bytes(1 << 16);
    ULONG size = 0;
    // The table grows until it fits.
    while (query(kSystemExtendedHandleInformation, bytes.data(), static_cast<ULONG>(bytes.size()), &size) !=
           0) {
        if (bytes.size() > (1u << 26)) return 0;
        bytes.resize(bytes.size() * 2);
    }
    const auto& table = *reinterpret_cast<const HandleTable*>(bytes.data());
    return static_cast<std::size_t>(
        std::count_if(table.entries, table.entries + table.count,
                      [process](const HandleEntry& entry) { return entry.process == process; }));
}

}  // namespace test
