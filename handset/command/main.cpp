// handset.exe: the phone around the radio, as a panel and as a command line.
#include <windows.h>

#include "handset/command/command.h"
#include "handset/controls/handset_desktop.h"
#include "handset/state/companion.h"
#include "handset/state/own_windows.h"

int wmain(int count, wchar_t** words) {
    handset::LoadCompanion();
    SetConsoleOutputCP(CP_UTF8);
    panel::JoinHandsetDesktop();
    handset::JoinHandset();
    return panel::RunCommandLine(panel::Arguments(words + (count > 0 ? 1 : 0), words + count),
                                 panel::StandardConsole());
}
