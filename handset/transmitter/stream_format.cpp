#include "handset/transmitter/stream_format.h"

#include <cmath>
#include <cstring>

namespace transmitter {
namespace {

// Rounded to the nearest step within the bounds; counts what lies outside.
long Step(float value, float scale, float middle, long lowest, long highest, std::size_t* clipped) {
    const long step = std::lrintf(value * scale + middle);
    if (step >= lowest && step <= highest) return step;
    ++*clipped;
    return step < lowest ? lowest : highest;
}

void AppendPart(float value, StreamFormat format, std::vector<std::uint8_t>* bytes, std::size_t* clipped) {
    switch (format) {
        case StreamFormat::kCu8:
            bytes->push_back(static_cast<std::uint8_t>(Step(value, 127.5f, 127.5f, 0, 255, clipped)));
            break;
        case StreamFormat::kCs8:
            bytes->push_back(static_cast<std::uint8_t>(Step(value, 127, 0, -128, 127, clipped)));
            break;
        case StreamFormat::kCs16: {
            const auto word = static_cast<std::uint16_t>(Step(value, 32767, 0, -32768, 32767, clipped));
            bytes->push_back(static_cast<std::uint8_t>(word & 0xFF));
            bytes->push_back(static_cast<std::uint8_t>(word >> 8));
            break;
        }
        case StreamFormat::kCf32: {
            std::uint8_t raw[sizeof value];
            std::memcpy(raw, &value, sizeof value);
            bytes->insert(bytes->end(), raw, raw + sizeof raw);
            break;
        }
    }
}

}  // namespace

std::size_t Append(const std::complex<float>* samples, std::size_t count, StreamFormat format,
                   std::vector<std::uint8_t>* bytes) {
    std::size_t clipped = 0;
    for (std::size_t i = 0; i < count; ++i) {
        AppendPart(samples[i].real(), format, bytes, &clipped);
        AppendPart(samples[i].imag(), format, bytes, &clipped);
    }
    return clipped;
}

}  // namespace transmitter
