// Connections, interfaces and stream control of a capture graph. What a recording does not need (output files
// made by the builder, preallocated and copied files) is refused with E_NOTIMPL.
#include "handset/capture/graph/graph_builder.h"

#include "handset/base/module_edge.h"
#include "handset/capture/graph/module.h"
#include "handset/capture/graph/pin_search.h"
#include "handset/state/locks.h"

namespace capture {
namespace {

class CGraphBuilder final : public ICaptureGraphBuilder2 {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        return AnswerQuery({{IID_IUnknown, this}, {IID_ICaptureGraphBuilder2, this}}, iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.Release(this); }

    HRESULT STDMETHODCALLTYPE SetFiltergraph(IGraphBuilder* graph) override;
    HRESULT STDMETHODCALLTYPE GetFiltergraph(IGraphBuilder** graph) override;
    HRESULT STDMETHODCALLTYPE SetOutputFileName(const GUID*, LPCOLESTR, IBaseFilter**,
                                                IFileSinkFilter**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE FindInterface(const GUID* category, const GUID* type, IBaseFilter* filter,
                                            REFIID iid, void** out) override;
    HRESULT STDMETHODCALLTYPE RenderStream(const GUID* category, const GUID* type, IUnknown* source,
                                           IBaseFilter* compressor, IBaseFilter* renderer) override;
    HRESULT STDMETHODCALLTYPE ControlStream(const GUID* category, const GUID* type, IBaseFilter* filter,
                                            REFERENCE_TIME* start, REFERENCE_TIME* stop, WORD startCookie,
                                            WORD stopCookie) override;
    HRESULT STDMETHODCALLTYPE AllocCapFile(LPCOLESTR, DWORDLONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyCaptureFile(LPOLESTR, LPOLESTR, int, IAMCopyCaptureFileProgress*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE FindPin(IUnknown* source, PIN_DIRECTION direction, const GUID* category,
                                      const GUID* type, BOOL unconnected, int index, IPin** out) override;

  private:
    CRef<IGraphBuilder> Graph();
    std::vector<CRef<IBaseFilter>> Filters();

    const CModuleUse use_;
    CReferenceCount references_;
    handset::CLock lock_;  // guards graph_
    CRef<IGraphBuilder> graph_;
};

// The pins of a filter, or the pin itself.
std::vector<CRef<IPin>> PinsOf(IUnknown* source, const PinQuery& query) {
    if (const auto pin = Query<IPin>(source, IID_IPin))
        return PinFits(pin.Get(), query) ? std::vector<CRef<IPin>>{pin} : std::vector<CRef<IPin>>{};
    return FindPins(Query<IBaseFilter>(source, IID_IBaseFilter).Get(), query);
}

// Connects `out` to the first free input of a filter.
HRESULT ConnectTo(IGraphBuilder* graph, IPin* out, IBaseFilter* filter) {
    HRESULT result = VFW_E_NOT_FOUND;
    for (const auto& in : FindPins(filter, {PINDIR_INPUT, nullptr, nullptr, true})) {
        result = graph->Connect(out, in.Get());
        if (SUCCEEDED(result)) return result;
    }
    return result;
}

HRESULT CGraphBuilder::SetFiltergraph(IGraphBuilder* graph) try {
    if (graph == nullptr) return E_POINTER;
    const std::lock_guard<handset::CLock> guard(lock_);
    if (graph_) return E_UNEXPECTED;
    graph_ = CRef<IGraphBuilder>(graph);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CGraphBuilder::GetFiltergraph(IGraphBuilder** graph) try {
    if (graph == nullptr) return E_POINTER;
    *graph = Graph().Detach();
    return *graph != nullptr ? S_OK : E_UNEXPECTED;
} catch (...) {
    return handset::EdgeResult();
}

CRef<IGraphBuilder> CGraphBuilder::Graph() {
    const std::lock_guard<handset::CLock> guard(lock_);
    return graph_;
}

std::vector<CRef<IBaseFilter>> CGraphBuilder::Filters() {
    std::vector<CRef<IBaseFilter>> filters;
    CRef<IEnumFilters> list;
    const auto graph = Graph();
    if (!graph || FAILED(graph->EnumFilters(list.Put()))) return filters;
    for (CRef<IBaseFilter> filter; list->Next(1, filter.Put(), nullptr) == S_OK;) filters.push_back(filter);
    return filters;
}

// On the filter itself, then on its pins.
HRESULT CGraphBuilder::FindInterface(const GUID* category, const GUID* type, IBaseFilter* filter, REFIID iid,
                                     void** out) try {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (filter == nullptr) return E_POINTER;
    if (SUCCEEDED(filter->QueryInterface(iid, out))) return S_OK;
    for (const auto& pin : FindPins(filter, {PINDIR_OUTPUT, category, type, false})) {
        if (SUCCEEDED(pin->QueryInterface(iid, out))) return S_OK;
    }
    return E_NOINTERFACE;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CGraphBuilder::RenderStream(const GUID* category, const GUID* type, IUnknown* source,
                                    IBaseFilter* compressor, IBaseFilter* renderer) try {
    if (source == nullptr) return E_POINTER;
    const auto graph = Graph();
    if (!graph) return E_UNEXPECTED;
    const auto pins = PinsOf(source, {PINDIR_OUTPUT, category, type, true});
    if (pins.empty()) return VFW_E_NOT_FOUND;
    CRef<IPin> out = pins.front();
    if (compressor != nullptr) {
        const HRESULT result = ConnectTo(graph.Get(), out.Get(), compressor);
        if (FAILED(result)) return result;
        const auto compressed = FindPins(compressor, {PINDIR_OUTPUT, nullptr, nullptr, true});
        if (compressed.empty()) return VFW_E_NOT_FOUND;
        out = compressed.front();
    }
    return renderer != nullptr ? ConnectTo(graph.Get(), out.Get(), renderer) : graph->Render(out.Get());
} catch (...) {
    return handset::EdgeResult();
}

// No start or stop time: now. The start is asked for first, so that both together stop the stream.
HRESULT CGraphBuilder::ControlStream(const GUID* category, const GUID* type, IBaseFilter* filter,
                                     REFERENCE_TIME* start, REFERENCE_TIME* stop, WORD startCookie,
                                     WORD stopCookie) try {
    if (!Graph()) return E_UNEXPECTED;
    const auto filters =
        filter != nullptr ? std::vector<CRef<IBaseFilter>>{CRef<IBaseFilter>(filter)} : Filters();
    HRESULT result = VFW_E_NOT_FOUND;
    for (const auto& candidate : filters) {
        for (const auto& pin : FindPins(candidate.Get(), {PINDIR_OUTPUT, category, type, false})) {
            const auto control = Query<IAMStreamControl>(pin.Get(), IID_IAMStreamControl);
            if (!control) continue;
            result = control->StartAt(start, startCookie);
            if (SUCCEEDED(result)) result = control->StopAt(stop, FALSE, stopCookie);
            if (FAILED(result)) return result;
        }
    }
    return result;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CGraphBuilder::FindPin(IUnknown* source, PIN_DIRECTION direction, const GUID* category,
                               const GUID* type, BOOL unconnected, int index, IPin** out) try {
    if (source == nullptr || out == nullptr) return E_POINTER;
    *out = nullptr;
    if (index < 0) return E_INVALIDARG;
    auto pins = PinsOf(source, {direction, category, type, unconnected != FALSE});
    if (static_cast<std::size_t>(index) >= pins.size()) return E_FAIL;
    *out = pins[static_cast<std::size_t>(index)].Detach();
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

}  // namespace

HRESULT CreateGraphBuilder(REFIID iid, void** out) {
    CRef<ICaptureGraphBuilder2> builder;
    *builder.Put() = new CGraphBuilder;
    return builder->QueryInterface(iid, out);
}

}  // namespace capture
