// A handset of its own for a test.
#include "handset_fixture.h"

#include <shellapi.h>

namespace {

std::wstring Variable(const wchar_t* name) {
    wchar_t value[MAX_PATH] = L"";
    GetEnvironmentVariableW(name, value, MAX_PATH);
    return value;
}

void RemoveFolder(const std::wstring& folder) {
    std::wstring list = folder + L'\0';
    SHFILEOPSTRUCTW operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = list.c_str();
    operation.fFlags = FOF_NO_UI;
    SHFileOperationW(&operation);
}

}  // namespace

HandsetTest::HandsetTest() {
    const std::wstring process = std::to_wstring(GetCurrentProcessId());
    root_ = Variable(L"TEMP") + L"\\kora_coredll_" + process;
    stateKey_ = L"Software\\Kora Handset Test\\coredll " + process;
    // The first call of COREDLL already belongs to this handset.
    SetState(L"KORA_DEVICEROOT", root_.c_str());
    SetState(L"KORA_STATEKEY", stateKey_.c_str());
    // Numbers of processes come again, and an earlier one may have ended with a file of its folder still
    // open.
    RemoveFolder(root_);
    RegDeleteTreeW(HKEY_CURRENT_USER, stateKey_.c_str());
    CreateDirectoryW(root_.c_str(), nullptr);
}

HandsetTest::~HandsetTest() {
    RegDeleteTreeW(HKEY_CURRENT_USER, stateKey_.c_str());
    RemoveFolder(root_);
    for (std::size_t begin = 0; begin < variables_.size();) {
        const std::size_t end = variables_.find(L' ', begin);
        SetEnvironmentVariableW(variables_.substr(begin, end - begin).c_str(), nullptr);
        begin = end + 1;
    }
}

bool HandsetTest::HostFileExists(const wchar_t* devicePath) const {
    // A host path is taken as it is.
    return GetFileAttributesW(OnHost(devicePath).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void HandsetTest::MakeFile(const wchar_t* devicePath) const {
    CloseHandle(
        CreateFileW(OnHost(devicePath).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

void HandsetTest::SetState(const wchar_t* variable, const wchar_t* value) {
    SetEnvironmentVariableW(variable, value);
    variables_ += std::wstring(variable) + L" ";
}

DWORD HandsetTest::StateDword(const wchar_t* name, DWORD missing) const {
    DWORD value = missing;
    DWORD size = sizeof value;
    RegGetValueW(HKEY_CURRENT_USER, stateKey_.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value, &size);
    return value;
}

bool Eventually(const std::function<bool()>& condition) {
    const std::uint64_t deadline = RealMilliseconds() + 10000;
    while (!condition()) {
        if (RealMilliseconds() > deadline) return false;
        RealPause(1);
    }
    return true;
}

std::uint64_t RealMilliseconds() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return static_cast<std::uint64_t>(now.QuadPart) * 1000 / static_cast<std::uint64_t>(frequency.QuadPart);
}

void RealPause(DWORD milliseconds) {
    static const auto sleep = HostFunction<void WINAPI(DWORD)>("kernel32.dll", "Sleep");
    sleep(milliseconds);
}

void HandleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}
