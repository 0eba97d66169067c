// The rear of the capture graph: which filters write the file, how they are named and joined, and what a
// failure says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "recording/capture_format.h"
#include "recording/capture_recorder.h"
#include "tests/support/trace_capture.h"
#include "tests/unit/recording/fake_graph.h"

namespace {

using test::FakeGraph;
using test::TraceOf;
using testing::ElementsAre;

class OutputChain : public testing::Test {
  protected:
    std::string Build(DWORD format, const WCHAR* path) {
        CaptureRecorder recorder(format);
        graph.ForgetCalls();
        const std::string trace = TraceOf([&] { result = recorder.BuildOutputChain(path); });
        calls = graph.Calls();
        recorder.ReleaseAll();
        return trace;
    }

    FakeGraph graph;
    int result = -1;
    std::vector<std::string> calls;
};

TEST_F(OutputChain, AmrGoesThroughTheEncoderToTheMultiplexer) {
    EXPECT_EQ(Build(kFormatAmr, L"\\My Documents\\a.amr"), "");
    EXPECT_EQ(result, 0);
    EXPECT_THAT(
        calls,
        ElementsAre("encoder.Create", "encoder.QueryInterface IAudioWrapperFilter",
                    "wrapper.Init {D13B9B2C-EE4B-4787-960A-4D6CDB48A60C} audio compressors",
                    "graph.AddFilter encoder \".ivi AMRNB Encoder\"", "multiplexer.Create",
                    "graph.AddFilter multiplexer \"IVIMP4MuxFilter\"",
                    "multiplexer.QueryInterface IFileSinkFilter2",
                    "sink2.SetFileName \\My Documents\\a.amr audio {AA5E0668-2F56-48DA-9E30-4F43270A00B1}",
                    "builder.RenderStream capture audio captureFilter encoder multiplexer"));
}

TEST_F(OutputChain, AnyOtherFormatGoesStraightToTheWavWriter) {
    for (const DWORD format : {1u, 3u, 9u, 10u}) {
        EXPECT_EQ(Build(format, L"\\a.wav"), "");
        EXPECT_EQ(result, 0);
        EXPECT_THAT(calls, ElementsAre("writer.Create", "graph.AddFilter writer \"Waveform Audio Render\"",
                                       "writer.QueryInterface IFileSinkFilter",
                                       "sink.SetFileName \\a.wav stream null",
                                       "builder.RenderStream capture audio captureFilter null writer"));
    }
}

struct FailingStep {
    DWORD format;
    const char* call;
    const char* line;
};

class OutputChainFailure : public OutputChain, public testing::WithParamInterface<FailingStep> {};

TEST_P(OutputChainFailure, IsTracedAndEndsTheBuild) {
    CaptureRecorder recorder(GetParam().format);
    graph.results[GetParam().call] = E_FAIL;
    EXPECT_EQ(TraceOf([&] { result = recorder.BuildOutputChain(L"\\a.amr"); }), GetParam().line);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(graph.Calls().back().rfind(GetParam().call, 0), 0u) << graph.Calls().back();
    recorder.ReleaseAll();
}

constexpr char kCreation[] = "CoCreateInstance() failed \n";
constexpr char kAddFilter[] = "m_pGraph->AddFilter() failed \n";
constexpr char kSinkQuery[] = "m_pFileDump->QueryInterface() failed \n";
constexpr char kFileName[] = "m_pFileSink->SetFileName() failed \n";
constexpr char kRender[] = "m_pCaptureGraphBuilder->RenderStream() failed \n";

INSTANTIATE_TEST_SUITE_P(
    Steps, OutputChainFailure,
    testing::Values(
        FailingStep{9, "writer.Create", kCreation}, FailingStep{9, "graph.AddFilter writer", kAddFilter},
        FailingStep{9, "writer.QueryInterface", kSinkQuery}, FailingStep{9, "sink.SetFileName", kFileName},
        FailingStep{9, "builder.RenderStream", kRender}, FailingStep{0, "encoder.Create", kCreation},
        FailingStep{0, "encoder.QueryInterface", "m_pAudioEncoder->QueryInterface() failed \n"},
        FailingStep{0, "wrapper.Init", "m_pAudioWrapperFilter->Init() failed \n"},
        FailingStep{0, "graph.AddFilter encoder", kAddFilter},
        FailingStep{0, "graph.AddFilter multiplexer", kAddFilter},
        FailingStep{0, "multiplexer.Create", kCreation},
        FailingStep{0, "multiplexer.QueryInterface", kSinkQuery},
        FailingStep{0, "sink2.SetFileName", kFileName}, FailingStep{0, "builder.RenderStream", kRender}));

}  // namespace
