// The fake graph itself with its control, events and position, and the capture graph builder.
#pragma once

#include "tests/unit/recording/fake_filters.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // COM interfaces have none, by their binary form

namespace test {

inline std::string TimeOf(const LONGLONG* time) {
    return time == nullptr ? "null" : std::to_string(*time);
}

class FakeControl : public Fake<IMediaControl> {
  public:
    using Fake::Fake;
    UNUSED_DISPATCH
    HRESULT STDMETHODCALLTYPE Run() override { return Note("Run"); }
    UNUSED(Pause, ())
    HRESULT STDMETHODCALLTYPE Stop() override {
        const HRESULT result = Note("Stop");
        for (const LONG event : g_graph->eventsOfStop) g_graph->Raise(event);
        return result;
    }
    UNUSED(GetState, (LONG, OAFilterState*))
    UNUSED(RenderFile, (BSTR))
    UNUSED(AddSourceFilter, (BSTR, IDispatch**))
    UNUSED(get_FilterCollection, (IDispatch**))
    UNUSED(get_RegFilterCollection, (IDispatch**))
    UNUSED(StopWhenReady, ())
};

class FakeEvent : public Fake<IMediaEvent> {
  public:
    using Fake::Fake;
    UNUSED_DISPATCH
    UNUSED(GetEventHandle, (OAEVENT*))
    HRESULT STDMETHODCALLTYPE GetEvent(LONG* code, LONG_PTR*, LONG_PTR*, LONG wait_ms) override {
        if (wait_ms != static_cast<LONG>(INFINITE)) Note("GetEvent with a bound (unexpected)");
        return g_graph->NextEvent(code);
    }
    UNUSED(WaitForCompletion, (LONG, LONG*))
    UNUSED(CancelDefaultHandling, (LONG))
    UNUSED(RestoreDefaultHandling, (LONG))
    HRESULT STDMETHODCALLTYPE FreeEventParams(LONG code, LONG_PTR, LONG_PTR) override {
        return Note("FreeEventParams", std::to_string(code));
    }
};

class FakeSeeking : public Fake<IMediaSeeking> {
  public:
    using Fake::Fake;
    UNUSED(GetCapabilities, (DWORD*))
    UNUSED(CheckCapabilities, (DWORD*))
    UNUSED(IsFormatSupported, (const GUID*))
    UNUSED(QueryPreferredFormat, (GUID*))
    UNUSED(GetTimeFormat, (GUID*))
    UNUSED(IsUsingTimeFormat, (const GUID*))
    UNUSED(SetTimeFormat, (const GUID*))
    UNUSED(GetDuration, (LONGLONG*))
    UNUSED(GetStopPosition, (LONGLONG*))
    HRESULT STDMETHODCALLTYPE GetCurrentPosition(LONGLONG* position) override {
        *position = g_graph->position;
        return Note("GetCurrentPosition");
    }
    UNUSED(ConvertTimeFormat, (LONGLONG*, const GUID*, LONGLONG, const GUID*))
    UNUSED(SetPositions, (LONGLONG*, DWORD, LONGLONG*, DWORD))
    UNUSED(GetPositions, (LONGLONG*, LONGLONG*))
    UNUSED(GetAvailable, (LONGLONG*, LONGLONG*))
    UNUSED(SetRate, (double))
    UNUSED(GetRate, (double*))
    UNUSED(GetPreroll, (LONGLONG*))
};

class FakeGraphBuilder : public Fake<IGraphBuilder> {
  public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE AddFilter(IBaseFilter* filter, LPCWSTR name) override {
        return Note("AddFilter", NameOf(filter) + " \"" + Narrow(name) + "\"");
    }
    UNUSED(RemoveFilter, (IBaseFilter*))
    UNUSED(EnumFilters, (IEnumFilters**))
    UNUSED(FindFilterByName, (LPCWSTR, IBaseFilter**))
    UNUSED(ConnectDirect, (IPin*, IPin*, const AM_MEDIA_TYPE*))
    UNUSED(Reconnect, (IPin*))
    UNUSED(Disconnect, (IPin*))
    UNUSED(SetDefaultSyncSource, ())
    UNUSED(Connect, (IPin*, IPin*))
    UNUSED(Render, (IPin*))
    UNUSED(RenderFile, (LPCWSTR, LPCWSTR))
    UNUSED(AddSourceFilter, (LPCWSTR, LPCWSTR, IBaseFilter**))
    UNUSED(SetLogFile, (DWORD_PTR))
    UNUSED(Abort, ())
    UNUSED(ShouldOperationContinue, ())

  protected:
    HRESULT Answer(REFIID iid, void** object) override {
        if (iid == IID_IMediaControl) *object = static_cast<IMediaControl*>(new FakeControl("control"));
        if (iid == IID_IMediaEvent) *object = static_cast<IMediaEvent*>(new FakeEvent("event"));
        if (iid == IID_IMediaSeeking) *object = static_cast<IMediaSeeking*>(new FakeSeeking("seeking"));
        return *object != nullptr ? S_OK : E_NOINTERFACE;
    }
};

class FakeBuilder : public Fake<ICaptureGraphBuilder2> {
  public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE SetFiltergraph(IGraphBuilder*) override { return Note("SetFiltergraph"); }
    UNUSED(GetFiltergraph, (IGraphBuilder**))
    UNUSED(SetOutputFileName, (const GUID*, LPCOLESTR, IBaseFilter**, IFileSinkFilter**))
    HRESULT STDMETHODCALLTYPE FindInterface(const GUID* category, const GUID* type, IBaseFilter* filter,
                                            REFIID iid, void** object) override {
        *object = nullptr;
        const HRESULT result =
            Note("FindInterface", NameOf(category) + " " + NameOf(type) + " " + NameOf(filter) +
                                      (iid == IID_IAMStreamConfig ? " IAMStreamConfig" : " something else"));
        if (SUCCEEDED(result)) *object = static_cast<IAMStreamConfig*>(new FakeStreamConfig("streamConfig"));
        return result;
    }
    HRESULT STDMETHODCALLTYPE RenderStream(const GUID* category, const GUID* type, IUnknown* source,
                                           IBaseFilter* compressor, IBaseFilter* renderer) override {
        return Note("RenderStream", NameOf(category) + " " + NameOf(type) + " " +
                                        NameOf(static_cast<IBaseFilter*>(source)) + " " + NameOf(compressor) +
                                        " " + NameOf(renderer));
    }
    HRESULT STDMETHODCALLTYPE ControlStream(const GUID* category, const GUID* type, IBaseFilter* filter,
                                            REFERENCE_TIME* start, REFERENCE_TIME* stop, WORD startCookie,
                                            WORD stopCookie) override {
        return Note("ControlStream", NameOf(category) + " " + NameOf(type) + " " + NameOf(filter) + " " +
                                         TimeOf(start) + " " + TimeOf(stop) + " " +
                                         std::to_string(startCookie) + " " + std::to_string(stopCookie));
    }
    UNUSED(AllocCapFile, (LPCOLESTR, DWORDLONG))
    UNUSED(CopyCaptureFile, (LPOLESTR, LPOLESTR, int, IAMCopyCaptureFileProgress*))
    UNUSED(FindPin, (IUnknown*, PIN_DIRECTION, const GUID*, const GUID*, BOOL, int, IPin**))
};

}  // namespace test
#pragma GCC diagnostic pop
