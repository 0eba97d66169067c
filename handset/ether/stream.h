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

// What a stick's server takes from the bus at a time, in bytes.
inline constexpr std::size_t kBusBuffer_bytes = 262144;
// So many wait for a client that is slow; after that the oldest is lost.
inline constexpr std::size_t kMostBuffers = 8;

// One client's, from its greeting on.
class CStream {
  public:
    // `now_s`: of any clock that goes evenly. The air is not owned.
    CStream(CAir* air, double crystal_ppm, double now_s);

    void Take(const std::uint8_t* bytes, std::size_t count, double now_s);
    // Samples up to that time. What a host did not come to in kLongestDelay_s is left out, as by a stick.
    void Advance(double now_s);
    static constexpr double kLongestDelay_s = 0.3;

    // What is to be sent next, and that so much of it was.
    [[nodiscard]] const std::uint8_t* Front() const;
    [[nodiscard]] std::size_t FrontSize() const;
    void Sent(std::size_t bytes);

    // Seconds of samples that were not made in time, and buffers that no client took.
    [[nodiscard]] double Late_s() const { return late_s_; }
    [[nodiscard]] std::size_t LostBuffers() const { return lostBuffers_; }

  private:
    void ShowWindow(double now_s);

    CAir* air_;
    CStick stick_;
    CCommandReader reader_;
    double begin_s_;
    double samples_ = 0;  // since then
    std::vector<std::uint8_t> filling_;
    std::deque<std::vector<std::uint8_t>> waiting_;
    std::size_t sent_ = 0;  // of the first that waits
    double late_s_ = 0;
    std::size_t lostBuffers_ = 0;
};

}  // namespace ether
