// Damaged files of samples: each is read as far as it goes, or refused with a sentence that names it.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "handset/fmdevice/sdr/iq_file.h"
#include "tests/native/fuzz_inputs.h"

namespace {

using Bytes = std::string;
using Draw = std::mt19937;

std::uint32_t Below(Draw& draw, std::size_t bound) {
    return static_cast<std::uint32_t>(draw() % bound);
}

void Put(Bytes& bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> 8 * i & 0xFF);
}

// A tenth of a second at the lowest rate: less is refused.
constexpr std::size_t kSampleBytes = 48000;

// 8 bits, two channels, with a chunk that says the centre and one that nobody knows.
Bytes Wav() {
    Bytes bytes = "RIFF";
    Put(bytes, 36 + 44 + 12 + kSampleBytes, 4);
    bytes += "WAVEfmt ";
    Put(bytes, 16, 4);
    Put(bytes, 1, 2);
    Put(bytes, 2, 2);
    Put(bytes, 200000, 4);
    Put(bytes, 400000, 4);
    Put(bytes, 2, 2);
    Put(bytes, 8, 2);
    bytes += "auxi";
    Put(bytes, 36, 4);
    bytes += Bytes(32, '\0');
    Put(bytes, 98500000, 4);
    bytes += "junk";
    Put(bytes, 4, 4);
    bytes += "....data";
    Put(bytes, kSampleBytes, 4);
    return bytes + Bytes(kSampleBytes, 'x');
}

Bytes Meta() {
    return "{ \"global\": { \"core:datatype\": \"cu8\", \"core:sample_rate\": 200000, \"core:version\": "
           "\"1.0.0\" },\n"
           "  \"captures\": [ { \"core:sample_start\": 0, \"core:frequency\": 98500000.0 } ],\n"
           "  \"annotations\": [ { \"core:comment\": \"a \\u00e9 \\\"b\\\"\" } ] }\n";
}

// Cut off, overwritten, doubled or left out in one to four places.
void Damage(Bytes& bytes, Draw& draw) {
    for (std::uint32_t damages = 1 + Below(draw, 4); damages > 0 && !bytes.empty(); --damages) {
        // Most of what is read of a file stands at its beginning.
        const std::size_t reach =
            Below(draw, 4) == 0 ? bytes.size() : std::min<std::size_t>(bytes.size(), 200);
        const std::size_t at = Below(draw, reach);
        const std::size_t length = 1 + Below(draw, 8);
        switch (Below(draw, 5)) {
            case 0:
                bytes.resize(at);
                break;
            case 1:
                bytes[at] = static_cast<char>(draw());
                break;
            case 2:
                for (std::size_t i = at; i < std::min(at + length, bytes.size()); ++i) bytes[i] = '\xFF';
                break;
            case 3:
                bytes.insert(at, bytes.substr(at, length));
                break;
            default:
                bytes.erase(at, length);
        }
    }
}

class DamagedFiles : public testing::Test {
  protected:
    DamagedFiles()
        : folder_(std::filesystem::temp_directory_path() /
                  ("kora-files-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directories(folder_);
    }
    ~DamagedFiles() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string Path(const char* name) const { return (folder_ / name).string(); }
    static void Write(const std::string& path, const Bytes& bytes) {
        std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    // True when it could be read.
    static bool Check(const std::string& path, std::uint64_t bytesOfSamples) {
        sdr::CIqFile file;
        const std::string fault = file.Open(path);
        if (!fault.empty()) {
            const std::string name = std::filesystem::path(path).stem().string();
            EXPECT_NE(fault.find(name), std::string::npos) << fault;
            return false;
        }
        const sdr::IqDescription& description = file.Description();
        EXPECT_TRUE(std::isfinite(description.rate_Hz));
        EXPECT_GT(description.rate_Hz, 0);
        EXPECT_TRUE(!description.centre_Hz || std::isfinite(*description.centre_Hz));
        EXPECT_LE(description.samples, bytesOfSamples / sdr::BytesOf(description.form));
        std::vector<sdr::Sample> samples;
        for (int reads = 0; file.Read(1000, &samples) > 0; ++reads) {
            if (reads > 1000) {
                ADD_FAILURE() << "it never ends";
                return true;
            }
        }
        EXPECT_LE(samples.size(), description.samples);
        return true;
    }

  private:
    std::filesystem::path folder_;
};

long Tries() {
    return static_cast<long>(test::FuzzInputs(4000));
}

TEST_F(DamagedFiles, AWavFileIsReadAsFarAsItGoesOrRefusedByName) {
    Draw draw(41);
    const std::string path = Path("damaged.wav");
    long readable = 0;
    for (long i = 0; i < Tries(); ++i) {
        Bytes bytes = Wav();
        Damage(bytes, draw);
        Write(path, bytes);
        readable += Check(path, bytes.size()) ? 1 : 0;
        if (HasFailure()) FAIL() << "file " << i;
    }
    // Damage among the samples, or in what nobody reads, does no harm.
    EXPECT_GT(readable, Tries() / 20);
    EXPECT_LT(readable, Tries());
}

TEST_F(DamagedFiles, ADescriptionInSigMfIsReadOrRefusedByName) {
    Draw draw(42);
    const std::string meta = Path("damaged.sigmf-meta");
    const Bytes samples(kSampleBytes, 'x');
    Write(Path("damaged.sigmf-data"), samples);
    long readable = 0;
    for (long i = 0; i < Tries(); ++i) {
        Bytes bytes = Meta();
        Damage(bytes, draw);
        Write(meta, bytes);
        readable += Check(meta, samples.size()) ? 1 : 0;
        if (HasFailure()) FAIL() << "description " << i << ":\n" << bytes;
    }
    EXPECT_GT(readable, Tries() / 20);
    EXPECT_LT(readable, Tries());
}

}  // namespace
