// The ring of frames by position.
#include "handset/fmdevice/antenna/clocked_sound.h"

#include <algorithm>

namespace fm {
namespace {

std::uint64_t Frames(double seconds) {
    return static_cast<std::uint64_t>(seconds * sound::kSampleRate_Hz);
}

}  // namespace

CClockedSound::CClockedSound(double capacity_s, double lead_s)
    : frames_(Frames(capacity_s) * sound::kChannels),
      capacity_(static_cast<std::size_t>(Frames(capacity_s))),
      lead_(Frames(lead_s)) {}

double CClockedSound::Fill_s(std::uint64_t now) const {
    return (static_cast<double>(end_) - static_cast<double>(now)) / sound::kSampleRate_Hz;
}

void CClockedSound::Append(const float* frames, std::size_t count, std::uint64_t now) {
    if (end_ < now) {
        if (end_ > 0) ++gaps_;
        // What was heard last is not heard again: what is not there is silent.
        begin_ = end_ = now + lead_;
        tooMuch_ = false;
    }
    const std::uint64_t most = now + lead_ + (tooMuch_ ? 0 : Frames(kMostAhead_s));
    tooMuch_ = end_ > most;
    if (tooMuch_) {
        leftOut_ += count;
        return;
    }
    Put(frames, count);
}

void CClockedSound::Put(const float* frames, std::size_t count) {
    for (std::size_t done = 0; done < count;) {
        const auto place = static_cast<std::size_t>(end_ % capacity_);
        const std::size_t run = std::min(count - done, capacity_ - place);
        std::copy_n(frames + done * sound::kChannels, run * sound::kChannels,
                    frames_.begin() + static_cast<std::ptrdiff_t>(place * sound::kChannels));
        done += run;
        end_ += run;
    }
    begin_ = std::max(begin_, end_ - std::min<std::uint64_t>(end_, capacity_));
}

void CClockedSound::Silence(std::uint64_t now) {
    for (std::uint64_t at = std::max(now, begin_); at < end_; ++at) {
        const auto place = static_cast<std::size_t>(at % capacity_) * sound::kChannels;
        frames_[place] = frames_[place + 1] = 0.0F;
    }
}

void CClockedSound::Read(std::uint64_t position, float* frames, std::size_t count) const {
    for (std::size_t i = 0; i < count; ++i, ++position) {
        const bool there = position >= begin_ && position < end_;
        const auto place = static_cast<std::size_t>(position % capacity_) * sound::kChannels;
        frames[sound::kChannels * i] = there ? frames_[place] : 0.0F;
        frames[sound::kChannels * i + 1] = there ? frames_[place + 1] : 0.0F;
    }
}

}  // namespace fm
