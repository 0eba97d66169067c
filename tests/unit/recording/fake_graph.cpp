#include "tests/unit/recording/fake_graph.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "audiowrapper.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // COM interfaces have none, by their binary form

namespace test {
namespace {

FakeGraph* g_graph = nullptr;

std::string Narrow(const WCHAR* text) {
    std::string narrow;
    for (; text != nullptr && *text != L'\0'; ++text) narrow += static_cast<char>(*text);
    return narrow;
}

std::string NameOf(const GUID* id) {
    if (id == nullptr) return "null";
    struct Row {
        GUID id;
        const char* name;
    };
    static const Row kRows[] = {{PIN_CATEGORY_CAPTURE, "capture"},
                                {MEDIATYPE_Audio, "audio"},
                                {MEDIATYPE_Stream, "stream"},
                                {GUID_NULL, "null"},
                                {CLSID_AudioCompressorCategory, "audio compressors"}};
    for (const Row& row : kRows) {
        if (row.id == *id) return row.name;
    }
    WCHAR text[64] = L"";
    StringFromGUID2(*id, text, 64);
    return Narrow(text);
}

std::string TimeOf(const LONGLONG* time) {
    return time == nullptr ? "null" : std::to_string(*time);
}

// One object of the graph: counts its references and knows its name.
template <typename Interface>
class Fake : public Interface {
  public:
    explicit Fake(const std::string& name) : m_name(name) { g_graph->Hold(name, 1); }
    virtual ~Fake() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        const HRESULT result = Note("QueryInterface");
        return FAILED(result) ? result : Answer(iid, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        g_graph->Hold(m_name, 1);
        return static_cast<ULONG>(InterlockedIncrement(&m_count));
    }
    ULONG STDMETHODCALLTYPE Release() override {
        g_graph->Hold(m_name, -1);
        const long left = InterlockedDecrement(&m_count);
        if (left == 0) {
            Note("gone");
            delete this;
        }
        return static_cast<ULONG>(left);
    }

  protected:
    virtual HRESULT Answer(REFIID, void**) { return E_NOINTERFACE; }
    HRESULT Note(const std::string& call, const std::string& arguments = "") {
        return g_graph->Note(m_name + "." + call, arguments);
    }
    std::string m_name;

  private:
    long m_count = 1;
};

// An operation that the application has no business with.
#define UNUSED(name, parameters)                         \
    HRESULT STDMETHODCALLTYPE name parameters override { \
        return Note(#name " (unexpected)");              \
    }
#define UNUSED_DISPATCH                                             \
    UNUSED(GetTypeInfoCount, (UINT*))                               \
    UNUSED(GetTypeInfo, (UINT, LCID, ITypeInfo**))                  \
    UNUSED(GetIDsOfNames, (REFIID, LPOLESTR*, UINT, LCID, DISPID*)) \
    UNUSED(Invoke, (DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*))

class FakeStreamConfig : public Fake<IAMStreamConfig> {
  public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE SetFormat(AM_MEDIA_TYPE* type) override {
        const auto* format = reinterpret_cast<WAVEFORMATEX*>(type->pbFormat);
        return Note("SetFormat",
                    std::to_string(format->nSamplesPerSec) + " " + std::to_string(format->nChannels) + " " +
                        std::to_string(format->wBitsPerSample) + " tag " +
                        std::to_string(format->wFormatTag) + " align " + std::to_string(format->nBlockAlign) +
                        " bytes " + std::to_string(format->nAvgBytesPerSec));
    }
    UNUSED(GetFormat, (AM_MEDIA_TYPE**))
    HRESULT STDMETHODCALLTYPE GetNumberOfCapabilities(int* count, int* size) override {
        *count = static_cast<int>(g_graph->capabilities.size());
        *size = g_graph->capabilitySize;
        return Note("GetNumberOfCapabilities");
    }
    HRESULT STDMETHODCALLTYPE GetStreamCaps(int index, AM_MEDIA_TYPE** type, BYTE* capability) override {
        const HRESULT result = Note("GetStreamCaps", std::to_string(index));
        if (FAILED(result)) return result;
        std::fill_n(capability, g_graph->capabilitySize, BYTE{0xAA});
        *type = g_graph->NewMediaType(g_graph->capabilities[static_cast<std::size_t>(index)]);
        return S_OK;
    }
};

class FakePropertyBag : public Fake<IPersistPropertyBag> {
  public:
    using Fake::Fake;
    UNUSED(GetClassID, (CLSID*))
    UNUSED(InitNew, ())
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override {
        return Note("Load", bag == nullptr && log == nullptr ? "null null" : "something");
    }
    UNUSED(Save, (IPropertyBag*, BOOL, BOOL))
};

template <typename Interface>
class FakeSinkOf : public Fake<Interface> {
  public:
    using Fake<Interface>::Fake;
    HRESULT STDMETHODCALLTYPE SetFileName(LPCOLESTR path, const AM_MEDIA_TYPE* type) override {
        return this->Note("SetFileName",
                          Narrow(path) + " " + NameOf(&type->majortype) + " " + NameOf(&type->subtype));
    }
    HRESULT STDMETHODCALLTYPE GetCurFile(LPOLESTR*, AM_MEDIA_TYPE*) override {
        return this->Note("GetCurFile (unexpected)");
    }
};

using FakeSink = FakeSinkOf<IFileSinkFilter>;

class FakeSink2 : public FakeSinkOf<IFileSinkFilter2> {
  public:
    using FakeSinkOf::FakeSinkOf;
    UNUSED(SetMode, (DWORD))
    UNUSED(GetMode, (DWORD*))
};

class FakeWrapper : public Fake<IAudioWrapperFilter> {
  public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE Init(const GUID* codec, const GUID* category) override {
        return Note("Init", NameOf(codec) + " " + NameOf(category));
    }
};

class FakeFilter : public Fake<IBaseFilter> {
  public:
    using Fake::Fake;
    const std::string& Name() const { return m_name; }
    UNUSED(GetClassID, (CLSID*))
    UNUSED(Stop, ())
    UNUSED(Pause, ())
    UNUSED(Run, (REFERENCE_TIME))
    UNUSED(GetState, (DWORD, FILTER_STATE*))
    UNUSED(SetSyncSource, (IReferenceClock*))
    UNUSED(GetSyncSource, (IReferenceClock**))
    UNUSED(EnumPins, (IEnumPins**))
    UNUSED(FindPin, (LPCWSTR, IPin**))
    UNUSED(QueryFilterInfo, (FILTER_INFO*))
    UNUSED(JoinFilterGraph, (IFilterGraph*, LPCWSTR))
    UNUSED(QueryVendorInfo, (LPWSTR*))

  protected:
    HRESULT Answer(REFIID iid, void** object) override {
        if (m_name == "captureFilter" && iid == IID_IPersistPropertyBag) {
            *object = static_cast<IPersistPropertyBag*>(new FakePropertyBag("propertyBag"));
        } else if (m_name == "writer" && iid == IID_IFileSinkFilter) {
            *object = static_cast<IFileSinkFilter*>(new FakeSink("sink"));
        } else if (m_name == "multiplexer" && iid == IID_IFileSinkFilter2) {
            *object = static_cast<IFileSinkFilter2*>(new FakeSink2("sink2"));
        } else if (m_name == "encoder" && iid == IID_IAudioWrapperFilter) {
            *object = static_cast<IAudioWrapperFilter*>(new FakeWrapper("wrapper"));
        }
        return *object != nullptr ? S_OK : E_NOINTERFACE;
    }
};

std::string NameOf(IBaseFilter* filter) {
    return filter == nullptr ? "null" : static_cast<FakeFilter*>(filter)->Name();
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

template <typename Object, typename Interface>
IUnknown* Make(const std::string& name) {
    return static_cast<Interface*>(new Object(name));
}

struct ClassRow {
    const WCHAR* id;
    const char* name;
    IUnknown* (*make)(const std::string&);
};

// clang-format off
constexpr ClassRow kClasses[] = {
    {L"{bf87b6e0-8c27-11d0-b3f0-00aa003761c5}", "builder",       Make<FakeBuilder, ICaptureGraphBuilder2>},
    {L"{e436ebb3-524f-11ce-9f53-0020af0ba770}", "graph",         Make<FakeGraphBuilder, IGraphBuilder>},
    {L"{e30629d2-27e5-11ce-875d-00608cb78066}", "captureFilter", Make<FakeFilter, IBaseFilter>},
    {L"{a3abfe59-c33f-4e34-a0c4-cec0ce25ec9e}", "writer",        Make<FakeFilter, IBaseFilter>},
    {L"{94297043-bd82-4dfd-b0de-8177739c6d20}", "encoder",       Make<FakeFilter, IBaseFilter>},
    {L"{6a59220b-a696-4b79-ad80-e3c239a9d788}", "multiplexer",   Make<FakeFilter, IBaseFilter>},
};
// clang-format on

class FakeFactory : public IClassFactory {
  public:
    explicit FakeFactory(const ClassRow& row) : m_row(row) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
        return *object != nullptr ? S_OK : E_NOINTERFACE;
    }
    // One for the whole program.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void** object) override {
        *object = nullptr;
        const HRESULT result = g_graph->Note(std::string(m_row.name) + ".Create");
        if (SUCCEEDED(result)) *object = m_row.make(m_row.name);
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    const ClassRow& m_row;
};

// Media types are freed with CoTaskMemFree; each carries an object that tells when.
class FormatOwner : public IUnknown {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override {
        g_graph->Hold("(media types)", -1);
        return 1;
    }
};

FormatOwner g_formatOwner;

}  // namespace

FakeGraph::FakeGraph() {
    g_graph = this;
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    for (const ClassRow& row : kClasses) {
        CLSID id = {};
        CLSIDFromString(row.id, &id);
        DWORD registered = 0;
        CoRegisterClassObject(id, new FakeFactory(row), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                              &registered);
        m_registered.push_back(registered);
    }
}

FakeGraph::~FakeGraph() {
    for (const DWORD registered : m_registered) CoRevokeClassObject(registered);
    CoUninitialize();
    g_graph = nullptr;
}

std::vector<std::string> FakeGraph::Calls() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_calls;
}

std::vector<std::string> FakeGraph::CallsOf(const std::string& object) const {
    std::vector<std::string> calls = Calls();
    calls.erase(std::remove_if(calls.begin(), calls.end(),
                               [&](const std::string& call) { return call.rfind(object + ".", 0) != 0; }),
                calls.end());
    return calls;
}

void FakeGraph::ForgetCalls() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.clear();
}

std::map<std::string, long> FakeGraph::References() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::map<std::string, long> held;
    for (const auto& [object, count] : m_references) {
        if (count != 0 && object[0] != '(') held[object] = count;
    }
    return held;
}

long FakeGraph::OpenMediaTypes() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_references.find("(media types)");
    return found == m_references.end() ? 0 : found->second;
}

void FakeGraph::Raise(LONG event) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_events.push_back(event);
    m_raised.notify_all();
}

HRESULT FakeGraph::Note(const std::string& call, const std::string& arguments) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.push_back(arguments.empty() ? call : call + " " + arguments);
    const auto found = results.find(call);
    return found == results.end() ? S_OK : found->second;
}

void FakeGraph::Hold(const std::string& object, long change) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_references[object] += change;
}

HRESULT FakeGraph::NextEvent(LONG* code) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_raised.wait(lock, [this] { return !m_events.empty(); });
    *code = m_events.front();
    m_events.pop_front();
    return S_OK;
}

AM_MEDIA_TYPE* FakeGraph::NewMediaType(const Capability& capability) {
    Hold("(media types)", 1);
    auto* type = static_cast<AM_MEDIA_TYPE*>(CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
    auto* format = static_cast<WAVEFORMATEX*>(CoTaskMemAlloc(sizeof(WAVEFORMATEX)));
    *format = {};
    format->wFormatTag = WAVE_FORMAT_PCM;
    format->nSamplesPerSec = capability.rate_Hz;
    format->nChannels = capability.channels;
    format->wBitsPerSample = capability.bits;
    format->nBlockAlign = static_cast<WORD>(capability.channels * 2);
    format->nAvgBytesPerSec = capability.rate_Hz * format->nBlockAlign;
    *type = {};
    type->majortype = MEDIATYPE_Audio;
    type->formattype = capability.waveFormat ? FORMAT_WaveFormatEx : GUID_NULL;
    type->cbFormat = sizeof(WAVEFORMATEX);
    type->pbFormat = reinterpret_cast<BYTE*>(format);
    type->pUnk = &g_formatOwner;
    return type;
}

}  // namespace test
#pragma GCC diagnostic pop
