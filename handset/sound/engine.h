// The receiver's sound: one thread renders it in blocks on the handset's clock and hands it to the ring
// behind the taps, to the sound log and to the host's loudspeakers. With none of them it renders nothing.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "handset/sound/log.h"
#include "handset/sound/ring.h"
#include "handset/sound/speaker.h"
#include "handset/state/locks.h"

namespace sound {

// What the receiver is to sound like from now on.
struct SoundScene {
    // Gives the frames from a position of the handset's clock on, floats from -1 to 1, left and right in
    // turn. Called by the sound thread alone; positions never go back. None: the receiver is off.
    std::function<void(std::uint64_t position, float* frames, std::size_t count)> render;
    float gain = 0;         // 0 to 1: volume, and 0 while muted or seeking
    bool stereoOut = true;  // headset; the loudspeaker and the Bluetooth link give the mean of both sides
    std::wstring logPath;   // device path, empty: no sound log
    void (*report)(std::string_view utf8) = nullptr;  // what is wrong with the log, in a sentence
};

class CSoundEngine {
  public:
    // The one of this process; it is never destroyed, for at process end its thread may be anywhere.
    static CSoundEngine& Instance();

    // The sound thread runs while there are users (the receiver, each tap).
    void AddUser();
    void RemoveUser();

    // Holds from this moment of the handset's clock on, however late the sound of it is made.
    void Show(std::shared_ptr<const SoundScene> scene);

    // See tap.h.
    std::uint32_t OpenTap(std::uint64_t* position);
    std::uint32_t ReadTap(std::uint32_t tap, std::uint64_t* position, std::int16_t* samples,
                          std::uint32_t frames, std::uint32_t timeout_ms);
    void CloseTap(std::uint32_t tap);

  private:
    CSoundEngine();
    void Run();
    // With lock_ held, which they let go while they close, render or play:
    void Rest(std::unique_lock<handset::CLock>* lock);
    void MakeBlock(std::unique_lock<handset::CLock>* lock);
    // With lock_ held:
    bool SpeakerWanted(const SoundScene& scene) const;
    void FollowRate();
    bool WorkWanted() const;
    bool RoomForBlock() const;
    bool SomebodyAwaits(std::uint64_t position) const;
    void Expect(std::uint32_t tap, std::uint64_t end, std::uint32_t wanted, std::uint32_t timeout_ms);
    DWORD IdleTime_ms(std::uint64_t now);
    void TakeScenes(std::uint64_t upTo);
    void CatchUp(std::uint64_t now);
    std::uint64_t RealMilliseconds(std::uint64_t frames) const;
    // On the sound thread, without the lock.
    void OutputBlock(const SoundScene& scene, const std::int16_t* samples);
    void RenderBlock(const SoundScene& scene, std::uint64_t position, std::int16_t* samples);

    // Guards everything below it but what is the sound thread's own. Never held while rendering or playing.
    // The receiver's lock may be held outside it, never the other way round.
    handset::CLock lock_;
    handset::CCondition wake_;     // to the sound thread: something to look at
    handset::CCondition arrived_;  // to the readers: what one of them awaits, or a tap closed
    handset::CLock threadLock_;    // guards users_ and thread_; outside lock_
    int users_ = 0;
    std::thread thread_;
    bool stop_ = false;
    bool working_ = false;
    struct LaterScene {
        std::uint64_t from;  // position
        std::shared_ptr<const SoundScene> scene;
    };
    std::shared_ptr<const SoundScene> scene_;  // of the block in hand; none: the receiver is off
    std::deque<LaterScene> later_;             // of blocks that are still to be made
    CSoundRing ring_;
    struct Tap {
        std::uint64_t reached;   // the position that the reader has come to
        std::uint64_t awaited;   // what it waits for, or kNothingAwaited
        std::uint64_t expected;  // what it waits for next, or 0: everything as it comes
        std::uint32_t usual;     // frames of its last read
    };
    static constexpr std::uint64_t kNothingAwaited = UINT64_MAX;
    std::map<std::uint32_t, Tap> taps_;
    std::uint32_t lastTap_ = 0;
    std::uint64_t speakerRetry_ms_ = 0;  // real time before which the loudspeaker is not tried again
    std::uint32_t rate_;                 // of the clock, as the sound thread knows it
    std::uint64_t patientTo_ = 0;        // up to there the sound waits for every reader, at rate 1 as well
    const bool hostSound_;  // the host's loudspeakers are to be tried; state value "HostSound" 0: never

    // The sound thread's own.
    CSoundLog log_;
    CSpeaker speaker_;
    float gainBefore_ = 0;
};

}  // namespace sound
