#include "tests/bench/reception/band_cases.h"

#include <ctime>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

#include "handset/fmdevice/sdr/band_scan.h"
#include "handset/transmitter/sampled_programme.h"
#include "tests/bench/reception/air_stream.h"

namespace bench {
namespace {

constexpr double kRate_Hz = 1920000;
constexpr double kLowest_Hz = 87.5e6, kHighest_Hz = 108e6, kRaster_Hz = 100e3;
constexpr std::size_t kLookSamples = 38400;
// Until the transmitter's filters are full.
constexpr std::size_t kBegin = 9600;
// The strongest carrier that any of the stations has, against its noise.
constexpr double kReference_dBHz = 100;

struct Station {
    double frequency_Hz;
    double carrierToNoise_dBHz;
};

double Now_s() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

std::vector<Station> Stations(const BandCase& band) {
    std::mt19937 draw(7);
    std::vector<Station> stations;
    const double free_Hz = kHighest_Hz - kLowest_Hz - band.step_Hz * (band.stations - 1);
    std::vector<double> gaps_Hz;
    for (int i = 0; i < band.stations; ++i)
        gaps_Hz.push_back(std::uniform_real_distribution<double>(0, free_Hz)(draw));
    std::sort(gaps_Hz.begin(), gaps_Hz.end());
    for (int i = 0; i < band.stations; ++i) {
        const double on_Hz =
            std::floor((gaps_Hz[static_cast<std::size_t>(i)] + band.step_Hz * i) / kRaster_Hz);
        const double share = band.stations > 1 ? static_cast<double>(i) / (band.stations - 1) : 1;
        stations.push_back(
            {kLowest_Hz + kRaster_Hz * on_Hz, band.least_dBHz + share * (band.most_dBHz - band.least_dBHz)});
    }
    // Which of them is strong is a matter of chance.
    for (std::size_t i = stations.size(); i > 1; --i)
        std::swap(stations[i - 1].carrierToNoise_dBHz, stations[draw() % i].carrierToNoise_dBHz);
    return stations;
}

// What an aerial gives around a centre, its loudest part near full scale.
Air AirAt(double centre_Hz, const std::vector<Station>& stations) {
    Air air;
    air.stream.rate_Hz = kRate_Hz;
    air.stream.carrierToNoise_dBHz = kReference_dBHz;
    air.stream.seed = static_cast<std::uint64_t>(centre_Hz);
    double sum = 0.1;
    for (const Station& station : stations) {
        const double offset_Hz = station.frequency_Hz - centre_Hz;
        if (std::abs(offset_Hz) > kRate_Hz / 2) continue;
        transmitter::StationSettings sent;
        sent.offset_Hz = offset_Hz;
        sent.level_dB = station.carrierToNoise_dBHz - kReference_dBHz;
        sent.multiplex.programme = std::make_shared<transmitter::CSampledProgramme>(
            transmitter::PinkNoise(0.1, 0.5, air.stations.size() + 3), 50e-6);
        air.stations.push_back(sent);
        sum += std::pow(10.0, sent.level_dB / 20);
    }
    air.stream.carrier = std::min(0.8 / sum, 0.5);
    return air;
}

void Run(BandCase& band) {
    const std::vector<Station> stations = Stations(band);
    const std::vector<double> centres_Hz = sdr::CBandLook::Centres(kLowest_Hz, kHighest_Hz, kRate_Hz);
    std::vector<double> raster_Hz, found_Hz;
    for (double channel_Hz = kLowest_Hz; channel_Hz < kHighest_Hz + 1; channel_Hz += kRaster_Hz)
        raster_Hz.push_back(channel_Hz);
    double processor_s = 0;
    for (const double centre_Hz : centres_Hz) {
        CAirStream stream(AirAt(centre_Hz, stations));
        stream.Next(kBegin);
        const Samples& samples = stream.Next(kLookSamples);
        const double begin_s = Now_s();
        sdr::CBandLook look(kRate_Hz);
        look.Add(samples.data(), samples.size());
        for (const sdr::ChannelLook& channel : look.Channels(centre_Hz, raster_Hz)) {
            if (channel.carrier) found_Hz.push_back(channel.frequency_Hz);
        }
        processor_s += Now_s() - begin_s;
        band.air_s = static_cast<double>(kLookSamples) / kRate_Hz;
    }
    band.looks = static_cast<int>(centres_Hz.size());
    band.processor_s = processor_s / band.looks;
    // Looks overlap: a channel on their border is seen twice.
    std::sort(found_Hz.begin(), found_Hz.end());
    found_Hz.erase(std::unique(found_Hz.begin(), found_Hz.end()), found_Hz.end());
    for (const Station& station : stations) {
        const auto at = std::find_if(found_Hz.begin(), found_Hz.end(), [&](double channel_Hz) {
            return std::abs(channel_Hz - station.frequency_Hz) < kRaster_Hz / 2;
        });
        ++(at != found_Hz.end() ? band.found : band.missed);
    }
    band.untrue = static_cast<long>(found_Hz.size()) - band.found;
}

}  // namespace

std::vector<BandCase> BandCases() {
    return {{"20 stations, 60 to 100 dB-Hz", 20, 60, 100, 400e3},
            {"40 stations, 60 to 80 dB-Hz", 40, 60, 80, 400e3},
            {"no station", 0, 0, 0, 0}};
}

std::vector<Task> Measure(std::vector<BandCase>& cases) {
    std::vector<Task> tasks;
    for (BandCase& band : cases) tasks.push_back({"band, " + band.what, [&band] { Run(band); }});
    return tasks;
}

}  // namespace bench
