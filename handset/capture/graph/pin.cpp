// The connection of a pin, and the lists of pins and of media types.
#include "handset/capture/graph/pin.h"

#include <cwchar>
#include <memory>

#include "handset/base/module_edge.h"
#include "handset/capture/graph/enumerator.h"

namespace capture {
namespace {

using Guard = std::lock_guard<handset::CRecursiveLock>;

struct PinTraits {
    using Interface = IEnumPins;
    using Item = CPin*;
    using Given = IPin*;
    static const IID& Iid() { return IID_IEnumPins; }
    static HRESULT Give(CPin* const& pin, IPin** out) {
        pin->AddRef();
        *out = pin;
        return S_OK;
    }
};

struct TypeTraits {
    using Interface = IEnumMediaTypes;
    using Item = CMediaType;
    using Given = AM_MEDIA_TYPE*;
    static const IID& Iid() { return IID_IEnumMediaTypes; }
    static HRESULT Give(const CMediaType& type, AM_MEDIA_TYPE** out) { return type.NewCopy(out); }
};

}  // namespace

void CPin::SetConnection(IPin* peer, const CMediaType& type) {
    peer_ = CRef<IPin>(peer);
    type_ = type;
}

void CPin::ForgetConnection() {
    peer_.Reset();
    type_ = CMediaType();
    OnDisconnect();
}

HRESULT CPin::Disconnect() try {
    const Guard guard(filter_.Lock());
    if (!filter_.Stopped()) return VFW_E_NOT_STOPPED;
    if (!peer_) return S_FALSE;
    ForgetConnection();
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CPin::ConnectedTo(IPin** pin) try {
    if (pin == nullptr) return E_POINTER;
    const Guard guard(filter_.Lock());
    *pin = CRef<IPin>(peer_).Detach();
    return *pin != nullptr ? S_OK : VFW_E_NOT_CONNECTED;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CPin::ConnectionMediaType(AM_MEDIA_TYPE* type) try {
    if (type == nullptr) return E_POINTER;
    const Guard guard(filter_.Lock());
    *type = {};
    return peer_ ? type_.CopyTo(type) : VFW_E_NOT_CONNECTED;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CPin::QueryPinInfo(PIN_INFO* info) try {
    if (info == nullptr) return E_POINTER;
    info->pFilter = CRef<IBaseFilter>(&filter_).Detach();
    info->dir = direction_;
    const std::size_t length = name_.copy(info->achName, std::size(info->achName) - 1);
    info->achName[length] = L'\0';
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CPin::QueryDirection(PIN_DIRECTION* direction) {
    if (direction == nullptr) return E_POINTER;
    *direction = direction_;
    return S_OK;
}

HRESULT CPin::QueryId(LPWSTR* id) try {
    if (id == nullptr) return E_POINTER;
    *id = static_cast<LPWSTR>(CoTaskMemAlloc((name_.size() + 1) * sizeof(wchar_t)));
    if (*id == nullptr) return E_OUTOFMEMORY;
    std::wcscpy(*id, name_.c_str());
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CPin::QueryAccept(const AM_MEDIA_TYPE* type) try {
    if (type == nullptr) return E_POINTER;
    const Guard guard(filter_.Lock());
    return Accepts(CMediaType(*type)) ? S_OK : S_FALSE;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CPin::EnumMediaTypes(IEnumMediaTypes** out) try {
    if (out == nullptr) return E_POINTER;
    const Guard guard(filter_.Lock());
    *out = new CEnumerator<TypeTraits>(std::make_shared<const std::vector<CMediaType>>(Types()),
                                       CRef<IUnknown>(this), 0);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CPin::QueryInternalConnections(IPin**, ULONG*) {
    return E_NOTIMPL;
}

IEnumPins* ListPins(const std::vector<CPin*>& pins, CRef<IUnknown> owner) {
    return new CEnumerator<PinTraits>(std::make_shared<const std::vector<CPin*>>(pins), std::move(owner), 0);
}

}  // namespace capture
