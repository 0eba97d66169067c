// The device's CEPROPVALs and the engine's properties.
#include "handset/coredll/cedb/property_values.h"

#include <cstring>

#include "handset/base/file_time.h"
#include "handset/base/rows.h"

namespace cedb {
namespace {

constexpr std::size_t kAlignment_bytes = 8;

// How the engine's number is read from a value and put into one.
struct NumberRow {
    std::uint16_t type;
    std::uint64_t (*get)(const CEVALUNION& value);
    void (*set)(CEVALUNION* value, std::uint64_t number);
};

std::uint64_t FromSigned(std::int64_t number) {
    return static_cast<std::uint64_t>(number);
}

// clang-format off
constexpr NumberRow kNumbers[] = {
    {CEVT_I2,   [](const CEVALUNION& v) { return FromSigned(v.iVal); },
                [](CEVALUNION* v, std::uint64_t n) { v->iVal = static_cast<short>(n); }},
    {CEVT_UI2,  [](const CEVALUNION& v) { return std::uint64_t{v.uiVal}; },
                [](CEVALUNION* v, std::uint64_t n) { v->uiVal = static_cast<USHORT>(n); }},
    {CEVT_I4,   [](const CEVALUNION& v) { return FromSigned(v.lVal); },
                [](CEVALUNION* v, std::uint64_t n) { v->lVal = static_cast<LONG>(n); }},
    {CEVT_UI4,  [](const CEVALUNION& v) { return std::uint64_t{v.ulVal}; },
                [](CEVALUNION* v, std::uint64_t n) { v->ulVal = static_cast<ULONG>(n); }},
    {CEVT_BOOL, [](const CEVALUNION& v) { return std::uint64_t{v.boolVal != FALSE}; },
                [](CEVALUNION* v, std::uint64_t n) { v->boolVal = static_cast<BOOL>(n); }},
    {CEVT_R8,   [](const CEVALUNION& v) { std::uint64_t n; std::memcpy(&n, &v.dblVal, sizeof n); return n; },
                [](CEVALUNION* v, std::uint64_t n) { std::memcpy(&v->dblVal, &n, sizeof n); }},
    {CEVT_FILETIME,
                [](const CEVALUNION& v) { return handset::Ticks(v.filetime); },
                [](CEVALUNION* v, std::uint64_t n) { v->filetime = handset::FileTime(n); }},
};
// clang-format on

const NumberRow* FindNumber(std::uint16_t type) {
    return handset::RowWith(kNumbers, &NumberRow::type, type);
}

std::size_t AppendAligned(std::string* block, const void* bytes, std::size_t size) {
    block->resize((block->size() + kAlignment_bytes - 1) / kAlignment_bytes * kAlignment_bytes);
    const std::size_t at = block->size();
    block->append(static_cast<const char*>(bytes), size);
    return at;
}

template <typename T>
T* AsPointer(std::size_t offset) {
    return reinterpret_cast<T*>(offset);
}

template <typename T>
T* Moved(T* offset, BYTE* base) {
    return reinterpret_cast<T*>(base + reinterpret_cast<std::size_t>(offset));
}

}  // namespace

bool ToProperty(const CEPROPVAL& value, Property* property) {
    property->id = value.propid;
    const std::uint16_t type = TypeOf(property->id);
    if (const NumberRow* number = FindNumber(type)) {
        property->number = number->get(value.val);
        return true;
    }
    if (type == CEVT_LPWSTR && value.val.lpwstr != nullptr) {
        property->text = reinterpret_cast<const char16_t*>(value.val.lpwstr);
        return true;
    }
    const CEBLOB& blob = value.val.blob;
    if (type != CEVT_BLOB || (blob.lpb == nullptr && blob.dwCount != 0)) return false;
    property->bytes.assign(reinterpret_cast<const char*>(blob.lpb), blob.dwCount);
    return true;
}

CEPROPVAL ToValue(const Property& property, std::string* block) {
    CEPROPVAL value{};
    value.propid = property.id;
    const std::uint16_t type = TypeOf(property.id);
    if (const NumberRow* number = FindNumber(type)) {
        number->set(&value.val, property.number);
        return value;
    }
    if (type == CEVT_LPWSTR) {
        const std::size_t size = (property.text.size() + 1) * sizeof(wchar_t);
        value.val.lpwstr = AsPointer<WCHAR>(AppendAligned(block, property.text.c_str(), size));
        return value;
    }
    value.val.blob.dwCount = static_cast<DWORD>(property.bytes.size());
    value.val.blob.lpb = AsPointer<BYTE>(AppendAligned(block, property.bytes.data(), property.bytes.size()));
    return value;
}

void Relocate(CEPROPVAL* value, BYTE* base) {
    if ((value->wFlags & CEDB_PROPNOTFOUND) != 0) return;
    if (TypeFromPropID(value->propid) == CEVT_LPWSTR) value->val.lpwstr = Moved(value->val.lpwstr, base);
    if (TypeFromPropID(value->propid) == CEVT_BLOB) value->val.blob.lpb = Moved(value->val.blob.lpb, base);
}

}  // namespace cedb
