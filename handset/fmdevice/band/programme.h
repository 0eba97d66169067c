// What a station plays, as band.ini names it. Portable.
//
//   tone:440           a tone of 440 Hz          tone:440,660   440 Hz on the left, 660 Hz on the right
//   voice:TEXT         a murmur like speech; another text murmurs otherwise; the text may be missing
//   noise:             a low rumble
//   melody:C4 E4 - G4  notes of a quarter of a second, "-" a rest, "#" a semitone up; no notes: a tune
//   \Music\jingle.wav  a WAV file on the device, over and over
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace fm {

enum class ProgrammeKind { kSilence, kTone, kVoice, kNoise, kMelody, kFile };

inline constexpr int kRest = -1;
inline constexpr int kLowestTone_Hz = 20;
inline constexpr int kHighestTone_Hz = 15000;

struct Programme {
    ProgrammeKind kind = ProgrammeKind::kSilence;
    std::string source;             // as it was written; two programmes with the same source sound the same
    std::array<int, 2> tones_Hz{};  // left, right
    std::vector<int> notes;         // semitones above C0, or kRest
    std::string text;               // of a voice, or the path of a file on the device
};

// Reads a programme. Null when it was understood; else what is wanted instead, and `programme` is unchanged.
[[nodiscard]] const char* ReadProgramme(std::string_view source, Programme* programme);

}  // namespace fm
