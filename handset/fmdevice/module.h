// What keeps fmdevice.dll loaded: living objects and locks of its class factories.
#pragma once

#include <atomic>

namespace fm {

inline std::atomic<long> g_moduleUses{0};

}  // namespace fm
