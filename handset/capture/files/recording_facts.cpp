// A walk over the chunks of a WAV file or the boxes of an MP4-style one; what is not known is passed over.
#include "handset/capture/files/recording_facts.h"

#include <algorithm>
#include <cstring>

#include "handset/capture/encoder/amr_frames.h"

namespace capture {
namespace {

// The lists of all frames of a day of sound are smaller.
constexpr std::uint64_t kLargestRead = 64u << 20;

using Bytes = std::vector<std::uint8_t>;

// A part of what was read, as numbers and texts; what lies beyond it reads as zeros.
class CByteView {
  public:
    CByteView(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    explicit CByteView(const Bytes& bytes) : CByteView(bytes.data(), bytes.size()) {}

    std::size_t Size() const { return size_; }
    std::uint64_t Big(std::size_t at, std::size_t bytes) const {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < bytes; ++i) number = number << 8 | Byte(at + i);
        return number;
    }
    std::uint32_t Little(std::size_t at, std::size_t bytes) const {
        std::uint32_t number = 0;
        for (std::size_t i = bytes; i > 0; --i) number = number << 8 | Byte(at + i - 1);
        return number;
    }
    bool Is(std::size_t at, const char* type) const {
        return at <= size_ && size_ - at >= 4 && std::memcmp(data_ + at, type, 4) == 0;
    }
    CByteView Part(std::size_t at, std::uint64_t size) const {
        at = std::min(at, size_);
        return {data_ + at, static_cast<std::size_t>(std::min<std::uint64_t>(size, size_ - at))};
    }
    // Up to a zero.
    std::string Text() const {
        const auto* const end = std::find(data_, data_ + size_, std::uint8_t{0});
        return {data_, end};
    }

  private:
    std::uint8_t Byte(std::size_t at) const { return at < size_ ? data_[at] : 0; }

    const std::uint8_t* data_;
    std::size_t size_;
};

std::optional<Bytes> Read(IFileBytes& file, std::uint64_t offset, std::uint64_t size) {
    if (size > kLargestRead) return std::nullopt;
    Bytes bytes(static_cast<std::size_t>(size));
    if (!file.ReadAt(offset, bytes.data(), bytes.size())) return std::nullopt;
    return bytes;
}

// --- WAV ---

constexpr std::size_t kChunkHead_bytes = 8;

void TakeInfo(const CByteView& list, RecordingTags& tags) {
    if (!list.Is(0, "INFO")) return;
    for (std::size_t at = 4; list.Size() - std::min(at, list.Size()) >= kChunkHead_bytes;) {
        const std::uint32_t size = list.Little(at + 4, 4);
        for (const TagName& row : kTagNames) {
            if (list.Is(at, row.wav)) tags.*row.text = list.Part(at + kChunkHead_bytes, size).Text();
        }
        at += kChunkHead_bytes + std::min<std::size_t>(size, list.Size()) + size % 2;
    }
}

std::optional<RecordingFacts> ReadWav(IFileBytes& file) {
    RecordingFacts facts;
    facts.kind = "WAV";
    std::uint32_t bytesPerSecond = 0;
    for (std::uint64_t at = 12; at + kChunkHead_bytes <= file.Size();) {
        const auto head = Read(file, at, kChunkHead_bytes);
        if (!head) return std::nullopt;
        const CByteView view(*head);
        const std::uint64_t size = view.Little(4, 4), left = file.Size() - at - kChunkHead_bytes;
        if (view.Is(0, "data")) {
            if (bytesPerSecond == 0) return std::nullopt;
            facts.length_s = static_cast<double>(std::min(size, left)) / bytesPerSecond;
            return facts;
        }
        if (view.Is(0, "fmt ") || view.Is(0, "LIST")) {
            const auto body = Read(file, at + kChunkHead_bytes, std::min(size, left));
            if (!body) return std::nullopt;
            if (view.Is(0, "LIST")) TakeInfo(CByteView(*body), facts.tags);
            if (view.Is(0, "fmt ")) bytesPerSecond = CByteView(*body).Little(8, 4);
        }
        at += kChunkHead_bytes + size + size % 2;
    }
    return std::nullopt;
}

// --- MP4 ---

constexpr std::size_t kBoxHead_bytes = 8;

// Calls `visit(type's place, body)` for each box in `boxes`.
template <typename Visit>
void EachBox(const CByteView& boxes, Visit visit) {
    for (std::size_t at = 0; boxes.Size() - std::min(at, boxes.Size()) >= kBoxHead_bytes;) {
        const std::uint64_t size = boxes.Big(at, 4);
        if (size < kBoxHead_bytes) return;
        visit(at + 4, boxes.Part(at + kBoxHead_bytes, size - kBoxHead_bytes));
        at += static_cast<std::size_t>(std::min<std::uint64_t>(size, boxes.Size()));
    }
}

// The body of the first box of that type.
std::optional<CByteView> Find(const CByteView& boxes, const char* type) {
    std::optional<CByteView> found;
    EachBox(boxes, [&](std::size_t at, const CByteView& body) {
        if (!found && boxes.Is(at, type)) found = body;
    });
    return found;
}

std::optional<CByteView> Find(std::optional<CByteView> boxes, std::initializer_list<const char*> path) {
    for (const char* type : path) {
        if (boxes) boxes = Find(*boxes, type);
    }
    return boxes;
}

void TakeMetadata(const CByteView& movie, RecordingTags& tags) {
    constexpr std::size_t kFullBox_bytes = 4;
    const auto meta = Find(movie, {"udta", "meta"});
    if (!meta) return;
    const auto list = Find(meta->Part(kFullBox_bytes, meta->Size()), "ilst");
    if (!list) return;
    for (const TagName& row : kTagNames) {
        const auto data = Find(*list, {row.mp4, "data"});
        if (data) tags.*row.text = data->Part(8, data->Size()).Text();
    }
}

// Where the sound of a fragment ends, in samples.
std::uint64_t EndOfFragment(const CByteView& fragment) {
    const auto time = Find(fragment, {"traf", "tfdt"});
    const auto run = Find(fragment, {"traf", "trun"});
    if (!time || !run) return 0;
    return time->Big(4, 8) + run->Big(4, 4) * kAmrFrame_samples;
}

std::optional<RecordingFacts> ReadMp4(IFileBytes& file) {
    RecordingFacts facts;
    facts.kind = "AMR";
    std::uint64_t samples = 0;
    bool movie = false;
    for (std::uint64_t at = 0; at + kBoxHead_bytes <= file.Size();) {
        const std::uint64_t left = file.Size() - at;
        const auto head = Read(file, at, std::min<std::uint64_t>(2 * kBoxHead_bytes, left));
        if (!head) return std::nullopt;
        const CByteView view(*head);
        const bool large = view.Big(0, 4) == 1;
        const std::uint64_t size = large ? view.Big(8, 8) : view.Big(0, 4);
        // What was being written when its writer ended.
        if (size < kBoxHead_bytes || size > left) break;
        const bool fragment = view.Is(4, "moof");
        if (fragment || view.Is(4, "moov")) {
            const auto body = Read(file, at + kBoxHead_bytes, size - kBoxHead_bytes);
            if (!body) return std::nullopt;
            const CByteView boxes(*body);
            if (fragment) {
                samples = std::max(samples, EndOfFragment(boxes));
            } else {
                movie = true;
                TakeMetadata(boxes, facts.tags);
                if (const auto header = Find(boxes, "mvhd")) samples = header->Big(16, 4);
                if (!Find(boxes, {"trak", "mdia", "minf", "stbl", "stsd"})) return std::nullopt;
            }
        }
        at += size;
    }
    facts.length_s = static_cast<double>(samples) / kAmrRate_Hz;
    return movie ? std::optional(facts) : std::nullopt;
}

}  // namespace

std::optional<RecordingFacts> ReadFacts(IFileBytes& file) {
    const auto head = Read(file, 0, std::min<std::uint64_t>(12, file.Size()));
    if (!head) return std::nullopt;
    const CByteView view(*head);
    if (view.Is(0, "RIFF") && view.Is(8, "WAVE")) return ReadWav(file);
    return view.Is(4, "ftyp") ? ReadMp4(file) : std::nullopt;
}

}  // namespace capture
