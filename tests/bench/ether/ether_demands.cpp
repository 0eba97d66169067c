#include "tests/bench/ether/ether_demands.h"

#include <algorithm>
#include <string>

namespace bench {
namespace {

constexpr double kMostSound_ms = 350;
constexpr double kMostLevel_ms = 250;
constexpr double kMostHop_ms = 200;
constexpr double kMostCall_ms = 1000;
constexpr double kMostScan_s = 15;
// What may be held more: a box that is just open, a page that is touched for the first time.
constexpr double kMostMore_MB = 1;
constexpr long kMostMore_handles = 8;
// What the clocks' bridge corrects at most, and what the clocks themselves differ by.
constexpr double kMostPitch_ppm = 310;

// A number that must not be larger; none: not measured.
Demand AtMost(const std::string& what, const std::optional<double>& reached, double most,
              const char* format) {
    const std::string asked = "<= " + Text(format, most);
    if (!reached) return {what, asked, "not measured", false};
    return {what, asked, Text(format, *reached), *reached <= most};
}

std::optional<double> MedianOf(const std::optional<Spread>& spread) {
    return spread ? std::optional(spread->median) : std::nullopt;
}

std::optional<double> WorstOf(const std::optional<Spread>& spread) {
    return spread ? std::optional(spread->worst) : std::nullopt;
}

Demand None(const std::string& what, const std::optional<long>& count) {
    if (!count) return {what, "none", "not measured", false};
    return {what, "none", std::to_string(*count), *count == 0};
}

void DemandRetunes(const EtherResults& results, std::vector<Demand>* demands) {
    const RetuneCase retunes = results.retunes.value_or(RetuneCase{});
    demands->push_back(
        AtMost("from SetChannel to sound, median", MedianOf(retunes.sound_ms), kMostSound_ms, "%.0f ms"));
    demands->push_back(
        AtMost("from SetChannel to sound, worst", WorstOf(retunes.sound_ms), kMostSound_ms, "%.0f ms"));
    demands->push_back(
        AtMost("from SetChannel to a level, median", MedianOf(retunes.level_ms), kMostLevel_ms, "%.0f ms"));
    demands->push_back(
        AtMost("from SetChannel to a level, worst", WorstOf(retunes.level_ms), kMostLevel_ms, "%.0f ms"));
    std::optional<long> unheard;
    if (retunes.retunes > 0) unheard = retunes.unheard;
    demands->push_back(None("tunings without their station's sound or level", unheard));
}

void DemandSeeks(const EtherResults& results, std::vector<Demand>* demands) {
    const SeekCase seeks = results.seeks.value_or(SeekCase{});
    demands->push_back(AtMost("a seek, a look", seeks.hop_ms, kMostHop_ms, "%.0f ms"));
    demands->push_back(AtMost("a seek, the longest call", seeks.longest_ms, kMostCall_ms, "%.0f ms"));
    std::optional<long> missed;
    if (seeks.hop_ms) missed = seeks.missed;
    demands->push_back(None("seeks with the wrong answer", missed));
}

void DemandScan(const EtherResults& results, std::vector<Demand>* demands) {
    const ScanCase scan = results.scan.value_or(ScanCase{});
    const std::string what = "a scan of " + std::to_string(scan.stations) + " stations";
    demands->push_back(AtMost(what + ", from the answer to the list", scan.total_s, kMostScan_s, "%.1f s"));
    std::optional<long> faults;
    if (scan.total_s) faults = scan.stations - scan.right + scan.wrong;
    demands->push_back(None(what + ", missed or made up", faults));
}

void DemandGrowth(const std::string& what, const std::optional<Growth>& growth,
                  std::vector<Demand>* demands) {
    const std::string memory = what + ", more memory", handles = what + ", more handles";
    const std::string most = Text("<= %.0f MB", kMostMore_MB);
    const std::string mostHandles = "<= " + std::to_string(kMostMore_handles);
    if (!growth || growth->before_MB <= 0 || growth->before_handles <= 0) {
        demands->push_back({memory, most, "not measured", false});
        demands->push_back({handles, mostHandles, "not measured", false});
        return;
    }
    const double more_MB = growth->after_MB - growth->before_MB;
    const long more = growth->after_handles - growth->before_handles;
    const std::string dead = growth->survived ? "" : ", and then it received nothing";
    demands->push_back(
        {memory, most, Text("%+.2f MB", more_MB) + dead, growth->survived && more_MB <= kMostMore_MB});
    demands->push_back({handles, mostHandles, std::to_string(more), more <= kMostMore_handles});
}

void DemandTone(const EtherResults& results, std::vector<Demand>* demands) {
    const std::string what = Text("%.0f s of tone in a recording: ", results.recorded_s);
    std::optional<long> clicks, breaks;
    std::optional<double> pitch_ppm;
    // A recording that breaks off holds less than was recorded, and one of silence no tone.
    const bool whole = results.tone && results.tone->seconds > results.recorded_s - 2 &&
                       results.tone->seconds > 2 && results.tone->amplitude > 0.01;
    if (whole) {
        clicks = results.tone->clicks;
        breaks = results.tone->breaks;
        pitch_ppm = std::max(results.tone->most_ppm, -results.tone->least_ppm);
    }
    demands->push_back(None(what + "clicks", clicks));
    demands->push_back(None(what + "samples lost or put in", breaks));
    demands->push_back(AtMost(what + "difference of the clocks", pitch_ppm, kMostPitch_ppm, "%.0f ppm"));
}

}  // namespace

std::vector<Demand> EtherDemands(const EtherResults& results) {
    std::vector<Demand> demands;
    DemandRetunes(results, &demands);
    DemandSeeks(results, &demands);
    DemandScan(results, &demands);
    const auto often = [](const std::optional<Growth>& growth) {
        return growth ? Text("%.0f tunings", growth->count) : std::string("tunings");
    };
    DemandGrowth(often(results.tunings) + " at once", results.tunings, &demands);
    DemandGrowth(often(results.awaitedTunings) + ", each received", results.awaitedTunings, &demands);
    DemandGrowth(Text("%.0f min of the radio", results.life ? results.life->count : 0), results.life,
                 &demands);
    DemandTone(results, &demands);
    return demands;
}

}  // namespace bench
