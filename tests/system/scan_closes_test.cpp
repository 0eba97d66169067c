// Closing the radio at random moments of a scan, again and again. KORA_SCAN_CLOSES says how often,
// KORA_SCAN_SEED with which moments.
#include <cstdlib>
#include <random>

#include "tests/system/channels_on_radio.h"

namespace {

using test::Radio;
using test::WaitFor;

constexpr int kUsualCloses = 10;
// A scan of the test's band, three times, and its boxes.
constexpr DWORD kLongestScan_ms = 6000;

int Number(const char* variable, int fallback) {
    const char* text = std::getenv(variable);
    return text == nullptr ? fallback : std::atoi(text);
}

bool StartsWith(const std::string& text, const char* start) {
    return text.rfind(start, 0) == 0;
}

class ScanCloses : public test::ThreeChannelsOnRadio {
  protected:
    ScanCloses()
        : m_random(static_cast<unsigned>(Number("KORA_SCAN_SEED", static_cast<int>(GetTickCount())))) {
        handset.WriteBand(
            "[band]\nwrap=1\n[8760]\nlevel=50\n[9130]\nlevel=50\n[9500]\nlevel=50\n[9850]\nlevel=50\n"
            "[10110]\nlevel=50\n[10400]\nlevel=50\n[10790]\nlevel=50\n");
    }
    // Answers every box of the scan until that moment has come.
    void ScanFor(const Radio& radio, DWORD time_ms) const {
        radio.Command(IDC_AUTOSCAN);
        WaitFor(
            [&] {
                const HWND box = radio.Box(nullptr);
                if (box != nullptr && IsWindowVisible(box)) Radio::Answer(box, IDOK);
                return false;
            },
            time_ms);
    }
    // The moments of all closes together cover a scan from its beginning to its end.
    void CloseAtARandomMoment(int close, int closes) {
        const std::size_t from = handset.TunerCalls().size();
        const auto before = Stored();
        const double share = (close + std::uniform_real_distribution<>(0, 1)(m_random)) / closes;
        const auto moment_ms = static_cast<DWORD>(share * kLongestScan_ms);
        SCOPED_TRACE("closed after " + std::to_string(moment_ms) + " ms");
        {
            Radio radio(handset);
            radio.WaitUntilShown();
            // One in four waits with its question still unanswered.
            if (close % 4 == 0) {
                radio.Command(IDC_AUTOSCAN);
                ASSERT_NE(radio.WaitForBox(L"Stored channels"), nullptr);
            } else {
                ScanFor(radio, moment_ms);
            }
            PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
            ASSERT_TRUE(radio.WaitUntilGone()) << "the process stays";
            EXPECT_EQ(radio.ExitCode(), 0u);
        }
        const auto calls = handset.TunerCalls();
        ExpectNothingAfterTheEnd(calls);
        const std::vector<std::string> own(calls.begin() + static_cast<std::ptrdiff_t>(from), calls.end());
        ExpectNoRunBegunForNothing(own);
        ExpectStored(own, before);
    }
    static void ExpectNothingAfterTheEnd(const std::vector<std::string>& calls) {
        ASSERT_GE(calls.size(), 2u);
        EXPECT_EQ(calls[calls.size() - 2], "Close -> 0");
        EXPECT_EQ(calls.back(), "Release -> 0");
    }
    // Each begins by emptying the group. The end may come right behind that, but no further run after it.
    static void ExpectNoRunBegunForNothing(const std::vector<std::string>& calls) {
        int withoutASeek = 0;
        for (const std::string& call : calls) {
            if (StartsWith(call, "SetChannel 8750 ")) ++withoutASeek;
            if (StartsWith(call, "SeekNext")) withoutASeek = 0;
            EXPECT_LT(withoutASeek, 2) << "the group was emptied again after the end";
        }
    }
    // Before the walk has begun everything is as it was; afterwards every station that it came to is there.
    void ExpectStored(const std::vector<std::string>& calls, const std::vector<std::string>& before) {
        const auto walk = std::find(calls.rbegin(), calls.rend(), "SetChannel 8750 -> 0");
        if (walk == calls.rend()) {
            EXPECT_EQ(Stored(), before);
            return;
        }
        ++m_walks;
        std::vector<std::string> expected = {"G Test"};
        unsigned long last = 8750;
        bool sought = false;
        for (auto call = walk.base(); call != calls.end(); ++call) {
            if (sought && StartsWith(*call, "GetChannel -> 0: ")) {
                const unsigned long found = std::strtoul(call->c_str() + 17, nullptr, 10);
                if (found < last) break;
                last = found;
                expected.push_back("C Test|FM  " + std::to_string(expected.size()) + "|" +
                                   std::to_string(found) + "|");
            }
            sought = StartsWith(*call, "SeekNext -> 0");
        }
        EXPECT_EQ(Stored(), expected);
    }

    std::mt19937 m_random;
    int m_walks = 0;
};

TEST_F(ScanCloses, AtARandomMomentNothingIsCalledAfterTheReleaseNothingStaysAndNoStationIsLost) {
    const int closes = Number("KORA_SCAN_CLOSES", kUsualCloses);
    for (int close = 0; close < closes && !HasFailure(); ++close) {
        SCOPED_TRACE("close " + std::to_string(close));
        CloseAtARandomMoment(close, closes);
    }
    EXPECT_EQ(handset.Trace().find("xception"), std::string::npos);
    std::printf("%d closes, %d of them with the walk begun\n", closes, m_walks);
    // Else the test has not tried what it is for.
    EXPECT_GT(m_walks, closes / 8);
}

}  // namespace
