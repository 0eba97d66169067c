// uninstall.
#include <windows.h>

#include "handset/command/command.h"
#include "handset/controls/host_folder.h"
#include "handset/controls/wait.h"
#include "handset/setup/removal.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/handset_state.h"
#include "handset/state/own_windows.h"

namespace panel {
namespace {

constexpr unsigned kPanelTimeout_ms = 30000;

bool ClosePanel() {
    const auto window = [] { return handset::FindOwnWindow(handset::kPanelClass); };
    if (const HWND panel = window()) PostMessageW(panel, WM_CLOSE, 0, 0);
    return WaitUntil([&] { return window() == nullptr; }, kPanelTimeout_ms);
}

int Uninstall(const Arguments& arguments, CConsole& console) {
    const bool all = arguments.size() == 1 && arguments[0] == L"--all";
    if (!arguments.empty() && !all) {
        return BadArguments(console, L"uninstall", L"\"" + arguments[0] + L"\" is not understood");
    }
    for (const Arguments& end : {Arguments{L"stop"}, Arguments{L"service", L"stop"}}) {
        if (const int code = RunCommandLine(end, console)) return code;
    }
    if (!ClosePanel()) return Failure(console, L"uninstall", L"the panel did not close in 30 s");
    const std::wstring root = handset::DeviceRoot();
    const RemovalReport report = RemoveHandset(all);
    if (!report.fault.empty()) return Failure(console, L"uninstall", report.fault);
    if (report.rootLeft) console.Line(SaidPath(root) + L" was there before the handset and stays as it is");
    if (!report.kept.empty()) console.Line(L"These recordings are kept; remove them when you like:");
    for (const std::wstring& path : report.kept) console.Line(L"  " + SaidPath(path));
    return kDone;
}

const Command kCommands[] = {
    {L"uninstall", Uninstall, L"[--all]", L"removes the handset's files and state", L"handset uninstall",
     L"Closes the radio, the panel and the service, and removes the device's files and the handset's key of "
     L"the\n"
     L"user's registry. Recordings stay where they are and are named: sound files, and what lies in\n"
     L"\\My Documents and on the storage card. With --all they go as well. A folder that held something "
     L"before\n"
     L"\"handset install\" is left alone. The programs themselves stay.\n"},
};

}  // namespace

CommandGroup RemovalCommands() {
    return {L"Putting it away", kCommands, std::size(kCommands)};
}

}  // namespace panel
