// The capture pin's formats and properties.
#include <set>
#include <utility>

#include "handset/capture/graph/class_ids.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::CRef;

class CapturePin : public test::CaptureTest {
  protected:
    CapturePin() : filter_(test::CreateAs<IBaseFilter>(capture::kClassAudioCapture, IID_IBaseFilter)) {
        filter_->FindPin(L"Capture", pin_.Put());
        config_ = test::Query<IAMStreamConfig>(pin_.Get(), IID_IAMStreamConfig);
    }

    // A PCM type as the radio leaves it: only rate, channels and bits are right.
    AM_MEDIA_TYPE Type(DWORD rate_Hz, WORD channels, WORD bits) {
        wave_ = {};
        wave_.wFormatTag = WAVE_FORMAT_PCM;
        wave_.nSamplesPerSec = rate_Hz;
        wave_.nChannels = channels;
        wave_.wBitsPerSample = bits;
        wave_.nBlockAlign = 77;
        AM_MEDIA_TYPE type{};
        type.majortype = MEDIATYPE_Audio;
        type.subtype = MEDIASUBTYPE_PCM;
        type.formattype = FORMAT_WaveFormatEx;
        type.cbFormat = sizeof wave_;
        type.pbFormat = reinterpret_cast<BYTE*>(&wave_);
        return type;
    }
    HRESULT Set(DWORD rate_Hz, WORD channels, WORD bits) {
        AM_MEDIA_TYPE type = Type(rate_Hz, channels, bits);
        return config_->SetFormat(&type);
    }

    WAVEFORMATEX wave_{};
    CRef<IBaseFilter> filter_;
    CRef<IPin> pin_;
    CRef<IAMStreamConfig> config_;
};

TEST_F(CapturePin, OffersEveryRateWithOneAndTwoChannels) {
    int count = 0;
    int size = 0;
    ASSERT_EQ(config_->GetNumberOfCapabilities(&count, &size), S_OK);
    EXPECT_EQ(size, 52);
    ASSERT_EQ(count, 8);
    std::set<std::pair<DWORD, WORD>> offered;
    for (int i = 0; i < count; ++i) {
        AM_MEDIA_TYPE* type = nullptr;
        AUDIO_STREAM_CONFIG_CAPS caps{};
        ASSERT_EQ(config_->GetStreamCaps(i, &type, reinterpret_cast<BYTE*>(&caps)), S_OK);
        const auto& wave = *reinterpret_cast<const WAVEFORMATEX*>(type->pbFormat);
        EXPECT_EQ(type->formattype, FORMAT_WaveFormatEx);
        offered.emplace(wave.nSamplesPerSec, wave.nChannels);
        EXPECT_EQ(wave.wBitsPerSample, 16);
        EXPECT_EQ(wave.nBlockAlign, wave.nChannels * 2);
        EXPECT_EQ(wave.nAvgBytesPerSec, wave.nSamplesPerSec * wave.nBlockAlign);
        EXPECT_EQ(caps.MaximumSampleFrequency, wave.nSamplesPerSec);
        EXPECT_EQ(caps.MinimumChannels, wave.nChannels);
        EXPECT_EQ(pin_->QueryAccept(type), S_OK);
        CoTaskMemFree(type->pbFormat);
        CoTaskMemFree(type);
    }
    for (const DWORD rate_Hz : {8000u, 11025u, 22050u, 44100u}) {
        for (const WORD channels : {WORD{1}, WORD{2}})
            EXPECT_EQ(offered.count({rate_Hz, channels}), 1u) << rate_Hz << " " << channels;
    }
}

TEST_F(CapturePin, ArgumentsAreChecked) {
    int number = 0;
    AM_MEDIA_TYPE* type = nullptr;
    BYTE caps[sizeof(AUDIO_STREAM_CONFIG_CAPS)];
    EXPECT_EQ(config_->GetNumberOfCapabilities(nullptr, &number), E_POINTER);
    EXPECT_EQ(config_->GetNumberOfCapabilities(&number, nullptr), E_POINTER);
    EXPECT_EQ(config_->GetStreamCaps(0, nullptr, caps), E_POINTER);
    EXPECT_EQ(config_->GetStreamCaps(0, &type, nullptr), E_POINTER);
    EXPECT_EQ(config_->GetStreamCaps(-1, &type, caps), E_INVALIDARG);
    EXPECT_EQ(config_->GetStreamCaps(8, &type, caps), S_FALSE);
    EXPECT_EQ(type, nullptr);
    EXPECT_EQ(config_->SetFormat(nullptr), E_POINTER);
    EXPECT_EQ(config_->GetFormat(nullptr), E_POINTER);
}

TEST_F(CapturePin, KeepsAFormatAsItWasGiven) {
    ASSERT_EQ(Set(8000, 1, 0), S_OK);
    AM_MEDIA_TYPE* type = nullptr;
    ASSERT_EQ(config_->GetFormat(&type), S_OK);
    const auto& wave = *reinterpret_cast<const WAVEFORMATEX*>(type->pbFormat);
    EXPECT_EQ(wave.wBitsPerSample, 0);
    EXPECT_EQ(wave.nBlockAlign, 77);
    CoTaskMemFree(type->pbFormat);
    CoTaskMemFree(type);
}

TEST_F(CapturePin, RefusesFormatsThatItCannotMake) {
    EXPECT_EQ(Set(48000, 2, 16), VFW_E_INVALIDMEDIATYPE);
    EXPECT_EQ(Set(8000, 3, 16), VFW_E_INVALIDMEDIATYPE);
    EXPECT_EQ(Set(8000, 1, 24), VFW_E_INVALIDMEDIATYPE);
    AM_MEDIA_TYPE type = Type(8000, 1, 16);
    type.majortype = MEDIATYPE_Video;
    EXPECT_EQ(config_->SetFormat(&type), VFW_E_INVALIDMEDIATYPE);
    type = Type(8000, 1, 16);
    type.cbFormat = 4;
    EXPECT_EQ(config_->SetFormat(&type), VFW_E_INVALIDMEDIATYPE);
}

TEST_F(CapturePin, AChosenFormatIsTheOnlyOneThatItTakes) {
    ASSERT_EQ(Set(22050, 2, 16), S_OK);
    AM_MEDIA_TYPE type = Type(22050, 2, 16);
    EXPECT_EQ(pin_->QueryAccept(&type), S_OK);
    type = Type(8000, 1, 16);
    EXPECT_EQ(pin_->QueryAccept(&type), S_FALSE);
}

TEST_F(CapturePin, AFormatCanBeChangedInAConnection) {
    test::CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.AttachWav(L"\\take.wav"), S_OK);
    AM_MEDIA_TYPE type = Type(22050, 2, 16);
    EXPECT_EQ(rig.config->SetFormat(&type), S_OK);
    AM_MEDIA_TYPE* given = nullptr;
    ASSERT_EQ(rig.config->GetFormat(&given), S_OK);
    EXPECT_EQ(reinterpret_cast<const WAVEFORMATEX*>(given->pbFormat)->nSamplesPerSec, 22050u);
    CoTaskMemFree(given->pbFormat);
    CoTaskMemFree(given);
    ASSERT_EQ(rig.control->Run(), S_OK);
    EXPECT_EQ(rig.config->SetFormat(&type), VFW_E_NOT_STOPPED);
    EXPECT_EQ(rig.control->Stop(), S_OK);
}

TEST_F(CapturePin, IsACapturePin) {
    const auto properties = test::Query<IKsPropertySet>(pin_.Get(), IID_IKsPropertySet);
    GUID category{};
    DWORD size = 0;
    ASSERT_EQ(properties->Get(AMPROPSETID_Pin, AMPROPERTY_PIN_CATEGORY, nullptr, 0, &category,
                              sizeof category, &size),
              S_OK);
    EXPECT_EQ(category, PIN_CATEGORY_CAPTURE);
    EXPECT_EQ(size, sizeof(GUID));
    EXPECT_EQ(properties->Get(AMPROPSETID_Pin, 99, nullptr, 0, &category, sizeof category, &size),
              E_PROP_ID_UNSUPPORTED);
    EXPECT_EQ(properties->Get(GUID_NULL, 0, nullptr, 0, &category, sizeof category, &size),
              E_PROP_SET_UNSUPPORTED);
    EXPECT_EQ(properties->Get(AMPROPSETID_Pin, AMPROPERTY_PIN_CATEGORY, nullptr, 0, &category, 3, &size),
              E_UNEXPECTED);
    DWORD support = 0;
    EXPECT_EQ(properties->QuerySupported(AMPROPSETID_Pin, AMPROPERTY_PIN_CATEGORY, &support), S_OK);
    EXPECT_EQ(support, static_cast<DWORD>(KSPROPERTY_SUPPORT_GET));
}

TEST_F(CapturePin, AnyBagLoadsTheRadio) {
    const auto bag = test::Query<IPersistPropertyBag>(filter_.Get(), IID_IPersistPropertyBag);
    EXPECT_EQ(bag->InitNew(), S_OK);
    EXPECT_EQ(bag->Load(nullptr, nullptr), S_OK);
    EXPECT_EQ(bag->Save(nullptr, FALSE, FALSE), E_NOTIMPL);
}

}  // namespace
