// The record button of a radio that is measured.
#pragma once

#include "tests/bench/table.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/radio.h"
#include "tests/support/tuner_contract.h"

namespace bench {

// The next recordings go to this name, without its extension.
void DefineName(const test::HandsetUnderTest& handset, const std::wstring& name);
void TapRecord(const test::Radio& radio);
// Answers the closing box as well.
void StopRecording(const test::Radio& radio);

// From the press to the first sample, beside building and starting the same graph and nothing else.
Row MeasureRecordStart(test::HandsetUnderTest& handset);

}  // namespace bench
