// A row is read field by field; a quoted field may go over several lines.
#include "handset/lists/csv_table.h"

namespace lists {
namespace {

class CCsvReader {
  public:
    CCsvReader(std::string_view bytes, char separator) : bytes_(bytes), separator_(separator) {}

    CsvTable Read() {
        while (at_ < bytes_.size() && table_.fault.empty()) ReadRow();
        return std::move(table_);
    }

  private:
    bool AtEnd() const { return at_ == bytes_.size(); }
    bool AtLineEnd() const { return AtEnd() || bytes_[at_] == '\r' || bytes_[at_] == '\n'; }

    void PassLineEnd() {
        if (AtEnd()) return;
        const bool carriageReturn = bytes_[at_++] == '\r';
        if (carriageReturn && !AtEnd() && bytes_[at_] == '\n') ++at_;
        ++line_;
    }

    void ReadRow() {
        CsvRow row;
        row.line = line_;
        if (AtLineEnd()) return PassLineEnd();
        for (;;) {
            row.fields.emplace_back();
            const bool quoted = !AtLineEnd() && bytes_[at_] == '"';
            if (quoted ? !ReadQuoted(row.fields.back()) : !ReadPlain(row.fields.back())) return;
            if (AtLineEnd()) break;
            ++at_;  // the separator
        }
        PassLineEnd();
        table_.rows.push_back(std::move(row));
    }

    bool ReadPlain(std::string& field) {
        while (!AtLineEnd() && bytes_[at_] != separator_) field.push_back(bytes_[at_++]);
        return true;
    }

    bool ReadQuoted(std::string& field) {
        const std::size_t begin = line_;
        for (++at_; !AtEnd(); ++at_) {
            const char byte = bytes_[at_];
            if (byte == '"') {
                if (at_ + 1 == bytes_.size() || bytes_[at_ + 1] != '"') break;
                ++at_;
            }
            CountLine(byte);
            field.push_back(byte);
        }
        if (AtEnd()) return Fail(begin, "a quote is opened and never closed");
        ++at_;
        if (AtLineEnd() || bytes_[at_] == separator_) return true;
        return Fail(line_, "something stands between a closing quote and the next separator");
    }

    // CR LF is one line end, also inside a field.
    void CountLine(char byte) {
        const bool pair = byte == '\r' && at_ + 1 < bytes_.size() && bytes_[at_ + 1] == '\n';
        if ((byte == '\n' || byte == '\r') && !pair) ++line_;
    }

    bool Fail(std::size_t line, const char* why) {
        table_.fault = "line " + std::to_string(line) + ": " + why;
        return false;
    }

    const std::string_view bytes_;
    const char separator_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    CsvTable table_;
};

bool WantsQuotes(const std::string& field) {
    if (field.empty()) return false;
    const bool blank = field.front() == ' ' || field.back() == ' ' || field.front() == '#';
    return blank || field.find_first_of(",;\t\"\r\n") != std::string::npos;
}

}  // namespace

CsvTable ReadCsv(std::string_view bytes, char separator) {
    return CCsvReader(bytes, separator).Read();
}

void AppendCsvRow(std::string& bytes, const std::vector<std::string>& fields) {
    const char* separator = "";
    for (const std::string& field : fields) {
        bytes += separator;
        separator = ",";
        if (!WantsQuotes(field)) {
            bytes += field;
            continue;
        }
        bytes.push_back('"');
        for (const char byte : field) bytes.append(byte == '"' ? 2 : 1, byte);
        bytes.push_back('"');
    }
    bytes += "\r\n";
}

}  // namespace lists
