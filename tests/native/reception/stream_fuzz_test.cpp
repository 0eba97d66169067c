// Any stream of samples into the whole receiver: sound that is finite, and not more of it than there was air.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "handset/fmdevice/sdr/rds/decoder.h"
#include "handset/fmdevice/sdr/receiver.h"
#include "handset/transmitter/station_texts.h"
#include "handset/transmitter/transmitter.h"
#include "tests/native/fuzz_inputs.h"

namespace {

using Draw = std::mt19937;
using Samples = std::vector<sdr::Sample>;

constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kEndless = std::numeric_limits<float>::infinity();

long Inputs(long everyday) {
    return static_cast<long>(test::FuzzInputs(static_cast<std::uint64_t>(everyday)));
}
std::uint32_t Below(Draw& draw, std::uint32_t bound) {
    return static_cast<std::uint32_t>(draw() % bound);
}

class CData final : public sdr::IMpxListener {
  public:
    void OnMultiplex(const sdr::MpxBlock& block) override {
        for (std::size_t i = 0; i < block.count; ++i) finite_ = finite_ && std::isfinite(block.samples[i]);
        rds_.Feed(block);
    }
    void OnTuned() override { rds_.Restart(); }
    bool Finite() const { return finite_; }
    const sdr::rds::Station& Station() { return rds_.Current(); }

  private:
    bool finite_ = true;
    sdr::rds::CDecoder rds_;
};

// A stretch of a station, of noise, of nothing, of what no converter gives.
class CAir {
  public:
    explicit CAir(double rate_Hz) : transmitter_(Stream(rate_Hz), {Station()}) {}

    const Samples& Next(Draw& draw) {
        samples_.resize(1 + Below(draw, 700));
        transmitter_.Read(samples_.data(), samples_.size());
        const std::uint32_t kind = Below(draw, 24);
        if (kind < 8) kKinds[kind](samples_, draw);
        return samples_;
    }

  private:
    using Kind = void (*)(Samples&, Draw&);
    static transmitter::StreamSettings Stream(double rate_Hz) {
        transmitter::StreamSettings stream;
        stream.rate_Hz = rate_Hz;
        stream.carrierToNoise_dBHz = 75;
        return stream;
    }
    static transmitter::StationSettings Station() {
        transmitter::StationTexts texts;
        texts.ps = {"KORA ONE"};
        transmitter::StationSettings station;
        station.multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
        return station;
    }
    static const Kind kKinds[8];

    transmitter::CTransmitter transmitter_;
    Samples samples_;
};

const CAir::Kind CAir::kKinds[8] = {
    [](Samples& samples, Draw&) { samples.clear(); },  // a gap
    [](Samples& samples, Draw&) { std::fill(samples.begin(), samples.end(), sdr::Sample()); },
    [](Samples& samples, Draw&) { std::fill(samples.begin(), samples.end(), sdr::Sample(1, 1)); },
    [](Samples& samples, Draw& draw) {
        samples[Below(draw, static_cast<std::uint32_t>(samples.size()))] = {kNoNumber, 0};
    },
    [](Samples& samples, Draw&) {
        std::fill(samples.begin(), samples.end(), sdr::Sample(kNoNumber, kEndless));
    },
    [](Samples& samples, Draw& draw) {
        for (sdr::Sample& sample : samples)
            sample = {Below(draw, 2) == 0 ? 1.0f : -1.0f, Below(draw, 2) == 0 ? 1.0f : -1.0f};
    },
    [](Samples& samples, Draw&) { std::fill(samples.begin(), samples.end(), sdr::Sample(3e38f, -3e38f)); },
    [](Samples& samples, Draw&) {
        std::fill(samples.begin(), samples.end(), sdr::Sample(1e-40f, -kEndless));
    },
};

void Fuzz(double rate_Hz, long inputs) {
    Draw draw(31);
    sdr::ReceiverOptions options;
    options.rate_Hz = rate_Hz;
    sdr::CSampleReceiver receiver(options);
    CData data;
    receiver.SetListener(&data);
    receiver.Tune(0);
    CAir air(rate_Hz);
    std::vector<float> sound;
    double samples = 0, frames = 0;
    for (long i = 0; i < inputs; ++i) {
        const Samples& stretch = air.Next(draw);
        samples += static_cast<double>(stretch.size());
        receiver.Process(stretch.data(), stretch.size(), &sound);
        frames += static_cast<double>(sound.size()) / 2;
        for (const float value : sound) ASSERT_TRUE(std::isfinite(value)) << "stretch " << i;
        sound.clear();
        if (Below(draw, 2000) == 0)
            receiver.Tune((static_cast<double>(Below(draw, 1000)) / 1000 - 0.5) * 0.9 * rate_Hz);
    }
    ASSERT_TRUE(data.Finite());
    const sdr::ReceiverSnapshot snapshot = receiver.Snapshot();
    EXPECT_TRUE(std::isfinite(snapshot.carrierToNoise_dBHz.value));
    EXPECT_TRUE(std::isfinite(snapshot.carrierOffset_Hz.value));
    EXPECT_GE(snapshot.level.value, 0);
    EXPECT_LE(snapshot.level.value, 100);
    EXPECT_LE(frames, samples / rate_Hz * 48000 + 100) << "no more sound than there was air";
    // Each tuning drops a begun block.
    EXPECT_GE(frames, samples / rate_Hz * 48000 * 0.98 - 1000);
    // After all that it is a receiver still.
    transmitter::StreamSettings stream;
    stream.rate_Hz = rate_Hz;
    transmitter::StationTexts texts;
    texts.ps = {"STILL ON"};
    transmitter::StationSettings station;
    station.multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
    transmitter::CTransmitter clean(stream, {station});
    receiver.Tune(0);
    Samples second(static_cast<std::size_t>(rate_Hz / 10));
    for (int i = 0; i < 40 && data.Station().serviceName.whole.empty(); ++i) {
        clean.Read(second.data(), second.size());
        receiver.Process(second.data(), second.size(), &sound);
    }
    EXPECT_EQ(data.Station().serviceName.whole, "STILL ON");
}

TEST(ReceptionFuzz, AnyStreamOfSamplesGivesSoundThatIsFiniteAndTheReceiverGoesOn) {
    Fuzz(240000, Inputs(4000));
}

TEST(ReceptionFuzz, SoItIsAtARateThatHasNoSmallCommonMeasure) {
    Fuzz(1024001, Inputs(4000));
}

}  // namespace
