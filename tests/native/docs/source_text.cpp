#include "tests/native/docs/source_text.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>

namespace test {
namespace {

// Index behind the text or character constant that begins at `at`.
std::size_t EndOfLiteral(const std::string& source, std::size_t at) {
    const char quote = source[at];
    if (quote == '"' && at > 0 && source[at - 1] == 'R') {
        const std::size_t open = source.find('(', at);
        const std::string close = ")" + source.substr(at + 1, open - at - 1) + "\"";
        return std::min(source.find(close, open), source.size() - close.size()) + close.size();
    }
    for (++at; at < source.size() && source[at] != quote; ++at) {
        if (source[at] == '\\') ++at;
    }
    return std::min(at + 1, source.size());
}

std::size_t EndOfComment(const std::string& source, std::size_t at) {
    const bool line = source[at + 1] == '/';
    const std::size_t end = source.find(line ? "\n" : "*/", at + 2);
    return end == std::string::npos ? source.size() : end + (line ? 0 : 2);
}

// Formats that hand on a line that is written elsewhere: to the debug output as much as it takes, to the
// console all.
constexpr char kAnyTrace[] = "%.127s", kAnyPrint[] = "%s";

bool IsDigitSeparator(const std::string& source, std::size_t at) {
    return source[at] == '\'' && at > 0 && std::isxdigit(static_cast<unsigned char>(source[at - 1])) != 0;
}

}  // namespace

std::string ReadSource(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::set<std::filesystem::path> CppFiles(const std::filesystem::path& root,
                                         const std::set<std::string>& folders) {
    std::set<std::filesystem::path> files;
    for (const std::string& folder : folders) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            const std::string kind = entry.path().extension().string();
            if (kind == ".cpp" || kind == ".h") files.insert(entry.path());
        }
    }
    return files;
}

std::string WithoutComments(const std::string& source, bool texts) {
    std::string bare = source;
    const auto blank = [&](std::size_t from, std::size_t to) {
        for (; from < to; ++from) {
            if (bare[from] != '\n') bare[from] = ' ';
        }
    };
    for (std::size_t at = 0; at < source.size();) {
        const bool comment = source.compare(at, 2, "//") == 0 || source.compare(at, 2, "/*") == 0;
        if (comment) {
            const std::size_t end = EndOfComment(source, at);
            blank(at, end);
            at = end;
        } else if ((source[at] == '"' || source[at] == '\'') && !IsDigitSeparator(source, at)) {
            const std::size_t end = EndOfLiteral(source, at);
            if (texts) blank(at, end);
            at = end;
        } else {
            ++at;
        }
    }
    return bare;
}

std::string LinesWith(const std::string& text, const std::set<std::string>& words) {
    std::string found;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto has = [&line](const std::string& word) { return line.find(word) != std::string::npos; };
        if (std::any_of(words.begin(), words.end(), has)) found += line + "\n";
    }
    return found;
}

std::set<std::string> TestsOf(const std::string& source) {
    const std::string bare = WithoutComments(source, true);
    static const std::regex kTest(R"(\bTEST(?:_F|_P)?\s*\(\s*(\w+)\s*,\s*(\w+)\s*\))");
    std::set<std::string> tests;
    for (std::sregex_iterator match(bare.begin(), bare.end(), kTest), end; match != end; ++match) {
        const std::string name = (*match)[2];
        if (name.rfind("DISABLED_", 0) != 0) tests.insert((*match)[1].str() + "." + name);
    }
    return tests;
}

std::set<std::string> TracedBy(const std::string& source) {
    const std::string bare = WithoutComments(source);
    static const std::regex kText(R"re("((?:[^"\\]|\\.)*)")re");
    static const std::regex kTraced(R"((NKDbgPrintfW|printf)\(\s*(\w+ \? )?L?$)");
    static const std::regex kOtherArm(R"(NKDbgPrintfW\([^;]*: L$)");
    std::set<std::string> lines;
    for (std::sregex_iterator match(bare.begin(), bare.end(), kText), end; match != end; ++match) {
        const std::string text = (*match)[1];
        const auto at = static_cast<std::size_t>(match->position());
        const std::string before = bare.substr(at < 90 ? 0 : at - 90, std::min<std::size_t>(at, 90));
        const bool formatsOnly =
            before.find("swprintf(") != std::string::npos && before.find(';') == std::string::npos;
        const bool traced =
            !formatsOnly && (std::regex_search(before, kTraced) || std::regex_search(before, kOtherArm));
        const bool handsOn = text == kAnyTrace || (text == kAnyPrint && before.back() != 'L');
        if (!handsOn && (traced || text.find("\\n") != std::string::npos)) lines.insert(text);
    }
    return lines;
}

std::optional<std::size_t> MostCharacters(const std::string& format) {
    // Of a number of 32 bits, with its sign.
    static const std::map<char, std::size_t> kDigits = {{'d', 11}, {'u', 10}, {'x', 8}};
    static const std::regex kPart(R"(%(\d*)(?:\.(\d+))?l?([a-zA-Z%])|\\.|[^])");
    std::size_t most = 0;
    for (std::sregex_iterator part(format.begin(), format.end(), kPart), end; part != end; ++part) {
        const std::string kind = (*part)[3], bound = (*part)[2];
        if (kind.empty() || kind == "%") {
            ++most;
        } else if (kind == "s") {
            if (bound.empty()) return std::nullopt;
            most += std::stoul(bound);
        } else {
            const std::string width = (*part)[1];
            most += std::max<std::size_t>(kDigits.at(kind[0]), width.empty() ? 0 : std::stoul(width));
        }
    }
    return most;
}

int KeptIn(const std::string& source) {
    static const std::regex kKept(R"(// Kept:)");
    return static_cast<int>(
        std::distance(std::sregex_iterator(source.begin(), source.end(), kKept), std::sregex_iterator()));
}

}  // namespace test
