// Test fixture of the database calls.
#include "tests/unit/cedb/database_fixture.h"

#include <cstdio>

namespace {

void DeleteFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW((folder + L"\\*").c_str(), &data);
    if (find == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring path = folder + L"\\" + data.cFileName;
        const bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (!isFolder) DeleteFileW(path.c_str());
        if (isFolder && data.cFileName[0] != L'.') DeleteFolder(path);
    } while (FindNextFileW(find, &data));
    FindClose(find);
    RemoveDirectoryW(folder.c_str());
}

}  // namespace

CEPROPVAL Text(CEPROPID id, const wchar_t* text) {
    CEPROPVAL value{};
    value.propid = id;
    value.val.lpwstr = Mutable(text);
    return value;
}

CEPROPVAL Number(CEPROPID id, DWORD number) {
    CEPROPVAL value{};
    value.propid = id;
    value.val.ulVal = number;
    return value;
}

SORTORDERSPECEX SortBy(CEPROPID id, DWORD flags) {
    SORTORDERSPECEX sort{};
    sort.wVersion = SORTORDERSPECEX_VERSION;
    sort.wNumProps = 1;
    sort.rgPropID[0] = id;
    sort.rgdwFlags[0] = flags;
    return sort;
}

CEDBASEINFOEX ChannelInfo(const wchar_t* name) {
    CEDBASEINFOEX info{};
    info.wVersion = CEDBASEINFOEX_VERSION;
    info.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC | CEDB_VALIDDBFLAGS;
    wcscpy(info.szDbaseName, name);
    info.wNumSortOrder = 4;
    const CEPROPID ids[] = {kGroup, kName, kValue, kGuide};
    for (int i = 0; i < 4; ++i) info.rgSortSpecs[i] = SortBy(ids[i]);
    return info;
}

void DatabaseTest::SetUp() {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    static int count = 0;
    root_ = std::wstring(folder) + L"kora-cedb-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
            std::to_wstring(++count);
    // A run that was broken off may have left one of the same number.
    DeleteFolder(root_);
    ASSERT_TRUE(CreateDirectoryW(root_.c_str(), nullptr));
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", root_.c_str());
    SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
    SetEnvironmentVariableW(L"KORA_OBJECTSTOREFREE", nullptr);
}

void DatabaseTest::TearDown() {
    DeleteFolder(root_);
}

std::string DatabaseTest::Contents(const std::wstring& path) {
    std::string contents;
    FILE* file = _wfopen(path.c_str(), L"rb");
    if (file == nullptr) return "(no file)";
    char block[4096];
    for (std::size_t size; (size = fread(block, 1, sizeof block, file)) != 0;) contents.append(block, size);
    fclose(file);
    return contents;
}

void DatabaseTest::SetContents(const std::wstring& path, const std::string& contents) {
    FILE* file = _wfopen(path.c_str(), L"wb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(fwrite(contents.data(), 1, contents.size(), file), contents.size());
    fclose(file);
}

CEGUID DatabaseTest::Mount(DWORD flags, const wchar_t* name) {
    CEGUID volume{};
    SetLastError(0);
    EXPECT_TRUE(CeMountDBVol(&volume, Mutable(name), flags)) << GetLastError();
    EXPECT_FALSE(CHECK_INVALIDGUID(&volume));
    return volume;
}

void DatabaseTest::Unmount(CEGUID& volume) {
    EXPECT_TRUE(CeUnmountDBVol(&volume));
}

HANDLE DatabaseTest::Open(CEGUID& volume, CEPROPID sortedBy, DWORD flags) {
    CEDBASEINFOEX info = ChannelInfo();
    if (CeCreateDatabaseWithProps(&volume, &info, 0, nullptr) == 0) {
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DUP_NAME));
    }
    SORTORDERSPECEX sort = SortBy(sortedBy);
    CEOID oid = 0;
    const HANDLE database =
        CeOpenDatabaseEx2(&volume, &oid, info.szDbaseName, sortedBy == 0 ? nullptr : &sort, flags, nullptr);
    EXPECT_NE(database, INVALID_HANDLE_VALUE) << GetLastError();
    return database;
}

HANDLE DatabaseTest::OpenOrder(CEGUID& volume, const CEDBASEINFOEX& info, DWORD flags) {
    CEDBASEINFOEX copy = info;
    CEOID oid = CeCreateDatabaseEx2(&volume, &copy);
    EXPECT_NE(oid, 0U) << GetLastError();
    const HANDLE database = CeOpenDatabaseEx2(&volume, &oid, nullptr, &copy.rgSortSpecs[0], flags, nullptr);
    EXPECT_NE(database, INVALID_HANDLE_VALUE) << GetLastError();
    return database;
}

CEOID DatabaseTest::Insert(HANDLE database, const wchar_t* name, DWORD value) {
    CEPROPVAL values[] = {Text(kGroup, L"g"), Text(kName, name), Number(kValue, value), Text(kGuide, L"")};
    const CEOID oid = CeWriteRecordProps(database, 0, 4, values);
    EXPECT_NE(oid, 0U) << GetLastError();
    return oid;
}

ReadBack DatabaseTest::Read(HANDLE database) {
    ReadBack result;
    BYTE* buffer = nullptr;
    DWORD size = 0;
    SetLastError(0);
    result.oid =
        CeReadRecordPropsEx(database, CEDB_ALLOWREALLOC, &result.count, nullptr, &buffer, &size, nullptr);
    result.error = GetLastError();
    const auto* values = reinterpret_cast<const CEPROPVAL*>(buffer);
    for (WORD i = 0; result.oid != 0 && i < result.count; ++i) {
        if (values[i].propid == kName) result.name = values[i].val.lpwstr;
        if (values[i].propid == kValue) result.value = values[i].val.ulVal;
    }
    LocalFree(buffer);
    return result;
}

std::vector<std::wstring> DatabaseTest::Names(HANDLE database) {
    std::vector<std::wstring> names;
    CeSeekDatabase(database, CEDB_SEEK_BEGINNING, 0, nullptr);
    for (ReadBack record = Read(database); record.oid != 0; record = Read(database))
        names.push_back(record.name);
    return names;
}
