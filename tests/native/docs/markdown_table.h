// The rows of the tables in a Markdown file.
#pragma once

#include <string>
#include <vector>

namespace test {

struct TableRow {
    int nLine;                       // from 1, in the file
    std::string section;             // the "## " heading above it
    std::vector<std::string> cells;  // all of them, trimmed
};

// Of every table whose last column has this heading.
std::vector<TableRow> ReadTables(const std::string& markdown, const std::string& lastHeading);

// What stands between backticks in a cell.
std::vector<std::string> Quoted(const std::string& cell);

}  // namespace test
