// The bytes of I/Q samples, as sticks and files have them, made into complex floats. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "handset/fmdevice/sdr/sample.h"

namespace sdr {

// Complex unsigned 8 bit (centre 127.5), signed 8 and 16 bit, float of 32 bit; I before Q, the lower byte
// first.
enum class SampleForm : std::uint8_t { kCu8, kCs8, kCs16, kCf32 };
constexpr std::size_t kSampleForms = 4;

[[nodiscard]] std::string_view NameOf(SampleForm form);  // "cu8" and so on
[[nodiscard]] std::optional<SampleForm> FormNamed(std::string_view name);
[[nodiscard]] std::size_t BytesOf(SampleForm form);  // of one complex sample

// A stream of bytes, cut anywhere. One thread at a time.
class CSampleDecoder {
  public:
    explicit CSampleDecoder(SampleForm form) : form_(form) {}

    // Appends the samples that these bytes complete; what is left of a sample waits for the next call. Floats
    // that are no numbers, or far beyond full scale, become 0.
    void Decode(const std::uint8_t* bytes, std::size_t count, std::vector<Sample>* samples);
    // Forgets the begun sample: the stream goes on elsewhere.
    void Reset() { held_ = 0; }

  private:
    static constexpr std::size_t kLargestSample = 8;

    SampleForm form_;
    std::array<std::uint8_t, kLargestSample> begun_{};
    std::size_t held_ = 0;
};

}  // namespace sdr
