// Anything into the decoder of RDS: no fault, no growth, and nothing that was not sent is taken for certain.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "handset/fmdevice/sdr/rds/block_sync.h"
#include "handset/fmdevice/sdr/rds/group_reader.h"
#include "handset/transmitter/station_texts.h"
#include "tests/native/fuzz_inputs.h"

namespace {

using sdr::rds::Block;
using sdr::rds::BlockStatus;
using sdr::rds::CBlockSync;
using sdr::rds::CGroupReader;
using sdr::rds::Group;
using sdr::rds::Offset;
using sdr::rds::Station;
using Draw = std::mt19937;

constexpr double kGroup_s = 104 / 1187.5;

long Inputs(long everyday) {
    return static_cast<long>(test::FuzzInputs(static_cast<std::uint64_t>(everyday)));
}
std::uint32_t Below(Draw& draw, std::uint32_t bound) {
    return static_cast<std::uint32_t>(draw() % bound);
}
std::uint16_t Word(Draw& draw) {
    return static_cast<std::uint16_t>(draw());
}

Group Received(const std::array<std::uint16_t, 4>& words, BlockStatus status) {
    constexpr Offset kOffsets[] = {Offset::kA, Offset::kB, Offset::kC, Offset::kD};
    Group group;
    for (std::size_t i = 0; i < 4; ++i) {
        group.blocks[i].status = status;
        group.blocks[i].information = words[i];
        group.blocks[i].offset = i == 2 && (words[1] & 0x0800) != 0 ? Offset::kCPrime : kOffsets[i];
        group.blocks[i].odds = status == BlockStatus::kCertain ? 20.0f : 5.0f;
    }
    return group;
}

void Take(CGroupReader& reader, const Group& group, double now_s) {
    for (std::size_t place = 0; place < 4; ++place) reader.TakeBlock(place, group.blocks[place], now_s);
    reader.TakeGroup(group, now_s);
}

// What a station says must stay within what a station can say, however much it is told.
void ExpectBounded(const Station& station) {
    constexpr std::size_t kMostBytesOfLetter = 3;
    EXPECT_LE(station.serviceName.whole.size(), 8 * kMostBytesOfLetter);
    EXPECT_LE(station.radioText.whole.size(), 64 * kMostBytesOfLetter);
    EXPECT_LE(station.radioText.letters.size(), 64 * kMostBytesOfLetter);
    EXPECT_LE(station.programTypeName.whole.size(), 8 * kMostBytesOfLetter);
    EXPECT_LE(station.longServiceName.whole.size(), 32u);
    EXPECT_LE(station.tags.size(), 64u);
    EXPECT_LE(station.others.size(), 256u);
    EXPECT_LE(station.alternatives.same_10kHz.size() + station.alternatives.regional_10kHz.size(), 512u);
    for (const auto& other : station.others) {
        EXPECT_LE(other.mapped.size(), 512u);
        EXPECT_LE(other.alternatives.same_10kHz.size(), 512u);
    }
    if (station.programmeType) {
        EXPECT_THAT(*station.programmeType, testing::AllOf(testing::Ge(0), testing::Le(31)));
    }
    if (station.clock) {
        EXPECT_THAT(station.clock->hour, testing::AllOf(testing::Ge(0), testing::Le(23)));
        EXPECT_THAT(station.clock->minute, testing::AllOf(testing::Ge(0), testing::Le(59)));
        EXPECT_THAT(station.clock->month, testing::AllOf(testing::Ge(1), testing::Le(12)));
        EXPECT_THAT(station.clock->day, testing::AllOf(testing::Ge(1), testing::Le(31)));
    }
}

TEST(ReceptionFuzz, GroupsOfEveryTypeAndContentNeitherFaultNorGrow) {
    Draw draw(21);
    CGroupReader reader;
    reader.Restart();
    const long inputs = Inputs(60000);
    for (long i = 0; i < inputs; ++i) {
        // Every type in turn; what follows the type is anything, and often what was there before.
        static std::uint16_t last = 0;
        const auto second = static_cast<std::uint16_t>(i % 32 << 11 | (Word(draw) & 0x07FF));
        const std::uint16_t third = Below(draw, 4) == 0 ? last : Word(draw);
        last = third;
        Group group = Received({0xD301, second, third, Word(draw)}, BlockStatus::kCertain);
        for (Block& block : group.blocks) block.status = static_cast<BlockStatus>(Below(draw, 5));
        if (Below(draw, 200) == 0) group.blocks[0].information = Word(draw);
        Take(reader, group, static_cast<double>(i) * kGroup_s);
        if (i % 97 == 0) ExpectBounded(reader.Current());
        if (HasFailure()) FAIL() << "after group " << i;
    }
}

// The letters of the texts here are ASCII, so that a text is its codes.
transmitter::StationTexts Sent() {
    transmitter::StationTexts texts;
    texts.ps = {"KORA ONE", "TUNED TO", "THE AIR!"};
    texts.ps_s = 6;
    texts.texts = {"Good morning from the other end of the air", "It is raining, and will be until tomorrow",
                   "Next: a concert for two pianos and a kettle, played by nobody at all"};
    texts.texts[2].resize(64);
    texts.text_s = 60;
    texts.ptyName = "Gardens ";
    texts.longPs = "Kora, the station at the end";
    return texts;
}

bool IsSentOrNone(const std::string& whole, const std::vector<std::string>& sent) {
    return whole.empty() || std::find(sent.begin(), sent.end(), whole) != sent.end();
}

// Each letter that is shown stands in that place of one of the sent texts: half of one may be there already.
bool AreSentLetters(const std::string& letters, const std::vector<std::string>& sent) {
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const bool known = std::any_of(sent.begin(), sent.end(), [&](const std::string& whole) {
            return letters[i] == ' ' || (i < whole.size() && whole[i] == letters[i]);
        });
        if (!known) return false;
    }
    return true;
}

// What is shown as certain was sent, whole texts and single letters.
testing::AssertionResult ShowsOnlyWhatWasSent(const Station& station, const transmitter::StationTexts& sent) {
    const struct {
        const sdr::rds::Text& shown;
        std::vector<std::string> sent;
    } kTexts[] = {{station.serviceName, sent.ps},
                  {station.radioText, sent.texts},
                  {station.programTypeName, {sent.ptyName, "Gardens"}},
                  {station.longServiceName, {sent.longPs}}};
    for (const auto& text : kTexts) {
        if (!IsSentOrNone(text.shown.whole, text.sent) || !AreSentLetters(text.shown.letters, text.sent))
            return testing::AssertionFailure() << text.shown.whole << ", " << text.shown.letters;
    }
    return testing::AssertionSuccess();
}

TEST(ReceptionFuzz, AWrongGroupAmongTheSentOnesMakesNoTextThatWasNotSent) {
    const transmitter::StationTexts texts = Sent();
    Draw draw(22);
    long shown = 0;
    const long inputs = Inputs(60000);
    constexpr long kTuned = 3000;  // groups before another start
    for (long begin = 0; begin < inputs; begin += kTuned) {
        transmitter::CGroupScheduler scheduler(texts);
        CGroupReader reader;
        reader.Restart();
        for (long i = 0; i < kTuned; ++i) {
            Group group = Received(scheduler.Next().words, BlockStatus::kReceived);
            for (Block& block : group.blocks) {
                // Sure, likely, lost.
                const std::uint32_t luck = Below(draw, 50);
                block.status = luck < 25   ? BlockStatus::kCertain
                               : luck < 49 ? BlockStatus::kReceived
                                           : BlockStatus::kWrong;
            }
            // Above the receiver's own threshold of likelihood a wrong block now and then passes as received:
            // one, or a whole group of a text under the station's own code.
            const std::uint32_t damage = Below(draw, 80);
            if (damage == 0) {
                Block& block = group.blocks[Below(draw, 4)];
                block.information = Word(draw);
                block.status = BlockStatus::kReceived;
            } else if (damage == 1) {
                constexpr std::uint16_t kTextTypes[] = {0x0000, 0x2000, 0xA000, 0xF000};
                const auto second =
                    static_cast<std::uint16_t>(kTextTypes[Below(draw, 4)] | (Word(draw) & 0x001F));
                group = Received({texts.pi, second, Word(draw), Word(draw)}, BlockStatus::kReceived);
            }
            Take(reader, group, static_cast<double>(i) * kGroup_s);
            const Station& station = reader.Current();
            ASSERT_TRUE(ShowsOnlyWhatWasSent(station, texts)) << "group " << begin + i;
            shown += station.radioText.whole.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(shown, inputs / 10) << "what was sent has to be seen too";
}

// Soft symbols of a stream of bits, differentially coded.
class CSymbols {
  public:
    explicit CSymbols(float sure) : sure_(sure) {}
    float Next(bool bit) {
        last_ = last_ != bit;
        return last_ ? sure_ : -sure_;
    }

  private:
    float sure_;
    bool last_ = false;
};

struct Taken {
    long groups = 0;
    long whole = 0;
    long certainWrong = 0;
};

TEST(ReceptionFuzz, RandomBitsGiveNoGroupThatIsCertain) {
    Draw draw(23);
    Taken taken;
    CBlockSync sync([](std::size_t, const Block&) {},
                    [&](const Group& group) {
                        ++taken.groups;
                        for (const Block& block : group.blocks) taken.certainWrong += block.Certain() ? 1 : 0;
                    });
    sync.Restart();
    const long inputs = Inputs(200000);
    std::normal_distribution<float> noise(0, 2);
    // Of all kinds of sureness, as a tracker on nothing gives them.
    for (long i = 0; i < inputs; ++i) sync.Push(noise(draw));
    EXPECT_LE(taken.groups, 1 + inputs / 104 / 20) << "mostly it is not in step";
    // In 26 bits of noise a word of one of five offsets is there once in 200; that all four blocks of a group
    // look beyond doubt is a matter of years.
    EXPECT_LE(taken.certainWrong, 1 + inputs / 104 / 50);
}

TEST(ReceptionFuzz, SlippedBitsCostGroupsAndHardlyEverMakeOneThatWasNotSent) {
    Draw draw(24);
    std::vector<std::array<std::uint16_t, 4>> sent;
    Taken taken;
    CBlockSync sync([](std::size_t, const Block&) {},
                    [&](const Group& group) {
                        ++taken.groups;
                        if (!group.Whole()) return;
                        std::array<std::uint16_t, 4> words{};
                        for (std::size_t i = 0; i < 4; ++i) words[i] = group.blocks[i].information;
                        const std::size_t recent = std::min<std::size_t>(sent.size(), 20);
                        const bool known = std::find(sent.end() - static_cast<std::ptrdiff_t>(recent),
                                                     sent.end(), words) != sent.end();
                        taken.whole += known ? 1 : 0;
                        taken.certainWrong += known ? 0 : 1;
                    });
    sync.Restart();
    CSymbols symbols(9);
    const long groups = Inputs(200000) / 104;
    for (long i = 0; i < groups; ++i) {
        sent.push_back({0xD301, static_cast<std::uint16_t>(Word(draw) & 0xF7FF), Word(draw), Word(draw)});
        for (const bool bit : Bits(transmitter::Group{sent.back(), {}})) {
            const std::uint32_t luck = Below(draw, 104 * 12);
            if (luck == 0) continue;  // a bit is lost
            sync.Push(symbols.Next(bit));
            if (luck == 1) sync.Push(symbols.Next(Below(draw, 2) == 0));  // one too many
        }
    }
    // Where a bit is lost the block around it is clear and yet no word: the nearest one is now and then
    // another's.
    EXPECT_LE(taken.certainWrong, groups / 200);
    EXPECT_GT(taken.whole, groups / 3) << "between two slips there are groups";
}

TEST(ReceptionFuzz, SlippedBitsMakeNoTextThatWasNotSent) {
    const transmitter::StationTexts texts = Sent();
    Draw draw(26);
    CSymbols symbols(9);
    long shown = 0;
    const long groups = Inputs(200000) / 104;
    constexpr long kTuned = 1000;  // groups before another start
    for (long begin = 0; begin < groups; begin += kTuned) {
        transmitter::CGroupScheduler scheduler(texts);
        CGroupReader reader;
        reader.Restart();
        double now_s = 0;
        CBlockSync sync([&](std::size_t place, const Block& block) { reader.TakeBlock(place, block, now_s); },
                        [&](const Group& group) { reader.TakeGroup(group, now_s); });
        sync.Restart();
        for (long i = 0; i < kTuned; ++i) {
            now_s += kGroup_s;
            for (const bool bit : Bits(scheduler.Next())) {
                const std::uint32_t luck = Below(draw, 104 * 12);
                if (luck == 0) continue;  // a bit is lost
                sync.Push(symbols.Next(bit));
                if (luck == 1) sync.Push(symbols.Next(Below(draw, 2) == 0));  // one too many
            }
            const Station& station = reader.Current();
            ASSERT_TRUE(ShowsOnlyWhatWasSent(station, texts)) << "group " << begin + i;
            ASSERT_TRUE(!station.pi || *station.pi == texts.pi) << *station.pi << ", group " << begin + i;
            shown += station.radioText.whole.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(shown, groups / 3) << "what was sent has to be seen too";
}

TEST(ReceptionFuzz, SymbolsThatAreNoNumbersAreSurvived) {
    Draw draw(25);
    long groups = 0;
    CBlockSync sync([](std::size_t, const Block&) {}, [&](const Group&) { ++groups; });
    sync.Restart();
    constexpr float kOdd[] = {0.0f, -0.0f, 1e30f, -1e30f, 1e-30f};
    const long inputs = Inputs(100000);
    for (long i = 0; i < inputs; ++i) sync.Push(kOdd[Below(draw, 5)]);
    EXPECT_LE(groups, inputs / 104 + 1);
}

}  // namespace
