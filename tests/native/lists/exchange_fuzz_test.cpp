// The readers of the exchange formats on damaged files and on random ones: nothing that is undefined happens,
// what is taken can be stored, and what was written comes back as it went.
#include <gtest/gtest.h>

#include "handset/base/utf8.h"
#include "handset/lists/csv_lists.h"
#include "handset/lists/import_plan.h"
#include "handset/lists/json_lists.h"
#include "tests/native/fuzz_inputs.h"
#include "tests/native/lists/sample_lists.h"

namespace {

constexpr std::uint64_t kUsualInputs = 20'000;

std::string Damaged(std::string bytes, std::mt19937& random) {
    static constexpr const char* kPieces[] = {"\"",
                                              "\"\"",
                                              ",",
                                              ";",
                                              "\n",
                                              "\r",
                                              "{",
                                              "}",
                                              "[",
                                              "]",
                                              ":",
                                              "\\",
                                              "\\u0000",
                                              "\\ud800",
                                              "\xC3",
                                              "\xF0\x9F",
                                              "1e308",
                                              "-",
                                              "0",
                                              "null",
                                              "#",
                                              "\t",
                                              "\"name\"",
                                              "\"channels\":[",
                                              "\"frequency\":98.5,",
                                              "Frequency",
                                              "\xEF\xBB\xBF"};
    for (auto times = 1 + random() % 4; times > 0; --times) {
        const std::size_t at = bytes.empty() ? 0 : random() % bytes.size();
        switch (random() % 5) {
            case 0:
                bytes.insert(at, kPieces[random() % std::size(kPieces)]);
                break;
            case 1:
                bytes.erase(at, random() % 20);
                break;
            case 2:
                if (!bytes.empty()) bytes[at] = static_cast<char>(random());
                break;
            case 3:
                bytes.resize(at);
                break;
            default:
                bytes.insert(at, bytes.substr(bytes.empty() ? 0 : random() % bytes.size(), random() % 60));
                break;
        }
    }
    return bytes;
}

std::string Key(const std::u16string& name) {
    return handset::Utf8(name);
}

void CanBeStored(const lists::ListFile& file) {
    const lists::ImportPlan plan = lists::PlanImport({}, file, Key);
    std::size_t channels = 0;
    for (const lists::PlannedList& planned : plan.lists) {
        ASSERT_LE(planned.list.name.size(), lists::kLongestListName);
        for (const lists::Channel& channel : planned.list.channels) {
            ++channels;
            ASSERT_LE(channel.name.size(), lists::kLongestText);
            ASSERT_LE(channel.guide.size(), lists::kLongestText);
            ASSERT_GE(channel.frequency_10kHz, lists::kBandBottom_10kHz);
            ASSERT_LE(channel.frequency_10kHz, lists::kBandTop_10kHz);
            ASSERT_EQ((channel.name + channel.guide).find(u'\0'), std::u16string::npos);
        }
    }
    ASSERT_EQ(channels, plan.newChannels);
    for (const lists::Refusal& refusal : plan.refused) ASSERT_GT(refusal.line, 0u) << refusal.why;
}

using Read = lists::ListFile (*)(const std::string&);

void ReadDamaged(Read read, const std::string& whole, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::uint64_t broken = 0, taken = 0;
    for (std::uint64_t i = test::FuzzInputs(kUsualInputs); i > 0; --i) {
        const std::string bytes = Damaged(whole, random);
        const lists::ListFile file = read(bytes);
        ++(file.fault.empty() ? taken : broken);
        if (file.fault.empty()) CanBeStored(file);
        if (testing::Test::HasFatalFailure()) FAIL() << bytes;
    }
    // Both happen, or the damage is none.
    EXPECT_GT(broken, 0u);
    EXPECT_GT(taken, 0u);
}

std::vector<lists::ChannelList> Few() {
    return {{u"Mine", {{u"Z\u00FCri \"1\"", 10370, u"a, b", 0}, {u"two", 9850, u"", 0}}, 0, true},
            {u"Other", {}, 0, true}};
}

}  // namespace

TEST(ExchangeFuzz, DamagedJson) {
    ReadDamaged(lists::ReadJson, lists::WriteJson(Few()), 1701);
}

TEST(ExchangeFuzz, DamagedCsv) {
    ReadDamaged(lists::ReadCsvLists, lists::WriteCsvLists(Few()), 1702);
}

TEST(ExchangeFuzz, DamagedBookmarks) {
    std::vector<std::string> lost;
    ReadDamaged(lists::ReadCsvLists, lists::WriteBookmarks(Few(), &lost), 1703);
}

TEST(ExchangeFuzz, RandomListsComeBackAsTheyWent) {
    std::mt19937 random(1704);
    for (std::uint64_t i = test::FuzzInputs(kUsualInputs); i > 0; --i) {
        const auto lists = RandomLists(random);
        ASSERT_TRUE(SameLists(lists::ReadJson(lists::WriteJson(lists)).lists, lists))
            << lists::WriteJson(lists);
        ASSERT_TRUE(SameLists(lists::ReadCsvLists(lists::WriteCsvLists(lists)).lists, lists))
            << lists::WriteCsvLists(lists);
    }
}
