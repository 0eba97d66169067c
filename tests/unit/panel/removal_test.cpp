// handset uninstall: what goes and what stays.
#include "handset/panel/removal.h"

#include <algorithm>

#include "handset/panel/encoding.h"
#include "handset/panel/install.h"
#include "tests/unit/panel/handset_fixture.h"

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
