// Reads the programme of a station from its text.
#include "handset/fmdevice/band/programme.h"

#include <charconv>
#include <optional>

namespace fm {
namespace {

constexpr char kTuneWithoutNotes[] = "G4 A4 B4 D5 - B4 A4 G4 E4 - A4 C5 B4 - G4 -";
constexpr std::size_t kMaxNotes = 256;

std::optional<int> Frequency(std::string_view text) {
    int frequency = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), frequency);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (frequency < kLowestTone_Hz || frequency > kHighestTone_Hz) return std::nullopt;
    return frequency;
}

const char* ReadTone(std::string_view text, Programme& programme) {
    static constexpr char kWant[] = "tone: with one or two frequencies from 20 to 15000";
    const std::size_t comma = text.find(',');
    const auto left = Frequency(text.substr(0, comma));
    const auto right = comma == std::string_view::npos ? left : Frequency(text.substr(comma + 1));
    if (!left || !right) return kWant;
    programme.kind = ProgrammeKind::kTone;
    programme.tones_Hz = {*left, *right};
    return nullptr;
}

const char* ReadVoice(std::string_view text, Programme& programme) {
    programme.kind = ProgrammeKind::kVoice;
    programme.text = text;
    return nullptr;
}

const char* ReadNoise(std::string_view text, Programme& programme) {
    if (!text.empty()) return "noise: with nothing behind it";
    programme.kind = ProgrammeKind::kNoise;
    return nullptr;
}

// "C#4" and the like.
std::optional<int> Note(std::string_view word) {
    if (word == "-") return kRest;
    constexpr std::string_view kLetters = "CDEFGAB";
    constexpr int kSemitones[] = {0, 2, 4, 5, 7, 9, 11};
    const bool sharp = word.size() == 3 && word[1] == '#';
    if (word.size() != 2 && !sharp) return std::nullopt;
    const std::size_t letter = kLetters.find(word[0]);
    const char octave = word.back();
    if (letter == std::string_view::npos || octave < '1' || octave > '7') return std::nullopt;
    return 12 * (octave - '0') + kSemitones[letter] + (sharp ? 1 : 0);
}

const char* ReadMelody(std::string_view text, Programme& programme) {
    static constexpr char kWant[] = "melody: with notes such as C4 or F#5, or - for a rest";
    if (text.find_first_not_of(' ') == std::string_view::npos) text = kTuneWithoutNotes;
    std::vector<int> notes;
    while (!text.empty()) {
        const std::size_t blank = text.find(' ');
        const std::string_view word = text.substr(0, blank);
        text.remove_prefix(blank == std::string_view::npos ? text.size() : blank + 1);
        if (word.empty()) continue;
        const auto note = Note(word);
        if (!note || notes.size() == kMaxNotes) return kWant;
        notes.push_back(*note);
    }
    programme.kind = ProgrammeKind::kMelody;
    programme.notes = std::move(notes);
    return nullptr;
}

struct Form {
    std::string_view prefix;
    const char* (*read)(std::string_view text, Programme& programme);
};

constexpr Form kForms[] = {
    {"tone:", ReadTone},
    {"voice:", ReadVoice},
    {"noise:", ReadNoise},
    {"melody:", ReadMelody},
};

}  // namespace

const char* ReadProgramme(std::string_view source, Programme* programme) {
    Programme read;
    read.source = source;
    for (const Form& form : kForms) {
        if (source.substr(0, form.prefix.size()) != form.prefix) continue;
        const char* want = form.read(source.substr(form.prefix.size()), read);
        if (want == nullptr) *programme = std::move(read);
        return want;
    }
    // A path on the device begins with one backslash.
    if (source.size() < 2 || source[0] != '\\' || source[1] == '\\') {
        return "tone:, voice:, noise:, melody: or the path of a WAV file on the device";
    }
    read.kind = ProgrammeKind::kFile;
    read.text = source;
    *programme = std::move(read);
    return nullptr;
}

}  // namespace fm
