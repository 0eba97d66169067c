// The device's <strsafe.h>: the counted string calls. The desktop's would also forbid the uncounted ones by
// renaming them, and every system header that declares one after it.
#ifndef KORA_DEVICE_STRSAFE_H
#define KORA_DEVICE_STRSAFE_H

#ifndef STRSAFE_NO_DEPRECATE
#define STRSAFE_NO_DEPRECATE
#endif
#include_next <strsafe.h>

#endif
