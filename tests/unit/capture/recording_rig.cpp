// The radio's calls, in its order.
#include "tests/unit/capture/recording_rig.h"

#include "handset/capture/graph/class_ids.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/audiowrapper.h"
#include "tests/support/wait.h"

namespace test {
namespace {

constexpr long kFileWritten = 0x101;
constexpr long kWriteFailed = 0x104;

#define RETURN_IF_FAILED(expression)          \
    do {                                      \
        const HRESULT result_ = (expression); \
        if (FAILED(result_)) return result_;  \
    } while (false)

void FreeType(AM_MEDIA_TYPE* type) {
    if (type == nullptr) return;
    CoTaskMemFree(type->pbFormat);
    if (type->pUnk != nullptr) type->pUnk->Release();
    CoTaskMemFree(type);
}

}  // namespace

CRecordingRig::~CRecordingRig() {
    if (loop_.joinable()) StopGraph();
    Release();
}

HRESULT CRecordingRig::Build(const AskedFormat& format) {
    builder = CreateAs<ICaptureGraphBuilder2>(capture::kClassGraphBuilder, IID_ICaptureGraphBuilder2);
    graph = CreateAs<IGraphBuilder>(CLSID_FilterGraph, IID_IGraphBuilder);
    if (!builder || !graph) return REGDB_E_CLASSNOTREG;
    RETURN_IF_FAILED(builder->SetFiltergraph(graph.Get()));
    control = Query<IMediaControl>(graph.Get(), IID_IMediaControl);
    events = Query<IMediaEvent>(graph.Get(), IID_IMediaEvent);
    seeking = Query<IMediaSeeking>(graph.Get(), IID_IMediaSeeking);
    capture = CreateAs<IBaseFilter>(capture::kClassAudioCapture, IID_IBaseFilter);
    const auto bag = Query<IPersistPropertyBag>(capture.Get(), IID_IPersistPropertyBag);
    if (!control || !events || !seeking || !bag) return E_NOINTERFACE;
    RETURN_IF_FAILED(bag->Load(nullptr, nullptr));
    RETURN_IF_FAILED(graph->AddFilter(capture.Get(), L"Audio Capture Filter"));
    void* found = nullptr;
    RETURN_IF_FAILED(
        builder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, capture.Get(), IID_IAMStreamConfig, &found));
    *config.Put() = static_cast<IAMStreamConfig*>(found);
    return Choose(format);
}

HRESULT CRecordingRig::Choose(const AskedFormat& format) {
    int count = 0;
    int size = 0;
    RETURN_IF_FAILED(config->GetNumberOfCapabilities(&count, &size));
    AM_MEDIA_TYPE* type = nullptr;
    WAVEFORMATEX* wave = nullptr;
    for (int i = 0; i < count; ++i) {
        FreeType(type);
        AUDIO_STREAM_CONFIG_CAPS caps;
        RETURN_IF_FAILED(config->GetStreamCaps(i, &type, reinterpret_cast<BYTE*>(&caps)));
        wave = reinterpret_cast<WAVEFORMATEX*>(type->pbFormat);
        if (wave->nSamplesPerSec == format.rate_Hz && wave->nChannels == format.channels &&
            wave->wBitsPerSample == format.bits)
            break;
    }
    wave->nChannels = format.channels;
    wave->nSamplesPerSec = format.rate_Hz;
    wave->wBitsPerSample = format.bits;
    const HRESULT result = config->SetFormat(type);
    FreeType(type);
    return result;
}

HRESULT CRecordingRig::AttachWav(const std::wstring& path) {
    sink = CreateAs<IBaseFilter>(capture::kClassWavWriter, IID_IBaseFilter);
    if (!sink) return REGDB_E_CLASSNOTREG;
    RETURN_IF_FAILED(graph->AddFilter(sink.Get(), L"Waveform Audio Render"));
    RETURN_IF_FAILED(SetFile(IID_IFileSinkFilter, path, MEDIATYPE_Stream, GUID_NULL));
    return builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, capture.Get(), nullptr, sink.Get());
}

HRESULT CRecordingRig::AttachAmr(const std::wstring& path) {
    encoder = CreateAs<IBaseFilter>(capture::kClassAmrEncoder, IID_IBaseFilter);
    const auto wrapper = Query<IAudioWrapperFilter>(encoder.Get(), IID_IAudioWrapperFilter);
    if (!wrapper) return E_NOINTERFACE;
    RETURN_IF_FAILED(wrapper->Init(&capture::kCodecAmr, &CLSID_AudioCompressorCategory));
    RETURN_IF_FAILED(graph->AddFilter(encoder.Get(), L".ivi AMRNB Encoder"));
    sink = CreateAs<IBaseFilter>(capture::kClassMultiplexer, IID_IBaseFilter);
    if (!sink) return REGDB_E_CLASSNOTREG;
    RETURN_IF_FAILED(graph->AddFilter(sink.Get(), L"IVIMP4MuxFilter"));
    RETURN_IF_FAILED(SetFile(IID_IFileSinkFilter2, path, MEDIATYPE_Audio, capture::kFileAmr));
    return builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, capture.Get(), encoder.Get(),
                                 sink.Get());
}

HRESULT CRecordingRig::SetFile(const IID& iid, const std::wstring& path, const GUID& major,
                               const GUID& subtype) {
    const auto file = Query<IFileSinkFilter>(sink.Get(), iid);
    if (!file) return E_NOINTERFACE;
    AM_MEDIA_TYPE type{};
    type.majortype = major;
    type.subtype = subtype;
    return file->SetFileName(path.c_str(), &type);
}

HRESULT CRecordingRig::Start() {
    RETURN_IF_FAILED(builder->ControlStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, capture.Get(), nullptr,
                                            nullptr, 0, 0));
    const HRESULT run = control->Run();
    REFERENCE_TIME start = 0;
    REFERENCE_TIME stop = MAXLONGLONG;
    started_ms = HandsetMilliseconds();
    RETURN_IF_FAILED(
        builder->ControlStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, capture.Get(), &start, &stop, 0, 0));
    RETURN_IF_FAILED(AskForStart());
    loop_ = std::thread([this] { CollectEvents(); });
    return run;
}

// A start in the past is one at the moment of the asking; the pin knows when that was.
HRESULT CRecordingRig::AskForStart() {
    void* found = nullptr;
    RETURN_IF_FAILED(
        builder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, capture.Get(), IID_IAMStreamControl, &found));
    CRef<IAMStreamControl> pin;
    *pin.Put() = static_cast<IAMStreamControl*>(found);
    AM_STREAM_INFO info{};
    RETURN_IF_FAILED(pin->GetInfo(&info));
    startedAt = info.tStart;
    return S_OK;
}

HRESULT CRecordingRig::Stop() {
    REFERENCE_TIME start = 0;
    REFERENCE_TIME stop = 0;
    const HRESULT asked = seeking->GetCurrentPosition(&stop);
    stopped_ms = HandsetMilliseconds();
    stoppedAt = stop;
    const HRESULT controlled =
        builder->ControlStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, capture.Get(), &start, &stop, 1, 2);
    // A millisecond more for what the clock rounds off; the graph itself may have stopped by now.
    stoppedBy = stop + static_cast<REFERENCE_TIME>(HandsetMilliseconds() - stopped_ms + 1) * 10'000;
    const HRESULT stopped = StopGraph();
    RETURN_IF_FAILED(asked);
    RETURN_IF_FAILED(controlled);
    return stopped;
}

HRESULT CRecordingRig::StopGraph() {
    const HRESULT result = control->Stop();
    if (loop_.joinable()) loop_.join();
    return result;
}

bool CRecordingRig::Release() {
    config.Reset();
    events.Reset();
    seeking.Reset();
    control.Reset();
    builder.Reset();
    graph.Reset();
    bool clean = true;
    for (CRef<IBaseFilter>* filter : {&capture, &encoder, &sink}) {
        clean = clean && (!*filter || OtherReferences(filter->Get()) == 0);
        filter->Reset();
    }
    return clean;
}

void CRecordingRig::CollectEvents() {
    const ULONGLONG deadline = GetTickCount64() + kDeadline_ms;
    GraphEvent event{};
    do {
        if (events->GetEvent(&event.code, &event.first, &event.second, 100) != S_OK) continue;
        {
            const std::lock_guard<std::mutex> guard(lock_);
            seen_.push_back(event);
        }
        if (event.code == EC_STREAM_CONTROL_STOPPED) control->Stop();
        events->FreeEventParams(event.code, event.first, event.second);
        if (event.code == kFileWritten || event.code == kWriteFailed) {
            ended_ = true;
            return;
        }
    } while (GetTickCount64() < deadline);
}

std::vector<GraphEvent> CRecordingRig::Events() {
    const std::lock_guard<std::mutex> guard(lock_);
    return seen_;
}

bool CRecordingRig::SawEvent(long code) {
    for (const GraphEvent& event : Events()) {
        if (event.code == code) return true;
    }
    return false;
}

void LetPass(std::uint64_t handset_ms) {
    const std::uint64_t end = HandsetMilliseconds() + handset_ms;
    const auto real_ms = static_cast<DWORD>(handset_ms / HandsetClockRate());
    WaitFor([end] { return HandsetMilliseconds() >= end; }, real_ms + kDeadline_ms);
}

}  // namespace test
