// From the moment this library is loaded, every program of the device runs with its companion, if there is
// one, and is known as the handset's.
#include "handset/state/companion.h"
#include "handset/state/own_windows.h"

namespace {

[[maybe_unused]] const HMODULE g_companion = handset::LoadCompanion();
[[maybe_unused]] const bool g_joined = (handset::JoinHandset(), true);

}  // namespace
