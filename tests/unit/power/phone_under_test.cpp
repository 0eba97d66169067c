// A phone of a test's own.
#include "tests/unit/power/phone_under_test.h"
#include "handset/state/process_start.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace test {
namespace {

// A program that is held writes nothing more after what it was about to write.
constexpr DWORD kSettling_ms = 150;
constexpr DWORD kStill_ms = 300;

std::wstring Folder(bool ofProgram) {
    wchar_t path[MAX_PATH] = L"";
    if (ofProgram) {
        GetModuleFileNameW(nullptr, path, MAX_PATH);
    } else {
        GetTempPathW(MAX_PATH, path);
    }
    return std::filesystem::path(path).parent_path().wstring();
}

}  // namespace

PhoneTest::PhoneTest() {
    const std::wstring id = std::to_wstring(GetCurrentProcessId());
    root_ = Folder(false) + L"\\kora_power_" + id;
    // A run that was broken off may have left one of the same number.
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
    std::filesystem::create_directories(root_);
    SetEnvironmentVariableW(L"KORA_STATEKEY", (L"Software\\Kora Handset Test\\power " + id).c_str());
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", root_.c_str());
}

PhoneTest::~PhoneTest() {
    KillPrograms();
    RegDeleteTreeW(HKEY_CURRENT_USER, handset::StateKeyPath().c_str());
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

void PhoneTest::StartProgram(const std::wstring& arguments) {
    const std::wstring program = Folder(true) + L"\\power_stand_in.exe";
    std::wstring line = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(handset::StartProcess(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                      nullptr, &startup, &process));
    CloseHandle(process.hThread);
    programs_.push_back(process.hProcess);
    ASSERT_TRUE(Works());
}

void PhoneTest::KillPrograms() {
    for (const HANDLE program : programs_) {
        TerminateProcess(program, 0);
        WaitForSingleObject(program, kDeadline_ms);
        CloseHandle(program);
    }
    programs_.clear();
}

bool PhoneTest::ProgramsEnd() {
    return WaitFor([this] {
        return std::all_of(programs_.begin(), programs_.end(),
                           [](HANDLE program) { return WaitForSingleObject(program, 0) == WAIT_OBJECT_0; });
    });
}

void PhoneTest::PutFile(const wchar_t* file) const {
    EXPECT_TRUE(std::ofstream(std::filesystem::path(root_) / file).is_open());
}

void PhoneTest::SetTimeout(const wchar_t* value, std::uint32_t seconds) {
    const std::wstring key =
        handset::DeviceRegistryRootPath(HKEY_LOCAL_MACHINE) + L"\\" + handset::kTimeoutsKey;
    RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), value, REG_DWORD, &seconds, sizeof seconds);
}

std::uint64_t PhoneTest::WorkDone() const {
    std::error_code missing;
    const auto size = std::filesystem::file_size(root_ + L"\\work.txt", missing);
    return missing ? 0 : size;
}

bool PhoneTest::Works() {
    const std::uint64_t before = WorkDone();
    return WaitFor([&] { return WorkDone() > before; });
}

bool PhoneTest::StandsStill() {
    std::uint64_t before = WorkDone();
    ULONGLONG since = GetTickCount64();
    return WaitFor([&] {
        const std::uint64_t now = WorkDone();
        if (now != before) since = GetTickCount64();
        before = now;
        return GetTickCount64() - since >= kSettling_ms + kStill_ms;
    });
}

std::vector<std::string> PhoneTest::LinesOf(const wchar_t* name) const {
    std::ifstream file(std::filesystem::path(root_) / name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

}  // namespace test
