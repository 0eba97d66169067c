// Programs of the device: started by their path or, as on the device, by a bare name that is looked for in
// \Windows and in the root.
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cwchar>
#include <string>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"
#include "handset/state/process_start.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;
using handset::CDevicePath;
using handset::OnDevice;
using handset::OwnedHandle;

constexpr INT_PTR kStarted = 33;  // what is above 32 is no error

bool IsFile(const wchar_t* hostPath) {
    const DWORD attributes = GetFileAttributesW(hostPath);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// The host path of a file of the device; empty, with the last error, when there is none.
std::wstring FindOnDevice(const std::wstring& name) {
    const bool bare = name.find_first_of(L"\\/:") == std::wstring::npos;
    for (const wchar_t* folder : {L"\\Windows\\", L"\\"}) {
        const CDevicePath path = OnDevice((bare ? folder + name : name).c_str());
        if (!path) return L"";
        if (!name.empty() && IsFile(path.host())) return path.host();
        if (!bare) break;
    }
    SetLastError(ERROR_FILE_NOT_FOUND);
    return L"";
}

std::wstring FindProgram(const std::wstring& name) {
    const std::size_t dot = name.rfind(L'.');
    const bool hasExtension =
        dot != std::wstring::npos && name.find_first_of(L"\\/", dot) == std::wstring::npos;
    return FindOnDevice(hasExtension ? name : name + L".exe");
}

// The first word of a command line, without its quotation marks; what follows stays in `line`.
std::wstring TakeFirstWord(std::wstring* line) {
    const bool quoted = !line->empty() && line->front() == L'"';
    const std::size_t begin = quoted ? 1 : 0;
    const std::size_t end = std::min(line->find(quoted ? L'"' : L' ', begin), line->size());
    const std::wstring word = line->substr(begin, end - begin);
    line->erase(0, std::min(line->size(), end + 1));
    return word;
}

// On the device the command line does not begin with the program's name; a program of the host expects it.
bool Start(const std::wstring& program, const std::wstring& arguments, DWORD flags, WORD show,
           PROCESS_INFORMATION* process) {
    std::wstring line = L"\"" + program + L"\"";
    if (!arguments.empty()) line += L" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = show;
    return handset::StartProcess(program.c_str(), line.data(), nullptr, nullptr, FALSE, flags, nullptr,
                                 nullptr, &startup, process) != FALSE;
}

}  // namespace

// The device takes neither handles to inherit, an environment, a directory nor start-up information.
COREDLL_EXPORT BOOL WINAPI DeviceCreateProcessW(const wchar_t* program, wchar_t* commandLine,
                                                SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD flags,
                                                void*, wchar_t*, STARTUPINFOW*,
                                                PROCESS_INFORMATION* process) try {
    const CCallGuard guard(CallKind::Waits);
    std::wstring arguments = commandLine != nullptr ? commandLine : L"";
    const std::wstring path = FindProgram(program != nullptr ? program : TakeFirstWord(&arguments));
    PROCESS_INFORMATION started{};
    if (path.empty() || !Start(path, arguments, flags, SW_SHOWNORMAL, &started)) return FALSE;
    if (process != nullptr) {
        *process = started;
    } else {
        const OwnedHandle thread(started.hThread);
        const OwnedHandle unasked(started.hProcess);
    }
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

// A program is started; a document is opened by the host's own program for it.
COREDLL_EXPORT BOOL WINAPI DeviceShellExecuteEx(SHELLEXECUTEINFOW* info) try {
    const CCallGuard guard(CallKind::CallsBack);
    if (info == nullptr || info->lpFile == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto failed = [info](INT_PTR code) {
        info->hInstApp = reinterpret_cast<HINSTANCE>(code);
        return FALSE;
    };
    const std::wstring document = FindOnDevice(info->lpFile);
    const std::wstring program = document.empty() ? FindProgram(info->lpFile) : document;
    if (program.empty()) return failed(SE_ERR_FNF);
    const bool executable =
        program.size() > 4 && _wcsicmp(program.c_str() + program.size() - 4, L".exe") == 0;
    if (!executable) {
        SHELLEXECUTEINFOW host = *info;
        host.lpFile = program.c_str();
        host.fMask |= SEE_MASK_FLAG_NO_UI;
        const BOOL done = ShellExecuteExW(&host);
        info->hInstApp = host.hInstApp;
        info->hProcess = host.hProcess;
        return done;
    }
    PROCESS_INFORMATION started{};
    if (!Start(program, info->lpParameters != nullptr ? info->lpParameters : L"", 0,
               static_cast<WORD>(info->nShow), &started)) {
        return failed(SE_ERR_ACCESSDENIED);
    }
    const OwnedHandle thread(started.hThread);
    OwnedHandle running(started.hProcess);
    info->hInstApp = reinterpret_cast<HINSTANCE>(kStarted);
    // The caller is to close it.
    if ((info->fMask & SEE_MASK_NOCLOSEPROCESS) != 0) info->hProcess = running.release();
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
