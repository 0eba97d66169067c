#include "tests/mutants/mutations.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <string_view>

namespace mutants {
namespace {

struct Swap {
    std::string_view before, after;
};

// clang-format off
constexpr std::array kOperators = {
    Swap{" < ", " <= "},  Swap{" <= ", " < "},  Swap{" > ", " >= "},  Swap{" >= ", " > "},
    Swap{" == ", " != "}, Swap{" != ", " == "}, Swap{" && ", " || "}, Swap{" || ", " && "},
    Swap{" + ", " - "},   Swap{" - ", " + "},   Swap{" += ", " -= "}, Swap{" -= ", " += "},
};
constexpr std::array kWords = {
    Swap{"true", "false"}, Swap{"false", "true"}, Swap{"TRUE", "FALSE"}, Swap{"FALSE", "TRUE"},
};
constexpr std::array<std::string_view, 12> kNoCalls = {
    "return", "if", "for", "while", "switch", "delete", "throw", "static_assert", "sizeof", "case", "else", "assert"};
// clang-format on

bool InWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// The source with everything that is no code turned into blanks, byte for byte, so that offsets stay.
class CodeOnly {
  public:
    explicit CodeOnly(const std::string& source) : text_(source) {
        while (at_ < text_.size()) Step();
    }
    [[nodiscard]] const std::string& Text() const { return text_; }

  private:
    void Step() {
        if (text_[at_] == '#' && FirstOnLine()) {
            BlankDirective();
        } else if (text_.compare(at_, 2, "//") == 0) {
            BlankTo(text_.find('\n', at_));
        } else if (text_.compare(at_, 2, "/*") == 0) {
            BlankTo(After("*/", at_ + 2));
        } else if (text_[at_] == '"') {
            BlankTo(EndOfQuote('"'));
        } else if (text_[at_] == '\'' && (at_ == 0 || !IsDigit(text_[at_ - 1]))) {
            BlankTo(EndOfQuote('\''));
        } else {
            ++at_;
        }
    }

    [[nodiscard]] bool FirstOnLine() const {
        const std::size_t before = text_.find_last_not_of(" \t", at_ - 1);
        return at_ == 0 || before == std::string::npos || text_[before] == '\n';
    }
    [[nodiscard]] std::size_t After(std::string_view end, std::size_t from) const {
        const std::size_t found = text_.find(end, from);
        return found == std::string::npos ? found : found + end.size();
    }
    [[nodiscard]] std::size_t EndOfQuote(char quote) const {
        std::size_t end = at_ + 1;
        while (end < text_.size() && text_[end] != quote) end += text_[end] == '\\' ? 2 : 1;
        return end + 1;
    }
    void BlankDirective() {
        std::size_t end = text_.find('\n', at_);
        while (end != std::string::npos && text_[end - 1] == '\\') end = text_.find('\n', end + 1);
        BlankTo(end);
    }
    void BlankTo(std::size_t end) {
        for (end = std::min(end, text_.size()); at_ < end; ++at_) {
            if (text_[at_] != '\n') text_[at_] = '\v';
        }
    }

    std::string text_;
    std::size_t at_ = 0;
};

// A whole number, in decimal or hexadecimal digits: one more. Nothing for a number with a point or an
// exponent.
bool OneMore(std::string_view number, std::string& more) {
    if (number.find('.') != std::string_view::npos) return false;
    const bool hex = number.size() > 2 && (number[1] == 'x' || number[1] == 'X');
    const std::string_view digits = hex ? "0123456789abcdefABCDEF'" : "0123456789'";
    std::size_t end = hex ? number.find_first_not_of(digits, 2) : number.find_first_not_of(digits);
    if (end == std::string_view::npos) end = number.size();
    const std::string_view suffix = number.substr(end);
    if (suffix.find_first_not_of("uUlL") != std::string_view::npos) return false;
    std::string plain(number.substr(0, end));
    plain.erase(std::remove(plain.begin(), plain.end(), '\''), plain.end());
    const std::uint64_t value = std::stoull(plain, nullptr, hex ? 16 : 10);
    if (value == UINT64_MAX) return false;
    more = std::to_string(value + 1) + std::string(suffix);
    return true;
}

class Finder {
  public:
    explicit Finder(const std::string& source) : source_(source), code_(source) {
        std::size_t begin = 0;
        while (begin < source_.size()) {
            const std::size_t end = std::min(source_.find('\n', begin), source_.size());
            ++line_;
            Look(begin, end);
            begin = end + 1;
        }
    }
    [[nodiscard]] std::vector<Mutation> Take() { return std::move(found_); }

  private:
    void Look(std::size_t begin, std::size_t end) {
        const std::string_view line = std::string_view(code_.Text()).substr(begin, end - begin);
        if (line.find("static_assert") != std::string_view::npos) return;
        LookForCall(begin, line);
        for (std::size_t i = 0; i < line.size();) i = LookAt(begin, line, i);
    }

    // What stands at one place of the line; the place to go on from.
    std::size_t LookAt(std::size_t begin, std::string_view line, std::size_t i) {
        if (InWord(line[i])) {
            std::size_t end = i;
            while (end < line.size() &&
                   (InWord(line[end]) || (IsDigit(line[i]) && (line[end] == '.' || line[end] == '\''))))
                ++end;
            if (!IsNothing(line, i, end)) LookAtWord(begin + i, line.substr(i, end - i));
            return end;
        }
        if (line[i] == '!' && line.substr(i, 2) != "!=" && i + 1 < line.size()) Add(begin + i, "!", "");
        for (const Swap& swap : kOperators) {
            if (line.substr(i, swap.before.size()) == swap.before) Add(begin + i, swap.before, swap.after);
        }
        return i + 1;
    }

    // A 0 among the arguments of a call mostly says that there is nothing: another number would say so too.
    static bool IsNothing(std::string_view line, std::size_t begin, std::size_t end) {
        if (line.substr(begin, end - begin) != "0" || begin < 1 || end >= line.size()) return false;
        const bool after = line[begin - 1] == '(' || (begin >= 2 && line.substr(begin - 2, 2) == ", ");
        return after && (line[end] == ',' || line[end] == ')');
    }

    void LookAtWord(std::size_t offset, std::string_view word) {
        std::string more;
        if (IsDigit(word[0])) {
            if (OneMore(word, more)) Add(offset, word, more);
            return;
        }
        for (const Swap& swap : kWords) {
            if (word == swap.before) Add(offset, swap.before, swap.after);
        }
    }

    // A statement of one line that is nothing but a call: no type and no result before its name.
    void LookForCall(std::size_t begin, std::string_view line) {
        const std::size_t first = line.find_first_not_of(" \t\v");
        if (first == std::string_view::npos || line.size() < 2) return;
        const std::size_t last = line.find_last_not_of(" \t\v");
        if (last < 1 || line.substr(last - 1, 2) != ");") return;
        const std::size_t bracket = line.find('(', first);
        if (bracket == std::string_view::npos || bracket == first) return;
        const std::string_view name = line.substr(first, bracket - first);
        if (name.find_first_of(" ={}") != std::string_view::npos || !StatementBegins(begin + first)) return;
        for (const std::string_view word : kNoCalls) {
            if (name == word) return;
        }
        Add(begin + first, source_.substr(begin + first, last - first), "");
    }

    // The line before has ended a statement, a block or a head: this one is no rest of a longer call.
    [[nodiscard]] bool StatementBegins(std::size_t offset) const {
        const std::size_t before = code_.Text().find_last_not_of(" \t\n\v", offset - 1);
        return offset == 0 || before == std::string::npos ||
               std::string_view(";{}:)").find(code_.Text()[before]) != std::string_view::npos;
    }

    void Add(std::size_t offset, std::string_view before, std::string_view after) {
        found_.push_back({offset, std::string(before), std::string(after), line_});
    }

    const std::string& source_;
    CodeOnly code_;
    std::vector<Mutation> found_;
    int line_ = 0;
};

}  // namespace

std::vector<Mutation> MutationsOf(const std::string& source) {
    return Finder(source).Take();
}

std::string Apply(const std::string& source, const Mutation& mutation) {
    std::string changed = source;
    return changed.replace(mutation.offset, mutation.before.size(), mutation.after);
}

}  // namespace mutants
