// How many inputs a fuzzer makes.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace test {

// The number that is usual with every run of the tests; KORA_FUZZ_INPUTS sets another one for all fuzzers.
inline std::uint64_t FuzzInputs(std::uint64_t usual) {
    const char* text = std::getenv("KORA_FUZZ_INPUTS");
    return text == nullptr ? usual : std::strtoull(text, nullptr, 0);
}

}  // namespace test
