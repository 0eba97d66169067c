// cedb_writer JOURNAL SEED [COUNT]: changes the volume KORA.vol until it is killed, or COUNT times. What it
// is about to do goes into JOURNAL as a line before each change, and its result as a line after it:
//   insert TEXT / update OID TEXT / delete OID / done OID
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "handset/include/cedb.h"

extern "C" BOOL CedbCloseHandle(HANDLE handle);

namespace {

constexpr CEPROPID kText = 0x0066001F;
constexpr CEPROPID kLength = 0x00670013;
wchar_t g_volumeName[] = L"KORA.vol";
wchar_t g_databaseName[] = L"FileDB";

CEDBASEINFOEX Info() {
    CEDBASEINFOEX info{};
    info.wVersion = CEDBASEINFOEX_VERSION;
    info.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC;
    wcscpy(info.szDbaseName, g_databaseName);
    info.wNumSortOrder = 2;
    const CEPROPID ids[] = {kText, kLength};
    for (int i = 0; i < 2; ++i) {
        info.rgSortSpecs[i].wVersion = SORTORDERSPECEX_VERSION;
        info.rgSortSpecs[i].wNumProps = 1;
        info.rgSortSpecs[i].rgPropID[0] = ids[i];
    }
    return info;
}

class Writer {
  public:
    Writer(HANDLE journal, unsigned seed) : journal_(journal), random_(seed) {}

    bool Run(long count) {
        for (long i = 0; count < 0 || i < count; ++i) {
            // As the application does it: mount, open, one change, close, unmount.
            if (!Open() || !Change()) return false;
            CedbCloseHandle(database_);
            CeUnmountDBVol(&volume_);
        }
        return true;
    }

    bool Hold() {
        if (!Open()) return false;
        Note("mounted");
        Sleep(INFINITE);
        return true;
    }

  private:
    void Note(const std::string& line) {
        const std::string bytes = line + "\n";
        DWORD written = 0;
        WriteFile(journal_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }

    bool Open() {
        if (!CeMountDBVol(&volume_, g_volumeName, OPEN_ALWAYS | EDB_MOUNT_FLAG)) return false;
        CEDBASEINFOEX info = Info();
        CEOID oid = CeCreateDatabaseEx2(&volume_, &info);
        if (oid == 0 && GetLastError() != ERROR_DUP_NAME) return false;
        database_ = CeOpenDatabaseEx2(&volume_, &oid, g_databaseName, nullptr, CEDB_AUTOINCREMENT, nullptr);
        return database_ != INVALID_HANDLE_VALUE;
    }

    CEOID Write(CEOID oid, const std::string& text) {
        std::wstring wide(text.begin(), text.end());
        CEPROPVAL values[2]{};
        values[0].propid = kText;
        values[0].val.lpwstr = wide.data();
        values[1].propid = kLength;
        values[1].val.ulVal = static_cast<ULONG>(text.size());
        return CeWriteRecordProps(database_, oid, 2, values);
    }

    bool Change() {
        const unsigned what = own_.size() < 5 ? 0 : random_() % 4;
        const std::string text(1 + random_() % 300, static_cast<char>('a' + random_() % 26));
        CEOID oid = 0;
        if (what < 2) {
            Note("insert " + text);
            oid = Write(0, text);
            if (oid != 0) own_.push_back(oid);
        } else {
            const std::size_t at = random_() % own_.size();
            oid = own_[at];
            if (what == 2) {
                Note("update " + std::to_string(oid) + " " + text);
                oid = Write(oid, text);
            } else {
                Note("delete " + std::to_string(oid));
                if (!CeDeleteRecord(database_, oid)) oid = 0;
                own_.erase(own_.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
        if (oid == 0) return false;
        Note("done " + std::to_string(oid));
        return true;
    }

    HANDLE journal_;
    std::mt19937 random_;
    CEGUID volume_{};
    HANDLE database_ = INVALID_HANDLE_VALUE;
    std::vector<CEOID> own_;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count < 3) return 2;
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
    const HANDLE journal = CreateFileW(arguments[1], GENERIC_WRITE, share, nullptr, CREATE_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    if (journal == INVALID_HANDLE_VALUE) return 3;
    Writer writer(journal, static_cast<unsigned>(wcstoul(arguments[2], nullptr, 10)));
    const long changes = count > 3 ? wcstol(arguments[3], nullptr, 10) : -1;
    if (changes == 0 ? writer.Hold() : writer.Run(changes)) return 0;
    fprintf(stderr, "cedb_writer: error %lu\n", GetLastError());
    return 1;
}
