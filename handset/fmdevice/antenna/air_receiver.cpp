#include "handset/fmdevice/antenna/air_receiver.h"

#include <algorithm>
#include <cmath>

namespace fm {
namespace {

// A station is received this far beside the centre, where a converter's direct current does not reach, and no
// farther away than the tuner's filter is even.
constexpr double kNearest_Hz = 150e3;
constexpr double kFarthest_Hz = 750e3;
constexpr double kAside_Hz = 300e3;
// Of which a narrow stream has no room.
constexpr double kReach = 0.39;
constexpr double kChannelHalf_Hz = 100e3;
// What a look needs to tell a station from noise, and how often those in view are looked at while one is
// heard.
constexpr double kLook_s = 0.02;
constexpr double kLookPeriod_s = 0.5;
// An overdriven converter shows stations where there are none and hides others. A stick's gain is turned down
// within that time, mostly; looks that are overdriven still are taken as they are.
constexpr double kMostClipped = 0.001;
constexpr double kLongestOverdriven_s = 0.4;
// A level is one of the tuned station after so much of it.
constexpr double kMeasured_s = 0.05;
// A carrier that far away is another channel's, whatever its strength.
constexpr double kMostOffset_Hz = 45e3;

double Reach_Hz(double rate_Hz) {
    return std::min(kReach * rate_Hz, kFarthest_Hz);
}

sdr::ReceiverOptions Options(const StreamForm& form, sdr::DeEmphasis deEmphasis) {
    sdr::ReceiverOptions options;
    options.rate_Hz = form.rate_Hz;
    options.deEmphasis = deEmphasis;
    return options;
}

}  // namespace

CAirReceiver::CAirReceiver(const StreamForm& form, sdr::DeEmphasis deEmphasis, CBandMemory* band,
                           SetCentre setCentre)
    : form_(form),
      band_(band),
      setCentre_(std::move(setCentre)),
      decoder_(form.form),
      receiver_(Options(form, deEmphasis)),
      look_(form.rate_Hz),
      centre_Hz_(form.centre_Hz) {
    receiver_.SetListener(&rds_);
}

double CAirReceiver::Offset_Hz() const {
    return channel_10kHz_ * 1e4 - centre_Hz_;
}

void CAirReceiver::GoTo(double centre_Hz) {
    if (!form_.tunable || centre_Hz == centre_Hz_) return;
    centre_Hz_ = centre_Hz;
    stale_s_ = setCentre_(centre_Hz);
}

void CAirReceiver::Tune(std::uint32_t channel_10kHz) {
    channel_10kHz_ = channel_10kHz;
    mode_ = Mode::kStation;
    const double reach_Hz = Reach_Hz(form_.rate_Hz);
    const double away_Hz = std::fabs(Offset_Hz());
    const double aside_Hz = std::min(kAside_Hz, reach_Hz / 2.0);
    const bool clear = away_Hz >= std::min(kNearest_Hz, aside_Hz) && away_Hz <= reach_Hz;
    if (!clear) GoTo(channel_10kHz * 1e4 + aside_Hz);
    RestartLook();
    overdriven_s_ = 0.0;
    idle_s_ = kLookPeriod_s;
    snapshot_ = {};
    const double half_Hz = form_.rate_Hz / 2.0;
    receiver_.Tune(std::clamp(Offset_Hz(), -half_Hz, half_Hz));
}

void CAirReceiver::Look(double centre_Hz) {
    mode_ = Mode::kLook;
    GoTo(centre_Hz);
    RestartLook();
}

void CAirReceiver::EndLook() {
    if (mode_ != Mode::kStation) Tune(channel_10kHz_);
}

void CAirReceiver::Silence(double seconds, std::vector<float>* frames) {
    owed_ += seconds * sdr::kSoundRate_Hz;
    const double whole = std::floor(owed_);
    owed_ -= whole;
    frames->resize(frames->size() + 2 * static_cast<std::size_t>(whole), 0.0F);
}

void CAirReceiver::Hiss(double seconds, std::vector<float>* frames) {
    const std::size_t before = frames->size();
    Silence(seconds, frames);
    AddReception(0, false, &hiss_, frames->data() + before, (frames->size() - before) / 2);
}

void CAirReceiver::Lost(std::uint64_t count, std::vector<float>* frames) {
    const double seconds =
        static_cast<double>(count) / static_cast<double>(sdr::BytesOf(form_.form)) / form_.rate_Hz;
    stale_s_ = std::max(stale_s_ - seconds, 0.0);
    // More than a listener could wait for is made up by the clock of those who listen.
    Silence(std::min(seconds, 1.0), frames);
    decoder_.Reset();
}

void CAirReceiver::RestartLook() {
    look_.Restart();
    looked_ = clipped_ = 0;
}

bool CAirReceiver::LookIsOverdriven() const {
    return form_.tunable && static_cast<double>(clipped_) > kMostClipped * 2.0 * static_cast<double>(looked_);
}

// `begin`: of the samples that these bytes have become, the first that counts.
void CAirReceiver::AddToLook(const std::uint8_t* bytes, std::size_t count, std::size_t begin,
                             std::uint64_t now_ms) {
    const std::size_t fresh = samples_.size() - begin;
    look_.Add(samples_.data() + begin, fresh);
    looked_ += fresh;
    if (form_.form == sdr::SampleForm::kCu8) {
        for (std::size_t i = std::min(2 * begin, count); i < count; ++i)
            clipped_ += bytes[i] == 0 || bytes[i] == 255 ? 1 : 0;
    }
    if (static_cast<double>(looked_) < kLook_s * form_.rate_Hz) return;
    const bool overdriven = LookIsOverdriven();
    if (overdriven && overdriven_s_ < kLongestOverdriven_s) {
        overdriven_s_ += static_cast<double>(looked_) / form_.rate_Hz;
        RestartLook();
        return;
    }
    TakeLook(now_ms);
    idle_s_ = 0.0;
    // One wait is enough for all looks of a seek that find it so.
    if (!overdriven) overdriven_s_ = 0.0;
    if (mode_ == Mode::kLook) mode_ = Mode::kSeen;
}

void CAirReceiver::TakeLook(std::uint64_t now_ms) {
    std::vector<sdr::ChannelLook> looks = look_.Channels(centre_Hz_, CBandMemory::Raster_Hz());
    if (!form_.tunable) {
        // What a recording does not hold is nowhere.
        for (const double frequency_Hz : CBandMemory::Raster_Hz()) {
            if (std::fabs(frequency_Hz - centre_Hz_) <= look_.UsableHalfWidth_Hz()) continue;
            sdr::ChannelLook nothing;
            nothing.frequency_Hz = frequency_Hz;
            looks.push_back(nothing);
        }
    }
    band_->See(looks, {centre_Hz_, form_.rate_Hz, form_.tunable}, now_ms);
    RestartLook();
}

void CAirReceiver::Process(const std::uint8_t* bytes, std::size_t count, std::uint64_t now_ms,
                           std::vector<float>* frames) {
    samples_.clear();
    decoder_.Decode(bytes, count, &samples_);
    std::size_t begin = 0;
    if (stale_s_ > 0.0) {
        begin = std::min(samples_.size(), static_cast<std::size_t>(std::ceil(stale_s_ * form_.rate_Hz)));
        const double seconds = static_cast<double>(begin) / form_.rate_Hz;
        stale_s_ = std::max(stale_s_ - seconds, 0.0);
        // Less than a sample is none.
        if (stale_s_ * form_.rate_Hz < 0.5) stale_s_ = 0.0;
        Silence(seconds, frames);
    }
    const sdr::Sample* const samples = samples_.data() + begin;
    const std::size_t fresh = samples_.size() - begin;
    if (fresh == 0) return;
    const double seconds = static_cast<double>(fresh) / form_.rate_Hz;

    idle_s_ += seconds;
    const bool looking = mode_ == Mode::kLook || (mode_ == Mode::kStation && idle_s_ >= kLookPeriod_s);
    if (looking) AddToLook(bytes, count, begin, now_ms);
    if (mode_ != Mode::kStation) {
        Silence(seconds, frames);
    } else if (std::fabs(Offset_Hz()) + kChannelHalf_Hz > form_.rate_Hz / 2.0) {
        // A recording that does not hold this channel: nothing comes in.
        Hiss(seconds, frames);
    } else {
        receiver_.Process(samples, fresh, frames);
        snapshot_ = receiver_.Snapshot();
    }
}

const sdr::rds::Station& CAirReceiver::Station() {
    return rds_.Current();
}

AirSnapshot CAirReceiver::Snapshot() {
    AirSnapshot result;
    if (mode_ != Mode::kStation) return result;
    if (std::fabs(Offset_Hz()) + kChannelHalf_Hz > form_.rate_Hz / 2.0) {
        result.measured = true;
        return result;
    }
    if (!snapshot_.level.present || snapshot_.stream_s < kMeasured_s) return result;
    result.measured = true;
    result.beside =
        snapshot_.carrierOffset_Hz.present && std::fabs(snapshot_.carrierOffset_Hz.value) > kMostOffset_Hz;
    const auto level = static_cast<int>(std::lround(snapshot_.level.value));
    result.level = result.beside ? std::min(level, kSeekThreshold) : level;
    result.stereo = snapshot_.stereo.value != 0.0 && result.level > kStereoThreshold;
    result.carrierToNoise_dBHz = snapshot_.carrierToNoise_dBHz.value;
    if (snapshot_.carrierOffset_Hz.present) result.offset_Hz = snapshot_.carrierOffset_Hz.value;
    if (result.beside) return result;
    const sdr::rds::Station& station = rds_.Current();
    result.pi = station.pi;
    if (station.blocks > 0) result.blockErrors = station.blockErrorRate;
    return result;
}

}  // namespace fm
