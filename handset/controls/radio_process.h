// The radio's process: \Windows\UI.exe of this handset, started and found from outside.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "handset/base/owned.h"
#include "handset/state/booking_lock.h"

namespace panel {

// Host path of the radio's program.
std::wstring RadioProgram();
// Process id of a running radio of this handset; nothing when none runs. Any thread.
std::optional<DWORD> RadioProcess();
// All of them: while one takes another's place there are two for a moment.
std::vector<DWORD> RadioProcesses();

// The right to start a radio. Each start looks for the window of the radio before it, so they are made one
// after the other: nobody else has the right, and every radio that was started has its window or has ended.
// One that came to nothing is waited for no longer than 30 s.
class CRadioTurn {
  public:
    explicit CRadioTurn(unsigned patience_ms);
    // False when it could not be had in that time.
    explicit operator bool() const { return lock_.has_value(); }

  private:
    std::optional<handset::CStartLock> lock_;
};

struct RadioStart {
    handset::OwnedHandle process;  // null: it did not start
    DWORD processId = 0;
    std::wstring fault;  // why it did not start
};
// Where the radio's console output goes; its error output, the trace, always goes to this program's.
enum class RadioConsole { kOutput, kErrorOutput };
// Starts the radio with `commandLine` as its command line, character for character. The environment and the
// standard handles are handed on. Returns as soon as it was started; for its turn it waits `patience_ms`.
inline constexpr unsigned kTurnPatience_ms = 30000;
RadioStart LaunchRadio(const std::wstring& commandLine, RadioConsole console = RadioConsole::kOutput,
                       unsigned patience_ms = kTurnPatience_ms);

// The same for any program of the device, by its path there. Only the radio is waited for.
RadioStart LaunchProgram(const std::wstring& devicePath, const std::wstring& commandLine,
                         RadioConsole console = RadioConsole::kOutput,
                         unsigned patience_ms = kTurnPatience_ms);
bool IsRadio(const std::wstring& devicePath);

// Asks a radio to close, as its main window's close button would (WM_CLOSE to every window that it shows when
// it has no main window). Returns at once.
void AskToClose(DWORD processId);
// Asks every radio of this handset; false when none runs.
bool AskRadioToClose();

}  // namespace panel
