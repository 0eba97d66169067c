#include "tests/bench/reception/processor_time.h"

#include <ctime>

#include <algorithm>

#include "handset/fmdevice/sdr/rds/decoder.h"
#include "handset/fmdevice/sdr/receiver.h"
#include "handset/fmdevice/sdr/sample_form.h"
#include "handset/transmitter/station_texts.h"
#include "tests/bench/reception/data_cases.h"
#include "tests/bench/reception/listening.h"

namespace bench {
namespace {

constexpr double kRate_Hz = 1920000;
constexpr int kSeconds = 3;
constexpr int kRuns = 5;

double Now_s() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

std::vector<std::uint8_t> Bytes(double carrierToNoise_dBHz) {
    transmitter::StationTexts texts;
    texts.ps = {"KORA ONE"};
    texts.texts = {"Good morning from the other end of the air"};
    Air air = OrdinaryAir(carrierToNoise_dBHz);
    air.stream.rate_Hz = kRate_Hz;
    air.stream.carrier = 0.3;
    air.stations.front().offset_Hz = 300000;
    air.stations.front().multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
    transmitter::CTransmitter transmitter(air.stream, air.stations);
    Samples samples(static_cast<std::size_t>(kSeconds * kRate_Hz));
    transmitter.Read(samples.data(), samples.size());
    std::vector<std::uint8_t> bytes;
    transmitter::Append(samples.data(), samples.size(), transmitter::StreamFormat::kCu8, &bytes);
    return bytes;
}

// The chain laid out, so that each stage can be timed over a stretch of 20 ms.
class CStages {
  public:
    CStages() : tuning_(kRate_Hz), channelizer_(kRate_Hz), meter_(channelizer_.NoiseBandwidth_Hz()) {
        tuning_.SetOffset(300000);
        for (const char* name : {"bytes to floats", "tuning", "channel at 384 kHz", "channel filter",
                                 "discriminator", "level and offset", "pilot", "stereo and sound", "RDS"}) {
            costs_.push_back({name, 0});
        }
    }

    void Process(const std::uint8_t* bytes, std::size_t count) {
        samples_.clear();
        Time(0, [&] { decoder_.Decode(bytes, count, &samples_); });
        Time(1, [&] { tuning_.Process(samples_.data(), samples_.size()); });
        Time(2, [&] { channelizer_.Process(samples_.data(), samples_.size(), &channel_); });
        const std::size_t blocks = channel_.size() / sdr::kBlockSamples;
        const std::size_t size = blocks * sdr::kBlockSamples;
        filtered_.resize(size);
        multiplex_.resize(size);
        pairs_.resize(2 * size);
        pilots_.resize(blocks);
        const auto each = [&](auto&& stage) {
            for (std::size_t i = 0; i < blocks; ++i) stage(i, i * sdr::kBlockSamples);
        };
        constexpr std::size_t kSize = sdr::kBlockSamples;
        Time(3, [&] {
            each([&](std::size_t, std::size_t at) {
                filter_.Process(sdr::Pairs(&channel_[at]), kSize, sdr::Pairs(&filtered_[at]));
            });
        });
        Time(4, [&] {
            each([&](std::size_t, std::size_t at) {
                discriminator_.Process(sdr::Pairs(&filtered_[at]), kSize, &multiplex_[at]);
            });
        });
        Time(5, [&] {
            each([&](std::size_t, std::size_t at) {
                meter_.AddChannel(&channel_[at], &filtered_[at], filter_.Width(), kSize);
                meter_.AddMultiplex(&multiplex_[at], kSize);
            });
        });
        Time(6, [&] {
            each([&](std::size_t i, std::size_t at) {
                pilot_.Process(&multiplex_[at], &pilots_[i], &pairs_[2 * at]);
            });
        });
        Time(7, [&] {
            sound_.clear();
            each([&](std::size_t, std::size_t at) { stereo_.Process(&pairs_[2 * at], kSize, {}, &sound_); });
        });
        Time(8, [&] { each([&](std::size_t i, std::size_t) { rds_.Feed(pilots_[i]); }); });
        channel_.erase(channel_.begin(), channel_.begin() + static_cast<std::ptrdiff_t>(size));
    }

    const std::vector<Cost>& Costs() const { return costs_; }

  private:
    template <typename Stage>
    void Time(std::size_t row, Stage&& stage) {
        const double begin_s = Now_s();
        stage();
        costs_[row].share += (Now_s() - begin_s) / kSeconds;
    }

    std::vector<Cost> costs_;
    sdr::CSampleDecoder decoder_{sdr::SampleForm::kCu8};
    sdr::CTuning tuning_;
    sdr::CChannelizer channelizer_;
    sdr::CChannelFilter filter_;
    sdr::CDiscriminator discriminator_;
    sdr::CSignalMeter meter_;
    sdr::CPilotLoop pilot_;
    sdr::CStereoDecoder stereo_{sdr::DeEmphasis::k50us};
    sdr::rds::CDecoder rds_;
    std::vector<sdr::Sample> samples_, channel_, filtered_;
    std::vector<float> multiplex_, pairs_, sound_;
    std::vector<sdr::MpxBlock> pilots_;
};

constexpr std::size_t kStretch_bytes = 2 * 38400;

std::vector<Cost> StageByStage(const std::vector<std::uint8_t>& bytes) {
    CStages stages;
    for (std::size_t at = 0; at + kStretch_bytes <= bytes.size(); at += kStretch_bytes) {
        stages.Process(&bytes[at], kStretch_bytes);
    }
    return stages.Costs();
}

double Whole(const std::vector<std::uint8_t>& bytes, bool withData) {
    sdr::ReceiverOptions options;
    options.rate_Hz = kRate_Hz;
    sdr::CSampleReceiver receiver(options);
    sdr::CSampleDecoder decoder(sdr::SampleForm::kCu8);
    sdr::rds::CDecoder data;
    receiver.Tune(300000);
    if (withData) receiver.SetListener(&data);
    std::vector<sdr::Sample> samples;
    std::vector<float> sound;
    const double begin_s = Now_s();
    for (std::size_t at = 0; at + kStretch_bytes <= bytes.size(); at += kStretch_bytes) {
        samples.clear();
        sound.clear();
        decoder.Decode(&bytes[at], kStretch_bytes, &samples);
        receiver.Process(samples.data(), samples.size(), &sound);
    }
    return (Now_s() - begin_s) / kSeconds;
}

template <typename Measurement>
double Least(Measurement&& measure) {
    double least = measure();
    for (int run = 1; run < kRuns; ++run) least = std::min(least, measure());
    return least;
}

}  // namespace

std::vector<Cost> ProcessorTime() {
    const std::vector<std::uint8_t> strong = Bytes(80), weak = Bytes(68);
    std::vector<Cost> costs = StageByStage(strong);
    for (int run = 1; run < kRuns; ++run) {
        const std::vector<Cost> again = StageByStage(strong);
        for (std::size_t i = 0; i < costs.size(); ++i)
            costs[i].share = std::min(costs[i].share, again[i].share);
    }
    costs.push_back({"all, without RDS", Least([&] { return Whole(strong, false); })});
    costs.push_back({"all, with RDS", Least([&] { return Whole(strong, true); })});
    costs.push_back({"all, with RDS, at 68 dB-Hz", Least([&] { return Whole(weak, true); })});
    return costs;
}

}  // namespace bench
