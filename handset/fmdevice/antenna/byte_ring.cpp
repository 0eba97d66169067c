// The ring of bytes; a byte's place follows from its number alone.
#include "handset/fmdevice/antenna/byte_ring.h"

#include <algorithm>

namespace fm {

CByteRing::CByteRing(std::size_t capacity, std::size_t unit)
    : bytes_(std::max(capacity - capacity % unit, unit)), unit_(unit) {}

void CByteRing::Write(const std::uint8_t* bytes, std::size_t count) {
    const std::uint64_t end = end_ + count;
    // Of more than fits the beginning is lost unwritten.
    if (count > bytes_.size()) {
        bytes += count - bytes_.size();
        end_ = end - bytes_.size();
        count = bytes_.size();
    }
    while (count > 0) {
        const auto place = static_cast<std::size_t>(end_ % bytes_.size());
        const std::size_t run = std::min(count, bytes_.size() - place);
        std::copy_n(bytes, run, bytes_.begin() + static_cast<std::ptrdiff_t>(place));
        bytes += run;
        count -= run;
        end_ += run;
    }
    if (end_ - begin_ <= bytes_.size()) return;
    const std::uint64_t over = end_ - begin_ - bytes_.size();
    const std::uint64_t whole = (over + unit_ - 1) / unit_ * unit_;
    begin_ += whole;
    lost_ += whole;
}

std::size_t CByteRing::Read(std::uint8_t* bytes, std::size_t most) {
    const std::size_t count = std::min(most, Held());
    for (std::size_t done = 0; done < count;) {
        const auto place = static_cast<std::size_t>(begin_ % bytes_.size());
        const std::size_t run = std::min(count - done, bytes_.size() - place);
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(place), run, bytes + done);
        done += run;
        begin_ += run;
    }
    return count;
}

std::uint64_t CByteRing::TakeLost() {
    const std::uint64_t lost = lost_;
    lost_ = 0;
    return lost;
}

}  // namespace fm
