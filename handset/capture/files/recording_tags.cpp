// Tags in both kinds of file.
#include "handset/capture/files/recording_tags.h"

#include <algorithm>

namespace capture {
namespace {

constexpr char kProgram[] = "Kora";
// Of one text in a WAV file, so that all of them fit.
constexpr std::size_t kLongestWavText = 200;
constexpr std::size_t kChunkHead_bytes = 8;

constexpr char kMp4Program[] =
    "\xA9"
    "too";
constexpr char kWavProgram[] = "ISFT";

static_assert(4 + (std::size(kTagNames) * (kChunkHead_bytes + kLongestWavText + 2)) + 2 * kChunkHead_bytes +
                      8 + 8 <
                  kWavTags_bytes,
              "the longest tags fit");

void Mp4Item(CBoxBytes* out, const char* type, const std::string& text) {
    constexpr std::uint32_t kUtf8 = 1;
    const CBox item(out, type);
    const CBox data(out, "data", 0, kUtf8);
    out->U32(0);  // any language
    for (const char byte : text) out->U8(static_cast<std::uint8_t>(byte));
}

std::string FrequencyText(std::uint32_t channel_10kHz) {
    return std::to_string(channel_10kHz / 100) + "." + std::to_string(channel_10kHz % 100 / 10);
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// "Kora One" of "…\Kora One-0003.amr"; empty for a name of another form.
std::string ChannelInName(const std::string& path) {
    constexpr std::size_t kFewestDigits = 4;
    const std::size_t folder = path.find_last_of("\\/");
    std::string name = path.substr(folder == std::string::npos ? 0 : folder + 1);
    name.resize(std::min(name.size(), name.rfind('.')));
    const std::size_t dash = name.rfind('-');
    if (dash == std::string::npos || name.size() - dash - 1 < kFewestDigits) return {};
    if (!std::all_of(name.begin() + static_cast<std::ptrdiff_t>(dash) + 1, name.end(), IsDigit)) return {};
    return name.substr(0, dash);
}

void Append(std::vector<std::uint8_t>& bytes, const char* name, std::size_t size) {
    for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(name[i]));
    for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(size >> 8 * i));
}

// With the zero that ends it, and one more where the length is odd.
void AppendWavText(std::vector<std::uint8_t>& bytes, const char* name, std::string text) {
    if (text.size() > kLongestWavText) {
        std::size_t end = kLongestWavText;
        while (end > 0 && (static_cast<std::uint8_t>(text[end]) & 0xC0) == 0x80) --end;
        text.resize(end);
    }
    Append(bytes, name, text.size() + 1);
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.insert(bytes.end(), 2 - text.size() % 2, 0);
}

}  // namespace

RecordingTags TagsOf(const std::string& path, const TunedTo& tuned, const std::string& date) {
    RecordingTags tags;
    tags.date = date;
    tags.title = ChannelInName(path);
    if (tuned.channel_10kHz == 0) return tags;
    const std::string frequency = FrequencyText(tuned.channel_10kHz);
    tags.station = tuned.station;
    tags.frequency = frequency + " MHz";
    const bool unnamed = tags.title.empty() || tags.title == frequency;
    if (unnamed) tags.title = tuned.station.empty() ? tags.frequency : tuned.station;
    return tags;
}

void AppendMp4Tags(CBoxBytes* out, const RecordingTags& tags) {
    if (tags.Empty()) return;
    const CBox user(out, "udta");
    const CBox meta(out, "meta", 0, 0);
    {
        const CBox handler(out, "hdlr", 0, 0);
        out->U32(0);
        out->Type("mdir");
        out->Type("appl");
        out->Zeros(8 + 1);
    }
    const CBox list(out, "ilst");
    for (const TagName& row : kTagNames) {
        if (!(tags.*row.text).empty()) Mp4Item(out, row.mp4, tags.*row.text);
    }
    Mp4Item(out, kMp4Program, kProgram);
}

std::vector<std::uint8_t> WavTags(const RecordingTags& tags) {
    std::vector<std::uint8_t> list = {'I', 'N', 'F', 'O'};
    for (const TagName& row : kTagNames) {
        if (!(tags.*row.text).empty()) AppendWavText(list, row.wav, tags.*row.text);
    }
    AppendWavText(list, kWavProgram, kProgram);
    std::vector<std::uint8_t> bytes;
    Append(bytes, "LIST", list.size());
    bytes.insert(bytes.end(), list.begin(), list.end());
    Append(bytes, "JUNK", kWavTags_bytes - bytes.size() - kChunkHead_bytes);
    bytes.resize(kWavTags_bytes);
    return bytes;
}

}  // namespace capture
