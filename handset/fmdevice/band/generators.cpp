// The generators: silence, tones, rumble, melodies and files. The voice stands in voice.cpp.
#include "handset/fmdevice/band/generators.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "handset/base/turning.h"
#include "handset/fmdevice/band/voice.h"
#include "handset/sound/format.h"

namespace fm {
namespace {

constexpr double kTwoPi = 6.283185307179586;

class CSilence : public IGenerator {
  public:
    void Render(float* frames, std::size_t count) override {
        std::fill_n(frames, count * sound::kChannels, 0.0F);
    }
};

// A tone, four samples at once: four points on one circle, a sample apart from each other, each turned by
// four samples' angle. One after another would wait for the one before.
class CToneSamples {
  public:
    explicit CToneSamples(int tone_Hz) {
        const double step_rad = kTwoPi * tone_Hz / sound::kSampleRate_Hz;
        for (std::size_t i = 0; i < kAtOnce; ++i) {
            const double angle_rad = static_cast<double>(i) * step_rad;
            sines_[i / 2][i % 2] = std::sin(angle_rad);
            cosines_[i / 2][i % 2] = std::cos(angle_rad);
        }
        stepSine_ += std::sin(kAtOnce * step_rad);
        stepCosine_ += std::cos(kAtOnce * step_rad);
    }

    // `count` times four of them; every second place of `samples` gets one.
    void Next(float* samples, std::size_t count) {
        // In registers, not in memory that `samples` might lie in.
        Two sine = sines_[0], cosine = cosines_[0], laterSine = sines_[1], laterCosine = cosines_[1];
        const Two stepSine = stepSine_, stepCosine = stepCosine_;
        for (float* const end = samples + 2 * kAtOnce * count; samples != end; samples += 2 * kAtOnce) {
            samples[0] = kToneAmplitude * static_cast<float>(sine[0]);
            samples[2] = kToneAmplitude * static_cast<float>(sine[1]);
            samples[4] = kToneAmplitude * static_cast<float>(laterSine[0]);
            samples[6] = kToneAmplitude * static_cast<float>(laterSine[1]);
            Turn(&sine, &cosine, stepSine, stepCosine);
            Turn(&laterSine, &laterCosine, stepSine, stepCosine);
        }
        sines_[0] = sine;
        cosines_[0] = cosine;
        sines_[1] = laterSine;
        cosines_[1] = laterCosine;
    }

    static constexpr std::size_t kAtOnce = 4;

  private:
    using Two = double __attribute__((vector_size(16)));

    static void Turn(Two* sine, Two* cosine, const Two& stepSine, const Two& stepCosine) {
        const Two turned = *sine * stepCosine + *cosine * stepSine;
        *cosine = *cosine * stepCosine - *sine * stepSine;
        *sine = turned;
    }

    Two sines_[2] = {}, cosines_[2] = {};
    Two stepSine_ = {}, stepCosine_ = {};
};

class CTones : public IGenerator {
  public:
    explicit CTones(const std::array<int, 2>& tones_Hz)
        : same_(tones_Hz[0] == tones_Hz[1]), left_(tones_Hz[0]), right_(tones_Hz[1]) {}

    void Render(float* frames, std::size_t count) override {
        const std::size_t left = std::min(count, CToneSamples::kAtOnce - given_);
        Give(left, frames);
        frames += sound::kChannels * left;
        count -= left;
        const std::size_t whole = count / CToneSamples::kAtOnce;
        Make(frames, whole);
        count -= CToneSamples::kAtOnce * whole;
        if (count == 0) return;
        Make(made_.data(), 1);
        given_ = 0;
        Give(count, frames + sound::kChannels * CToneSamples::kAtOnce * whole);
    }

  private:
    void Give(std::size_t count, float* frames) {
        std::copy_n(made_.data() + sound::kChannels * given_, sound::kChannels * count, frames);
        given_ += count;
    }
    void Make(float* frames, std::size_t fours) {
        left_.Next(frames, fours);
        if (!same_) {
            right_.Next(frames + 1, fours);
            return;
        }
        for (std::size_t i = 0; i < CToneSamples::kAtOnce * fours; ++i) frames[2 * i + 1] = frames[2 * i];
    }

    const bool same_;
    CToneSamples left_;
    CToneSamples right_;
    std::array<float, sound::kChannels * CToneSamples::kAtOnce> made_{};
    std::size_t given_ = CToneSamples::kAtOnce;  // frames of these
};

// Noise through a low pass at some 150 Hz, which the hiss of a weak signal does not sound like.
class CRumble : public IGenerator {
  public:
    void Render(float* frames, std::size_t count) override {
        constexpr float kPass = 0.02F;
        constexpr float kGain = 2.5F;
        for (std::size_t i = 0; i < count * sound::kChannels; ++i) {
            float& level = levels_[i % sound::kChannels];
            level += kPass * (noise_.Next() - level);
            frames[i] = kGain * level;
        }
    }

  private:
    CNoise noise_{77};
    std::array<float, 2> levels_{};
};

// Plucked notes: each dies away while it sounds and has an octave above it in it.
class CMelody : public IGenerator {
  public:
    explicit CMelody(std::vector<int> notes) : notes_(std::move(notes)) {}

    void Render(float* frames, std::size_t count) override {
        // The attack of 5 ms keeps the note from clicking.
        constexpr double kAttack_frames = 0.005 * sound::kSampleRate_Hz;
        for (std::size_t i = 0; i < count; ++i) {
            if (age_ == 0) Pluck(notes_[note_]);
            const double envelope = std::min(1.0, static_cast<double>(age_) / kAttack_frames) * loudness_;
            // The octave above is sin(2x) = 2 sin(x) cos(x).
            const double sample = envelope * wave_.Sine() * (1 + 0.8 * wave_.Cosine());
            frames[sound::kChannels * i] = frames[sound::kChannels * i + 1] = static_cast<float>(sample);
            Age();
        }
    }

  private:
    static constexpr std::size_t kNoteFrames = sound::kSampleRate_Hz / 4;

    void Pluck(int note) {
        const double frequency_Hz = note == kRest ? 0 : 16.3516 * std::pow(2.0, note / 12.0);
        wave_ = handset::CTurning(0, frequency_Hz / sound::kSampleRate_Hz);
        loudness_ = 0.4;
    }
    void Age() {
        wave_.Next();
        loudness_ *= fading_;
        if (++age_ < kNoteFrames) return;
        age_ = 0;
        note_ = (note_ + 1) % notes_.size();
    }

    const double fading_ = std::exp(-5.0 / sound::kSampleRate_Hz);
    std::vector<int> notes_;
    std::size_t note_ = 0;
    std::size_t age_ = 0;  // frames since it was plucked
    handset::CTurning wave_;
    double loudness_ = 0;
};

class CFileSound : public IGenerator {
  public:
    explicit CFileSound(sound::WavSound sound) : sound_(std::move(sound)) {}

    void Render(float* frames, std::size_t count) override {
        const std::size_t length = sound_.samples.size() / sound_.channels;
        for (std::size_t i = 0; i < count; ++i) {
            const auto first = static_cast<std::size_t>(position_);
            const auto part = static_cast<float>(position_ - static_cast<double>(first));
            for (std::size_t side = 0; side < sound::kChannels; ++side) {
                const float here = Sample(first, side);
                frames[sound::kChannels * i + side] =
                    here + part * (Sample((first + 1) % length, side) - here);
            }
            position_ += static_cast<double>(sound_.rate_Hz) / sound::kSampleRate_Hz;
            position_ = std::fmod(position_, static_cast<double>(length));
        }
    }

  private:
    float Sample(std::size_t frame, std::size_t side) const {
        const std::size_t channel = std::min(side, sound_.channels - 1);
        return static_cast<float>(sound_.samples[frame * sound_.channels + channel]) / 32768.0F;
    }

    sound::WavSound sound_;
    double position_ = 0;
};

}  // namespace

std::unique_ptr<IGenerator> MakeGenerator(const Programme& programme) {
    switch (programme.kind) {
        case ProgrammeKind::kTone:
            return std::make_unique<CTones>(programme.tones_Hz);
        case ProgrammeKind::kVoice:
            return MakeVoice(programme.text);
        case ProgrammeKind::kNoise:
            return std::make_unique<CRumble>();
        case ProgrammeKind::kMelody:
            return std::make_unique<CMelody>(programme.notes);
        case ProgrammeKind::kFile:
        case ProgrammeKind::kSilence:
            break;
    }
    return std::make_unique<CSilence>();
}

std::unique_ptr<IGenerator> MakeFileGenerator(sound::WavSound sound) {
    return std::make_unique<CFileSound>(std::move(sound));
}

}  // namespace fm
