// Speech by formants: a buzz at the pitch of a voice through three resonators, with a vowel a syllable and a
// pause now and then.
#include "handset/fmdevice/band/voice.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "handset/base/turning.h"
#include "handset/sound/format.h"

namespace fm {
namespace {

constexpr double kPi = 3.141592653589793;

struct Vowel {
    std::array<float, 3> formants_Hz;
};

// The first three formants of a man's vowels, rounded.
constexpr Vowel kVowels[] = {
    {{730, 1090, 2440}},  // ah
    {{530, 1840, 2480}},  // eh
    {{270, 2290, 3010}},  // ee
    {{570, 840, 2410}},   // aw
    {{300, 870, 2240}},   // oo
    {{490, 1350, 1690}},  // er
};
constexpr std::array<float, 3> kFormantGains = {1.0F, 0.5F, 0.25F};
constexpr double kBandwidth_Hz = 90;
constexpr std::size_t kSyllable = sound::kSampleRate_Hz * 17 / 100;
constexpr std::uint32_t kSyllablesBetweenPauses = 7;
constexpr float kGain = 0.0015F;

// Nearly the hyperbolic tangent, without its price; 1 from 3 on.
float SoftlyLimited(float x) {
    const float within = std::clamp(x, -3.0F, 3.0F);
    const float square = within * within;
    return within * (27 + square) / (27 + 9 * square);
}

class CResonator {
  public:
    void Tune(double frequency_Hz) {
        const double radius = std::exp(-kPi * kBandwidth_Hz / sound::kSampleRate_Hz);
        back1_ = static_cast<float>(2 * radius * std::cos(2 * kPi * frequency_Hz / sound::kSampleRate_Hz));
        back2_ = static_cast<float>(-radius * radius);
    }
    float Next(float input) {
        const float output = input + back1_ * last_ + back2_ * lastButOne_;
        lastButOne_ = last_;
        last_ = output;
        return output;
    }

  private:
    float back1_ = 0, back2_ = 0, last_ = 0, lastButOne_ = 0;
};

class CVoice : public IGenerator {
  public:
    explicit CVoice(std::uint32_t seed) : choice_(seed), pitch_Hz_(95.0F + static_cast<float>(seed % 90)) {}

    void Render(float* frames, std::size_t count) override {
        for (std::size_t i = 0; i < count; ++i) {
            if (at_ == 0) NextSyllable();
            const float part = static_cast<float>(at_) * (1.0F / kSyllable);
            const float envelope = silent_ ? 0.0F : static_cast<float>(arch_.Sine());
            arch_.Next();
            // A falling saw has the overtones of a voice; the pitch sinks through the syllable.
            phase_ += pitch_Hz_ * (rise_ - 0.15F * part) * (1.0F / sound::kSampleRate_Hz);
            if (phase_ >= 1) phase_ -= 1;
            const float buzz = (1.0F - 2.0F * phase_) * envelope;
            float sample = 0;
            for (std::size_t k = 0; k < resonators_.size(); ++k) {
                sample += kFormantGains[k] * resonators_[k].Next(buzz);
            }
            frames[sound::kChannels * i] = frames[sound::kChannels * i + 1] = SoftlyLimited(kGain * sample);
            at_ = (at_ + 1) % kSyllable;
        }
    }

  private:
    void NextSyllable() {
        arch_ = handset::CTurning(0, 0.5 / kSyllable);
        silent_ = ++syllables_ % kSyllablesBetweenPauses == 0;
        const auto lot = static_cast<std::size_t>((choice_.Next() + 1.0F) * 0.5F * 5.999F);
        for (std::size_t k = 0; k < resonators_.size(); ++k) resonators_[k].Tune(kVowels[lot].formants_Hz[k]);
        rise_ = 1.1F + 0.15F * choice_.Next();
    }

    CNoise choice_;
    float pitch_Hz_;
    float rise_ = 1;
    float phase_ = 0;
    std::array<CResonator, 3> resonators_;
    handset::CTurning arch_;  // half a wave a syllable
    std::size_t at_ = 0;
    std::uint32_t syllables_ = 0;
    bool silent_ = false;
};

}  // namespace

std::unique_ptr<IGenerator> MakeVoice(std::string_view text) {
    std::uint32_t seed = 2166136261u;
    for (const char c : text) seed = (seed ^ static_cast<unsigned char>(c)) * 16777619u;
    return std::make_unique<CVoice>(seed);
}

}  // namespace fm
