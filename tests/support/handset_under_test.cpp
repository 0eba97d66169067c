#include "tests/support/handset_under_test.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "handset/state/process_start.h"
#include "tests/support/process_counts.h"
#include "tests/support/wait.h"

namespace test {
namespace {

// Three stations, one of them at the top of the band, and noise in between.
constexpr char kBand[] =
    "[band]\n"
    "wrap=1\n"
    "[8760]\nlevel=45\nstereo=1\nps=LOW END\nprogramme=tone:330\n"
    "[9850]\nlevel=60\nstereo=1\nps=KORA ONE\npty=News\nrt=Good morning\nprogramme=tone:440\n"
    "[10790]\nlevel=35\nps=TOP END\nprogramme=tone:880\n";

constexpr UINT kGivenUp = 99;

HKEY CreateStateKey(const std::wstring& path) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return key;
}

void SetValue(const std::wstring& path, const wchar_t* value, DWORD type, const void* data,
              std::size_t size) {
    const HKEY key = CreateStateKey(path);
    ASSERT_EQ(RegSetValueExW(key, value, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)),
              ERROR_SUCCESS);
    RegCloseKey(key);
}

// False while somebody holds one of its files. The library throws then, whether it is given an error code or
// not.
bool RemoveFolder(const std::wstring& folder) {
    try {
        std::filesystem::remove_all(folder);
        return true;
    } catch (const std::filesystem::filesystem_error&) {
        return false;
    }
}

std::size_t Bytes(const std::wstring& text) {
    return (text.size() + 1) * sizeof(wchar_t);
}

// What a program of the handset wrote: in a checked run Wine, or what watches its heap, says there aloud what
// is wrong, and that fails the test.
void LookForComplaints(const std::string& written) {
    const char* pattern = std::getenv("KORA_COMPLAINT");
    if (pattern == nullptr) return;
    const std::regex complaint(pattern, std::regex::extended);
    for (const std::string& line : Lines(written)) {
        if (std::regex_search(line, complaint)) {
            ADD_FAILURE() << line;
            return;
        }
    }
}

std::size_t g_handsets = 0;

}  // namespace

std::wstring BuildFolder() {
    WCHAR path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path().wstring();
}

std::string ReadWholeFile(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void WriteWholeFile(const std::wstring& path, const std::string& bytes) {
    std::ofstream file(std::filesystem::path(path), std::ios::binary | std::ios::trunc);
    file << bytes;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

DWORD RunProgram(const std::wstring& name, const std::wstring& arguments, std::string* output,
                 DWORD patience_ms) {
    const std::wstring file = std::filesystem::temp_directory_path().wstring() + L"\\kora-run-" +
                              std::to_wstring(GetCurrentProcessId()) + L".txt";
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    const HANDLE log = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                                   CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = log;
    startup.hStdError = log;
    PROCESS_INFORMATION process = {};
    std::wstring line = L"\"" + BuildFolder() + L"\\" + name + L"\" " + arguments;
    DWORD code = ~0u;
    if (handset::StartProcess(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                              &process)) {
        const DWORD waited = WaitForSingleObject(process.hProcess, patience_ms);
        GetExitCodeProcess(process.hProcess, &code);
        if (waited == WAIT_TIMEOUT) {
            ADD_FAILURE() << std::filesystem::path(name).string()
                          << " does not end: " << LookOfProcess(process.dwProcessId);
            // The tests behind this one need the files that it holds.
            TerminateProcess(process.hProcess, kGivenUp);
            WaitForSingleObject(process.hProcess, kDeadline_ms);
        }
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(log);
    const std::string written = ReadWholeFile(file);
    LookForComplaints(written);
    if (output != nullptr) *output = written;
    DeleteFileW(file.c_str());
    return code;
}

HandsetUnderTest::HandsetUnderTest() {
    // The host starts its desktop with the first program that asks for it, and the desktop inherits that
    // program's files for good. Asked for here it is never a radio with its logs, whose folder could then not
    // be removed.
    GetDesktopWindow();
    // A test may have several at a time.
    const std::wstring mark = std::to_wstring(GetCurrentProcessId()) + std::wstring(g_handsets++, L'x');
    m_home = (std::filesystem::temp_directory_path() / (L"kora-test-" + mark)).wstring();
    m_root = m_home + L"\\device";
    m_stateKey = L"Software\\Kora Test " + mark;
    // A radio that was ended a moment ago may still hold its files.
    EXPECT_TRUE(WaitFor([this] { return RemoveFolder(m_home); }));
    std::filesystem::create_directories(m_root);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_stateKey.c_str());
    SetEnvironmentVariableW(L"KORA_STATEKEY", m_stateKey.c_str());
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", m_root.c_str());

    std::string said;
    EXPECT_EQ(RunProgram(L"handset.exe", L"install \"" + m_root + L"\"", &said), 0u) << said;
    SetState(L"TunerLog", L"\\tuner.log");
    // Where no station of its band is.
    SetState(L"TunedChannel", 8750u);
    ResetBand();
}

HandsetUnderTest::~HandsetUnderTest() {
    --g_handsets;
    LookForComplaints(Trace());
    RegDeleteTreeW(HKEY_CURRENT_USER, m_stateKey.c_str());
    RemoveFolder(m_home);
    SetEnvironmentVariableW(L"KORA_STATEKEY", nullptr);
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", nullptr);
}

void HandsetUnderTest::WriteBand(const std::string& text) const {
    WriteWholeFile(DevicePath(L"\\Windows\\band.ini"), text);
}

void HandsetUnderTest::ResetBand() const {
    WriteBand(kBand);
}

void HandsetUnderTest::SetState(const wchar_t* name, std::uint32_t value) const {
    SetValue(m_stateKey, name, REG_DWORD, &value, sizeof value);
}

void HandsetUnderTest::SetState(const wchar_t* name, const std::wstring& value) const {
    SetValue(m_stateKey, name, REG_SZ, value.c_str(), Bytes(value));
}

void HandsetUnderTest::DeleteState(const wchar_t* name) const {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, m_stateKey.c_str(), name);
}

void HandsetUnderTest::SetRegistry(const std::wstring& key, const wchar_t* value, std::uint32_t data) const {
    SetValue(m_stateKey + L"\\Registry\\" + key, value, REG_DWORD, &data, sizeof data);
}

void HandsetUnderTest::SetRegistry(const std::wstring& key, const wchar_t* value,
                                   const std::wstring& data) const {
    SetValue(m_stateKey + L"\\Registry\\" + key, value, REG_SZ, data.c_str(), Bytes(data));
}

void HandsetUnderTest::DeleteRegistry(const std::wstring& key, const wchar_t* value) const {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, (m_stateKey + L"\\Registry\\" + key).c_str(), value);
}

void HandsetUnderTest::DeleteRegistryKey(const std::wstring& key) const {
    RegDeleteTreeW(HKEY_CURRENT_USER, (m_stateKey + L"\\Registry\\" + key).c_str());
}

std::optional<std::uint32_t> HandsetUnderTest::RegistryNumber(const std::wstring& key,
                                                              const wchar_t* value) const {
    DWORD data = 0, size = sizeof data;
    if (RegGetValueW(HKEY_CURRENT_USER, (m_stateKey + L"\\Registry\\" + key).c_str(), value, RRF_RT_REG_DWORD,
                     nullptr, &data, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return data;
}

std::wstring HandsetUnderTest::RegistryText(const std::wstring& key, const wchar_t* value) const {
    wchar_t text[300] = L"";
    DWORD size = sizeof text;
    RegGetValueW(HKEY_CURRENT_USER, (m_stateKey + L"\\Registry\\" + key).c_str(), value, RRF_RT_REG_SZ,
                 nullptr, text, &size);
    return text;
}

std::vector<std::wstring> HandsetUnderTest::RegistrySubkeys(const std::wstring& key) const {
    std::vector<std::wstring> names;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, (m_stateKey + L"\\Registry\\" + key).c_str(), 0, KEY_READ,
                      &opened) != ERROR_SUCCESS) {
        return names;
    }
    wchar_t name[256] = L"";
    for (DWORD index = 0, size = 256;
         RegEnumKeyExW(opened, index, name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++index, size = 256) {
        names.push_back(name);
    }
    RegCloseKey(opened);
    return names;
}

void HandsetUnderTest::PlugHeadset(bool in) const {
    SetRegistry(L"HKLM\\System\\State\\Hardware", L"Headset", in ? 1u : 0u);
}

std::vector<std::string> HandsetUnderTest::TunerCalls() const {
    return Lines(ReadWholeFile(TunerLogFile()));
}

std::string HandsetUnderTest::Trace() const {
    return ReadWholeFile(TraceFile());
}
std::string HandsetUnderTest::Console() const {
    return ReadWholeFile(ConsoleFile());
}
void HandsetUnderTest::ClearTunerLog() const {
    DeleteFileW(TunerLogFile().c_str());
}

}  // namespace test
