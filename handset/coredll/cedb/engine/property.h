// Typed properties, of which a record is a set, and their form in the volume.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "handset/coredll/cedb/engine/status.h"

namespace cedb {

// A property identifier: the property's number in the high 16 bits, its type (CEVT_…) in the low 16 bits.
using PropertyId = std::uint32_t;
// A record's or database's number in its volume; never 0, never given out twice.
using Oid = std::uint32_t;

enum : std::uint16_t {
    kTypeInt16 = 2,
    kTypeInt32 = 3,
    kTypeDouble = 5,
    kTypeBool = 11,
    kTypeUInt16 = 18,
    kTypeUInt32 = 19,
    kTypeText = 31,
    kTypeFileTime = 64,
    kTypeBlob = 65,
};

constexpr std::uint16_t TypeOf(PropertyId id) {
    return static_cast<std::uint16_t>(id & 0xFFFF);
}
bool IsKnownType(PropertyId id);

struct Property {
    PropertyId id = 0;
    std::uint64_t number = 0;  // scalars: signed ones sign-extended, a double by its bits
    std::u16string text;       // kTypeText, without the terminator
    std::string bytes;         // kTypeBlob

    bool operator==(const Property& other) const {
        return id == other.id && number == other.number && text == other.text && bytes == other.bytes;
    }
};

// One property in a write: either its new value or its removal.
struct PropertyChange {
    Property property;
    bool remove = false;
};

// In the order in which the properties were first written.
using Record = std::vector<Property>;

constexpr std::size_t kMaximumProperty_bytes = 65471;
constexpr std::size_t kMaximumRecord_bytes = 131072;

const Property* FindProperty(const Record& record, PropertyId id);
// InvalidArgument for an unknown type, TooLong for a value or a record that is; `record` is then as it was.
[[nodiscard]] Status ApplyChanges(Record& record, const std::vector<PropertyChange>& changes);

std::string EncodeRecord(const Record& record);
// Corrupt unless `data` is exactly what EncodeRecord makes of some record.
[[nodiscard]] Status DecodeRecord(const std::string& data, Record* record);

}  // namespace cedb
