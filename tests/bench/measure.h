// The measurements; each gives its rows of the table.
#pragma once

#include <string>
#include <vector>

#include "tests/bench/table.h"

namespace test {
class HandsetUnderTest;
}

namespace bench {

// Where the programs are.
struct Programs {
    std::wstring radio;
    std::wstring bareWindow;
};

std::vector<Row> MeasureStart(const Programs& programs);
// Runs a program that prints a row a line: what, its figure, the peer, the peer's figure, the goal; in us,
// parted by tabs.
std::vector<Row> MeasureProgram(const std::wstring& program);
// Processor time over `seconds` at rest, and private memory after the start.
std::vector<Row> MeasureRest(const Programs& programs, unsigned seconds);
// Processor time of an hour recorded to each format, beside the hour played and the encoder library; and how
// soon a recording begins.
std::vector<Row> MeasureRecording(test::HandsetUnderTest& handset);

}  // namespace bench
