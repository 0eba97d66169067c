// As much of JSON as it takes to find four values, whatever stands around them.
#include "handset/fmdevice/sdr/sigmf.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace sdr {
namespace {

constexpr int kDeepest = 64;

struct TypeRow {
    std::string_view name;
    SampleForm form;
};
constexpr std::array<TypeRow, 6> kTypes = {{
    {"cu8", SampleForm::kCu8},
    {"ci8", SampleForm::kCs8},
    {"ci16_le", SampleForm::kCs16},
    {"ci16", SampleForm::kCs16},
    {"cf32_le", SampleForm::kCf32},
    {"cf32", SampleForm::kCf32},
}};

// Goes through a text and remembers the values that are wanted, by their path.
class CJsonWalker {
  public:
    CJsonWalker(const std::string& text, SigmfDescription* description)
        : text_(text), description_(*description) {}

    bool Walk() {
        const bool object = Skip() && text_[at_] == '{';
        return object && Value("", 0) && !Skip();
    }

  private:
    // To the next letter that is no blank; whether there is one.
    bool Skip() {
        while (at_ < text_.size() &&
               (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\n' || text_[at_] == '\r')) {
            ++at_;
        }
        return at_ < text_.size();
    }

    bool Take(char letter) {
        if (!Skip() || text_[at_] != letter) return false;
        ++at_;
        return true;
    }

    // Escaped letters are of no concern here; they stay as they are.
    bool String(std::string* value) {
        if (!Take('"')) return false;
        value->clear();
        for (; at_ < text_.size() && text_[at_] != '"'; ++at_) {
            if (text_[at_] == '\\' && at_ + 1 < text_.size()) value->push_back(text_[at_++]);
            value->push_back(text_[at_]);
        }
        return at_ < text_.size() && text_[at_++] == '"';
    }

    bool Value(const std::string& path, int depth) {
        if (depth > kDeepest || !Skip()) return false;
        switch (text_[at_]) {
            case '{':
                return Members(path, depth);
            case '[':
                return Elements(path, depth);
            case '"':
                return Text(path);
            default:
                return Number(path);
        }
    }

    bool Members(const std::string& path, int depth) {
        ++at_;
        if (Take('}')) return true;
        std::string name;
        do {
            if (!String(&name) || !Take(':') || !Value(path + "/" + name, depth + 1)) return false;
        } while (Take(','));
        return Take('}');
    }

    bool Elements(const std::string& path, int depth) {
        ++at_;
        if (Take(']')) return true;
        do {
            if (!Value(path, depth + 1)) return false;
        } while (Take(','));
        return Take(']');
    }

    bool Text(const std::string& path) {
        std::string value;
        if (!String(&value)) return false;
        if (path == "/global/core:datatype") description_.datatype = value;
        return true;
    }

    // Numbers, and the words true, false and null.
    bool Number(const std::string& path) {
        const std::size_t begin = at_;
        while (at_ < text_.size() &&
               std::string_view("+-.0123456789eEaflnrstu").find(text_[at_]) != std::string_view::npos) {
            ++at_;
        }
        if (at_ == begin) return false;
        const std::string word = text_.substr(begin, at_ - begin);
        if (word == "true" || word == "false" || word == "null") return true;
        char* end = nullptr;
        const double value = std::strtod(word.c_str(), &end);
        if (*end != '\0' || !std::isfinite(value)) return false;
        if (path == "/global/core:sample_rate") description_.rate_Hz = value;
        if (path == "/captures/core:frequency" && !description_.centre_Hz) description_.centre_Hz = value;
        return true;
    }

    const std::string& text_;
    std::size_t at_ = 0;
    SigmfDescription& description_;
};

}  // namespace

std::string ParseSigmf(const std::string& text, SigmfDescription* description) {
    *description = {};
    if (!CJsonWalker(text, description).Walk()) return "the metadata is not a JSON object";
    if (description->datatype.empty()) return "the metadata has no core:datatype";
    for (const TypeRow& row : kTypes) {
        if (row.name == description->datatype) description->form = row.form;
    }
    return {};
}

}  // namespace sdr
