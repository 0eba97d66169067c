// The faults that the handset can inject, by their names in the state value "Fault".
#pragma once

#include <string>

namespace panel {

bool IsFault(const std::wstring& name);
// All names, between commas.
std::wstring FaultNames();
// What each of them does, one line a name.
std::wstring FaultHelp();

}  // namespace panel
