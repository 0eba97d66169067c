// The column of labelled switches beside the phone: what there is, where it lies, what it shows and does.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "handset/phone/phone_layout.h"

namespace panel {

enum class SwitchKind { kToggle, kButton, kChip, kSlider };

// What the panel shows of the handset's state, read at one moment.
struct Snapshot {
    bool headset, card, lit, sleeps, radio;
    int screenWidth, screenHeight;
    std::uint32_t phoneStatus, bluetooth;
    bool numberShown;
    std::uint32_t signalLimit;  // 0 to 100; 100 also when there is no limit
    bool signalLimited;
    std::uint32_t limitedChannel;  // 0 = all
    std::uint32_t clockRate;
    bool operator==(const Snapshot& other) const;
};
Snapshot TakeSnapshot();

struct SwitchRow {
    const wchar_t* label;
    SwitchKind kind;
    bool (*isOn)(const Snapshot& now);
    // The user pressed it; not for the slider.
    void (*press)(const Snapshot& now);
    // A sentence for whoever rests the pointer on it: what it does.
    const wchar_t* hint;
    // A word beside a toggle; empty where there is nothing to say.
    const wchar_t* (*note)(const Snapshot& now) = nullptr;
};
struct SwitchGroup {
    const wchar_t* title;
    std::vector<SwitchRow> rows;
};
const std::vector<SwitchGroup>& SwitchGroups();

struct SwitchPlace {
    const SwitchRow* row;
    Box box;
};
struct TitlePlace {
    const SwitchGroup* group;
    Box box;
};
struct ColumnLayout {
    std::vector<TitlePlace> titles;
    std::vector<SwitchPlace> switches;
};
// Groups stand below one another; when the column is wider than tall, beside one another, as many below each
// other as it is high.
ColumnLayout LayOutColumn(const Box& column);
// Null where there is no switch.
const SwitchPlace* SwitchAt(const ColumnLayout& layout, int x, int y);

// The slider's track, and the level at a place of it: 0 to 99, or nothing for its far end, "no limit".
Box SliderTrack(const Box& slider);
std::optional<std::uint32_t> SliderLevelAt(const Box& slider, int x);

}  // namespace panel
