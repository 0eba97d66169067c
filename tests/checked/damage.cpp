// Does wrong on purpose, so that a checked run can show that it would notice.
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Where the compiler does not see through it.
volatile std::size_t g_size = 20;

// One byte behind a block of the heap, which is let go at once.
int OverrunHeap() {
    auto* block = static_cast<volatile char*>(std::malloc(g_size));
    block[g_size] = 1;
    std::free(const_cast<char*>(block));
    return 0;
}

// The same behind one that nobody ever lets go.
int OverrunLivingBlock() {
    static volatile char* block = nullptr;
    block = static_cast<volatile char*>(std::malloc(g_size));
    block[g_size] = 1;
    return 0;
}

int UnderrunHeap() {
    auto* volatile block = static_cast<volatile char*>(std::malloc(g_size));
    block[-1] = 1;
    std::free(const_cast<char*>(block));
    return 0;
}

int FreeTwice() {
    auto* volatile block = static_cast<char*>(std::malloc(g_size));
    std::free(block);
    std::free(block);
    return 0;
}

// What is freed is written to.
int WriteToFreedBlock() {
    auto* volatile block = static_cast<char*>(std::malloc(g_size));
    auto* freed = static_cast<volatile char*>(block);
    std::free(block);
    freed[g_size - 1] = 1;
    return 0;
}

int OverflowSigned() {
    volatile int large = INT_MAX;
    return large + 1 == 0;
}

int ShiftTooFar() {
    volatile int bits = 40;
    return 1 << bits;
}

struct Damage {
    const char* name;
    int (*run)();
};
constexpr Damage kDamages[] = {
    {"overrun", OverrunHeap},   {"overrun-living", OverrunLivingBlock}, {"underrun", UnderrunHeap},
    {"freed-twice", FreeTwice}, {"freed", WriteToFreedBlock},           {"overflow", OverflowSigned},
    {"shift", ShiftTooFar},
};

}  // namespace

int main(int count, char** words) {
    for (const Damage& damage : kDamages) {
        if (count == 2 && std::strcmp(words[1], damage.name) == 0) return damage.run();
    }
    std::puts("usage: damage overrun|overrun-living|underrun|freed-twice|freed|overflow|shift");
    return 2;
}
