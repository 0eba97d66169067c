#include "tests/unit/handset/booked_handset.h"

#include "handset/controls/device_registry.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/host_folder.h"
#include "handset/service/booking_service.h"
#include "handset/state/process_start.h"

namespace panel {

BookedHandset::BookedHandset() {
    SetClock(ten_ - kHour_s);
}

void BookedHandset::Book(const std::wstring& name, const std::wstring& word, handset::LocalSeconds time,
                         handset::Repeat repeat) const {
    BookLine(name, L"exit 0 " + word, time, repeat);
}

void BookedHandset::BookLine(const std::wstring& name, const std::wstring& commandLine,
                             handset::LocalSeconds time, handset::Repeat repeat) const {
    const std::wstring key = L"HKLM\\System\\Notifications\\" + name;
    SetDeviceString(key, handset::kBookingProgram, L"\\Windows\\UI.exe");
    SetDeviceString(key, handset::kBookingCommandLine, commandLine);
    SetDeviceDword(key, handset::kBookingRepeat, static_cast<DWORD>(repeat));
    SetDeviceString(key, handset::kBookingStart, handset::LocalTimeText(time));
}

int BookedHandset::StartsOf(const std::string& word) const {
    const std::string notes = Notes();
    const std::string line = "command line [exit 0 " + word + "]\n";
    int count = 0;
    for (std::size_t at = notes.find(line); at != std::string::npos; at = notes.find(line, at + 1)) ++count;
    return count;
}

bool BookedHandset::WaitForStart(const std::string& word) const {
    return WaitUntil([&] { return StartsOf(word) > 0; }, kDeadline_ms);
}

void BookedHandset::LookOnce() {
    console_.lines.clear();
    const handset::OwnedHandle stop(CreateEventW(nullptr, TRUE, TRUE, nullptr));
    for (std::size_t said = ~std::size_t{0}; said != console_.lines.size();) {
        EXPECT_TRUE(CRadioTurn(kDeadline_ms));
        said = console_.lines.size();
        CBookingService(console_).Run(stop.get());
    }
}

void BookedHandset::SetClock(handset::LocalSeconds time) {
    EXPECT_TRUE(SetClockTime(time));
}

HandsetProcess::HandsetProcess(const std::wstring& arguments) {
    static int count = 0;
    wchar_t folder[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    m_file = folder +
             (L"kora-handset-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count));
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    const handset::OwnedHandle output(CreateFileW(m_file.c_str(), FILE_APPEND_DATA,
                                                  FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit, CREATE_ALWAYS,
                                                  0, nullptr));
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output.get();
    std::wstring line = L"\"" + ProgramFolder() + L"\\handset.exe\" " + arguments;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(handset::StartProcess(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                      &startup, &process));
    CloseHandle(process.hThread);
    m_process = handset::OwnedHandle(process.hProcess);
}

void HandsetProcess::Kill() {
    if (WaitForSingleObject(m_process.get(), 0) == WAIT_TIMEOUT) {
        TerminateProcess(m_process.get(), 99);
        WaitForSingleObject(m_process.get(), kDeadline_ms);
    }
}

int HandsetProcess::Wait() {
    if (WaitForSingleObject(m_process.get(), kDeadline_ms) != WAIT_OBJECT_0) return -1;
    DWORD code = 0;
    GetExitCodeProcess(m_process.get(), &code);
    return static_cast<int>(code);
}

std::string HandsetProcess::Output() const {
    return ReadWholeFile(m_file).value_or("");
}

}  // namespace panel
