// headset, card, power, orientation, bluetooth, signal, fault.
#include "handset/command/choice.h"
#include "handset/controls/encoding.h"
#include "handset/controls/faults.h"
#include "handset/controls/station_name.h"
#include "handset/controls/switches.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"

namespace panel {
namespace {

int Headset(const Arguments& arguments, CConsole& console) {
    return Choose(console, L"headset", arguments,
                  {{L"on", [] { return PlugHeadset(true); }}, {L"off", [] { return PlugHeadset(false); }}});
}

int Card(const Arguments& arguments, CConsole& console) {
    return Choose(console, L"card", arguments,
                  {{L"in", [] { return InsertCard(true); }}, {L"out", [] { return InsertCard(false); }}});
}

int Power(const Arguments& arguments, CConsole& console) {
    std::vector<Choice> choices;
    for (const handset::PowerStateRow& row : handset::PowerStates()) {
        choices.push_back({row.name, [&row] { return SetPowerState(row.name); }});
    }
    choices.push_back({L"off", SwitchDisplayOff});
    choices.push_back({L"key", PressPower});
    return Choose(console, L"power", arguments, choices);
}

std::wstring PowerHelp() {
    std::wstring help = L"STATE is the power manager's name:\n";
    for (const handset::PowerStateRow& row : handset::PowerStates()) {
        const std::wstring name = row.name;
        help += L"  " + name + std::wstring(14 - name.size(), L' ') + row.meaning + L"\n";
    }
    return help +
           L"\"off\" switches the display off as a program does: \"unattended\" while one holds that mode,\n"
           L"\"idle\" otherwise. \"key\" is the phone's power key: it lights a dark display, and darkens a\n"
           L"lit one; a phone that nothing holds awake then sleeps. Programs that asked for power\n"
           L"notifications are told. With the display off the phone sleeps after the seconds of HKLM\n"
           L"System\\CurrentControlSet\\Control\\Power\\Timeouts \"BattSuspend\" (60; 0 = never), unless a\n"
           L"program resets the idle timer; its programs are then held until it is woken.\n";
}

// "portrait", "landscape" (the present screen, turned), "usual" or a size such as 480x640.
std::optional<ScreenSize> ParseScreen(const std::wstring& text) {
    const ScreenSize now = CurrentScreen();
    const int longer = now.width > now.height ? now.width : now.height;
    const int shorter = now.width + now.height - longer;
    if (text == L"portrait") return ScreenSize{shorter, longer};
    if (text == L"landscape") return ScreenSize{longer, shorter};
    if (text == L"usual") return kUsualScreen;
    const std::size_t cross = text.find(L'x');
    if (cross == std::wstring::npos) return std::nullopt;
    const auto width = ParseNumber(text.substr(0, cross));
    const auto height = ParseNumber(text.substr(cross + 1));
    const auto fits = [](const auto& side) {
        return side && *side >= kSmallestScreen && *side <= kLargestScreen;
    };
    if (!fits(width) || !fits(height)) return std::nullopt;
    return ScreenSize{static_cast<int>(*width), static_cast<int>(*height)};
}

int Orientation(const Arguments& arguments, CConsole& console) {
    const auto screen = arguments.size() == 1 ? ParseScreen(arguments[0]) : std::nullopt;
    if (screen) return Turned(console, L"orientation", TurnScreen(*screen));
    return BadArguments(console, L"orientation",
                        L"\"portrait\", \"landscape\", \"usual\" or a size such as 480x640 (each side " +
                            std::to_wstring(kSmallestScreen) + L" to " + std::to_wstring(kLargestScreen) +
                            L") is wanted, " + Given(arguments));
}

// A number that is the argument at `index`, not above `highest`.
std::optional<std::uint32_t> NumberAt(const Arguments& arguments, std::size_t index, std::uint32_t highest) {
    const auto number = index < arguments.size() ? ParseNumber(arguments[index]) : std::nullopt;
    if (!number || *number > highest) return std::nullopt;
    return static_cast<std::uint32_t>(*number);
}

int Bluetooth(const Arguments& arguments, CConsole& console) {
    const auto bits = NumberAt(arguments, 0, kAllBluetoothBits);
    if (arguments.size() == 1 && bits) return Turned(console, L"bluetooth", SetBluetoothBits(*bits));
    return BadArguments(console, L"bluetooth", L"bits from 0 to 0x1F are wanted, " + Given(arguments));
}

// The station of "signal LEVEL STATION": 0 for all, nothing for a word that names none.
std::optional<std::uint32_t> LimitedStation(const Arguments& arguments) {
    if (arguments.size() < 2) return 0;
    if (arguments[1] == L"tuned") return TunedChannel();
    return ParseStation(arguments[1]);
}

int Signal(const Arguments& arguments, CConsole& console) {
    if (arguments.size() == 1 && arguments[0] == L"normal") {
        return Turned(console, L"signal", SetSignalLimit({}));
    }
    const auto level = NumberAt(arguments, 0, 100);
    const auto station = arguments.size() <= 2 ? LimitedStation(arguments) : std::nullopt;
    if (level && station) return Turned(console, L"signal", SetSignalLimit({{*level, *station}}));
    return BadArguments(console, L"signal",
                        L"a level from 0 to 100, with a station or \"tuned\" after it, or \"normal\" is "
                        L"wanted, " +
                            Given(arguments));
}

int Fault(const Arguments& arguments, CConsole& console) {
    if (arguments.empty()) {
        return BadArguments(console, L"fault", L"names or \"none\" are wanted, nothing was given");
    }
    std::wstring list;
    if (arguments.size() > 1 || arguments[0] != L"none") {
        for (const std::wstring& name : arguments) {
            if (!IsFault(name)) {
                return BadArguments(console, L"fault",
                                    L"there is no fault \"" + name + L"\"; there are " + FaultNames());
            }
            list += (list.empty() ? L"" : L" ") + name;
        }
    }
    return Turned(console, L"fault", handset::SetStateString(L"Fault", list));
}

const std::vector<Command>& Commands() {
    static const std::wstring kPowerHelp = PowerHelp();
    static const std::wstring kFaultHelp = FaultHelp();
    static const std::vector<Command> kRows = {
        {L"headset", Headset, L"on|off", L"plugs the headset in or pulls it", L"handset headset off",
         L"Writes HKLM System\\State\\Hardware \"Headset\" in the device's registry: 1 or 0. A running "
         L"radio\n"
         L"is told; it closes when the headset is gone.\n"},
        {L"card", Card, L"in|out", L"inserts or pulls the storage card", L"handset card out",
         L"While the card is out, nothing of \\Storage Card is to be seen on the device; its files come "
         L"back\n"
         L"with it.\n"},
        {L"power", Power, L"STATE|off|key", L"sets the system power state", L"handset power unattended",
         kPowerHelp.c_str()},
        {L"orientation", Orientation, L"portrait|landscape|usual|WIDTHxHEIGHT", L"turns the screen",
         L"handset orientation landscape",
         L"\"portrait\" and \"landscape\" turn the present screen; a size such as 480x640 gives it other\n"
         L"pixels (each side 160 to 1280), and \"usual\" is 240x320 again. The radio's windows are told and "
         L"fit themselves again.\n"},
        {L"bluetooth", Bluetooth, L"BITS", L"reports Bluetooth status bits", L"handset bluetooth 0x19",
         L"BITS is 0 to 0x1F. The radio takes 0x1 and 0x8 together for an audio link, 0x10 for one that is\n"
         L"being made and 0x4 for one that stands. The bits are kept in HKLM System\\State\\Hardware\n"
         L"\"Bluetooth\" and posted to the running radio.\n"},
        {L"signal", Signal, L"LEVEL [STATION|tuned] | normal", L"limits the reception",
         L"handset signal 12 tuned",
         L"No station comes in better than LEVEL, 0 to 100; 15 is the border between weak and usable. With\n"
         L"STATION, such as 98.5, or \"tuned\", the limit is for that station alone. \"normal\" takes it "
         L"away.\n"
         L"These are the state values SignalLimit and SignalLimitChannel, which the tuner device reads as\n"
         L"it plays; the levels of the stations themselves are in \\Windows\\band.ini (\"handset band\").\n"},
        {L"fault", Fault, L"NAME…|none", L"injects faults", L"handset fault seek crash:GetSignal",
         kFaultHelp.c_str()},
    };
    return kRows;
}

}  // namespace

CommandGroup SwitchCommands() {
    return {L"Switches", Commands().data(), Commands().size()};
}

}  // namespace panel
