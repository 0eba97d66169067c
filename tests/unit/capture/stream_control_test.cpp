// When the stream flows: the capture pin's stream control, through the builder and directly.
#include "handset/coredll/kernel/platform_call.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/recorded_sound.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::CRecordingRig;
using test::CRef;

constexpr wchar_t kWav[] = L"\\take.wav";
constexpr REFERENCE_TIME kSecond = 10'000'000;

class StreamControl : public test::CaptureTest {
  protected:
    void SetUp() override {
        PlayTone();
        ASSERT_EQ(rig_.Build({44100, 2, 16}), S_OK);
        ASSERT_EQ(rig_.AttachWav(kWav), S_OK);
        void* out = nullptr;
        ASSERT_EQ(rig_.builder->FindInterface(&PIN_CATEGORY_CAPTURE, nullptr, rig_.capture.Get(),
                                              IID_IAMStreamControl, &out),
                  S_OK);
        *pin_.Put() = static_cast<IAMStreamControl*>(out);
    }
    void TearDown() override { pin_.Reset(); }

    DWORD Flags() {
        AM_STREAM_INFO info{};
        EXPECT_EQ(pin_->GetInfo(&info), S_OK);
        return info.dwFlags;
    }
    double Recorded() { return test::ReadWav(test::Bytes(Host(kWav))).Seconds(); }

    CRecordingRig rig_;
    CRef<IAMStreamControl> pin_;
};

TEST_F(StreamControl, FlowsUntilItIsTold) {
    EXPECT_EQ(Flags(), 0u);
    ASSERT_EQ(rig_.control->Run(), S_OK);
    test::LetPass(400);
    ASSERT_EQ(rig_.control->Stop(), S_OK);
    EXPECT_NEAR(Recorded(), 0.4, 0.1);
}

TEST_F(StreamControl, NoTimesHoldTheStreamBack) {
    ASSERT_EQ(rig_.builder->ControlStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, rig_.capture.Get(),
                                          nullptr, nullptr, 0, 0),
              S_OK);
    EXPECT_EQ(Flags(), static_cast<DWORD>(AM_STREAM_INFO_DISCARDING));
    ASSERT_EQ(rig_.control->Run(), S_OK);
    test::LetPass(300);
    ASSERT_EQ(rig_.control->Stop(), S_OK);
    EXPECT_EQ(Recorded(), 0);
}

TEST_F(StreamControl, StartsAndStopsOnTheSampleOfTheTimesGiven) {
    pin_->StopAt(nullptr, FALSE, 0);
    const REFERENCE_TIME start = kSecond / 4;
    const REFERENCE_TIME stop = kSecond / 2;
    ASSERT_EQ(pin_->StartAt(&start, 5), S_OK);
    ASSERT_EQ(pin_->StopAt(&stop, FALSE, 6), S_OK);
    EXPECT_EQ(Flags(), static_cast<DWORD>(AM_STREAM_INFO_START_DEFINED | AM_STREAM_INFO_STOP_DEFINED |
                                          AM_STREAM_INFO_DISCARDING));
    ASSERT_EQ(rig_.control->Run(), S_OK);
    EXPECT_TRUE(test::WaitFor([&] { return Flags() == AM_STREAM_INFO_DISCARDING; }));
    ASSERT_EQ(rig_.control->Stop(), S_OK);
    EXPECT_EQ(test::ReadWav(test::Bytes(Host(kWav))).Frames(), 44100u / 4);
}

TEST_F(StreamControl, TellsOfEveryChangeThatHasACookie) {
    const REFERENCE_TIME early = kSecond / 10;
    pin_->StopAt(nullptr, FALSE, 0);
    pin_->StartAt(&early, 0);
    ASSERT_EQ(rig_.control->Run(), S_OK);
    test::WaitFor([&] { return (Flags() & AM_STREAM_INFO_DISCARDING) == 0; });
    ASSERT_EQ(pin_->StopAt(nullptr, FALSE, 42), S_OK);
    ASSERT_EQ(pin_->StartAt(nullptr, 43), S_OK);
    EXPECT_TRUE(test::WaitFor([&] { return Flags() == 0; }));
    std::vector<test::GraphEvent> told;
    for (test::GraphEvent event{};
         rig_.events->GetEvent(&event.code, &event.first, &event.second, 0) == S_OK;) {
        if (event.code == EC_STREAM_CONTROL_STARTED || event.code == EC_STREAM_CONTROL_STOPPED)
            told.push_back(event);
        rig_.events->FreeEventParams(event.code, event.first, event.second);
    }
    ASSERT_EQ(told.size(), 2u);
    EXPECT_EQ(told[0].code, EC_STREAM_CONTROL_STOPPED);
    EXPECT_EQ(told[0].second, 42);
    EXPECT_EQ(told[1].code, EC_STREAM_CONTROL_STARTED);
    EXPECT_EQ(told[1].second, 43);
    rig_.control->Stop();
}

TEST_F(StreamControl, AStopForNowReturnsWhenAllSoundIsWritten) {
    ASSERT_EQ(rig_.control->Run(), S_OK);
    const std::uint64_t began = HandsetMilliseconds();
    test::LetPass(500);
    const std::uint64_t ended = HandsetMilliseconds();
    ASSERT_EQ(pin_->StopAt(nullptr, FALSE, 0), S_OK);
    EXPECT_EQ(Flags(), static_cast<DWORD>(AM_STREAM_INFO_DISCARDING));
    const double written = static_cast<double>(test::Bytes(Host(kWav)).size() - 44) / 176400;
    EXPECT_NEAR(written, static_cast<double>(ended - began) / 1000, 0.03);
    rig_.control->Stop();
}

TEST_F(StreamControl, ARequestIsTakenBackByTheEndOfTime) {
    const REFERENCE_TIME never = MAXLONGLONG;
    const REFERENCE_TIME later = 100 * kSecond;
    pin_->StartAt(&later, 1);
    pin_->StopAt(&later, FALSE, 1);
    AM_STREAM_INFO info{};
    ASSERT_EQ(pin_->GetInfo(&info), S_OK);
    EXPECT_EQ(info.tStart, later);
    EXPECT_EQ(info.tStop, later);
    EXPECT_EQ(info.dwStopCookie, 1u);
    pin_->StartAt(&never, 0);
    pin_->StopAt(&never, FALSE, 0);
    EXPECT_EQ(Flags(), 0u);
    EXPECT_EQ(pin_->GetInfo(nullptr), E_POINTER);
}

TEST_F(StreamControl, APausedGraphRecordsNothingAndGoesOnAfterwards) {
    ASSERT_EQ(rig_.control->Run(), S_OK);
    test::LetPass(300);
    ASSERT_TRUE(SUCCEEDED(rig_.control->Pause()));
    test::LetPass(600);
    ASSERT_TRUE(SUCCEEDED(rig_.control->Run()));
    test::LetPass(300);
    ASSERT_EQ(rig_.control->Stop(), S_OK);
    EXPECT_NEAR(Recorded(), 0.6, 0.15);
}

TEST_F(StreamControl, TheGraphsPositionIsTheHandsetsTimeSinceItRan) {
    ASSERT_EQ(rig_.control->Run(), S_OK);
    const std::uint64_t began = HandsetMilliseconds();
    test::LetPass(300);
    REFERENCE_TIME position = 0;
    ASSERT_EQ(rig_.seeking->GetCurrentPosition(&position), S_OK);
    EXPECT_NEAR(static_cast<double>(position) / 10000, static_cast<double>(HandsetMilliseconds() - began),
                30);
    rig_.control->Stop();
}

// As the radio stops: a start long past, and a stop at the position that it asked for a moment before.
TEST_F(StreamControl, AStartOfAStreamThatFlowsDoesNotUndoAStopThatIsAMomentOld) {
    ASSERT_EQ(rig_.control->Run(), S_OK);
    test::LetPass(200);
    REFERENCE_TIME start = 0;
    REFERENCE_TIME stop = 0;
    ASSERT_EQ(rig_.seeking->GetCurrentPosition(&stop), S_OK);
    test::LetPass(20);
    ASSERT_EQ(rig_.builder->ControlStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, rig_.capture.Get(), &start,
                                          &stop, 0, 0),
              S_OK);
    EXPECT_EQ(Flags(), static_cast<DWORD>(AM_STREAM_INFO_DISCARDING));
    const std::size_t size = test::Bytes(Host(kWav)).size();
    test::LetPass(200);
    EXPECT_EQ(test::Bytes(Host(kWav)).size(), size);
    rig_.control->Stop();
}

}  // namespace
