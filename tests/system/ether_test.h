// What the tests of the radio on real signals share: the ether as its antenna, and a radio that receives 98.5
// MHz.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/ether_under_test.h"
#include "tests/system/booked_radio.h"

namespace test {

// What a server hands on at a time: little of it for most tests, and for those with a parameter also as much
// as that of a stick, with which a retune takes longer and all comes in jerks.
struct EtherBuffers {
    const char* name;
    std::size_t bytes;
};
inline constexpr EtherBuffers kEtherBuffers[] = {{"InSmallBuffers", EtherUnderTest::kSmallBuffer_bytes},
                                                 {"InAServersOwn", EtherUnderTest::kSticksBuffer_bytes}};

class EtherTest : public BookedRadioTest {
  protected:
    explicit EtherTest(std::size_t buffer_bytes = EtherUnderTest::kSmallBuffer_bytes) : ether(buffer_bytes) {}

    // What the radio said of its antenna: connections, a machine that is too slow.
    std::vector<std::string> AntennaWords() const {
        std::vector<std::string> words;
        for (const std::string& line : Lines(handset.Trace())) {
            if (line.find("antenna:") != std::string::npos) words.push_back(line);
        }
        return words;
    }
    // The radio is shown, tuned to 98.5 MHz and receives it.
    void Tune(Radio& radio) const {
        radio.WaitUntilShown();
        radio.Type("985");
        ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
        ASSERT_TRUE(WaitForLevel(43, 47));
    }

    EtherUnderTest ether;
};

}  // namespace test
