// Fragments while recording, one movie at the end.
#include "handset/capture/files/amr_file_writer.h"

#include "handset/capture/encoder/amr_frames.h"

namespace capture {
namespace {

constexpr std::size_t kFragment_frames = 25;
// Chunk places and durations have 32 bits; a month of sound is far below both.
constexpr std::uint64_t kLargestEnd = 0xF0000000;
constexpr std::size_t kMostFrames = 0xF0000000 / kAmrFrame_samples;

}  // namespace

bool CAmrFileWriter::Begin(IRecordingFile* file) {
    file_ = file;
    std::vector<std::uint8_t> head = Mp4FileType().Bytes();
    const CBoxBytes movie = Mp4FragmentedMovie(created_, tags_);
    head.insert(head.end(), movie.Bytes().begin(), movie.Bytes().end());
    failed_ = !Append(head);
    return !failed_;
}

bool CAmrFileWriter::Write(const std::uint8_t* data, std::size_t size) {
    while (size > 0 && !failed_) {
        const std::size_t length = AmrFrameBytes(*data);
        if (length == 0 || length > size) return false;
        pending_.insert(pending_.end(), data, data + length);
        lengths_.push_back(static_cast<std::uint8_t>(length));
        data += length;
        size -= length;
        if (lengths_.size() == kFragment_frames) failed_ = !WriteFragment();
    }
    return !failed_;
}

bool CAmrFileWriter::Finish() {
    if (!failed_ && !lengths_.empty()) failed_ = !WriteFragment();
    const std::uint64_t media_end = end_;
    const CBoxBytes movie = Mp4CompleteMovie(created_, written_, tags_);
    const CBoxBytes header = Mp4MediaDataHeader(media_end);
    // In this order: until the last step the file is a fragmented one with something behind it.
    if (Append(movie.Bytes()) && file_->WriteAt(kPlaceholderOffset, header.Bytes().data(), header.Size()))
        return !failed_;
    file_->Truncate(media_end);
    return false;
}

bool CAmrFileWriter::Append(const std::vector<std::uint8_t>& bytes) {
    if (!file_->WriteAt(end_, bytes.data(), bytes.size())) {
        file_->Truncate(end_);
        return false;
    }
    end_ += bytes.size();
    return true;
}

bool CAmrFileWriter::WriteFragment() {
    if (end_ > kLargestEnd || written_.frame_bytes.size() > kMostFrames) return false;
    const auto sequence = static_cast<std::uint32_t>(written_.chunks.size() + 1);
    std::vector<std::uint8_t> fragment =
        Mp4FragmentHead(end_, sequence, written_.frame_bytes.size(), lengths_).Bytes();
    const std::uint64_t offset = end_ + fragment.size();
    fragment.insert(fragment.end(), pending_.begin(), pending_.end());
    if (!Append(fragment)) return false;
    written_.chunks.push_back({offset, static_cast<std::uint32_t>(lengths_.size())});
    written_.frame_bytes.insert(written_.frame_bytes.end(), lengths_.begin(), lengths_.end());
    pending_.clear();
    lengths_.clear();
    return true;
}

}  // namespace capture
