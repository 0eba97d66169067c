#include "tests/native/docs/markdown_table.h"

#include <regex>
#include <sstream>

namespace test {
namespace {

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The cells of "| a | b |"; none for any other line.
std::vector<std::string> Cells(const std::string& line) {
    std::vector<std::string> cells;
    if (line.size() < 2 || line.front() != '|' || line.back() != '|') return cells;
    std::istringstream row(line.substr(1));
    for (std::string cell; std::getline(row, cell, '|');) cells.push_back(Trimmed(cell));
    return cells;
}

}  // namespace

std::vector<std::string> Quoted(const std::string& cell) {
    std::vector<std::string> names;
    static const std::regex kQuoted("`([^`]*)`");
    for (std::sregex_iterator match(cell.begin(), cell.end(), kQuoted), end; match != end; ++match) {
        names.push_back((*match)[1]);
    }
    return names;
}

std::vector<TableRow> ReadTables(const std::string& markdown, const std::string& lastHeading) {
    std::vector<TableRow> rows;
    std::istringstream lines(markdown);
    std::string section;
    bool inTable = false;
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.rfind("## ", 0) == 0) section = line.substr(3);
        std::vector<std::string> cells = Cells(line);
        if (cells.empty()) {
            inTable = false;
        } else if (cells.back() == lastHeading) {
            inTable = true;
        } else if (inTable && line.find_first_not_of("|-: ") != std::string::npos) {
            rows.push_back({number, section, std::move(cells)});
        }
    }
    return rows;
}

}  // namespace test
