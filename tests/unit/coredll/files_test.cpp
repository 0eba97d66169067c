// The device's file system: where its paths lie, the storage card, free space, folders.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>
#include <string>

#include "handset_fixture.h"

using Files = HandsetTest;
using StorageCard = HandsetTest;

namespace {

constexpr int kMyMusic = 13;  // CSIDL_MYMUSIC

bool Create(const wchar_t* path) {
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

std::set<std::wstring> Listing(const wchar_t* pattern) {
    std::set<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(pattern, &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        names.insert(found.cFileName);
    } while (FindNextFileW(search, &found));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_MORE_FILES));
    FindClose(search);
    return names;
}

}  // namespace

TEST_F(Files, ADevicePathLiesBelowTheRoot) {
    EXPECT_TRUE(Create(L"\\note.txt"));
    EXPECT_TRUE(HostFileExists(L"\\note.txt"));
}

TEST_F(Files, APathWithoutABackslashBeginsAtTheRoot) {
    EXPECT_TRUE(Create(L"note.txt"));
    EXPECT_TRUE(HostFileExists(L"\\note.txt"));
    EXPECT_NE(GetFileAttributesW(L"note.txt"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Files, NothingLeadsAboveTheRoot) {
    EXPECT_TRUE(Create(L"\\..\\folder\\..\\..\\.\\note.txt"));
    EXPECT_TRUE(HostFileExists(L"\\note.txt"));
}

TEST_F(Files, AnEmptyPathIsRefused) {
    EXPECT_EQ(GetFileAttributesW(L""), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(GetFileAttributesW(nullptr), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Files, WithoutARootThereIsNoFileSystem) {
    SetState(L"KORA_DEVICEROOT", nullptr);
    EXPECT_FALSE(Create(L"\\kora_must_not_exist.txt"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
}

TEST_F(Files, FoldersAndFilesAreMadeCopiedMovedAndDeleted) {
    EXPECT_TRUE(CreateDirectoryW(L"\\music", nullptr));
    EXPECT_EQ(GetFileAttributesW(L"\\music") & FILE_ATTRIBUTE_DIRECTORY,
              static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_TRUE(Create(L"\\music\\a.amr"));
    EXPECT_TRUE(CopyFileW(L"\\music\\a.amr", L"\\music\\b.amr", TRUE));
    EXPECT_FALSE(CopyFileW(L"\\music\\a.amr", L"\\music\\b.amr", TRUE));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_EXISTS));
    EXPECT_TRUE(MoveFileW(L"\\music\\b.amr", L"\\c.amr"));
    EXPECT_TRUE(HostFileExists(L"\\c.amr"));
    EXPECT_TRUE(SetFileAttributesW(L"\\c.amr", FILE_ATTRIBUTE_READONLY));
    EXPECT_NE(GetFileAttributesW(L"\\c.amr") & FILE_ATTRIBUTE_READONLY, 0u);
    EXPECT_TRUE(SetFileAttributesW(L"\\c.amr", FILE_ATTRIBUTE_NORMAL));
    EXPECT_TRUE(DeleteFileW(L"\\c.amr"));
    EXPECT_TRUE(DeleteFileW(L"\\music\\a.amr"));
    EXPECT_TRUE(RemoveDirectoryW(L"\\music"));
    EXPECT_FALSE(DeleteFileW(L"\\c.amr"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(Files, AListingHasNoDots) {
    CreateDirectoryW(L"\\music", nullptr);
    Create(L"\\music\\a.amr");
    Create(L"\\music\\b.wav");
    EXPECT_EQ(Listing(L"\\music\\*"), (std::set<std::wstring>{L"a.amr", L"b.wav"}));
    EXPECT_EQ(Listing(L"\\music\\*.wav"), std::set<std::wstring>{L"b.wav"});
}

TEST_F(Files, AnEmptyFolderHasNoMoreFiles) {
    CreateDirectoryW(L"\\music", nullptr);
    WIN32_FIND_DATAW found;
    EXPECT_EQ(FindFirstFileW(L"\\music\\*", &found), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_MORE_FILES));
}

TEST_F(Files, TheTemporaryFolderIsThere) {
    wchar_t path[MAX_PATH];
    EXPECT_EQ(GetTempPathW(MAX_PATH, path), 6u);
    EXPECT_STREQ(path, L"\\Temp\\");
    wchar_t name[MAX_PATH];
    ASSERT_NE(GetTempFileNameW(path, L"fm", 0, name), 0u);
    EXPECT_EQ(std::wstring(name).rfind(L"\\Temp\\fm", 0), 0u) << name;
    EXPECT_TRUE(HostFileExists(name));
    EXPECT_EQ(GetTempPathW(3, path), 7u);
}

TEST_F(Files, TheMusicFolderIsMadeWhenItIsAskedFor) {
    wchar_t path[MAX_PATH] = L"";
    EXPECT_TRUE(SHGetSpecialFolderPath(nullptr, path, kMyMusic, FALSE));
    EXPECT_STREQ(path, L"\\My Documents\\My Music");
    EXPECT_FALSE(HostFileExists(path));
    EXPECT_TRUE(SHGetSpecialFolderPath(nullptr, path, kMyMusic, TRUE));
    EXPECT_TRUE(HostFileExists(path));
    EXPECT_TRUE(SHGetSpecialFolderPath(nullptr, path, kMyMusic, TRUE));
    EXPECT_FALSE(SHGetSpecialFolderPath(nullptr, path, 0x3FFF, FALSE));
}

TEST_F(StorageCard, IsAMountedFolderWhileItIsIn) {
    CreateDirectoryW(OnHost(L"\\Storage Card").c_str(), nullptr);
    EXPECT_EQ(GetFileAttributesW(L"\\Storage Card"),
              static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_TEMPORARY));
    EXPECT_TRUE(Create(L"\\Storage Card\\a.amr"));
    EXPECT_EQ(GetFileAttributesW(L"\\Storage Card\\a.amr") & FILE_ATTRIBUTE_TEMPORARY, 0u);
    EXPECT_EQ(Listing(L"\\*").count(L"Storage Card"), 1u);
}

TEST_F(StorageCard, IsGoneWithEverythingOnItOnceItIsPulled) {
    CreateDirectoryW(OnHost(L"\\Storage Card").c_str(), nullptr);
    MakeFile(L"\\Storage Card\\a.amr");
    MakeFile(L"\\other.txt");
    SetState(L"KORA_STORAGECARD", L"0");
    for (const wchar_t* path : {L"\\Storage Card", L"\\STORAGE CARD\\a.amr", L"Storage Card\\a.amr",
                                L"\\Windows\\..\\Storage Card"}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetFileAttributesW(path), INVALID_FILE_ATTRIBUTES) << path;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
    }
    EXPECT_FALSE(Create(L"\\Storage Card\\b.amr"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
    EXPECT_FALSE(DeleteFileW(L"\\Storage Card\\a.amr"));
    EXPECT_FALSE(CopyFileW(L"\\other.txt", L"\\Storage Card\\c.txt", FALSE));
    EXPECT_EQ(Listing(L"\\*"), std::set<std::wstring>{L"other.txt"});
    SetState(L"KORA_STORAGECARD", L"1");
    EXPECT_NE(GetFileAttributesW(L"\\Storage Card\\a.amr"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(StorageCard, AFolderWhoseNameOnlyBeginsLikeTheCardsStays) {
    CreateDirectoryW(L"\\Storage Cards", nullptr);
    SetState(L"KORA_STORAGECARD", L"0");
    EXPECT_NE(GetFileAttributesW(L"\\Storage Cards"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(StorageCard, FreeSpaceComesFromTheState) {
    CreateDirectoryW(OnHost(L"\\Storage Card").c_str(), nullptr);
    SetState(L"KORA_OBJECTSTOREFREE", L"999999");
    SetState(L"KORA_STORAGECARDFREE", L"5000000000");
    ULARGE_INTEGER caller{};
    ULARGE_INTEGER total{};
    ULARGE_INTEGER free{};
    ASSERT_TRUE(GetDiskFreeSpaceExW(L"\\", &caller, &total, &free));
    EXPECT_EQ(free.QuadPart, 999999u);
    EXPECT_EQ(caller.QuadPart, 999999u);
    ASSERT_TRUE(GetDiskFreeSpaceExW(L"\\Storage Card", nullptr, &total, &free));
    EXPECT_EQ(free.QuadPart, 5000000000u);
    EXPECT_GE(total.QuadPart, free.QuadPart);
    ASSERT_TRUE(GetDiskFreeSpaceExW(nullptr, nullptr, nullptr, &free));
    EXPECT_EQ(free.QuadPart, 999999u);
}

TEST_F(StorageCard, FreeSpaceIsTheHostsWithoutTheState) {
    const auto ofTheHost = reinterpret_cast<decltype(&GetDiskFreeSpaceExW)>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"kernel32.dll"), "GetDiskFreeSpaceExW")));
    ULARGE_INTEGER free{}, hosts{};
    ASSERT_TRUE(GetDiskFreeSpaceExW(L"\\", nullptr, nullptr, &free));
    ASSERT_TRUE(ofTheHost(OnHost(L"\\").c_str(), nullptr, nullptr, &hosts));
    // Others write to that disk meanwhile.
    EXPECT_NEAR(static_cast<double>(free.QuadPart), static_cast<double>(hosts.QuadPart), 1e9);
}

TEST_F(StorageCard, APulledCardHasNoSpace) {
    CreateDirectoryW(OnHost(L"\\Storage Card").c_str(), nullptr);
    SetState(L"KORA_STORAGECARD", L"0");
    ULARGE_INTEGER free{};
    EXPECT_FALSE(GetDiskFreeSpaceExW(L"\\Storage Card", nullptr, nullptr, &free));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
}
