// Typed properties and the form of a record in the volume: each property is its identifier and its value,
// little-endian; texts and blobs carry their length in bytes.
#include "handset/coredll/cedb/engine/property.h"

#include <algorithm>

namespace cedb {
namespace {

struct TypeRow {
    std::uint16_t type;
    std::uint8_t size_bytes;  // 0: the value carries its length
    bool isSigned;
};

// clang-format off
constexpr TypeRow kTypes[] = {
    {kTypeInt16,    2, true},
    {kTypeInt32,    4, true},
    {kTypeDouble,   8, false},
    {kTypeBool,     4, false},
    {kTypeUInt16,   2, false},
    {kTypeUInt32,   4, false},
    {kTypeText,     0, false},
    {kTypeFileTime, 8, false},
    {kTypeBlob,     0, false},
};
// clang-format on

const TypeRow* FindType(std::uint16_t type) {
    const auto row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                  [type](const TypeRow& candidate) { return candidate.type == type; });
    return row == std::end(kTypes) ? nullptr : row;
}

void AppendNumber(std::string& out, std::uint64_t number, int size) {
    for (int i = 0; i < size; ++i) out.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
}

std::uint64_t SignExtend(std::uint64_t number, const TypeRow& type) {
    const int unused = 64 - 8 * type.size_bytes;
    if (!type.isSigned || unused == 0) return number;
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(number << unused) >> unused);
}

std::size_t EncodedSize(const Property& property) {
    const TypeRow* type = FindType(TypeOf(property.id));
    const std::size_t value =
        type->size_bytes != 0 ? type->size_bytes : 4 + property.bytes.size() + 2 * property.text.size();
    return 4 + value;
}

// Reads the encoded form front to back; every step says whether there was enough of it.
class CPropertyReader {
  public:
    explicit CPropertyReader(const std::string& data) : data_(data) {}
    bool AtEnd() const { return at_ == data_.size(); }
    bool Number(std::size_t size, std::uint64_t* number) {
        if (data_.size() - at_ < size) return false;
        *number = 0;
        for (std::size_t i = size; i-- > 0;)
            *number = *number << 8 | static_cast<std::uint8_t>(data_[at_ + i]);
        at_ += size;
        return true;
    }
    bool Bytes(std::size_t size, std::string* bytes) {
        if (data_.size() - at_ < size) return false;
        bytes->assign(data_, at_, size);
        at_ += size;
        return true;
    }

  private:
    const std::string& data_;
    std::size_t at_ = 0;
};

bool ReadVariable(CPropertyReader& reader, Property* property) {
    std::uint64_t size = 0;
    if (!reader.Number(4, &size) || size > kMaximumProperty_bytes) return false;
    std::string bytes;
    if (!reader.Bytes(size, &bytes)) return false;
    if (TypeOf(property->id) == kTypeBlob) {
        property->bytes = std::move(bytes);
        return true;
    }
    if (size % 2 != 0) return false;
    for (std::size_t i = 0; i < size; i += 2) {
        const auto low = static_cast<std::uint8_t>(bytes[i]);
        const auto high = static_cast<std::uint8_t>(bytes[i + 1]);
        const auto unit = static_cast<char16_t>(low | high << 8);
        if (unit == 0) return false;
        property->text.push_back(unit);
    }
    return true;
}

bool ReadProperty(CPropertyReader& reader, Property* property) {
    std::uint64_t id = 0;
    if (!reader.Number(4, &id)) return false;
    property->id = static_cast<PropertyId>(id);
    const TypeRow* type = FindType(TypeOf(property->id));
    if (type == nullptr) return false;
    if (type->size_bytes == 0) return ReadVariable(reader, property);
    if (!reader.Number(type->size_bytes, &property->number)) return false;
    property->number = SignExtend(property->number, *type);
    return true;
}

Status Check(const Property& property) {
    if (!IsKnownType(property.id) || property.text.find(u'\0') != std::u16string::npos)
        return Status::InvalidArgument;
    const bool fits =
        property.bytes.size() <= kMaximumProperty_bytes && 2 * property.text.size() <= kMaximumProperty_bytes;
    return fits ? Status::Ok : Status::TooLong;
}

}  // namespace

bool IsKnownType(PropertyId id) {
    return FindType(TypeOf(id)) != nullptr;
}

const Property* FindProperty(const Record& record, PropertyId id) {
    const auto found = std::find_if(record.begin(), record.end(),
                                    [id](const Property& property) { return property.id == id; });
    return found == record.end() ? nullptr : &*found;
}

Status ApplyChanges(Record& record, const std::vector<PropertyChange>& changes) {
    Record result = record;
    for (const PropertyChange& change : changes) {
        if (!IsKnownType(change.property.id)) return Status::InvalidArgument;
        const auto at = std::find_if(result.begin(), result.end(), [&change](const Property& property) {
            return property.id == change.property.id;
        });
        if (change.remove) {
            if (at != result.end()) result.erase(at);
            continue;
        }
        if (const Status status = Check(change.property); status != Status::Ok) return status;
        if (at == result.end()) {
            result.push_back(change.property);
        } else {
            *at = change.property;
        }
    }
    std::size_t size = 0;
    for (const Property& property : result) size += EncodedSize(property);
    if (size > kMaximumRecord_bytes) return Status::TooLong;
    record = std::move(result);
    return Status::Ok;
}

std::string EncodeRecord(const Record& record) {
    std::string out;
    for (const Property& property : record) {
        AppendNumber(out, property.id, 4);
        const TypeRow* type = FindType(TypeOf(property.id));
        if (type->size_bytes != 0) {
            AppendNumber(out, property.number, type->size_bytes);
            continue;
        }
        AppendNumber(out, property.bytes.size() + 2 * property.text.size(), 4);
        out += property.bytes;
        for (const char16_t unit : property.text) AppendNumber(out, unit, 2);
    }
    return out;
}

Status DecodeRecord(const std::string& data, Record* record) {
    record->clear();
    CPropertyReader reader(data);
    while (!reader.AtEnd()) {
        Property property;
        if (!ReadProperty(reader, &property)) return Status::Corrupt;
        if (FindProperty(*record, property.id) != nullptr) return Status::Corrupt;
        record->push_back(std::move(property));
    }
    return Status::Ok;
}

}  // namespace cedb
