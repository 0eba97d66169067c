// Files of samples of each kind, and what is said of those that are none.
#include "handset/fmdevice/sdr/iq_file.h"

#include <gmock/gmock.h>

#include <cstring>
#include <filesystem>
#include <random>

#include "handset/fmdevice/sdr/sigmf.h"

namespace {

using sdr::CIqFile;
using sdr::IqHints;
using sdr::Sample;
using sdr::SampleForm;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class IqFileTest : public testing::Test {
  protected:
    void SetUp() override {
        folder_ =
            std::filesystem::temp_directory_path() /
            ("iq_file_" + std::to_string(std::random_device{}()) + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string Path(const std::string& name) const {
        return (folder_ / std::filesystem::u8path(name)).u8string();
    }
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder_ / std::filesystem::u8path(name), std::ios::binary) << bytes;
        return Path(name);
    }
    // The file's path first, then what is wrong with it.
    void ExpectError(const std::string& path, const IqHints& hints, const std::string& fault) {
        CIqFile file;
        EXPECT_THAT(file.Open(path, hints), AllOf(StartsWith(path + ": "), HasSubstr(fault)));
        std::vector<Sample> samples;
        EXPECT_EQ(file.Read(10, &samples), 0u);
    }

    std::filesystem::path folder_;
};

std::string Little(std::uint64_t value, std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) bytes.push_back(static_cast<char>(value >> (8 * i)));
    return bytes;
}

std::string Wav(std::uint64_t tag, std::uint64_t channels, std::uint64_t bits, std::uint64_t rate_Hz,
                const std::string& extra, const std::string& data) {
    const std::string format = Little(tag, 2) + Little(channels, 2) + Little(rate_Hz, 4) +
                               Little(rate_Hz * channels * bits / 8, 4) + Little(channels * bits / 8, 2) +
                               Little(bits, 2);
    return "RIFF" + Little(36 + extra.size() + data.size(), 4) + "WAVEfmt " + Little(16, 4) + format + extra +
           "data" + Little(data.size(), 4) + data;
}

IqHints Rate(double rate_Hz) {
    IqHints hints;
    hints.rate_Hz = rate_Hz;
    return hints;
}

constexpr double kRate_Hz = 240000.0;
constexpr std::size_t kSamples = 24000;

TEST_F(IqFileTest, ARawFileTellsItsFormByItsExtensionAndIsReadInPieces) {
    std::string bytes(2 * kSamples, '\x7F');
    bytes[0] = '\xFF';
    bytes[1] = '\0';
    const std::string path = Write("band_98.5MHz.CU8", bytes);
    CIqFile file;
    ASSERT_EQ(file.Open(path, Rate(kRate_Hz)), "");
    EXPECT_EQ(file.Description().form, SampleForm::kCu8);
    EXPECT_EQ(file.Description().samples, kSamples);
    EXPECT_EQ(file.Description().centre_Hz, 98.5e6);
    std::vector<Sample> samples;
    EXPECT_EQ(file.Read(20000, &samples), 20000u);
    EXPECT_EQ(file.Read(20000, &samples), 4000u);
    EXPECT_EQ(file.Read(20000, &samples), 0u);
    EXPECT_EQ(samples.size(), kSamples);
    EXPECT_EQ(samples[0], Sample(1.0f, -1.0f));
    file.Rewind();
    EXPECT_EQ(file.Read(1, &samples), 1u);
    EXPECT_EQ(samples.back(), Sample(1.0f, -1.0f));
}

TEST_F(IqFileTest, AFormAndACentreThatAreGivenGoBeforeTheName) {
    IqHints hints = Rate(1e6);
    hints.form = SampleForm::kCs16;
    hints.centre_Hz = 1e8;
    CIqFile file;
    ASSERT_EQ(file.Open(Write("x_98500kHz.cu8", std::string(4 * 100000, '\1')), hints), "");
    EXPECT_EQ(file.Description().form, SampleForm::kCs16);
    EXPECT_EQ(file.Description().centre_Hz, 1e8);
    EXPECT_EQ(file.Description().samples, 100000u);
}

TEST_F(IqFileTest, NamesWithLettersFromAnywhereAreFound) {
    CIqFile file;
    EXPECT_EQ(file.Open(Write("Äther ✓.cs8", std::string(2 * kSamples, '\1')), Rate(kRate_Hz)), "");
}

TEST_F(IqFileTest, AWavFileTellsRateFormAndCentre) {
    const std::string data(4 * kSamples, '\0');
    const std::string auxi = "auxi" + Little(36, 4) + std::string(32, '\0') + Little(97400000, 4);
    CIqFile file;
    ASSERT_EQ(file.Open(Write("a.wav", Wav(1, 2, 16, 240000, auxi, data))), "");
    EXPECT_EQ(file.Description().form, SampleForm::kCs16);
    EXPECT_EQ(file.Description().rate_Hz, 240000.0);
    EXPECT_EQ(file.Description().centre_Hz, 97.4e6);
    EXPECT_EQ(file.Description().samples, kSamples);
    ASSERT_EQ(file.Open(Write("b_20260101_101500000Hz_iq.wav", Wav(1, 2, 8, 240000, "", data))), "");
    EXPECT_EQ(file.Description().form, SampleForm::kCu8);
    EXPECT_EQ(file.Description().centre_Hz, 101.5e6);
    ASSERT_EQ(file.Open(Write("c.wav", Wav(3, 2, 32, 240000, "", data + data))), "");
    EXPECT_EQ(file.Description().form, SampleForm::kCf32);
    EXPECT_EQ(file.Description().centre_Hz, std::nullopt);
}

TEST_F(IqFileTest, AWavFileThatWasCutOffHasWhatIsThere) {
    std::string bytes = Wav(1, 2, 16, 240000, "", std::string(4 * kSamples, '\0'));
    bytes.replace(40, 4, Little(0xFFFFFFFF, 4));
    CIqFile file;
    ASSERT_EQ(file.Open(Write("cut.wav", bytes)), "");
    EXPECT_EQ(file.Description().samples, kSamples);
}

TEST_F(IqFileTest, WhatFollowsTheSamplesInAWavFileIsNotTakenForSome) {
    const std::string path = Write("more.wav", Wav(1, 2, 16, 240000, "", std::string(4 * kSamples, '\0')) +
                                                   "LIST" + Little(4, 4) + "more");
    CIqFile file;
    ASSERT_EQ(file.Open(path), "");
    std::vector<Sample> samples;
    while (file.Read(1000, &samples) > 0) {
    }
    EXPECT_EQ(samples.size(), kSamples);
}

// The form of recordings beyond 4 GiB: the true lengths stand in a chunk of their own, before the others.
std::string BigWav(std::uint64_t dataBytes, const std::string& data, const std::string& after) {
    const std::string ds64 = "ds64" + Little(28, 4) + Little(0, 8) + Little(dataBytes, 8) +
                             Little(dataBytes / 4, 8) + Little(0, 4);
    std::string bytes = Wav(1, 2, 16, 240000, "", data);
    bytes.replace(0, 8, "RF64" + Little(0xFFFFFFFF, 4));
    bytes.replace(40, 4, Little(0xFFFFFFFF, 4));
    bytes.insert(12, ds64);
    return bytes + after;
}

TEST_F(IqFileTest, ABigWavFileHasItsLengthInAChunkOfItsOwn) {
    const std::string data(4 * kSamples, '\0');
    CIqFile file;
    ASSERT_EQ(file.Open(Write("big.wav", BigWav(4 * kSamples, data, "LIST" + Little(4, 4) + "more"))), "");
    EXPECT_EQ(file.Description().samples, kSamples);
    EXPECT_EQ(file.Description().rate_Hz, 240000.0);
    std::vector<Sample> samples;
    while (file.Read(1000, &samples) > 0) {
    }
    EXPECT_EQ(samples.size(), kSamples);
}

TEST_F(IqFileTest, ABigWavFileThatWasCutOffOrNeverFinishedHasWhatIsThere) {
    const std::string data(4 * kSamples, '\0');
    CIqFile file;
    // More than 4 GiB were announced.
    ASSERT_EQ(file.Open(Write("cut.wav", BigWav(0x300000000, data, ""))), "");
    EXPECT_EQ(file.Description().samples, kSamples);
    ASSERT_EQ(file.Open(Write("begun.wav", BigWav(0, data, ""))), "");
    EXPECT_EQ(file.Description().samples, kSamples);
    // A chunk too short for a length says nothing.
    std::string brief = BigWav(4 * kSamples, data, "");
    brief.replace(16, 4, Little(8, 4));
    brief.erase(28, 20);
    ASSERT_EQ(file.Open(Write("brief.wav", brief)), "");
    EXPECT_EQ(file.Description().samples, kSamples);
}

TEST_F(IqFileTest, SigmfIsFoundByEitherOfItsFiles) {
    Write("s.sigmf-data", std::string(8 * kSamples, '\0'));
    Write("s.sigmf-meta",
          R"({"global": {"core:datatype": "cf32_le", "core:sample_rate": 2.4e5, "core:author": "a \"b\" {"},
        "captures": [{"core:sample_start": 0, "core:frequency": 100300000}, {"core:frequency": 5}],
        "annotations": [null, true, [1, -2.5]]})");
    for (const char* name : {"s.sigmf-data", "s.sigmf-meta"}) {
        CIqFile file;
        ASSERT_EQ(file.Open(Path(name)), "");
        EXPECT_EQ(file.Description().form, SampleForm::kCf32);
        EXPECT_EQ(file.Description().rate_Hz, 240000.0);
        EXPECT_EQ(file.Description().centre_Hz, 100.3e6);
        EXPECT_EQ(file.Description().samples, kSamples);
    }
}

TEST_F(IqFileTest, WhatIsWrongIsSaidWithTheFilesName) {
    const std::string bytes(2 * kSamples, '\1');
    ExpectError(Path("nowhere.cu8"), Rate(kRate_Hz), "cannot be read");
    ExpectError(Write("short.cu8", std::string(2 * 23999, '\1')), Rate(kRate_Hz), "too short");
    ExpectError(Write("empty.cu8", ""), Rate(kRate_Hz), "too short");
    ExpectError(Write("odd.cu8", bytes + "x"), Rate(kRate_Hz), "odd");
    ExpectError(Write("odd2.cs16", bytes + bytes + "xy"), Rate(kRate_Hz), "odd");
    ExpectError(Write("form.xyz", bytes), Rate(kRate_Hz), "form is not known");
    ExpectError(Write("plain", bytes), Rate(kRate_Hz), "form is not known");
    ExpectError(Write("rate.cu8", bytes), {}, "rate is not known");
    ExpectError(Write("slow.cu8", bytes), Rate(199999.0), "below 200000 Hz");
    ExpectError(Write("slow2.cu8", bytes), Rate(-1.0), "below 200000 Hz");
    ExpectError(Write("fast.cu8", bytes), Rate(1e9), "beyond anything real");
    ExpectError(Write("mono.wav", Wav(1, 1, 16, 240000, "", bytes)), {}, "1 channel");
    ExpectError(Write("bits.wav", Wav(1, 2, 24, 240000, "", bytes)), {}, "24 bits");
    ExpectError(Write("sound.wav", Wav(1, 2, 16, 48000, "", bytes)), {}, "below 200000 Hz");
    ExpectError(Write("odd.wav", Wav(1, 2, 16, 240000, "", bytes + bytes + "xy")), {}, "odd");
    ExpectError(Write("brief.wav", Wav(1, 2, 16, 240000, "", "only a few")), {}, "odd");
    ExpectError(Write("brief2.wav", Wav(1, 2, 16, 240000, "", "only some samples...")), {}, "too short");
    ExpectError(Write("fast.wav", Wav(1, 2, 16, 4000000000, "", bytes)), {}, "beyond anything real");
    ExpectError(Write("adpcm.wav", Wav(17, 2, 16, 240000, "", bytes)), {}, "format 17");
    ExpectError(Write("unheard.wav", Wav(1, 2, 16, 240000, "", bytes).erase(12, 24)), {}, "no format chunk");
    ExpectError(Write("nothing.wav", Wav(1, 2, 16, 240000, "", bytes).substr(0, 36)), {}, "no data chunk");
    ExpectError(Write("t.sigmf-data", bytes), {}, "metadata");
    Write("u.sigmf-meta", R"({"global": {"core:datatype": "ri16_le", "core:sample_rate": 240000}})");
    ExpectError(Write("u.sigmf-data", bytes), {}, "ri16_le");
    Write("v.sigmf-meta", R"({"global": {"core:datatype": "cu8"}})");
    ExpectError(Write("v.sigmf-data", bytes), {}, "rate is not known");
    Write("w.sigmf-meta", "[]");
    ExpectError(Write("w.sigmf-data", bytes), {}, "JSON");
}

TEST(CentreInName, IsANumberWithItsUnitAndNoneWithout) {
    EXPECT_EQ(sdr::CentreInName("a_98500000Hz_IQ.wav"), 98.5e6);
    EXPECT_EQ(sdr::CentreInName("98500kHz.wav"), 98.5e6);
    EXPECT_EQ(sdr::CentreInName("band 98.5MHz.cu8"), 98.5e6);
    EXPECT_EQ(sdr::CentreInName("20260101_120000.wav"), std::nullopt);
    EXPECT_EQ(sdr::CentreInName("x98500kHz.wav"), std::nullopt);
    EXPECT_EQ(sdr::CentreInName("98500kHzx.wav"), std::nullopt);
    EXPECT_EQ(sdr::CentreInName(""), std::nullopt);
}

TEST(Sigmf, DamagedMetadataIsRefusedAndHarmsNobody) {
    const std::string good =
        R"({"global": {"core:datatype": "cu8", "core:sample_rate": 1e6}, "captures": [{"core:frequency": 1e8}]})";
    sdr::SigmfDescription description;
    ASSERT_EQ(sdr::ParseSigmf(good, &description), "");
    for (std::size_t i = 0; i < good.size(); ++i)
        EXPECT_NE(sdr::ParseSigmf(good.substr(0, i), &description), "") << i;
    EXPECT_NE(sdr::ParseSigmf(good + "}", &description), "");
    EXPECT_NE(sdr::ParseSigmf(std::string(100000, '['), &description), "");
    std::string deep;
    for (int i = 0; i < 1000000; ++i) deep += "{\"a\":";
    EXPECT_NE(sdr::ParseSigmf(deep, &description), "");
    std::mt19937 random(2);
    for (int i = 0; i < 200000; ++i) {
        std::string text = good;
        for (std::size_t k = random() % 4 + 1; k > 0; --k)
            text[random() % text.size()] = static_cast<char>(random());
        static_cast<void>(sdr::ParseSigmf(text, &description));
    }
}

}  // namespace
