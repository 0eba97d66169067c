// The encoder around the codec library.
#include "handset/capture/encoder/amr_encoder.h"

#include <gtest/gtest.h>

#include "tests/native/capture/tone.h"

namespace {

TEST(AmrEncoder, MakesAFrameOf32BytesOutOfEvery160Samples) {
    capture::CAmrEncoder encoder;
    ASSERT_TRUE(static_cast<bool>(encoder));
    std::vector<std::uint8_t> frames;
    const auto speech = test::SpeechRateTone(1);
    encoder.Encode(speech.data(), 1599, &frames);
    EXPECT_EQ(frames.size(), 9 * 32u);
    encoder.Encode(speech.data() + 1599, 1, &frames);
    ASSERT_EQ(frames.size(), 10 * 32u);
    for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(capture::AmrFrameBytes(frames[32 * i]), 32u);
}

TEST(AmrEncoder, DoesNotDependOnHowTheSoundIsCut) {
    const auto speech = test::SpeechRateTone(1);
    capture::CAmrEncoder whole;
    capture::CAmrEncoder pieces;
    std::vector<std::uint8_t> expected;
    std::vector<std::uint8_t> frames;
    whole.Encode(speech.data(), speech.size(), &expected);
    for (std::size_t at = 0, piece = 1; at < speech.size(); at += piece, piece = piece % 500 + 7)
        pieces.Encode(speech.data() + at, std::min(piece, speech.size() - at), &frames);
    EXPECT_EQ(frames, expected);
}

TEST(AmrEncoder, TheLastFrameIsFilledUpOnce) {
    capture::CAmrEncoder encoder;
    std::vector<std::uint8_t> frames;
    const std::int16_t sample = 5;
    encoder.Encode(&sample, 1, &frames);
    EXPECT_TRUE(frames.empty());
    encoder.Flush(&frames);
    EXPECT_EQ(frames.size(), 32u);
    encoder.Flush(&frames);
    EXPECT_EQ(frames.size(), 32u);
}

TEST(AmrFrames, BytesThatBeginNoFrameAreKnown) {
    EXPECT_EQ(capture::AmrFrameBytes(0x3C), 32u);  // 12.2 kbit/s, good
    EXPECT_EQ(capture::AmrFrameBytes(0x04), 13u);  // 4.75 kbit/s
    EXPECT_EQ(capture::AmrFrameBytes(0x7C), 1u);   // no data
    EXPECT_EQ(capture::AmrFrameBytes(0x4C), 0u);   // a frame type that is kept free
    EXPECT_EQ(capture::AmrFrameBytes(0xBC), 0u);
    EXPECT_EQ(capture::AmrFrameBytes(0x3D), 0u);
}

}  // namespace
