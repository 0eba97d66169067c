// The codec library behind whole frames.
#include "handset/capture/encoder/amr_encoder.h"

#include <interf_enc.h>

#include <algorithm>

namespace capture {

void CAmrEncoder::CodecCloser::operator()(void* codec) const {
    Encoder_Interface_exit(codec);
}

// Without discontinuous transmission: a radio is not a telephone, its pauses are to be heard.
CAmrEncoder::CAmrEncoder() : codec_(Encoder_Interface_init(0)) {}

void CAmrEncoder::Encode(const std::int16_t* samples, std::size_t count, std::vector<std::uint8_t>* frames) {
    if (!rest_.empty()) {
        const std::size_t taken = std::min(count, kAmrFrame_samples - rest_.size());
        rest_.insert(rest_.end(), samples, samples + taken);
        samples += taken;
        count -= taken;
        if (rest_.size() < kAmrFrame_samples) return;
        EncodeFrame(rest_.data(), frames);
        rest_.clear();
    }
    for (; count >= kAmrFrame_samples; count -= kAmrFrame_samples, samples += kAmrFrame_samples)
        EncodeFrame(samples, frames);
    rest_.assign(samples, samples + count);
}

void CAmrEncoder::Flush(std::vector<std::uint8_t>* frames) {
    if (rest_.empty()) return;
    rest_.resize(kAmrFrame_samples, 0);
    EncodeFrame(rest_.data(), frames);
    rest_.clear();
}

void CAmrEncoder::EncodeFrame(const std::int16_t* samples, std::vector<std::uint8_t>* frames) {
    // The library clears bits of the samples that it is given.
    std::int16_t copy[kAmrFrame_samples];
    std::copy_n(samples, kAmrFrame_samples, copy);
    std::uint8_t frame[kLargestAmrFrame_bytes];
    const int size = Encoder_Interface_Encode(codec_.get(), MR122, copy, frame, 0);
    frames->insert(frames->end(), frame, frame + size);
}

}  // namespace capture
