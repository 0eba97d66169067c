// The tables of a volume's file.
#pragma once

#include <cstdint>

namespace cedb {

constexpr std::uint32_t kApplicationId = 0x43454442;  // "CEDB"
constexpr std::uint32_t kFormatVersion = 1;

struct SchemaRow {
    const char* name;
    const char* sql;
};

// `volume` has one row: the next free identifier (databases and records share the numbers), the language, how
// that language sorts here, and the volume's own identifier. `keys` has one row a record and sort order;
// equal keys come in the order in which their records were made.
// clang-format off
inline constexpr SchemaRow kSchema[] = {
    {"volume",    "CREATE TABLE volume(id INTEGER PRIMARY KEY, next_oid INTEGER NOT NULL, lcid INTEGER NOT NULL, "
                  "collation BLOB NOT NULL, guid BLOB NOT NULL)"},
    {"databases", "CREATE TABLE databases(oid INTEGER PRIMARY KEY, name BLOB NOT NULL, folded BLOB NOT NULL UNIQUE, "
                  "type INTEGER NOT NULL, flags INTEGER NOT NULL, orders BLOB NOT NULL)"},
    {"records",   "CREATE TABLE records(db INTEGER NOT NULL, oid INTEGER NOT NULL, properties BLOB NOT NULL, "
                  "PRIMARY KEY(db, oid)) WITHOUT ROWID"},
    {"keys",      "CREATE TABLE keys(db INTEGER NOT NULL, sort INTEGER NOT NULL, key BLOB NOT NULL, "
                  "oid INTEGER NOT NULL, PRIMARY KEY(db, sort, key, oid)) WITHOUT ROWID"},
};
// clang-format on

}  // namespace cedb
