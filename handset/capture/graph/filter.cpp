// States, clock and graph of a filter.
#include "handset/capture/graph/filter.h"

#include <cwchar>

#include "handset/base/module_edge.h"
#include "handset/capture/graph/pin.h"

namespace capture {
namespace {

using Guard = std::lock_guard<handset::CRecursiveLock>;

}  // namespace

ULONG CFilter::AddRef() {
    return references_.AddRef();
}

ULONG CFilter::Release() {
    return references_.Release(this);
}

HRESULT CFilter::GetClassID(CLSID* classId) {
    if (classId == nullptr) return E_POINTER;
    *classId = classId_;
    return S_OK;
}

HRESULT CFilter::Stop() try {
    const Guard guard(lock_);
    if (state_ == State_Running) {
        state_ = State_Paused;
        OnHalt();
    }
    if (state_ == State_Paused) {
        // First, so that samples that are still under way are refused.
        state_ = State_Stopped;
        OnStop();
    }
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFilter::Pause() try {
    const Guard guard(lock_);
    if (state_ == State_Stopped) {
        const HRESULT result = OnPause();
        if (FAILED(result)) return result;
    }
    const bool halt = state_ == State_Running;
    state_ = State_Paused;
    if (halt) OnHalt();
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFilter::Run(REFERENCE_TIME start) try {
    const Guard guard(lock_);
    if (state_ == State_Running) return S_OK;
    if (state_ == State_Stopped) {
        const HRESULT result = Pause();
        if (FAILED(result)) return result;
    }
    const HRESULT result = OnRun(start);
    if (SUCCEEDED(result)) state_ = State_Running;
    return result;
} catch (...) {
    return handset::EdgeResult();
}

// Every change of state is complete when its call returns.
HRESULT CFilter::GetState(DWORD, FILTER_STATE* state) try {
    if (state == nullptr) return E_POINTER;
    *state = state_;
    return *state == State_Paused ? PausedState() : S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFilter::SetSyncSource(IReferenceClock* clock) try {
    const Guard guard(lock_);
    HoldClock(clock);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

void CFilter::HoldClock(IReferenceClock* clock) {
    const auto identity = Query<IUnknown>(clock, IID_IUnknown);
    const auto self = Query<IUnknown>(this, IID_IUnknown);
    const bool own = identity && identity.Get() == self.Get();
    clock_ = own ? CRef<IReferenceClock>() : CRef<IReferenceClock>(clock);
    ownClock_ = own ? clock : nullptr;
}

HRESULT CFilter::GetSyncSource(IReferenceClock** clock) try {
    if (clock == nullptr) return E_POINTER;
    const Guard guard(lock_);
    *clock = CRef<IReferenceClock>(ownClock_ != nullptr ? ownClock_ : clock_.Get()).Detach();
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFilter::EnumPins(IEnumPins** out) try {
    if (out == nullptr) return E_POINTER;
    *out = ListPins(Pins(), CRef<IUnknown>(this));
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFilter::FindPin(LPCWSTR id, IPin** out) try {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (id == nullptr) return E_POINTER;
    for (CPin* pin : Pins()) {
        if (pin->Name() != id) continue;
        pin->AddRef();
        *out = pin;
        return S_OK;
    }
    return VFW_E_NOT_FOUND;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFilter::QueryFilterInfo(FILTER_INFO* info) try {
    if (info == nullptr) return E_POINTER;
    const Guard guard(lock_);
    const std::size_t length = name_.copy(info->achName, std::size(info->achName) - 1);
    info->achName[length] = L'\0';
    info->pGraph = CRef<IFilterGraph>(graph_).Detach();
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

// The graph owns the filter, so the filter holds no reference to it.
HRESULT CFilter::JoinFilterGraph(IFilterGraph* graph, LPCWSTR name) try {
    const Guard guard(lock_);
    graph_ = graph;
    events_ = Query<IMediaEventSink>(graph, IID_IMediaEventSink).Get();
    name_ = name != nullptr ? name : L"";
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CFilter::QueryVendorInfo(LPWSTR*) {
    return E_NOTIMPL;
}

void CFilter::Notify(long code, LONG_PTR first, LONG_PTR second) {
    if (IMediaEventSink* const events = events_) events->Notify(code, first, second);
}

}  // namespace capture
