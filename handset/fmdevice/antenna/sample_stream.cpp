#include "handset/fmdevice/antenna/sample_stream.h"

#include <cmath>
#include <mutex>
#include <utility>

namespace fm {
namespace {

constexpr double kHeld_s = 0.5;

}  // namespace

void CSampleStream::Begin(const StreamForm& form) {
    const std::lock_guard<handset::CLock> guard(lock_);
    ++streams_;
    form_ = form;
    const std::size_t unit = sdr::BytesOf(form.form);
    ring_.emplace(static_cast<std::size_t>(kHeld_s * form.rate_Hz) * unit, unit);
    arrived_.NotifyAll();
}

void CSampleStream::Write(const std::uint8_t* bytes, std::size_t count) {
    const std::lock_guard<handset::CLock> guard(lock_);
    if (!ring_) return;
    ring_->Write(bytes, count);
    arrived_.NotifyAll();
}

void CSampleStream::End() {
    const std::lock_guard<handset::CLock> guard(lock_);
    ring_.reset();
    arrived_.NotifyAll();
}

void CSampleStream::Say(const std::string& condition) {
    const std::lock_guard<handset::CLock> guard(lock_);
    condition_ = condition;
}

std::string CSampleStream::Condition() {
    const std::lock_guard<handset::CLock> guard(lock_);
    return condition_;
}

double CSampleStream::Held_s() {
    const std::lock_guard<handset::CLock> guard(lock_);
    if (!ring_) return 0.0;
    return static_cast<double>(ring_->Held() / sdr::BytesOf(form_.form)) / form_.rate_Hz;
}

void CSampleStream::Wake() {
    const std::lock_guard<handset::CLock> guard(lock_);
    woken_ = true;
    arrived_.NotifyAll();
}

CSampleStream::Taken CSampleStream::Take(double seconds, DWORD timeout_ms, std::vector<std::uint8_t>* bytes) {
    std::unique_lock<handset::CLock> lock(lock_);
    const auto wanted = [&]() -> std::size_t {
        if (!ring_) return SIZE_MAX;
        return static_cast<std::size_t>(std::lround(seconds * form_.rate_Hz)) * sdr::BytesOf(form_.form);
    };
    const std::uint64_t began_ms = GetTickCount64();
    while (!std::exchange(woken_, false) && (!ring_ || ring_->Held() < wanted())) {
        const std::uint64_t waited_ms = GetTickCount64() - began_ms;
        if (waited_ms >= timeout_ms) break;
        arrived_.WaitFor(&lock, static_cast<DWORD>(timeout_ms - waited_ms));
    }
    bytes->clear();
    Taken taken;
    if (!ring_) return taken;
    taken.stream = streams_;
    taken.form = form_;
    taken.lost = ring_->TakeLost();
    bytes->resize(std::min(wanted(), ring_->Held()));
    ring_->Read(bytes->data(), bytes->size());
    return taken;
}

}  // namespace fm
