#include "handset/ether/stream.h"

#include <utility>

namespace ether {

CStream::CStream(CAir* air, const StreamOptions& options, const StreamFaults& faults, double now_s)
    : air_(air),
      buffer_bytes_(options.buffer_bytes),
      faults_(faults),
      stick_(options.crystal_ppm),
      begin_s_(now_s) {
    auto greeting = CStick::Greeting();
    if (faults.greeting) greeting.fill('?');
    waiting_.emplace_back(greeting.begin(), greeting.end());
    ShowWindow(now_s);
}

void CStream::ShowWindow(double now_s) {
    const Window window = stick_.View();
    if (window.rate_Hz != air_->Seen().rate_Hz || window.clockError_ppm != air_->Seen().clockError_ppm) {
        begin_s_ = now_s;
        samples_ = 0;
    }
    air_->SetWindow(window);
}

void CStream::Take(const std::uint8_t* bytes, std::size_t count, double now_s) {
    std::vector<Command> commands;
    reader_.Feed(bytes, count, &commands);
    for (const Command& command : commands) stick_.Apply(command);
    if (!commands.empty()) ShowWindow(now_s);
}

void CStream::Advance(double now_s) {
    const Window& window = air_->Seen();
    const double rate_Hz = window.rate_Hz * (1 + window.clockError_ppm * 1e-6);
    const double behind_s = now_s - begin_s_ - samples_ / rate_Hz;
    if (behind_s > kDelay_s) ++delays_;
    if (behind_s > kLongestDelay_s) {
        air_->Pass(behind_s);
        late_s_ += behind_s;
        begin_s_ += behind_s;
    }
    while (samples_ / rate_Hz < now_s - begin_s_) {
        const std::size_t before = filling_.size();
        samples_ += static_cast<double>(air_->Read(&filling_));
        if (faults_.garbage) Spoil(before);
        if (filling_.size() >= buffer_bytes_) HandOn();
    }
}

void CStream::Spoil(std::size_t from) {
    for (std::size_t i = from; i < filling_.size(); ++i) {
        random_ = random_ * 6364136223846793005U + 1442695040888963407U;
        filling_[i] = static_cast<std::uint8_t>(random_ >> 56);
    }
}

void CStream::HandOn() {
    const auto end = filling_.begin() + static_cast<std::ptrdiff_t>(buffer_bytes_);
    const bool lost = faults_.slow && ++buffers_ % 2 == 0;
    if (!lost) waiting_.emplace_back(filling_.begin(), end);
    filling_.erase(filling_.begin(), end);
    if (waiting_.size() * buffer_bytes_ <= kMostWaiting_bytes) return;
    // One that is half sent has to be sent whole, or I and Q would change places.
    waiting_.erase(waiting_.begin() + (sent_ > 0 ? 1 : 0));
    ++lostBuffers_;
}

const std::uint8_t* CStream::Front() const {
    return waiting_.empty() ? nullptr : waiting_.front().data() + sent_;
}

std::size_t CStream::FrontSize() const {
    return waiting_.empty() ? 0 : waiting_.front().size() - sent_;
}

void CStream::Sent(std::size_t bytes) {
    sent_ += bytes;
    if (waiting_.empty() || sent_ < waiting_.front().size()) return;
    waiting_.pop_front();
    sent_ = 0;
}

}  // namespace ether
