// Frame lengths by frame type.
#include "handset/capture/encoder/amr_frames.h"

namespace capture {

std::size_t AmrFrameBytes(std::uint8_t header) {
    // 3GPP TS 26.101 table 1a, in whole bytes with the header: 4.75 to 12.2 kbit/s, comfort noise; 15 is "no
    // data".
    // clang-format off
    static constexpr std::uint8_t kBytes[16] = {
        13, 14, 16, 18, 20, 21, 27, 32, 6,
        0, 0, 0, 0, 0, 0, 1,
    };
    // clang-format on
    return (header & 0x83) != 0 ? 0 : kBytes[header >> 3 & 0x0F];
}

}  // namespace capture
