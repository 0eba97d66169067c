// Reads band.ini line by line; a fault costs its line and no more.
#include "handset/fmdevice/band/band_file.h"

#include <charconv>
#include <optional>

#include "handset/base/ascii.h"
#include "handset/base/utf8.h"
#include "handset/fmdevice/band/band_line.h"
#include "handset/fmdevice/band/pty_names.h"

namespace fm {
namespace {

constexpr std::size_t kQuotedCharacters = 40;

bool HasControlCharacter(std::string_view line) {
    for (const char c : line) {
        if ((static_cast<unsigned char>(c) < ' ' && c != '\t') || c == '\x7F') return true;
    }
    return false;
}

std::optional<int> NumberIn(std::string_view text, int lowest, int highest) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number >= lowest && number <= highest ? std::optional(number) : std::nullopt;
}

// "101.1" as a channel value.
std::optional<std::uint32_t> Frequency(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos || text.size() != point + 2) return std::nullopt;
    const auto whole = NumberIn(text.substr(0, point), 0, 999);
    const auto tenth = NumberIn(text.substr(point + 1), 0, 9);
    if (!whole || !tenth) return std::nullopt;
    const auto channel = static_cast<std::uint32_t>(*whole * 100 + *tenth * 10);
    return InBand(channel) ? std::optional(channel) : std::nullopt;
}

// The readers of the keys: null when the value was taken, else what the key wants.
const char* ReadSwitch(std::string_view value, bool& target) {
    const auto number = NumberIn(value, 0, 1);
    if (!number) return "0 or 1";
    target = *number == 1;
    return nullptr;
}

const char* ReadText(std::string_view value, std::size_t length, const char* want, std::string& target) {
    target = handset::Utf8Prefix(value, length);
    return target.size() == value.size() ? nullptr : want;
}

const char* ReadLevel(std::string_view value, Station& station) {
    const auto level = NumberIn(value, 0, 100);
    if (!level) return "a number from 0 to 100";
    station.level = *level;
    return nullptr;
}

const char* ReadStereo(std::string_view value, Station& station) {
    return ReadSwitch(value, station.stereo);
}

// One more of the texts that are sent in turn; nothing is added by an empty one.
const char* AddText(std::string_view value, std::size_t length, const char* want, std::size_t most,
                    const char* wantFewer, std::vector<std::string>& texts) {
    std::string text;
    const char* const fault = ReadText(value, length, want, text);
    if (text.empty()) return fault;
    if (texts.size() == most) return wantFewer;
    texts.push_back(std::move(text));
    return fault;
}

const char* ReadServiceName(std::string_view value, Station& station) {
    return AddText(value, kServiceNameLength, "at most 8 characters", kMaxServiceNames,
                   "to stand at most 8 times in a station", station.rds.serviceNames);
}

const char* ReadRadioText(std::string_view value, Station& station) {
    return AddText(value, kRadioTextLength, "at most 64 characters", kMaxRadioTexts,
                   "to stand at most 16 times in a station", station.rds.radioTexts);
}

const char* ReadSeconds(std::string_view value, int& target) {
    const auto seconds = NumberIn(value, 1, 3600);
    if (!seconds) return "a number of seconds from 1 to 3600";
    target = *seconds;
    return nullptr;
}

const char* ReadNameTime(std::string_view value, Station& station) {
    return ReadSeconds(value, station.rds.nameTime_s);
}

const char* ReadTextTime(std::string_view value, Station& station) {
    return ReadSeconds(value, station.rds.textTime_s);
}

const char* ReadProgramText(std::string_view value, Station& station) {
    return ReadText(value, kProgramTextLength, "at most 8 characters", station.rds.programText);
}

const char* ReadProgrammeType(std::string_view value, Station& station) {
    const auto type = ProgrammeTypeOf(value);
    if (!type) return "a programme type, such as News, or a number from 0 to 31";
    station.rds.programmeType = *type;
    return nullptr;
}

const char* ReadAlternatives(std::string_view value, Station& station) {
    static constexpr char kWant[] =
        "at most 25 frequencies from 87.5 to 108.0, with one decimal, between blanks";
    std::vector<std::uint32_t> frequencies;
    while (!(value = handset::Trimmed(value)).empty()) {
        const std::string_view word = value.substr(0, value.find_first_of(" \t"));
        value.remove_prefix(word.size());
        const auto frequency = Frequency(word);
        if (!frequency || frequencies.size() == kMaxAlternatives) return kWant;
        frequencies.push_back(*frequency);
    }
    station.rds.alternatives_10kHz = std::move(frequencies);
    return nullptr;
}

const char* ReadClockTime(std::string_view value, Station& station) {
    return ReadSwitch(value, station.rds.clockTime);
}

const char* ReadTrafficProgramme(std::string_view value, Station& station) {
    return ReadSwitch(value, station.rds.trafficProgramme);
}

const char* ReadTrafficAnnouncement(std::string_view value, Station& station) {
    return ReadSwitch(value, station.rds.trafficAnnouncement);
}

const char* ReadStationProgramme(std::string_view value, Station& station) {
    return ReadProgramme(value, &station.programme);
}

struct Key {
    std::string_view name;
    const char* (*read)(std::string_view value, Station& station);
};

constexpr Key kStationKeys[] = {
    {"level", ReadLevel},
    {"stereo", ReadStereo},
    {"ps", ReadServiceName},
    {"rt", ReadRadioText},
    {"pt", ReadProgramText},
    {"pty", ReadProgrammeType},
    {"af", ReadAlternatives},
    {"ct", ReadClockTime},
    {"programme", ReadStationProgramme},
    {"pstime", ReadNameTime},
    {"rttime", ReadTextTime},
    {"tp", ReadTrafficProgramme},
    {"ta", ReadTrafficAnnouncement},
};

class CBandReader {
  public:
    CBandReader(std::string_view name, std::vector<std::string>* faults) : name_(name), faults_(faults) {}

    void ReadLine(std::string_view line) {
        ++number_;
        if (!handset::IsUtf8(line)) return Fault("the line is not valid UTF-8");
        if (HasControlCharacter(line)) return Fault("the line has a control character in it");
        const BandLine read = ReadBandLine(line);
        switch (read.kind) {
            case BandLineKind::kEmpty:
                return;
            case BandLineKind::kSection:
                return ReadSection(read);
            case BandLineKind::kOpenSection:
                section_ = Section::kFaulty;
                return Fault(Quoted(read.text) + " lacks the closing bracket");
            case BandLineKind::kKey:
                return ReadKey(read.name, read.value);
            case BandLineKind::kOther:
                return Fault(Quoted(read.text) + " is neither a section nor a key with a value");
        }
    }

    Band Take() { return std::move(band_); }

  private:
    enum class Section { kNone, kBand, kStation, kFaulty };

    static std::string Quoted(std::string_view text) {
        const std::string_view shown = handset::Utf8Prefix(text, kQuotedCharacters);
        return '"' + std::string(shown) + (shown.size() < text.size() ? "…\"" : "\"");
    }

    void Fault(const std::string& what) {
        if (faults_->size() > kMaxBandFaults) return;
        const bool last = faults_->size() == kMaxBandFaults;
        faults_->push_back(std::string(name_) + ':' + std::to_string(number_) + ": " +
                           (last ? "this and further faults are not listed" : what));
    }

    void ReadSection(const BandLine& line) {
        section_ = Section::kFaulty;
        if (handset::SameLetters(line.name, "band")) {
            section_ = Section::kBand;
            return;
        }
        const auto channel = SectionChannel(line.name);
        if (!channel) return Fault(Quoted(line.text) + " is neither [band] nor a channel from 8750 to 10800");
        const auto [station, isNew] = band_.stations.try_emplace(*channel);
        if (!isNew) Fault(Quoted(line.text) + " was there before; its keys are added to the first");
        section_ = Section::kStation;
        station_ = &station->second;
    }

    void ReadKey(std::string_view key, std::string_view value) {
        // The section's own fault has been told.
        if (section_ == Section::kFaulty) return;
        if (section_ == Section::kNone) return Fault(Quoted(key) + " stands before the first section");
        if (section_ == Section::kStation) return ReadStationKey(key, value);
        if (!handset::SameLetters(key, "wrap")) return Fault(Quoted(key) + " is no key of the band");
        Judge(key, value, ReadSwitch(value, band_.wrap));
    }

    void ReadStationKey(std::string_view key, std::string_view value) {
        for (const Key& row : kStationKeys) {
            if (handset::SameLetters(row.name, key)) return Judge(key, value, row.read(value, *station_));
        }
        Fault(Quoted(key) + " is no key of a station");
    }

    void Judge(std::string_view key, std::string_view value, const char* want) {
        if (want != nullptr) Fault(Quoted(key) + " wants " + want + ", not " + Quoted(value));
    }

    std::string_view name_;
    std::vector<std::string>* faults_;
    Band band_;
    Section section_ = Section::kNone;
    Station* station_ = nullptr;
    int number_ = 0;
};

}  // namespace

Band ReadBand(std::string_view name, std::string_view text, std::vector<std::string>* faults) {
    CBandReader reader(name, faults);
    text = AfterByteOrderMark(text);
    while (!text.empty()) {
        std::string_view line = TakeBandLine(text);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        reader.ReadLine(line);
    }
    return reader.Take();
}

}  // namespace fm
