// The tone of a recording is looked for where its sound is.
#include "tests/bench/ether/tone_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "handset/capture/files/wav_writer.h"
#include "tests/native/capture/memory_file.h"

namespace {

using bench::ToneRecord;

constexpr sound::WavShape kShape = {22050, 2, 16};

// As the radio records it: with what the file says of itself before the sound, which fades in for 20 ms.
std::string Recording(double seconds) {
    capture::RecordingTags tags;
    tags.title = "Tone";
    tags.station = "KORA ONE";
    test::CMemoryFile file;
    capture::CWavWriter writer(kShape);
    writer.Tag(tags);
    EXPECT_TRUE(writer.Begin(&file));
    for (int i = 0; i < static_cast<int>(seconds * kShape.rate_Hz); ++i) {
        const double turns = 1000.0 * i / kShape.rate_Hz;
        const double loud = 10000 * std::min(50.0 * i / kShape.rate_Hz, 1.0);
        const auto value = static_cast<std::int16_t>(std::lround(loud * std::sin(6.283185307179586 * turns)));
        const std::int16_t frame[] = {value, 77};
        EXPECT_TRUE(writer.Write(reinterpret_cast<const std::uint8_t*>(frame), sizeof frame));
    }
    EXPECT_TRUE(writer.Finish());
    return {file.bytes.begin(), file.bytes.end()};
}

TEST(ToneFile, WhatARecordingSaysOfItselfIsNoSoundAndItsFadingInNoFlaw) {
    std::istringstream wav(Recording(10));
    const auto record = bench::WatchFile(&wav, 1000);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->clicks, 0);
    EXPECT_EQ(record->breaks, 0);
    EXPECT_NEAR(record->seconds, 10, 0.03);
    EXPECT_NEAR(record->amplitude, 10000 / 32768.0, 0.001);
}

TEST(ToneFile, AClickIsFoundAtItsPlace) {
    std::string bytes = Recording(10);
    // Four bytes a frame, counted from the end.
    bytes[bytes.size() - 4 * 3 * 22050 + 1] = 0x60;
    std::istringstream wav(bytes);
    const auto record = bench::WatchFile(&wav, 1000);
    ASSERT_TRUE(record);
    ASSERT_EQ(record->clicks, 1);
    EXPECT_NEAR(record->clicksAt.at(0).at_s, 7, 1e-4);
}

TEST(ToneFile, AFileWithoutASoundOfSixteenBitsHasNoTone) {
    std::string eight = Recording(1);
    eight[34] = 8;
    for (const std::string& bytes : {std::string(), std::string("RIFF"), Recording(1).substr(0, 60), eight}) {
        std::istringstream wav(bytes);
        EXPECT_FALSE(bench::WatchFile(&wav, 1000)) << bytes.size();
    }
}

}  // namespace
