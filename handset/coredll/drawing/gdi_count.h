// The GDI objects that the process has made through COREDLL and not given back. (The host's own count is not
// to be had everywhere.)
#pragma once

#include <windows.h>

namespace coredll {

// Notes a new object (nothing for a null one) and gives it back. Any thread; keeps the last error and
// throws nothing.
HANDLE GdiMade(HANDLE object);
void GdiGone(HANDLE object);

template <typename Handle>
Handle Made(Handle object) {
    return static_cast<Handle>(GdiMade(object));
}

}  // namespace coredll
