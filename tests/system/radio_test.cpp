// The words of radio_test.h are all inline; this file holds the header to standing alone.
#include "tests/system/radio_test.h"
