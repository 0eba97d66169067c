#include "handset/controls/own_program.h"

#include "handset/controls/host_folder.h"
#include "handset/state/process_start.h"

namespace panel {

handset::OwnedHandle StartOwnProgram(const std::wstring& verb, DWORD flags, std::wstring desktop) {
    const std::wstring program = ProgramFolder() + L"\\handset.exe";
    std::wstring line = L"\"" + program + L"\" " + verb;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    if (!desktop.empty()) startup.lpDesktop = desktop.data();
    PROCESS_INFORMATION process = {};
    if (!handset::StartProcess(program.c_str(), line.data(), nullptr, nullptr, FALSE, flags, nullptr, nullptr,
                               &startup, &process))
        return nullptr;
    const handset::OwnedHandle thread(process.hThread);
    return handset::OwnedHandle(process.hProcess);
}

}  // namespace panel
