// How often the programs of a handset have written to its part of the host's registry: a count in memory that
// they share, so that a program that keeps what it has read sees at no cost whether to look again.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "handset/state/shared_memory.h"

namespace handset {

// The count of the handset whose state key is the present one (see StateKeyPath). Any thread.
class CStateChanges {
  public:
    CStateChanges();

    // False: there is no memory to share, and nothing is counted.
    explicit operator bool() const { return static_cast<bool>(memory_); }
    [[nodiscard]] std::uint64_t Count() const { return Shared().load(); }
    void Add() const { ++Shared(); }

  private:
    using Counter = std::atomic<std::uint64_t>;
    static_assert(Counter::is_always_lock_free, "programs share it");
    [[nodiscard]] Counter& Shared() const { return *static_cast<Counter*>(memory_.data()); }

    CSharedMemory memory_;
};

// Said by whoever has written below the state key, or deleted something there, once that is done. Any thread;
// keeps the last error. Where it cannot be counted, the change is seen a moment later.
void TellOfStateChange() noexcept;

}  // namespace handset
