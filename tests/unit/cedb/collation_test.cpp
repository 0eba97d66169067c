// Names are sorted and matched as the locale does it.
#include <algorithm>
#include <random>

#include "handset/coredll/cedb/windows_collator.h"
#include "tests/unit/cedb/database_fixture.h"

namespace {

constexpr LCID kEnglish = 0x409;
constexpr LCID kGerman = 0x407;
constexpr LCID kSwedish = 0x41D;

using Strings = std::vector<std::wstring>;

int Sign(int number) {
    return (number > 0) - (number < 0);
}

}  // namespace

TEST(Collator, SortKeysOrderAsCompareStringDoes) {
    const std::wstring alphabet =
        L"aAbBzZ019 -'._\u00E9\u00C9e\u0301\u00E4\u00F6\u00FC\u00DF\u0431\u0411\u4E2D"
        L"\u30A2\u3042\uFF71\u00AD\u200D\u0130iI\u0131";
    const struct {
        std::uint32_t sort;
        DWORD nls;
    } kFlags[] = {
        {0, 0},
        {cedb::kSortCaseInsensitive, NORM_IGNORECASE},
        {cedb::kSortCaseInsensitive | cedb::kSortIgnoreNonSpace, NORM_IGNORECASE | NORM_IGNORENONSPACE},
        {cedb::kSortIgnoreWidth | cedb::kSortIgnoreKanaType, NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE},
        {cedb::kSortStringSort, SORT_STRINGSORT}};
    std::mt19937 random(20260105);
    const auto word = [&] {
        std::wstring text;
        for (unsigned length = random() % 6; length > 0; --length)
            text += alphabet[random() % alphabet.size()];
        return text;
    };
    const auto units = [](const std::wstring& text) {
        return std::u16string(reinterpret_cast<const char16_t*>(text.c_str()), text.size());
    };
    const cedb::CWindowsCollator collator;
    int equal = 0;
    for (int round = 0; round < 30000; ++round) {
        const auto& flags = kFlags[random() % std::size(kFlags)];
        const LCID lcid = round % 3 == 0 ? kEnglish : round % 3 == 1 ? kGerman : kSwedish;
        const std::wstring left = word();
        std::wstring right = random() % 2 == 0 ? word() : left;
        if (!right.empty()) right[random() % right.size()] = alphabet[random() % alphabet.size()];
        const int expected =
            CompareStringW(lcid, flags.nls, left.c_str(), -1, right.c_str(), -1) - CSTR_EQUAL;
        const std::string leftKey = collator.TextKey(lcid, flags.sort, units(left));
        const int keys = leftKey.compare(collator.TextKey(lcid, flags.sort, units(right)));
        ASSERT_EQ(Sign(keys), Sign(expected)) << round;
        equal += expected == 0 && left != right ? 1 : 0;
    }
    EXPECT_GT(equal, 20);
}

class CollationTest : public DatabaseTest {};

TEST_F(CollationTest, AListIsInTheOrderOfItsLocaleAndFollowsAChangeOfIt) {
    CEGUID volume = Mount();
    ASSERT_TRUE(CeChangeDatabaseLCID(&volume, kEnglish));
    HANDLE database = Open(volume, kName);
    Strings names = {L"zulu", L"\u00E5ngstr\u00F6m", L"Apfel", L"apfel", L"co-op",
                     L"coop", L"\u00C4pfel",         L""};
    for (const std::wstring& name : names) Insert(database, name.c_str(), 1);
    const auto sorted = [&names](LCID lcid) {
        std::stable_sort(
            names.begin(), names.end(), [lcid](const std::wstring& left, const std::wstring& right) {
                return CompareStringW(lcid, 0, left.c_str(), -1, right.c_str(), -1) == CSTR_LESS_THAN;
            });
        return names;
    };
    EXPECT_EQ(Names(database), sorted(kEnglish));
    Close(database);
    EXPECT_TRUE(CeChangeDatabaseLCID(&volume, kSwedish));
    database = Open(volume, kName);
    EXPECT_EQ(Names(database), sorted(kSwedish));
    Close(database);
    Unmount(volume);
    volume = Mount();
    database = Open(volume, kName);
    EXPECT_EQ(Names(database), sorted(kSwedish));
    Close(database);
    SetLastError(0);
    EXPECT_FALSE(CeChangeDatabaseLCID(&volume, 0xFFFF));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    Unmount(volume);
}

TEST_F(CollationTest, ACaseInsensitiveOrderFindsANameInAnyLetterCase) {
    CEGUID volume = Mount();
    CEDBASEINFOEX info = ChannelInfo(L"Insensitive");
    info.wNumSortOrder = 1;
    info.rgSortSpecs[0] = SortBy(kName, CEDB_SORT_CASEINSENSITIVE);
    const HANDLE database = OpenOrder(volume, info);
    const CEOID oid = Insert(database, L"K\u00D6LN", 1);
    CEPROPVAL name = Text(kName, L"k\u00F6ln");
    EXPECT_EQ(
        CeSeekDatabase(database, CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&name), nullptr),
        oid);
    Close(database);
    Unmount(volume);
}

TEST_F(CollationTest, ChangingToTheSameLocaleWritesNothing) {
    CEGUID volume = Mount();
    ASSERT_TRUE(CeChangeDatabaseLCID(&volume, GetSystemDefaultLCID()));
    SetEnvironmentVariableW(L"KORA_FAULT", L"database-write");
    const std::string before = Contents(HostFile());
    EXPECT_TRUE(CeChangeDatabaseLCID(&volume, GetSystemDefaultLCID()));
    EXPECT_EQ(Contents(HostFile()), before);
    SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
    Unmount(volume);
}
