// start, stop, key, softkey, tap, tour: the running radio.
#include <windows.h>

#include "handset/command/command.h"
#include "handset/controls/encoding.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/phone/phone_keys.h"
#include "handset/state/handset_state.h"
#include "handset/tour/tour.h"

namespace panel {
namespace {

constexpr DWORD kStartTimeout_ms = 60000;
constexpr DWORD kStopTimeout_ms = 30000;
constexpr DWORD kForcedTimeout_ms = 5000;
constexpr DWORD kPollPeriod_ms = 20;
constexpr DWORD kReturnPeriod_ms = 200;
constexpr DWORD kTapHold_ms = 150;  // one tick of a button that repeats while it is held
constexpr DWORD kLongestHold_ms = 60000;

// Why nobody takes a key or a touch; `otherwise` when there is somebody.
std::wstring WhyNobody(const wchar_t* otherwise) {
    if (!RadioProcess()) return L"the radio does not run; \"handset start\" starts it";
    if (PhoneSleeps()) return L"the phone sleeps; \"handset power on\" wakes it";
    return DisplayLit() ? otherwise : L"the display is dark; \"handset power on\" lights it";
}

int Start(const Arguments& arguments, CConsole& console) {
    std::wstring line;
    for (const std::wstring& word : arguments) line += (line.empty() ? L"" : L" ") + word;
    const RadioStart radio = LaunchRadio(line);
    if (!radio.process) return Failure(console, L"start", radio.fault);
    const ULONGLONG deadline = GetTickCount64() + kStartTimeout_ms;
    while (GetTickCount64() < deadline) {
        if (WaitForSingleObject(radio.process.get(), kPollPeriod_ms) == WAIT_OBJECT_0) {
            DWORD code = 0;
            GetExitCodeProcess(radio.process.get(), &code);
            return static_cast<int>(code);
        }
        if (!WindowsOfProcess(radio.processId).empty()) return kDone;
    }
    return Failure(console, L"start", L"the radio showed no window in 60 s");
}

// The program asks nothing, but says in a box what it did; Return takes the box away.
int Favourites(const Arguments& arguments, CConsole& console) {
    if (!arguments.empty()) return BadArguments(console, L"favourites", L"no arguments are wanted");
    if (GetFileAttributesW(handset::HostPath(L"\\KORA.vol").c_str()) != INVALID_FILE_ATTRIBUTES) return kDone;
    const RadioStart radio = LaunchRadio(L"Kora.vol");
    if (!radio.process) return Failure(console, L"favourites", radio.fault);
    const ULONGLONG deadline = GetTickCount64() + kStartTimeout_ms;
    while (WaitForSingleObject(radio.process.get(), kReturnPeriod_ms) != WAIT_OBJECT_0) {
        if (GetTickCount64() >= deadline) {
            return Failure(console, L"favourites", L"the channel lists were not filled in 60 s");
        }
        if (WindowsOfProcess(radio.processId).empty()) continue;
        SendKey(VK_RETURN, true);
        SendKey(VK_RETURN, false);
    }
    return kDone;
}

// Asks one radio until it is gone; false when it is still there at the deadline.
bool CloseRadio(DWORD processId, ULONGLONG deadline_ms) {
    const handset::OwnedHandle process(OpenProcess(SYNCHRONIZE, FALSE, processId));
    AskToClose(processId);
    while (process && WaitForSingleObject(process.get(), kPollPeriod_ms) != WAIT_OBJECT_0) {
        if (GetTickCount64() >= deadline_ms) return false;
        // A window that was not there at the first asking, such as a message shown while closing.
        if (MainWindowOf(processId) == nullptr) AskToClose(processId);
    }
    return true;
}

bool EndRadio(DWORD processId) {
    const handset::OwnedHandle process(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, processId));
    if (!process) return true;
    TerminateProcess(process.get(), kFailed);
    return WaitForSingleObject(process.get(), kForcedTimeout_ms) == WAIT_OBJECT_0;
}

int Stop(const Arguments& arguments, CConsole& console) {
    const bool force = arguments.size() == 1 && arguments[0] == L"--force";
    if (!arguments.empty() && !force)
        return BadArguments(console, L"stop", L"\"" + arguments[0] + L"\" is not understood");
    const ULONGLONG deadline_ms = GetTickCount64() + (force ? kForcedTimeout_ms : kStopTimeout_ms);
    // Looked for again each time: one that was on its way in another's place counts as well.
    for (auto radios = RadioProcesses(); !radios.empty(); radios = RadioProcesses()) {
        const DWORD radio = radios.front();
        if (CloseRadio(radio, deadline_ms)) continue;
        if (!force) {
            return Failure(console, L"stop",
                           L"the radio did not close in 30 s; \"handset stop --force\" ends it as it is");
        }
        if (!EndRadio(radio)) return Failure(console, L"stop", L"the system could not end the radio");
        console.Line(L"the radio did not close in 5 s and was ended");
    }
    return kDone;
}

int Key(const Arguments& arguments, CConsole& console) {
    if (arguments.empty()) return BadArguments(console, L"key", L"the name of a key is wanted");
    for (const std::wstring& name : arguments) {
        if (!KeyNamed(name)) {
            std::wstring names;
            for (const PhoneKeyRow& row : PhoneKeys()) names += L" " + std::wstring(row.name);
            return BadArguments(console, L"key", L"there is no key \"" + name + L"\"; there are" + names);
        }
    }
    for (const std::wstring& name : arguments) {
        const PhoneKey key = *KeyNamed(name);
        if (!PressPhoneKey(key, true)) {
            return Failure(console, L"key", WhyNobody(L"no window of the radio takes keys"));
        }
        PressPhoneKey(key, false);
    }
    return kDone;
}

int SoftKey(const Arguments& arguments, CConsole& console) {
    const std::wstring side = arguments.size() == 1 ? arguments[0] : L"";
    if (side != L"left" && side != L"right") {
        return BadArguments(console, L"softkey", L"\"left\" or \"right\" is wanted");
    }
    if (PressSoftKey(side == L"right")) return kDone;
    return Failure(console, L"softkey", WhyNobody(L"the window in front has no soft keys"));
}

int Tap(const Arguments& arguments, CConsole& console) {
    if (arguments.size() < 2 || arguments.size() > 3) {
        return BadArguments(console, L"tap", L"a place on the display is wanted");
    }
    const ScreenSize screen = CurrentScreen();
    const auto x = ParseNumber(arguments[0]);
    const auto y = ParseNumber(arguments[1]);
    if (!x || !y || *x >= static_cast<std::uint64_t>(screen.width) ||
        *y >= static_cast<std::uint64_t>(screen.height)) {
        return BadArguments(console, L"tap",
                            arguments[0] + L", " + arguments[1] + L" is not on the display of " +
                                std::to_wstring(screen.width) + L"x" + std::to_wstring(screen.height) +
                                L" pixels");
    }
    const auto hold = arguments.size() == 3 ? ParseNumber(arguments[2]) : kTapHold_ms;
    if (!hold || *hold > kLongestHold_ms) {
        return BadArguments(console, L"tap",
                            L"\"" + arguments[2] + L"\" is no time: milliseconds from 0 to 60000");
    }
    if (!TouchDisplay(Stylus::kDown, static_cast<int>(*x), static_cast<int>(*y))) {
        return Failure(console, L"tap", WhyNobody(L"nothing of the radio can be touched there"));
    }
    Sleep(static_cast<DWORD>(*hold));
    TouchDisplay(Stylus::kUp, static_cast<int>(*x), static_cast<int>(*y));
    return kDone;
}

int Tour(const Arguments& arguments, CConsole& console) {
    if (arguments.size() != 1) return BadArguments(console, L"tour", L"a folder for the pictures is wanted");
    return RunTour(arguments[0], console);
}

const Command kCommands[] = {
    {L"start", Start, L"[ARGS …]", L"starts the radio", L"handset start",
     L"Starts \\Windows\\UI.exe with ARGS as its command line, joined by single blanks and otherwise as "
     L"they\n"
     L"are, and hands environment, output and error output on. Returns when the radio shows a window, or "
     L"with\n"
     L"its exit code when it has ended before that.\n"},
    {L"favourites", Favourites, L"", L"fills the channel lists of a new phone", L"handset favourites",
     L"With the preset favourites, unless the phone has channel lists already.\n"},
    {L"stop", Stop, L"[--force]", L"closes the radio and waits until it is gone", L"handset stop",
     L"As its close button would; every radio of this handset when there are several. Exit code 0 also when\n"
     L"none runs, 1 when one is still there after 30 s. With --force one that has not closed after 5 s is\n"
     L"ended; a recording plays up to there.\n"},
    {L"key", Key, L"NAME …", L"presses keys of the phone", L"handset key 9 8 5",
     L"0 to 9, star, hash, up, down, left, right, return, call, end, soft1, soft2; several are pressed one\n"
     L"after another. They go to the window that has the radio's focus; call and end take and end a call\n"
     L"while there is one.\n"},
    {L"softkey", SoftKey, L"left|right", L"presses a soft key", L"handset softkey right",
     L"Of the window or dialog in front.\n"},
    {L"tap", Tap, L"X Y [MS]", L"touches the display with the stylus", L"handset tap 120 40",
     L"At X, Y in pixels of the display, for MS real milliseconds (150); buttons that repeat while they are\n"
     L"held act once every 100 ms of the handset's clock.\n"},
    {L"tour", Tour, L"FOLDER", L"a guided tour of the radio, without a person", L"handset tour out",
     L"Starts the radio, seeks three stations, types a frequency, changes the volume, mutes and unmutes, "
     L"and\n"
     L"closes it, and prints what it hears and shows. At each stop it prints \"picture NAME\" and waits up "
     L"to\n"
     L"5 s for FOLDER\\NAME.png, which somebody else takes. Exit code 0 when every step did what it "
     L"should.\n"},
};

}  // namespace

CommandGroup RadioCommands() {
    return {L"The radio", kCommands, std::size(kCommands)};
}

}  // namespace panel
