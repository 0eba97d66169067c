#include "device/pe/resources.h"

#include <map>

namespace pe {
namespace {

// A type's or resource's name: a text or a number. Texts come first in a table, each kind in ascending order.
struct Name {
    bool number = false;
    std::u16string text;
    std::uint16_t id = 0;
    bool operator<(const Name& other) const {
        if (number != other.number) return !number;
        return number ? id < other.id : text < other.text;
    }
};

using Languages = std::map<std::uint16_t, Bytes>;
using Names = std::map<Name, Languages>;
using Types = std::map<Name, Names>;

Name ReadName(const Reader& read, std::size_t& at) {
    Name name;
    if (read.U16(at) == 0xFFFF) {
        name.number = true;
        name.id = read.U16(at + 2);
        at += 4;
        return name;
    }
    for (; read.U16(at) != 0; at += 2) name.text.push_back(read.U16(at));
    at += 2;
    return name;
}

Types ReadResources(const Bytes& file, const std::string& fileName) {
    const Reader read(file, fileName);
    // The first header is empty and tells this form from an older one.
    if (file.size() < 32 || read.U32(0) != 0 || read.U32(4) != 32) read.Fail("is no .res file");
    Types types;
    for (std::size_t at = 32; at + 8 <= file.size();) {
        const std::uint32_t size = read.U32(at), header = read.U32(at + 4);
        std::size_t place = at + 8;
        const Name type = ReadName(read, place), name = ReadName(read, place);
        place = RoundUp(place, 4);
        const std::uint16_t language = read.U16(place + 6);
        if (header < 8) read.Fail("has a header without a length at byte " + std::to_string(at));
        if (!types[type][name].emplace(language, read.Part(at + header, size)).second)
            read.Fail("holds a resource twice, at byte " + std::to_string(at));
        at = RoundUp(at + header + size, 4);
    }
    return types;
}

constexpr std::uint32_t kTable = 16, kRow = 8, kDataRow = 16, kSubtable = 0x80000000;

// Lays the tables first, level by level as they are met, and appends what they point to.
class Layout {
  public:
    Layout(const Types& types, std::uint32_t rva) : rva_(rva) {
        std::uint32_t tables = TableSize(types.size()), rows = 0;
        for (const auto& [type, names] : types) {
            tables += TableSize(names.size());
            for (const auto& [name, languages] : names) {
                tables += TableSize(languages.size());
                rows += static_cast<std::uint32_t>(languages.size());
            }
        }
        nextRow_ = tables;
        bytes_.resize(tables + rows * kDataRow);
        PutTypes(types);
        Pad(bytes_, 4);
    }
    [[nodiscard]] Bytes Take() { return std::move(bytes_); }

  private:
    static std::uint32_t TableSize(std::size_t rows) {
        return kTable + kRow * static_cast<std::uint32_t>(rows);
    }

    std::uint32_t NewTable(std::size_t texts, std::size_t numbers) {
        const std::uint32_t at = nextTable_;
        nextTable_ += TableSize(texts + numbers);
        Put16(bytes_, at + 12, static_cast<std::uint32_t>(texts));
        Put16(bytes_, at + 14, static_cast<std::uint32_t>(numbers));
        return at + kTable;
    }

    template <typename Children>
    std::uint32_t NewTable(const std::map<Name, Children>& children) {
        std::size_t texts = 0;
        for (const auto& [name, child] : children) texts += name.number ? 0 : 1;
        return NewTable(texts, children.size() - texts);
    }

    // A text stands with its length behind everything that was laid so far.
    std::uint32_t NameField(const Name& name) {
        if (name.number) return name.id;
        Pad(bytes_, 2);
        const auto at = static_cast<std::uint32_t>(bytes_.size());
        Add16(bytes_, static_cast<std::uint32_t>(name.text.size()));
        for (const char16_t unit : name.text) Add16(bytes_, unit);
        return at | kSubtable;
    }

    void PutTypes(const Types& types) {
        std::uint32_t row = NewTable(types);
        for (const auto& [type, names] : types) {
            Put32(bytes_, row, NameField(type));
            Put32(bytes_, row + 4, nextTable_ | kSubtable);
            PutNames(names);
            row += kRow;
        }
    }
    void PutNames(const Names& names) {
        std::uint32_t row = NewTable(names);
        for (const auto& [name, languages] : names) {
            Put32(bytes_, row, NameField(name));
            Put32(bytes_, row + 4, nextTable_ | kSubtable);
            PutLanguages(languages);
            row += kRow;
        }
    }
    void PutLanguages(const Languages& languages) {
        std::uint32_t row = NewTable(0, languages.size());
        for (const auto& [language, data] : languages) {
            Put32(bytes_, row, language);
            Put32(bytes_, row + 4, nextRow_);
            Pad(bytes_, 8);
            Put32(bytes_, nextRow_, rva_ + static_cast<std::uint32_t>(bytes_.size()));
            Put32(bytes_, nextRow_ + 4, static_cast<std::uint32_t>(data.size()));
            bytes_.insert(bytes_.end(), data.begin(), data.end());
            nextRow_ += kDataRow;
            row += kRow;
        }
    }

    Bytes bytes_;
    std::uint32_t rva_;
    std::uint32_t nextTable_ = 0, nextRow_ = 0;
};

}  // namespace

Bytes ResourceSection(const Bytes& file, const std::string& name, std::uint32_t rva) {
    return Layout(ReadResources(file, name), rva).Take();
}

}  // namespace pe
