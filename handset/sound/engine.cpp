// The sound thread.
#include "handset/sound/engine.h"

#include <algorithm>
#include <array>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/sound/samples.h"
#include "handset/sound/tap.h"
#include "handset/state/handset_state.h"

namespace sound {
namespace {

// Real time after which the sound thread looks again, and within what bounds it sleeps for patient readers.
constexpr DWORD kIdleBlock_ms = 20;
constexpr std::uint64_t kShortestIdle_ms = 5;
constexpr std::uint64_t kLongestIdle_ms = 100;
constexpr DWORD kSpeakerRetry_ms = 10'000;
// Sound that only a loudspeaker would have played is let go when it is this late.
constexpr std::uint64_t kLatestForSpeaker_frames = kSampleRate_Hz / 2;

std::uint64_t NowFrame() {
    return FrameAt(HandsetMilliseconds());
}

}  // namespace

CSoundEngine& CSoundEngine::Instance() {
    static CSoundEngine& engine = *new CSoundEngine;
    return engine;
}

CSoundEngine::CSoundEngine()
    : ring_(kSoundTapCapacity_frames),
      rate_(HandsetClockRate()),
      hostSound_(handset::StateDword(L"HostSound", 1) != 0) {}

// What a fast clock has left to be made is more than the ring holds, and comes at once when it goes at the
// pace of life again: no reader is to lose it.
void CSoundEngine::FollowRate() {
    const std::uint32_t rate = HandsetClockRate();
    if (rate == rate_) return;
    rate_ = rate;
    patientTo_ = NowFrame();
}

void CSoundEngine::AddUser() {
    const std::lock_guard<handset::CLock> lock(threadLock_);
    if (users_ == 0) {
        stop_ = false;
        thread_ = handset::WorkerThread([this] { Run(); },
                                        [this] {
                                            const std::lock_guard<handset::CLock> inner(lock_);
                                            return !stop_;
                                        });
    }
    ++users_;
}

void CSoundEngine::RemoveUser() {
    const std::lock_guard<handset::CLock> lock(threadLock_);
    if (--users_ > 0) return;
    {
        const std::lock_guard<handset::CLock> inner(lock_);
        stop_ = true;
    }
    wake_.NotifyAll();
    thread_.join();
}

void CSoundEngine::Show(std::shared_ptr<const SoundScene> scene) {
    {
        const std::lock_guard<handset::CLock> lock(lock_);
        later_.push_back({NowFrame(), std::move(scene)});
        if (!working_) TakeScenes(later_.back().from);
    }
    wake_.NotifyAll();
}

std::uint32_t CSoundEngine::OpenTap(std::uint64_t* position) {
    AddUser();
    std::uint32_t tap = 0;
    try {
        const std::lock_guard<handset::CLock> lock(lock_);
        if (!working_) ring_.SkipTo(NowFrame());
        working_ = true;
        *position = ring_.End();
        tap = ++lastTap_;
        taps_[tap] = {*position, kNothingAwaited, 0, 0};
    } catch (...) {
        RemoveUser();
        throw;
    }
    wake_.NotifyAll();
    return tap;
}

std::uint32_t CSoundEngine::ReadTap(std::uint32_t tap, std::uint64_t* position, std::int16_t* samples,
                                    std::uint32_t frames, std::uint32_t timeout_ms) {
    std::unique_lock<handset::CLock> lock(lock_);
    const auto wanted = std::min<std::uint32_t>(frames, kSoundTapCapacity_frames / 2);
    const std::uint64_t began = GetTickCount64();
    const auto there = [&] {
        const auto waiting = taps_.find(tap);
        if (waiting == taps_.end()) return true;
        const std::uint64_t end = std::max(*position, ring_.Begin()) + wanted;
        waiting->second.awaited = end;
        return ring_.End() >= end;
    };
    Expect(tap, std::max(*position, ring_.Begin()) + wanted, wanted, timeout_ms);
    while (!there()) {
        const std::uint64_t waited = GetTickCount64() - began;
        if (waited >= timeout_ms) break;
        arrived_.WaitFor(&lock, static_cast<DWORD>(timeout_ms - waited));
    }
    const auto reader = taps_.find(tap);
    if (reader == taps_.end()) return 0;
    const bool awaitedRoom = !RoomForBlock();
    const auto count = static_cast<std::uint32_t>(ring_.Read(position, samples, frames));
    reader->second.reached = *position + count;
    reader->second.awaited = kNothingAwaited;
    if (awaitedRoom) wake_.NotifyAll();
    return count;
}

void CSoundEngine::CloseTap(std::uint32_t tap) {
    {
        const std::lock_guard<handset::CLock> lock(lock_);
        if (taps_.erase(tap) == 0) return;
    }
    wake_.NotifyAll();
    arrived_.NotifyAll();
    RemoveUser();
}

bool CSoundEngine::SpeakerWanted(const SoundScene& scene) const {
    // Faster than life nothing can be listened to.
    return hostSound_ && rate_ == 1 && scene.render && scene.gain > 0 && GetTickCount64() >= speakerRetry_ms_;
}

bool CSoundEngine::WorkWanted() const {
    if (!taps_.empty() || !later_.empty()) return true;
    return scene_ && scene_->render && (!scene_->logPath.empty() || SpeakerWanted(*scene_));
}

bool CSoundEngine::RoomForBlock() const {
    if (rate_ == 1 && ring_.End() >= patientTo_) return true;
    return std::all_of(taps_.begin(), taps_.end(), [this](const auto& tap) {
        return ring_.End() + kBlockFrames <= tap.second.reached + ring_.Capacity();
    });
}

// A reader that is woken for every block spends more on that than on the sound.
bool CSoundEngine::SomebodyAwaits(std::uint64_t position) const {
    return std::any_of(taps_.begin(), taps_.end(),
                       [position](const auto& tap) { return tap.second.awaited <= position; });
}

// A reader that wants the same again and again is made its next sound when that is complete, not block by
// block. One that may leave before, with what there is, or that wants less this time is seen to at once.
void CSoundEngine::Expect(std::uint32_t tap, std::uint64_t end, std::uint32_t wanted,
                          std::uint32_t timeout_ms) {
    const auto reader = taps_.find(tap);
    if (reader == taps_.end()) return;
    const std::uint64_t now = NowFrame();
    const bool patient = timeout_ms > RealMilliseconds(end - std::min(end, now));
    const bool sooner = !patient || end < reader->second.expected;
    reader->second.expected = patient ? end : 0;
    reader->second.usual = wanted;
    if (sooner) wake_.NotifyAll();
}

DWORD CSoundEngine::IdleTime_ms(std::uint64_t now) {
    const bool heard = scene_ && scene_->render && (!scene_->logPath.empty() || SpeakerWanted(*scene_));
    if (heard || taps_.empty() || !RoomForBlock()) return kIdleBlock_ms;
    std::uint64_t idle_ms = kLongestIdle_ms;
    for (auto& [number, tap] : taps_) {
        if (tap.expected == 0) return kIdleBlock_ms;
        if (tap.expected <= ring_.End()) tap.expected += tap.usual;
        const std::uint64_t due = tap.expected - std::min(tap.expected, now);
        idle_ms = std::min(idle_ms, RealMilliseconds(due));
    }
    return static_cast<DWORD>(std::max(idle_ms, kShortestIdle_ms));
}

// Until so many frames have been heard, rounded up.
std::uint64_t CSoundEngine::RealMilliseconds(std::uint64_t frames) const {
    const std::uint64_t aSecond = static_cast<std::uint64_t>(kSampleRate_Hz) * rate_;
    return (frames * 1000 + aSecond - 1) / aSecond;
}

void CSoundEngine::TakeScenes(std::uint64_t upTo) {
    while (!later_.empty() && later_.front().from <= upTo) {
        scene_ = std::move(later_.front().scene);
        later_.pop_front();
    }
}

void CSoundEngine::CatchUp(std::uint64_t now) {
    const bool forSpeakerOnly = taps_.empty() && (!scene_ || scene_->logPath.empty());
    if (!working_ || (forSpeakerOnly && now > ring_.End() + kLatestForSpeaker_frames)) ring_.SkipTo(now);
    working_ = true;
}

void CSoundEngine::Run() {
    std::unique_lock<handset::CLock> lock(lock_);
    while (!stop_) {
        FollowRate();
        TakeScenes(ring_.End());
        if (!WorkWanted()) {
            Rest(&lock);
            continue;
        }
        const std::uint64_t now = NowFrame();
        CatchUp(now);
        if (now < ring_.End() + kBlockFrames || !RoomForBlock())
            wake_.WaitFor(&lock, IdleTime_ms(now));
        else
            MakeBlock(&lock);
    }
    working_ = false;
    lock.unlock();
    log_.Follow(L"", nullptr);
    speaker_.Close();
}

void CSoundEngine::Rest(std::unique_lock<handset::CLock>* lock) {
    working_ = false;
    lock->unlock();
    log_.Follow(L"", nullptr);
    speaker_.Close();
    gainBefore_ = 0;
    lock->lock();
    // The bound is for a loudspeaker that may have come back.
    if (!stop_ && !WorkWanted()) wake_.WaitFor(lock, kSpeakerRetry_ms);
}

void CSoundEngine::MakeBlock(std::unique_lock<handset::CLock>* lock) {
    std::array<std::int16_t, kBlockFrames * kChannels> samples;
    const auto scene = scene_ ? scene_ : std::make_shared<const SoundScene>();
    const std::uint64_t position = ring_.End();
    lock->unlock();
    RenderBlock(*scene, position, samples.data());
    lock->lock();
    ring_.Append(samples.data(), kBlockFrames);
    const bool play = SpeakerWanted(*scene);
    const bool awaited = SomebodyAwaits(ring_.End());
    lock->unlock();
    if (awaited) arrived_.NotifyAll();
    const bool failed = play && !speaker_.Open();
    if (!play) speaker_.Close();
    OutputBlock(*scene, samples.data());
    lock->lock();
    if (failed) speakerRetry_ms_ = GetTickCount64() + kSpeakerRetry_ms;
}

void CSoundEngine::RenderBlock(const SoundScene& scene, std::uint64_t position, std::int16_t* samples) {
    const float gain = scene.render && !HandsetPhoneSleeps() ? scene.gain : 0;
    if (gain == 0 && gainBefore_ == 0) {
        std::fill_n(samples, kBlockFrames * kChannels, std::int16_t{0});
        return;
    }
    std::array<float, kBlockFrames * kChannels> frames{};
    if (scene.render) scene.render(position, frames.data(), kBlockFrames);
    ToSamples(frames.data(), kBlockFrames, gainBefore_, gain, samples);
    gainBefore_ = gain;
}

void CSoundEngine::OutputBlock(const SoundScene& scene, const std::int16_t* samples) {
    log_.Follow(scene.render ? scene.logPath : L"", scene.report);
    if (!log_.IsOpen() && !speaker_.IsOpen()) return;
    std::array<std::int16_t, kBlockFrames * kChannels> heard;
    std::copy_n(samples, heard.size(), heard.begin());
    if (!scene.stereoOut) MixDown(heard.data(), kBlockFrames);
    log_.Write(heard.data(), kBlockFrames);
    speaker_.Play(heard.data());
}

}  // namespace sound

std::uint32_t HandsetSoundOpen(std::uint64_t* position) try {
    return position == nullptr ? 0 : sound::CSoundEngine::Instance().OpenTap(position);
} catch (...) {
    return handset::EdgeAnswer<std::uint32_t>();
}

std::uint32_t HandsetSoundRead(std::uint32_t tap, std::uint64_t* position, std::int16_t* samples,
                               std::uint32_t frames, std::uint32_t timeout_ms) try {
    if (position == nullptr || samples == nullptr) return 0;
    return sound::CSoundEngine::Instance().ReadTap(tap, position, samples, frames, timeout_ms);
} catch (...) {
    return handset::EdgeAnswer<std::uint32_t>();
}

void HandsetSoundClose(std::uint32_t tap) try { sound::CSoundEngine::Instance().CloseTap(tap); } catch (...) {
    handset::EdgeAnswer<void>();
}
