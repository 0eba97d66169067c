// The main screen and the fields that are drawn on it.
#pragma once

#include <vector>

#include "tests/screens/screen_item.h"

namespace screens {

inline constexpr char kMainClass[] = "Kora";

// Null: it is not to be seen.
[[nodiscard]] const Item* MainWindow(const std::vector<Item>& now);
// Its fields, each as it was drawn last since the window has its size; those that were emptied, too.
[[nodiscard]] std::vector<const Item*> ShownFields(const Item& main, const std::vector<Item>& drawn);

}  // namespace screens
