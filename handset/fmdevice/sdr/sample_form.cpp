// The forms of I/Q samples, row by row.
#include "handset/fmdevice/sdr/sample_form.h"

#include <algorithm>
#include <cstring>

#include "handset/fmdevice/sdr/kernels.h"

namespace sdr {
namespace {

void FromCu8(const std::uint8_t* bytes, std::size_t values, float* output) {
    ActiveKernels().fromUnsigned8(bytes, values, 127.5f, 1.0f / 127.5f, output);
}

void FromCs8(const std::uint8_t* bytes, std::size_t values, float* output) {
    for (std::size_t i = 0; i < values; ++i) {
        output[i] = static_cast<float>(static_cast<std::int8_t>(bytes[i])) / 128.0f;
    }
}

void FromCs16(const std::uint8_t* bytes, std::size_t values, float* output) {
    for (std::size_t i = 0; i < values; ++i) {
        const auto value = static_cast<std::int16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
        output[i] = static_cast<float>(value) / 32768.0f;
    }
}

void FromCf32(const std::uint8_t* bytes, std::size_t values, float* output) {
    for (std::size_t i = 0; i < values; ++i) {
        float value = 0.0f;
        std::memcpy(&value, bytes + 4 * i, sizeof value);
        output[i] = value;
    }
}

struct FormRow {
    std::string_view name;
    std::size_t bytes;
    void (*decode)(const std::uint8_t* bytes, std::size_t values, float* output);
};

constexpr std::array<FormRow, kSampleForms> kForms = {{
    {"cu8", 2, FromCu8},
    {"cs8", 2, FromCs8},
    {"cs16", 4, FromCs16},
    {"cf32", 8, FromCf32},
}};

const FormRow& RowOf(SampleForm form) {
    return kForms[static_cast<std::size_t>(form)];
}

void Append(const FormRow& row, const std::uint8_t* bytes, std::size_t count, std::vector<Sample>* samples) {
    const std::size_t before = samples->size();
    samples->resize(before + count);
    row.decode(bytes, 2 * count, Pairs(samples->data() + before));
}

}  // namespace

std::string_view NameOf(SampleForm form) {
    return RowOf(form).name;
}

std::optional<SampleForm> FormNamed(std::string_view name) {
    for (std::size_t i = 0; i < kForms.size(); ++i) {
        if (kForms[i].name == name) return static_cast<SampleForm>(i);
    }
    return std::nullopt;
}

std::size_t BytesOf(SampleForm form) {
    return RowOf(form).bytes;
}

void CSampleDecoder::Decode(const std::uint8_t* bytes, std::size_t count, std::vector<Sample>* samples) {
    const FormRow& row = RowOf(form_);
    if (held_ > 0) {
        const std::size_t taken = std::min(row.bytes - held_, count);
        std::memcpy(begun_.data() + held_, bytes, taken);
        held_ += taken;
        bytes += taken;
        count -= taken;
        if (held_ < row.bytes) return;
        Append(row, begun_.data(), 1, samples);
        held_ = 0;
    }
    const std::size_t whole = count / row.bytes;
    if (whole > 0) Append(row, bytes, whole, samples);
    held_ = count - whole * row.bytes;
    if (held_ > 0) std::memcpy(begun_.data(), bytes + whole * row.bytes, held_);
}

}  // namespace sdr
