#include "tests/bench/reception/air_stream.h"

namespace bench {
namespace {

float Part(const std::vector<std::uint8_t>& bytes, std::size_t part, transmitter::StreamFormat format) {
    if (format == transmitter::StreamFormat::kCu8) return (static_cast<float>(bytes[part]) - 127.5f) / 127.5f;
    const auto word = static_cast<std::uint16_t>(bytes[2 * part] | bytes[2 * part + 1] << 8);
    return static_cast<float>(static_cast<std::int16_t>(word)) / 32767.0f;
}

}  // namespace

CAirStream::CAirStream(const Air& air) : transmitter_(air.stream, air.stations), format_(air.format) {}

const Samples& CAirStream::Next(std::size_t count) {
    samples_.resize(count);
    transmitter_.Read(samples_.data(), count);
    if (!format_) return samples_;
    bytes_.clear();
    transmitter::Append(samples_.data(), count, *format_, &bytes_);
    for (std::size_t i = 0; i < count; ++i) {
        samples_[i] = {Part(bytes_, 2 * i, *format_), Part(bytes_, 2 * i + 1, *format_)};
    }
    return samples_;
}

}  // namespace bench
