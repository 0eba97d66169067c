// What the steps of building and ending a capture graph share: failure lines, and interface pointers that are
// kept in plain fields.
#pragma once

#include <windows.h>

namespace capture {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;

// Traces why a step failed.
inline int Failed(const WCHAR* line) {
    NKDbgPrintfW(L"%.127s", line);
    return kFailed;
}

inline constexpr const WCHAR* kCreationFailed = L"CoCreateInstance() failed \n";

template <typename Interface>
void ReleaseAndClear(Interface*& field) {
    if (field != nullptr) field->Release();
    field = nullptr;
}

// Where a call is to put a new interface; what the field held is given back first.
template <typename Interface>
void** Anew(Interface*& field) {
    ReleaseAndClear(field);
    return reinterpret_cast<void**>(&field);
}

template <typename Interface>
bool Create(REFCLSID classId, REFIID iid, Interface*& field) {
    return SUCCEEDED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, iid, Anew(field)));
}

// False for a null object as well: a step that follows a failed one fails too.
template <typename Object, typename Interface>
bool Query(Object* object, REFIID iid, Interface*& field) {
    void** place = Anew(field);
    return object != nullptr && SUCCEEDED(object->QueryInterface(iid, place));
}

}  // namespace capture
