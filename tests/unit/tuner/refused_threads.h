// Threads that the platform refuses to make, for the length of a test.
#pragma once

namespace test {

// True: CreateThread of the program under test fails.
extern bool g_threadsRefused;

}  // namespace test
