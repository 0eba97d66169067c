// A long life of the radio on a fast clock.
#pragma once

namespace bench {

// Random signals, calls, power and activation changes until both so many handset hours and so many rounds of
// the monitor have passed; prints what the radio held on the way. 0 when it lived and did not grow.
int RunSoak(double hours, long rounds);

}  // namespace bench
