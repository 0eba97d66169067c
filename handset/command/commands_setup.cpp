// install, status, clock.
#include <windows.h>

#include <cwchar>
#include <functional>

#include "handset/command/antenna.h"
#include "handset/command/command.h"
#include "handset/controls/encoding.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/host_folder.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/station_name.h"
#include "handset/controls/switches.h"
#include "handset/controls/telephone.h"
#include "handset/service/booking_service.h"
#include "handset/service/ether_service.h"
#include "handset/setup/install.h"
#include "handset/setup/removal.h"
#include "handset/state/handset_clock.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"

namespace panel {
namespace {

// The folder of the argument, or the one that the state has, or the first one.
bool SettleDeviceRoot(const Arguments& arguments) {
    if (!arguments.empty()) return handset::SetStateString(L"DeviceRoot", FullHostPath(arguments[0]));
    return !handset::DeviceRoot().empty() || handset::SetStateString(L"DeviceRoot", DefaultDeviceRoot());
}

int Install(const Arguments& words, CConsole& console) {
    const bool unlessRunning = !words.empty() && words[0] == L"--unless-running";
    const Arguments arguments(words.begin() + (unlessRunning ? 1 : 0), words.end());
    if (arguments.size() > 1) return BadArguments(console, L"install", L"one folder at most");
    if (RadioProcess()) {
        if (unlessRunning) {
            console.Line(L"the radio is running; its handset stays as it is");
            return kDone;
        }
        return Failure(console, L"install", L"the radio is running; close it first (\"handset stop\")");
    }
    if (!SettleDeviceRoot(arguments)) {
        return Failure(console, L"install", L"the user's registry refused the device root");
    }
    ClaimDeviceRoot();
    // An ether that was killed with its handset is forgotten before a radio looks for it.
    (void)EtherPort();
    const InstallReport report = InstallHandset(ProgramFolder());
    console.Line(L"device root " + SaidPath(handset::DeviceRoot()));
    for (const std::wstring& line : report.done) console.Line(L"  " + line);
    return report.fault.empty() ? kDone : Failure(console, L"install", report.fault);
}

std::wstring ClockText() {
    return handset::LocalTimeText(LocalNow());
}

std::wstring Hex(std::uint32_t bits) {
    wchar_t text[16];
    swprintf(text, std::size(text), L"0x%X", bits);
    return text;
}

std::wstring FreeSpaceText(const wchar_t* name) {
    const auto bytes = handset::StateQword(name);
    return bytes ? std::to_wstring(*bytes) + L" bytes" : L"what the host has";
}

std::wstring PhoneText() {
    const std::wstring number = CallerNumber();
    return CallName(PhoneStatus()) + std::wstring(L" (") + Hex(PhoneStatus()) + L")" +
           (number.empty() ? L"" : L", number " + number);
}

std::wstring SignalText() {
    const auto limit = SignalLimit();
    if (!limit) return L"as the band is";
    return L"no better than " + std::to_wstring(limit->level) +
           (limit->channel != 0 ? L" at " + StationText(limit->channel) : L"");
}

std::wstring RadioText() {
    const auto process = RadioProcess();
    if (!process) return L"not running";
    return (RadioWindows().empty() ? L"starting, process " : L"running, process ") +
           std::to_wstring(*process);
}

std::wstring OrNone(const std::wstring& text) {
    return text.empty() ? L"none" : text;
}

std::wstring PowerText() {
    return PowerState() + (PhoneSleeps() ? L" (asleep)" : L"");
}

struct StatusRow {
    const wchar_t* name;
    std::function<std::wstring()> text;
};

int Status(const Arguments& arguments, CConsole& console) {
    if (!arguments.empty()) return BadArguments(console, L"status", L"no arguments are wanted");
    // clang-format off
    const StatusRow kRows[] = {
        {L"Radio",             RadioText},
        {L"Headset",           [] { return std::wstring(HeadsetPlugged() ? L"on" : L"off"); }},
        {L"Storage card",      [] { return std::wstring(handset::StorageCardPresent() ? L"in" : L"out"); }},
        {L"Power",             PowerText},
        {L"Kept awake",        [] { return std::to_wstring(handset::UnattendedHolders()) + L" requests"; }},
        {L"Screen",            [] { const ScreenSize s = CurrentScreen();
                                    return std::to_wstring(s.width) + L"x" + std::to_wstring(s.height); }},
        {L"Telephone",         PhoneText},
        {L"Bluetooth",         [] { return Hex(BluetoothBits()); }},
        {L"Signal",            SignalText},
        {L"Antenna",           AntennaText},
        {L"Reception",         ReceptionText},
        {L"Clock",             [] { return ClockText() + L", rate " + std::to_wstring(ShownRate()); }},
        {L"Service",           [] { return std::wstring(ServiceRuns() ? L"running" : L"not running"); }},
        {L"Free, device",      [] { return FreeSpaceText(L"ObjectStoreFree"); }},
        {L"Free, card",        [] { return FreeSpaceText(L"StorageCardFree"); }},
        {L"Faults",            [] { return OrNone(handset::StateString(L"Fault", L"")); }},
        {L"Tuner log",         [] { return OrNone(handset::StateString(L"TunerLog", L"")); }},
        {L"Sound log",         [] { return OrNone(handset::StateString(L"SoundLog", L"")); }},
        {L"Device root",       [] { return OrNone(handset::DeviceRoot()); }},
        {L"State key",         [] { return L"HKCU\\" + handset::StateKeyPath(); }},
    };
    // clang-format on
    for (const StatusRow& row : kRows) {
        const std::wstring name = row.name;
        console.Line(name + std::wstring(14 - name.size(), L' ') + row.text());
    }
    return kDone;
}

constexpr std::size_t kToTheMinute = 16;  // characters of "2026-11-23 10:00"

int Clock(const Arguments& arguments, CConsole& console) {
    const std::wstring joined = arguments.size() == 2 ? arguments[0] + L" " + arguments[1] : L"";
    if (const auto time = handset::ReadLocalTime(joined.size() == kToTheMinute ? joined + L":00" : joined)) {
        return Written(console, L"clock", SetClockTime(*time));
    }
    if (arguments.size() > 1)
        return BadArguments(console, L"clock", L"one rate at most, or a date and a time");
    if (arguments.empty()) {
        console.Line(ClockText() + L", " + std::to_wstring(ShownRate()) +
                     L" handset seconds per real second");
        return kDone;
    }
    if (arguments[0] == L"reset") return Written(console, L"clock", handset::ResetClock());
    const auto rate = ParseNumber(arguments[0]);
    if (!rate || *rate < handset::kSlowestClock || *rate > handset::kFastestClock) {
        return BadArguments(console, L"clock",
                            L"\"" + arguments[0] + L"\" is no rate: a number from 1 to 3600, or \"reset\"");
    }
    return Written(console, L"clock", handset::SetClockRate(static_cast<std::uint32_t>(*rate)));
}

const Command kCommands[] = {
    {L"install", Install, L"[--unless-running] [FOLDER]", L"sets the handset up",
     L"handset install C:\\Kora\\device",
     L"Makes the device's folders, lays \\Windows\\UI.exe with the handset's DLLs and its manifest down, "
     L"and\n"
     L"writes the first registry values and the preset favourites. FOLDER is the host folder that becomes "
     L"the\n"
     L"root of the device's file system; without it the present one stays, or becomes \"device\" in "
     L"KORA_HOME.\n"
     L"May be repeated: programs are replaced, everything of the user's (band.ini, settings, favourites,\n"
     L"recordings, channel lists) is kept. The radio must not run; with --unless-running nothing is done "
     L"then.\n"},
    {L"status", Status, L"", L"shows the whole state of the handset", L"handset status",
     L"Prints one line for each switch and setting, as the radio would find it now.\n"},
    {L"clock", Clock, L"[RATE | DATE TIME | reset]", L"shows the handset's clock or sets it",
     L"handset clock 60",
     L"RATE is 1 to 3600 handset seconds per real second; 60 lets an hour pass in a minute. The time goes "
     L"on\n"
     L"from where it is. Ticks and waits of programs that run already keep their rate until they are started "
     L"again. \"reset\"\n"
     L"goes back to real time at the rate 1. Without an argument the time and the rate are printed.\n"
     L"DATE TIME sets the local time, as in \"clock 2026-11-23 09:58\"; running programs see it at once.\n"},
};

}  // namespace

CommandGroup SetupCommands() {
    return {L"The handset", kCommands, std::size(kCommands)};
}

}  // namespace panel
