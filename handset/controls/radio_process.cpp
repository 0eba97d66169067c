// Starting, finding and closing the radio.
#include "handset/controls/radio_process.h"

#include <tlhelp32.h>

#include <algorithm>
#include <atomic>

#include "handset/base/file_time.h"
#include "handset/controls/handset_desktop.h"
#include "handset/controls/host_folder.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/wait.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"
#include "handset/state/process_start.h"

namespace panel {
namespace {

using handset::Ticks;

constexpr wchar_t kProgramName[] = L"UI.exe";
constexpr wchar_t kRadioPath[] = L"\\Windows\\UI.exe";
constexpr std::uint64_t kLongestStart_100ns = 30 * 10000000ULL;

bool RunsProgram(DWORD processId, const std::wstring& program) {
    const handset::OwnedHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    std::wstring image(MAX_PATH * 2, L'\0');
    DWORD length = static_cast<DWORD>(image.size());
    DWORD code = 0;
    // An ended process is still to be seen for as long as somebody holds a handle of it.
    if (!process || !GetExitCodeProcess(process.get(), &code) || code != STILL_ACTIVE ||
        !QueryFullProcessImageNameW(process.get(), 0, image.data(), &length)) {
        return false;
    }
    image.resize(length);
    return _wcsicmp(FullHostPath(image).c_str(), program.c_str()) == 0;
}

// On its way to its first window, or gone from its last.
bool IsUnsettled(DWORD processId) {
    if (MainWindowOf(processId) != nullptr || !WindowsOfProcess(processId).empty()) return false;
    const handset::OwnedHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    FILETIME begun = {}, ended = {}, kernel = {}, user = {}, now = {};
    DWORD code = 0;
    if (!process || !GetExitCodeProcess(process.get(), &code) || code != STILL_ACTIVE ||
        !GetProcessTimes(process.get(), &begun, &ended, &kernel, &user)) {
        return false;
    }
    GetSystemTimeAsFileTime(&now);
    return Ticks(now) - Ticks(begun) < kLongestStart_100ns;
}

bool AnyRadioIsUnsettled() {
    const auto radios = RadioProcesses();
    return std::any_of(radios.begin(), radios.end(), IsUnsettled);
}

}  // namespace

std::wstring RadioProgram() {
    return handset::HostPath(kRadioPath);
}

std::optional<DWORD> RadioProcess() {
    // The panel asks several times a second: the one found last is looked at before all processes are.
    static std::atomic<DWORD> last = 0;
    if (last != 0 && RunsProgram(last, FullHostPath(RadioProgram()))) return last.load();
    const auto radios = RadioProcesses();
    if (radios.empty()) return std::nullopt;
    last = radios.front();
    return radios.front();
}

std::vector<DWORD> RadioProcesses() {
    const std::wstring program = FullHostPath(RadioProgram());
    std::vector<DWORD> found;
    const handset::OwnedHandle snapshot(handset::Opened(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0)));
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry)) {
        if (_wcsicmp(entry.szExeFile, kProgramName) == 0 && RunsProgram(entry.th32ProcessID, program))
            found.push_back(entry.th32ProcessID);
    }
    return found;
}

CRadioTurn::CRadioTurn(unsigned patience_ms) {
    const auto taken = [this] {
        lock_.emplace();
        if (*lock_ && !AnyRadioIsUnsettled()) return true;
        lock_.reset();
        return false;
    };
    WaitUntil(taken, patience_ms);
}

bool IsRadio(const std::wstring& devicePath) {
    return _wcsicmp(handset::OnDevice(devicePath.c_str()).device().c_str(), kRadioPath) == 0;
}

RadioStart LaunchRadio(const std::wstring& commandLine, RadioConsole console, unsigned patience_ms) {
    RadioStart start = LaunchProgram(kRadioPath, commandLine, console, patience_ms);
    const bool installed = !handset::DeviceRoot().empty() &&
                           GetFileAttributesW(RadioProgram().c_str()) != INVALID_FILE_ATTRIBUTES;
    if (!start.process && !installed) start.fault += L"; \"handset install\" sets the handset up";
    return start;
}

RadioStart LaunchProgram(const std::wstring& devicePath, const std::wstring& commandLine,
                         RadioConsole console, unsigned patience_ms) {
    RadioStart start;
    const handset::CDevicePath place = handset::OnDevice(devicePath.c_str());
    // What is not the device's is no program of it.
    if (!place || place.device().empty() || GetFileAttributesW(place.host()) == INVALID_FILE_ATTRIBUTES) {
        start.fault = L"there is no " + devicePath + L" on the device";
        return start;
    }
    const std::wstring program = place.host();
    std::optional<CRadioTurn> turn;
    if (IsRadio(devicePath) && !turn.emplace(patience_ms)) {
        start.fault = L"another start of the radio is under way";
        return start;
    }
    handset::WakePhone();
    // The program's own name is the first word, quoted; the rest is the device's command line.
    std::wstring line = L"\"" + program + L"\"" + (commandLine.empty() ? L"" : L" " + commandLine);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    std::wstring desktop = CurrentDesktop();
    startup.lpDesktop = desktop.data();
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput =
        GetStdHandle(console == RadioConsole::kOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process = {};
    const std::wstring folder = program.substr(0, program.rfind(L'\\'));
    if (!handset::StartProcess(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                               folder.c_str(), &startup, &process)) {
        start.fault = program + L" did not start (error " + std::to_wstring(GetLastError()) + L")";
        return start;
    }
    const handset::OwnedHandle thread(process.hThread);
    start.process.reset(process.hProcess);
    start.processId = process.dwProcessId;
    // It comes to the front as on the device, where the host leaves that to the one who may.
    AllowSetForegroundWindow(start.processId);
    return start;
}

void AskToClose(DWORD processId) {
    // A program that is held could not answer.
    handset::WakePhone();
    if (const HWND window = MainWindowOf(processId)) {
        PostMessageW(window, WM_CLOSE, 0, 0);
        return;
    }
    for (const HWND window : WindowsOfProcess(processId)) PostMessageW(window, WM_CLOSE, 0, 0);
}

bool AskRadioToClose() {
    const auto radios = RadioProcesses();
    for (const DWORD radio : radios) AskToClose(radio);
    return !radios.empty();
}

}  // namespace panel
