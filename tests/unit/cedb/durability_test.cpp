// A writer is killed at random moments; every change whose call had returned is there afterwards.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <map>
#include <random>
#include <sstream>

#include "handset/state/process_start.h"
#include "tests/support/wait.h"
#include "tests/unit/cedb/database_fixture.h"

namespace {

constexpr DWORD kDeadline_ms = 60000;

struct Process {
    HANDLE handle = nullptr;
    ~Process() {
        if (handle != nullptr) CloseHandle(handle);
    }
    Process() = default;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
};

using Records = std::map<CEOID, std::string>;

class DurabilityTest : public DatabaseTest {
  protected:
    void Start(Process& process, const std::wstring& journal, unsigned seed, const std::wstring& more = L"") {
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        std::wstring program = path;
        program = program.substr(0, program.find_last_of(L'\\')) + L"\\cedb_writer.exe";
        std::wstring line = L"\"" + program + L"\" \"" + journal + L"\" " + std::to_wstring(seed) + more;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION info{};
        ASSERT_TRUE(handset::StartProcess(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                          nullptr, &startup, &info));
        CloseHandle(info.hThread);
        process.handle = info.hProcess;
    }

    // Every record, and each of the sort orders must show the same ones.
    Records ReadVolume() {
        CEGUID volume = Mount();
        Records records;
        CEOID oid = 0;
        SORTORDERSPECEX orders[] = {SortBy(kName, 0), SortBy(kValue, 0)};
        for (SORTORDERSPECEX* order : {static_cast<SORTORDERSPECEX*>(nullptr), &orders[0], &orders[1]}) {
            const HANDLE database =
                CeOpenDatabaseEx2(&volume, &oid, Mutable(L"FileDB"), order, CEDB_AUTOINCREMENT, nullptr);
            // Killed before it had made the database; that can only be while nothing was ever written.
            if (database == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND && !made_) break;
            made_ = database != INVALID_HANDLE_VALUE;
            if (!made_) {
                ADD_FAILURE() << "the database does not open: " << GetLastError();
                break;
            }
            Records seen;
            ReadBack record = Read(database);
            for (; record.oid != 0; record = Read(database)) {
                EXPECT_EQ(record.value, record.name.size());
                seen[record.oid] = std::string(record.name.begin(), record.name.end());
            }
            EXPECT_EQ(record.error, static_cast<DWORD>(ERROR_NO_MORE_ITEMS));
            if (order == nullptr) records = seen;
            EXPECT_EQ(seen, records);
            Close(database);
        }
        Unmount(volume);
        return records;
    }

    bool made_ = false;  // the database was there at some time

    struct Journal {
        int done = 0;
        std::string pending;  // begun, and no word of its end
    };

    // Applies the completed changes to `expected`.
    static Journal Replay(const std::string& text, Records* expected) {
        Journal journal;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string verb;
            words >> verb;
            if (verb != "done") {
                journal.pending = line;
                continue;
            }
            CEOID oid = 0;
            words >> oid;
            Apply(journal.pending, oid, expected);
            journal.pending.clear();
            ++journal.done;
        }
        return journal;
    }

    static unsigned LinesIn(const std::string& text) {
        return static_cast<unsigned>(std::count(text.begin(), text.end(), '\n'));
    }

    static void Apply(const std::string& change, CEOID oid, Records* records) {
        std::istringstream words(change);
        std::string verb, text;
        words >> verb;
        if (verb != "insert") words >> oid;
        if (verb == "delete") {
            records->erase(oid);
        } else {
            words >> text;
            (*records)[oid] = text;
        }
    }

    // The volume holds what was expected, with or without the change that was cut short.
    static bool IsAccountedFor(const Records& found, const Records& expected, const std::string& pending) {
        if (found == expected) return true;
        if (pending.empty()) return false;
        Records with = expected;
        const CEOID newest = found.empty() ? 0 : found.rbegin()->first;
        if (pending.rfind("insert", 0) == 0 && expected.count(newest) != 0) return false;
        Apply(pending, newest, &with);
        return found == with;
    }
};

}  // namespace

TEST_F(DurabilityTest, AKilledWriterLosesNoCompletedChangeAndTheVolumeOpens) {
    const char* wanted = std::getenv("KORA_KILLS");
    const int kills = wanted == nullptr ? 40 : std::atoi(wanted);
    const auto seed =
        static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count() & 0xFFFFFF);
    std::printf("seed %u, %d kills\n", seed, kills);
    std::mt19937 random(seed);
    Records records;
    int changes = 0;
    int cutShort = 0;
    for (int kill = 0; kill < kills; ++kill) {
        const std::wstring file = HostFile(L"journal.txt");
        Process writer;
        Start(writer, file, random());
        // The moment of the kill is chance; three times in four after some lines of the writer's, since a
        // busy machine takes its time for each change.
        const bool atWork = kill % 4 != 0;
        const unsigned lines = 1 + random() % 10;
        ASSERT_TRUE(!atWork || test::WaitFor([&] { return LinesIn(Contents(file)) >= lines; }));
        const DWORD ended = WaitForSingleObject(writer.handle, (atWork ? 0 : 60) + random() % 240);
        ASSERT_EQ(ended, static_cast<DWORD>(WAIT_TIMEOUT)) << "the writer stopped by itself";
        ASSERT_TRUE(TerminateProcess(writer.handle, 99));
        ASSERT_EQ(WaitForSingleObject(writer.handle, kDeadline_ms), static_cast<DWORD>(WAIT_OBJECT_0));
        const Journal journal = Replay(Contents(file), &records);
        changes += journal.done;
        cutShort += journal.pending.empty() ? 0 : 1;
        const Records found = ReadVolume();
        ASSERT_TRUE(IsAccountedFor(found, records, journal.pending))
            << "kill " << kill << ": " << found.size() << " found, " << records.size()
            << " expected, pending " << journal.pending.substr(0, 60);
        records = found;
        DeleteFileW(file.c_str());
    }
    std::printf("%d completed changes, %d cut short\n", changes, cutShort);
    EXPECT_GT(changes, kills);
    EXPECT_GT(cutShort, 0);
}

TEST_F(DurabilityTest, SeveralProcessesWriteToOneVolumeAtOnceAndNothingIsLost) {
    constexpr unsigned kWriters = 3;
    Process writers[kWriters];
    for (unsigned i = 0; i < kWriters; ++i) {
        Start(writers[i], HostFile(L"journal" + std::to_wstring(i)), i + 1, L" 30");
    }
    Records expected;
    for (unsigned i = 0; i < kWriters; ++i) {
        ASSERT_EQ(WaitForSingleObject(writers[i].handle, kDeadline_ms), static_cast<DWORD>(WAIT_OBJECT_0));
        DWORD code = 99;
        GetExitCodeProcess(writers[i].handle, &code);
        EXPECT_EQ(code, 0U);
        EXPECT_EQ(Replay(Contents(HostFile(L"journal" + std::to_wstring(i))), &expected).done, 30);
    }
    EXPECT_EQ(ReadVolume(), expected);
}

TEST_F(DurabilityTest, AVolumeThatAnotherProcessHasMountedIsNotReplaced) {
    Process holder;
    const std::wstring file = HostFile(L"journal");
    Start(holder, file, 1, L" 0");
    const ULONGLONG deadline = GetTickCount64() + kDeadline_ms;
    while (Contents(file) != "mounted\n" && GetTickCount64() < deadline) Sleep(10);
    CEGUID volume{};
    for (const DWORD flags : {CREATE_ALWAYS, TRUNCATE_EXISTING}) {
        SetLastError(0);
        EXPECT_FALSE(CeMountDBVol(&volume, Mutable(kVolume), flags));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    }
    volume = Mount();
    Unmount(volume);
    TerminateProcess(holder.handle, 99);
    WaitForSingleObject(holder.handle, kDeadline_ms);
    volume = Mount(CREATE_ALWAYS);
    Unmount(volume);
}
