// Waiting for what other programs do.
#pragma once

#include <functional>

namespace panel {

// Waits until the condition holds, at most so long in real time; false when it never did.
bool WaitUntil(const std::function<bool()>& condition, unsigned timeout_ms);

}  // namespace panel
