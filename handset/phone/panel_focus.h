// Which of the panel's switches the computer's keys are for. Portable.
#pragma once

#include <cstddef>
#include <optional>

#include "handset/phone/switch_column.h"

namespace panel {

// A place in the order in which the keys go through the panel: its switches, and then the button that puts
// the phone away.
using FocusPlace = std::size_t;

FocusPlace CloseButtonPlace(const ColumnLayout& column);
// One farther or back, round the ends.
FocusPlace NextPlace(const ColumnLayout& column, FocusPlace place);
FocusPlace PreviousPlace(const ColumnLayout& column, FocusPlace place);
// The switch there; null at the close button.
const SwitchRow* SwitchAtPlace(const ColumnLayout& column, FocusPlace place);
// Where it lies: the switch's box, or the close button's.
Box BoxOfPlace(const ColumnLayout& column, const Box& close, FocusPlace place);

}  // namespace panel
