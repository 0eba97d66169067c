// The samples of the air as a stick's server hands them on: at the pace of the real clock, in buffers of the
// bus. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "handset/ether/air.h"
#include "handset/ether/command_reader.h"
#include "handset/ether/stick.h"

namespace ether {

// What goes wrong with the stick, its server or the way to it.
struct StreamFaults {
    bool away = false;      // clients are sent away at once
    bool greeting = false;  // a new client is greeted as by a server of another kind
    bool stall = false;     // nothing is sent, though the connection stands
    bool slow = false;      // every second buffer is lost on the way
    bool garbage = false;   // any bytes come in the place of the samples
};

struct StreamOptions {
    double crystal_ppm = 0;  // by which the stick's clock is too fast
    // What is handed on at a time. A stick's server takes this much from the bus; less of it comes sooner.
    std::size_t buffer_bytes = 262144;
};
inline constexpr std::size_t kLeastBuffer_bytes = 16384;
inline constexpr std::size_t kMostBuffer_bytes = 262144;
// So much waits for a client that is slow; after that the oldest buffer is lost.
inline constexpr std::size_t kMostWaiting_bytes = 8 * kMostBuffer_bytes;

// One client's, from its greeting on.
class CStream {
  public:
    // `now_s`: of any clock that goes evenly. The air is not owned.
    CStream(CAir* air, const StreamOptions& options, const StreamFaults& faults, double now_s);
    void SetFaults(const StreamFaults& faults) { faults_ = faults; }

    void Take(const std::uint8_t* bytes, std::size_t count, double now_s);
    // Samples up to that time. What a host did not come to in kLongestDelay_s is left out, as by a stick.
    void Advance(double now_s);
    static constexpr double kLongestDelay_s = 0.3;

    // What is to be sent next, and that so much of it was.
    [[nodiscard]] const std::uint8_t* Front() const;
    [[nodiscard]] std::size_t FrontSize() const;
    void Sent(std::size_t bytes);

    // Seconds of samples that were not made in time, how often some were late by more than kDelay_s, and
    // buffers that no client took.
    [[nodiscard]] double Late_s() const { return late_s_; }
    [[nodiscard]] std::size_t Delays() const { return delays_; }
    static constexpr double kDelay_s = 0.05;
    [[nodiscard]] std::size_t LostBuffers() const { return lostBuffers_; }

  private:
    void ShowWindow(double now_s);
    void Spoil(std::size_t from);
    void HandOn();

    CAir* air_;
    std::size_t buffer_bytes_;
    StreamFaults faults_;
    std::uint64_t random_ = 1;   // of the garbage
    std::uint64_t buffers_ = 0;  // that were filled
    CStick stick_;
    CCommandReader reader_;
    double begin_s_;
    double samples_ = 0;  // since then
    std::vector<std::uint8_t> filling_;
    std::deque<std::vector<std::uint8_t>> waiting_;
    std::size_t sent_ = 0;  // of the first that waits
    double late_s_ = 0;
    std::size_t delays_ = 0;
    std::size_t lostBuffers_ = 0;
};

}  // namespace ether
