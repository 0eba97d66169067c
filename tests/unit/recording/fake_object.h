// What the objects of the fake graph share: references that are counted, and calls that are written down.
#pragma once

#include "tests/unit/recording/fake_graph.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // COM interfaces have none, by their binary form

namespace test {

// The graph that there is; none outside a test.
extern FakeGraph* g_graph;

std::string Narrow(const WCHAR* text);
// Words for the identifiers that the radio uses.
std::string NameOf(const GUID* id);

// One object of the graph: counts its references and knows its name.
template <typename Interface>
class Fake : public Interface {
  public:
    explicit Fake(const std::string& name) : m_name(name) { g_graph->Hold(name, 1); }
    virtual ~Fake() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        const HRESULT result = Note("QueryInterface", NameOf(&iid));
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

}  // namespace test
#pragma GCC diagnostic pop
