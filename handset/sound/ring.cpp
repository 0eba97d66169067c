// The ring of samples; a frame's place follows from its position alone.
#include "handset/sound/ring.h"

#include <algorithm>

namespace sound {

void CSoundRing::Append(const std::int16_t* samples, std::size_t frames) {
    samples_.resize(capacity_ * kChannels);
    while (frames > 0) {
        const std::size_t place = end_ % Capacity();
        const std::size_t run = std::min(frames, Capacity() - place);
        std::copy_n(samples, run * kChannels,
                    samples_.begin() + static_cast<std::ptrdiff_t>(place * kChannels));
        samples += run * kChannels;
        frames -= run;
        end_ += run;
    }
    begin_ = std::max(begin_, end_ - std::min<std::uint64_t>(end_, Capacity()));
}

std::size_t CSoundRing::Read(std::uint64_t* position, std::int16_t* samples, std::size_t frames) const {
    *position = std::max(*position, begin_);
    if (*position >= end_) return 0;
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(frames, end_ - *position));
    for (std::size_t done = 0; done < count;) {
        const std::size_t place = (*position + done) % Capacity();
        const std::size_t run = std::min(count - done, Capacity() - place);
        std::copy_n(samples_.begin() + static_cast<std::ptrdiff_t>(place * kChannels), run * kChannels,
                    samples + done * kChannels);
        done += run;
    }
    return count;
}

}  // namespace sound
