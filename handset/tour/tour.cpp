// The steps of the guided tour.
#include "handset/tour/tour.h"

#include <windows.h>

#include <cwchar>

#include "handset/controls/handset_desktop.h"
#include "handset/controls/host_folder.h"
#include "handset/controls/own_program.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/controls/wait.h"
#include "handset/phone/phone_keys.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/own_windows.h"
#include "handset/state/screen_size.h"
#include "handset/tour/tour_watch.h"

namespace panel {
namespace {

constexpr unsigned kWindowTimeout_ms = 60000;
constexpr unsigned kCloseTimeout_ms = 30000;
constexpr double kAudible_dBFS = -60;
constexpr int kVolumeSteps = 6;
constexpr DWORD kSeekHold_ms = 150;
constexpr unsigned kSeekTimeout_ms = 3000;
constexpr int kSeekAttempts = 5;

// Middles of the main screen's buttons, in the window below the shell's bar.
struct ButtonPlace {
    POINT portrait, landscape;
};
constexpr ButtonPlace kSeekUp = {{138, 251}, {175, 170}};
constexpr ButtonPlace kMute = {{24, 222}, {61, 142}};

// The phone around the display for the length of the tour, unless it is open already.
class CTourPanel {
  public:
    CTourPanel() {
        if (Window() != nullptr) return;
        process_ = StartOwnProgram(L"panel", 0, CurrentDesktop());
        if (!process_) return;
        opened_ =
            WaitUntil([] { return Window() != nullptr && IsWindowVisible(Window()); }, kWindowTimeout_ms);
    }
    ~CTourPanel() {
        if (!opened_) return;
        PostMessageW(Window(), WM_CLOSE, 0, 0);
        WaitForSingleObject(process_.get(), kCloseTimeout_ms);
    }
    CTourPanel(const CTourPanel&) = delete;
    CTourPanel& operator=(const CTourPanel&) = delete;

  private:
    static HWND Window() { return handset::FindOwnWindow(handset::kPanelClass); }

    handset::OwnedHandle process_;
    bool opened_ = false;
};

struct Tour {
    CTourWatch watch;
    CConsole& console;
    handset::OwnedHandle process;
};

POINT PlaceOnScreen(const ButtonPlace& button) {
    const ScreenSize screen = CurrentScreen();
    return screen.width < screen.height ? button.portrait : button.landscape;
}

bool Touch(Stylus touch, const ButtonPlace& button) {
    const POINT place = PlaceOnScreen(button);
    return TouchDisplay(touch, static_cast<int>(place.x),
                        static_cast<int>(place.y + handset::ShellBarHeight()));
}

bool Press(PhoneKey key) {
    return PressPhoneKey(key, true) && PressPhoneKey(key, false);
}

bool Failed(Tour& tour, const wchar_t* what) {
    tour.console.Error(std::wstring(L"handset tour: ") + what);
    return false;
}

// Prints what is heard; false when the loudness is not as it should be.
bool Hear(Tour& tour, bool audible) {
    const auto heard = tour.watch.ListenNow();
    if (!heard) return Failed(tour, L"no sound was written");
    wchar_t text[128];
    if (heard->loudness_dBFS <= sound::kSilence_dBFS) {
        swprintf(text, std::size(text), L"  heard: silence");
    } else {
        swprintf(text, std::size(text), L"  heard: %.1f dBFS, strongest tone %.0f Hz", heard->loudness_dBFS,
                 heard->tone_Hz);
    }
    tour.console.Line(text);
    if ((heard->loudness_dBFS > kAudible_dBFS) == audible) return true;
    return Failed(tour, audible ? L"the radio should be heard" : L"the radio should be silent");
}

bool ShowTuned(Tour& tour) {
    tour.console.Line(L"  tuned: " + tour.watch.TunedTo());
    return true;
}

bool SwitchOn(Tour& tour) {
    RadioStart radio = LaunchRadio(L"", RadioConsole::kErrorOutput);
    if (!radio.process) {
        tour.console.Error(L"handset tour: " + radio.fault);
        return false;
    }
    tour.process = std::move(radio.process);
    const auto shown = [] { return RadioMainWindow() != nullptr && IsWindowVisible(RadioMainWindow()); };
    if (!WaitUntil(shown, kWindowTimeout_ms)) return Failed(tour, L"the radio showed no window in 60 s");
    if (!tour.watch.WaitForCalls("GetChannel", 1)) return Failed(tour, L"the radio showed no frequency");
    return ShowTuned(tour);
}

// The button acts once for every 100 ms that it is held. On a busy host the first of them may come after the
// stylus was lifted; then it is pressed again.
bool SeekUp(Tour& tour) {
    const std::size_t seeks = tour.watch.Calls("SeekNext");
    const std::size_t shown = tour.watch.Calls("GetChannel");
    bool sought = false;
    for (int attempt = 0; attempt < kSeekAttempts && !sought; ++attempt) {
        if (!Touch(Stylus::kDown, kSeekUp)) return Failed(tour, L"the seek button could not be touched");
        Sleep(kSeekHold_ms);
        Touch(Stylus::kUp, kSeekUp);
        sought = WaitUntil([&] { return tour.watch.Calls("SeekNext") > seeks; }, kSeekTimeout_ms);
    }
    if (!sought || !tour.watch.WaitForCalls("GetChannel", shown + 1)) {
        return Failed(tour, L"no station was found");
    }
    return ShowTuned(tour) && Hear(tour, true);
}

// Types a station of the band that is not tuned, or one of the middle of the band.
bool TypeFrequency(Tour& tour) {
    std::uint32_t channel = 9850;
    for (const BandStation& station : tour.watch.Stations()) {
        if (station.channel != tour.watch.LastNumberOf("GetChannel") && !station.name.empty()) {
            channel = station.channel / 10 * 10;
        }
    }
    const std::wstring digits = std::to_wstring(channel / 10);
    tour.console.Line(L"  keys: " + digits);
    for (const wchar_t digit : digits) {
        if (!Press(*KeyNamed(std::wstring(1, digit)))) return Failed(tour, L"nobody took the key");
    }
    if (!tour.watch.WaitForNumber("SetChannel", channel)) return Failed(tour, L"the frequency was not tuned");
    if (!tour.watch.WaitForNumber("GetChannel", channel)) return Failed(tour, L"the frequency was not shown");
    return ShowTuned(tour) && Hear(tour, true);
}

bool PressVolume(Tour& tour, PhoneKey key) {
    const std::size_t before = tour.watch.Calls("SetVolume");
    for (int i = 0; i < kVolumeSteps; ++i) {
        if (!Press(key)) return Failed(tour, L"nobody took the key");
    }
    if (!tour.watch.WaitForCalls("SetVolume", before + kVolumeSteps)) {
        return Failed(tour, L"the volume was not set");
    }
    tour.console.Line(L"  volume: " + std::to_wstring(tour.watch.LastNumberOf("SetVolume").value_or(0)) +
                      L" %");
    return Hear(tour, true);
}

bool Louder(Tour& tour) {
    return PressVolume(tour, PhoneKey::kRight);
}
bool Quieter(Tour& tour) {
    return PressVolume(tour, PhoneKey::kLeft);
}

bool ToggleMute(Tour& tour, std::uint32_t muted) {
    if (!Touch(Stylus::kDown, kMute) || !Touch(Stylus::kUp, kMute)) {
        return Failed(tour, L"the mute button could not be touched");
    }
    if (!tour.watch.WaitForNumber("SetMute", muted)) return Failed(tour, L"the tuner was not told");
    return Hear(tour, muted == 0);
}

bool Mute(Tour& tour) {
    return ToggleMute(tour, 1);
}
bool Unmute(Tour& tour) {
    return ToggleMute(tour, 0);
}

bool SwitchOff(Tour& tour) {
    AskRadioToClose();
    if (WaitForSingleObject(tour.process.get(), kCloseTimeout_ms) != WAIT_OBJECT_0) {
        return Failed(tour, L"the radio did not close in 30 s");
    }
    DWORD code = 0;
    GetExitCodeProcess(tour.process.get(), &code);
    tour.console.Line(L"  the radio ended with " + std::to_wstring(code));
    return tour.watch.WaitForCalls("Close", 1) || Failed(tour, L"the tuner was not closed");
}

struct Step {
    const wchar_t* title;
    bool (*run)(Tour& tour);
    const wchar_t* picture;  // null: none
};
const Step kSteps[] = {
    {L"switching the radio on", SwitchOn, L"tour-1-on"},
    {L"seeking upwards", SeekUp, L"tour-2-first-station"},
    {L"seeking on", SeekUp, L"tour-3-second-station"},
    {L"and on", SeekUp, L"tour-4-third-station"},
    {L"louder", Louder, L"tour-5-louder"},
    {L"quieter", Quieter, nullptr},
    // The volume keys have taken the focus from the channel list, which would keep the digits to itself.
    {L"typing a frequency", TypeFrequency, L"tour-6-typed"},
    {L"muting", Mute, L"tour-7-muted"},
    {L"unmuting", Unmute, nullptr},
    {L"switching off", SwitchOff, nullptr},
};

}  // namespace

int RunTour(const std::wstring& folder, CConsole& console) {
    if (RadioProcess())
        return Failure(console, L"tour", L"the radio is running; close it first (\"handset stop\")");
    if (!HeadsetPlugged())
        return Failure(console, L"tour", L"no headset is in; \"handset headset on\" plugs it in");
    const CTourPanel phone;
    Tour tour{CTourWatch(FullHostPath(folder), console), console, handset::OwnedHandle()};
    for (const Step& step : kSteps) {
        console.Line(step.title);
        if (!step.run(tour)) {
            AskRadioToClose();
            return kFailed;
        }
        if (step.picture != nullptr) tour.watch.Picture(step.picture);
    }
    tour.watch.KeepSound();
    console.Line(L"the tour is over; everything did what it should");
    return kDone;
}

}  // namespace panel
