// Bytes of samples, in each form and cut anywhere.
#include "handset/fmdevice/sdr/sample_form.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using sdr::CSampleDecoder;
using sdr::Sample;
using sdr::SampleForm;

std::vector<Sample> Decode(SampleForm form, const std::vector<std::uint8_t>& bytes) {
    std::vector<Sample> samples;
    CSampleDecoder decoder(form);
    decoder.Decode(bytes.data(), bytes.size(), &samples);
    return samples;
}

TEST(SampleForm, UnsignedBytesStandAroundTheMiddleOf127AndAHalf) {
    const std::vector<Sample> samples = Decode(SampleForm::kCu8, {0, 255, 127, 128});
    ASSERT_EQ(samples.size(), 2u);
    EXPECT_EQ(samples[0], Sample(-1.0f, 1.0f));
    EXPECT_NEAR(samples[1].real(), -0.5 / 127.5, 1e-7);
    EXPECT_NEAR(samples[1].imag(), 0.5 / 127.5, 1e-7);
}

TEST(SampleForm, SignedBytesAndWordsReachFromMinusOneToAlmostOne) {
    EXPECT_EQ(Decode(SampleForm::kCs8, {0x80, 0x7F}), std::vector<Sample>{Sample(-1.0f, 127.0f / 128.0f)});
    EXPECT_EQ(Decode(SampleForm::kCs16, {0x00, 0x80, 0xFF, 0x7F}),
              std::vector<Sample>{Sample(-1.0f, 32767.0f / 32768.0f)});
}

TEST(SampleForm, FloatsAreTakenAsTheyAre) {
    const float values[2] = {0.25f, -3.5f};
    std::vector<std::uint8_t> bytes(8);
    std::memcpy(bytes.data(), values, 8);
    EXPECT_EQ(Decode(SampleForm::kCf32, bytes), std::vector<Sample>{Sample(0.25f, -3.5f)});
}

TEST(SampleForm, BytesMayBeCutAnywhere) {
    for (const SampleForm form : {SampleForm::kCu8, SampleForm::kCs8, SampleForm::kCs16, SampleForm::kCf32}) {
        std::vector<std::uint8_t> bytes;
        for (int i = 0; i < 80; ++i) bytes.push_back(static_cast<std::uint8_t>(i * 3 % 61));
        const std::vector<Sample> whole = Decode(form, bytes);
        ASSERT_EQ(whole.size(), bytes.size() / BytesOf(form));
        for (std::size_t piece = 1; piece < 20; ++piece) {
            std::vector<Sample> samples;
            CSampleDecoder decoder(form);
            for (std::size_t at = 0; at < bytes.size(); at += piece) {
                decoder.Decode(bytes.data() + at, std::min(piece, bytes.size() - at), &samples);
            }
            EXPECT_EQ(samples, whole) << NameOf(form) << " in pieces of " << piece;
        }
    }
}

TEST(SampleForm, ABegunSampleIsForgottenAtAReset) {
    CSampleDecoder decoder(SampleForm::kCs16);
    std::vector<Sample> samples;
    const std::uint8_t bytes[] = {9, 9, 9, 0x00, 0x40, 0x00, 0xC0};
    decoder.Decode(bytes, 3, &samples);
    decoder.Reset();
    decoder.Decode(bytes + 3, 4, &samples);
    EXPECT_EQ(samples, std::vector<Sample>{Sample(0.5f, -0.5f)});
}

TEST(SampleForm, EachFormIsFoundByItsNameAndNoOtherIs) {
    for (const SampleForm form : {SampleForm::kCu8, SampleForm::kCs8, SampleForm::kCs16, SampleForm::kCf32}) {
        EXPECT_EQ(sdr::FormNamed(NameOf(form)), form);
    }
    EXPECT_EQ(sdr::FormNamed("cu16"), std::nullopt);
}

}  // namespace
