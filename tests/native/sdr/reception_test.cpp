// The receiver on a station as it is on the air: pre-emphasised stereo sound and data, from another
// transmitter.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "handset/fmdevice/sdr/rds/decoder.h"
#include "handset/fmdevice/sdr/receiver.h"
#include "handset/transmitter/programme.h"
#include "handset/transmitter/station_texts.h"
#include "handset/transmitter/transmitter.h"
#include "tests/native/sdr/tone_fit.h"

namespace {

using sdr::CSampleReceiver;
using sdr::ReceiverOptions;

struct Station {
    std::string name;
    double tone_Hz;
    double offset_Hz;
};

transmitter::StationSettings OnTheAir(const Station& station) {
    transmitter::StationTexts texts;
    texts.pi = 0xD3C2;
    texts.ps = {station.name};
    transmitter::StationSettings settings;
    settings.offset_Hz = station.offset_Hz;
    settings.multiplex.programme = std::make_shared<transmitter::CTones>(
        std::vector<transmitter::Tone>{{station.tone_Hz, 0.8, 0.0}}, 50e-6);
    settings.multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
    return settings;
}

TEST(Reception, AStationsSoundNameAndLevelComeThroughAndThenThoseOfTheNext) {
    transmitter::StreamSettings stream;
    stream.rate_Hz = 1024000.0;
    stream.carrierToNoise_dBHz = 80.0;
    stream.carrier = 0.3;
    stream.dc = {0.01, 0.02};
    stream.ppm = 30.0;
    const Station stations[] = {{"KORA ONE", 1000.0, 250000.0}, {"KORA TWO", 2000.0, -200000.0}};
    transmitter::CTransmitter air(stream, {OnTheAir(stations[0]), OnTheAir(stations[1])});
    ReceiverOptions options;
    options.rate_Hz = stream.rate_Hz;
    CSampleReceiver receiver(options);
    sdr::rds::CDecoder data;
    receiver.SetListener(&data);
    std::vector<sdr::Sample> samples(static_cast<std::size_t>(stream.rate_Hz));
    for (const Station& station : stations) {
        SCOPED_TRACE(station.name);
        receiver.Tune(station.offset_Hz);
        EXPECT_EQ(data.Current().pi, std::nullopt);
        std::vector<float> frames;
        for (int second = 0; second < 3; ++second) {
            air.Read(samples.data(), samples.size());
            frames.clear();
            receiver.Process(samples.data(), samples.size(), &frames);
        }
        const sdr::ReceiverSnapshot snapshot = receiver.Snapshot();
        EXPECT_EQ(data.Current().pi, 0xD3C2);
        EXPECT_EQ(data.Current().serviceName.whole, station.name);
        EXPECT_NEAR(snapshot.carrierToNoise_dBHz.value, 80.0, 1.0);
        EXPECT_EQ(snapshot.stereo.value, 1.0);
        const double tone_Hz = station.tone_Hz / (1.0 + 30e-6);
        const sdr_test::ToneFit left = sdr_test::FitTone(frames, 2, 0, 0, sdr::kSoundRate_Hz, tone_Hz);
        const sdr_test::ToneFit right = sdr_test::FitTone(frames, 2, 1, 0, sdr::kSoundRate_Hz, tone_Hz);
        EXPECT_GE(left.Sinad_dB(), 36.0);
        EXPECT_GE(left.amplitude / right.amplitude, 100.0);
    }
}

}  // namespace
