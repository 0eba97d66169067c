// The page of complaints against the programs that print them.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/native/docs/source_text.h"

namespace {

const std::filesystem::path kRoot = KORA_SOURCE_DIR;
constexpr char kElision[] = "…";

// What stands in the first column of the page's tables, in the programs' own words.
std::vector<std::string> Complaints() {
    static const std::regex kRow(R"(\n\| `([^`]*)` \| )");
    const std::string page = test::ReadSource(kRoot / "docs/trouble.md");
    std::vector<std::string> complaints;
    for (std::sregex_iterator match(page.begin(), page.end(), kRow), end; match != end; ++match)
        complaints.push_back((*match)[1]);
    return complaints;
}

// The words between the names, numbers and paths that a complaint is about.
std::vector<std::string> Pieces(const std::string& complaint) {
    std::vector<std::string> pieces;
    std::size_t at = 0;
    while (at <= complaint.size()) {
        const std::size_t end = std::min(complaint.find(kElision, at), complaint.size());
        std::string piece = complaint.substr(at, end - at);
        piece.erase(0, std::min(piece.find_first_not_of(' '), piece.size()));
        piece.erase(piece.find_last_not_of(' ') + 1);
        if (!piece.empty()) pieces.push_back(piece);
        at = end + sizeof(kElision) - 1;
    }
    return pieces;
}

// Everything that the programs and the scripts may print, a text that is parted in the source joined again.
std::string Printed() {
    std::string all = test::ReadSource(kRoot / "kora");
    for (const auto& entry : std::filesystem::directory_iterator(kRoot / "scripts"))
        all += test::ReadSource(entry.path());
    for (const auto& file : test::CppFiles(kRoot, {"handset"}))
        all += test::WithoutComments(test::ReadSource(file));
    return std::regex_replace(all, std::regex(R"("\s*\n\s*L?")"), "");
}

TEST(Trouble, EveryComplaintOfThePageIsAProgramsOwn) {
    const std::vector<std::string> complaints = Complaints();
    EXPECT_GE(complaints.size(), 20u);
    const std::string printed = Printed();
    for (const std::string& complaint : complaints) {
        for (const std::string& piece : Pieces(complaint))
            EXPECT_NE(printed.find(piece), std::string::npos) << "\"" << piece << "\" of: " << complaint;
    }
}

}  // namespace
