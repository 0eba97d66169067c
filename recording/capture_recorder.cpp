// A recorder's life: start, time, end.
#include "recording/capture_recorder.h"

#include "recording/capture_steps.h"
#include "shell/owned.h"

namespace {

using namespace capture;

constexpr DWORD kEventThreadEnd_ms = 16000;
constexpr DWORD kAfterNoEvent_ms = 100;
// Of the stop request's two ends; the start's own request has none.
constexpr WORD kStartCookie = 1;
constexpr WORD kStopCookie = 2;
// Events of the graph.
constexpr LONG kStreamStopped = EC_STREAM_CONTROL_STOPPED;
constexpr LONG kFileClosed = 257;
constexpr LONG kFileFailed = 260;
static_assert(kStreamStopped == 26);

// The graph as the event thread holds it: with references of its own, since the recorder gives up waiting for
// the thread in the end.
struct EventSource {
    explicit EventSource(IMediaEvent* events, IMediaControl* graph) : event(events), control(graph) {
        event->AddRef();
        control->AddRef();
    }
    ComPtr<IMediaEvent> event;
    ComPtr<IMediaControl> control;
};

}  // namespace

CaptureRecorder::CaptureRecorder(DWORD format) : m_dwFormat(format) {
    BuildCaptureGraph();
}

HRESULT CaptureRecorder::ControlStream(const LONGLONG* start, const LONGLONG* stop, WORD startCookie,
                                       WORD stopCookie) {
    if (m_pCaptureGraphBuilder == nullptr) return E_POINTER;
    REFERENCE_TIME startTime = start != nullptr ? *start : 0;
    REFERENCE_TIME stopTime = stop != nullptr ? *stop : 0;
    return m_pCaptureGraphBuilder->ControlStream(
        &PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, m_pAudioCaptureFilter,
        start != nullptr ? &startTime : nullptr, stop != nullptr ? &stopTime : nullptr, startCookie,
        stopCookie);
}

int CaptureRecorder::StartCapture() {
    // Nothing flows until the graph runs and the second request opens the stream.
    if (FAILED(ControlStream(nullptr, nullptr, 0, 0))) {
        return Failed(L"m_pCaptureGraphBuilder->ControlStream() failed \n");
    }
    if (m_pMediaControl == nullptr || m_pMediaEvent == nullptr) return kFailed;
    m_pMediaControl->Run();
    const LONGLONG now = 0;
    const LONGLONG never = MAXLONGLONG;
    ControlStream(&now, &never, 0, 0);
    m_hEventThread = CreateThread(nullptr, 0, GraphEventLoop, this, 0, nullptr);
    m_dwReferenceTick = GetTickCount();
    return kDone;
}

DWORD WINAPI CaptureRecorder::GraphEventLoop(LPVOID recorder) {
    auto& self = *static_cast<CaptureRecorder*>(recorder);
    const EventSource source(self.m_pMediaEvent, self.m_pMediaControl);
    const HWND notifyWindow = self.m_hNotifyWindow;
    const UINT notifyMessage = self.m_uNotifyMessage;
    for (;;) {
        LONG code = 0;
        LONG_PTR first = 0, second = 0;
        if (FAILED(source.event->GetEvent(&code, &first, &second, INFINITE))) {
            // A graph may wake its listener without an event; that is no end of the recording.
            Sleep(kAfterNoEvent_ms);
            continue;
        }
        if (code == kStreamStopped) source.control->Stop();
        if (code == kFileFailed && notifyWindow != nullptr) PostMessageW(notifyWindow, notifyMessage, 0, 0);
        source.event->FreeEventParams(code, first, second);
        if (code == kFileClosed || code == kFileFailed) return 0;
    }
}

// Only differences are summed, so the count goes on when the tick count wraps round.
int CaptureRecorder::ElapsedMs(DWORD* elapsed_ms) {
    const DWORD now = GetTickCount();
    m_dwElapsed_ms += now - m_dwReferenceTick;
    m_dwReferenceTick = now;
    m_dwLatestTick = now;
    *elapsed_ms = m_dwElapsed_ms;
    return kDone;
}

int CaptureRecorder::StopCapture() {
    const LONGLONG start = 0;
    LONGLONG position = 0;
    if (m_pMediaSeeking != nullptr) m_pMediaSeeking->GetCurrentPosition(&position);
    ControlStream(&start, &position, kStartCookie, kStopCookie);
    if (m_pMediaControl != nullptr) m_pMediaControl->Stop();
    const DWORD ended = WaitForSingleObject(m_hEventThread, kEventThreadEnd_ms);
    if (ended == WAIT_TIMEOUT) NKDbgPrintfW(L"Wait Thread TimeOut.....");
    // Anything else: there is no thread, or it has been waited for already.
    if (ended != WAIT_OBJECT_0 && ended != WAIT_TIMEOUT) return kDone;
    CloseHandle(m_hEventThread);
    m_hEventThread = nullptr;
    return kDone;
}

void CaptureRecorder::ReleaseAll() {
    StopCapture();
    ReleaseAndClear(m_pFileSink);
    ReleaseAndClear(m_pStreamConfig);
    ReleaseAndClear(m_pPropertyBag);
    ReleaseAndClear(m_pAudioEncoder);
    ReleaseAndClear(m_pSpareFilter);
    ReleaseAndClear(m_pSinkFilter);
    ReleaseAndClear(m_pAudioCaptureFilter);
    ReleaseAndClear(m_pMediaEvent);
    ReleaseAndClear(m_pMediaControl);
    ReleaseAndClear(m_pGraph);
    ReleaseAndClear(m_pCaptureGraphBuilder);
    // Kept: the media seeking and the encoder's wrapper interface stay unreleased, one of each a recording.
}
