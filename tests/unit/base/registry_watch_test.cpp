// Watching a key of the registry.
#include "handset/base/registry_watch.h"

#include <gtest/gtest.h>

namespace {

using handset::CRegistryWatch;
using Depth = CRegistryWatch::Depth;
using Missing = CRegistryWatch::Missing;

constexpr wchar_t kTop[] = L"Software\\KoraWatchTest";
constexpr wchar_t kKey[] = L"Software\\KoraWatchTest\\Parent\\Key";
constexpr wchar_t kBelow[] = L"Software\\KoraWatchTest\\Parent\\Key\\Below";
constexpr DWORD kSoon_ms = 20000;

void Write(const wchar_t* key, DWORD number) {
    RegSetKeyValueW(HKEY_CURRENT_USER, key, L"Value", REG_DWORD, &number, sizeof number);
}

bool Exists(const wchar_t* path) {
    handset::OwnedKey key;
    return RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, handset::Put(key)) == ERROR_SUCCESS;
}

// What one that waits for the events would do.
bool IsTold(const CRegistryWatch& watch) {
    const HANDLE events[] = {watch.KeyEvent(), watch.ParentEvent()};
    return WaitForMultipleObjects(2, events, FALSE, kSoon_ms) != WAIT_TIMEOUT;
}

// Takes what is left to be told; the host may tell of one change by both events.
void Settle(CRegistryWatch* watch) {
    for (int i = 0; i < 100 && !watch->Unchanged(); ++i) {
    }
}

class Watching : public ::testing::Test {
  protected:
    Watching() { RegDeleteTreeW(HKEY_CURRENT_USER, kTop); }
    ~Watching() override { RegDeleteTreeW(HKEY_CURRENT_USER, kTop); }
};

}  // namespace

TEST_F(Watching, AChangeIsSeenByTheNextLookAndTellsWhoWaits) {
    Write(kKey, 1);
    CRegistryWatch watch(kKey, Depth::kTree, Missing::kLeft);
    EXPECT_FALSE(watch.Unchanged());
    Settle(&watch);
    EXPECT_TRUE(watch.Unchanged());
    Write(kKey, 2);
    EXPECT_TRUE(IsTold(watch));
    EXPECT_FALSE(watch.Unchanged());
    EXPECT_TRUE(watch.Unchanged());
    Write(kBelow, 3);
    EXPECT_FALSE(watch.Unchanged());
}

TEST_F(Watching, OfAKeyAloneSaysNothingOfTheValuesBelow) {
    Write(kBelow, 1);
    CRegistryWatch watch(kKey, Depth::kKey, Missing::kLeft);
    Settle(&watch);
    Write(kBelow, 2);
    EXPECT_TRUE(watch.Unchanged());
    Write(kKey, 2);
    EXPECT_FALSE(watch.Unchanged());
}

TEST_F(Watching, AKeyThatIsMissingIsLeftSoAndSeenWhenItComes) {
    Write(L"Software\\KoraWatchTest\\Parent", 1);
    CRegistryWatch watch(kKey, Depth::kTree, Missing::kLeft);
    Settle(&watch);
    EXPECT_TRUE(watch.Unchanged());
    EXPECT_FALSE(Exists(kKey));
    Write(kKey, 1);
    EXPECT_FALSE(watch.Unchanged());
    Settle(&watch);
    Write(kKey, 2);
    EXPECT_FALSE(watch.Unchanged());
}

TEST_F(Watching, AKeyThatIsMissingIsMadeForWhoWaits) {
    CRegistryWatch watch(kKey, Depth::kTree, Missing::kMade);
    EXPECT_FALSE(watch.Unchanged());
    EXPECT_TRUE(watch.Watches());
    EXPECT_TRUE(Exists(kKey));
    Settle(&watch);
    Write(kBelow, 1);
    EXPECT_TRUE(IsTold(watch));
}

TEST_F(Watching, AKeyThatGoesWithAllAboveItIsMadeAndWatchedAgain) {
    CRegistryWatch watch(kKey, Depth::kTree, Missing::kMade);
    Settle(&watch);
    RegDeleteTreeW(HKEY_CURRENT_USER, kTop);
    EXPECT_FALSE(watch.Unchanged());
    Settle(&watch);
    EXPECT_TRUE(Exists(kKey));
    Write(kKey, 1);
    EXPECT_TRUE(IsTold(watch));
    EXPECT_FALSE(watch.Unchanged());
}
