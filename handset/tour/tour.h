// The guided tour: the radio used from outside, step by step, by somebody who hears and sees.
#pragma once

#include <string>

#include "handset/controls/console.h"

namespace panel {

// Runs the tour; pictures are asked for in the host folder `folder`. Result: the exit code of the verb.
int RunTour(const std::wstring& folder, CConsole& console);

}  // namespace panel
