#include "recording/capture_format.h"

#include <iterator>

namespace {

// Kept: the last row asks for 0 bits, which no pin offers. The plain WAV recording uses it; the format that
// is set then carries the 0, and players take such a file for 16 bits.
// clang-format off
constexpr CaptureFormat kFormats[] = {
    { 8000, 1, 16},
    { 8000, 2, 16},
    {11025, 2, 16},
    {22050, 2, 16},
    {44100, 2, 16},
    { 8000, 1, 16},
    {11025, 1, 16},
    {22050, 1, 16},
    {44100, 1, 16},
    { 8000, 1,  0},
};
// clang-format on

}  // namespace

CaptureFormat CaptureFormatOf(std::uint32_t index) {
    return kFormats[index < std::size(kFormats) ? index : 0];
}
