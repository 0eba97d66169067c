// Sort orders and sort keys. A record's key in an order is a byte string; byte order is the sort order, so
// that the volume can keep it in a plain index.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "handset/coredll/cedb/engine/property.h"

namespace cedb {

// Flags of one column (CEDB_SORT_…).
enum : std::uint32_t {
    kSortDescending = 0x001,
    kSortCaseInsensitive = 0x002,
    kSortUnknownFirst = 0x004,
    kSortIgnoreNonSpace = 0x010,
    kSortIgnoreSymbols = 0x020,
    kSortIgnoreKanaType = 0x040,
    kSortIgnoreWidth = 0x080,
    kSortStringSort = 0x100,
    kSortUnique = 0x200,   // of the whole order
    kSortNonNull = 0x400,  // a record without the property is refused
};

constexpr std::size_t kMaximumSortOrders = 16;
constexpr std::size_t kMaximumSortColumns = 16;

struct SortColumn {
    PropertyId id = 0;
    std::uint32_t flags = 0;
    bool operator==(const SortColumn& other) const { return id == other.id && flags == other.flags; }
};

struct SortOrder {
    bool unique = false;
    std::vector<SortColumn> columns;
    bool operator==(const SortOrder& other) const {
        return unique == other.unique && columns == other.columns;
    }
};

// Turns text into bytes whose order is the language's order of the texts. Any thread.
class CCollator {
  public:
    virtual ~CCollator() = default;
    // `flags`: the kSort… flags that concern text. Texts that the language takes for equal give equal bytes.
    virtual std::string TextKey(std::uint32_t lcid, std::uint32_t flags,
                                const std::u16string& text) const = 0;
    virtual bool Knows(std::uint32_t lcid) const = 0;
};

// 1 to 16 columns of sortable types (blobs have no order), none twice.
bool IsValid(const SortOrder& order);

// The record's key, or nothing when a column that must not be empty has no value.
std::optional<std::string> SortKey(const SortOrder& order, const Record& record, std::uint32_t lcid,
                                   const CCollator& collator);

// The beginning that the keys of all records have in common whose first columns equal `values`; nothing when
// the values do not fit the columns.
std::optional<std::string> KeyPrefix(const SortOrder& order, const std::vector<Property>& values,
                                     std::uint32_t lcid, const CCollator& collator);

// The first byte string behind all that begin with `prefix` (which is never empty).
std::string BehindPrefix(std::string prefix);

std::string EncodeOrders(const std::vector<SortOrder>& orders);
[[nodiscard]] Status DecodeOrders(const std::string& data, std::vector<SortOrder>* orders);

}  // namespace cedb
