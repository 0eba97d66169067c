// The rear of the capture graph: the filters that write the file.
#include "recording/capture_format.h"
#include "recording/capture_recorder.h"
#include "recording/capture_steps.h"

namespace {

using namespace capture;

constexpr GUID kWavWriterClass = {
    0xa3abfe59, 0xc33f, 0x4e34, {0xa0, 0xc4, 0xce, 0xc0, 0xce, 0x25, 0xec, 0x9e}};
constexpr GUID kAmrEncoderClass = {
    0x94297043, 0xbd82, 0x4dfd, {0xb0, 0xde, 0x81, 0x77, 0x73, 0x9c, 0x6d, 0x20}};
constexpr GUID kMultiplexerClass = {
    0x6a59220b, 0xa696, 0x4b79, {0xad, 0x80, 0xe3, 0xc2, 0x39, 0xa9, 0xd7, 0x88}};
// The codec that the encoder is to use, and what the multiplexer is to write.
constexpr GUID kAmrNarrowbandCodec = {
    0xd13b9b2c, 0xee4b, 0x4787, {0x96, 0x0a, 0x4d, 0x6c, 0xdb, 0x48, 0xa6, 0x0c}};
constexpr GUID kAmrFileSubtype = {
    0xaa5e0668, 0x2f56, 0x48da, {0x9e, 0x30, 0x4f, 0x43, 0x27, 0x0a, 0x00, 0xb1}};

constexpr const WCHAR* kSinkQueryFailed = L"m_pFileDump->QueryInterface() failed \n";

int NameFile(IFileSinkFilter& sink, const WCHAR* path, REFGUID major, REFGUID subtype) {
    AM_MEDIA_TYPE type = {};
    type.majortype = major;
    type.subtype = subtype;
    if (FAILED(sink.SetFileName(path, &type))) return Failed(L"m_pFileSink->SetFileName() failed \n");
    return kDone;
}

}  // namespace

int CaptureRecorder::BuildOutputChain(const WCHAR* path) {
    return m_dwFormat == kFormatAmr ? BuildAmrChain(path) : BuildWavChain(path);
}

int CaptureRecorder::BuildWavChain(const WCHAR* path) {
    if (!Create(kWavWriterClass, IID_IBaseFilter, m_pSinkFilter)) return Failed(kCreationFailed);
    if (AddToGraph(m_pSinkFilter, L"Waveform Audio Render") != kDone) return kFailed;
    if (!Query(m_pSinkFilter, IID_IFileSinkFilter, m_pFileSink)) return Failed(kSinkQueryFailed);
    if (NameFile(*m_pFileSink, path, MEDIATYPE_Stream, GUID_NULL) != kDone) return kFailed;
    return Render(nullptr);
}

int CaptureRecorder::BuildAmrChain(const WCHAR* path) {
    if (CreateEncoder() != kDone) return kFailed;
    if (!Create(kMultiplexerClass, IID_IBaseFilter, m_pSinkFilter)) return Failed(kCreationFailed);
    if (AddToGraph(m_pSinkFilter, L"IVIMP4MuxFilter") != kDone) return kFailed;
    IFileSinkFilter2* sink = nullptr;
    if (!Query(m_pSinkFilter, IID_IFileSinkFilter2, sink)) return Failed(kSinkQueryFailed);
    ReleaseAndClear(m_pFileSink);
    m_pFileSink = sink;
    if (NameFile(*m_pFileSink, path, MEDIATYPE_Audio, kAmrFileSubtype) != kDone) return kFailed;
    return Render(m_pAudioEncoder);
}

int CaptureRecorder::CreateEncoder() {
    if (!Create(kAmrEncoderClass, IID_IBaseFilter, m_pAudioEncoder)) return Failed(kCreationFailed);
    if (!Query(m_pAudioEncoder, IID_IAudioWrapperFilter, m_pAudioWrapperFilter)) {
        return Failed(L"m_pAudioEncoder->QueryInterface() failed \n");
    }
    if (FAILED(m_pAudioWrapperFilter->Init(&kAmrNarrowbandCodec, &CLSID_AudioCompressorCategory))) {
        return Failed(L"m_pAudioWrapperFilter->Init() failed \n");
    }
    return AddToGraph(m_pAudioEncoder, L".ivi AMRNB Encoder");
}

int CaptureRecorder::AddToGraph(IBaseFilter* filter, const WCHAR* name) {
    if (m_pGraph == nullptr || FAILED(m_pGraph->AddFilter(filter, name))) {
        return Failed(L"m_pGraph->AddFilter() failed \n");
    }
    return kDone;
}

int CaptureRecorder::Render(IBaseFilter* encoder) {
    if (m_pCaptureGraphBuilder == nullptr ||
        FAILED(m_pCaptureGraphBuilder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio,
                                                    m_pAudioCaptureFilter, encoder, m_pSinkFilter))) {
        return Failed(L"m_pCaptureGraphBuilder->RenderStream() failed \n");
    }
    return kDone;
}
