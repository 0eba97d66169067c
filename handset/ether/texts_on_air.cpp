#include "handset/ether/texts_on_air.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "handset/base/calendar.h"

namespace ether {
namespace {

// Country D, a network of more than one region, and a number that the name's letters make.
std::uint16_t ProgrammeIdentification(std::uint32_t channel_10kHz, const std::vector<std::string>& names) {
    std::uint32_t hash = 2166136261U;
    const std::string name = names.empty() ? std::to_string(channel_10kHz) : names.front();
    for (const char letter : name) hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
    hash ^= hash >> 15;
    return static_cast<std::uint16_t>(0xD300 | (1 + hash % 255));
}

// The texts in their turn, that of the moment first.
std::vector<std::string> FromNow(std::vector<std::string> texts, int time_s, double utc_s) {
    if (texts.size() > 1) {
        const auto turn = static_cast<std::size_t>(utc_s / time_s) % texts.size();
        std::rotate(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(turn), texts.end());
    }
    return texts;
}

transmitter::ClockTime ClockAt(double utc_s, int halfHours) {
    const double days = std::floor(utc_s / handset::kSecondsOfDay);
    const auto second = static_cast<long>(utc_s - days * handset::kSecondsOfDay);
    transmitter::ClockTime clock;
    clock.mjd = static_cast<long>(days) - static_cast<long>(handset::kFirstJulianDay);
    clock.hour = static_cast<int>(second / 3600);
    clock.minute = static_cast<int>(second / 60 % 60);
    clock.second = utc_s - 60 * std::floor(utc_s / 60);
    clock.halfHours = halfHours;
    return clock;
}

}  // namespace

std::optional<transmitter::StationTexts> TextsOnAir(std::uint32_t channel_10kHz, const fm::Station& station,
                                                    double utc_s, int halfHours) {
    const fm::RdsData& rds = station.rds;
    if (!rds.Sent()) return std::nullopt;
    transmitter::StationTexts texts;
    texts.pi = ProgrammeIdentification(channel_10kHz, rds.serviceNames);
    texts.pty = std::max(rds.programmeType, 0);
    texts.tp = rds.trafficProgramme;
    texts.ta = rds.trafficAnnouncement;
    texts.decoder = station.stereo ? 1 : 0;
    texts.music = station.programme.kind != fm::ProgrammeKind::kVoice;
    texts.ps = FromNow(rds.serviceNames, rds.nameTime_s, utc_s);
    texts.ps_s = rds.nameTime_s;
    texts.texts = FromNow(rds.radioTexts, rds.textTime_s, utc_s);
    texts.text_s = rds.textTime_s;
    texts.ptyName = rds.programText;
    texts.tuned_MHz = channel_10kHz / 100.0;
    for (const std::uint32_t alternative : rds.alternatives_10kHz)
        texts.alternatives_MHz.push_back(alternative / 100.0);
    if (rds.clockTime) texts.clock = ClockAt(utc_s, halfHours);
    return texts;
}

bool SendTheSame(const fm::Station& one, const fm::Station& other) {
    const auto all = [](const fm::Station& station) {
        const fm::RdsData& rds = station.rds;
        return std::tie(station.stereo, station.programme.source, rds.serviceNames, rds.radioTexts,
                        rds.nameTime_s, rds.textTime_s, rds.programText, rds.programmeType,
                        rds.alternatives_10kHz, rds.clockTime, rds.trafficProgramme, rds.trafficAnnouncement);
    };
    return all(one) == all(other);
}

}  // namespace ether
