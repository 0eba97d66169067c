// The two forms of CSV.
#include "handset/lists/csv_lists.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "handset/base/ascii.h"
#include "handset/base/utf8.h"
#include "handset/lists/csv_table.h"

namespace lists {
namespace {

constexpr char kModulation[] = "WFM (stereo)";
constexpr char kBandwidth_Hz[] = "200000";
constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr char kUntagged[] = "Untagged";

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& byte : lower) byte = handset::LowerLetter(byte);
    return lower;
}

// Hz, or MHz when that is the only way in which it can be on the air; nothing for what is no number.
std::optional<std::uint32_t> ReadFrequency(std::string_view field) {
    constexpr double kLargest_MHz = 1000.0;
    const std::string text(handset::Trimmed(field));
    if (text.empty() || text.find_first_not_of("0123456789.") != std::string::npos) return std::nullopt;
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (*end != '\0') return std::nullopt;
    return FrequencyOfHertz(number < kLargest_MHz ? number * 1e6 : number);
}

std::string Hertz(std::uint32_t frequency_10kHz) {
    return std::to_string(std::uint64_t{frequency_10kHz} * 10'000);
}

ChannelList& ListNamed(ListFile& file, const std::u16string& name, std::size_t line) {
    const auto found = std::find_if(file.lists.begin(), file.lists.end(),
                                    [&](const ChannelList& list) { return list.name == name; });
    if (found != file.lists.end()) return *found;
    file.lists.push_back({name, {}, line, true});
    return file.lists.back();
}

// --- the complete form ---

enum Column { kFrequencyColumn, kNameColumn, kListColumn, kGuideColumn, kColumns };

struct ColumnName {
    const char* name;  // in small letters
    Column column;
};
// clang-format off
constexpr ColumnName kColumnNames[] = {
    {"frequency",      kFrequencyColumn}, {"frequency (hz)", kFrequencyColumn}, {"freq", kFrequencyColumn},
    {"name",           kNameColumn},      {"description",    kNameColumn},      {"title", kNameColumn},
    {"list",           kListColumn},      {"group",          kListColumn},      {"tags", kListColumn},
    {"guide",          kGuideColumn},     {"comment",        kGuideColumn},
};
// clang-format on

constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);
using Columns = std::array<std::size_t, kColumns>;

Columns ColumnsOf(const CsvRow& header) {
    Columns columns;
    columns.fill(kNoColumn);
    for (std::size_t i = 0; i < header.fields.size(); ++i) {
        const std::string name = Lower(handset::Trimmed(header.fields[i]));
        for (const ColumnName& row : kColumnNames) {
            if (name == row.name && columns[row.column] == kNoColumn) columns[row.column] = i;
        }
    }
    return columns;
}

std::string_view Field(const CsvRow& row, std::size_t column) {
    return column == kNoColumn ? std::string_view() : std::string_view(row.fields[column]);
}

void TakeRow(const CsvRow& row, const Columns& columns, ListFile& file) {
    const auto refuse = [&](const std::string& why) { file.refused.push_back({row.line, why}); };
    const auto text = [&](Column column) {
        return handset::Utf16(Field(row, columns[column])).value_or(u"");
    };
    Channel channel;
    channel.name = text(kNameColumn);
    channel.guide = text(kGuideColumn);
    channel.line = row.line;
    const std::u16string list =
        columns[kListColumn] == kNoColumn ? *handset::Utf16(kUntagged) : text(kListColumn);
    const std::string_view number = Field(row, columns[kFrequencyColumn]);
    if (number.empty() && channel.name.empty() && channel.guide.empty()) {
        ListNamed(file, list, row.line);
        return;
    }
    const auto frequency = ReadFrequency(number);
    if (!frequency) return refuse(Quoted(channel.name) + ": its frequency is no number");
    channel.frequency_10kHz = *frequency;
    ListNamed(file, list, row.line).channels.push_back(std::move(channel));
}

// The separator of the first row: whichever it has the most of.
char SeparatorOf(std::string_view bytes) {
    const std::string_view first = bytes.substr(0, bytes.find_first_of("\r\n"));
    constexpr char kSeparators[] = {',', ';', '\t'};
    return *std::max_element(std::begin(kSeparators), std::end(kSeparators), [&](char one, char other) {
        return std::count(first.begin(), first.end(), one) < std::count(first.begin(), first.end(), other);
    });
}

ListFile ReadTable(std::string_view bytes) {
    ListFile file;
    const CsvTable table = ReadCsv(bytes, SeparatorOf(bytes));
    file.fault = table.fault;
    if (!file.fault.empty()) return file;
    if (table.rows.empty()) {
        file.fault = "it is empty";
        return file;
    }
    const CsvRow& header = table.rows.front();
    const Columns columns = ColumnsOf(header);
    if (columns[kFrequencyColumn] == kNoColumn || columns[kNameColumn] == kNoColumn) {
        file.fault = "its first row does not name the columns \"Frequency\" and \"Name\"";
        return file;
    }
    for (std::size_t i = 1; i < table.rows.size(); ++i) {
        const CsvRow& row = table.rows[i];
        if (row.fields.size() == header.fields.size()) {
            TakeRow(row, columns, file);
        } else {
            file.refused.push_back({row.line, std::to_string(row.fields.size()) +
                                                  " fields where the first row has " +
                                                  std::to_string(header.fields.size())});
        }
    }
    return file;
}

// --- bookmarks ---

constexpr std::size_t kTagFields = 2;       // a tag and its colour
constexpr std::size_t kBookmarkFields = 5;  // as many as the first line of its kind names

std::vector<std::string_view> Split(std::string_view line, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = line.find(separator);
        parts.push_back(handset::Trimmed(line.substr(0, end)));
        if (end == std::string_view::npos) return parts;
        line.remove_prefix(end + 1);
    }
}

void TakeBookmark(const std::vector<std::string_view>& fields, std::size_t line, ListFile& file) {
    Channel channel;
    channel.name = handset::Utf16(fields[1]).value_or(u"");
    channel.line = line;
    const auto frequency = ReadFrequency(fields[0]);
    if (!frequency) {
        file.refused.push_back({line, Quoted(channel.name) + ": its frequency is no number"});
        return;
    }
    channel.frequency_10kHz = *frequency;
    for (const std::string_view tag : Split(fields[4], ',')) {
        const std::string_view name = tag.empty() ? std::string_view(kUntagged) : tag;
        ListNamed(file, handset::Utf16(name).value_or(u""), line).channels.push_back(channel);
    }
}

ListFile ReadBookmarks(std::string_view bytes) {
    ListFile file;
    for (std::size_t line = 1; !bytes.empty(); ++line) {
        const std::size_t end = bytes.find('\n');
        std::string_view text = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        text = handset::Trimmed(text);
        if (text.empty() || text.front() == '#') continue;
        const auto fields = Split(text, ';');
        if (fields.size() == kBookmarkFields) {
            TakeBookmark(fields, line, file);
        } else if (fields.size() != kTagFields) {
            file.refused.push_back({line, std::to_string(fields.size()) + " fields where a bookmark has 5"});
        }
    }
    return file;
}

std::string Padded(const std::string& text, std::size_t width, bool right) {
    const std::size_t length = handset::Utf16(text).value_or(u"").size();
    const std::string blanks(length < width ? width - length : 0, ' ');
    return right ? blanks + text : text + blanks;
}

// What separates the fields of a bookmark, and blanks at its ends, cannot be in a text.
std::string InBookmark(const std::u16string& text, const char* separators, std::size_t* changed) {
    std::string bytes = handset::Utf8(text);
    for (char& byte : bytes) {
        if (std::string_view(separators).find(byte) != std::string_view::npos) byte = ' ';
    }
    bytes = handset::Trimmed(bytes);
    *changed += bytes != handset::Utf8(text) ? 1 : 0;
    return bytes;
}

void Tell(std::size_t count, const char* what, std::vector<std::string>* lost) {
    if (count != 0) lost->push_back(std::to_string(count) + what);
}

}  // namespace

ListFile ReadCsvLists(const std::string& bytes) {
    if (!handset::Utf16(bytes)) {
        ListFile file;
        file.fault = "it is not UTF-8";
        return file;
    }
    std::string_view text = bytes;
    if (text.rfind(kByteOrderMark, 0) == 0) text.remove_prefix(std::size(kByteOrderMark) - 1);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const bool bookmarks = first != std::string_view::npos && text[first] == '#';
    return bookmarks ? ReadBookmarks(text) : ReadTable(text);
}

std::string WriteCsvLists(const std::vector<ChannelList>& lists) {
    std::string bytes;
    AppendCsvRow(bytes, {"Frequency", "Name", "Modulation", "Bandwidth", "List", "Guide"});
    for (const ChannelList& list : lists) {
        const std::string name = handset::Utf8(list.name);
        if (list.channels.empty()) AppendCsvRow(bytes, {"", "", "", "", name, ""});
        for (const Channel& channel : list.channels) {
            AppendCsvRow(bytes, {Hertz(channel.frequency_10kHz), handset::Utf8(channel.name), kModulation,
                                 kBandwidth_Hz, name, handset::Utf8(channel.guide)});
        }
    }
    return bytes;
}

std::string WriteBookmarks(const std::vector<ChannelList>& lists, std::vector<std::string>* lost) {
    std::size_t guides = 0, empty = 0, changed = 0;
    std::string tags = "# Tag name          ;  color\n";
    std::string bookmarks =
        "\n# Frequency ; Name                     ; Modulation          ;  Bandwidth; Tags\n";
    for (const ChannelList& list : lists) {
        const std::string tag = InBookmark(list.name, ";,\r\n", &changed);
        tags += Padded(tag, 20, false) + "; #c0c0c0\n";
        empty += list.channels.empty() ? 1 : 0;
        for (const Channel& channel : list.channels) {
            guides += channel.guide.empty() ? 0 : 1;
            bookmarks += Padded(Hertz(channel.frequency_10kHz), 12, true) + "; " +
                         Padded(InBookmark(channel.name, ";\r\n", &changed), 25, false) + "; " +
                         Padded(kModulation, 20, false) + "; " + Padded(kBandwidth_Hz, 10, true) + "; " +
                         tag + "\n";
        }
    }
    Tell(guides, " programme guides: bookmarks have no place for them", lost);
    Tell(empty, " lists without channels: to bookmarks they are names without a use", lost);
    Tell(changed, " names: bookmarks hold no separators, no line ends and no blanks at the ends", lost);
    return tags + bookmarks;
}

}  // namespace lists
