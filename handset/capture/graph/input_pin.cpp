// The connection's other half, and the arrival of samples.
#include "handset/capture/graph/input_pin.h"

#include "handset/base/module_edge.h"
#include "handset/capture/graph/allocator.h"

namespace capture {
namespace {

using Guard = std::lock_guard<handset::CRecursiveLock>;
using StreamGuard = std::lock_guard<handset::CLock>;

}  // namespace

HRESULT CInputPin::QueryInterface(REFIID iid, void** out) {
    IPin* const pin = this;
    IMemInputPin* const input = this;
    return AnswerQuery({{IID_IUnknown, pin}, {IID_IPin, pin}, {IID_IMemInputPin, input}}, iid, out);
}

// An output pin connects.
HRESULT CInputPin::Connect(IPin*, const AM_MEDIA_TYPE*) {
    return E_UNEXPECTED;
}

HRESULT CInputPin::ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) try {
    if (connector == nullptr || type == nullptr) return E_POINTER;
    const Guard guard(Filter().Lock());
    if (Connected()) return VFW_E_ALREADY_CONNECTED;
    if (!Filter().Stopped()) return VFW_E_NOT_STOPPED;
    PIN_DIRECTION direction = PINDIR_INPUT;
    connector->QueryDirection(&direction);
    if (direction != PINDIR_OUTPUT) return VFW_E_INVALID_DIRECTION;
    const CMediaType offered(*type);
    if (!Accepts(offered)) return VFW_E_TYPE_NOT_ACCEPTED;
    SetConnection(connector, offered);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CInputPin::CheckStreaming() const {
    if (!Connected()) return VFW_E_NOT_CONNECTED;
    return Filter().Active() ? S_OK : VFW_E_WRONG_STATE;
}

HRESULT CInputPin::EndOfStream() try {
    const StreamGuard guard(streamLock_);
    const HRESULT ready = CheckStreaming();
    return ready == S_OK ? sink_.OnEndOfStream() : ready;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CInputPin::BeginFlush() try {
    return Connected() ? sink_.OnBeginFlush() : VFW_E_NOT_CONNECTED;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CInputPin::EndFlush() try {
    const StreamGuard guard(streamLock_);
    return Connected() ? sink_.OnEndFlush() : VFW_E_NOT_CONNECTED;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CInputPin::NewSegment(REFERENCE_TIME, REFERENCE_TIME, double) {
    return S_OK;
}

HRESULT CInputPin::GetAllocator(IMemAllocator** allocator) try {
    if (allocator == nullptr) return E_POINTER;
    const Guard guard(Filter().Lock());
    if (!allocator_) allocator_ = NewAllocator();
    *allocator = CRef<IMemAllocator>(allocator_).Detach();
    return *allocator != nullptr ? S_OK : VFW_E_NO_ALLOCATOR;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CInputPin::NotifyAllocator(IMemAllocator* allocator, BOOL) try {
    if (allocator == nullptr) return E_POINTER;
    const Guard guard(Filter().Lock());
    allocator_ = CRef<IMemAllocator>(allocator);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CInputPin::GetAllocatorRequirements(ALLOCATOR_PROPERTIES*) {
    return E_NOTIMPL;
}

HRESULT CInputPin::Receive(IMediaSample* sample) try {
    if (sample == nullptr) return E_POINTER;
    BYTE* bytes = nullptr;
    const HRESULT result = sample->GetPointer(&bytes);
    if (FAILED(result)) return result;
    REFERENCE_TIME start = 0;
    REFERENCE_TIME stop = 0;
    if (FAILED(sample->GetTime(&start, &stop))) start = stop = 0;
    const StreamGuard guard(streamLock_);
    const HRESULT ready = CheckStreaming();
    if (ready != S_OK) return ready;
    return sink_.OnSample(bytes, static_cast<std::size_t>(sample->GetActualDataLength()), start, stop);
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CInputPin::ReceiveMultiple(IMediaSample** samples, long count, long* processed) try {
    if (samples == nullptr || processed == nullptr) return E_POINTER;
    for (*processed = 0; *processed < count; ++*processed) {
        const HRESULT result = Receive(samples[*processed]);
        if (result != S_OK) return result;
    }
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

// Writing and encoding take their time.
HRESULT CInputPin::ReceiveCanBlock() {
    return S_OK;
}

}  // namespace capture
