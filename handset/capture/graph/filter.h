// What the recording filters have in common: IBaseFilter with its states, its clock and its place in a graph.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/direct_show.h"
#include "handset/capture/graph/module.h"
#include "handset/state/locks.h"

namespace capture {

class CPin;

class CFilter : public IBaseFilter {
  public:
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* classId) override;

    HRESULT STDMETHODCALLTYPE Stop() override;
    HRESULT STDMETHODCALLTYPE Pause() override;
    HRESULT STDMETHODCALLTYPE Run(REFERENCE_TIME start) override;
    HRESULT STDMETHODCALLTYPE GetState(DWORD timeout_ms, FILTER_STATE* state) override;
    HRESULT STDMETHODCALLTYPE SetSyncSource(IReferenceClock* clock) override;
    HRESULT STDMETHODCALLTYPE GetSyncSource(IReferenceClock** clock) override;

    HRESULT STDMETHODCALLTYPE EnumPins(IEnumPins** out) override;
    HRESULT STDMETHODCALLTYPE FindPin(LPCWSTR id, IPin** out) override;
    HRESULT STDMETHODCALLTYPE QueryFilterInfo(FILTER_INFO* info) override;
    HRESULT STDMETHODCALLTYPE JoinFilterGraph(IFilterGraph* graph, LPCWSTR name) override;
    HRESULT STDMETHODCALLTYPE QueryVendorInfo(LPWSTR* info) override;

    // For the filter's pins. The lock guards connections, formats and the change of states; a thread that
    // carries samples never takes it, for a change of state waits for that thread.
    handset::CRecursiveLock& Lock() { return lock_; }
    bool Stopped() const { return state_ == State_Stopped; }
    bool Running() const { return state_ == State_Running; }
    bool Active() const { return state_ != State_Stopped; }
    IFilterGraph* Graph() const { return graph_; }
    // Sends an event to the graph. Any thread.
    void Notify(long code, LONG_PTR first, LONG_PTR second);

  protected:
    friend CReferenceCount;  // which ends it
    explicit CFilter(const CLSID& classId) : classId_(classId) {}
    virtual ~CFilter() = default;

    virtual std::vector<CPin*> Pins() = 0;
    // The changes of state, with the lock held. A failed OnPause leaves the filter stopped.
    virtual HRESULT OnPause() { return S_OK; }              // from stopped
    virtual HRESULT OnRun(REFERENCE_TIME) { return S_OK; }  // from paused
    virtual void OnHalt() {}                                // from running to paused
    virtual void OnStop() {}                                // from paused
    // What GetState says of a paused filter.
    virtual HRESULT PausedState() const { return S_OK; }

  private:
    void HoldClock(IReferenceClock* clock);

    const CModuleUse use_;
    const CLSID classId_;
    handset::CRecursiveLock lock_;
    CReferenceCount references_;
    std::atomic<FILTER_STATE> state_{State_Stopped};
    CRef<IReferenceClock> clock_;  // empty when it is the filter itself, which would keep itself alive
    IReferenceClock* ownClock_ = nullptr;
    IFilterGraph* graph_ = nullptr;                  // owns this filter
    std::atomic<IMediaEventSink*> events_{nullptr};  // the graph's
    std::wstring name_;
};

}  // namespace capture
