// The radio's process: \Windows\UI.exe of this handset, started and found from outside.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "handset/panel/owned_handle.h"

namespace panel {

// Host path of the radio's program.
std::wstring RadioProgram();
// Process id of a running radio of this handset; nothing when none runs. Any thread.
std::optional<DWORD> RadioProcess();

struct RadioStart {
    OwnedHandle process;  // null: it did not start
    DWORD processId = 0;
    std::wstring fault;  // why it did not start
};
// Where the radio's console output goes; its error output, the trace, always goes to this program's.
enum class RadioConsole { kOutput, kErrorOutput };
// Starts the radio with `commandLine` as its command line, character for character. The environment and the
// standard handles are handed on. Returns at once.
RadioStart LaunchRadio(const std::wstring& commandLine, RadioConsole console = RadioConsole::kOutput);

// The same for any program of the device, by its path there.
RadioStart LaunchProgram(const std::wstring& devicePath, const std::wstring& commandLine,
                         RadioConsole console = RadioConsole::kOutput);

// Asks the radio to close, as its main window's close button would (WM_CLOSE to every window that it shows
// when it has no main window). Returns at once; false when none runs.
bool AskRadioToClose();

}  // namespace panel
