// Where a source of samples leaves them and the radio takes them: half a second of them, for a radio that is
// late. Any thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "handset/fmdevice/antenna/air_receiver.h"
#include "handset/fmdevice/antenna/byte_ring.h"
#include "handset/state/locks.h"

namespace fm {

class CSampleStream {
  public:
    // By the source: a stream begins, goes on and ends; and how it is, in a plain sentence.
    void Begin(const StreamForm& form);
    void Write(const std::uint8_t* bytes, std::size_t count);
    void End();
    void Say(const std::string& condition);

    // By the radio:
    struct Taken {
        std::uint64_t stream = 0;  // counts the streams; 0: there is none
        StreamForm form;
        std::uint64_t lost = 0;  // bytes before those that were taken
        // Of so many bytes.
        [[nodiscard]] double Seconds(std::uint64_t bytes) const {
            return static_cast<double>(bytes / sdr::BytesOf(form.form)) / form.rate_Hz;
        }
    };
    // Waits until there is as much as `seconds` of the stream, but no longer than `timeout_ms` and not past a
    // Wake; replaces `bytes` by what there is of it.
    Taken Take(double seconds, DWORD timeout_ms, std::vector<std::uint8_t>* bytes);
    // How much is held.
    double Held_s();
    // By who has something else for the radio to do.
    void Wake();
    std::string Condition();

  private:
    handset::CLock lock_;  // guards all of the following
    handset::CCondition arrived_;
    std::uint64_t streams_ = 0;
    StreamForm form_;
    std::optional<CByteRing> ring_;  // of the present stream
    bool woken_ = false;
    std::string condition_;
};

inline constexpr char kPlays[] = "plays";

// A source writes into its stream from its construction to its destruction, and says how it goes.
class ISampleSource {
  public:
    virtual ~ISampleSource() = default;
    // Where the stream is to be; gives for how many seconds the samples that are taken next are still of the
    // place before. Does not wait. By the radio.
    [[nodiscard]] virtual double SetCentre(double centre_Hz) = 0;
    virtual void SetGain(std::uint32_t step, std::int32_t correction_ppm, bool bias) = 0;
};

}  // namespace fm
