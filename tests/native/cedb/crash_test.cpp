// A process ends at each single write, truncation and deletion that the changes of a volume take, before it,
// amid it and after it; the volume then holds every completed change, and at most the one in progress.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "handset/coredll/cedb/engine/cursor.h"
#include "tests/native/cedb/volume_file.h"

using namespace cedb;

namespace {

constexpr PropertyId kName = Id(0x66, kTypeText);
constexpr PropertyId kValue = Id(0x67, kTypeUInt32);
constexpr int kCrashed = 99;
constexpr int kFailed = 98;
const PlainCollator kCollator;

// Where in the call the process ends.
enum class End { Before, Amid, After };

// SQLite's calls of the operating system, counted down to the one at which the process ends.
long g_callsLeft = 0;
End g_end = End::Before;

template <typename Result, typename Call, typename Part>
Result Counted(Call whole, Part part) {
    if (--g_callsLeft != 0) return whole();
    if (g_end == End::Amid) part();
    if (g_end == End::After) (void)whole();
    _exit(kCrashed);
}

ssize_t Write(int file, const void* data, size_t size) {
    return Counted<ssize_t>([&] { return write(file, data, size); },
                            [&] { (void)!write(file, data, size / 2); });
}
int Ftruncate(int file, off_t size) {
    return Counted<int>([&] { return ftruncate(file, size); }, [] {});
}
int Unlink(const char* path) {
    return Counted<int>([&] { return unlink(path); }, [] {});
}

template <typename Call>
void Replace(const char* name, Call call) {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    (void)vfs->xSetSystemCall(vfs, name, reinterpret_cast<sqlite3_syscall_ptr>(call));
}

void EndAtCall(long call, End end) {
    sqlite3_initialize();
    g_callsLeft = call;
    g_end = end;
    Replace("write", Write);
    Replace("ftruncate", Ftruncate);
    Replace("unlink", Unlink);
}

DatabaseInfo Database() {
    DatabaseInfo info;
    info.oid = 1;
    info.name = u"FileDB";
    info.orders = {SortOrder{false, {{kName, 0}}}, SortOrder{true, {{kValue, kSortDescending}}}};
    return info;
}

std::vector<PropertyChange> Values(unsigned number) {
    // Long ones, so that a change takes pages of its own.
    return {Set(kName, std::u16string(100 + number * 20, static_cast<char16_t>(u'a' + number % 26))),
            Set(kValue, number)};
}

using Change = std::function<Status(CVolume&)>;

std::vector<Change> Changes() {
    const auto insert = [](unsigned number) {
        return [number](CVolume& volume) {
            Oid oid = 0;
            return volume.InsertRecord(Database(), Values(number), &oid);
        };
    };
    return {insert(50),
            [](CVolume& volume) { return volume.UpdateRecord(Database(), 5, Values(60)); },
            [](CVolume& volume) { return volume.DeleteRecord(Database(), 7); },
            insert(70),
            [](CVolume& volume) { return volume.ChangeLocale(3); },
            [](CVolume& volume) {
                DatabaseInfo other = Database();
                other.name = u"FileIndexDB";
                Oid oid = 0;
                return volume.CreateDatabase(other, &oid);
            },
            [](CVolume& volume) { return volume.DeleteDatabase(1); }};
}

void Fill(const std::string& path) {
    ASSERT_EQ(CVolume::Create(path, 2, kCollator), Status::Ok);
    CVolume volume(kCollator);
    ASSERT_EQ(volume.Open(path), Status::Ok);
    Oid oid = 0;
    ASSERT_EQ(volume.CreateDatabase(Database(), &oid), Status::Ok);
    for (unsigned i = 0; i < 20; ++i) {
        ASSERT_EQ(volume.InsertRecord(Database(), Values(i), &oid), Status::Ok);
    }
    volume.Settle();
}

// Everything in the volume, in each of the orders, as one text.
std::string Dump(const std::string& path) {
    CVolume volume(kCollator);
    Status status = volume.Open(path);
    if (status != Status::Ok) return "cannot be opened: " + std::to_string(static_cast<int>(status));
    std::uint32_t lcid = 0;
    EXPECT_EQ(volume.Locale(&lcid), Status::Ok);
    std::string out = "lcid " + std::to_string(lcid);
    std::vector<DatabaseInfo> databases;
    EXPECT_EQ(volume.ListDatabases(&databases), Status::Ok);
    for (const DatabaseInfo& info : databases) {
        out += "; database " + std::to_string(info.oid) + EncodeOrders(info.orders);
        for (std::size_t sort = 0; sort < info.orders.size(); ++sort) {
            CCursor cursor(volume, info, sort, true);
            Oid oid = 0;
            Record record;
            while ((status = cursor.Look(&oid, &record)) == Status::Ok) {
                out += "; " + std::to_string(oid) + EncodeRecord(record);
                cursor.HasBeenRead();
            }
            EXPECT_EQ(status, Status::EndOfData);
        }
    }
    return out;
}

// Makes the changes in a process of their own; one byte comes through the pipe for each that has returned.
// Gives the process's exit code.
int RunChild(const std::string& path, long call, End end, std::size_t* completed) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        EndAtCall(call, end);
        {
            CVolume volume(kCollator);
            if (volume.Open(path) != Status::Ok) _exit(kFailed);
            for (const Change& change : Changes()) {
                if (change(volume) != Status::Ok) _exit(kFailed);
                (void)!write(ends[1], "x", 1);
            }
            volume.Settle();
        }
        _exit(0);
    }
    close(ends[1]);
    char byte = 0;
    for (*completed = 0; read(ends[0], &byte, 1) == 1;) ++*completed;
    close(ends[0]);
    int code = 0;
    EXPECT_EQ(waitpid(child, &code, 0), child);
    return WIFEXITED(code) ? WEXITSTATUS(code) : -1;
}

}  // namespace

TEST(Crash, AtWhateverCallTheProcessEndsTheVolumeHoldsEveryCompletedChange) {
    const VolumeFile file;
    Fill(file.Path());
    const std::string filled = file.Contents();
    std::vector<std::string> states{Dump(file.Path())};
    {
        CVolume volume(kCollator);
        ASSERT_EQ(volume.Open(file.Path()), Status::Ok);
        for (const Change& change : Changes()) {
            ASSERT_EQ(change(volume), Status::Ok);
            states.push_back(Dump(file.Path()));
        }
        volume.Settle();
    }
    states.push_back(states.back());
    int crashes = 0;
    int undone = 0;
    for (const End end : {End::Before, End::Amid, End::After}) {
        for (long call = 1;; ++call) {
            ASSERT_LT(call, 2000);
            std::remove((file.Path() + "-journal").c_str());
            file.SetContents(filled);
            std::size_t completed = 0;
            const int code = RunChild(file.Path(), call, end, &completed);
            if (code == 0) break;
            ASSERT_EQ(code, kCrashed) << "call " << call;
            ++crashes;
            const std::string found = Dump(file.Path());
            const bool without = found == states[completed];
            undone += without ? 1 : 0;
            ASSERT_TRUE(without || found == states[completed + 1])
                << "ended at call " << call << " after " << completed << " changes: " << found.substr(0, 60);
        }
    }
    std::printf("%d ends, %d of them before the change counted\n", crashes, undone);
    EXPECT_GT(crashes, 100);
    EXPECT_GT(undone, 50);
    EXPECT_LT(undone, crashes);
}
