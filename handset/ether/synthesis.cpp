#include "handset/ether/synthesis.h"

#include <kiss_fft.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "handset/ether/station_signal.h"

namespace ether {
namespace {

using Complex = std::complex<float>;

// A quarter of every transform overlaps the one before.
constexpr long kLines = static_cast<long>(CSynthesis::kStationBlock) / 3 * 4;
static_assert(kLines * CSynthesis::kLine_Hz == kStationRate_Hz, "the lines of a station's transform");

constexpr float kPi = 3.14159265F;

// 1 up to `whole`, 0 from `nothing` on, half a wave of a cosine between.
float Taper(float place, float whole, float nothing) {
    if (place <= whole) return 1;
    if (place >= nothing) return 0;
    return 0.5F * (1 + std::cos(kPi * (place - whole) / (nothing - whole)));
}

constexpr long kReach = 750;  // lines on either side that a station takes
struct Mask {
    std::vector<Complex> lines;

    Mask() : lines(static_cast<std::size_t>(2 * kReach + 1)) {
        for (long line = -kReach; line <= kReach; ++line) {
            // Late by half of the overlap, so that what is before its time falls into the overlap too.
            const float angle = -kPi / 4 * static_cast<float>(line % 8);
            const float size = Taper(static_cast<float>(std::labs(line)), 600, kReach) / kLines;
            lines[static_cast<std::size_t>(line + kReach)] = std::polar(size, angle);
        }
    }
};

const Mask& TheMask() {
    static const Mask mask;
    return mask;
}

const kiss_fft_cpx* In(const std::vector<Complex>& samples) {
    static_assert(sizeof(kiss_fft_cpx) == sizeof(Complex), "both are two floats");
    return reinterpret_cast<const kiss_fft_cpx*>(samples.data());
}

kiss_fft_cpx* Out(std::vector<Complex>* samples) {
    return reinterpret_cast<kiss_fft_cpx*>(samples->data());
}

}  // namespace

struct CSynthesis::Plans {
    explicit Plans(std::size_t wide)
        : forward(kiss_fft_alloc(static_cast<int>(kLines), 0, nullptr, nullptr)),
          back(kiss_fft_alloc(static_cast<int>(wide), 1, nullptr, nullptr)) {}
    ~Plans() {
        kiss_fft_free(forward);
        kiss_fft_free(back);
    }
    Plans(const Plans&) = delete;
    Plans& operator=(const Plans&) = delete;

    kiss_fft_cfg forward;
    kiss_fft_cfg back;
};

CSynthesis::Station::Station() : samples(static_cast<std::size_t>(kLines)) {}

CSynthesis::CSynthesis(std::uint32_t rate_Hz)
    : plans_(std::make_unique<Plans>(rate_Hz / static_cast<std::uint32_t>(kLine_Hz))),
      narrow_(static_cast<std::size_t>(kLines)),
      wide_(rate_Hz / static_cast<std::uint32_t>(kLine_Hz)),
      made_(wide_.size()) {}

CSynthesis::~CSynthesis() = default;

bool CSynthesis::Reaches(long line) const {
    return std::labs(line) < static_cast<long>(wide_.size() / 2) + kReach;
}

// A tuner's filter: what is beyond the stream does not fold back into it.
float CSynthesis::Edge(long line) const {
    const auto half = static_cast<float>(wide_.size() / 2);
    return Taper(static_cast<float>(std::labs(line)), half - std::max(40.0F, 0.06F * half), half);
}

void CSynthesis::Begin() {
    std::fill(wide_.begin(), wide_.end(), Complex());
}

void CSynthesis::Add(const Station& station, long line, float size) {
    kiss_fft(plans_->forward, In(station.samples), Out(&narrow_));
    // The station's place turns on by three quarters of a turn for each line and block.
    constexpr Complex kQuarters[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    const auto turned = (static_cast<std::uint64_t>(line & 3) * 3 * (block_ & 3)) & 3;
    const Complex factor = size * kQuarters[turned];
    const Mask& mask = TheMask();
    const auto half = static_cast<long>(wide_.size() / 2);
    const long first = std::max(-kReach, 1 - half - line);
    const long last = std::min(kReach, half - 1 - line);
    for (long k = first; k <= last; ++k) {
        const long place = line + k;
        const Complex value = narrow_[static_cast<std::size_t>(k < 0 ? k + kLines : k)] *
                              mask.lines[static_cast<std::size_t>(k + kReach)] * factor;
        wide_[static_cast<std::size_t>(place < 0 ? place + 2 * half : place)] += value * Edge(place);
    }
}

void CSynthesis::End(std::complex<float>* samples) {
    kiss_fft(plans_->back, In(wide_), Out(&made_));
    std::copy(made_.end() - static_cast<std::ptrdiff_t>(BlockSamples()), made_.end(), samples);
    ++block_;
}

void CSynthesis::Shift(Station* station) {
    std::copy(station->samples.begin() + kStationBlock, station->samples.end(), station->samples.begin());
}

}  // namespace ether
