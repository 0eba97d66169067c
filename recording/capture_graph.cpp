// The front of the capture graph: builder, graph, capture filter, and the format that its pin delivers.
#include <algorithm>
#include <vector>

#include "recording/capture_format.h"
#include "recording/capture_recorder.h"
#include "recording/capture_steps.h"

namespace {

using namespace capture;

// The device's capture graph builder; the desktop's has another number.
constexpr GUID kCaptureGraphBuilderClass = {
    0xbf87b6e0, 0x8c27, 0x11d0, {0xb3, 0xf0, 0x00, 0xaa, 0x00, 0x37, 0x61, 0xc5}};
// The device's audio input.
constexpr GUID kAudioCaptureClass = {
    0xe30629d2, 0x27e5, 0x11ce, {0x87, 0x5d, 0x00, 0x60, 0x8c, 0xb7, 0x80, 0x66}};

constexpr int kAudioCapabilitySize = 52;
static_assert(sizeof(AUDIO_STREAM_CONFIG_CAPS) == kAudioCapabilitySize);

WAVEFORMATEX* WaveFormatOf(const AM_MEDIA_TYPE* type) {
    if (type == nullptr || type->formattype != FORMAT_WaveFormatEx) return nullptr;
    return reinterpret_cast<WAVEFORMATEX*>(type->pbFormat);
}

bool Matches(const AM_MEDIA_TYPE* type, const CaptureFormat& wanted) {
    const WAVEFORMATEX* format = WaveFormatOf(type);
    return format != nullptr && format->nSamplesPerSec == wanted.uRate_Hz &&
           format->nChannels == wanted.uChannels && format->wBitsPerSample == wanted.uBits;
}

void FreeMediaType(AM_MEDIA_TYPE* type) {
    if (type == nullptr) return;
    CoTaskMemFree(type->pbFormat);
    if (type->pUnk != nullptr) type->pUnk->Release();
    CoTaskMemFree(type);
}

// Asks for the pin's formats one by one until one is the wanted one; the last that was asked for stays in
// `type`. Kept: those that are passed over are not freed.
HRESULT FindFormat(IAMStreamConfig& pin, const CaptureFormat& wanted, AM_MEDIA_TYPE*& type) {
    int count = 0;
    int size = 0;
    pin.GetNumberOfCapabilities(&count, &size);
    if (size != kAudioCapabilitySize) NKDbgPrintfW(L"This is not the structure we were expecting \n");
    NKDbgPrintfW(L"Found required structure \n");
    std::vector<BYTE> capability(static_cast<std::size_t>(std::max(size, kAudioCapabilitySize)));
    for (int at = 0; at < count; ++at) {
        const HRESULT result = pin.GetStreamCaps(at, &type, capability.data());
        if (FAILED(result)) return result;
        if (Matches(type, wanted)) break;
    }
    return S_OK;
}

// Only the three wanted numbers: tag, alignment and bytes a second stay the pin's own.
void SetFormatOfPin(IAMStreamConfig& pin, AM_MEDIA_TYPE* type, const CaptureFormat& wanted) {
    WAVEFORMATEX* format = WaveFormatOf(type);
    if (format == nullptr) return;
    format->nChannels = wanted.uChannels;
    format->nSamplesPerSec = wanted.uRate_Hz;
    format->wBitsPerSample = wanted.uBits;
    if (FAILED(pin.SetFormat(type))) NKDbgPrintfW(L"SetFormat Failed \n");
}

}  // namespace

int CaptureRecorder::BuildCaptureGraph() {
    // What still runs would go on writing its file by itself, and nobody could end it any more.
    if (m_hEventThread != nullptr) StopCapture();
    if (CreateGraph() != kDone) return kFailed;
    if (CreateCaptureFilter() != kDone) return kFailed;
    return SelectFormat();
}

int CaptureRecorder::CreateGraph() {
    constexpr const WCHAR* kQueryFailed = L"m_pGraph->QueryInterface() failed \n";
    if (!Create(kCaptureGraphBuilderClass, IID_ICaptureGraphBuilder2, m_pCaptureGraphBuilder))
        return Failed(kCreationFailed);
    if (!Create(CLSID_FilterGraph, IID_IGraphBuilder, m_pGraph)) return Failed(kCreationFailed);
    if (FAILED(m_pCaptureGraphBuilder->SetFiltergraph(m_pGraph))) {
        return Failed(L"m_pCaptureGraphBuilder->SetFiltergraph() failed \n");
    }
    if (!Query(m_pGraph, IID_IMediaControl, m_pMediaControl)) return Failed(kQueryFailed);
    if (!Query(m_pGraph, IID_IMediaEvent, m_pMediaEvent)) return Failed(kQueryFailed);
    if (!Query(m_pGraph, IID_IMediaSeeking, m_pMediaSeeking)) return Failed(kQueryFailed);
    return kDone;
}

int CaptureRecorder::CreateCaptureFilter() {
    if (!Create(kAudioCaptureClass, IID_IBaseFilter, m_pAudioCaptureFilter)) return Failed(kCreationFailed);
    if (!Query(m_pAudioCaptureFilter, IID_IPersistPropertyBag, m_pPropertyBag)) {
        return Failed(L"m_pAudioCaptureFilter->QueryInterface() failed \n");
    }
    // No bag: the device's default input.
    m_pPropertyBag->Load(nullptr, nullptr);
    if (AddToGraph(m_pAudioCaptureFilter, L"Audio Capture Filter") != kDone) return kFailed;
    if (FAILED(m_pCaptureGraphBuilder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, m_pAudioCaptureFilter,
                                                     IID_IAMStreamConfig, Anew(m_pStreamConfig)))) {
        return Failed(L"m_pCaptureGraphBuilder->FindInterface() failed \n");
    }
    return kDone;
}

int CaptureRecorder::SelectFormat() {
    const CaptureFormat wanted = CaptureFormatOf(m_dwFormat);
    AM_MEDIA_TYPE* type = nullptr;
    if (FAILED(FindFormat(*m_pStreamConfig, wanted, type))) return kFailed;
    SetFormatOfPin(*m_pStreamConfig, type, wanted);
    ReleaseAndClear(m_pStreamConfig);
    FreeMediaType(type);
    return kDone;
}
