#include "tests/system/radio_test.h"

#include <cstdlib>

namespace test {

bool OnTheEther() {
    const char* antenna = std::getenv("KORA_TEST_ANTENNA");
    return antenna != nullptr && std::string(antenna) == "ether";
}

RadioTest::RadioTest() {
    if (OnTheEther()) m_ether = std::make_unique<EtherUnderTest>();
}

// A radio that did not play what its antenna received has shown nothing of it.
RadioTest::~RadioTest() {
    if (!OnTheEther() || IsSkipped()) return;
    EXPECT_EQ(handset.Trace().find("the simulated band plays"), std::string::npos)
        << "the simulated band played: is this a test that needs it?";
}

}  // namespace test
