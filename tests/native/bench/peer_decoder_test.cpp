// A decoder that nobody here wrote, played by small scripts: its words are read, and its failure is no
// result.
#include "tests/bench/reception/peer_decoder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

using bench::GivenGroup;

class BenchPeer : public testing::Test {
  protected:
    BenchPeer()
        : folder_(std::filesystem::temp_directory_path() /
                  ("kora-peer-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directories(folder_);
    }
    ~BenchPeer() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    std::string Script(const std::string& lines) const {
        const std::filesystem::path path = folder_ / "redsea";
        std::ofstream(path) << "#!/bin/sh\n" << lines;
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path.string();
    }

    std::filesystem::path folder_;
};

TEST_F(BenchPeer, GroupsAreReadAndBlocksThatItRejectedAreMissing) {
    const auto result =
        bench::RunRedsea(Script("echo 'D301 0408 ---- 4B4F'\necho 'd301 0409 2020 4B4F 2026-01-01'\n"), {});
    ASSERT_TRUE(result);
    ASSERT_EQ(result->groups.size(), 2u);
    EXPECT_EQ(result->groups[0], (GivenGroup{0xD301, 0x0408, std::nullopt, 0x4B4F}));
    EXPECT_EQ(result->groups[1], (GivenGroup{0xD301, 0x0409, 0x2020, 0x4B4F}));
}

TEST_F(BenchPeer, LinesThatAreNoGroupsAreNone) {
    const auto result = bench::RunRedsea(Script("echo 'some more text here'\necho\necho 'D301 0408'\n"), {});
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->groups.empty());
}

TEST_F(BenchPeer, ItGetsEverySampleAtItsRate) {
    // The number of bytes and the rate come back as the last two blocks.
    const auto result = bench::RunRedsea(Script("printf '0000 0000 %04X %04X\\n' $(wc -c) $(($2 / 1000))\n"),
                                         std::vector<std::int16_t>(300));
    ASSERT_TRUE(result);
    ASSERT_EQ(result->groups.size(), 1u);
    EXPECT_EQ(result->groups[0][2], 600);
    EXPECT_EQ(result->groups[0][3], 171);
}

TEST_F(BenchPeer, OneThatFailsOrCannotBeStartedGivesNoFigures) {
    EXPECT_FALSE(bench::RunRedsea(Script("echo 'D301 0408 2020 4B4F'\nexit 1\n"), {}));
    EXPECT_FALSE(bench::RunRedsea(Script("kill -9 $$\n"), {}));
    EXPECT_FALSE(bench::RunRedsea((folder_ / "nowhere").string(), {}));
}

TEST_F(BenchPeer, ItIsFoundWhereTheVariableSaysAndElseInThePath) {
    const std::string script = Script("");
    setenv("REDSEA", script.c_str(), 1);
    EXPECT_EQ(bench::FindRedsea(), script);
    setenv("REDSEA", (folder_ / "nowhere").c_str(), 1);
    EXPECT_EQ(bench::FindRedsea(), "");
    unsetenv("REDSEA");
    const std::string path = std::getenv("PATH");
    setenv("PATH", (folder_.string() + ":" + path).c_str(), 1);
    EXPECT_EQ(bench::FindRedsea(), script);
    setenv("PATH", path.c_str(), 1);
}

}  // namespace
