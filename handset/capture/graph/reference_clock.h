// The handset's clock as a graph takes it: its time in units of 100 ns, and its alarms.
#pragma once

#include <map>
#include <memory>

#include "handset/capture/graph/direct_show.h"
#include "handset/state/locks.h"

namespace capture {

// The handset's time now.
REFERENCE_TIME HandsetTime();

// A part of `owner`, which counts its references.
class CHandsetClock final : public IReferenceClock {
  public:
    explicit CHandsetClock(IUnknown* owner);
    ~CHandsetClock();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        return owner_.QueryInterface(iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }

    HRESULT STDMETHODCALLTYPE GetTime(REFERENCE_TIME* time) override;
    HRESULT STDMETHODCALLTYPE AdviseTime(REFERENCE_TIME base, REFERENCE_TIME stream, HEVENT event,
                                         DWORD_PTR* cookie) override;
    HRESULT STDMETHODCALLTYPE AdvisePeriodic(REFERENCE_TIME start, REFERENCE_TIME period,
                                             HSEMAPHORE semaphore, DWORD_PTR* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD_PTR cookie) override;

  private:
    struct Alarm;
    static void CALLBACK OnAlarm(void* alarm, BOOLEAN);
    static void CALLBACK OnNewRate(void* self);
    HRESULT Set(REFERENCE_TIME due, REFERENCE_TIME period, HANDLE object, DWORD_PTR* cookie);
    void ForgetRung();

    IUnknown& owner_;
    handset::CLock lock_;  // guards alarms_ and lastCookie_
    std::map<DWORD_PTR, std::unique_ptr<Alarm>> alarms_;
    DWORD_PTR lastCookie_ = 0;
};

}  // namespace capture
