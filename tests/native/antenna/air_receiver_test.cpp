// The radio behind an antenna on what a transmitter sends, with a stick that takes its time to follow.
#include "handset/fmdevice/antenna/air_receiver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <random>

#include "handset/fmdevice/antenna/station_texts.h"
#include "handset/transmitter/station_texts.h"
#include "handset/transmitter/stream_format.h"
#include "handset/transmitter/transmitter.h"

namespace {

using fm::CAirReceiver;
using fm::CBandMemory;
using fm::StreamForm;

constexpr double kRate_Hz = 960000.0;
constexpr std::size_t kBlock = 9600;  // samples: 10 ms

struct Air {
    double at_MHz;
    double level_dB;
    const char* name;
    double tone_Hz;
};

// A stick whose centre can be moved, and which goes on sending what it was at for a while.
class AirReceiver : public testing::Test {
  protected:
    static constexpr double kLate_s = 0.1;

    void On(const std::vector<Air>& stations, double carrierToNoise_dBHz = 95.0) {
        std::vector<transmitter::StationSettings> settings;
        for (const Air& air : stations) {
            transmitter::StationSettings station;
            station.level_dB = air.level_dB;
            station.multiplex.programme = std::make_shared<transmitter::CTones>(
                std::vector<transmitter::Tone>{{air.tone_Hz, 0.5, 0.5}}, 50e-6);
            transmitter::StationTexts texts;
            texts.pi = static_cast<std::uint16_t>(0xD300 + settings.size());
            texts.ps = {air.name};
            texts.alternatives_MHz = {101.1};
            station.multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
            at_MHz_.push_back(air.at_MHz);
            settings.push_back(station);
        }
        transmitter::StreamSettings stream;
        stream.rate_Hz = kRate_Hz;
        stream.carrier = 0.2;
        stream.carrierToNoise_dBHz = carrierToNoise_dBHz;
        transmitter_ = std::make_unique<transmitter::CTransmitter>(stream, settings);
        StreamForm form;
        form.rate_Hz = kRate_Hz;
        form.centre_Hz = centre_Hz_ = 98e6;
        form.tunable = true;
        receiver_ =
            std::make_unique<CAirReceiver>(form, sdr::DeEmphasis::k50us, &band_, [this](double centre_Hz) {
                ++moves_;
                centre_Hz_ = centre_Hz;
                return kLate_s;
            });
        Point();
    }

    void Point() {
        for (std::size_t i = 0; i < at_MHz_.size(); ++i)
            transmitter_->Move(i, at_MHz_[i] * 1e6 - pointed_Hz_);
    }

    // So much of the air; what was on its way at a move of the centre is still of the one before.
    void Run(double seconds) {
        std::vector<std::complex<float>> samples(kBlock);
        for (int blocks = static_cast<int>(std::lround(seconds * 100.0)); blocks > 0; --blocks) {
            queue_.push_back(centre_Hz_);
            const double due_Hz = queue_.front();
            if (static_cast<double>(queue_.size()) > kLate_s * 100.0 - 1.0) queue_.pop_front();
            if (due_Hz != pointed_Hz_) {
                pointed_Hz_ = due_Hz;
                Point();
            }
            transmitter_->Read(samples.data(), kBlock);
            std::vector<std::uint8_t> bytes;
            transmitter::Append(samples.data(), kBlock, transmitter::StreamFormat::kCu8, &bytes);
            now_ms_ += 10;
            receiver_->Process(bytes.data(), bytes.size(), now_ms_, &frames_);
        }
    }

    double Loudness(double last_s) const {
        const std::size_t count = 2 * static_cast<std::size_t>(last_s * sdr::kSoundRate_Hz);
        double sum = 0.0;
        for (std::size_t i = frames_.size() - count; i < frames_.size(); ++i) sum += frames_[i] * frames_[i];
        return std::sqrt(sum / static_cast<double>(count));
    }
    // Of a tone on the left, in the last stretch.
    double Tone(double frequency_Hz, double last_s) const {
        std::complex<double> sum;
        const auto count = static_cast<std::size_t>(last_s * sdr::kSoundRate_Hz);
        for (std::size_t i = 0; i < count; ++i) {
            const double turns = frequency_Hz * static_cast<double>(i) / sdr::kSoundRate_Hz;
            sum += static_cast<double>(frames_[frames_.size() - 2 * (count - i)]) *
                   std::polar(1.0, -6.283185307 * turns);
        }
        return 2.0 * std::abs(sum) / static_cast<double>(count);
    }

    CBandMemory band_;
    std::unique_ptr<transmitter::CTransmitter> transmitter_;
    std::unique_ptr<CAirReceiver> receiver_;
    std::vector<double> at_MHz_;
    std::deque<double> queue_;
    double centre_Hz_ = 0.0;
    double pointed_Hz_ = 98e6;
    int moves_ = 0;
    std::uint64_t now_ms_ = 1000;
    std::vector<float> frames_;
};

const std::vector<Air> kTwo = {{98.5, 0.0, "KORA ONE", 1000.0}, {104.0, -20.0, "KORA TWO", 500.0}};

TEST_F(AirReceiver, AStationIsHeardInStereoWithItsLevelAndItsName) {
    On(kTwo);
    receiver_->Tune(9850);
    Run(3.0);
    const fm::AirSnapshot snapshot = receiver_->Snapshot();
    ASSERT_TRUE(snapshot.measured);
    EXPECT_NEAR(snapshot.level, 95 - 48, 3);
    EXPECT_TRUE(snapshot.stereo);
    EXPECT_NEAR(snapshot.offset_Hz.value_or(9e9), 0.0, 300.0);
    EXPECT_EQ(snapshot.pi, 0xD300);
    EXPECT_LT(snapshot.blockErrors.value_or(1.0), 0.1);
    EXPECT_NEAR(Tone(1000.0, 0.5), 0.42, 0.05);
    fm::CStationTexts texts;
    texts.Take(receiver_->Station());
    const auto name = texts.Give();
    ASSERT_TRUE(name);
    EXPECT_EQ(name->text, "KORA ONE");
    EXPECT_EQ(texts.Services().alternatives_10kHz, std::vector<std::uint32_t>{10110});
}

TEST_F(AirReceiver, SoundHasTheLengthOfTheStreamThroughEveryRetune) {
    On(kTwo);
    for (const std::uint32_t channel : {9850u, 10400u, 9000u, 9010u}) {
        receiver_->Tune(channel);
        Run(0.5);
    }
    receiver_->Look(95e6);
    Run(0.5);
    receiver_->EndLook();
    Run(0.5);
    EXPECT_NEAR(static_cast<double>(frames_.size()) / 2.0, 3.0 * sdr::kSoundRate_Hz, 300.0);
}

TEST_F(AirReceiver, OfTheStationBeforeNothingIsHeardAndNothingMeasured) {
    On(kTwo);
    receiver_->Tune(9850);
    Run(0.5);
    ASSERT_GT(Loudness(0.1), 0.2);
    receiver_->Tune(10400);
    EXPECT_FALSE(receiver_->Snapshot().measured);
    Run(0.1);
    EXPECT_LT(Loudness(0.1), 0.001);
    EXPECT_FALSE(receiver_->Snapshot().measured);
    Run(0.1);
    ASSERT_TRUE(receiver_->Snapshot().measured);
    EXPECT_NEAR(receiver_->Snapshot().level, 75 - 48, 4);
    Run(0.4);
    EXPECT_NEAR(Tone(500.0, 0.2), 0.42, 0.06);
    EXPECT_LT(Tone(1000.0, 0.2), 0.02);
}

TEST_F(AirReceiver, AStepToAChannelInViewMovesNothingAndIsHeardAtOnce) {
    On({{98.5, 0.0, "KORA ONE", 1000.0}, {98.2, -10.0, "BESIDE", 500.0}});
    receiver_->Tune(9850);
    const int moves = moves_;
    Run(0.3);
    const double centre_Hz = centre_Hz_;
    receiver_->Tune(9840);
    receiver_->Tune(9850);
    EXPECT_EQ(moves_, moves);
    EXPECT_EQ(centre_Hz_, centre_Hz);
    Run(0.08);
    EXPECT_TRUE(receiver_->Snapshot().measured);
    EXPECT_GT(Loudness(0.02), 0.2);
}

TEST_F(AirReceiver, AStationIsNeverReceivedWhereTheDirectCurrentIs) {
    On(kTwo);
    for (std::uint32_t channel = 8750; channel <= 10800; channel += 10) {
        receiver_->Tune(channel);
        const double away_Hz = std::fabs(channel * 1e4 - centre_Hz_);
        ASSERT_GE(away_Hz, 149e3) << channel;
        ASSERT_LE(away_Hz, 400e3) << channel;
    }
}

TEST_F(AirReceiver, ALookFindsTheStationsAroundItAndTheWayBackIsHeard) {
    On(kTwo);
    receiver_->Tune(9850);
    Run(0.3);
    receiver_->Look(104.05e6);
    EXPECT_FALSE(receiver_->LookDone());
    Run(0.14);
    ASSERT_TRUE(receiver_->LookDone());
    EXPECT_LT(Loudness(0.13), 0.001);
    fm::CBandSeek seek(10370, true);
    EXPECT_EQ(seek.GoOn(band_, 0), fm::CBandSeek::Where::kUnknown);
    // It is looked at from another centre before it is stopped at.
    receiver_->Look(seek.Centre_Hz(receiver_->HalfWidth_Hz()));
    Run(0.14);
    ASSERT_TRUE(receiver_->LookDone());
    EXPECT_EQ(seek.GoOn(band_, 0), fm::CBandSeek::Where::kFound);
    EXPECT_EQ(seek.Channel_10kHz(), 10400u);
    receiver_->EndLook();
    Run(0.4);
    EXPECT_NEAR(Tone(1000.0, 0.2), 0.42, 0.06);
}

TEST_F(AirReceiver, BesideAStationThereIsNone) {
    On(kTwo);
    receiver_->Tune(9860);
    Run(1.5);
    ASSERT_TRUE(receiver_->Snapshot().measured);
    EXPECT_LE(receiver_->Snapshot().level, fm::kSeekThreshold);
    EXPECT_TRUE(receiver_->Snapshot().beside);
    EXPECT_FALSE(receiver_->Snapshot().pi);
    receiver_->Tune(9000);
    Run(0.4);
    EXPECT_LE(receiver_->Snapshot().level, 3);
    EXPECT_FALSE(receiver_->Snapshot().stereo);
}

TEST_F(AirReceiver, LostSamplesAreSilenceOfTheirLength) {
    On(kTwo);
    receiver_->Tune(9850);
    Run(0.5);
    const std::size_t before = frames_.size();
    receiver_->Lost(static_cast<std::uint64_t>(2.0 * kRate_Hz * 0.25), &frames_);
    EXPECT_NEAR(static_cast<double>(frames_.size() - before) / 2.0, 0.25 * sdr::kSoundRate_Hz, 2.0);
    Run(0.5);
    EXPECT_NEAR(Tone(1000.0, 0.3), 0.42, 0.06);
    EXPECT_TRUE(receiver_->Snapshot().stereo);
}

TEST_F(AirReceiver, AChannelThatARecordingDoesNotHoldIsNoise) {
    StreamForm form;
    form.rate_Hz = 250000.0;
    form.centre_Hz = 98.5e6;
    CAirReceiver recorded(form, sdr::DeEmphasis::k50us, &band_, [](double) {
        ADD_FAILURE();
        return 0.0;
    });
    recorded.Tune(10000);
    // A carrier at the stream's edge, which is quiet to whoever listens there.
    std::vector<std::uint8_t> bytes(50000, 127);
    for (std::size_t i = 0; i < bytes.size(); i += 2) bytes[i] = i % 4 == 0 ? 227 : 27;
    recorded.Process(bytes.data(), bytes.size(), 5, &frames_);
    EXPECT_TRUE(recorded.Snapshot().measured);
    EXPECT_EQ(recorded.Snapshot().level, 0);
    EXPECT_GT(Loudness(0.05), 0.05);
}

TEST_F(AirReceiver, NoBytesWhateverBringItDown) {
    std::mt19937 random(17);
    int measured = 0;
    for (const auto form_ : {sdr::SampleForm::kCu8, sdr::SampleForm::kCs16, sdr::SampleForm::kCf32}) {
        StreamForm form;
        form.form = form_;
        form.rate_Hz = 250000.0;
        form.centre_Hz = 98.4e6;
        form.tunable = true;
        CAirReceiver receiver(form, sdr::DeEmphasis::k75us, &band_, [](double) { return 0.05; });
        std::vector<std::uint8_t> bytes(20000);
        for (int i = 0; i < 300; ++i) {
            if (random() % 30 == 0) receiver.Tune(8750 + random() % 2051);
            if (random() % 30 == 0) receiver.Look(87e6 + random() % 22000000);
            if (random() % 10 == 0) receiver.EndLook();
            if (random() % 15 == 0) receiver.Lost(random() % 1000000, &frames_);
            for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
            receiver.Process(bytes.data(), random() % bytes.size(), now_ms_ += 10, &frames_);
            for (const float value : frames_) ASSERT_TRUE(std::isfinite(value));
            frames_.clear();
            const fm::AirSnapshot snapshot = receiver.Snapshot();
            ASSERT_TRUE(snapshot.level >= 0 && snapshot.level <= 100);
            measured += snapshot.measured ? 1 : 0;
        }
    }
    EXPECT_GT(measured, 50);
}

}  // namespace
