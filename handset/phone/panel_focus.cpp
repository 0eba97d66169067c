// The order of the panel's switches for the keys.
#include "handset/phone/panel_focus.h"

namespace panel {

FocusPlace CloseButtonPlace(const ColumnLayout& column) {
    return column.switches.size();
}

FocusPlace NextPlace(const ColumnLayout& column, FocusPlace place) {
    return place >= CloseButtonPlace(column) ? 0 : place + 1;
}

FocusPlace PreviousPlace(const ColumnLayout& column, FocusPlace place) {
    return place == 0 ? CloseButtonPlace(column) : place - 1;
}

const SwitchRow* SwitchAtPlace(const ColumnLayout& column, FocusPlace place) {
    return place < column.switches.size() ? column.switches[place].row : nullptr;
}

Box BoxOfPlace(const ColumnLayout& column, const Box& close, FocusPlace place) {
    return place < column.switches.size() ? column.switches[place].box : close;
}

}  // namespace panel
