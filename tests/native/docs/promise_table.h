// The rows of a table of promises in a Markdown file, and the tests that they name.
#pragma once

#include <string>
#include <vector>

namespace test {

// One row below a header whose last column is "Held by".
struct Promise {
    int nLine;                        // from 1, in the file
    std::string section;              // the heading above it
    std::vector<std::string> cells;   // without the last one
    std::vector<std::string> heldBy;  // "Suite.Test", as written between backticks
};

std::vector<Promise> ReadPromises(const std::string& markdown);

}  // namespace test
