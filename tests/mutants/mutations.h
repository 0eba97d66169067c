// The small mistakes that a line of C++ could hold instead: what `./kora mutants` tries on the application.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mutants {

struct Mutation {
    std::size_t offset = 0;  // of the first byte that is replaced
    std::string before;
    std::string after;
    int line = 0;  // counted from 1
};

// Every mutation of a source file, in the order of its text: comparisons, logical and arithmetic operators,
// truth values, negations, whole numbers (but a lone 0 as an argument), and calls that stand alone as a
// statement on their line. The source is laid out by clang-format: a binary operator has a blank on each
// side, a template's bracket has none. Comments, texts, preprocessor lines and static assertions are left
// alone.
[[nodiscard]] std::vector<Mutation> MutationsOf(const std::string& source);

[[nodiscard]] std::string Apply(const std::string& source, const Mutation& mutation);

}  // namespace mutants
