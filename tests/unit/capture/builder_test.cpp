// The capture graph builder.
#include "handset/capture/graph/class_ids.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::CRecordingRig;
using test::CRef;

class Builder : public test::CaptureTest {
  protected:
    void SetUp() override { ASSERT_EQ(rig_.Build(test::kSpeech), S_OK); }

    CRef<ICaptureGraphBuilder2> New() {
        return test::CreateAs<ICaptureGraphBuilder2>(capture::kClassGraphBuilder, IID_ICaptureGraphBuilder2);
    }

    CRecordingRig rig_;
};

TEST_F(Builder, TakesOneGraph) {
    const auto builder = New();
    CRef<IGraphBuilder> graph;
    EXPECT_EQ(builder->GetFiltergraph(graph.Put()), E_UNEXPECTED);
    EXPECT_EQ(builder->SetFiltergraph(nullptr), E_POINTER);
    EXPECT_EQ(builder->SetFiltergraph(rig_.graph.Get()), S_OK);
    EXPECT_EQ(builder->SetFiltergraph(rig_.graph.Get()), E_UNEXPECTED);
    EXPECT_EQ(builder->GetFiltergraph(graph.Put()), S_OK);
    EXPECT_EQ(graph.Get(), rig_.graph.Get());
    EXPECT_EQ(builder->GetFiltergraph(nullptr), E_POINTER);
}

TEST_F(Builder, FindsInterfacesOnTheFilterAndOnItsPins) {
    void* out = nullptr;
    ASSERT_EQ(rig_.builder->FindInterface(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, rig_.capture.Get(),
                                          IID_IAMStreamControl, &out),
              S_OK);
    static_cast<IUnknown*>(out)->Release();
    ASSERT_EQ(rig_.builder->FindInterface(nullptr, nullptr, rig_.capture.Get(), IID_IReferenceClock, &out),
              S_OK);
    static_cast<IUnknown*>(out)->Release();
    EXPECT_EQ(rig_.builder->FindInterface(&PIN_CATEGORY_PREVIEW, nullptr, rig_.capture.Get(),
                                          IID_IAMStreamConfig, &out),
              E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(rig_.builder->FindInterface(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, rig_.capture.Get(),
                                          IID_IAMStreamConfig, &out),
              E_NOINTERFACE);
    EXPECT_EQ(rig_.builder->FindInterface(nullptr, nullptr, nullptr, IID_IAMStreamConfig, &out), E_POINTER);
    EXPECT_EQ(rig_.builder->FindInterface(nullptr, nullptr, rig_.capture.Get(), IID_IAMStreamConfig, nullptr),
              E_POINTER);
}

TEST_F(Builder, ConnectsAStreamOnce) {
    ASSERT_EQ(rig_.AttachWav(L"\\a.wav"), S_OK);
    EXPECT_EQ(rig_.AttachWav(L"\\b.wav"), VFW_E_NOT_FOUND);
}

TEST_F(Builder, ConnectsFromAPinToo) {
    const auto wav = test::CreateAs<IBaseFilter>(capture::kClassWavWriter, IID_IBaseFilter);
    ASSERT_EQ(rig_.graph->AddFilter(wav.Get(), L"writer"), S_OK);
    CRef<IPin> pin;
    ASSERT_EQ(rig_.builder->FindPin(rig_.capture.Get(), PINDIR_OUTPUT, &PIN_CATEGORY_CAPTURE,
                                    &MEDIATYPE_Audio, TRUE, 0, pin.Put()),
              S_OK);
    EXPECT_EQ(rig_.builder->RenderStream(nullptr, nullptr, pin.Get(), nullptr, wav.Get()), S_OK);
    CRef<IPin> other;
    EXPECT_EQ(
        rig_.builder->FindPin(rig_.capture.Get(), PINDIR_OUTPUT, nullptr, nullptr, TRUE, 0, other.Put()),
        E_FAIL);
    EXPECT_EQ(
        rig_.builder->FindPin(rig_.capture.Get(), PINDIR_OUTPUT, nullptr, nullptr, FALSE, 0, other.Put()),
        S_OK);
    EXPECT_EQ(
        rig_.builder->FindPin(rig_.capture.Get(), PINDIR_OUTPUT, nullptr, nullptr, FALSE, -1, other.Put()),
        E_INVALIDARG);
}

TEST_F(Builder, RefusesStreamsThatAreNotThere) {
    const auto wav = test::CreateAs<IBaseFilter>(capture::kClassWavWriter, IID_IBaseFilter);
    ASSERT_EQ(rig_.graph->AddFilter(wav.Get(), L"writer"), S_OK);
    EXPECT_EQ(
        rig_.builder->RenderStream(&PIN_CATEGORY_PREVIEW, nullptr, rig_.capture.Get(), nullptr, wav.Get()),
        VFW_E_NOT_FOUND);
    EXPECT_EQ(rig_.builder->RenderStream(nullptr, &MEDIATYPE_Video, rig_.capture.Get(), nullptr, wav.Get()),
              VFW_E_NOT_FOUND);
    EXPECT_EQ(rig_.builder->RenderStream(nullptr, nullptr, nullptr, nullptr, wav.Get()), E_POINTER);
    EXPECT_EQ(New()->RenderStream(nullptr, nullptr, rig_.capture.Get(), nullptr, wav.Get()), E_UNEXPECTED);
}

TEST_F(Builder, ControlsEveryStreamOfTheGraphWhenNoFilterIsNamed) {
    ASSERT_EQ(rig_.builder->ControlStream(&PIN_CATEGORY_CAPTURE, nullptr, nullptr, nullptr, nullptr, 0, 0),
              S_OK);
    void* out = nullptr;
    ASSERT_EQ(rig_.builder->FindInterface(nullptr, nullptr, rig_.capture.Get(), IID_IAMStreamControl, &out),
              S_OK);
    AM_STREAM_INFO info{};
    static_cast<IAMStreamControl*>(out)->GetInfo(&info);
    static_cast<IUnknown*>(out)->Release();
    EXPECT_EQ(info.dwFlags, static_cast<DWORD>(AM_STREAM_INFO_DISCARDING));
}

TEST_F(Builder, HasNoStreamToControlWhereNoneFits) {
    EXPECT_EQ(rig_.builder->ControlStream(&PIN_CATEGORY_PREVIEW, nullptr, rig_.capture.Get(), nullptr,
                                          nullptr, 0, 0),
              VFW_E_NOT_FOUND);
    EXPECT_EQ(New()->ControlStream(nullptr, nullptr, rig_.capture.Get(), nullptr, nullptr, 0, 0),
              E_UNEXPECTED);
}

TEST_F(Builder, LeavesOutWhatARecordingDoesNotNeed) {
    EXPECT_EQ(rig_.builder->SetOutputFileName(&MEDIASUBTYPE_Avi, L"\\a.avi", nullptr, nullptr), E_NOTIMPL);
    EXPECT_EQ(rig_.builder->AllocCapFile(L"\\a.avi", 1), E_NOTIMPL);
    EXPECT_EQ(rig_.builder->CopyCaptureFile(nullptr, nullptr, 0, nullptr), E_NOTIMPL);
}

}  // namespace
