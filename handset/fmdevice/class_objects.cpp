// fmdevice.dll as a COM server: its classes and their factories.
#include <windows.h>

#include "handset/base/module_edge.h"
#include "handset/fmdevice/module.h"
#include "handset/fmdevice/tuner_device.h"

namespace {

struct ClassRow {
    const CLSID& clsid;
    HRESULT (*create)(REFIID iid, void** out);
};

// Factories are as old as the DLL; references to them are not counted, their locks and objects are.
class CClassFactory final : public IClassFactory {
  public:
    explicit CClassFactory(const ClassRow& row) : row_(row) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
        *out = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override try {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        return row_.create(iid, out);
    } catch (...) {
        return handset::EdgeResult();
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        fm::g_moduleUses += lock ? 1 : -1;
        return S_OK;
    }

  private:
    const ClassRow& row_;
};

const ClassRow kClasses[] = {
    {fm::kTunerClass, fm::CreateTunerDevice},
};

CClassFactory g_factories[] = {
    CClassFactory(kClasses[0]),
};
static_assert(std::size(kClasses) == std::size(g_factories), "a factory for each class");

}  // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) try {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    for (std::size_t i = 0; i < std::size(kClasses); ++i) {
        if (kClasses[i].clsid == clsid) return g_factories[i].QueryInterface(iid, out);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
} catch (...) {
    return handset::EdgeResult();
}

STDAPI DllCanUnloadNow() {
    return fm::g_moduleUses == 0 ? S_OK : S_FALSE;
}
