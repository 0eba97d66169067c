// Programs and modules of the device.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "handset_fixture.h"

using Programs = HandsetTest;

namespace {

constexpr wchar_t kShell[] = L"C:\\windows\\system32\\cmd.exe";

DWORD ExitCode(HANDLE process) {
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(process, 20000);
    GetExitCodeProcess(process, &code);
    return code;
}

}  // namespace

TEST_F(Programs, AProgramIsGivenItsCommandLine) {
    wchar_t arguments[] = L"/c exit 7";
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(
        CreateProcessW(kShell, arguments, nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr, &process));
    EXPECT_EQ(ExitCode(process.hProcess), 7u);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

TEST_F(Programs, ABareNameIsFoundInTheWindowsFolder) {
    CreateDirectoryW(L"\\Windows", nullptr);
    ASSERT_TRUE(CopyFileW(kShell, L"\\Windows\\radio.exe", FALSE));
    wchar_t arguments[] = L"/c exit 9";
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(
        CreateProcessW(L"radio", arguments, nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr, &process));
    EXPECT_EQ(ExitCode(process.hProcess), 9u);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

TEST_F(Programs, AProgramThatIsNotThereIsNotStarted) {
    PROCESS_INFORMATION process{};
    EXPECT_FALSE(
        CreateProcessW(L"cmd.exe", nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr, &process));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(Programs, TheShellStartsAProgramWithItsParameters) {
    CreateDirectoryW(L"\\Windows", nullptr);
    ASSERT_TRUE(CopyFileW(kShell, L"\\Windows\\guide.exe", FALSE));
    SHELLEXECUTEINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = SEE_MASK_NOCLOSEPROCESS;
    info.lpVerb = L"Open";
    info.lpFile = L"guide.exe";
    info.lpParameters = L"/c exit 5";
    info.nShow = SW_HIDE;
    ASSERT_TRUE(ShellExecuteEx(&info));
    EXPECT_GT(reinterpret_cast<INT_PTR>(info.hInstApp), 32);
    EXPECT_EQ(ExitCode(info.hProcess), 5u);
    CloseHandle(info.hProcess);
}

TEST_F(Programs, TheShellSaysThatAFileIsNotThere) {
    SHELLEXECUTEINFOW info{};
    info.cbSize = sizeof info;
    info.lpFile = L"iexplore.exe";
    EXPECT_FALSE(ShellExecuteEx(&info));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(reinterpret_cast<INT_PTR>(info.hInstApp), SE_ERR_FNF);
}

TEST_F(Programs, AModuleBelowTheRootHasADevicePath) {
    wchar_t host[MAX_PATH];
    ASSERT_NE(GetModuleFileNameW(nullptr, host, MAX_PATH), 0u);
    const std::wstring path = host;
    const std::size_t name = path.rfind(L'\\');
    SetState(L"KORA_DEVICEROOT", path.substr(0, path.rfind(L'\\', name - 1)).c_str());
    wchar_t device[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, device, MAX_PATH);
    EXPECT_EQ(std::wstring(device), path.substr(path.rfind(L'\\', name - 1)));
    EXPECT_EQ(length, std::wstring(device).size());
    EXPECT_EQ(GetModuleFileNameW(nullptr, device, 4), 4u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

TEST_F(Programs, AModuleIsLoadedByNameOrByPath) {
    EXPECT_NE(LoadLibraryW(L"COREDLL.dll"), nullptr);
    EXPECT_EQ(LoadLibraryW(L"\\Windows\\COREDLL.dll"), nullptr);
}
