// How texts are put together from groups, and what a weak signal loses.
#include "handset/fmdevice/band/rds_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

using fm::RdsTextKind;
using testing::AllOf;
using testing::Ge;
using testing::Le;

constexpr int kGood = 60;
constexpr double kGroup_ms = 104 / 1.1875;

fm::RdsData FullData() {
    fm::RdsData data;
    data.serviceNames = {"KORA ONE"};
    data.radioTexts = {std::string(64, 'x')};
    data.programText = "Morning";
    return data;
}

// A receiver that is asked again and again from the moment of tuning on.
class Receiver {
  public:
    explicit Receiver(fm::RdsData data, std::uint64_t start_ms = 123456)
        : data_(std::move(data)), now_(start_ms) {
        reader_.Restart(now_);
    }
    std::string Ask(int level = kGood) {
        reader_.Listen(data_, level, now_);
        const auto next = reader_.Next();
        if (!next) return "none";
        reader_.Given(*next);
        const char* const kNames[] = {"name ", "text ", "type "};
        return kNames[static_cast<int>(next->kind)] + next->text;
    }
    void Pass(std::uint64_t ms) { now_ += ms; }
    // Milliseconds until the answer is another than `before`.
    std::uint64_t UntilOtherThan(const std::string& before, std::string* answer) {
        const std::uint64_t began = now_;
        while ((*answer = Ask()) == before && now_ < began + 60000) now_ += 5;
        return now_ - began;
    }
    fm::CRdsReader& reader() { return reader_; }

  private:
    fm::RdsData data_;
    std::uint64_t now_;
    fm::CRdsReader reader_;
};

TEST(RdsReader, AGroupTakesAHundredAndFourBits) {
    EXPECT_EQ(fm::RdsGroupAt(0), 0u);
    EXPECT_EQ(fm::RdsGroupAt(60000), static_cast<std::uint64_t>(60 * 1187.5 / 104));
}

TEST(RdsReader, RightAfterTuningNothingIsKnown) {
    Receiver receiver(FullData());
    EXPECT_EQ(receiver.Ask(), "none");
    EXPECT_FALSE(receiver.reader().HasGroup());
    receiver.Pass(90);
    EXPECT_EQ(receiver.Ask(), "none");
    EXPECT_TRUE(receiver.reader().HasGroup());
}

TEST(RdsReader, ANameTakesFourGroupsAndEverySecondGroupIsOneOfThem) {
    for (const std::uint64_t start : {1000u, 1040u, 1090u, 5555u}) {
        std::string answer;
        Receiver receiver(FullData(), start);
        EXPECT_THAT(receiver.UntilOtherThan("none", &answer),
                    AllOf(Ge(std::floor(6 * kGroup_ms)), Le(9 * kGroup_ms)));
        EXPECT_EQ(answer, "name KORA ONE");
    }
}

TEST(RdsReader, AStationOfANameAloneSendsItInEveryGroup) {
    fm::RdsData data;
    data.serviceNames = {"PLAIN"};
    std::string answer;
    EXPECT_THAT(Receiver(data).UntilOtherThan("none", &answer),
                AllOf(Ge(std::floor(3 * kGroup_ms)), Le(5 * kGroup_ms)));
    EXPECT_EQ(answer, "name PLAIN");
}

TEST(RdsReader, ARadioTextTakesAGroupForFourLettersAndOneForItsEnd) {
    struct Row {
        std::size_t letters;
        int groups;
    };
    for (const Row row : {Row{64, 16}, Row{63, 16}, Row{4, 2}, Row{3, 1}}) {
        fm::RdsData data;
        data.radioTexts = {std::string(row.letters, 'x')};
        std::string answer;
        // The groups between are those of the name, which this station has not.
        EXPECT_THAT(
            Receiver(data).UntilOtherThan("none", &answer),
            AllOf(Ge(std::floor((2 * row.groups - 2) * kGroup_ms)), Le((2 * row.groups + 1) * kGroup_ms)))
            << row.letters;
        EXPECT_EQ(answer, "text " + std::string(row.letters, 'x'));
    }
}

TEST(RdsReader, ASlowAskerIsGivenEachKindInTurn) {
    Receiver receiver(FullData());
    std::map<std::string, int> seen;
    for (int i = 0; i < 60; ++i) {
        receiver.Pass(700);
        ++seen[receiver.Ask()];
    }
    EXPECT_EQ(seen["none"], 0);
    EXPECT_GE(seen["name KORA ONE"], 15);
    EXPECT_GE(seen["text " + std::string(64, 'x')], 8);
    EXPECT_GE(seen["type Morning"], 8);
}

TEST(RdsReader, TheLastTextIsGivenAgainWhileNoneIsComplete) {
    Receiver receiver(FullData());
    std::string answer;
    receiver.UntilOtherThan("none", &answer);
    EXPECT_EQ(receiver.Ask(), answer);
}

TEST(RdsReader, NamesAndTextsChangeByTheClock) {
    fm::RdsData data;
    data.serviceNames = {"ONE", "TWO"};
    data.nameTime_s = 2;
    data.radioTexts = {"first", "second", "third"};
    data.textTime_s = 5;
    EXPECT_EQ(data.ServiceName(1999), "ONE");
    EXPECT_EQ(data.ServiceName(2000), "TWO");
    EXPECT_EQ(data.ServiceName(4000), "ONE");
    EXPECT_EQ(data.RadioText(14999), "third");
    EXPECT_EQ(data.RadioText(15000), "first");
    Receiver receiver(data, 0);
    std::vector<std::string> names;
    for (int i = 0; i < 600; ++i) {
        receiver.Pass(20);
        const std::string answer = receiver.Ask();
        if (answer.rfind("name", 0) == 0 && (names.empty() || names.back() != answer))
            names.push_back(answer);
    }
    EXPECT_THAT(names,
                testing::ElementsAre("name ONE", "name TWO", "name ONE", "name TWO", "name ONE", "name TWO"));
}

TEST(RdsReader, ATextThatChangesInMidAirBeginsAnew) {
    fm::RdsData data;
    data.radioTexts = {std::string(60, 'a'), std::string(60, 'b')};
    data.textTime_s = 4;
    Receiver receiver(data, 2000);
    std::string answer;
    // Sixteen groups, every second one, do not fit into the two seconds that the first text has left.
    receiver.UntilOtherThan("none", &answer);
    EXPECT_EQ(answer, "text " + std::string(60, 'b'));
}

TEST(RdsReader, AnotherStationIsUnknownAgain) {
    Receiver receiver(FullData());
    std::string answer;
    receiver.UntilOtherThan("none", &answer);
    receiver.reader().Restart(200000);
    EXPECT_FALSE(receiver.reader().Next());
    EXPECT_FALSE(receiver.reader().HasGroup());
}

TEST(RdsReader, AReceiverThatWasNotAskedForHoursAnswersAtOnce) {
    Receiver receiver(FullData());
    receiver.Pass(100ull * 3600 * 1000);
    EXPECT_EQ(receiver.Ask(), "name KORA ONE");
}

TEST(RdsReader, AWeakSignalGivesNothing) {
    Receiver receiver(FullData());
    receiver.Pass(20000);
    EXPECT_EQ(receiver.Ask(fm::kNoRdsLevel), "none");
    EXPECT_FALSE(receiver.reader().HasGroup());
}

TEST(RdsReader, ADropOutIsSilentAndWhatWasKnownComesBackAfterIt) {
    Receiver receiver(FullData());
    std::string answer;
    receiver.UntilOtherThan("none", &answer);
    EXPECT_EQ(receiver.Ask(fm::kNoRdsLevel), "none");
    receiver.Pass(50);
    EXPECT_EQ(receiver.Ask(), answer);
}

TEST(RdsReader, AStationWithoutRdsGivesNothing) {
    Receiver receiver(fm::RdsData{});
    receiver.Pass(20000);
    EXPECT_EQ(receiver.Ask(), "none");
    EXPECT_FALSE(receiver.reader().HasGroup());
}

// Seconds in ten minutes in which groups come through.
int GoodSeconds(int level) {
    int good = 0;
    for (std::uint64_t second = 0; second < 600; ++second)
        good += fm::RdsComesThrough(level, second * 1000) ? 1 : 0;
    return good;
}

TEST(RdsReader, AWeakSignalLosesSecondsAndAVeryWeakOneAll) {
    EXPECT_EQ(GoodSeconds(15), 0);
    EXPECT_NEAR(GoodSeconds(16), 300, 60);
    EXPECT_NEAR(GoodSeconds(25), 570, 20);
    EXPECT_EQ(GoodSeconds(26), 600);
    for (int level = 16; level < 26; ++level) EXPECT_LE(GoodSeconds(level), GoodSeconds(level + 1));
}

}  // namespace
