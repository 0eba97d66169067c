// Copies and comparisons of media types.
#include "handset/capture/graph/media_type.h"

#include <cstring>

namespace capture {
namespace {

bool OpenOrEqual(const GUID& wanted, const GUID& has) {
    return wanted == GUID_NULL || wanted == has;
}

}  // namespace

CMediaType::CMediaType(const AM_MEDIA_TYPE& type) : type_(type), object_(type.pUnk) {
    if (type.pbFormat != nullptr) format_.assign(type.pbFormat, type.pbFormat + type.cbFormat);
}

CMediaType::CMediaType(const GUID& subtype, const WAVEFORMATEX& format) : format_(sizeof format) {
    std::memcpy(format_.data(), &format, sizeof format);
    type_.majortype = MEDIATYPE_Audio;
    type_.subtype = subtype;
    type_.bFixedSizeSamples = TRUE;
    type_.lSampleSize = format.nBlockAlign;
    type_.formattype = FORMAT_WaveFormatEx;
}

AM_MEDIA_TYPE CMediaType::View() const {
    AM_MEDIA_TYPE view = type_;
    view.cbFormat = static_cast<ULONG>(format_.size());
    // Callees get the block through a pointer that is not const and leave it alone all the same.
    view.pbFormat = format_.empty() ? nullptr : const_cast<BYTE*>(format_.data());
    view.pUnk = object_.Get();
    return view;
}

const WAVEFORMATEX* CMediaType::Wave() const {
    const bool there = type_.formattype == FORMAT_WaveFormatEx && format_.size() >= sizeof(WAVEFORMATEX);
    return there ? reinterpret_cast<const WAVEFORMATEX*>(format_.data()) : nullptr;
}

HRESULT CMediaType::CopyTo(AM_MEDIA_TYPE* out) const {
    *out = View();
    out->pbFormat = nullptr;
    if (!format_.empty()) {
        out->pbFormat = static_cast<BYTE*>(CoTaskMemAlloc(format_.size()));
        if (out->pbFormat == nullptr) {
            *out = {};
            return E_OUTOFMEMORY;
        }
        std::memcpy(out->pbFormat, format_.data(), format_.size());
    }
    if (out->pUnk != nullptr) out->pUnk->AddRef();
    return S_OK;
}

HRESULT CMediaType::NewCopy(AM_MEDIA_TYPE** out) const {
    *out = static_cast<AM_MEDIA_TYPE*>(CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
    if (*out == nullptr) return E_OUTOFMEMORY;
    const HRESULT result = CopyTo(*out);
    if (FAILED(result)) {
        CoTaskMemFree(*out);
        *out = nullptr;
    }
    return result;
}

bool CMediaType::operator==(const CMediaType& other) const {
    return type_.majortype == other.type_.majortype && type_.subtype == other.type_.subtype &&
           type_.formattype == other.type_.formattype && format_ == other.format_;
}

bool CMediaType::Fits(const AM_MEDIA_TYPE& partial) const {
    if (!OpenOrEqual(partial.majortype, Major()) || !OpenOrEqual(partial.subtype, Subtype())) return false;
    if (partial.formattype == GUID_NULL) return true;
    return CMediaType(partial).format_ == format_ && partial.formattype == FormatType();
}

void ClearMediaType(AM_MEDIA_TYPE* type) {
    CoTaskMemFree(type->pbFormat);
    if (type->pUnk != nullptr) type->pUnk->Release();
    *type = {};
}

}  // namespace capture
