// Starting, finding and closing the radio.
#include "handset/panel/radio_process.h"

#include <tlhelp32.h>

#include <atomic>

#include "handset/panel/handset_desktop.h"
#include "handset/panel/host_folder.h"
#include "handset/panel/radio_windows.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"
#include "handset/state/process_start.h"

namespace panel {
namespace {

constexpr wchar_t kProgramName[] = L"UI.exe";
constexpr wchar_t kRadioPath[] = L"\\Windows\\UI.exe";

bool RunsProgram(DWORD processId, const std::wstring& program) {
    const OwnedHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
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

}  // namespace

std::wstring RadioProgram() {
    return handset::HostPath(kRadioPath);
}

std::optional<DWORD> RadioProcess() {
    // The panel asks several times a second: the one found last is looked at before all processes are.
    static std::atomic<DWORD> last = 0;
    const std::wstring program = FullHostPath(RadioProgram());
    if (last != 0 && RunsProgram(last, program)) return last.load();
    const OwnedHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry)) {
        if (_wcsicmp(entry.szExeFile, kProgramName) == 0 && RunsProgram(entry.th32ProcessID, program)) {
            last = entry.th32ProcessID;
            return entry.th32ProcessID;
        }
    }
    return std::nullopt;
}

RadioStart LaunchRadio(const std::wstring& commandLine, RadioConsole console) {
    RadioStart start = LaunchProgram(kRadioPath, commandLine, console);
    const bool installed = !handset::DeviceRoot().empty() &&
                           GetFileAttributesW(RadioProgram().c_str()) != INVALID_FILE_ATTRIBUTES;
    if (!start.process && !installed) start.fault += L"; \"handset install\" sets the handset up";
    return start;
}

RadioStart LaunchProgram(const std::wstring& devicePath, const std::wstring& commandLine,
                         RadioConsole console) {
    RadioStart start;
    const std::wstring program = handset::HostPath(devicePath.c_str());
    if (handset::DeviceRoot().empty() || devicePath.empty() || devicePath[0] != L'\\' ||
        GetFileAttributesW(program.c_str()) == INVALID_FILE_ATTRIBUTES) {
        start.fault = L"there is no " + (handset::DeviceRoot().empty() ? devicePath : program);
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
    CloseHandle(process.hThread);
    start.process = OwnedHandle(process.hProcess);
    start.processId = process.dwProcessId;
    // It comes to the front as on the device, where the host leaves that to the one who may.
    AllowSetForegroundWindow(start.processId);
    return start;
}

bool AskRadioToClose() {
    // A program that is held could not answer.
    handset::WakePhone();
    if (const HWND window = RadioMainWindow()) return PostMessageW(window, WM_CLOSE, 0, 0) != FALSE;
    const auto process = RadioProcess();
    if (!process) return false;
    for (const HWND window : WindowsOfProcess(*process)) PostMessageW(window, WM_CLOSE, 0, 0);
    return true;
}

}  // namespace panel
