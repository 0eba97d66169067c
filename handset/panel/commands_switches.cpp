// headset, card, power, orientation, bluetooth, signal, fault.
#include "handset/panel/command.h"
#include "handset/panel/encoding.h"
#include "handset/panel/switches.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

// The one argument of a two-way switch: true for `on`, false for `off`; nothing for anything else.
std::optional<bool> TwoWay(const Arguments& arguments, const wchar_t* on, const wchar_t* off) {
    if (arguments.size() != 1) return std::nullopt;
    if (arguments[0] == on) return true;
    if (arguments[0] == off) return false;
    return std::nullopt;
}

std::wstring Given(const Arguments& arguments) {
    if (arguments.empty()) return L"nothing was given";
    std::wstring text = L"\"" + arguments[0];
    for (std::size_t i = 1; i < arguments.size(); ++i) text += L" " + arguments[i];
    return text + L"\" was given";
}

int Headset(const Arguments& arguments, Console& console) {
    const auto plugged = TwoWay(arguments, L"on", L"off");
    if (!plugged)
        return BadArguments(console, L"headset", L"\"on\" or \"off\" is wanted, " + Given(arguments));
    const bool written = PlugHeadset(*plugged);
    TellPanel();
    return Written(console, L"headset", written);
}

int Card(const Arguments& arguments, Console& console) {
    const auto inserted = TwoWay(arguments, L"in", L"out");
    if (!inserted) return BadArguments(console, L"card", L"\"in\" or \"out\" is wanted, " + Given(arguments));
    const bool written = InsertCard(*inserted);
    TellPanel();
    return Written(console, L"card", written);
}

int Power(const Arguments& arguments, Console& console) {
    if (arguments.size() == 1 && IsPowerState(arguments[0])) {
        return Written(console, L"power", SetPowerState(arguments[0]));
    }
    std::wstring names;
    for (const PowerStateRow& row : PowerStates())
        names += (names.empty() ? L"" : L", ") + std::wstring(row.name);
    return BadArguments(console, L"power", L"one of " + names + L" is wanted, " + Given(arguments));
}

// "portrait", "landscape" (the present screen, turned) or a size such as 480x640.
std::optional<ScreenSize> ParseScreen(const std::wstring& text) {
    const ScreenSize now = CurrentScreen();
    const int longer = now.width > now.height ? now.width : now.height;
    const int shorter = now.width + now.height - longer;
    if (text == L"portrait") return ScreenSize{shorter, longer};
    if (text == L"landscape") return ScreenSize{longer, shorter};
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

int Orientation(const Arguments& arguments, Console& console) {
    const auto screen = arguments.size() == 1 ? ParseScreen(arguments[0]) : std::nullopt;
    if (screen) return Written(console, L"orientation", TurnScreen(*screen));
    return BadArguments(console, L"orientation",
                        L"\"portrait\", \"landscape\" or a size such as 480x640 (each side " +
                            std::to_wstring(kSmallestScreen) + L" to " + std::to_wstring(kLargestScreen) +
                            L") is wanted, " + Given(arguments));
}

int Bluetooth(const Arguments& arguments, Console& console) {
    constexpr std::uint64_t kAllBits = 0x1F;
    const auto bits = arguments.size() == 1 ? ParseNumber(arguments[0]) : std::nullopt;
    if (!bits || *bits > kAllBits) {
        return BadArguments(console, L"bluetooth", L"bits from 0 to 0x1F are wanted, " + Given(arguments));
    }
    const bool written = SetBluetoothBits(static_cast<std::uint32_t>(*bits));
    TellPanel();
    return Written(console, L"bluetooth", written);
}

int Signal(const Arguments& arguments, Console& console) {
    const bool normal = arguments.size() == 1 && arguments[0] == L"normal";
    const auto level = arguments.size() == 1 ? ParseNumber(arguments[0]) : std::nullopt;
    if (!normal && (!level || *level > 100)) {
        return BadArguments(console, L"signal",
                            L"a level from 0 to 100 or \"normal\" is wanted, " + Given(arguments));
    }
    const bool written =
        normal ? SetSignalLimit(std::nullopt) : SetSignalLimit(static_cast<std::uint32_t>(*level));
    TellPanel();
    return Written(console, L"signal", written);
}

std::wstring FaultNames() {
    std::wstring names;
    for (const FaultRow& row : Faults()) names += (names.empty() ? L"" : L", ") + std::wstring(row.name);
    return names;
}

int Fault(const Arguments& arguments, Console& console) {
    if (arguments.empty())
        return BadArguments(console, L"fault", L"names or \"none\" are wanted, nothing was given");
    if (arguments.size() == 1 && arguments[0] == L"none") {
        handset::DeleteStateValue(L"Fault");
        return kDone;
    }
    std::wstring list;
    for (const std::wstring& name : arguments) {
        if (!IsFault(name)) {
            return BadArguments(console, L"fault",
                                L"there is no fault \"" + name + L"\"; there are " + FaultNames());
        }
        list += (list.empty() ? L"" : L" ") + name;
    }
    return Written(console, L"fault", handset::SetStateString(L"Fault", list));
}

const Command kCommands[] = {
    {L"headset", Headset, L"on|off", L"plugs the headset in or pulls it",
     L"Writes HKLM System\\State\\Hardware \"Headset\" in the device's registry: 1 or 0. A running radio is\n"
     L"told; it closes when the headset is gone.\n"},
    {L"card", Card, L"in|out", L"inserts or pulls the storage card",
     L"While the card is out, nothing of \\Storage Card is to be seen on the device; its files come back "
     L"with it.\n"},
    {L"power", Power, L"STATE", L"sets the system power state",
     L"STATE is the power manager's name:\n"
     L"  on          display and radio on\n"
     L"  unattended  display off, programs run on\n"
     L"  idle        display off, little to do\n"
     L"  useridle, suspend, off, critical, boot, reset\n"
     L"Programs that asked for power notifications are told. The panel's display is dark but in \"on\".\n"},
    {L"orientation", Orientation, L"portrait|landscape|WIDTHxHEIGHT", L"turns the screen",
     L"\"portrait\" and \"landscape\" turn the present screen; a size such as 480x640 gives it other pixels\n"
     L"(each side 160 to 1280). The radio's windows are told and fit themselves again.\n"},
    {L"bluetooth", Bluetooth, L"BITS", L"reports Bluetooth status bits",
     L"BITS is 0 to 0x1F. The radio takes 0x1 and 0x8 together for an audio link, 0x10 for one that is "
     L"being\n"
     L"made and 0x4 for one that stands. The bits are kept in HKLM System\\State\\Hardware \"Bluetooth\" "
     L"and\n"
     L"posted to the running radio.\n"},
    {L"signal", Signal, L"LEVEL|normal", L"limits the reception of every station",
     L"No station comes in better than LEVEL, 0 to 100; 15 is the border between weak and usable. "
     L"\"normal\"\n"
     L"takes the limit away. It is the state value SignalLimit, which the tuner device reads as it plays; "
     L"the\n"
     L"levels of the stations themselves are in \\Windows\\band.ini.\n"},
    {L"fault", Fault, L"NAME…|none", L"injects faults",
     L"Names, separated by blanks; they replace those before:\n"
     L"  initialize      the tuner device does not start\n"
     L"  create          the tuner device cannot be created\n"
     L"  seek            every seek fails\n"
     L"  monitor         reading the signal crashes once\n"
     L"  msgqueue        no message queue can be made\n"
     L"  database-write  no record can be written\n"
     L"\"none\" takes all of them away.\n"},
};

}  // namespace

CommandGroup SwitchCommands() {
    return {L"Switches", kCommands, std::size(kCommands)};
}

}  // namespace panel
