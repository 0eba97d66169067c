// Opening and reading files of samples.
#include "handset/fmdevice/sdr/iq_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>

#include "handset/fmdevice/sdr/channelizer.h"
#include "handset/fmdevice/sdr/sigmf.h"

namespace sdr {
namespace {

constexpr double kShortest_s = 0.1;
constexpr double kHighestRate_Hz = 50e6;
constexpr std::uint64_t kMostMetadata = 16 * 1024 * 1024;

// What is found out of a file before its samples are looked at.
struct Found {
    std::string error;
    std::optional<SampleForm> form;
    std::optional<double> rate_Hz;
    std::optional<double> centre_Hz;
    std::uint64_t begin = 0;
    std::optional<std::uint64_t> bytes;  // else all that is left
};

std::filesystem::path PathOf(const std::string& utf8) {
    return std::filesystem::u8path(utf8);
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

std::uint64_t LittleEndian(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = count; i-- > 0;) value = value << 8 | bytes[i];
    return value;
}

bool ReadAt(std::ifstream& stream, std::uint64_t at, std::uint8_t* bytes, std::size_t count) {
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(at));
    stream.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count));
    return stream.gcount() == static_cast<std::streamsize>(count);
}

std::string Format(const char* format, double value) {
    char text[200];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// The forms of a WAV file's samples: its format tag (1 whole numbers, 3 floats) and bits.
std::optional<SampleForm> WavForm(std::uint64_t tag, std::uint64_t bits) {
    if (tag == 1 && bits == 8) return SampleForm::kCu8;
    if (tag == 1 && bits == 16) return SampleForm::kCs16;
    if (tag == 3 && bits == 32) return SampleForm::kCf32;
    return std::nullopt;
}

void ReadWavFormat(const std::vector<std::uint8_t>& chunk, Found* found) {
    constexpr std::uint64_t kExtensible = 0xFFFE;
    if (chunk.size() < 16) {
        found->error = "its format chunk is too short";
        return;
    }
    std::uint64_t tag = LittleEndian(chunk.data(), 2);
    if (tag == kExtensible && chunk.size() >= 26) tag = LittleEndian(chunk.data() + 24, 2);
    const std::uint64_t channels = LittleEndian(chunk.data() + 2, 2);
    const std::uint64_t bits = LittleEndian(chunk.data() + 14, 2);
    found->rate_Hz = static_cast<double>(LittleEndian(chunk.data() + 4, 4));
    found->form = WavForm(tag, bits);
    if (channels != 2) {
        found->error = Format("it has %.0f channel(s); I and Q are two", static_cast<double>(channels));
    } else if (!found->form) {
        found->error = Format("its samples have an unknown form (format %.0f", static_cast<double>(tag)) +
                       Format(", %.0f bits); PCM of 8 or 16 bits and float of 32 bits are known",
                              static_cast<double>(bits));
    }
}

Found ReadWav(std::ifstream& stream, std::uint64_t size) {
    Found found;
    std::uint64_t data64 = 0;
    for (std::uint64_t at = 12; at + 8 <= size && found.error.empty();) {
        std::array<std::uint8_t, 8> head{};
        if (!ReadAt(stream, at, head.data(), head.size())) break;
        const std::string name(head.begin(), head.begin() + 4);
        const std::uint64_t length = LittleEndian(head.data() + 4, 4);
        at += 8;
        if (name == "data") {
            found.begin = at;
            // Recorders that were cut off leave 0, all ones, or more than there is.
            const std::uint64_t said = length == 0xFFFFFFFF && data64 != 0 ? data64 : length;
            if (said != 0 && said <= size - at) found.bytes = said;
            if (!found.form) found.error = "it has no format chunk before its samples";
            return found;
        }
        std::vector<std::uint8_t> chunk(
            static_cast<std::size_t>(std::min<std::uint64_t>({length, size - at, 256})));
        if (!ReadAt(stream, at, chunk.data(), chunk.size())) break;
        if (name == "fmt ") ReadWavFormat(chunk, &found);
        if (name == "ds64" && chunk.size() >= 16) data64 = LittleEndian(chunk.data() + 8, 8);
        // Two times of 16 bytes each, then the centre.
        if (name == "auxi" && chunk.size() >= 36) {
            const auto centre_Hz = static_cast<double>(LittleEndian(chunk.data() + 32, 4));
            if (centre_Hz > 0.0) found.centre_Hz = centre_Hz;
        }
        at += length + length % 2;
    }
    if (found.error.empty()) found.error = "it has no samples: no data chunk";
    return found;
}

bool IsWav(std::ifstream& stream) {
    std::array<std::uint8_t, 12> head{};
    if (!ReadAt(stream, 0, head.data(), head.size())) return false;
    const std::string magic(head.begin(), head.begin() + 4);
    return (magic == "RIFF" || magic == "RF64") && std::string(head.begin() + 8, head.end()) == "WAVE";
}

Found ReadSigmf(const std::string& metadata) {
    Found found;
    std::ifstream stream(PathOf(metadata), std::ios::binary);
    std::error_code ignored;
    if (!stream || std::filesystem::file_size(PathOf(metadata), ignored) > kMostMetadata) {
        found.error = "its metadata, " + metadata + ", cannot be read";
        return found;
    }
    SigmfDescription description;
    found.error = ParseSigmf({std::istreambuf_iterator<char>(stream), {}}, &description);
    if (found.error.empty() && !description.form) {
        found.error = "its form " + description.datatype + " is not known; cu8, ci8, ci16_le and cf32_le are";
    }
    found.form = description.form;
    found.rate_Hz = description.rate_Hz;
    found.centre_Hz = description.centre_Hz;
    return found;
}

Found ReadRaw(const std::string& path) {
    Found found;
    found.form = FormNamed(Lower(PathOf(path).extension().u8string()).erase(0, 1));
    return found;
}

}  // namespace

std::optional<double> CentreInName(const std::string& name) {
    struct Unit {
        const char* name;
        double factor;
    };
    constexpr Unit kUnits[] = {{"mhz", 1e6}, {"khz", 1e3}, {"hz", 1.0}};
    const std::string lower = Lower(name);
    for (std::size_t i = 0; i < lower.size(); ++i) {
        const bool begins =
            std::isdigit(static_cast<unsigned char>(lower[i])) != 0 &&
            (i == 0 || (std::isalnum(static_cast<unsigned char>(lower[i - 1])) == 0 && lower[i - 1] != '.'));
        if (!begins) continue;
        std::size_t end = i;
        while (end < lower.size() &&
               (std::isdigit(static_cast<unsigned char>(lower[end])) != 0 || lower[end] == '.'))
            ++end;
        for (const Unit& unit : kUnits) {
            const std::size_t length = std::string(unit.name).size();
            const bool fits = lower.compare(end, length, unit.name) == 0 &&
                              (end + length == lower.size() ||
                               std::isalnum(static_cast<unsigned char>(lower[end + length])) == 0);
            if (fits) return std::strtod(lower.substr(i, end - i).c_str(), nullptr) * unit.factor;
        }
    }
    return std::nullopt;
}

std::string CIqFile::Open(const std::string& path, const IqHints& hints) {
    description_ = {};
    left_ = 0;
    stream_.close();
    stream_.clear();
    std::string data = path;
    std::string metadata;
    for (const char* end : {".sigmf-meta", ".sigmf-data"}) {
        if (!EndsWith(path, end)) continue;
        const std::string stem = path.substr(0, path.size() - std::string(end).size());
        data = stem + ".sigmf-data";
        metadata = stem + ".sigmf-meta";
    }
    std::error_code failed;
    const std::uint64_t size = std::filesystem::file_size(PathOf(data), failed);
    if (!failed) stream_.open(PathOf(data), std::ios::binary);
    if (failed || !stream_) return data + ": it cannot be read";

    const bool wav = metadata.empty() && IsWav(stream_);
    Found found = !metadata.empty() ? ReadSigmf(metadata) : wav ? ReadWav(stream_, size) : ReadRaw(path);
    if (!found.error.empty()) return data + ": " + found.error;
    if (hints.form && !wav) found.form = hints.form;
    if (hints.rate_Hz) found.rate_Hz = hints.rate_Hz;
    if (hints.centre_Hz) found.centre_Hz = hints.centre_Hz;
    if (!found.centre_Hz) found.centre_Hz = CentreInName(PathOf(data).filename().u8string());

    if (!found.form) return data + ": its form is not known; cu8, cs8, cs16 and cf32 are";
    if (!found.rate_Hz) return data + ": its rate is not known; it has to be given";
    const double rate_Hz = *found.rate_Hz;
    if (!(rate_Hz >= kLeastRate_Hz))
        return data + Format(": its rate of %.0f Hz is below 200000 Hz, which a station needs", rate_Hz);
    if (rate_Hz > kHighestRate_Hz)
        return data + Format(": its rate of %.0f Hz is beyond anything real", rate_Hz);
    const std::uint64_t bytes = found.bytes.value_or(size - std::min(size, found.begin));
    const std::size_t each = BytesOf(*found.form);
    if (bytes % each != 0) {
        return data + Format(": its length is odd: %.0f bytes", static_cast<double>(bytes)) +
               " are no whole samples of " + std::string(NameOf(*found.form)) +
               Format(", which have %.0f", static_cast<double>(each));
    }
    const double seconds = static_cast<double>(bytes / each) / rate_Hz;
    if (seconds < kShortest_s)
        return data + Format(": it is too short: %.3f s, and 0.1 s is the least", seconds);

    description_ = {*found.form, rate_Hz, found.centre_Hz, bytes / each};
    begin_ = found.begin;
    Rewind();
    return {};
}

void CIqFile::Rewind() {
    stream_.clear();
    stream_.seekg(static_cast<std::streamoff>(begin_));
    left_ = description_.samples;
}

std::size_t CIqFile::Read(std::size_t most, std::vector<Sample>* samples) {
    const std::size_t each = BytesOf(description_.form);
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(most, left_));
    if (count == 0) return 0;
    bytes_.resize(count * each);
    stream_.read(reinterpret_cast<char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
    const std::size_t read = static_cast<std::size_t>(stream_.gcount()) / each;
    left_ = read < count ? 0 : left_ - read;
    CSampleDecoder decoder(description_.form);
    decoder.Decode(bytes_.data(), read * each, samples);
    return read;
}

}  // namespace sdr
