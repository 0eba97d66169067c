// Where the sources start threads and make locks.
#pragma once

#include <string>
#include <vector>

namespace test {

// How many threads, and timers of the system's own threads, a source file starts or declares. One that is
// declared and started later counts once.
int ThreadsIn(const std::string& source);

// The locks that a source file makes, by the names of their variables; a class that is a lock between
// processes by its own, and an unwrapped one by the call that makes it. Not those that are merely taken.
std::vector<std::string> LocksIn(const std::string& source);

}  // namespace test
