// A device root of its own for each test, and the database calls in a shorter form.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "handset/include/cedb.h"

extern "C" BOOL CedbCloseHandle(HANDLE handle);

constexpr CEPROPID kGroup = 0x0065001F;
constexpr CEPROPID kName = 0x0066001F;
constexpr CEPROPID kValue = 0x00670013;
constexpr CEPROPID kGuide = 0x0068001F;
constexpr wchar_t kVolume[] = L"KORA.vol";

inline LPWSTR Mutable(const wchar_t* text) {
    return const_cast<LPWSTR>(text);
}
inline LPWSTR Mutable(const std::wstring& text) {
    return const_cast<LPWSTR>(text.c_str());
}

CEPROPVAL Text(CEPROPID id, const wchar_t* text);
CEPROPVAL Number(CEPROPID id, DWORD number);
SORTORDERSPECEX SortBy(CEPROPID id, DWORD flags = CEDB_SORT_UNKNOWNFIRST);
// The four orders of a channel database.
CEDBASEINFOEX ChannelInfo(const wchar_t* name = L"FileDB");

// One record as CeReadRecordPropsEx gives it, all properties.
struct ReadBack {
    CEOID oid = 0;
    DWORD error = 0;
    std::wstring name;
    DWORD value = 0;
    WORD count = 0;
};

class DatabaseTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    std::wstring HostFile(const std::wstring& name = kVolume) const { return root_ + L"\\" + name; }
    static std::string Contents(const std::wstring& path);
    static void SetContents(const std::wstring& path, const std::string& contents);

    // Expect success.
    CEGUID Mount(DWORD flags = OPEN_ALWAYS | EDB_MOUNT_FLAG, const wchar_t* name = kVolume);
    void Unmount(CEGUID& volume);
    HANDLE Open(CEGUID& volume, CEPROPID sortedBy = 0, DWORD flags = CEDB_AUTOINCREMENT);
    HANDLE OpenOrder(CEGUID& volume, const CEDBASEINFOEX& info, DWORD flags = CEDB_AUTOINCREMENT);
    CEOID Insert(HANDLE database, const wchar_t* name, DWORD value);

    static ReadBack Read(HANDLE database);
    static std::vector<std::wstring> Names(HANDLE database);
    static void Close(HANDLE database) { EXPECT_TRUE(CedbCloseHandle(database)); }

    std::wstring root_;
};
