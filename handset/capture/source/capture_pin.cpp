// Formats, stream control and category of the capture pin.
#include "handset/capture/source/capture_pin.h"

#include <algorithm>
#include <cstring>

#include "handset/base/module_edge.h"
#include "handset/capture/graph/capture_formats.h"

namespace capture {
namespace {

using Guard = std::lock_guard<handset::CRecursiveLock>;

}  // namespace

CCapturePin::CCapturePin(CFilter* filter)
    : COutputPin(filter, L"Capture"), format_(CaptureFormatType(0)), pump_(this) {}

HRESULT CCapturePin::QueryInterface(REFIID iid, void** out) {
    IPin* const pin = this;
    IAMStreamConfig* const config = this;
    IAMStreamControl* const control = this;
    IKsPropertySet* const properties = this;
    return AnswerQuery({{IID_IUnknown, pin},
                        {IID_IPin, pin},
                        {IID_IAMStreamConfig, config},
                        {IID_IAMStreamControl, control},
                        {IID_IKsPropertySet, properties}},
                       iid, out);
}

HRESULT CCapturePin::Open() {
    if (!Connected()) return S_OK;
    HRESULT result = Activate();
    if (SUCCEEDED(result)) result = pump_.Open(PcmShape(ConnectionType()).value_or(sound::WavShape{}));
    if (FAILED(result)) Deactivate();
    return result;
}

void CCapturePin::Run(REFERENCE_TIME start) {
    if (Connected()) pump_.Run(start);
}

void CCapturePin::Halt() {
    pump_.Halt();
}

// The buffers go first: the pump may be waiting for one.
void CCapturePin::Close() {
    Deactivate();
    pump_.Close();
}

std::vector<CMediaType> CCapturePin::Types() const {
    if (chosen_) return {format_};
    std::vector<CMediaType> types;
    for (int i = 0; i < CaptureFormatCount(); ++i) types.push_back(CaptureFormatType(i));
    return types;
}

bool CCapturePin::Accepts(const CMediaType& type) const {
    const auto shape = PcmShape(type);
    if (!shape || !CanCapture(*shape)) return false;
    if (!chosen_) return true;
    const auto chosen = PcmShape(format_);
    return shape->rate_Hz == chosen->rate_Hz && shape->channels == chosen->channels;
}

// Room for what is read from the radio at once.
ALLOCATOR_PROPERTIES CCapturePin::Buffers() const {
    const sound::WavShape shape = PcmShape(ConnectionType()).value_or(sound::WavShape{});
    return {4, static_cast<long>((shape.rate_Hz / 2 + 1) * shape.FrameBytes()), 1, 0};
}

HRESULT CCapturePin::SetFormat(AM_MEDIA_TYPE* type) try {
    if (type == nullptr) return E_POINTER;
    const Guard guard(Filter().Lock());
    if (!Filter().Stopped()) return VFW_E_NOT_STOPPED;
    const CMediaType wanted(*type);
    const auto shape = PcmShape(wanted);
    if (!shape || !CanCapture(*shape)) return VFW_E_INVALIDMEDIATYPE;
    if (Connected() && !(wanted == ConnectionType())) return Reconnect(wanted);
    format_ = wanted;
    chosen_ = true;
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CCapturePin::Reconnect(const CMediaType& type) {
    const AM_MEDIA_TYPE view = type.View();
    if (Filter().Graph() == nullptr || Peer()->QueryAccept(&view) != S_OK) return VFW_E_INVALIDMEDIATYPE;
    format_ = type;
    chosen_ = true;
    return Filter().Graph()->Reconnect(this);
}

HRESULT CCapturePin::GetFormat(AM_MEDIA_TYPE** type) try {
    if (type == nullptr) return E_POINTER;
    const Guard guard(Filter().Lock());
    return (Connected() ? ConnectionType() : format_).NewCopy(type);
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CCapturePin::GetNumberOfCapabilities(int* count, int* size) try {
    if (count == nullptr || size == nullptr) return E_POINTER;
    *count = CaptureFormatCount();
    *size = sizeof(AUDIO_STREAM_CONFIG_CAPS);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CCapturePin::GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* caps) try {
    if (type == nullptr || caps == nullptr) return E_POINTER;
    *type = nullptr;
    if (index < 0) return E_INVALIDARG;
    if (index >= CaptureFormatCount()) return S_FALSE;
    const AUDIO_STREAM_CONFIG_CAPS record = CaptureFormatCaps(index);
    std::memcpy(caps, &record, sizeof record);
    return CaptureFormatType(index).NewCopy(type);
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CCapturePin::StartAt(const REFERENCE_TIME* start, DWORD cookie) try {
    pump_.RequestStart(start, cookie);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

// The extra sample is for pins that feed others of the same stream; this one has none.
HRESULT CCapturePin::StopAt(const REFERENCE_TIME* stop, BOOL, DWORD cookie) try {
    pump_.RequestStop(stop, cookie);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CCapturePin::GetInfo(AM_STREAM_INFO* info) try {
    if (info == nullptr) return E_POINTER;
    const CStreamControl control = pump_.Control();
    *info = {};
    info->tStart = control.Start() ? control.Start()->time : MAXLONGLONG;
    info->tStop = control.Stop() ? control.Stop()->time : MAXLONGLONG;
    info->dwStartCookie = control.Start() ? control.Start()->cookie : 0;
    info->dwStopCookie = control.Stop() ? control.Stop()->cookie : 0;
    if (control.Start()) info->dwFlags |= AM_STREAM_INFO_START_DEFINED;
    if (control.Stop()) info->dwFlags |= AM_STREAM_INFO_STOP_DEFINED;
    if (!control.Flowing()) info->dwFlags |= AM_STREAM_INFO_DISCARDING;
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CCapturePin::Set(REFGUID, DWORD, void*, DWORD, void*, DWORD) {
    return E_NOTIMPL;
}

HRESULT CCapturePin::Get(REFGUID set, DWORD id, void*, DWORD, void* data, DWORD size, DWORD* returned) try {
    if (set != AMPROPSETID_Pin) return E_PROP_SET_UNSUPPORTED;
    if (id != AMPROPERTY_PIN_CATEGORY) return E_PROP_ID_UNSUPPORTED;
    if (data == nullptr && returned == nullptr) return E_POINTER;
    if (returned != nullptr) *returned = sizeof(GUID);
    if (data == nullptr) return S_OK;
    if (size < sizeof(GUID)) return E_UNEXPECTED;
    std::memcpy(data, &PIN_CATEGORY_CAPTURE, sizeof(GUID));
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CCapturePin::QuerySupported(REFGUID set, DWORD id, DWORD* support) try {
    if (set != AMPROPSETID_Pin) return E_PROP_SET_UNSUPPORTED;
    if (id != AMPROPERTY_PIN_CATEGORY) return E_PROP_ID_UNSUPPORTED;
    if (support != nullptr) *support = KSPROPERTY_SUPPORT_GET;
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

}  // namespace capture
