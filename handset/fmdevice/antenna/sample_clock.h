// When the samples of a stick were taken, by the host's clock. Its server hands them on by the buffer, and a
// network brings them when it likes; what came soonest tells how the two clocks stand to each other, and so
// how much of what comes after the stick was sent elsewhere is still of the place before, however large the
// buffers are. Portable. One thread at a time; times are seconds of any clock that goes evenly.
#pragma once

#include <cstdint>
#include <optional>

namespace fm {

class CSampleClock {
  public:
    // `roundTrip_s`: to the server and back.
    CSampleClock(double bytesPerSecond, double roundTrip_s);

    // So many more have come by now.
    void Arrived(std::uint64_t bytes, double now_s);
    // The stick is sent elsewhere: for how many seconds what comes next is still of the place before.
    [[nodiscard]] double SendElsewhere(double now_s);

    // Another order that is sent, which the stick carries out before those that come next.
    void SendOther(double now_s);

  private:
    // The least of what was added for once to twice as long as it remembers.
    class CLeast {
      public:
        explicit CLeast(double remembers_s) : remembers_s_(remembers_s) {}
        void Begin(double value, double now_s);
        void Add(double value, double now_s);
        [[nodiscard]] double Value() const;

      private:
        double remembers_s_;
        double value_ = 0.0;
        double before_ = 0.0;
        double since_s_ = 0.0;
    };

    double bytesPerSecond_;
    double roundTrip_s_;
    std::uint64_t bytes_ = 0;
    // By how much an arrival was later than its number, at the least. What was lost on the way, or two
    // crystals, move it.
    CLeast least_s_;
    CLeast leastLately_s_;
    double last_s_ = 0.0;         // arrival
    double longestGap_s_ = 0.07;  // between two of them, of late
    double there_s_ = 0.0;        // when the stick has got to where it was sent last
};

}  // namespace fm
