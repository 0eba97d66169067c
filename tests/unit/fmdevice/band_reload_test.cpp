// The band file while the radio plays.
#include <filesystem>

#include "tests/support/trace_capture.h"
#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class BandReload : public test::TunerTest {
  protected:
    bool SignalBecomes(std::int32_t level) {
        return test::WaitFor([&] { return Signal() == level; }, 5000);
    }
};

TEST_F(BandReload, LevelsFollowTheFile) {
    WriteBand("[8750]\nlevel=45\n");
    PowerUp();
    EXPECT_EQ(Signal(), 45);
    WriteBand("[8750]\nlevel=12\n");
    EXPECT_TRUE(SignalBecomes(12));
    // Of the same size, and perhaps within the resolution of the file's time.
    WriteBand("[8750]\nlevel=13\n");
    EXPECT_TRUE(SignalBecomes(13));
}

TEST_F(BandReload, TextsFollowTheFile) {
    WriteBand("[8750]\nlevel=45\nps=ONE\n");
    PowerUp();
    WCHAR text[kRdsTextCapacity];
    std::int32_t kind = 0;
    const auto becomes = [&](const std::wstring& name) {
        return test::WaitFor([&] { return device_->GetRDSData(text, &kind) == S_OK && text == name; }, 5000);
    };
    EXPECT_TRUE(becomes(L"ONE"));
    WriteBand("[8750]\nlevel=45\nps=TWO\n");
    EXPECT_TRUE(becomes(L"TWO"));
}

TEST_F(BandReload, WithoutAFileTheBandIsNoiseUntilThereIsOne) {
    std::string trace;
    {
        test::StreamCapture capture(STD_ERROR_HANDLE);
        PowerUp();
        for (int i = 0; i < 20; ++i) Signal();
        trace = capture.Text();
    }
    EXPECT_EQ(trace,
              "FM device: " + std::filesystem::path(handset::HostPath(L"\\Windows\\band.ini")).u8string() +
                  ": there is no band file; the band is nothing but noise\n");
    EXPECT_EQ(Signal(), 3);
    WriteBand("[8750]\nlevel=45\n");
    EXPECT_TRUE(SignalBecomes(45));
}

TEST_F(BandReload, AFaultIsALineInTheDebugOutputOnceAndTheRestWorks) {
    WriteBand("[8750]\nlevel=45\nstereo=perhaps\n");
    std::string trace;
    {
        test::StreamCapture capture(STD_ERROR_HANDLE);
        PowerUp();
        for (int i = 0; i < 20; ++i) Signal();
        trace = capture.Text();
    }
    EXPECT_EQ(trace, "FM device: band.ini:3: \"stereo\" wants 0 or 1, not \"perhaps\"\n");
    EXPECT_EQ(Signal(), 45);
}

}  // namespace
