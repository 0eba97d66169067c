// How often the programs of a handset have begun to write a value that is asked for with every paint: a count
// in memory that they share, by which who keeps what he has read sees at no cost whether to look again. Host
// code only.
#pragma once

#include <atomic>
#include <cstdint>

#include "handset/state/shared_memory.h"

namespace handset {

// The counts of the handset whose state key is the present one (see StateKeyPath). Any thread.
class CWriteCount {
  public:
    CWriteCount() : memory_(L"Writes", sizeof(Counts)) {}

    // False: there is no memory to share, and nothing is counted.
    explicit operator bool() const { return static_cast<bool>(memory_); }
    // To be kept with what is looked up after the call.
    [[nodiscard]] std::uint64_t Ended() const { return Shared().ended.load(); }
    // Whether what was looked up after `ended` was taken holds still. A write that is under way may be seen
    // by a look or not, so while one is nothing holds; one whose program has died in it is under way for
    // good.
    [[nodiscard]] bool Holds(std::uint64_t ended) const { return Shared().begun.load() == ended; }
    void Begin() const { ++Shared().begun; }
    void End() const { ++Shared().ended; }

  private:
    using Counter = std::atomic<std::uint64_t>;
    static_assert(Counter::is_always_lock_free, "programs share it");
    struct Counts {
        Counter begun;
        Counter ended;
    };
    [[nodiscard]] Counts& Shared() const { return *static_cast<Counts*>(memory_.data()); }

    CSharedMemory memory_;
};

// Lives while such a value is written. Where there is no memory to count in, the write is seen a moment
// later.
class CCountedWrite {
  public:
    CCountedWrite() {
        if (count_) count_.Begin();
    }
    ~CCountedWrite() {
        if (count_) count_.End();
    }
    CCountedWrite(const CCountedWrite&) = delete;
    CCountedWrite& operator=(const CCountedWrite&) = delete;

  private:
    const CWriteCount count_;
};

}  // namespace handset
