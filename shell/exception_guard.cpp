#include "shell/exception_guard.h"

#include <seh.h>

DEFINE_GUARDED_CALL(CallUnderGuard);
