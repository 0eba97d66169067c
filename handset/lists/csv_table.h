// Comma-separated values as RFC 4180 has them, with any separator and any line ends. Portable.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lists {

struct CsvRow {
    std::size_t line = 0;  // on which it begins
    std::vector<std::string> fields;
};

struct CsvTable {
    std::vector<CsvRow> rows;  // empty lines are none
    std::string fault;         // where and why the rows end early
};

// A field is quoted when its very first character is a quote.
CsvTable ReadCsv(std::string_view bytes, char separator);

// Adds a row that ends in CR LF; what could be misread is quoted.
void AppendCsvRow(std::string& bytes, const std::vector<std::string>& fields);

}  // namespace lists
