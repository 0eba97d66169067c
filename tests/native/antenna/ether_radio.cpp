#include "tests/native/antenna/ether_radio.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/band/band_file.h"

namespace test {
namespace {

constexpr double kRate_Hz = 1.92e6;
constexpr double kStep_s = 0.005;
constexpr std::size_t kBlock_bytes = 2 * 19200;  // 10 ms
// What a tuner takes at the most.
constexpr double kElsewhere_s = 0.028;
constexpr double kLead_s = 0.13;
constexpr std::uint8_t kFrequency = 0x01, kGainIndex = 0x0D;

std::vector<std::uint8_t> Command(std::uint8_t id, std::uint32_t argument) {
    return {id, static_cast<std::uint8_t>(argument >> 24), static_cast<std::uint8_t>(argument >> 16),
            static_cast<std::uint8_t>(argument >> 8), static_cast<std::uint8_t>(argument)};
}

ether::StreamOptions Options(std::size_t buffer_bytes) {
    ether::StreamOptions options;
    options.buffer_bytes = buffer_bytes;
    return options;
}

fm::StreamForm Form() {
    fm::StreamForm form;
    form.rate_Hz = kRate_Hz;
    form.tunable = true;
    return form;
}

}  // namespace

EtherRadio::EtherRadio(const std::string& band, std::size_t buffer_bytes)
    : air_([](const std::string&) { return fm::MakeGenerator({}); }, 1795435200, 2),
      stream_(&air_, Options(buffer_bytes), {}, now_s_),
      clock_(2 * kRate_Hz, 0.0),
      receiver_(Form(), sdr::DeEmphasis::k50us, &band_, [this](double centre_Hz) { return Send(centre_Hz); }),
      bridge_(sound::kSampleRate_Hz, kLead_s),
      sound_(20.0, kLead_s),
      greeting_(ether::kGreetingBytes) {
    SetBand(band);
    for (const auto& [id, argument] : {std::pair{2, 1920000u}, std::pair{3, 1u}, std::pair{13, 16u}}) {
        const auto bytes = Command(static_cast<std::uint8_t>(id), argument);
        stream_.Take(bytes.data(), bytes.size(), now_s_);
    }
}

void EtherRadio::SetBand(const std::string& band) {
    std::vector<std::string> faults;
    air_.SetBand(fm::ReadBand("band.ini", band, &faults));
}

void EtherRadio::Order(std::uint8_t id, std::uint32_t argument) {
    const double begins_s = orders_.empty() ? now_s_ : std::max(orders_.back().due_s, now_s_);
    orders_.push_back({begins_s + kElsewhere_s, Command(id, argument)});
}

void EtherRadio::HoldGain() {
    gain_.emplace(static_cast<std::uint32_t>(ether::kGains_tenthdB.size()));
    Order(kGainIndex, gain_->Step());
}

double EtherRadio::Send(double centre_Hz) {
    Order(kFrequency, static_cast<std::uint32_t>(centre_Hz));
    return clock_.SendElsewhere(now_s_) + static_cast<double>(come_.size()) / (2.0 * kRate_Hz);
}

void EtherRadio::Give() {
    stream_.Advance(now_s_);
    while (!orders_.empty() && orders_.front().due_s <= now_s_) {
        stream_.Take(orders_.front().bytes.data(), orders_.front().bytes.size(), now_s_);
        orders_.pop_front();
    }
    std::size_t given = 0;
    while (stream_.FrontSize() > 0) {
        const std::size_t size = stream_.FrontSize();
        // The greeting is no part of the samples.
        const std::size_t skipped = std::min(greeting_, size);
        greeting_ -= skipped;
        come_.insert(come_.end(), stream_.Front() + skipped, stream_.Front() + size);
        given += size - skipped;
        if (gain_ && gain_->Add(stream_.Front() + skipped, size - skipped, kRate_Hz)) {
            Order(kGainIndex, gain_->Step());
            clock_.SendOther(now_s_);
        }
        stream_.Sent(size);
    }
    if (given > 0) clock_.Arrived(given, now_s_);
}

void EtherRadio::Receive() {
    std::vector<float> frames, sound;
    while (come_.size() >= kBlock_bytes) {
        block_.assign(come_.begin(), come_.begin() + kBlock_bytes);
        come_.erase(come_.begin(), come_.begin() + kBlock_bytes);
        frames.clear();
        sound.clear();
        receiver_.Process(block_.data(), block_.size(), Now_ms(), &frames);
        const auto now = static_cast<std::uint64_t>(now_s_ * sound::kSampleRate_Hz);
        bridge_.Process(frames.data(), frames.size() / 2, std::max(sound_.Fill_s(now), 0.0), &sound);
        sound_.Append(sound.data(), sound.size() / 2, now);
    }
}

void EtherRadio::Run(double seconds) {
    for (int steps = static_cast<int>(std::lround(seconds / kStep_s)); steps > 0; --steps) {
        now_s_ += kStep_s;
        Give();
        Receive();
    }
}

void EtherRadio::Tune(std::uint32_t channel_10kHz) {
    receiver_.Tune(channel_10kHz);
    bridge_.Silence();
    sound_.Silence(static_cast<std::uint64_t>(now_s_ * sound::kSampleRate_Hz));
}

std::vector<float> EtherRadio::HeardSince(double moment_s) const {
    const auto from = static_cast<std::uint64_t>(moment_s * sound::kSampleRate_Hz);
    const auto now = static_cast<std::uint64_t>(now_s_ * sound::kSampleRate_Hz);
    const double there_s = static_cast<double>(now - from) / sound::kSampleRate_Hz + sound_.Fill_s(now);
    std::vector<float> frames(2 * static_cast<std::size_t>(std::max(there_s, 0.0) * sound::kSampleRate_Hz));
    sound_.Read(from, frames.data(), frames.size() / 2);
    return frames;
}

}  // namespace test
