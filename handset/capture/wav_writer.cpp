// The WAV file: the sound first and then the header that counts it.
#include "handset/capture/wav_writer.h"

namespace capture {

using sound::kWavHeader_bytes;

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
    const auto header = sound::WavHeader(shape_, data_bytes_);
    if (!file_->WriteAt(0, header.data(), header.size())) return false;
    stated_bytes_ = data_bytes_;
    return true;
}

}  // namespace capture
