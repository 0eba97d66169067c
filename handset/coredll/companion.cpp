// Every program of the device runs with its companion, if there is one, from the moment this library is
// loaded.
#include "handset/state/companion.h"

namespace {

[[maybe_unused]] const HMODULE g_companion = handset::LoadCompanion();

}  // namespace
