// The table, and whether what was asked for was reached.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Rows of cells in columns as wide as their widest cell.
class CTable {
  public:
    explicit CTable(std::vector<std::string> heads) : rows_{std::move(heads)} {}
    void Add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    // As a table of Markdown, on standard output.
    void Print() const;

  private:
    std::vector<std::vector<std::string>> rows_;
};

struct Demand {
    std::string what;
    std::string asked;
    std::string reached;
    bool met = false;
};

// Demand and result side by side; whether all were met.
bool PrintDemands(const std::vector<Demand>& demands);

std::string Text(const char* format, double value);
// "0.24 %", or below one in the count "< 0.02 %".
std::string Share(double share, long count);

}  // namespace bench
