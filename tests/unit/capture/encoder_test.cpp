// The encoder's initialisation and its connections.
#include "handset/capture/graph/class_ids.h"
#include "handset/include/audiowrapper.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::CRef;

class Encoder : public test::CaptureTest {
  protected:
    Encoder() : filter_(test::CreateAs<IBaseFilter>(capture::kClassAmrEncoder, IID_IBaseFilter)) {
        wrapper_ = test::Query<IAudioWrapperFilter>(filter_.Get(), IID_IAudioWrapperFilter);
        filter_->FindPin(L"In", in_.Put());
    }

    HRESULT Init() { return wrapper_->Init(&capture::kCodecAmr, &CLSID_AudioCompressorCategory); }
    HRESULT Accepts(DWORD rate_Hz, WORD channels, WORD bits) {
        WAVEFORMATEX wave{};
        wave.wFormatTag = WAVE_FORMAT_PCM;
        wave.nSamplesPerSec = rate_Hz;
        wave.nChannels = channels;
        wave.wBitsPerSample = bits;
        AM_MEDIA_TYPE type{};
        type.majortype = MEDIATYPE_Audio;
        type.subtype = MEDIASUBTYPE_PCM;
        type.formattype = FORMAT_WaveFormatEx;
        type.cbFormat = sizeof wave;
        type.pbFormat = reinterpret_cast<BYTE*>(&wave);
        return in_->QueryAccept(&type);
    }

    CRef<IBaseFilter> filter_;
    CRef<IAudioWrapperFilter> wrapper_;
    CRef<IPin> in_;
};

TEST_F(Encoder, TakesNothingBeforeItsCodecIsChosen) {
    EXPECT_EQ(Accepts(8000, 1, 16), S_FALSE);
    CRef<IEnumMediaTypes> types;
    ASSERT_EQ(in_->EnumMediaTypes(types.Put()), S_OK);
    EXPECT_EQ(types->Skip(1), S_FALSE);
}

TEST_F(Encoder, ChoosesItsCodecOnce) {
    EXPECT_EQ(wrapper_->Init(nullptr, &CLSID_AudioCompressorCategory), E_POINTER);
    EXPECT_EQ(wrapper_->Init(&capture::kCodecAmr, nullptr), E_POINTER);
    EXPECT_EQ(wrapper_->Init(&capture::kFileAmr, &CLSID_AudioCompressorCategory), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(wrapper_->Init(&capture::kCodecAmr, &CLSID_VideoCompressorCategory), E_INVALIDARG);
    EXPECT_EQ(Init(), S_OK);
    EXPECT_EQ(Init(), E_UNEXPECTED);
}

TEST_F(Encoder, TakesSpeechOnly) {
    ASSERT_EQ(Init(), S_OK);
    EXPECT_EQ(Accepts(8000, 1, 16), S_OK);
    EXPECT_EQ(Accepts(8000, 1, 0), S_OK);
    EXPECT_EQ(Accepts(8000, 2, 16), S_FALSE);
    EXPECT_EQ(Accepts(44100, 1, 16), S_FALSE);
    EXPECT_EQ(Accepts(8000, 1, 8), S_FALSE);
}

TEST_F(Encoder, GivesAmrFramesToTheMultiplexer) {
    test::CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.AttachAmr(L"\\take.amr"), S_OK);
    CRef<IPin> out;
    ASSERT_EQ(rig.encoder->FindPin(L"Out", out.Put()), S_OK);
    AM_MEDIA_TYPE type{};
    ASSERT_EQ(out->ConnectionMediaType(&type), S_OK);
    const auto& wave = *reinterpret_cast<const WAVEFORMATEX*>(type.pbFormat);
    EXPECT_EQ(wave.wFormatTag, 0x7361);
    EXPECT_EQ(wave.nSamplesPerSec, 8000u);
    EXPECT_EQ(wave.nChannels, 1);
    CoTaskMemFree(type.pbFormat);
}

TEST_F(Encoder, WithoutItsCodecNoRecordingIsBuilt) {
    test::CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.graph->AddFilter(filter_.Get(), L"encoder"), S_OK);
    const auto mux = test::CreateAs<IBaseFilter>(capture::kClassMultiplexer, IID_IBaseFilter);
    ASSERT_EQ(rig.graph->AddFilter(mux.Get(), L"mux"), S_OK);
    EXPECT_TRUE(FAILED(rig.builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, rig.capture.Get(),
                                                 filter_.Get(), mux.Get())));
}

}  // namespace
