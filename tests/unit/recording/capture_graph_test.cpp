// The front of the capture graph: what is created and asked, in which order, and what a failure says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "recording/capture_format.h"
#include "recording/capture_recorder.h"
#include "tests/support/trace_capture.h"
#include "tests/unit/recording/fake_graph.h"

namespace {

using test::FakeGraph;
using test::TraceOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class CaptureGraph : public testing::Test {
  protected:
    // The trace of one build, and its result.
    std::string Build(CaptureRecorder& recorder) {
        return TraceOf([&] { result = recorder.BuildCaptureGraph(); });
    }
    // What a recorder for that format sets at the pin.
    std::vector<std::string> FormatSet(DWORD format) {
        graph.ForgetCalls();
        CaptureRecorder recorder(format);
        recorder.ReleaseAll();
        std::vector<std::string> set;
        for (const std::string& call : graph.CallsOf("streamConfig")) {
            if (call.find("SetFormat") != std::string::npos) set.push_back(call);
        }
        return set;
    }

    FakeGraph graph;
    int result = -1;
};

TEST_F(CaptureGraph, IsBuiltStepByStepByTheConstructor) {
    std::string trace;
    CaptureRecorder* recorder = nullptr;
    trace = TraceOf([&] { recorder = new CaptureRecorder(kFormatWav22Stereo); });
    EXPECT_EQ(trace, "Found required structure \n");
    EXPECT_THAT(
        graph.Calls(),
        ElementsAre("builder.Create", "graph.Create", "builder.SetFiltergraph",
                    "graph.QueryInterface IMediaControl", "graph.QueryInterface IMediaEvent",
                    "graph.QueryInterface IMediaSeeking", "captureFilter.Create",
                    "captureFilter.QueryInterface IPersistPropertyBag", "propertyBag.Load null null",
                    "graph.AddFilter captureFilter \"Audio Capture Filter\"",
                    "builder.FindInterface capture null captureFilter IAMStreamConfig",
                    "streamConfig.GetNumberOfCapabilities", "streamConfig.GetStreamCaps 0",
                    "streamConfig.GetStreamCaps 1",
                    "streamConfig.SetFormat 22050 2 16 tag 1 align 4 bytes 88200", "streamConfig.gone"));
    recorder->ReleaseAll();
    delete recorder;
}

TEST_F(CaptureGraph, ASecondBuildMakesEverythingAnewAndGivesTheFirstBack) {
    CaptureRecorder recorder(kFormatAmr);
    graph.ForgetCalls();
    EXPECT_EQ(Build(recorder), "Found required structure \n");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(graph.Calls(), Contains("builder.Create"));
    EXPECT_THAT(graph.Calls(), Contains("graph.Create"));
    EXPECT_THAT(graph.Calls(), Contains("captureFilter.Create"));
    const std::map<std::string, long> once = {{"builder", 1},    {"graph", 1},   {"control", 1},
                                              {"event", 1},      {"seeking", 1}, {"captureFilter", 1},
                                              {"propertyBag", 1}};
    EXPECT_EQ(graph.References(), once);
    recorder.ReleaseAll();
}

TEST_F(CaptureGraph, ACapabilityRecordOfAnotherSizeIsNamedAndTheFormatsAreStillAskedFor) {
    graph.capabilitySize = 128;
    CaptureRecorder recorder(kFormatAmr);
    graph.ForgetCalls();
    EXPECT_EQ(Build(recorder), "This is not the structure we were expecting \nFound required structure \n");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(graph.Calls(), Contains("streamConfig.GetStreamCaps 0"));
    recorder.ReleaseAll();
}

TEST_F(CaptureGraph, NothingMatchesTheFormatOfZeroBitsSoTheLastOneIsSetWithThem) {
    EXPECT_THAT(FormatSet(kFormatWav),
                ElementsAre("streamConfig.SetFormat 8000 1 0 tag 1 align 4 bytes 176400"));
}

TEST_F(CaptureGraph, TheSearchStopsAtTheFirstFormatThatFits) {
    graph.capabilities = {{44100, 2, 16}, {8000, 1, 16}, {8000, 1, 16}};
    CaptureRecorder recorder(kFormatAmr);
    EXPECT_THAT(graph.Calls(), Contains("streamConfig.GetStreamCaps 1"));
    EXPECT_THAT(graph.Calls(), Not(Contains("streamConfig.GetStreamCaps 2")));
    recorder.ReleaseAll();
}

TEST_F(CaptureGraph, AMediaTypeOfAnotherKindNeverFitsAndIsNotSet) {
    graph.capabilities = {{8000, 1, 16, false}};
    EXPECT_THAT(FormatSet(kFormatAmr), ElementsAre());
}

TEST_F(CaptureGraph, APinWithoutAnyFormatIsPassedOver) {
    graph.capabilities = {};
    CaptureRecorder recorder(kFormatAmr);
    EXPECT_EQ(Build(recorder), "Found required structure \n");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(FormatSet(kFormatAmr), ElementsAre());
    recorder.ReleaseAll();
}

TEST_F(CaptureGraph, EachIndexAsksForItsRowOfTheTable) {
    const struct {
        DWORD index;
        CaptureFormat format;
    } rows[] = {{0, {8000, 1, 16}},  {1, {8000, 2, 16}}, {2, {11025, 2, 16}}, {3, {22050, 2, 16}},
                {4, {44100, 2, 16}}, {5, {8000, 1, 16}}, {6, {11025, 1, 16}}, {7, {22050, 1, 16}},
                {8, {44100, 1, 16}}, {9, {8000, 1, 0}},  {10, {8000, 1, 16}}, {0xFFFFFFFF, {8000, 1, 16}}};
    for (const auto& row : rows) {
        const CaptureFormat format = CaptureFormatOf(row.index);
        EXPECT_EQ(format.uRate_Hz, row.format.uRate_Hz) << row.index;
        EXPECT_EQ(format.uChannels, row.format.uChannels) << row.index;
        EXPECT_EQ(format.uBits, row.format.uBits) << row.index;
    }
}

TEST_F(CaptureGraph, TheChosenMediaTypeIsFreedAndThosePassedOverAreNot) {
    CaptureRecorder recorder(kFormatWav22Stereo);  // the second of three
    EXPECT_EQ(graph.OpenMediaTypes(), 1);
    EXPECT_EQ(graph.OpenBlocks(), 2u);
    recorder.ReleaseAll();
}

TEST_F(CaptureGraph, AFormatThatThePinRefusesIsNamedAndTheBuildGoesOn) {
    graph.results["streamConfig.SetFormat"] = E_FAIL;
    CaptureRecorder recorder(kFormatAmr);
    EXPECT_EQ(Build(recorder), "Found required structure \nSetFormat Failed \n");
    EXPECT_EQ(result, 0);
    recorder.ReleaseAll();
}

TEST_F(CaptureGraph, AFormatThatCannotBeReadEndsTheBuildWithoutAWord) {
    graph.results["streamConfig.GetStreamCaps"] = E_FAIL;
    CaptureRecorder recorder(kFormatAmr);
    EXPECT_EQ(Build(recorder), "Found required structure \n");
    EXPECT_EQ(result, 1);
    recorder.ReleaseAll();
}

struct FailingStep {
    const char* call;
    const char* line;
};

class CaptureGraphFailure : public CaptureGraph, public testing::WithParamInterface<FailingStep> {};

TEST_P(CaptureGraphFailure, IsTracedAndEndsTheBuildAndTheRecorderCanStillBeDriven) {
    graph.results[GetParam().call] = E_FAIL;
    CaptureRecorder recorder(kFormatAmr);
    EXPECT_EQ(Build(recorder), GetParam().line);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(graph.Calls().back().rfind(GetParam().call, 0), 0u) << graph.Calls().back();
    // What the owner does next, without looking at results.
    graph.eventsOfStop = {257};
    recorder.BuildOutputChain(L"\\a.amr");
    recorder.StartCapture();
    recorder.StopCapture();
    recorder.ReleaseAll();
    EXPECT_EQ(graph.References().count("captureFilter"), 0u);
    EXPECT_EQ(graph.References().count("graph"), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, CaptureGraphFailure,
    testing::Values(
        FailingStep{"builder.Create", "CoCreateInstance() failed \n"},
        FailingStep{"graph.Create", "CoCreateInstance() failed \n"},
        FailingStep{"builder.SetFiltergraph", "m_pCaptureGraphBuilder->SetFiltergraph() failed \n"},
        FailingStep{"graph.QueryInterface IMediaControl", "m_pGraph->QueryInterface() failed \n"},
        FailingStep{"graph.QueryInterface IMediaEvent", "m_pGraph->QueryInterface() failed \n"},
        FailingStep{"graph.QueryInterface IMediaSeeking", "m_pGraph->QueryInterface() failed \n"},
        FailingStep{"captureFilter.Create", "CoCreateInstance() failed \n"},
        FailingStep{"captureFilter.QueryInterface", "m_pAudioCaptureFilter->QueryInterface() failed \n"},
        FailingStep{"graph.AddFilter captureFilter", "m_pGraph->AddFilter() failed \n"},
        FailingStep{"builder.FindInterface", "m_pCaptureGraphBuilder->FindInterface() failed \n"}));

}  // namespace
