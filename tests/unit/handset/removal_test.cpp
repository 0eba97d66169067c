// handset uninstall: what goes and what stays.
#include "handset/setup/removal.h"

#include <algorithm>
#include <filesystem>

#include "handset/controls/encoding.h"
#include "handset/setup/install.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool StateExists(const std::wstring& key) {
    HKEY open = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, &open) != ERROR_SUCCESS) return false;
    RegCloseKey(open);
    return true;
}

class Removal : public HandsetTest {
  protected:
    void SetUpHandset() {
        ClaimDeviceRoot();
        ASSERT_EQ(InstallHandset(ProgramsToInstall()).fault, L"");
    }
};

TEST_F(Removal, LeavesNothingOfAHandsetThatHasNoRecordings) {
    SetUpHandset();
    WriteWholeFile(Device(L"\\KORA.vol"), "volume");
    SetFileAttributesW(Device(L"\\KORA.vol").c_str(), FILE_ATTRIBUTE_READONLY);
    const RemovalReport report = RemoveHandset(false);
    EXPECT_EQ(report.fault, L"");
    EXPECT_TRUE(report.kept.empty());
    EXPECT_FALSE(Exists(root_));
    EXPECT_FALSE(StateExists(stateKey_));
}

TEST_F(Removal, KeepsRecordingsAndTheUsersFilesAndNamesThem) {
    SetUpHandset();
    std::vector<std::wstring> users = {Device(L"\\My Documents\\My Music\\Kora One1.amr"),
                                       Device(L"\\Storage Card\\notes.txt"), Device(L"\\evening.WAV")};
    for (const std::wstring& path : users) WriteWholeFile(path, "mine");
    RemovalReport report = RemoveHandset(false);
    std::sort(users.begin(), users.end());
    std::sort(report.kept.begin(), report.kept.end());
    EXPECT_EQ(report.kept, users);
    for (const std::wstring& path : users) EXPECT_EQ(ReadWholeFile(path), "mine");
    EXPECT_FALSE(Exists(Device(L"\\Windows")));
}

TEST_F(Removal, TakesTheRecordingsTooWhenAsked) {
    SetUpHandset();
    WriteWholeFile(Device(L"\\My Documents\\My Music\\Kora One1.amr"), "mine");
    EXPECT_TRUE(RemoveHandset(true).kept.empty());
    EXPECT_FALSE(Exists(root_));
}

TEST_F(Removal, LeavesAFolderAloneThatHeldSomethingBefore) {
    CreateDirectoryW(root_.c_str(), nullptr);
    WriteWholeFile(Device(L"\\letter.txt"), "older than the handset");
    SetUpHandset();
    EXPECT_TRUE(RemoveHandset(true).rootLeft);
    EXPECT_EQ(ReadWholeFile(Device(L"\\letter.txt")), "older than the handset");
    EXPECT_FALSE(StateExists(stateKey_));
}

TEST_F(Removal, LeavesAFolderAloneThatHeldSomethingBeforeThoughAnotherOneWasTheHandsets) {
    SetUpHandset();
    const std::wstring own = root_;
    root_ = home_ + L"\\users";
    CreateDirectoryW(root_.c_str(), nullptr);
    WriteWholeFile(Device(L"\\letter.txt"), "older than the handset");
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", root_.c_str());
    SetUpHandset();
    EXPECT_TRUE(RemoveHandset(true).rootLeft);
    EXPECT_EQ(ReadWholeFile(Device(L"\\letter.txt")), "older than the handset");
}

TEST_F(Removal, AFolderThatWasMerelyNamedInTheEnvironmentIsLeftAlone) {
    SetUpHandset();
    const std::wstring own = root_;
    root_ = home_ + L"\\users";
    CreateDirectoryW(root_.c_str(), nullptr);
    WriteWholeFile(Device(L"\\letter.txt"), "somebody's");
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", root_.c_str());
    EXPECT_TRUE(RemoveHandset(true).rootLeft);
    EXPECT_EQ(ReadWholeFile(Device(L"\\letter.txt")), "somebody's");
}

TEST_F(Removal, AHandsetThatCameBackToItsOwnFolderTakesItAway) {
    SetUpHandset();
    const std::wstring own = root_;
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", (home_ + L"\\second").c_str());
    SetUpHandset();
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", (own + L"\\").c_str());
    SetUpHandset();
    EXPECT_FALSE(RemoveHandset(true).rootLeft);
    EXPECT_FALSE(Exists(own));
    EXPECT_TRUE(Exists(home_ + L"\\second\\Windows\\UI.exe"));
}

TEST_F(Removal, AnotherFolderOfTheSamePathIsNotTheOneThatWasTheHandsets) {
    SetUpHandset();
    std::filesystem::remove_all(root_);
    CreateDirectoryW(root_.c_str(), nullptr);
    WriteWholeFile(Device(L"\\letter.txt"), "somebody's");
    SetUpHandset();
    EXPECT_TRUE(RemoveHandset(true).rootLeft);
    EXPECT_EQ(ReadWholeFile(Device(L"\\letter.txt")), "somebody's");
}

TEST_F(Removal, TheFolderAroundADeviceRootOfTheUsersChoiceStays) {
    const std::wstring around = home_ + L"\\around";
    CreateDirectoryW(around.c_str(), nullptr);
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", (around + L"\\device").c_str());
    SetUpHandset();
    EXPECT_FALSE(RemoveHandset(true).rootLeft);
    EXPECT_TRUE(Exists(around));
    EXPECT_FALSE(Exists(around + L"\\device"));
}

TEST_F(Removal, AHandsetThatWasNeverSetUpIsRemovedWithoutComplaint) {
    EXPECT_EQ(RemoveHandset(false).fault, L"");
}

TEST_F(Removal, AnUnknownArgumentRemovesNothing) {
    SetUpHandset();
    EXPECT_EQ(Run({L"uninstall", L"everything"}), kBadUsage);
    EXPECT_TRUE(Exists(Device(L"\\Windows\\UI.exe")));
}

}  // namespace
}  // namespace panel
