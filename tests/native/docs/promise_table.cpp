#include "tests/native/docs/promise_table.h"

#include "tests/native/docs/markdown_table.h"

namespace test {

std::vector<Promise> ReadPromises(const std::string& markdown) {
    std::vector<Promise> promises;
    for (TableRow& row : ReadTables(markdown, "Held by")) {
        const std::vector<std::string> heldBy = Quoted(row.cells.back());
        row.cells.pop_back();
        promises.push_back({row.nLine, row.section, row.cells, heldBy});
    }
    return promises;
}

}  // namespace test
