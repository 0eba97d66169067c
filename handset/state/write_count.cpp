#include "handset/state/write_count.h"

namespace handset {

CWriteCount::CWriteCount() : memory_(L"Writes", sizeof(Counts)) {}

}  // namespace handset
