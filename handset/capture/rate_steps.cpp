// A steep filter costs by its length, and that goes with the rate it works at: where the new rate is low
// enough, a short filter halves the work of the steep one by going to a third of the rate first.
#include "handset/capture/rate_steps.h"

#include <map>
#include <mutex>

namespace capture {
namespace {

constexpr double kPassBand = 0.9;  // of the new half rate
constexpr std::uint32_t kMiddleRate_Hz = kSourceRate_Hz / 3;

RateSteps MakeSteps(std::uint32_t rate_Hz) {
    const double half_Hz = rate_Hz / 2.0;
    const double pass_Hz = half_Hz * kPassBand;
    const auto step = [&](std::uint32_t from_Hz, std::uint32_t to_Hz, double stop_Hz) {
        return std::make_shared<const CLowPassBank>(from_Hz, to_Hz, pass_Hz, stop_Hz);
    };
    if (rate_Hz >= kMiddleRate_Hz) return {step(kSourceRate_Hz, rate_Hz, half_Hz)};
    // The first has to stop only what would fold into the new band; the second takes the rest.
    return {step(kSourceRate_Hz, kMiddleRate_Hz, kMiddleRate_Hz - half_Hz),
            step(kMiddleRate_Hz, rate_Hz, half_Hz)};
}

}  // namespace

const RateSteps& RateStepsTo(std::uint32_t rate_Hz) {
    static std::mutex lock;  // guards made; what is in it stays as it is
    static std::map<std::uint32_t, RateSteps> made;
    const std::lock_guard<std::mutex> guard(lock);
    auto& steps = made[rate_Hz];
    if (steps.empty()) steps = MakeSteps(rate_Hz);
    return steps;
}

}  // namespace capture
