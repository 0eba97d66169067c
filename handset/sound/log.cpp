// Writes what is heard to a WAV file whose header is always right.
#include "handset/sound/log.h"

#include "handset/base/utf8.h"
#include "handset/sound/format.h"
#include "handset/sound/wav.h"
#include "handset/state/handset_state.h"

namespace sound {
namespace {

constexpr std::size_t kPendingFrames = kSampleRate_Hz / 10;
// The sizes in the header have 32 bits; some players take them for signed.
constexpr std::uint32_t kLargestData = 0x7FFFFF00;

auto HeaderOf(std::uint32_t dataBytes) {
    constexpr std::uint16_t kBits = 16;
    return WavHeader({kSampleRate_Hz, kChannels, kBits}, dataBytes);
}

bool WriteAt(HANDLE file, std::uint64_t offset, const void* data, std::size_t size) {
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(offset);
    DWORD written = 0;
    return SetFilePointerEx(file, place, nullptr, FILE_BEGIN) &&
           WriteFile(file, data, static_cast<DWORD>(size), &written, nullptr) && written == size;
}

// Bytes of sound in a file that this log began; 0 in any other.
std::uint32_t SoundThere(HANDLE file) {
    std::array<std::uint8_t, kWavHeader_bytes> header{};
    DWORD read = 0;
    LARGE_INTEGER size;
    if (!ReadFile(file, header.data(), kWavHeader_bytes, &read, nullptr) || read != kWavHeader_bytes)
        return 0;
    if (!GetFileSizeEx(file, &size) || size.QuadPart > kLargestData) return 0;
    const std::uint32_t dataBytes =
        header[40] | header[41] << 8 | header[42] << 16 | static_cast<std::uint32_t>(header[43]) << 24;
    const bool ours = header == HeaderOf(dataBytes) &&
                      dataBytes + kWavHeader_bytes <= static_cast<std::uint64_t>(size.QuadPart);
    return ours ? dataBytes : 0;
}

}  // namespace

void CSoundLog::Follow(const std::wstring& devicePath, void (*report)(std::string_view utf8)) {
    report_ = report;
    if (devicePath == path_) return;
    Flush();
    file_.reset();
    pending_.clear();
    dataBytes_ = 0;
    path_ = devicePath;
    if (path_.empty()) return;
    const handset::CDevicePath place = handset::OnDevice(path_.c_str());
    file_.reset(handset::Opened(CreateFileW(place ? place.host() : L"", GENERIC_READ | GENERIC_WRITE,
                                            FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                                            FILE_ATTRIBUTE_NORMAL, nullptr)));
    if (!file_) {
        Report(": the sound log cannot be opened");
        return;
    }
    dataBytes_ = SoundThere(file_.get());
    if (dataBytes_ != 0) return;
    const auto header = HeaderOf(0);
    WriteAt(file_.get(), 0, header.data(), header.size());
    SetEndOfFile(file_.get());
}

void CSoundLog::Report(const char* fault) const {
    if (report_ != nullptr) report_(handset::Utf8(path_) + fault);
}

void CSoundLog::Write(const std::int16_t* samples, std::size_t frames) {
    if (!file_) return;
    pending_.insert(pending_.end(), samples, samples + frames * kChannels);
    if (pending_.size() >= kPendingFrames * kChannels) Flush();
}

void CSoundLog::Flush() {
    const auto bytes = static_cast<std::uint32_t>(pending_.size() * sizeof(std::int16_t));
    if (!file_ || bytes == 0) return;
    // The sound first: a file that is cut off here still ends where its header says.
    const std::uint64_t end = kWavHeader_bytes + static_cast<std::uint64_t>(dataBytes_);
    const auto header = HeaderOf(dataBytes_ + bytes);
    const bool written = bytes <= kLargestData - dataBytes_ &&
                         WriteAt(file_.get(), end, pending_.data(), bytes) &&
                         WriteAt(file_.get(), 0, header.data(), header.size());
    pending_.clear();
    if (written) {
        dataBytes_ += bytes;
        return;
    }
    file_.reset();
    Report(": the sound log is full; no more is written to it");
}

}  // namespace sound
