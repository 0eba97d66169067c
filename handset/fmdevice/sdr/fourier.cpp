// The transform itself is kissfft's.
#include "handset/fmdevice/sdr/fourier.h"

#include <kiss_fft.h>

#include <cmath>

namespace sdr {

struct CFourierTransform::Plan {
    explicit Plan(std::size_t size) : config(kiss_fft_alloc(static_cast<int>(size), 0, nullptr, nullptr)) {}
    ~Plan() { kiss_fft_free(config); }
    Plan(const Plan&) = delete;
    Plan& operator=(const Plan&) = delete;

    kiss_fft_cfg config;
};

CFourierTransform::CFourierTransform(std::size_t size)
    : plan_(std::make_unique<Plan>(size)), window_(size), input_(size), output_(size) {
    // The sum of the squares is 1, so white noise has its own density.
    double sum = 0.0;
    for (std::size_t i = 0; i < size; ++i) {
        const double sine =
            std::sin(3.14159265358979323846 * (static_cast<double>(i) + 0.5) / static_cast<double>(size));
        window_[i] = static_cast<float>(sine * sine);
        sum += sine * sine * sine * sine;
    }
    for (float& value : window_) value /= static_cast<float>(std::sqrt(sum));
}

CFourierTransform::~CFourierTransform() = default;

void CFourierTransform::AddDensity(const Sample* samples, std::vector<double>* density) {
    for (std::size_t i = 0; i < Size(); ++i) input_[i] = samples[i] * window_[i];
    Transform(density);
}

void CFourierTransform::AddDensity(const float* samples, std::vector<double>* density) {
    for (std::size_t i = 0; i < Size(); ++i) input_[i] = samples[i] * window_[i];
    Transform(density);
}

void CFourierTransform::Transform(std::vector<double>* density) {
    static_assert(sizeof(kiss_fft_cpx) == sizeof(Sample), "both are two floats");
    kiss_fft(plan_->config, reinterpret_cast<const kiss_fft_cpx*>(input_.data()),
             reinterpret_cast<kiss_fft_cpx*>(output_.data()));
    density->resize(Size());
    for (std::size_t i = 0; i < Size(); ++i) (*density)[i] += std::norm(output_[i]);
}

}  // namespace sdr
