// Where the device's paths lie: every spelling leads to the same place, and none leads out.
#include "handset/base/device_path.h"

#include <gtest/gtest.h>

#include <random>

namespace handset {
namespace {

constexpr wchar_t kRoot[] = L"C:\\Kora\\device";

CDevicePath On(const std::wstring& path, bool cardIn = true) {
    return cardIn ? CDevicePath(path.c_str(), kRoot, [] { return true; })
                  : CDevicePath(path.c_str(), kRoot, [] { return false; });
}

TEST(DevicePaths, LieBelowTheRoot) {
    EXPECT_EQ(On(L"\\Windows\\UI.exe").host(), std::wstring(L"C:\\Kora\\device\\Windows\\UI.exe"));
    EXPECT_EQ(On(L"\\Windows\\UI.exe").device(), L"\\Windows\\UI.exe");
    EXPECT_EQ(On(L"note.txt").device(), L"\\note.txt");
    EXPECT_EQ(On(L"\\").host(), std::wstring(L"C:\\Kora\\device\\"));
}

TEST(DevicePaths, OfEverySpellingAreTheSame) {
    for (const wchar_t* path :
         {L"\\a\\b.txt", L"/a/b.txt", L"a/b.txt", L"\\a\\.\\b.txt", L"\\a\\c\\..\\b.txt", L"//a//b.txt",
          L"\\..\\a\\b.txt", L"\\a.\\b.txt. ", L"\\a\\ \\b.txt", L"\\...\\a\\b.txt"}) {
        EXPECT_EQ(On(path).device(), L"\\a\\b.txt") << testing::PrintToString(std::wstring(path));
    }
}

TEST(DevicePaths, KeepABackslashAtTheEndAndTheEndOfAPattern) {
    EXPECT_EQ(On(L"\\Music\\").device(), L"\\Music\\");
    EXPECT_EQ(On(L"\\Music\\*.").device(), L"\\Music\\*.");
}

TEST(DevicePaths, OnACardThatIsOutAreNotThereHoweverTheyAreSpelt) {
    for (const wchar_t* path :
         {L"\\Storage Card", L"\\Storage Card\\x.vol", L"Storage Card\\x.vol", L"/storage card/x.vol",
          L"\\Windows\\..\\STORAGE CARD\\x.vol", L"\\Storage Card.\\x.vol", L"\\Storage Card \\x.vol",
          L"\\.\\Storage Card\\x"}) {
        EXPECT_FALSE(On(path, false)) << testing::PrintToString(std::wstring(path));
        EXPECT_TRUE(On(path)) << testing::PrintToString(std::wstring(path));
        EXPECT_TRUE(On(path).onStorageCard());
    }
    EXPECT_TRUE(On(L"\\Storage Cards\\x.vol", false));
    EXPECT_TRUE(On(L"\\Storage Card\\..\\x.vol", false));
}

TEST(DevicePaths, WithADriveOrTwoBackslashesAreTheHostsOwn) {
    for (const wchar_t* path : {L"Z:\\tmp\\x", L"c:x", L"\\\\server\\share\\x", L""}) {
        EXPECT_EQ(On(path, false).host(), std::wstring(path));
        EXPECT_EQ(On(path, false).device(), L"");
        EXPECT_TRUE(On(path, false));
    }
    EXPECT_EQ(CDevicePath(nullptr, kRoot, [] { return true; }).host(), nullptr);
}

TEST(DevicePaths, WithoutAFileSystemLeadNowhere) {
    const CDevicePath path(L"\\Windows\\UI.exe", L"", [] { return true; });
    EXPECT_FALSE(path);
    EXPECT_EQ(path.host(), std::wstring());
}

// What is made of pieces like these, in any order, stays below the root as the host resolves it.
TEST(DevicePaths, OfAnyMakeStayBelowTheRoot) {
    constexpr const wchar_t* kPieces[] = {L"..",           L".", L"\\", L"/",   L"a",
                                          L"Storage Card", L" ", L":",  L"...", L". ."};
    std::mt19937 random(17);
    for (int round = 0; round < 60000; ++round) {
        std::wstring text = L"\\a";
        for (unsigned pieces = random() % 12; pieces > 0; --pieces)
            text += kPieces[random() % std::size(kPieces)];
        const CDevicePath path = On(text, false);
        ASSERT_EQ(path.device().front(), L'\\');
        ASSERT_EQ(path.host(), kRoot + path.device());
        for (std::size_t begin = 1; begin < path.device().size();) {
            const std::size_t end = std::min(path.device().find(L'\\', begin), path.device().size());
            const std::wstring step = path.device().substr(begin, end - begin);
            ASSERT_FALSE(step.empty() || step.back() == L'.' || step.back() == L' ')
                << testing::PrintToString(text);
            begin = end + 1;
        }
        // Resolved once more it stays what it is.
        ASSERT_EQ(On(path.device()).device(), path.device());
        ASSERT_EQ(static_cast<bool>(path), !path.onStorageCard());
    }
}

TEST(DevicePaths, AreFoundAgainFromTheHosts) {
    EXPECT_EQ(DevicePathOfHost(L"c:/kora/DEVICE/a.txt", kRoot), L"\\a.txt");
    EXPECT_EQ(DevicePathOfHost(kRoot, kRoot), L"\\");
    EXPECT_EQ(DevicePathOfHost(L"C:\\Kora\\devices\\a.txt", kRoot), L"");
    EXPECT_EQ(DevicePathOfHost(L"C:\\Kora", kRoot), L"");
    EXPECT_EQ(DevicePathOfHost(L"C:\\Kora\\device\\a.txt", L""), L"");
}

}  // namespace
}  // namespace handset
