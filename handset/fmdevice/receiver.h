// The receiver of the handset: its switches, its tuning and its memory, over a front end. One receiver stands
// behind all tuner devices of a process, as one chip would.
//
// Any thread. One lock guards all of it and the front end; no operation holds it while it waits or plays.
// None waits longer than a second, and a tuning overtakes what waits for the one before. Results: S_OK for
// success; S_FALSE where nothing is wrong but there is nothing either; else
//   kNotReady     the receiver is not powered up (no Initialize yet, or after Close)
//   kNoStation    a seek found no other station; the channel stays
//   E_ABORT       a seek was overtaken by another tuning, whose channel stays
//   E_INVALIDARG  a value out of range; nothing changes
//   E_FAIL        an injected fault (state value "Fault")
// Out values are 0 or empty after a failure. No pointer may be null.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "handset/fmdevice/band/front_end.h"
#include "handset/include/tuner_slots.h"
#include "handset/sound/engine.h"

namespace fm {

inline constexpr HRESULT kNotReady = __HRESULT_FROM_WIN32(ERROR_NOT_READY);
inline constexpr HRESULT kNoStation = __HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
inline constexpr std::uint32_t kFullVolume = 100;  // percent

class CReceiver {
  public:
    CReceiver(std::shared_ptr<ITunerFrontEnd> frontEnd, sound::CSoundEngine* sound);
    ~CReceiver();
    CReceiver(const CReceiver&) = delete;
    CReceiver& operator=(const CReceiver&) = delete;

    // Powers up with the station and the volume of the last time (tuner_memory.h), not muted, sound to the
    // headset; no effect while it is up already.
    HRESULT Initialize();
    HRESULT Close();
    HRESULT SetChannel(std::uint32_t channel);
    HRESULT GetChannel(std::uint32_t* channel);
    // Takes 0.1 to 0.3 s of handset time on the simulated band and up to a second of real time on the air,
    // during which the radio is silent.
    HRESULT Seek(bool up);
    HRESULT SetVolume(std::uint32_t percent);
    HRESULT GetVolume(std::uint32_t* percent);
    HRESULT SetMute(bool mute);
    HRESULT SetSpeaker(bool on);
    HRESULT SetBTAudio(bool on);
    // Of what is tuned, measured since: so alternatives are compared by tuning to each and asking.
    HRESULT GetSignal(std::int32_t* level);
    // S_OK: stereo.
    HRESULT GetStereo();
    // The texts as their groups arrive, each once and then the next; the last one again while none is
    // complete. S_FALSE before the first (at most 0.8 s after tuning) and while the signal drops out.
    HRESULT GetRDSData(std::wstring* text, std::int32_t* kind);
    // The list and the services are what is known of the station, at any level: a receiver keeps them from
    // better moments.
    HRESULT GetAFCount(std::int32_t* count);
    HRESULT GetAFItem(std::int32_t index, std::wstring* text);
    HRESULT GetRDSInfo(RdsServices* services);
    HRESULT GetPTYText(std::wstring* text);

    // For the handset's other parts; takes nothing away from who asks for texts. Channel 0 and no name while
    // the receiver is not powered up.
    void GetStation(std::uint32_t* channel, std::string* name);

  private:
    struct Switches {
        std::uint32_t channel = kBandBottom_10kHz;
        std::uint32_t volume = 0;  // percent
        bool mute = false;
        bool speaker = false;
        bool bluetooth = false;
    };
    // With lock_ held:
    HRESULT Enter();  // S_OK when powered up, with fresh conditions; else kNotReady
    void Show();
    void Tuned(std::uint32_t channel);

    template <typename Change>
    HRESULT Switch(Change change);

    std::mutex lock_;
    const std::shared_ptr<ITunerFrontEnd> frontEnd_;
    sound::CSoundEngine* const sound_;
    bool up_ = false;
    Switches now_;
    std::uint64_t tunings_ = 0;  // counts what may overtake a seek
    int seeks_ = 0;              // under way
    std::uint64_t lookedAt_ms_ = 0;
    std::wstring soundLog_;
};

}  // namespace fm
