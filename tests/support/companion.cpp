// A test program runs with its companion, if there is one, as the device's programs do through COREDLL.
#include "handset/state/companion.h"

namespace {

[[maybe_unused]] const HMODULE g_companion = handset::LoadCompanion();

}  // namespace
