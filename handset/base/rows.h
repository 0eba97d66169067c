// Looking a value up in a table. Portable.
#pragma once

namespace handset {

// The first row that has `value` in this column; null where there is none.
template <typename Rows, typename Row, typename Key, typename Value>
[[nodiscard]] constexpr const Row* RowWith(const Rows& rows, Key Row::*column, const Value& value) {
    for (const Row& row : rows) {
        if (row.*column == value) return &row;
    }
    return nullptr;
}

}  // namespace handset
