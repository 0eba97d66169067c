// The table of what the radio promises: every row is held by tests that exist, and nothing that the
// application traces or keeps is without a row.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <regex>

#include "tests/native/docs/differences.h"
#include "tests/native/docs/markdown_table.h"
#include "tests/native/docs/promise_table.h"
#include "tests/native/docs/source_text.h"

namespace {

using test::Complaints;
using test::In;
using test::kApplication;
using test::kRoot;
using test::Promise;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using Names = std::set<std::string>;

std::string Place(const Promise& promise) {
    return "line " + std::to_string(promise.nLine) + " (" + promise.section + ")";
}

// What is wrong with the rows, given the tests that there are.
Complaints RowsWithoutTests(const std::vector<Promise>& promises, const Names& tests) {
    Complaints complaints;
    for (const Promise& promise : promises) {
        if (promise.heldBy.empty()) complaints.push_back(Place(promise) + " names no test");
        for (const std::string& name : promise.heldBy) {
            if (tests.count(name) == 0) complaints.push_back(Place(promise) + ": there is no test " + name);
        }
    }
    return complaints;
}

// What the first cells of a section quote, each as often as it does.
std::multiset<std::string> FirstQuoted(const std::vector<Promise>& promises, const std::string& section) {
    std::multiset<std::string> quoted;
    for (const Promise& promise : promises) {
        if (promise.section != section || promise.cells.empty()) continue;
        for (const std::string& text : test::Quoted(promise.cells.front())) quoted.insert(text);
    }
    return quoted;
}

std::vector<Promise> Promises() {
    return test::ReadPromises(test::ReadSource(kRoot / "docs" / "promises.md"));
}

// Whether the lists of sources name the file; one that nobody builds holds nothing.
bool IsListed(const std::string& lists, const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    return lists.find("/" + name) != std::string::npos || lists.find(" " + name) != std::string::npos;
}

// "Suite.Check" of the tests that are scripts.
Names ChecksOf(const std::string& script) {
    static const std::regex kSuite("(?:^|[\\n ])SUITE=(\\w+)"), kCheck("(?:^|\\n) *check \"?(\\w+)");
    Names checks;
    std::smatch suite;
    if (!std::regex_search(script, suite, kSuite)) return checks;
    for (auto at = std::sregex_iterator(script.begin(), script.end(), kCheck); at != std::sregex_iterator();
         ++at)
        checks.insert(suite[1].str() + "." + (*at)[1].str());
    return checks;
}

Names AllTests() {
    std::string lists;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kRoot / "tests")) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".cmake" || name == "CMakeLists.txt")
            lists += test::ReadSource(entry.path());
    }
    Names tests;
    for (const auto& file : test::CppFiles(kRoot, {"tests"})) {
        if (IsListed(lists, file)) tests.merge(test::TestsOf(test::ReadSource(file)));
    }
    for (const char* folder : {"scripts", "install"}) {
        for (const auto& entry : std::filesystem::directory_iterator(kRoot / "tests" / folder))
            if (entry.path().extension() == ".sh") tests.merge(ChecksOf(test::ReadSource(entry.path())));
    }
    return tests;
}

TEST(Promises, EachIsHeldByTestsThatExist) {
    const std::vector<Promise> promises = Promises();
    EXPECT_GT(promises.size(), 300u);
    EXPECT_THAT(RowsWithoutTests(promises, AllTests()), IsEmpty());
}

TEST(Promises, EveryLineThatTheApplicationTracesHasItsRow) {
    Names traced;
    for (const auto& file : test::CppFiles(kRoot, kApplication))
        traced.merge(test::TracedBy(test::ReadSource(file)));
    EXPECT_GT(traced.size(), 100u);
    const auto listed = FirstQuoted(Promises(), "Trace lines");
    EXPECT_THAT(In(traced, listed), IsEmpty()) << "traced, without a row";
    EXPECT_THAT(In(listed, traced), IsEmpty()) << "in the table, but nothing traces it";
}

// The device's debug output has room for so many. A text in a line is cut by its format.
TEST(Promises, NoTracedLineCanBeLongerThanTheDevicesDebugOutputTakes) {
    constexpr std::size_t kMost = 127;
    // Seven flags of one digit.
    const std::string flags = "Check Result Sun:%d ,Mon:%d, Tue:%d, Wed:%d, Thr:%d, Fri:%d, Sat:%d,\\n";
    Complaints complaints;
    for (const auto& file : test::CppFiles(kRoot, kApplication)) {
        for (const std::string& line : test::TracedBy(test::ReadSource(file))) {
            if (line == flags) continue;
            const auto most = test::MostCharacters(line);
            if (most.value_or(kMost + 1) > kMost)
                complaints.push_back(file.filename().string() + ": " + line);
        }
    }
    EXPECT_THAT(complaints, IsEmpty());
}

TEST(Promises, EveryOddityThatIsKeptHasItsRow) {
    std::multiset<std::string> kept;
    for (const auto& file : test::CppFiles(kRoot, kApplication)) {
        const std::string name = std::filesystem::relative(file, kRoot).generic_string();
        for (int i = test::KeptIn(test::ReadSource(file)); i > 0; --i) kept.insert(name);
    }
    EXPECT_GT(kept.size(), 40u);
    EXPECT_EQ(FirstQuoted(Promises(), "Kept as it stands"), kept);
}

// --- The reading itself -----------------------------------------------------------------------------------

constexpr char kTable[] =
    "## Start\n\nwords | between\n\n"
    "| Promise | Held by |\n|---|---|\n"
    "| It starts | `StartUp.Works`, `StartUp.WorksAgain` |\n"
    "| It ends | |\n"
    "\n## Trace lines\n\n| Line | Held by |\n|---|---|\n| ` ** x **\\r\\n` | `Other.Gone` |\n";

TEST(PromiseTable, GivesEachRowWithItsSectionAndTests) {
    const std::vector<Promise> promises = test::ReadPromises(kTable);
    ASSERT_EQ(promises.size(), 3u);
    EXPECT_EQ(promises[0].section, "Start");
    EXPECT_EQ(promises[0].nLine, 7);
    EXPECT_THAT(promises[0].cells, ElementsAre("It starts"));
    EXPECT_THAT(promises[0].heldBy, ElementsAre("StartUp.Works", "StartUp.WorksAgain"));
    EXPECT_THAT(promises[1].heldBy, IsEmpty());
    EXPECT_THAT(FirstQuoted(promises, "Trace lines"), ElementsAre(" ** x **\\r\\n"));
}

TEST(PromiseTable, ARowWithoutATestAndOneWithATestThatIsNotThereAreFound) {
    EXPECT_THAT(
        RowsWithoutTests(test::ReadPromises(kTable), {"StartUp.Works"}),
        ElementsAre("line 7 (Start): there is no test StartUp.WorksAgain", "line 8 (Start) names no test",
                    "line 14 (Trace lines): there is no test Other.Gone"));
}

TEST(TestSources, TestsInCommentsAndTextsAndDisabledOnesAreNone) {
    const Names tests = test::TestsOf(
        "TEST(One, Works) {}\nTEST_F( Two ,\n Works) { f(1'000'000, 'x', '\"'); }\nTEST_P(Three, Works) {}\n"
        "// TEST(Four, Works) {}\n/* TEST(Five, Works)\n*/ const char* text = \"TEST(Six, \\\" Works)\";\n"
        "TEST(Seven, DISABLED_Works) {}\nMYTEST(Eight, Works) {}\n"
        "const char* raw = R\"x(\" TEST(Nine, Works) \")x\"; TEST(Ten, Works) {}\n");
    EXPECT_THAT(tests, UnorderedElementsAre("One.Works", "Two.Works", "Three.Works", "Ten.Works"));
}

TEST(AppSources, TracedTextsAreFoundAsTheyAreSpelled) {
    const Names lines = test::TracedBy(
        "NKDbgPrintfW(L\"FM: %d \\n\", 1); std::printf(\"dots....\"); // NKDbgPrintfW(L\"not this\")\n"
        "NKDbgPrintfW(x ? L\"yes\" : L\"no\"); const WCHAR* row = L\"end\\r\\n\"; f(L\"other\");\n"
        "std::swprintf(text, 9, L\"%d.%d\", 1); NKDbgPrintfW(\n    L\"below\");\n");
    EXPECT_THAT(lines, UnorderedElementsAre("FM: %d \\n", "dots....", "yes", "no", "end\\r\\n", "below"));
}

TEST(AppSources, ATracedLineIsAsLongAsItsLongestNumbersAndTexts) {
    EXPECT_EQ(test::MostCharacters("FM: %d:%x 100%%\\r\\n"), 4u + 11 + 1 + 8 + 5 + 2);
    EXPECT_EQ(test::MostCharacters("%3d %15ld"), 11u + 1 + 15);
    EXPECT_EQ(test::MostCharacters("(%.90s)"), 92u);
    EXPECT_EQ(test::MostCharacters("(%s)"), std::nullopt);
}

TEST(AppSources, KeptCommentsAreCounted) {
    EXPECT_EQ(test::KeptIn("// Kept: this\nint i;  // Kept: that\n// kept\n"), 2);
}

TEST(Promises, TheIndexLeadsToEverySectionInItsOrder) {
    static const std::regex kEntry(R"(\[([^\]]+)\]\(#([a-z0-9-]+)\))"), kSection(R"(\n## ([^\n]+))");
    const std::string page = test::ReadSource(kRoot / "docs" / "promises.md");
    const std::string head = page.substr(0, page.find("\n## "));
    Complaints entries, sections;
    for (std::sregex_iterator entry(head.begin(), head.end(), kEntry), end; entry != end; ++entry) {
        entries.push_back((*entry)[1]);
        // As the page's reader makes it of the title.
        std::string anchor;
        for (const char letter : entries.back()) {
            const auto byte = static_cast<unsigned char>(letter);
            if (std::isalnum(byte) != 0 || letter == ' ')
                anchor += letter == ' ' ? '-' : static_cast<char>(std::tolower(byte));
        }
        EXPECT_EQ((*entry)[2], anchor);
    }
    for (std::sregex_iterator section(page.begin(), page.end(), kSection), end; section != end; ++section)
        sections.push_back((*section)[1]);
    EXPECT_EQ(entries, sections);
}

}  // namespace
