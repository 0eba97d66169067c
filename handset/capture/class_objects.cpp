// capture.dll as a COM server: its classes and their factories.
#include "handset/base/module_edge.h"
#include "handset/capture/encoder/amr_encoder_filter.h"
#include "handset/capture/files/file_sink.h"
#include "handset/capture/graph/class_ids.h"
#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/direct_show.h"
#include "handset/capture/graph/graph_builder.h"
#include "handset/capture/graph/module.h"
#include "handset/capture/source/capture_filter.h"

namespace {

struct ClassRow {
    const CLSID& clsid;
    HRESULT (*create)(REFIID iid, void** out);
};

// clang-format off
const ClassRow kClasses[] = {
    {capture::kClassAudioCapture, capture::CreateCaptureFilter},
    {capture::kClassWavWriter,    capture::CreateWavSink},
    {capture::kClassAmrEncoder,   capture::CreateAmrEncoderFilter},
    {capture::kClassMultiplexer,  capture::CreateAmrSink},
    {capture::kClassGraphBuilder, capture::CreateGraphBuilder},
};
// clang-format on

// A factory for a row of the table. It lives as long as somebody holds it.
class CClassFactory final : public IClassFactory {
  public:
    explicit CClassFactory(const ClassRow& row) : row_(row) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override try {
        return capture::AnswerQuery({{IID_IUnknown, this}, {IID_IClassFactory, this}}, iid, out);
    } catch (...) {
        return handset::EdgeResult();
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.Release(this); }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override try {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : row_.create(iid, out);
    } catch (...) {
        return handset::EdgeResult();
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        capture::g_moduleUses += lock ? 1 : -1;
        return S_OK;
    }

  private:
    const capture::CModuleUse use_;
    const ClassRow& row_;
    handset::CReferenceCount references_;
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) try {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    for (const ClassRow& row : kClasses) {
        if (row.clsid != clsid) continue;
        capture::CRef<IClassFactory> factory;
        *factory.Put() = new CClassFactory(row);
        return factory->QueryInterface(iid, out);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
} catch (...) {
    return handset::EdgeResult();
}

STDAPI DllCanUnloadNow() {
    return capture::g_moduleUses == 0 ? S_OK : S_FALSE;
}
