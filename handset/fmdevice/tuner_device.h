// The COM object of the tuner device. Each operation is one platform call, writes one line to the tuner log
// and lets no exception out (E_OUTOFMEMORY, E_UNEXPECTED). Results are those of the receiver (receiver.h),
// and E_POINTER for a null pointer. Any thread.
#pragma once

#include <atomic>
#include <memory>

#include "handset/fmdevice/receiver.h"
#include "handset/include/tuner_slots.h"

namespace fm {

// Creates a device on the receiver of this process and asks it for an interface. `*out` is null on failure:
// E_NOINTERFACE, E_OUTOFMEMORY, or E_FAIL with the fault "create".
HRESULT CreateTunerDevice(REFIID iid, void** out);

class CTunerDevice final : public ITunerSlots {
  public:
    explicit CTunerDevice(std::shared_ptr<CReceiver> receiver);
    CTunerDevice(const CTunerDevice&) = delete;
    CTunerDevice& operator=(const CTunerDevice&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    // Only the last one is a line in the log; the others are COM's own bookkeeping.
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetVolume(std::uint32_t* percent) override;
    HRESULT STDMETHODCALLTYPE GetChannel(std::uint32_t* channel) override;
    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE SetChannel(std::uint32_t channel) override;
    HRESULT STDMETHODCALLTYPE Initialize() override;
    HRESULT STDMETHODCALLTYPE Reserved() override;
    HRESULT STDMETHODCALLTYPE SetSpeaker(BOOL on) override;
    HRESULT STDMETHODCALLTYPE SetBTAudio(BOOL on) override;
    HRESULT STDMETHODCALLTYPE SetMute(BOOL mute) override;
    HRESULT STDMETHODCALLTYPE SetVolume(std::uint32_t percent) override;
    HRESULT STDMETHODCALLTYPE SeekNext() override;
    HRESULT STDMETHODCALLTYPE SeekPrev() override;
    HRESULT STDMETHODCALLTYPE GetSignal(std::int32_t* level) override;
    HRESULT STDMETHODCALLTYPE GetRDSData(WCHAR* text, std::int32_t* kind) override;
    HRESULT STDMETHODCALLTYPE GetStereo() override;
    HRESULT STDMETHODCALLTYPE GetAFCount(std::int32_t* count) override;
    HRESULT STDMETHODCALLTYPE GetAFItem(std::int32_t index, WCHAR* text) override;
    HRESULT STDMETHODCALLTYPE GetRDSInfo(RdsServices* services) override;
    HRESULT STDMETHODCALLTYPE GetPTYText(WCHAR* text) override;

  private:
    ~CTunerDevice();

    std::atomic<ULONG> references_{1};
    const std::shared_ptr<CReceiver> receiver_;
};

}  // namespace fm
