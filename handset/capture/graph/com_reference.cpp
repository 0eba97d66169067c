// QueryInterface.
#include "handset/capture/graph/com_reference.h"
#include "handset/base/module_edge.h"

namespace capture {

HRESULT AnswerQuery(std::initializer_list<InterfaceRow> rows, REFIID iid, void** out) try {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    for (const InterfaceRow& row : rows) {
        if (row.iid != iid) continue;
        row.pointer->AddRef();
        *out = row.pointer;
        return S_OK;
    }
    return E_NOINTERFACE;
} catch (...) {
    return handset::EdgeResult();
}

}  // namespace capture
