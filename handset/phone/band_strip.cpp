// What the strip shows, where, and what a touch of it means.
#include "handset/phone/band_strip.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <iterator>

namespace panel {
namespace {

constexpr int kInset = 8;
constexpr int kBarsTop = 5;
constexpr int kBarsHeight = 26;
// The condition of an antenna that needs no words; the simulated band alone may have none.
constexpr wchar_t kPlays[] = L"plays";
// A stylus covers that much to each side.
constexpr double kReach = 4.0;

using handset::kBandChannels;
using handset::kBandStep_10kHz;
using handset::kFirstBandChannel_10kHz;
using handset::kLevelNotSeen;

std::uint32_t ChannelOf(std::size_t place) {
    return kFirstBandChannel_10kHz + static_cast<std::uint32_t>(place) * kBandStep_10kHz;
}

int LevelOf(const BandFacts& facts, std::uint32_t channel_10kHz) {
    const auto station = facts.band.stations.find(channel_10kHz);
    const int level = station == facts.band.stations.end() ? fm::kNoiseLevel : station->second.level;
    const bool limited = facts.limit && (facts.limited_10kHz == 0 || facts.limited_10kHz == channel_10kHz);
    return limited ? std::min(level, static_cast<int>(*facts.limit)) : level;
}

bool AnySeen(const handset::BandLevels& levels) {
    return std::any_of(levels.begin(), levels.end(),
                       [](std::uint8_t level) { return level != kLevelNotSeen; });
}

// The simulated band is known without being looked at.
bool IsSimulated(const BandFacts& facts) {
    return !facts.reception || facts.reception->source == L"band";
}

template <typename... Values>
std::wstring Text(const wchar_t* format, Values... values) {
    wchar_t text[80];
    swprintf(text, std::size(text), format, values...);
    return text;
}

// "98.5 MHz"; channels between two of 100 kHz keep their second place.
std::wstring Megahertz(std::uint32_t channel_10kHz) {
    const unsigned whole = channel_10kHz / 100, part = channel_10kHz % 100;
    return part % 10 == 0 ? Text(L"%u.%u MHz", whole, part / 10) : Text(L"%u.%02u MHz", whole, part);
}

constexpr wchar_t kGap[] = L"   ";

std::wstring Figures(const handset::ReceptionState& state) {
    std::wstring figures = Megahertz(state.channel_10kHz) + kGap + Text(L"level %u", state.level);
    if (state.carrierToNoise_dBHz) figures += kGap + Text(L"C/N0 %.1f dB-Hz", *state.carrierToNoise_dBHz);
    figures += kGap + std::wstring(state.stereo ? L"stereo" : L"mono");
    if (state.offset_Hz) figures += kGap + Text(L"%+d Hz", static_cast<int>(*state.offset_Hz));
    if (state.blockErrors_percent) figures += kGap + Text(L"%u %% lost", *state.blockErrors_percent);
    if (state.pi) figures += kGap + Text(L"PI %04X", static_cast<unsigned>(*state.pi));
    if (state.trafficProgramme) figures += std::wstring(kGap) + L"TP";
    if (state.trafficAnnouncement) figures += std::wstring(kGap) + L"TA";
    return figures;
}

std::wstring SimulatedFigures(const BandFacts& facts) {
    const auto station = facts.band.stations.find(facts.tuned_10kHz);
    handset::ReceptionState state;
    state.channel_10kHz = facts.tuned_10kHz;
    const int level = LevelOf(facts, facts.tuned_10kHz);
    state.level = static_cast<std::uint32_t>(level);
    state.stereo =
        station != facts.band.stations.end() && station->second.stereo && level > fm::kStereoThreshold;
    return Figures(state);
}

}  // namespace

BandShown ShowBand(const BandFacts& facts) {
    BandShown shown;
    shown.levels.fill(kLevelNotSeen);
    const bool simulated = IsSimulated(facts);
    if (facts.reception) shown.levels = facts.reception->levels;
    if (simulated && !AnySeen(shown.levels)) {
        for (std::size_t i = 0; i < kBandChannels; ++i)
            shown.levels[i] = static_cast<std::uint8_t>(LevelOf(facts, ChannelOf(i)));
    }
    if (facts.tuned_10kHz == 0) return shown;
    const bool published = facts.reception && facts.reception->channel_10kHz != 0;
    shown.tuned_10kHz = published ? facts.reception->channel_10kHz : facts.tuned_10kHz;
    const std::wstring condition = facts.reception ? facts.reception->condition : std::wstring();
    if (condition != kPlays && !(simulated && condition.empty())) {
        shown.words = condition;
    } else if (published) {
        shown.words = Figures(*facts.reception);
    } else {
        shown.words = simulated ? SimulatedFigures(facts) : Megahertz(facts.tuned_10kHz);
    }
    return shown;
}

Box BandBars(const Box& strip) {
    return {strip.x + kInset, strip.y + kBarsTop, strip.w - 2 * kInset, kBarsHeight};
}

double BandPlace(const Box& strip, std::uint32_t channel_10kHz) {
    const Box bars = BandBars(strip);
    const double pitch = static_cast<double>(bars.w) / static_cast<double>(kBandChannels);
    const double along = (static_cast<double>(channel_10kHz) - kFirstBandChannel_10kHz) / kBandStep_10kHz;
    return bars.x + (along + 0.5) * pitch;
}

std::optional<std::uint32_t> BandChannelAt(const Box& strip, const BandShown& shown, int x, int y) {
    const Box bars = BandBars(strip);
    // The marks below the bars belong to them.
    const Box touched = {bars.x, strip.y, bars.w, strip.h};
    if (!touched.Contains(x, y)) return std::nullopt;
    const double pitch = static_cast<double>(bars.w) / static_cast<double>(kBandChannels);
    const double at = x + 0.5 - bars.x;
    const auto exact = std::min(static_cast<std::size_t>(at / pitch), kBandChannels - 1);
    std::size_t best = exact;
    int most = fm::kSeekThreshold;
    for (std::size_t i = 0; i < kBandChannels; ++i) {
        const double away = std::abs((static_cast<double>(i) + 0.5) * pitch - at);
        const int level = shown.levels[i] == kLevelNotSeen ? 0 : shown.levels[i];
        if (away <= kReach && level > most) most = level, best = i;
    }
    return ChannelOf(best);
}

std::vector<PhoneKey> DigitsOf(std::uint32_t channel_10kHz) {
    std::vector<PhoneKey> keys;
    const std::uint32_t tenths = channel_10kHz / 10;
    for (std::uint32_t part = tenths >= 1000 ? 1000 : 100; part > 0; part /= 10)
        keys.push_back(
            static_cast<PhoneKey>(static_cast<int>(PhoneKey::k0) + static_cast<int>(tenths / part % 10)));
    return keys;
}

}  // namespace panel
