// The tables of docs/architecture.md against the sources: who may include whom, and which threads and locks
// there are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/native/docs/differences.h"
#include "tests/native/docs/markdown_table.h"
#include "tests/native/docs/room_map.h"
#include "tests/native/docs/threads_and_locks.h"

namespace {

using test::Complaints;
using test::In;
using test::kApplication;
using test::kRoot;
using test::Rooms;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// The application sees the device's headers under their bare names; the handset's own rooms do not.
const std::set<std::string> kPlatform = {"handset/include"};

std::vector<test::TableRow> Tables(const std::string& lastHeading) {
    return test::ReadTables(test::ReadSource(kRoot / "docs" / "architecture.md"), lastHeading);
}

Rooms RoomsOfTheSources() {
    Rooms rooms = test::RoomsOf(kRoot, kApplication, kPlatform);
    rooms.merge(test::RoomsOf(kRoot, {"handset"}, {}));
    return rooms;
}

// The first cell names the room, the last one those that it may include.
Rooms RoomsOfTheTable(const std::vector<test::TableRow>& rows) {
    Rooms rooms;
    for (const test::TableRow& row : rows) {
        const std::vector<std::string> name = test::Quoted(row.cells.front());
        const std::vector<std::string> arrows = test::Quoted(row.cells.back());
        if (!name.empty()) rooms[name.front()].insert(arrows.begin(), arrows.end());
    }
    return rooms;
}

// "from -> to" of every arrow that `those` have and `others` have not; a room that the others lack is named
// alone.
Complaints MoreIn(const Rooms& those, const Rooms& others) {
    Complaints more;
    for (const auto& [room, arrows] : those) {
        const auto other = others.find(room);
        if (other == others.end()) more.push_back(room);
        for (const std::string& to : arrows) {
            if (other == others.end() || other->second.count(to) == 0) more.push_back(room + " -> " + to);
        }
    }
    return more;
}

TEST(RoomMap, EveryRoomIncludesWhatItsRowNamesAndNothingElse) {
    const Rooms sources = RoomsOfTheSources(), table = RoomsOfTheTable(Tables("May include"));
    EXPECT_GT(sources.size(), 20u);
    EXPECT_THAT(MoreIn(sources, table), IsEmpty())
        << "included, but no row of docs/architecture.md allows it";
    EXPECT_THAT(MoreIn(table, sources), IsEmpty())
        << "in the table of docs/architecture.md, but nobody uses it";
}

TEST(RoomMap, EveryCircleOfRoomsIsNamedWithItsReason) {
    std::set<std::set<std::string>> named;
    for (const test::TableRow& row : Tables("Why it stays")) {
        const std::vector<std::string> rooms = test::Quoted(row.cells.front());
        named.insert({rooms.begin(), rooms.end()});
        EXPECT_FALSE(row.cells.back().empty()) << "line " << row.nLine;
    }
    EXPECT_EQ(named, test::CirclesIn(RoomsOfTheSources()));
}

// A class stands in two files of one name.
std::string WithoutKind(const std::filesystem::path& file) {
    return std::filesystem::path(file).replace_extension().generic_string();
}

std::set<std::filesystem::path> AllSources() {
    std::set<std::string> folders = kApplication;
    folders.insert("handset");
    return test::CppFiles(kRoot, folders);
}

TEST(Threads, EveryThreadThatTheSourcesStartHasItsRow) {
    std::multiset<std::string> started, listed;
    for (const auto& file : AllSources()) {
        const std::string name = WithoutKind(std::filesystem::relative(file, kRoot));
        for (int i = test::ThreadsIn(test::ReadSource(file)); i > 0; --i) started.insert(name);
    }
    for (const test::TableRow& row : Tables("Started in")) {
        for (const std::string& file : test::Quoted(row.cells.back())) {
            EXPECT_TRUE(std::filesystem::exists(kRoot / file)) << "line " << row.nLine;
            listed.insert(WithoutKind(file));
        }
    }
    EXPECT_GT(started.size(), 10u);
    EXPECT_THAT(In(started, listed), IsEmpty()) << "started, but no row of docs/architecture.md says so";
    EXPECT_THAT(In(listed, started), IsEmpty())
        << "in the table of docs/architecture.md, but not started there";
}

// "file name" of each, as the table quotes them in its second column.
TEST(Locks, EveryLockThatTheSourcesMakeHasItsRow) {
    std::multiset<std::string> made, listed;
    for (const auto& file : AllSources()) {
        const std::string name = std::filesystem::relative(file, kRoot).generic_string();
        for (const std::string& lock : test::LocksIn(test::ReadSource(file))) made.insert(name + " " + lock);
    }
    for (const test::TableRow& row : Tables("Taken inside")) {
        const std::vector<std::string> place = test::Quoted(row.cells.at(1));
        ASSERT_EQ(place.size(), 2u) << "line " << row.nLine;
        listed.insert(place[0] + " " + place[1]);
    }
    EXPECT_GT(made.size(), 30u);
    EXPECT_THAT(In(made, listed), IsEmpty()) << "made, but no row of docs/architecture.md says so";
    EXPECT_THAT(In(listed, made), IsEmpty()) << "in the table of docs/architecture.md, but not made there";
}

// Whoever takes them in the order of the rows waits for nobody who waits for him.
Complaints InsideOneBelow(const std::vector<test::TableRow>& rows) {
    Complaints complaints;
    std::set<std::string> above;
    for (const test::TableRow& row : rows) {
        for (const std::string& outer : test::Quoted(row.cells.back())) {
            if (above.count(outer) == 0) complaints.push_back(row.cells.front() + " inside " + outer);
        }
        const std::vector<std::string> own = test::Quoted(row.cells.front());
        if (own.size() != 1 || !above.insert(own.front()).second)
            complaints.push_back(row.cells.front() + " has no name of its own");
    }
    return complaints;
}

TEST(Locks, EachIsTakenInsideThoseAboveItAlone) {
    EXPECT_THAT(InsideOneBelow(Tables("Taken inside")), IsEmpty());
}

// --- The reading itself -----------------------------------------------------------------------------------

TEST(RoomMap, IncludesInCommentsAreNone) {
    EXPECT_THAT(test::IncludedBy("#include \"a/b.h\"\n  # include <c.h>\n// #include \"d/e.h\"\n"
                                 "/* #include \"f/g.h\" */\nint i; // \"h.h\"\n#define x\n"),
                ElementsAre("a/b.h", "c.h"));
}

TEST(RoomMap, AnArrowTooManyOnEitherSideIsFound) {
    const Rooms table = RoomsOfTheTable(
        {{1, "", {"`a`", "x", "`b`, `c`"}}, {2, "", {"`b`", "y", "–"}}, {3, "", {"`c`", "z", "`a`"}}});
    const Rooms sources = {{"a", {"b"}}, {"b", {"c"}}, {"d", {"a"}}};
    EXPECT_THAT(MoreIn(sources, table), ElementsAre("b -> c", "d", "d -> a"));
    EXPECT_THAT(MoreIn(table, sources), ElementsAre("a -> c", "c", "c -> a"));
}

TEST(RoomMap, RoomsThatReachEachOtherAreOneCircle) {
    const Rooms rooms = {{"a", {"b"}}, {"b", {"c"}}, {"c", {"a", "d"}},
                         {"d", {}},    {"e", {"f"}}, {"f", {"e"}}};
    EXPECT_THAT(test::CirclesIn(rooms),
                UnorderedElementsAre(std::set<std::string>{"a", "b", "c"}, std::set<std::string>{"e", "f"}));
}

TEST(Threads, AThreadThatIsDeclaredAndStartedLaterIsOne) {
    EXPECT_EQ(test::ThreadsIn("std::thread thread_;\n"), 1);
    EXPECT_EQ(test::ThreadsIn("thread_ = std::thread([this] { Run(); });\n"), 0);
    EXPECT_EQ(
        test::ThreadsIn("std::thread([] {}).detach(); h = CreateThread(nullptr, 0, Proc, p, 0, &id);\n"), 2);
    EXPECT_EQ(
        test::ThreadsIn("thread_ = handset::WorkerThread(run, wanted);\n: thread_(handset::WorkerThread(run, "
                        "wanted)) {}\nreturn std::thread(Work);\n"),
        0);
    EXPECT_EQ(test::ThreadsIn("handset::WorkerThread(run, wanted).detach();\n"), 1);
    EXPECT_EQ(test::ThreadsIn("// CreateThread(\nHANDLE DeviceCreateThread(LPVOID); f(\"CreateThread(\");\n"),
              0);
}

TEST(Locks, OneThatIsMadeIsToldFromOneThatIsTaken) {
    EXPECT_THAT(
        test::LocksIn("std::mutex lock_;  // std::mutex no_;\nstatic std::mutex& shared = *new std::mutex;\n"
                      "const std::lock_guard<std::mutex> guard(lock_);\nhandset::CLock streamLock_;\n"
                      "SRWLOCK freezing_ = SRWLOCK_INIT;\nvoid f(SRWLOCK* lock);\n"),
        ElementsAre("lock_", "shared", "streamLock_", "freezing_"));
    EXPECT_THAT(test::LocksIn("class CStartLock : public CProcessLock {\nconst CProcessLock lock(other);\n"
                              "const CProcessLock held = x;\nown_(CreateMutexW(nullptr, FALSE, name))\n"),
                ElementsAre("CStartLock", "CreateMutexW"));
}

TEST(Locks, OneInsideALockBelowItIsFound) {
    EXPECT_THAT(InsideOneBelow({{1, "", {"`a`", "", "–"}},
                                {2, "", {"`b`", "", "`a`, `c`"}},
                                {3, "", {"`c`", "", "`b`"}},
                                {4, "", {"`a`", "", "`a`"}}}),
                ElementsAre("`b` inside c", "`a` has no name of its own"));
}

}  // namespace
