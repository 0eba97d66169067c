// The WAV file: the sound first and then the header that counts it.
#include "handset/capture/wav_writer.h"

#include <array>

namespace capture {
namespace {

constexpr std::uint16_t kFormatPcm = 1;

class CHeader {
  public:
    void Text(const char* fourLetters) {
        for (int i = 0; i < 4; ++i) bytes_[size_++] = static_cast<std::uint8_t>(fourLetters[i]);
    }
    void Number(std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) bytes_[size_++] = static_cast<std::uint8_t>(value >> (8 * i));
    }
    const std::uint8_t* Bytes() const { return bytes_.data(); }

  private:
    std::array<std::uint8_t, kWavHeader_bytes> bytes_{};
    std::size_t size_ = 0;
};

}  // namespace

bool CWavWriter::Begin(IRecordingFile* file) {
    file_ = file;
    data_bytes_ = 0;
    return WriteHeader();
}

bool CWavWriter::Write(const std::uint8_t* data, std::size_t size) {
    // One byte is kept for the pad byte of an odd length.
    if (kWavHeader_bytes + std::uint64_t{data_bytes_} + size + 1 > largest_) return false;
    if (!file_->WriteAt(kWavHeader_bytes + std::uint64_t{data_bytes_}, data, size)) return false;
    data_bytes_ += static_cast<std::uint32_t>(size);
    const std::uint32_t half_second = shape_.rate_Hz / 2 * shape_.FrameBytes();
    return data_bytes_ - stated_bytes_ < half_second || WriteHeader();
}

bool CWavWriter::Finish() {
    const std::uint64_t end = kWavHeader_bytes + std::uint64_t{data_bytes_};
    // What a failed write left behind.
    file_->Truncate(end);
    const std::uint8_t pad = 0;
    const bool padded = data_bytes_ % 2 == 0 || file_->WriteAt(end, &pad, 1);
    return WriteHeader() && padded;
}

bool CWavWriter::WriteHeader() {
    CHeader header;
    header.Text("RIFF");
    header.Number(kWavHeader_bytes - 8 + data_bytes_ + data_bytes_ % 2, 4);
    header.Text("WAVE");
    header.Text("fmt ");
    header.Number(16, 4);
    header.Number(kFormatPcm, 2);
    header.Number(shape_.channels, 2);
    header.Number(shape_.rate_Hz, 4);
    header.Number(shape_.rate_Hz * shape_.FrameBytes(), 4);
    header.Number(shape_.FrameBytes(), 2);
    header.Number(shape_.bits, 2);
    header.Text("data");
    header.Number(data_bytes_, 4);
    if (!file_->WriteAt(0, header.Bytes(), kWavHeader_bytes)) return false;
    stated_bytes_ = data_bytes_;
    return true;
}

}  // namespace capture
