// The switches beside the phone.
#include "handset/phone/switch_column.h"

#include <tuple>

#include "handset/controls/handset_clock.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/switches.h"
#include "handset/controls/telephone.h"
#include "handset/state/handset_clock.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

constexpr int kTitleHeight = 20;
constexpr int kToggleHeight = 30;
constexpr int kButtonHeight = 28;
constexpr int kSliderHeight = 42;
constexpr int kRowGap = 6;
constexpr int kGroupGap = 14;
constexpr int kColumnGap = 22;
constexpr int kChipGap = 6;
constexpr int kTrackInset = 8;
constexpr wchar_t kNumber[] = L"555 0123";

// What the phone says of its Bluetooth: both bits of the radio, one while a link is made, one for a link.
constexpr std::uint32_t kBluetoothOn = 0x9, kBluetoothJoining = 0x10, kBluetoothLinked = 0x4;

template <std::uint32_t bits>
SwitchRow BluetoothChip(const wchar_t* label, const wchar_t* hint) {
    return {label, SwitchKind::kChip, [](const Snapshot& now) { return now.bluetooth == bits; },
            [](const Snapshot&) { SetBluetoothBits(bits); }, hint};
}

constexpr wchar_t kClockHint[] =
    L"So many seconds of the phone pass in one of yours. An antenna is heard at 1 only.";

template <std::uint32_t rate>
SwitchRow ClockChip(const wchar_t* label) {
    return {label, SwitchKind::kChip, [](const Snapshot& now) { return now.clockRate == rate; },
            [](const Snapshot&) { handset::SetClockRate(rate); }, kClockHint};
}

template <std::uint32_t bits, bool numbered>
bool CallIs(const Snapshot& now) {
    return (now.phoneStatus & (kPhoneIncoming | kPhoneCalling | kPhoneTalking)) == bits &&
           (bits != kPhoneCalling || now.numberShown == numbered);
}

bool HasLargeScreen(const Snapshot& now) {
    return now.screenWidth + now.screenHeight > kUsualScreen.width + kUsualScreen.height;
}

// For one of twice the pixels each way, and from any larger one back to the usual one; turned as it is.
void ExchangeScreen(const Snapshot& now) {
    const int times = HasLargeScreen(now) ? 1 : 2;
    const ScreenSize upright = {times * kUsualScreen.width, times * kUsualScreen.height};
    const bool turned = now.screenWidth > now.screenHeight;
    TurnScreen(turned ? ScreenSize{upright.height, upright.width} : upright);
}

// A dark display looks the same on a phone that sleeps and on one that plays on.
const wchar_t* PowerNote(const Snapshot& now) {
    if (now.sleeps) return L"asleep";
    return now.lit ? L"" : L"dark";
}

int RowHeight(SwitchKind kind) {
    const int kHeights[] = {kToggleHeight, kButtonHeight, kButtonHeight, kSliderHeight};
    return kHeights[static_cast<int>(kind)];
}

int GroupHeight(const SwitchGroup& group) {
    int height = kTitleHeight;
    bool chips = false;
    for (const SwitchRow& row : group.rows) {
        // Chips share one line.
        if (row.kind == SwitchKind::kChip && chips) continue;
        chips = row.kind == SwitchKind::kChip;
        const bool gap = row.kind == SwitchKind::kChip || row.kind == SwitchKind::kButton;
        height += RowHeight(row.kind) + (gap ? kRowGap : 0);
    }
    return height;
}

void LayOutGroup(ColumnLayout& layout, const SwitchGroup& group, int x, int y, int width) {
    layout.titles.push_back({&group, {x, y, width, kTitleHeight}});
    y += kTitleHeight;
    int chips = 0;
    for (const SwitchRow& row : group.rows) chips += row.kind == SwitchKind::kChip ? 1 : 0;
    int chip = 0;
    for (const SwitchRow& row : group.rows) {
        const int height = RowHeight(row.kind);
        if (row.kind != SwitchKind::kChip) {
            layout.switches.push_back({&row, {x, y, width, height}});
            y += height + (row.kind == SwitchKind::kButton ? kRowGap : 0);
            continue;
        }
        // NOLINTNEXTLINE(clang-analyzer-core.DivideZero): this row is one of them
        const int pitch = (width + kChipGap) / chips;
        layout.switches.push_back({&row, {x + chip * pitch, y, pitch - kChipGap, height}});
        if (++chip == chips) y += height + kRowGap;
    }
}

// How many groups stand below one another in each column of that height.
std::vector<std::size_t> Columns(int height) {
    std::vector<std::size_t> columns;
    int used = 0;
    for (const SwitchGroup& group : SwitchGroups()) {
        const int own = GroupHeight(group);
        const bool below = !columns.empty() && used + kGroupGap + own <= height;
        if (!below) columns.push_back(0);
        used = below ? used + kGroupGap + own : own;
        ++columns.back();
    }
    return columns;
}

}  // namespace

bool Snapshot::operator==(const Snapshot& other) const {
    const auto all = [](const Snapshot& s) {
        return std::tuple(s.headset, s.card, s.lit, s.radio, s.screenWidth, s.screenHeight, s.phoneStatus,
                          s.bluetooth, s.numberShown, s.signalLimit, s.signalLimited, s.sleeps,
                          s.limitedChannel, s.clockRate);
    };
    return all(*this) == all(other);
}

Snapshot TakeSnapshot() {
    const ScreenSize screen = CurrentScreen();
    const auto limit = SignalLimit();
    return {HeadsetPlugged(),
            handset::StorageCardPresent(),
            DisplayLit(),
            PhoneSleeps(),
            RadioProcess().has_value(),
            screen.width,
            screen.height,
            PhoneStatus(),
            BluetoothBits(),
            !CallerNumber().empty(),
            limit ? limit->level : 100,
            limit.has_value(),
            limit ? limit->channel : 0,
            ShownRate()};
}

const std::vector<SwitchGroup>& SwitchGroups() {
    // clang-format off
    static const std::vector<SwitchGroup> kGroups = {
        {L"HANDSET", {
            {L"Headset", SwitchKind::kToggle, [](const Snapshot& s) { return s.headset; },
             [](const Snapshot& s) { PlugHeadset(!s.headset); },
             L"Plugs the headset in or pulls it. Its cable is the aerial: without it the radio closes."},
            {L"Storage card", SwitchKind::kToggle, [](const Snapshot& s) { return s.card; },
             [](const Snapshot& s) { InsertCard(!s.card); },
             L"Inserts the storage card or pulls it. A recording on it ends."},
            {L"Display", SwitchKind::kToggle, [](const Snapshot& s) { return s.lit; },
             [](const Snapshot&) { PressPower(); },
             L"The power key: display dark or lit. The radio plays on in the dark.", PowerNote},
            {L"On its side", SwitchKind::kToggle,
             [](const Snapshot& s) { return s.screenWidth > s.screenHeight; },
             [](const Snapshot& s) { TurnScreen({s.screenHeight, s.screenWidth}); },
             L"Turns the phone on its side, and upright again."},
            {L"Large screen", SwitchKind::kToggle, HasLargeScreen, ExchangeScreen,
             L"Gives the phone a screen of twice the pixels each way, and takes it back."},
        }},
        {L"TELEPHONE", {
            {L"Incoming call", SwitchKind::kButton, CallIs<kPhoneIncoming, true>,
             [](const Snapshot&) { CallComesIn(kNumber); }, L"Somebody calls: the telephone rings."},
            {L"Dial a number", SwitchKind::kButton, CallIs<kPhoneCalling, true>,
             [](const Snapshot&) { CallGoesOut(kNumber); }, L"A call goes out, to a number that is known."},
            {L"Start to dial", SwitchKind::kButton, CallIs<kPhoneCalling, false>,
             [](const Snapshot&) { CallGoesOut(std::nullopt); },
             L"A call goes out before its number is known, as while it is being typed."},
            {L"Talk", SwitchKind::kButton, CallIs<kPhoneTalking, true>,
             [](const Snapshot&) { CallIsAnswered(); }, L"The call is answered."},
            {L"Hang up", SwitchKind::kButton, [](const Snapshot&) { return false; },
             [](const Snapshot&) { CallEnds(); }, L"The call is over."},
        }},
        {L"BLUETOOTH", {
            BluetoothChip<0>(L"off", L"Bluetooth is switched off."),
            BluetoothChip<kBluetoothOn>(L"on", L"Bluetooth is on, nobody is linked."),
            BluetoothChip<kBluetoothOn | kBluetoothJoining>(L"pair", L"A headset is being linked."),
            BluetoothChip<kBluetoothOn | kBluetoothLinked>(L"link", L"A headset is linked."),
        }},
        {L"CLOCK SPEED", {
            ClockChip<1>(L"1"), ClockChip<10>(L"10"), ClockChip<60>(L"60"), ClockChip<600>(L"600"),
        }},
        {L"RECEPTION", {
            {L"Signal", SwitchKind::kSlider, [](const Snapshot& s) { return s.signalLimited; }, nullptr,
             L"Weakens the station that is tuned; at the right end it comes in as it is."},
            {L"Radio", SwitchKind::kToggle, [](const Snapshot& s) { return s.radio; },
             [](const Snapshot& s) { if (s.radio) AskRadioToClose(); else LaunchRadio(L"", RadioConsole::kOutput, 0); },
             L"Starts the radio, and closes it."},
        }},
    };
    // clang-format on
    return kGroups;
}

ColumnLayout LayOutColumn(const Box& column) {
    ColumnLayout layout;
    const auto& groups = SwitchGroups();
    const bool sideBySide = column.w > column.h;
    const std::vector<std::size_t> columns =
        sideBySide ? Columns(column.h) : std::vector<std::size_t>{groups.size()};
    const int count = static_cast<int>(columns.size());
    const int width = (column.w + kColumnGap) / count - kColumnGap;
    int x = column.x;
    auto group = groups.begin();
    for (const std::size_t groupsInColumn : columns) {
        int y = column.y;
        for (std::size_t i = 0; i < groupsInColumn; ++i, ++group) {
            LayOutGroup(layout, *group, x, y, width);
            y += GroupHeight(*group) + kGroupGap;
        }
        x += width + kColumnGap;
    }
    return layout;
}

const SwitchPlace* SwitchAt(const ColumnLayout& layout, int x, int y) {
    for (const SwitchPlace& place : layout.switches) {
        if (place.box.Contains(x, y)) return &place;
    }
    return nullptr;
}

Box SliderTrack(const Box& slider) {
    return {slider.x + kTrackInset, slider.y + 28, slider.w - 2 * kTrackInset, 4};
}

std::optional<std::uint32_t> SliderLevelAt(const Box& slider, int x) {
    const Box track = SliderTrack(slider);
    const int level = (x - track.x) * 100 / track.w;
    if (level >= 100) return std::nullopt;
    return static_cast<std::uint32_t>(level < 0 ? 0 : level);
}

}  // namespace panel
