// Start and stop requests against the frames that they fall on.
#include "handset/capture/graph/stream_control.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using capture::CStreamControl;
using capture::kStreamSecond;
using capture::StreamRequest;

struct Outcome {
    std::vector<std::int64_t> flowed;  // the frames that were wanted
    std::vector<std::uint32_t> told;   // cookies of the changes, in order
};

// Walks frames `from` to `to` of a stream at 8 kHz in pieces.
Outcome Walk(CStreamControl* control, std::int64_t from, std::int64_t to, std::uint64_t piece = 160) {
    Outcome outcome;
    while (from < to) {
        std::uint64_t left = std::min<std::uint64_t>(piece, static_cast<std::uint64_t>(to - from));
        while (left > 0) {
            const CStreamControl::Step step = control->Next(from, left, 8000);
            if (step.started || step.stopped) outcome.told.push_back(step.cookie);
            for (std::uint64_t i = 0; i < step.frames; ++i, ++from) {
                if (step.flowing) outcome.flowed.push_back(from);
            }
            left -= step.frames;
        }
    }
    return outcome;
}

TEST(StreamControl, AStreamFlowsUntilSomebodyAsks) {
    CStreamControl control;
    EXPECT_EQ(Walk(&control, 0, 1000).flowed.size(), 1000u);
}

TEST(StreamControl, StartsAndStopsOnTheVeryFrame) {
    CStreamControl control;
    control.SetFlowing(false);
    control.RequestStart(StreamRequest{kStreamSecond, 7});
    control.RequestStop(StreamRequest{2 * kStreamSecond + 1, 8});
    const Outcome outcome = Walk(&control, 0, 24000, 333);
    ASSERT_EQ(outcome.flowed.size(), 8001u);
    EXPECT_EQ(outcome.flowed.front(), 8000);
    EXPECT_EQ(outcome.flowed.back(), 16000);
    EXPECT_EQ(outcome.told, (std::vector<std::uint32_t>{7, 8}));
}

TEST(StreamControl, ARequestForATimeThatIsGoneActsAtOnce) {
    CStreamControl control;
    control.RequestStop(StreamRequest{0, 2});
    const Outcome outcome = Walk(&control, 5000, 6000);
    EXPECT_TRUE(outcome.flowed.empty());
    EXPECT_EQ(outcome.told, std::vector<std::uint32_t>{2});
}

TEST(StreamControl, AStartChangesNothingInAStreamThatFlows) {
    CStreamControl control;
    control.RequestStart(StreamRequest{0, 1});
    control.RequestStop(StreamRequest{kStreamSecond, 2});
    const Outcome outcome = Walk(&control, 4000, 12000);
    EXPECT_EQ(outcome.flowed.size(), 4000u);
    EXPECT_EQ(outcome.told, std::vector<std::uint32_t>{2});
}

TEST(StreamControl, AtTheSameTimeTheStopComesLast) {
    CStreamControl control;
    control.SetFlowing(false);
    control.RequestStart(StreamRequest{kStreamSecond, 1});
    control.RequestStop(StreamRequest{kStreamSecond, 2});
    EXPECT_TRUE(Walk(&control, 0, 16000).flowed.empty());
}

TEST(StreamControl, AStopBeforeAStartMakesAGap) {
    CStreamControl control;
    control.RequestStop(StreamRequest{kStreamSecond, 1});
    control.RequestStart(StreamRequest{2 * kStreamSecond, 2});
    const Outcome outcome = Walk(&control, 0, 24000);
    EXPECT_EQ(outcome.flowed.size(), 16000u);
    EXPECT_EQ(outcome.told, (std::vector<std::uint32_t>{1, 2}));
}

TEST(StreamControl, ARequestCanBeTakenBack) {
    CStreamControl control;
    control.RequestStop(StreamRequest{kStreamSecond, 1});
    control.RequestStop(std::nullopt);
    EXPECT_EQ(Walk(&control, 0, 16000).flowed.size(), 16000u);
}

TEST(StreamControl, TimesAndFramesMeetAfterAYearToo) {
    const std::int64_t year_s = 366ll * 86400;
    for (const std::uint32_t rate_Hz : {8000u, 11025u, 22050u, 44100u}) {
        const std::int64_t frame = year_s * rate_Hz + 12345;
        EXPECT_EQ(capture::FrameOfTime(capture::TimeOfFrame(frame, rate_Hz), rate_Hz), frame);
        EXPECT_EQ(capture::FrameOfTime(year_s * kStreamSecond, rate_Hz), year_s * rate_Hz);
        EXPECT_EQ(capture::FrameOfTime(1, rate_Hz), 1);
        EXPECT_EQ(capture::FrameOfTime(0, rate_Hz), 0);
    }
}

TEST(StreamControl, KnowsWhetherItFlowsWhenAllThatIsDueIsDone) {
    CStreamControl control;
    EXPECT_TRUE(control.FlowsAt(0));
    control.RequestStop(StreamRequest{5, 0});
    EXPECT_TRUE(control.FlowsAt(4));
    EXPECT_FALSE(control.FlowsAt(5));
    control.RequestStart(StreamRequest{7, 0});
    EXPECT_FALSE(control.FlowsAt(6));
    EXPECT_TRUE(control.FlowsAt(7));
    // A start goes before a stop of the same time.
    control.RequestStart(StreamRequest{5, 0});
    EXPECT_FALSE(control.FlowsAt(9));
    control.SetFlowing(false);
    control.RequestStart(StreamRequest{5, 0});
    EXPECT_FALSE(control.FlowsAt(4));
    EXPECT_TRUE(control.FlowsAt(5));
}

}  // namespace
