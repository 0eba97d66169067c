// A short life of the radio, whose every line is written down: the phone's own program is held to the same
// list.
#include <cstring>
#include <regex>

#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::ElementsAreArray;
using Lines = std::vector<std::string>;

class ShortLife : public test::RadioTest {
  protected:
    static Lines Written(const char* name) {
        Lines lines =
            test::Lines(test::ReadWholeFile(Folder() + std::wstring(name, name + std::strlen(name))));
        if (!lines.empty() && lines.back().empty()) lines.pop_back();
        return lines;
    }

    // The monitor's line comes when it comes, between two pieces of another line too.
    static Lines WithoutTheLevel(const std::string& trace) {
        return test::Lines(std::regex_replace(trace, std::regex("FM: Signal = -?[0-9]+ \\r?\\n"), ""));
    }

    // Without the lines of the window's place in front or behind, and of an antenna.
    static Lines Without(const Lines& lines, const Lines& beginnings) {
        Lines left;
        for (std::string line : lines) {
            while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.pop_back();
            const bool out = std::any_of(beginnings.begin(), beginnings.end(),
                                         [&](const std::string& begin) { return line.rfind(begin, 0) == 0; });
            if (!out && !line.empty()) left.push_back(line);
        }
        return left;
    }

  private:
    static std::wstring Folder() {
        const std::string data = KORA_TEST_DATA;
        return std::wstring(data.begin(), data.end()) + L"/device-script/";
    }
};

TEST_F(ShortLife, TraceConsoleAndOrdersToTheTunerAreThoseOfTheList) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("1012");
    ASSERT_TRUE(WaitForCall("SetChannel 10120 -> 0"));
    radio.Send(0x8002, SKIN_SEEK_UP, 0);
    ASSERT_TRUE(WaitForCall("SeekNext -> 0"));
    radio.Command(static_cast<WORD>(IDC_EXIT));
    ASSERT_TRUE(radio.WaitUntilGone());

    const Lines comings = {"===WA_ACTIVE", "***WA_INACTIVE", "FM device: antenna"};
    EXPECT_THAT(Without(WithoutTheLevel(handset.Trace()), comings), ElementsAreArray(Written("trace.txt")));
    EXPECT_THAT(Without(test::Lines(handset.Console()), {}), ElementsAreArray(Written("console.txt")));
    EXPECT_THAT(Without(handset.TunerCalls(),
                        {"GetVolume", "GetChannel", "GetSignal", "GetStereo", "GetRDS", "GetPTY"}),
                ElementsAreArray(Written("tuner.txt")));
}

}  // namespace
