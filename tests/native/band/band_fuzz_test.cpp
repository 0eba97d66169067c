// The band file's reader with hundreds of thousands of files, each a little wrong in another way; always the
// same ones. A million take a minute.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/native/band/band_check.h"
#include "tests/native/fuzz_inputs.h"

namespace {

constexpr std::uint64_t kFiles = 300'000;

const std::string kSeeds[] = {
    "[band]\nwrap=1\n[9850]\nlevel=45\nstereo=1\nps=KORA ONE\npty=News\nrt=Good morning\naf=101.1 103.4\n"
    "programme=tone:440\n",
    "[8750]\r\nps=\xC3\x84\xC3\x96\xE2\x82\xAC\r\nprogramme=melody:C4 F#5 - "
    "A2\r\n;\r\n[10800]\npt=Football\nct=1\n",
    "\xEF\xBB\xBF[9000]\nprogramme=voice:hello\n[9010]\nprogramme=\\Music\\a.wav\nlevel=0\n[9020]\nprogramme="
    "noise:",
};
const std::string kPieces[] = {
    "[",
    "]",
    "=",
    ";",
    " ;",
    "\n",
    "\r\n",
    "[band]",
    "[9850]",
    "level=",
    "af=",
    "tone:",
    "melody:",
    "99999999999",
    "-1",
    "108.1",
    "87.5",
    "\xFF",
    "\xC3",
    "\xE2\x82",
    "\xF4\x90\x80\x80",
    std::string(1, '\0'),
    "ps=",
    "rt=",
    "pty=",
};

std::string Mutated(std::mt19937& random) {
    std::string text = kSeeds[random() % std::size(kSeeds)];
    for (unsigned changes = 1 + random() % 6; changes > 0; --changes) {
        const std::size_t at = text.empty() ? 0 : random() % text.size();
        switch (random() % 5) {
            case 0:
                text.insert(at, kPieces[random() % std::size(kPieces)]);
                break;
            case 1:
                text.erase(at, random() % 8);
                break;
            case 2:
                text.insert(at, 1, static_cast<char>(random()));
                break;
            case 3:
                text.insert(at, text.substr(random() % (text.size() + 1), random() % 40));
                break;
            default:
                text.resize(at);
                break;
        }
    }
    return text;
}

TEST(BandFile, AnyFileAtAllGivesABandThatKeepsItsPromises) {
    std::mt19937 random(20231121);
    const std::uint64_t files = test::FuzzInputs(kFiles);
    for (std::uint64_t i = 0; i < files; ++i) {
        const std::string text = Mutated(random);
        const char* broken = BrokenPromise(text);
        ASSERT_EQ(broken, nullptr) << broken << " in file " << i << ":\n" << text;
    }
}

}  // namespace
