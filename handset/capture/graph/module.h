// What keeps capture.dll loaded: living objects and locks of its class factories.
#pragma once

#include <atomic>

namespace capture {

inline std::atomic<long> g_moduleUses{0};

// A part of every object that a client can hold.
class CModuleUse {
  public:
    CModuleUse() { ++g_moduleUses; }
    ~CModuleUse() { --g_moduleUses; }
    CModuleUse(const CModuleUse&) = delete;
    CModuleUse& operator=(const CModuleUse&) = delete;
};

}  // namespace capture
