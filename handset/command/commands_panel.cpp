// panel, help.
#include <windows.h>

#include "handset/command/command.h"
#include "handset/phone/panel_window.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/own_windows.h"

namespace panel {
namespace {

int Panel(const Arguments& arguments, CConsole& console) {
    const bool withRadio = arguments.size() == 1 && arguments[0] == L"--with-radio";
    if (!arguments.empty() && !withRadio) {
        return BadArguments(console, L"panel", L"\"" + arguments[0] + L"\" is not understood");
    }
    if (handset::FindOwnWindow(handset::kPanelClass) != nullptr) {
        return Failure(console, L"panel", L"the panel is open already");
    }
    return RunPanel(withRadio) == 0
               ? kDone
               : Failure(console, L"panel", L"the system gave no window; is there a display?");
}

// The dispatcher answers this verb itself; the row is there for the list of verbs.
int Help(const Arguments&, CConsole&) {
    return kDone;
}

const Command kCommands[] = {
    {L"panel", Panel, L"[--with-radio]", L"opens the phone around the display", L"handset panel --with-radio",
     L"The phone with its keys, and beside it the switches that the verbs turn. The radio's windows stand "
     L"in\n"
     L"its display and move with it. Pressing keys leaves the radio the active window. Returns when the "
     L"panel\n"
     L"is closed, which closes the radio as well. With --with-radio the radio is started on it.\n"},
    {L"help", Help, L"[VERB]", L"this list, or what one verb does", L"handset help power",
     L"Without VERB all verbs are listed.\n"},
};

}  // namespace

CommandGroup PanelCommands() {
    return {L"The panel", kCommands, std::size(kCommands)};
}

}  // namespace panel
