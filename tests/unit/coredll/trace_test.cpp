// The debug output and the console of the device.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "handset_fixture.h"
#include "tests/support/trace_capture.h"

namespace {

constexpr wchar_t kPipe[] = L"\\\\.\\pipe\\kora_trace_test";
constexpr DWORD kPipeSize = 1 << 20;

// One of the standard streams, caught in a pipe that keeps each write apart from the next.
class CaughtStream {
  public:
    explicit CaughtStream(DWORD stream) : stream_(stream), previous_(GetStdHandle(stream)) {
        read_ = CreateNamedPipeW(kPipe, PIPE_ACCESS_INBOUND, PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE, 1,
                                 kPipeSize, kPipeSize, 0, nullptr);
        write_ = CreateFileW(kPipe, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        SetStdHandle(stream, write_);
    }
    ~CaughtStream() {
        SetStdHandle(stream_, previous_);
        CloseHandle(write_);
        CloseHandle(read_);
    }
    CaughtStream(const CaughtStream&) = delete;
    CaughtStream& operator=(const CaughtStream&) = delete;

    // Every write that is in the pipe now.
    std::vector<std::string> Writes() const {
        std::vector<std::string> writes;
        DWORD waiting = 0;
        while (PeekNamedPipe(read_, nullptr, 0, nullptr, &waiting, nullptr) && waiting > 0) {
            std::string text(4096, '\0');
            DWORD size = 0;
            ReadFile(read_, text.data(), static_cast<DWORD>(text.size()), &size, nullptr);
            text.resize(size);
            writes.push_back(text);
        }
        return writes;
    }

  private:
    DWORD stream_;
    HANDLE previous_;
    HANDLE read_;
    HANDLE write_;
};

constexpr int kLinesPerThread = 200;
constexpr int kThreads = 4;
constexpr int kPrograms = 4;
constexpr int kRounds = 5;
constexpr wchar_t kNumber[] = L"KORA_TEST_WRITER";

HANDLE SharedEvent(const wchar_t* name) {
    return CreateEventW(nullptr, TRUE, FALSE, (L"KoraTraceTest-" + std::wstring(name)).c_str());
}

using TraceOfPrograms = HandsetTest;

DWORD WINAPI WriteLines(void* number) {
    for (int line = 0; line < kLinesPerThread; ++line) {
        NKDbgPrintfW(L"thread %d line %d of a text that is long enough to be cut\n",
                     static_cast<int>(reinterpret_cast<INT_PTR>(number)), line);
    }
    return 0;
}

}  // namespace

TEST(Trace, IsWrittenInUtf8AndInOnePiece) {
    const CaughtStream error(STD_ERROR_HANDLE);
    NKDbgPrintfW(L"FM: \x00FC\x0416\x20AC %s %d %S\n", L"wide", 42, "narrow");
    EXPECT_EQ(error.Writes(), std::vector<std::string>{"FM: \xC3\xBC\xD0\x96\xE2\x82\xAC wide 42 narrow\n"});
}

TEST(Trace, HasRoomFor127CharactersAndCutsALongerLine) {
    const CaughtStream error(STD_ERROR_HANDLE);
    const std::wstring line(126, L'\x20AC');
    NKDbgPrintfW(L"%s\n", line.c_str());
    NKDbgPrintfW(L"%s\n", (line + L"!").c_str());
    NKDbgPrintfW(L"%s\n", std::wstring(5000, L'-').c_str());
    const std::vector<std::string> writes = error.Writes();
    ASSERT_EQ(writes.size(), 3u);
    EXPECT_EQ(writes[0].size(), 126u * 3 + 1);
    EXPECT_EQ(writes[0].back(), '\n');
    EXPECT_EQ(writes[1].size(), 126u * 3 + 1);
    EXPECT_EQ(writes[1].back(), '!');
    EXPECT_EQ(writes[2], std::string(127, '-'));
}

TEST(Trace, KeepsTheLastError) {
    const CaughtStream error(STD_ERROR_HANDLE);
    SetLastError(1234);
    NKDbgPrintfW(L"line\n");
    EXPECT_EQ(GetLastError(), 1234u);
}

TEST(Trace, LinesOfSeveralThreadsNeverMix) {
    const CaughtStream error(STD_ERROR_HANDLE);
    HANDLE threads[kThreads];
    for (int i = 0; i < kThreads; ++i) {
        threads[i] = CreateThread(nullptr, 0, WriteLines, reinterpret_cast<void*>(INT_PTR{i}), 0, nullptr);
    }
    for (const HANDLE thread : threads) {
        ASSERT_EQ(WaitForSingleObject(thread, 20000), WAIT_OBJECT_0);
        CloseHandle(thread);
    }
    std::map<int, int> next;
    for (const std::string& write : error.Writes()) {
        int thread = -1;
        int line = -1;
        char end = 0;
        ASSERT_EQ(std::sscanf(write.c_str(), "thread %d line %d of a text that is long enough to be cu%c",
                              &thread, &line, &end),
                  3)
            << write;
        EXPECT_EQ(write.substr(write.size() - 2), "t\n");
        EXPECT_EQ(line, next[thread]++);
    }
    for (int i = 0; i < kThreads; ++i) EXPECT_EQ(next[i], kLinesPerThread);
}

// As tests do that wait for a line: the one who reads takes nothing from those who write.
TEST(Trace, WhatTestsReadOfItMeanwhileLosesNoLine) {
    std::string text;
    {
        const test::StreamCapture capture(STD_ERROR_HANDLE);
        const HANDLE thread = CreateThread(nullptr, 0, WriteLines, nullptr, 0, nullptr);
        do {
            text = capture.Text();
        } while (WaitForSingleObject(thread, 0) == WAIT_TIMEOUT);
        CloseHandle(thread);
        text = capture.Text();
    }
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), kLinesPerThread);
}

// Run as a program of its own by the next one.
TEST(TraceOfAnotherProgram, DISABLED_WritesItsLines) {
    wchar_t number[8] = L"";
    GetEnvironmentVariableW(kNumber, number, 8);
    const HANDLE ready = SharedEvent(number), go = SharedEvent(L"go");
    SetEvent(ready);
    WaitForSingleObject(go, 60000);
    for (int round = 0; round < kRounds; ++round) WriteLines(reinterpret_cast<void*>(INT_PTR{0}));
    CloseHandle(ready);
    CloseHandle(go);
}

TEST_F(TraceOfPrograms, LinesOfSeveralInOneFileAreAllThere) {
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    const std::wstring path = root() + L"\\trace.log";
    const HANDLE log = CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   &inherit, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(log, INVALID_HANDLE_VALUE);
    const HANDLE nothing = CreateFileW(L"\\\\.\\NUL", GENERIC_WRITE, 0, &inherit, OPEN_EXISTING, 0, nullptr);
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    HANDLE processes[kPrograms];
    const HANDLE go = SharedEvent(L"go");
    for (int i = 0; i < kPrograms; ++i) {
        const std::wstring number = std::to_wstring(i);
        const HANDLE ready = SharedEvent(number.c_str());
        SetEnvironmentVariableW(kNumber, number.c_str());
        wchar_t line[] = L"test --gtest_also_run_disabled_tests --gtest_filter=TraceOfAnotherProgram.*";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = nothing;
        startup.hStdError = log;
        PROCESS_INFORMATION started{};
        // The device's own call hands no streams on.
        static const auto create = HostFunction<decltype(CreateProcessW)>("kernel32.dll", "CreateProcessW");
        ASSERT_TRUE(create(program, line, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started));
        CloseHandle(started.hThread);
        processes[i] = started.hProcess;
        EXPECT_EQ(WaitForSingleObject(ready, 60000), WAIT_OBJECT_0);
        CloseHandle(ready);
    }
    // All at once.
    SetEvent(go);
    CloseHandle(go);
    SetEnvironmentVariableW(kNumber, nullptr);
    for (const HANDLE process : processes) {
        ASSERT_EQ(WaitForSingleObject(process, 60000), WAIT_OBJECT_0);
        CloseHandle(process);
    }
    CloseHandle(nothing);
    CloseHandle(log);
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    std::map<std::string, int> lines;
    for (std::string line; std::getline(file, line);) ++lines[line];
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(kLinesPerThread));
    for (const auto& [line, count] : lines) EXPECT_EQ(count, kPrograms * kRounds) << line;
}

TEST(Console, GetsThePrintedBytesAtOnce) {
    const CaughtStream output(STD_OUTPUT_HANDLE);
    const auto print = HostFunction<int WINAPIV(const char*, ...)>("COREDLL.dll", "printf");
    EXPECT_EQ(print("WM_AUTOSCAN_FINISHED %d\n", 1), 23);
    EXPECT_EQ(output.Writes(), std::vector<std::string>{"WM_AUTOSCAN_FINISHED 1\n"});
}
