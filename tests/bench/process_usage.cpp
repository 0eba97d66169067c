#include "tests/bench/process_usage.h"

#include <psapi.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "handset/base/utf8.h"

namespace bench {
namespace {

constexpr double kUnknown = -1;

// Files under /proc have no size that could be asked for; they are read to their end.
std::string ReadProc(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    std::string text;
    if (file == INVALID_HANDLE_VALUE) return text;
    char part[4096];
    for (DWORD read = 0; ReadFile(file, part, sizeof part, &read, nullptr) && read > 0;)
        text.append(part, read);
    CloseHandle(file);
    return text;
}

template <typename Visit>
void EachNumberedFolder(const std::wstring& folder, Visit visit) {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = found.cFileName;
        if (std::all_of(name.begin(), name.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; })) {
            visit(folder + L"\\" + name);
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

// When a process began, in ticks since the machine did: the 22nd field of its state. The second one, its
// name, stands in brackets and may hold anything.
double BeganAt(const std::wstring& folder) {
    const std::string state = ReadProc(folder + L"\\stat");
    std::istringstream fields(state.substr(std::min(state.rfind(')') + 1, state.size())));
    std::string field;
    for (int number = 3; number <= 22; ++number) fields >> field;
    return std::atof(field.c_str());
}

// The Linux process whose command line begins with the program's path; the youngest, for one that was ended a
// moment ago may still be there. Numbers of processes come again and tell nothing.
std::wstring FindProcFolder(const std::wstring& path) {
    const std::string wanted = handset::Utf8(path);
    std::wstring best;
    double bestBegan = -1;
    EachNumberedFolder(L"Z:\\proc", [&](const std::wstring& folder) {
        const std::string line = ReadProc(folder + L"\\cmdline");
        if (line.find(wanted) == std::string::npos || line.find("wine64") != std::string::npos) return;
        const double began = BeganAt(folder);
        if (began < bestBegan) return;
        best = folder;
        bestBegan = began;
    });
    return best;
}

double Sum_kB(const std::string& text, const std::string& label) {
    double sum = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(label, 0) == 0) sum += std::atof(line.c_str() + line.find(':') + 1);
    }
    return sum;
}

}  // namespace

ProcessUsage::ProcessUsage(HANDLE process, const std::wstring& path)
    : m_process(process), m_procFolder(FindProcFolder(path)) {}

double ProcessUsage::Cpu_ms() const {
    if (!m_procFolder.empty()) {
        double nanoseconds = 0;
        // The first number of a thread's schedstat is its time on a processor.
        EachNumberedFolder(m_procFolder + L"\\task", [&](const std::wstring& task) {
            nanoseconds += std::atof(ReadProc(task + L"\\schedstat").c_str());
        });
        return nanoseconds / 1e6;
    }
    FILETIME created, exited, kernel, user;
    if (!GetProcessTimes(m_process, &created, &exited, &kernel, &user)) return kUnknown;
    const auto value = [](const FILETIME& time) {
        return static_cast<double>(static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime) /
               1e4;
    };
    return value(kernel) + value(user);
}

double ProcessUsage::Private_MB() const {
    if (!m_procFolder.empty()) {
        const std::string rollup = ReadProc(m_procFolder + L"\\smaps_rollup");
        // What was written to. Pages of a program's file that are merely mapped are the disk's cache; Windows
        // does not count them either.
        return Sum_kB(rollup, "Private_Dirty") / 1024;
    }
    PROCESS_MEMORY_COUNTERS_EX memory = {};
    memory.cb = sizeof memory;
    if (!GetProcessMemoryInfo(m_process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                              sizeof memory)) {
        return kUnknown;
    }
    return static_cast<double>(memory.PrivateUsage) / (1024.0 * 1024.0);
}

}  // namespace bench
