// COREDLL parks suspended threads at its calls; these programs have no COREDLL around the database calls and
// suspend nobody.
#include "handset/coredll/kernel/platform_call.h"

extern "C" {
void WINAPI HandsetEnterCall(BOOL) {}
void WINAPI HandsetLeaveCall(void) {}
}
