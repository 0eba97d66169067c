#include "tests/screens/shown_fields.h"

#include <algorithm>

namespace screens {

const Item* MainWindow(const std::vector<Item>& now) {
    const auto main = std::find_if(now.begin(), now.end(), [](const Item& item) {
        return item.kind == Kind::kWindow && item.className == kMainClass;
    });
    return main == now.end() ? nullptr : &*main;
}

std::vector<const Item*> ShownFields(const Item& main, const std::vector<Item>& drawn) {
    std::vector<const Item*> fields;
    for (auto item = drawn.rbegin(); item != drawn.rend(); ++item) {
        if (item->window != main.window || item->ground.cx != main.room.right - main.room.left ||
            item->ground.cy != main.room.bottom - main.room.top)
            continue;
        const bool known = std::any_of(fields.begin(), fields.end(), [&](const Item* field) {
            return EqualRect(&field->place, &item->place) != FALSE;
        });
        if (!known) fields.push_back(&*item);
    }
    return fields;
}

}  // namespace screens
