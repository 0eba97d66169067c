// A fuzzer's entry: the band file's reader with any bytes.
#include <cstdint>
#include <cstdlib>

#include "tests/native/band/band_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (BrokenPromise({reinterpret_cast<const char*>(data), size}) != nullptr) std::abort();
    return 0;
}
