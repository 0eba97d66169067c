// The classes of the fake graph, and what is remembered of their use.
#include "tests/unit/recording/fake_graph.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/unit/recording/fake_builders.h"
#include "tests/unit/recording/fake_filters.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // COM interfaces have none, by their binary form

namespace test {

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
                                {CLSID_AudioCompressorCategory, "audio compressors"},
                                {IID_IMediaControl, "IMediaControl"},
                                {IID_IMediaEvent, "IMediaEvent"},
                                {IID_IMediaSeeking, "IMediaSeeking"},
                                {IID_IPersistPropertyBag, "IPersistPropertyBag"},
                                {IID_IFileSinkFilter, "IFileSinkFilter"},
                                {IID_IFileSinkFilter2, "IFileSinkFilter2"},
                                {IID_IAudioWrapperFilter, "IAudioWrapperFilter"}};
    for (const Row& row : kRows) {
        if (row.id == *id) return row.name;
    }
    WCHAR text[64] = L"";
    StringFromGUID2(*id, text, 64);
    return Narrow(text);
}

namespace {

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
    // One that is left would wake up in the middle of the next test.
    EXPECT_EQ(ThreadsThatWait(), 0) << "an event thread has outlived its recording";
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

std::size_t FakeGraph::OpenBlocks() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_blocks.size();
}

void FakeGraph::Freed(void* block) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_blocks.erase(block);
}

int FakeGraph::ThreadsThatWait() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_waiting;
}

void FakeGraph::Raise(LONG event) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_events.push_back(event);
    m_raised.notify_all();
}

HRESULT FakeGraph::Note(const std::string& call, const std::string& arguments) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.push_back(arguments.empty() ? call : call + " " + arguments);
    const std::string noted = m_calls.back() + " ";
    for (const auto& [begin, result] : results) {
        if (noted.rfind(begin + " ", 0) == 0) return result;
    }
    return S_OK;
}

void FakeGraph::Hold(const std::string& object, long change) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_references[object] += change;
}

HRESULT FakeGraph::NextEvent(LONG* code) {
    std::unique_lock<std::mutex> lock(m_mutex);
    ++m_waiting;
    m_raised.wait(lock, [this] { return !m_events.empty(); });
    --m_waiting;
    *code = m_events.front();
    m_events.pop_front();
    return *code == kNoEvent ? E_ABORT : S_OK;
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
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_blocks.insert(type);
    m_blocks.insert(format);
    return type;
}

}  // namespace test

extern "C" {
// The linker sends the program's calls of CoTaskMemFree here.
using FreeCall = decltype(CoTaskMemFree);
extern FreeCall* g_realFree __asm__("__real___imp_CoTaskMemFree");
static void WINAPI NotedFree(LPVOID block) {
    if (test::g_graph != nullptr) test::g_graph->Freed(block);
    g_realFree(block);
}
FreeCall* g_notedFree __asm__("__wrap___imp_CoTaskMemFree") = NotedFree;
}
#pragma GCC diagnostic pop
