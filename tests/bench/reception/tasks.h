// Measurements side by side, with a line of progress.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Task {
    std::string what;
    std::function<void()> run;
};

// Runs them on as many threads as the machine has processors, the first ones first; says each that is done on
// standard error. Returns when all are.
void RunAll(const std::vector<Task>& tasks);

}  // namespace bench
