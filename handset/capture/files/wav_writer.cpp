// The WAV file: the sound first and then the header that counts it.
#include "handset/capture/files/wav_writer.h"

namespace capture {

bool CWavWriter::Begin(IRecordingFile* file) {
    file_ = file;
    data_bytes_ = 0;
    return WriteHeader();
}

bool CWavWriter::Write(const std::uint8_t* data, std::size_t size) {
    // One byte is kept for the pad byte of an odd length.
    if (SoundBegins() + data_bytes_ + size + 1 > largest_) return false;
    if (!file_->WriteAt(SoundBegins() + data_bytes_, data, size)) return false;
    data_bytes_ += static_cast<std::uint32_t>(size);
    const std::uint32_t half_second = shape_.rate_Hz / 2 * shape_.FrameBytes();
    return data_bytes_ - stated_bytes_ < half_second || WriteHeader();
}

bool CWavWriter::Finish() {
    const std::uint64_t end = SoundBegins() + data_bytes_;
    // What a failed write left behind.
    file_->Truncate(end);
    const std::uint8_t pad = 0;
    const bool padded = data_bytes_ % 2 == 0 || file_->WriteAt(end, &pad, 1);
    return WriteHeader() && padded;
}

bool CWavWriter::WriteHeader() {
    constexpr std::ptrdiff_t kDataHead_bytes = 8;
    const auto plain = sound::WavHeader(shape_, data_bytes_);
    std::vector<std::uint8_t> header(plain.begin(), plain.end() - kDataHead_bytes);
    header.insert(header.end(), tags_.begin(), tags_.end());
    header.insert(header.end(), plain.end() - kDataHead_bytes, plain.end());
    // The size of all that follows it.
    const std::uint64_t riff = SoundBegins() - 8 + data_bytes_ + data_bytes_ % 2;
    for (std::size_t i = 0; i < 4; ++i) header[4 + i] = static_cast<std::uint8_t>(riff >> 8 * i);
    if (!file_->WriteAt(0, header.data(), header.size())) return false;
    stated_bytes_ = data_bytes_;
    return true;
}

}  // namespace capture
