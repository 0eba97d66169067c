// The engine's answers as the device's error codes.
#pragma once

#include <windows.h>

#include "handset/coredll/cedb/engine/status.h"

namespace cedb {

// `notFound`: what it means to this call that there is no such thing.
DWORD ErrorOf(Status status, DWORD notFound);

}  // namespace cedb
