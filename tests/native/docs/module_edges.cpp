#include "tests/native/docs/module_edges.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <sstream>

#include "tests/native/docs/source_text.h"

namespace test {
namespace {

struct Function {
    std::string file, name, scope;  // scope: the class before "::"
    std::string before;             // what stands before the name: result and calling convention
    std::string body, handler;
    bool guarded = false;  // a function-try-block with an answer of handset::Edge…
};

bool IsWord(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_';
}

// Behind the bracket that closes the one at `open`.
std::size_t BehindBrackets(const std::string& text, std::size_t open) {
    const std::string pairs = "()[]{}";
    const char opening = text[open];
    const char closing = pairs[pairs.find(opening) + 1];
    int depth = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        if (text[at] == opening) ++depth;
        if (text[at] == closing && --depth == 0) return at + 1;
    }
    return text.size();
}

std::size_t SkipBlanks(const std::string& text, std::size_t at) {
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at])) != 0) ++at;
    return at;
}

std::string WordAt(const std::string& text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && IsWord(text[end])) ++end;
    return text.substr(at, end - at);
}

bool IsKeyword(const std::string& word) {
    static const std::set<std::string> kWords = {
        "if",       "for",     "while",   "switch",   "return",        "sizeof",       "catch",
        "decltype", "alignas", "defined", "noexcept", "static_assert", "__attribute__"};
    return kWords.count(word) != 0;
}

// The words that may stand between a function's parameters and its body.
std::size_t SkipQualifiers(const std::string& text, std::size_t at) {
    static const std::set<std::string> kWords = {"const", "noexcept", "override", "final"};
    for (;;) {
        at = SkipBlanks(text, at);
        const std::string word = WordAt(text, at);
        if (kWords.count(word) == 0) return at;
        at += word.size();
    }
}

// Every function that is defined in a source, also within a class.
std::vector<Function> FunctionsOf(const std::string& file, const std::string& text) {
    std::vector<Function> functions;
    for (std::size_t open = text.find('('); open != std::string::npos; open = text.find('(', open + 1)) {
        std::size_t begin = open;
        while (begin > 0 && IsWord(text[begin - 1])) --begin;
        Function function;
        function.file = file;
        function.name = text.substr(begin, open - begin);
        if (function.name.empty() || IsKeyword(function.name)) continue;
        std::size_t at = SkipQualifiers(text, BehindBrackets(text, open));
        const bool tries = WordAt(text, at) == "try";
        if (tries) at = SkipBlanks(text, at + 3);
        if (at >= text.size() || text[at] != '{') continue;
        const std::size_t end = BehindBrackets(text, at);
        function.body = text.substr(at + 1, end - at - 2);
        if (begin >= 2 && text.compare(begin - 2, 2, "::") == 0) {
            std::size_t scope = begin - 2;
            while (scope > 0 && IsWord(text[scope - 1])) --scope;
            function.scope = text.substr(scope, begin - 2 - scope);
            begin = scope;
        }
        const std::size_t from = text.find_last_of(";{}#", begin == 0 ? 0 : begin - 1);
        function.before =
            text.substr(from == std::string::npos ? 0 : from, begin - (from == std::string::npos ? 0 : from));
        for (at = end; tries && WordAt(text, at = SkipBlanks(text, at)) == "catch";) {
            at = SkipBlanks(text, BehindBrackets(text, text.find('(', at)));
            const std::size_t behind = BehindBrackets(text, at);
            function.handler += text.substr(at, behind - at);
            at = behind;
        }
        function.guarded = tries && function.handler.find("handset::Edge") != std::string::npos;
        functions.push_back(function);
    }
    return functions;
}

std::vector<std::string> Arguments(const std::string& text, std::size_t open) {
    std::vector<std::string> arguments(1);
    const std::size_t end = BehindBrackets(text, open) - 1;
    int depth = 0;
    for (std::size_t at = open + 1; at < end; ++at) {
        if (text[at] == '(') ++depth;
        if (text[at] == ')') --depth;
        if (text[at] == ',' && depth == 0) {
            arguments.emplace_back();
        } else if (std::isspace(static_cast<unsigned char>(text[at])) == 0) {
            arguments.back() += text[at];
        }
    }
    return arguments;
}

// A macro that defines an export, "… Device##name parameters try { … }", makes one of each of its rows.
std::vector<Function> FunctionsOfMacros(const ModuleSources& sources) {
    struct Macro {
        std::size_t place;  // of the parameter that is the name
        Function pattern;
    };
    std::map<std::string, Macro> macros;
    static const std::regex kDefine(R"(#define (\w+)(\([^)]*\))((?:[^\n]*\\\n)*[^\n]*))");
    for (const auto& [file, text] : sources) {
        for (std::sregex_iterator at(text.begin(), text.end(), kDefine), end; at != end; ++at) {
            const std::string body = std::regex_replace((*at)[3].str(), std::regex(R"(\\\n)"), "\n");
            std::smatch name;
            if (!std::regex_search(body, name, std::regex(R"(Device##(\w+)\s+\w+\s*(try)?\s*\{)"))) continue;
            const std::vector<std::string> parameters = Arguments((*at)[2].str(), 0);
            Macro macro;
            macro.place = static_cast<std::size_t>(
                std::find(parameters.begin(), parameters.end(), name[1].str()) - parameters.begin());
            macro.pattern.file = file;
            macro.pattern.guarded = name[2].matched && body.find("handset::Edge") != std::string::npos;
            macros[(*at)[1].str()] = macro;
        }
    }
    std::vector<Function> functions;
    static const std::regex kRow(R"(\n(\w+)\()");
    for (const auto& [file, text] : sources) {
        for (std::sregex_iterator at(text.begin(), text.end(), kRow), end; at != end; ++at) {
            const auto macro = macros.find((*at)[1].str());
            if (macro == macros.end()) continue;
            const auto arguments =
                Arguments(text, static_cast<std::size_t>(at->position() + at->length()) - 1);
            Function function = macro->second.pattern;
            if (macro->second.place >= arguments.size()) continue;
            function.file = file;
            function.name = "Device" + arguments[macro->second.place];
            function.body = arguments[macro->second.place] + "()";
            functions.push_back(function);
        }
    }
    return functions;
}

using Names = std::set<std::string>;

// What runs in a lambda that is handed to one of `keepers` ends there.
std::string WithoutKeptLambdas(std::string body, const Names& keepers) {
    for (const std::string& keeper : keepers) {
        for (std::size_t at = 0; (at = body.find(keeper + "(", at)) != std::string::npos;
             at += keeper.size()) {
            if (at > 0 && IsWord(body[at - 1])) continue;
            const std::size_t open = at + keeper.size();
            for (std::size_t from = open; from < BehindBrackets(body, open);) {
                if (body.compare(from, 3, "[&]") != 0) {
                    ++from;
                    continue;
                }
                const std::size_t brace = body.find('{', from);
                body.erase(from, BehindBrackets(body, brace) - from);
            }
        }
    }
    return body;
}

// The functions that a body calls, and what else in it may throw.
Names CalledBy(const std::string& body) {
    Names called;
    static const std::regex kMore(R"(\b(new|throw)\b|\bstd::\w+)");
    for (std::sregex_iterator at(body.begin(), body.end(), kMore), end; at != end; ++at)
        called.insert(at->str());
    for (std::size_t open = body.find('('); open != std::string::npos; open = body.find('(', open + 1)) {
        std::size_t begin = open;
        while (begin > 0 && IsWord(body[begin - 1])) --begin;
        const std::string name = body.substr(begin, open - begin);
        if (!name.empty() && !IsKeyword(name)) called.insert(name);
    }
    return called;
}

// Class::Name of the methods that the module's classes declare.
Names DeclaredMethods(const ModuleSources& sources) {
    Names methods;
    static const std::regex kWord(R"(\b(?:class|struct)\s+(\w+)[^;{}()]*\{|STDMETHODCALLTYPE\s+(\w+)\()");
    for (const auto& [file, text] : sources) {
        std::string scope;
        for (std::sregex_iterator at(text.begin(), text.end(), kWord), end; at != end; ++at) {
            if ((*at)[1].matched) scope = (*at)[1];
            if ((*at)[2].matched) methods.insert(scope + "::" + (*at)[2].str());
        }
    }
    return methods;
}

bool Mentions(const std::string& text, const std::string& word) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; ++at) {
        const std::size_t end = at + word.size();
        if ((at == 0 || !IsWord(text[at - 1])) && (end == text.size() || !IsWord(text[end]))) return true;
    }
    return false;
}

// The calling conventions of what the host calls.
bool IsProcedure(const Function& function) {
    static const std::vector<std::string> kConventions = {"WINAPI", "WINAPIV", "CALLBACK", "STDAPI"};
    return std::any_of(kConventions.begin(), kConventions.end(),
                       [&](const std::string& word) { return Mentions(function.before, word); });
}

}  // namespace

std::set<std::string> SuppliedBy(const std::string& def) {
    std::set<std::string> names;
    std::istringstream lines(def);
    bool exports = false;
    static const std::regex kRow(R"(^\s+([\w.]+)(?:\s*=\s*([\w.]+))?)");
    for (std::string line; std::getline(lines, line);) {
        line = line.substr(0, line.find(';'));
        std::smatch row;
        if (line.rfind("EXPORTS", 0) == 0) exports = true;
        if (!exports || Mentions(line, "DATA")) continue;
        if (!std::regex_search(line, row, kRow)) continue;
        const std::string name = row[2].matched ? row[2] : row[1];
        if (name.find('.') == std::string::npos) names.insert(name);
    }
    return names;
}

ModuleEdges EdgesOf(const std::string& def, const ModuleSources& sources) {
    ModuleSources bare;
    for (const auto& [file, text] : sources) bare[file] = WithoutComments(text, true);
    const Names supplied = SuppliedBy(def), methods = DeclaredMethods(bare);
    std::vector<Function> functions = FunctionsOfMacros(bare);
    for (const auto& [file, text] : bare) {
        for (Function& function : FunctionsOf(file, text)) functions.push_back(std::move(function));
    }

    ModuleEdges edges;
    std::vector<const Function*> found;
    Names guarded = {"KeepWorking"};
    for (const Function& function : functions) {
        const bool method = Mentions(function.before, "STDMETHODCALLTYPE") ||
                            methods.count(function.scope + "::" + function.name) != 0;
        const bool procedure = IsProcedure(function);
        const bool exported = supplied.count(function.name) != 0 && function.scope.empty();
        if (function.guarded) guarded.insert(function.name);
        if (!method && !procedure && !exported) continue;
        found.push_back(&function);
        if (exported) {
            edges.exports.insert(function.name);
        } else if (method) {
            edges.methods.insert(function.file + ": " + function.scope + "::" + function.name);
        } else {
            edges.procedures.insert(function.name);
        }
    }
    for (const std::string& name : supplied) {
        if (edges.exports.count(name) == 0)
            edges.complaints.push_back(name + " is exported and nowhere defined");
    }

    // A name is as good as the worst function of that name.
    Names good = guarded, bad;
    for (const Function* edge : found) good.insert(edge->name);
    for (const Function& function : functions) {
        const bool edge = std::find(found.begin(), found.end(), &function) != found.end();
        if (!function.guarded && !edge) good.erase(function.name);
    }
    for (bool changed = true; changed;) {
        changed = false;
        for (const Function* edge : found) {
            if (edge->guarded || bad.count(edge->name) != 0) continue;
            const Names called = CalledBy(WithoutKeptLambdas(edge->body, guarded));
            if (std::includes(good.begin(), good.end(), called.begin(), called.end())) continue;
            bad.insert(edge->name);
            good.erase(edge->name);
            changed = true;
        }
    }
    for (const Function* edge : found) {
        if (edge->guarded) continue;
        Names unsafe;
        for (const std::string& name : CalledBy(WithoutKeptLambdas(edge->body, guarded))) {
            if (good.count(name) == 0) unsafe.insert(name);
        }
        if (unsafe.empty()) continue;
        std::string what = edge->file + ": " + edge->name + " has no handler and calls";
        for (const std::string& name : unsafe) what += " " + name;
        edges.complaints.push_back(what);
    }
    return edges;
}

std::vector<std::string> UnguardedThreads(const std::string& source, bool hasProcedures) {
    static const std::regex kStart(
        R"(std::(j?thread\s*[({]|j?thread\s+\w+\s*[({]|async\b)|\b(_beginthread\w*|CreateThread)\s*\()");
    std::vector<std::string> lines;
    std::istringstream text(WithoutComments(source, true));
    for (std::string line; std::getline(text, line);) {
        std::smatch start;
        if (!std::regex_search(line, start, kStart)) continue;
        if (hasProcedures && start[2] == "CreateThread") continue;
        lines.push_back(line);
    }
    return lines;
}

}  // namespace test
