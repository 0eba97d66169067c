// Start, time and end of a recorder.
#include "recording/capture_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "recording/capture_format.h"
#include "tests/support/trace_capture.h"
#include "tests/support/wait.h"
#include "tests/unit/recording/fake_graph.h"
#include "tests/unit/recording/tick_count.h"

namespace {

using test::FakeGraph;
using test::TraceOf;
using test::WaitFor;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kBlocked[] = "builder.ControlStream capture audio captureFilter null null 0 0";
constexpr char kOpened[] = "builder.ControlStream capture audio captureFilter 0 9223372036854775807 0 0";

class Recorder : public testing::Test {
  protected:
    ~Recorder() override { test::g_tickOffset = 0; }

    void Make(DWORD format = kFormatAmr) {
        recorder = std::make_unique<CaptureRecorder>(format);
        recorder->BuildCaptureGraph();
        recorder->BuildOutputChain(L"\\a.amr");
        graph.ForgetCalls();
    }
    void Start() {
        Make();
        ASSERT_EQ(recorder->StartCapture(), 0);
        graph.ForgetCalls();
    }

    FakeGraph graph;
    std::unique_ptr<CaptureRecorder> recorder;
};

TEST_F(Recorder, TheStreamIsBlockedTheGraphRunAndTheStreamOpenedWithoutEnd) {
    Make();
    EXPECT_EQ(recorder->StartCapture(), 0);
    EXPECT_THAT(graph.Calls(), ElementsAre(kBlocked, "control.Run", kOpened));
    recorder->ReleaseAll();
}

TEST_F(Recorder, AStreamThatCannotBeControlledIsNamedAndTheGraphIsNotRun) {
    Make();
    graph.results["builder.ControlStream"] = E_NOTIMPL;
    int result = -1;
    EXPECT_EQ(TraceOf([&] { result = recorder->StartCapture(); }),
              "m_pCaptureGraphBuilder->ControlStream() failed \n");
    EXPECT_EQ(result, 1);
    EXPECT_THAT(graph.Calls(), ElementsAre(kBlocked));
    recorder->ReleaseAll();
}

TEST_F(Recorder, StoppingAsksForTheStopAtTheCurrentPositionAndStopsTheGraph) {
    Start();
    graph.position = 12345678;
    EXPECT_EQ(recorder->StopCapture(), 0);
    EXPECT_THAT(graph.CallsOf("seeking"), ElementsAre("seeking.GetCurrentPosition"));
    EXPECT_THAT(graph.CallsOf("builder"),
                ElementsAre("builder.ControlStream capture audio captureFilter 0 12345678 1 2"));
    EXPECT_THAT(graph.CallsOf("control"), ElementsAre("control.Stop"));
    EXPECT_THAT(graph.CallsOf("event"), ElementsAre("event.FreeEventParams 257"));
    recorder->ReleaseAll();
}

TEST_F(Recorder, TheEndOfTheStreamStopsTheGraphFromTheEventThread) {
    Start();
    graph.eventsOfStop = {};
    graph.Raise(26);
    ASSERT_TRUE(WaitFor([&] { return graph.CallsOf("event").size() == 1; }));
    EXPECT_THAT(graph.Calls(), ElementsAre("control.Stop", "event.FreeEventParams 26"));
    graph.Raise(257);
    recorder->ReleaseAll();
}

TEST_F(Recorder, OtherEventsAreFreedAndTheLoopGoesOnUntilEitherOfItsEnds) {
    for (const LONG end : {257, 260}) {
        Start();
        graph.eventsOfStop = {};
        for (const LONG event : {1L, 14L, 3L, end}) graph.Raise(event);
        const std::string trace = TraceOf([&] { recorder->StopCapture(); });
        EXPECT_EQ(trace, "");
        EXPECT_THAT(graph.CallsOf("event"),
                    ElementsAre("event.FreeEventParams 1", "event.FreeEventParams 14",
                                "event.FreeEventParams 3", "event.FreeEventParams " + std::to_string(end)));
        recorder->ReleaseAll();
    }
}

TEST_F(Recorder, AWaitThatEndsWithoutAnEventIsBegunAgain) {
    Start();
    graph.eventsOfStop = {};
    graph.Raise(FakeGraph::kNoEvent);
    graph.Raise(1);
    ASSERT_TRUE(WaitFor([&] { return !graph.CallsOf("event").empty(); }));
    EXPECT_THAT(graph.CallsOf("event"), ElementsAre("event.FreeEventParams 1"));
    graph.Raise(257);
    recorder->ReleaseAll();
}

TEST_F(Recorder, AnEventThreadThatDoesNotEndIsGivenUpAfterSixteenSecondsAndTheReleaseGoesOn) {
    Start();
    graph.eventsOfStop = {};
    const DWORD start = GetTickCount();
    EXPECT_EQ(TraceOf([&] { recorder->StopCapture(); }), "Wait Thread TimeOut.....");
    EXPECT_GE(GetTickCount() - start, 15900u);
    EXPECT_LT(GetTickCount() - start, 20000u);
    recorder->ReleaseAll();
    // The thread holds what it waits for until it ends after all.
    EXPECT_EQ(graph.References().count("graph"), 0u);
    EXPECT_EQ(graph.References()["event"], 1);
    recorder.reset();
    graph.Raise(257);
    EXPECT_TRUE(WaitFor([&] { return graph.References().count("event") == 0; }));
}

TEST_F(Recorder, ReleasingStopsOnceMoreAndGivesTheInterfacesBackInTheirOrder) {
    Start();
    recorder->StopCapture();
    graph.ForgetCalls();
    recorder->ReleaseAll();
    EXPECT_THAT(
        graph.Calls(),
        ElementsAre("seeking.GetCurrentPosition", "builder.ControlStream capture audio captureFilter 0 0 1 2",
                    "control.Stop", "sink2.gone", "propertyBag.gone", "encoder.gone", "multiplexer.gone",
                    "captureFilter.gone", "event.gone", "control.gone", "graph.gone", "builder.gone"));
}

TEST_F(Recorder, OnlyTheSeekingAndTheWrapperInterfaceStayUnreleasedOneEachARecording) {
    for (long recordings = 1; recordings <= 3; ++recordings) {
        Start();
        recorder->StopCapture();
        recorder->ReleaseAll();
        const std::map<std::string, long> left = {{"seeking", recordings}, {"wrapper", recordings}};
        EXPECT_EQ(graph.References(), left);
    }
}

TEST_F(Recorder, AWavRecordingLeavesOnlyTheSeekingInterface) {
    Make(kFormatWav);
    recorder->StartCapture();
    recorder->StopCapture();
    recorder->ReleaseAll();
    const std::map<std::string, long> left = {{"seeking", 1}};
    EXPECT_EQ(graph.References(), left);
}

TEST_F(Recorder, OneThatWasNeverStartedReleasesWithoutWaiting) {
    Make();
    const DWORD start = GetTickCount();
    EXPECT_EQ(TraceOf([&] { recorder->ReleaseAll(); }), "");
    EXPECT_LT(GetTickCount() - start, 10000u);
}

TEST_F(Recorder, TheElapsedTimeIsTheTickCountsSinceTheStart) {
    Start();
    const DWORD start = GetTickCount();
    DWORD elapsed = 0;
    ASSERT_TRUE(WaitFor([&] { return GetTickCount() - start >= 700; }));
    EXPECT_EQ(recorder->ElapsedMs(&elapsed), 0);
    EXPECT_GE(elapsed, 690u);
    EXPECT_LE(elapsed, GetTickCount() - start + 1000);
    DWORD later = 0;
    ASSERT_TRUE(WaitFor([&] { return GetTickCount() - start >= 1500; }));
    recorder->ElapsedMs(&later);
    EXPECT_GE(later, elapsed);
    EXPECT_GE(later, 1490u);
    recorder->ReleaseAll();
}

TEST_F(Recorder, TheElapsedTimeGoesOnWhenTheTickCountWrapsRound) {
    Make();
    test::g_tickOffset = 0u - GetTickCount() - 2000;  // two seconds before the wrap
    ASSERT_EQ(recorder->StartCapture(), 0);
    DWORD before = 0, after = 0;
    recorder->ElapsedMs(&before);
    test::g_tickOffset += 5000;
    recorder->ElapsedMs(&after);
    EXPECT_GE(after - before, 5000u);
    EXPECT_LT(after - before, 10000u);
    recorder->ReleaseAll();
}

}  // namespace
