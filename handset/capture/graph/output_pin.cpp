// The connection's making and the way of samples.
#include "handset/capture/graph/output_pin.h"

#include <algorithm>
#include <cstring>

#include "handset/base/module_edge.h"
#include "handset/capture/graph/allocator.h"

namespace capture {
namespace {

using Guard = std::lock_guard<handset::CRecursiveLock>;

// What the connected pin itself would like.
std::vector<CMediaType> TypesOf(IPin* pin) {
    std::vector<CMediaType> types;
    CRef<IEnumMediaTypes> list;
    if (FAILED(pin->EnumMediaTypes(list.Put()))) return types;
    for (AM_MEDIA_TYPE* type = nullptr; list->Next(1, &type, nullptr) == S_OK;) {
        types.emplace_back(*type);
        ClearMediaType(type);
        CoTaskMemFree(type);
    }
    return types;
}

}  // namespace

HRESULT COutputPin::Connect(IPin* peer, const AM_MEDIA_TYPE* type) try {
    if (peer == nullptr) return E_POINTER;
    const Guard guard(Filter().Lock());
    if (Connected()) return VFW_E_ALREADY_CONNECTED;
    if (!Filter().Stopped()) return VFW_E_NOT_STOPPED;
    PIN_DIRECTION direction = PINDIR_OUTPUT;
    peer->QueryDirection(&direction);
    if (direction != PINDIR_INPUT) return VFW_E_INVALID_DIRECTION;
    if (type != nullptr && type->majortype != GUID_NULL && type->formattype != GUID_NULL)
        return TryType(peer, CMediaType(*type));
    const HRESULT result = TryTypes(peer, Types(), type);
    return SUCCEEDED(result) ? result : TryTypes(peer, TypesOf(peer), type);
} catch (...) {
    return handset::EdgeResult();
}

HRESULT COutputPin::TryTypes(IPin* peer, const std::vector<CMediaType>& types, const AM_MEDIA_TYPE* wanted) {
    for (const CMediaType& type : types) {
        if (wanted != nullptr && !type.Fits(*wanted)) continue;
        const HRESULT result = TryType(peer, type);
        // A refusal of the pin itself would be the same for every type.
        if (result != VFW_E_TYPE_NOT_ACCEPTED) return result;
    }
    return VFW_E_NO_ACCEPTABLE_TYPES;
}

HRESULT COutputPin::TryType(IPin* peer, const CMediaType& type) {
    if (!Accepts(type)) return VFW_E_TYPE_NOT_ACCEPTED;
    SetConnection(peer, type);
    const AM_MEDIA_TYPE view = type.View();
    HRESULT result = peer->ReceiveConnection(this, &view);
    if (SUCCEEDED(result)) {
        result = ChooseAllocator();
        if (FAILED(result)) peer->Disconnect();
    }
    if (FAILED(result)) ForgetConnection();
    return result;
}

HRESULT COutputPin::ChooseAllocator() {
    input_ = Query<IMemInputPin>(Peer(), IID_IMemInputPin);
    if (!input_) return VFW_E_NO_TRANSPORT;
    ALLOCATOR_PROPERTIES wanted{};
    input_->GetAllocatorRequirements(&wanted);
    const ALLOCATOR_PROPERTIES own = Buffers();
    wanted.cBuffers = std::max(wanted.cBuffers, own.cBuffers);
    wanted.cbBuffer = std::max(wanted.cbBuffer, own.cbBuffer);
    wanted.cbAlign = std::max({wanted.cbAlign, own.cbAlign, 1L});
    wanted.cbPrefix = std::max(wanted.cbPrefix, own.cbPrefix);
    CRef<IMemAllocator> offered;
    if (SUCCEEDED(input_->GetAllocator(offered.Put())) && SUCCEEDED(UseAllocator(offered.Get(), wanted)))
        return S_OK;
    const CRef<IMemAllocator> made = NewAllocator();
    return made ? UseAllocator(made.Get(), wanted) : E_OUTOFMEMORY;
}

HRESULT COutputPin::UseAllocator(IMemAllocator* allocator, const ALLOCATOR_PROPERTIES& wanted) {
    ALLOCATOR_PROPERTIES request = wanted;
    ALLOCATOR_PROPERTIES actual{};
    HRESULT result = allocator->SetProperties(&request, &actual);
    if (SUCCEEDED(result)) result = input_->NotifyAllocator(allocator, FALSE);
    if (SUCCEEDED(result)) allocator_ = CRef<IMemAllocator>(allocator);
    return result;
}

void COutputPin::OnDisconnect() {
    input_.Reset();
    allocator_.Reset();
}

HRESULT COutputPin::Activate() {
    return allocator_ ? allocator_->Commit() : S_OK;
}

void COutputPin::Deactivate() {
    if (allocator_) allocator_->Decommit();
}

HRESULT COutputPin::Deliver(const BYTE* bytes, std::size_t size, REFERENCE_TIME start, REFERENCE_TIME stop,
                            bool discontinuity) {
    const std::size_t whole = size;
    const auto time_at = [&](std::size_t done) {
        return start +
               (stop - start) * static_cast<REFERENCE_TIME>(done) / static_cast<REFERENCE_TIME>(whole);
    };
    for (std::size_t done = 0; done < whole;) {
        CRef<IMediaSample> sample;
        const HRESULT result = allocator_->GetBuffer(sample.Put(), nullptr, nullptr, 0);
        if (FAILED(result)) return result;
        BYTE* room = nullptr;
        sample->GetPointer(&room);
        const std::size_t part = std::min(whole - done, static_cast<std::size_t>(sample->GetSize()));
        std::memcpy(room, bytes + done, part);
        sample->SetActualDataLength(static_cast<long>(part));
        REFERENCE_TIME from = time_at(done);
        done += part;
        REFERENCE_TIME to = time_at(done);
        sample->SetTime(&from, &to);
        sample->SetSyncPoint(TRUE);
        sample->SetDiscontinuity(discontinuity);
        discontinuity = false;
        const HRESULT received = input_->Receive(sample.Get());
        if (received != S_OK) return received;
    }
    return S_OK;
}

HRESULT COutputPin::DeliverEndOfStream() {
    return Peer() != nullptr ? Peer()->EndOfStream() : VFW_E_NOT_CONNECTED;
}

HRESULT COutputPin::DeliverBeginFlush() {
    return Peer() != nullptr ? Peer()->BeginFlush() : VFW_E_NOT_CONNECTED;
}

HRESULT COutputPin::DeliverEndFlush() {
    return Peer() != nullptr ? Peer()->EndFlush() : VFW_E_NOT_CONNECTED;
}

HRESULT COutputPin::ReceiveConnection(IPin*, const AM_MEDIA_TYPE*) {
    return E_UNEXPECTED;
}

HRESULT COutputPin::EndOfStream() {
    return E_UNEXPECTED;
}

HRESULT COutputPin::BeginFlush() {
    return E_UNEXPECTED;
}

HRESULT COutputPin::EndFlush() {
    return E_UNEXPECTED;
}

HRESULT COutputPin::NewSegment(REFERENCE_TIME, REFERENCE_TIME, double) {
    return E_UNEXPECTED;
}

}  // namespace capture
