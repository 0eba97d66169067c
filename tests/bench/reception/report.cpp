#include "tests/bench/reception/report.h"

#include <algorithm>
#include <cstdio>

namespace bench {
namespace {

// Letters, not bytes.
std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char letter) { return (letter & 0xC0) != 0x80; }));
}

}  // namespace

void CTable::Print() const {
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
    }
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        std::string line = "|", rule = "|";
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const std::string cell = i < rows_[row].size() ? rows_[row][i] : "";
            line += " " + cell + std::string(widths[i] - Width(cell), ' ') + " |";
            rule += std::string(widths[i] + 2, '-') + "|";
        }
        std::printf("%s\n", line.c_str());
        if (row == 0) std::printf("%s\n", rule.c_str());
    }
    std::printf("\n");
}

bool PrintDemands(const std::vector<Demand>& demands) {
    CTable table({"Asked for", "Demand", "Reached", ""});
    bool allMet = true;
    for (const Demand& demand : demands) {
        table.Add({demand.what, demand.asked, demand.reached, demand.met ? "" : "MISSED"});
        allMet = allMet && demand.met;
    }
    table.Print();
    return allMet;
}

std::string Text(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string Share(double share, long count) {
    if (count > 0 && share * static_cast<double>(count) < 0.5)
        return Text("< %.2g %%", 100.0 / static_cast<double>(count));
    return Text(share < 0.0995 ? "%.2f %%" : "%.0f %%", 100 * share);
}

}  // namespace bench
