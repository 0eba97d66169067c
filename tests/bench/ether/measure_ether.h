// The radio on the simulated ether, whose buffers are those of a stick's server.
#pragma once

namespace test {
class HandsetUnderTest;
}

namespace bench {

struct EtherOptions {
    bool hour = false;     // an hour of the radio and of its tone, else two minutes
    bool retunes = false;  // 100,000 tunings that are each received, else 300
};

// Prints the figures, and demands beside what was reached; whether all were met.
bool MeasureEther(test::HandsetUnderTest& handset, const EtherOptions& options);

}  // namespace bench
