#include "tests/bench/reception/data_cases.h"

#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <utility>

#include "handset/transmitter/sampled_programme.h"
#include "tests/bench/reception/ideal_limit.h"
#include "tests/bench/reception/listening.h"
#include "tests/bench/reception/peer_decoder.h"
#include "tests/bench/reception/reference_multiplex.h"

namespace bench {
namespace {

constexpr double kRate_Hz = 240000;
constexpr std::size_t kChunk = 24000;
// Groups that are not counted at the beginning, for finding the signal, and at the end, for those on their
// way.
constexpr std::size_t kSkippedGroups = 12;

transmitter::StationSettings Station() {
    transmitter::StationSettings station;
    station.multiplex.programme =
        std::make_shared<transmitter::CSampledProgramme>(transmitter::PinkNoise(0.1, 0.5, 3), 50e-6);
    return station;
}

std::string Named(const char* what, double carrierToNoise_dBHz) {
    char text[80];
    std::snprintf(text, sizeof text, "%s%.1f dB-Hz", what, carrierToNoise_dBHz);
    return text;
}

double Length_s(bool quick) {
    return quick ? 12 : 40;
}

DataCase Case(const std::string& what, double carrierToNoise_dBHz, bool quick) {
    DataCase made;
    made.what = what;
    made.air = OrdinaryAir(carrierToNoise_dBHz);
    made.length_s = Length_s(quick);
    return made;
}

// Groups of random content under one PI, and a note of each.
transmitter::GroupSource RandomGroups(std::vector<SentGroup>* sent) {
    return [sent, draw = std::mt19937(5)]() mutable {
        const auto word = [&] { return static_cast<std::uint16_t>(draw()); };
        // Version A throughout: the third block's offset is then the same.
        const SentGroup group{0xD301, static_cast<std::uint16_t>((word() & 0xF01F) | 0x0400), word(), word()};
        sent->push_back(group);
        return transmitter::Group{group, {}};
    };
}

void Run(DataCase& data, const std::string& redsea) {
    Air air = data.air;
    std::vector<SentGroup> sent;
    // The programme is made anew: its generator would be shared by all that copied the settings.
    for (transmitter::StationSettings& station : air.stations)
        station.multiplex.programme = Station().multiplex.programme;
    air.stations.front().multiplex.rds.groups = RandomGroups(&sent);
    CAirStream stream(air);
    sdr::ReceiverOptions options;
    options.rate_Hz = air.stream.rate_Hz;
    CListening listening(options);
    Samples all;
    const double rate_Hz = air.stream.rate_Hz;
    for (double done = 0; done < data.length_s * rate_Hz; done += kChunk) {
        const Samples& samples = stream.Next(kChunk);
        listening.Process(samples);
        listening.Sound().clear();
        if (!redsea.empty()) all.insert(all.end(), samples.begin(), samples.end());
    }
    const std::size_t end = sent.size() - 4;
    data.ours = Compare(sent, listening.Groups(), kSkippedGroups, end);
    if (data.limitBlocks > 0) {
        const double energy_dB = EnergyToNoise_dB(data.CarrierToNoise_dBHz(), data.Deviation_Hz());
        data.limit = BestBlockErrorRate(energy_dB, data.limitBlocks, 11);
    }
    if (redsea.empty()) return;
    // All of a narrow stream; of a wide one what a station takes.
    const double halfWidth_Hz = rate_Hz == kRate_Hz ? rate_Hz / 2 : 100000;
    const std::optional<PeerResult> peer = RunRedsea(redsea, ReferenceMultiplex(all, rate_Hz, halfWidth_Hz));
    if (!peer) return;
    data.redsea = Compare(sent, peer->groups, kSkippedGroups, end);
    data.redseaProcessor = peer->processor_s / data.length_s;
}

}  // namespace

Air OrdinaryAir(double carrierToNoise_dBHz) {
    Air air;
    air.stream.rate_Hz = kRate_Hz;
    air.stream.carrierToNoise_dBHz = carrierToNoise_dBHz;
    air.stations = {Station()};
    return air;
}

std::vector<DataCase> WeakCases(bool quick) {
    std::vector<DataCase> cases;
    for (const double cn : {63.0, 64.0, 65.0, 66.0, 67.0, 68.0, 69.0, 70.0, 72.0, 75.0, 80.0}) {
        if (quick && (cn < 66 || cn == 75)) continue;
        cases.push_back(Case(Named("", cn), cn, quick));
        cases.back().limitBlocks = quick ? 300 : 3000;
    }
    return cases;
}

std::vector<DataCase> FallbackCases(bool quick) {
    std::vector<DataCase> cases;
    for (const double cn : {69.0, 68.0, 67.0}) {
        cases.push_back(Case(Named("mono, no pilot, ", cn), cn, quick));
        cases.back().air.stations.front().multiplex.stereo = false;
        for (const double offset_Hz : {6.0, -6.0}) {
            char what[60];
            std::snprintf(what, sizeof what, "RDS %+.0f Hz beside the third harmonic, ", offset_Hz);
            cases.push_back(Case(Named(what, cn), cn, quick));
            cases.back().air.stations.front().multiplex.rds.offset_Hz = offset_Hz;
        }
        if (quick) break;
    }
    return cases;
}

std::vector<DataCase> OddCases(bool quick) {
    std::vector<DataCase> cases;
    const auto add = [&](const char* what, double cn, double most = -1) -> Air& {
        cases.push_back(Case(Named(what, cn), cn, quick));
        cases.back().most = most;
        return cases.back().air;
    };
    add("RDS of 1.2 kHz, ", 76, 0.01).stations.front().multiplex.rds.deviation_Hz = 1200;
    add("in quadrature to the pilot, ", 72, 0.01).stations.front().multiplex.rds.phase_turns = 0.25;
    Air& away = add("80 ppm and 8 kHz off, ", 72, 0.01);
    away.stream.ppm = 80;
    away.stations.front().offset_Hz = 8000;
    Air& car = add("Rayleigh fading of 5 Hz, mean ", 82);
    car.stations.front().path.doppler_Hz = 5;
    Air& train = add("Rayleigh fading of 15 Hz, mean ", 82);
    train.stations.front().path.doppler_Hz = 15;
    Air& echo = add("echo of half the size after 12 us, ", 74);
    echo.stations.front().path.echo = 0.5;
    echo.stations.front().path.echoDelay_s = 12e-6;
    echo.stations.front().path.echoPhase_turns = 0.4;
    for (const double level_dB : {10.0, 25.0}) {
        char what[60];
        std::snprintf(what, sizeof what, "neighbour at 200 kHz, %+.0f dB, ", level_dB);
        Air& beside = add(what, 76);
        beside.stream.rate_Hz = 960000;
        beside.stream.carrier = 0.5 / std::pow(10.0, level_dB / 20);
        beside.stations.push_back(beside.stations.front());
        beside.stations.back().offset_Hz = 200000;
        beside.stations.back().level_dB = level_dB;
        cases.back().length_s = Length_s(quick) / 3;
    }
    return cases;
}

std::vector<Task> Measure(std::vector<DataCase>& cases, const std::string& redsea) {
    std::vector<Task> tasks;
    for (DataCase& data : cases) {
        tasks.push_back({"data, " + data.what, [&data, redsea] { Run(data, redsea); }});
    }
    return tasks;
}

}  // namespace bench
