#include "handset/ether/stream.h"

#include <utility>

namespace ether {

CStream::CStream(CAir* air, const StreamOptions& options, double now_s)
    : air_(air), buffer_bytes_(options.buffer_bytes), stick_(options.crystal_ppm), begin_s_(now_s) {
    const auto greeting = CStick::Greeting();
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
    if (behind_s > kLongestDelay_s) {
        air_->Pass(behind_s);
        late_s_ += behind_s;
        begin_s_ += behind_s;
    }
    while (samples_ / rate_Hz < now_s - begin_s_) {
        samples_ += static_cast<double>(air_->Read(&filling_));
        if (filling_.size() < buffer_bytes_) continue;
        const auto end = filling_.begin() + static_cast<std::ptrdiff_t>(buffer_bytes_);
        waiting_.emplace_back(filling_.begin(), end);
        filling_.erase(filling_.begin(), end);
        if (waiting_.size() * buffer_bytes_ <= kMostWaiting_bytes) continue;
        // One that is half sent has to be sent whole, or I and Q would change places.
        waiting_.erase(waiting_.begin() + (sent_ > 0 ? 1 : 0));
        ++lostBuffers_;
    }
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
