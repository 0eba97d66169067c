// Turns the radio's sound into one file: a DirectShow graph of the device's audio capture filter and either a
// WAV writer or an AMR-NB encoder with a multiplexer. One object serves one recording.
//
// Made, built, started, asked for the time and stopped on the main thread; ElapsedMs may be called from one
// other thread. Inside, GraphEventLoop waits for the graph's events on a thread of its own and touches
// nothing but the graph. Operations give 0 for success and 1 for failure; a failed one has traced why, and
// the others may still be called.
#pragma once

#include <windows.h>

#include <dshow.h>

#include "audiowrapper.h"

class CaptureRecorder {
  public:
    // Runs BuildCaptureGraph. For `format` see recording/capture_format.h.
    explicit CaptureRecorder(DWORD format);
    CaptureRecorder(const CaptureRecorder&) = delete;
    CaptureRecorder& operator=(const CaptureRecorder&) = delete;

    // The graph with the capture filter and the format that its pin is to deliver (capture_graph.cpp). Called
    // again, it ends a recording that runs, builds everything anew and gives back what it had built before.
    int BuildCaptureGraph();
    // The filters that write `path`, a full name on the device (output_chain.cpp).
    int BuildOutputChain(const WCHAR* path);
    int StartCapture();
    // Milliseconds since StartCapture; always 0.
    int ElapsedMs(DWORD* elapsed_ms);
    // Ends the stream and the graph, and waits up to 16 s for the event thread. Always 0.
    int StopCapture();
    // StopCapture, then gives the interfaces back. For the owner, before it deletes the object.
    void ReleaseAll();

  private:
    int CreateGraph();
    int CreateCaptureFilter();
    int SelectFormat();
    int BuildWavChain(const WCHAR* path);
    int BuildAmrChain(const WCHAR* path);
    int CreateEncoder();
    int AddToGraph(IBaseFilter* filter, const WCHAR* name);
    int Render(IBaseFilter* encoder);
    HRESULT ControlStream(const LONGLONG* start, const LONGLONG* stop, WORD startCookie, WORD stopCookie);
    static DWORD WINAPI GraphEventLoop(LPVOID recorder);

    HANDLE m_hEventThread = nullptr;
    HWND m_hNotifyWindow = nullptr;  // told of event 260; nobody asks for it yet
    UINT m_uNotifyMessage = 0;
    DWORD m_dwReferenceTick = 0;
    DWORD m_dwLatestTick = 0;
    DWORD m_dwElapsed_ms = 0;
    DWORD m_dwFormat;
    ICaptureGraphBuilder2* m_pCaptureGraphBuilder = nullptr;
    IGraphBuilder* m_pGraph = nullptr;
    IMediaControl* m_pMediaControl = nullptr;
    IMediaEvent* m_pMediaEvent = nullptr;
    IMediaSeeking* m_pMediaSeeking = nullptr;
    IBaseFilter* m_pAudioCaptureFilter = nullptr;
    IBaseFilter* m_pSinkFilter = nullptr;   // the WAV writer or the multiplexer
    IBaseFilter* m_pSpareFilter = nullptr;  // never set
    IBaseFilter* m_pAudioEncoder = nullptr;
    IPersistPropertyBag* m_pPropertyBag = nullptr;         // of the capture filter
    IAMStreamConfig* m_pStreamConfig = nullptr;            // of its pin
    IFileSinkFilter* m_pFileSink = nullptr;                // of the sink filter
    IAudioWrapperFilter* m_pAudioWrapperFilter = nullptr;  // of the encoder
};
