// The database calls beside the same work on SQLite itself: one table with the same four columns and indices,
// each statement its own transaction, flushed to the disk in the same way. Prints the medians, one row
// a line, the columns parted by tabs. bench_cedb [FOLDER]: the folder for both files; the temporary one
// otherwise.
#include <sqlite3.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "handset/include/cedb.h"

extern "C" BOOL CedbCloseHandle(HANDLE handle);

namespace {

constexpr int kSamples = 100;
constexpr CEPROPID kIds[] = {0x0065001F, 0x0066001F, 0x00670013, 0x0068001F};
wchar_t g_volumeName[] = L"\\bench.vol";
wchar_t g_databaseName[] = L"FileDB";

[[noreturn]] void Stop(const char* what) {
    fprintf(stderr, "bench_cedb: %s failed, error %lu\n", what, GetLastError());
    exit(1);
}

struct Channel {
    std::wstring group, name, guide;
    DWORD value;
};

Channel MakeChannel(int number) {
    // A spread over the sort order, so that the inserts do not all go to its end.
    const auto mixed = static_cast<unsigned>(number) * 2654435761U;
    return {L"Group " + std::to_wstring(mixed % 7), L"Station " + std::to_wstring(mixed), L"Music and news",
            8750 + mixed % 2050};
}

double Median(std::vector<double> times) {
    std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
    return times[times.size() / 2];
}

double Took_us(const std::function<void(int)>& work, int sample) {
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    work(sample);
    QueryPerformanceCounter(&end);
    return 1e6 * static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart);
}

class DeviceDatabase {
  public:
    DeviceDatabase() {
        if (!CeMountDBVol(&volume_, g_volumeName, CREATE_ALWAYS)) Stop("CeMountDBVol");
        CEDBASEINFOEX info{};
        info.wVersion = CEDBASEINFOEX_VERSION;
        info.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC;
        wcscpy(info.szDbaseName, g_databaseName);
        info.wNumSortOrder = 4;
        for (int i = 0; i < 4; ++i) info.rgSortSpecs[i] = {SORTORDERSPECEX_VERSION, 1, 0, 0, {kIds[i]}, {4}};
        CEOID oid = CeCreateDatabaseEx2(&volume_, &info);
        database_ =
            CeOpenDatabaseEx2(&volume_, &oid, nullptr, &info.rgSortSpecs[1], CEDB_AUTOINCREMENT, nullptr);
        if (database_ == INVALID_HANDLE_VALUE) Stop("CeOpenDatabaseEx2");
    }
    ~DeviceDatabase() {
        CedbCloseHandle(database_);
        CeUnmountDBVol(&volume_);
    }
    DeviceDatabase(const DeviceDatabase&) = delete;
    DeviceDatabase& operator=(const DeviceDatabase&) = delete;

    void Write(CEOID oid, Channel channel) {
        CEPROPVAL values[4]{};
        for (int i = 0; i < 4; ++i) values[i].propid = kIds[i];
        values[0].val.lpwstr = channel.group.data();
        values[1].val.lpwstr = channel.name.data();
        values[2].val.ulVal = channel.value;
        values[3].val.lpwstr = channel.guide.data();
        const CEOID written = CeWriteRecordProps(database_, oid, 4, values);
        if (written == 0) Stop("CeWriteRecordProps");
        if (oid == 0) oids.push_back(written);
    }
    void Lookup(Channel channel) {
        CEPROPVAL name{};
        name.propid = kIds[1];
        name.val.lpwstr = channel.name.data();
        WORD count = 0;
        if (CeSeekDatabase(database_, CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&name),
                           nullptr) == 0 ||
            CeReadRecordPropsEx(database_, CEDB_ALLOWREALLOC, &count, nullptr, &buffer_, &size_, nullptr) ==
                0) {
            Stop("the lookup");
        }
    }
    void Delete(CEOID oid) {
        if (!CeDeleteRecord(database_, oid)) Stop("CeDeleteRecord");
    }

    std::vector<CEOID> oids;

  private:
    CEGUID volume_{};
    HANDLE database_ = INVALID_HANDLE_VALUE;
    BYTE* buffer_ = nullptr;
    DWORD size_ = 0;
};

class PlainSqlite {
  public:
    explicit PlainSqlite(const std::string& path) {
        if (sqlite3_open(path.c_str(), &database_) != SQLITE_OK) Stop("sqlite3_open");
        Execute(
            "PRAGMA journal_mode=TRUNCATE; PRAGMA synchronous=FULL;"
            "CREATE TABLE channels(oid INTEGER PRIMARY KEY AUTOINCREMENT, grp TEXT, name TEXT, value "
            "INTEGER, "
            "guide TEXT); CREATE INDEX i1 ON channels(grp); CREATE INDEX i2 ON channels(name);"
            "CREATE INDEX i3 ON channels(value); CREATE INDEX i4 ON channels(guide)");
        insert_ = Prepare("INSERT INTO channels(grp, name, value, guide) VALUES (?, ?, ?, ?)");
        update_ = Prepare("UPDATE channels SET grp=?, name=?, value=?, guide=? WHERE oid=?");
        lookup_ = Prepare("SELECT * FROM channels WHERE name=?");
        delete_ = Prepare("DELETE FROM channels WHERE oid=?");
    }
    ~PlainSqlite() {
        for (sqlite3_stmt* statement : {insert_, update_, lookup_, delete_}) sqlite3_finalize(statement);
        sqlite3_close(database_);
    }
    PlainSqlite(const PlainSqlite&) = delete;
    PlainSqlite& operator=(const PlainSqlite&) = delete;

    void Execute(const char* sql) {
        if (sqlite3_exec(database_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Stop(sql);
    }
    void Insert(const Channel& channel) { Step(Bind(insert_, channel)); }
    void Update(sqlite3_int64 oid, const Channel& channel) {
        Bind(update_, channel);
        sqlite3_bind_int64(update_, 5, oid);
        Step(update_);
    }
    void Lookup(const Channel& channel) {
        sqlite3_bind_text16(lookup_, 1, channel.name.c_str(), -1, SQLITE_STATIC);
        if (sqlite3_step(lookup_) != SQLITE_ROW) Stop("the lookup in SQLite");
        sqlite3_reset(lookup_);
    }
    void Delete(sqlite3_int64 oid) {
        sqlite3_bind_int64(delete_, 1, oid);
        Step(delete_);
    }

  private:
    sqlite3_stmt* Prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_, sql, -1, &statement, nullptr) != SQLITE_OK) Stop(sql);
        return statement;
    }
    static sqlite3_stmt* Bind(sqlite3_stmt* statement, const Channel& channel) {
        sqlite3_bind_text16(statement, 1, channel.group.c_str(), -1, SQLITE_STATIC);
        sqlite3_bind_text16(statement, 2, channel.name.c_str(), -1, SQLITE_STATIC);
        sqlite3_bind_int64(statement, 3, channel.value);
        sqlite3_bind_text16(statement, 4, channel.guide.c_str(), -1, SQLITE_STATIC);
        return statement;
    }
    static void Step(sqlite3_stmt* statement) {
        if (sqlite3_step(statement) != SQLITE_DONE) Stop("a statement of SQLite");
        sqlite3_reset(statement);
    }

    sqlite3* database_ = nullptr;
    sqlite3_stmt *insert_ = nullptr, *update_ = nullptr, *lookup_ = nullptr, *delete_ = nullptr;
};

// The median call of each, by turns, so that a machine with other work to do is the same for both.
void Compare(int records, const char* what, const std::function<void(int)>& device,
             const std::function<void(int)>& sqlite) {
    std::vector<double> ours, theirs;
    for (int sample = 0; sample < kSamples; ++sample) {
        ours.push_back(Took_us(device, sample));
        theirs.push_back(Took_us(sqlite, sample));
    }
    printf("%s, %d channels stored\t%f\tSQLite\t%f\t%s\n", what, records, Median(ours), Median(theirs),
           strcmp(what, "insert") == 0 ? "2 x" : "");
}

void Measure(int records, const std::string& sqlitePath) {
    DeviceDatabase device;
    PlainSqlite sqlite(sqlitePath);
    sqlite.Execute("BEGIN");
    for (int i = 0; i < records; ++i) {
        device.Write(0, MakeChannel(i));
        sqlite.Insert(MakeChannel(i));
    }
    sqlite.Execute("COMMIT");
    std::mt19937 random(1);
    std::vector<int> picks;
    for (int i = 0; i < records; ++i) picks.push_back(i);
    std::shuffle(picks.begin(), picks.end(), random);
    const auto pick = [&](int i) { return picks[static_cast<std::size_t>(i) % picks.size()]; };
    const auto oid = [&](int i) { return device.oids[static_cast<std::size_t>(pick(i))]; };
    Compare(
        records, "insert", [&](int i) { device.Write(0, MakeChannel(records + i)); },
        [&](int i) { sqlite.Insert(MakeChannel(records + i)); });
    Compare(
        records, "lookup", [&](int i) { device.Lookup(MakeChannel(pick(i))); },
        [&](int i) { sqlite.Lookup(MakeChannel(pick(i))); });
    Compare(
        records, "update", [&](int i) { device.Write(oid(i), MakeChannel(2 * records + i)); },
        [&](int i) { sqlite.Update(pick(i) + 1, MakeChannel(2 * records + i)); });
    Compare(
        records, "delete", [&](int i) { device.Delete(oid(i)); }, [&](int i) { sqlite.Delete(pick(i) + 1); });
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    if (count > 1) wcscpy(folder, arguments[1]);
    SetEnvironmentVariableW(L"KORA_DEVICEROOT", folder);
    const std::wstring peer = std::wstring(folder) + L"\\bench-sqlite.db";
    for (const int records : {100, 1000, 10000}) {
        DeleteFileW(peer.c_str());
        Measure(records, std::string(peer.begin(), peer.end()));
        fflush(stdout);
    }
    DeleteFileW(peer.c_str());
    DeleteFileW((std::wstring(folder) + L"\\bench.vol").c_str());
    return 0;
}
