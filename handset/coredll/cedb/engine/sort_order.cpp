// Sort orders and sort keys. A column of a key is one byte that says whether there is a value and where
// records without one go, then the value in a form that ends itself, inverted for a descending column.
#include "handset/coredll/cedb/engine/sort_order.h"

#include <algorithm>

namespace cedb {
namespace {

constexpr char kAbsentFirst = 0;
constexpr char kPresent = 1;
constexpr char kAbsentLast = 2;
constexpr std::uint32_t kTextFlags = kSortCaseInsensitive | kSortIgnoreNonSpace | kSortIgnoreSymbols |
                                     kSortIgnoreKanaType | kSortIgnoreWidth | kSortStringSort;
constexpr std::uint64_t kSignBit = 0x8000000000000000U;

std::string BigEndian(std::uint64_t number) {
    std::string out;
    for (int shift = 56; shift >= 0; shift -= 8) out.push_back(static_cast<char>(number >> shift & 0xFF));
    return out;
}

// IEEE 754: positive numbers order as their bits do, negative ones the other way round.
std::uint64_t OrderedDouble(std::uint64_t bits) {
    constexpr std::uint64_t kMinusZero = kSignBit;
    if (bits == kMinusZero) bits = 0;
    return (bits & kSignBit) != 0 ? ~bits : bits | kSignBit;
}

// A zero byte inside becomes 00 FF and the end is 00 00, so that no key is the beginning of another one.
std::string Terminated(const std::string& bytes) {
    std::string out;
    for (const char byte : bytes) {
        out.push_back(byte);
        if (byte == 0) out.push_back('\xFF');
    }
    out.append(2, '\0');
    return out;
}

std::string ValueKey(const SortColumn& column, const Property& value, std::uint32_t lcid,
                     const CCollator& collator) {
    const std::uint16_t type = TypeOf(value.id);
    if (type == kTypeText) return Terminated(collator.TextKey(lcid, column.flags & kTextFlags, value.text));
    if (type == kTypeDouble) return BigEndian(OrderedDouble(value.number));
    const bool isSigned = type == kTypeInt16 || type == kTypeInt32;
    return BigEndian(isSigned ? value.number ^ kSignBit : value.number);
}

std::string ColumnKey(const SortColumn& column, const Property& value, std::uint32_t lcid,
                      const CCollator& collator) {
    std::string key = ValueKey(column, value, lcid, collator);
    if ((column.flags & kSortDescending) != 0) {
        for (char& byte : key) byte = static_cast<char>(~byte);
    }
    return kPresent + key;
}

void AppendU32(std::string& out, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) out.push_back(static_cast<char>(number >> shift & 0xFF));
}

std::uint32_t TakeU32(const std::string& data, std::size_t& at) {
    std::uint32_t number = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        number |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(data[at++])) << shift;
    }
    return number;
}

}  // namespace

bool IsValid(const SortOrder& order) {
    if (order.columns.empty() || order.columns.size() > kMaximumSortColumns) return false;
    for (auto column = order.columns.begin(); column != order.columns.end(); ++column) {
        if (!IsKnownType(column->id) || TypeOf(column->id) == kTypeBlob) return false;
        const auto same = [column](const SortColumn& other) { return other.id == column->id; };
        if (std::any_of(order.columns.begin(), column, same)) return false;
    }
    return true;
}

std::optional<std::string> SortKey(const SortOrder& order, const Record& record, std::uint32_t lcid,
                                   const CCollator& collator) {
    std::string key;
    for (const SortColumn& column : order.columns) {
        if (const Property* value = FindProperty(record, column.id)) {
            key += ColumnKey(column, *value, lcid, collator);
            continue;
        }
        if ((column.flags & kSortNonNull) != 0) return std::nullopt;
        key.push_back((column.flags & kSortUnknownFirst) != 0 ? kAbsentFirst : kAbsentLast);
    }
    return key;
}

std::optional<std::string> KeyPrefix(const SortOrder& order, const std::vector<Property>& values,
                                     std::uint32_t lcid, const CCollator& collator) {
    if (values.empty() || values.size() > order.columns.size()) return std::nullopt;
    std::string key;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i].id != order.columns[i].id) return std::nullopt;
        key += ColumnKey(order.columns[i], values[i], lcid, collator);
    }
    return key;
}

std::string BehindPrefix(std::string prefix) {
    // The first byte of a key is at most kAbsentLast, so there is always one that can grow.
    while (static_cast<std::uint8_t>(prefix.back()) == 0xFF) prefix.pop_back();
    prefix.back() = static_cast<char>(static_cast<std::uint8_t>(prefix.back()) + 1);
    return prefix;
}

std::string EncodeOrders(const std::vector<SortOrder>& orders) {
    std::string out;
    for (const SortOrder& order : orders) {
        AppendU32(out, static_cast<std::uint32_t>(order.columns.size()) | (order.unique ? 0x10000U : 0U));
        for (const SortColumn& column : order.columns) {
            AppendU32(out, column.id);
            AppendU32(out, column.flags);
        }
    }
    return out;
}

Status DecodeOrders(const std::string& data, std::vector<SortOrder>* orders) {
    orders->clear();
    std::size_t at = 0;
    while (at < data.size()) {
        if (data.size() - at < 4) return Status::Corrupt;
        const std::uint32_t head = TakeU32(data, at);
        SortOrder order;
        order.unique = (head & 0x10000U) != 0;
        const std::size_t columns = head & 0xFFFF;
        if (columns > kMaximumSortColumns || (data.size() - at) / 8 < columns) return Status::Corrupt;
        for (std::size_t i = 0; i < columns; ++i) {
            const PropertyId id = TakeU32(data, at);
            order.columns.push_back({id, TakeU32(data, at)});
        }
        if (!IsValid(order)) return Status::Corrupt;
        orders->push_back(std::move(order));
    }
    return orders->size() <= kMaximumSortOrders ? Status::Ok : Status::Corrupt;
}

}  // namespace cedb
