#include "handset/transmitter/programme.h"

#include <algorithm>
#include <cmath>

#include "handset/base/turning.h"

namespace transmitter {

void CSilence::Read(Sound* sounds, std::size_t count) {
    std::fill(sounds, sounds + count, Sound{});
}

Emphasis EmphasisAt(double frequency_Hz, double preEmphasis_s) {
    const double reactance = 2 * kPi * frequency_Hz * preEmphasis_s;
    return {std::sqrt(1 + reactance * reactance), std::atan(reactance) / (2 * kPi)};
}

CTones::CTones(const std::vector<Tone>& tones, double preEmphasis_s) {
    for (const Tone& tone : tones) {
        const Emphasis emphasis = EmphasisAt(tone.frequency_Hz, preEmphasis_s);
        tones_.push_back({tone.left * emphasis.gain, tone.right * emphasis.gain, emphasis.lead_turns,
                          tone.frequency_Hz / kMultiplexRate_Hz});
    }
}

void CTones::Read(Sound* sounds, std::size_t count) {
    std::fill(sounds, sounds + count, Sound{});
    for (Running& tone : tones_) {
        handset::CTurning turning(tone.phase_turns, tone.step_turns);
        for (std::size_t i = 0; i < count; ++i) {
            sounds[i].left += tone.left * turning.Sine();
            sounds[i].right += tone.right * turning.Sine();
            turning.Next();
        }
        tone.phase_turns += tone.step_turns * static_cast<double>(count);
        tone.phase_turns -= std::floor(tone.phase_turns);
    }
}

}  // namespace transmitter
