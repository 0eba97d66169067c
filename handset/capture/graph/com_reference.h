// References to COM objects, and the answer to QueryInterface.
#pragma once

#include <windows.h>

#include <initializer_list>

#include "handset/base/com_reference.h"

namespace capture {

using handset::CRef;
using handset::CReferenceCount;
using handset::Query;

struct InterfaceRow {
    const IID& iid;
    IUnknown* pointer;  // the object's face for that interface
};

// QueryInterface over a table whose first row is for IUnknown.
HRESULT AnswerQuery(std::initializer_list<InterfaceRow> rows, REFIID iid, void** out);

}  // namespace capture
