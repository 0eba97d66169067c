// The capture filter's stream: a thread that reads the receiver's sound, converts it and delivers what the
// stream control lets through.
#pragma once

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "handset/capture/graph/output_pin.h"
#include "handset/capture/graph/stream_control.h"
#include "handset/capture/source/sound_converter.h"
#include "handset/sound/wav.h"
#include "handset/state/locks.h"

namespace capture {

class CSoundPump {
  public:
    explicit CSoundPump(COutputPin* pin) : pin_(*pin) {}
    ~CSoundPump() { Close(); }

    // The filter's changes of state. Between Open and Close the thread reads; between Run and Halt it
    // delivers. E_FAIL when there is no sound to be had.
    HRESULT Open(const sound::WavShape& shape);
    // `start`: the handset's time at stream time 0. A start that lies ahead, for other filters to be ready,
    // is not waited for: what is heard now is stream time 0.
    void Run(REFERENCE_TIME start);
    void Halt();
    void Close();

    // Stream control; see IAMStreamControl. No time: now. Any thread but the pump's own.
    // A stop for a moment that has come, or is about to, returns when all sound up to it has been delivered.
    void RequestStart(const REFERENCE_TIME* time, DWORD cookie);
    void RequestStop(const REFERENCE_TIME* time, DWORD cookie);
    CStreamControl Control();

  private:
    // On the pump's thread.
    void Work();
    void Take(std::uint64_t position, const std::int16_t* frames, std::size_t count);
    bool BeginRun(std::uint64_t* position, const std::int16_t** frames, std::size_t* count);
    void Pass(const std::int16_t* samples, std::size_t frames);
    void Deliver(std::int64_t frame, const std::int16_t* samples, std::size_t frames);
    void Tell(const CStreamControl::Step& step);
    // With lock_ held.
    REFERENCE_TIME StreamTime() const;
    void AwaitStop(std::unique_lock<handset::CLock>* lock);

    COutputPin& pin_;
    std::thread thread_;
    std::uint32_t tap_ = 0;
    std::atomic<bool> closing_{false};
    sound::WavShape shape_;

    handset::CLock lock_;          // guards what follows up to the empty line; never held while delivering
    handset::CCondition changed_;  // the stream has moved on, or ended
    CStreamControl control_;
    bool running_ = false;
    std::uint32_t run_ = 0;       // counts the calls of Run
    REFERENCE_TIME zero_ = 0;     // the handset's time at stream time 0
    REFERENCE_TIME ranFrom_ = 0;  // and when this run began
    std::int64_t next_ = 0;       // the output frame that comes next; frame 0 is at stream time 0

    // The thread's own, while it runs.
    std::uint64_t position_ = 0;  // how far it has come on the tap
    std::uint32_t workedRun_ = 0;
    std::unique_ptr<CSoundConverter> converter_;
    std::vector<std::int16_t> output_;
    bool refused_ = false;        // whoever is connected takes no more in this run
    bool discontinuity_ = false;  // of the next sample
};

}  // namespace capture
