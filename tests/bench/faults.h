// A long day of everything that may go wrong.
#pragma once

namespace bench {

// Random faults, kills, calls, recordings and bookings for so many handset hours; prints the seed, what was
// done and what was kept. 0 when all that the user had stored is intact and no radio ended or stood still
// without a reason.
int RunFaults(double hours, unsigned seed);

}  // namespace bench
