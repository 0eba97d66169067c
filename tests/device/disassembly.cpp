#include "tests/device/disassembly.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <regex>

namespace device {
namespace {

// What version 4T of the architecture has, by the disassembler's names; anything else came later.
bool IsLater(const std::string& mnemonic, const std::string& operands) {
    static const std::regex kOfTheProcessor(
        "((adc|add|and|bic|eor|mov|mvn|orr|rsb|rsc|sbc|sub|neg|lsl|lsr|asr|ror|rrx)s?|"
        "(mul|mla|[us]mull|[us]mlal)s?|(cmp|cmn|teq|tst)p?|b|bl|bx|mrs|msr|swi|svc|swpb?|push|pop|nop|udf|"
        "(ldr|str)(b|t|bt|h)?|ldrs[bh]|(ldm|stm)([id][ab]|[fe][ad])?|cdp|ldcl?|stcl?|mcr|mrc)"
        "(eq|ne|cs|cc|mi|pl|vs|vc|hi|ls|ge|lt|gt|le)?");
    // The hint of this name is written with its number; the old one is a mov.
    if (mnemonic == "nop" && operands.find('{') != std::string::npos) return true;
    return !std::regex_match(mnemonic, kOfTheProcessor);
}

bool IsOfCoprocessors(const std::string& function) {
    return function.find("WMMX") != std::string::npos || function.find("VFP") != std::string::npos;
}

}  // namespace

std::vector<std::string> OutputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen((command + " 2>&1").c_str(), "r"), pclose);
    std::vector<std::string> lines(1);
    for (int c; pipe && (c = std::fgetc(pipe.get())) != EOF;) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back().push_back(static_cast<char>(c));
        }
    }
    if (lines.back().empty()) lines.pop_back();
    return lines;
}

// Asked for the old processor alone, the disassembler takes a later instruction for a wrong old one; so it is
// asked for every processor's, and the names are looked at. A function's lines follow "ADDRESS <NAME>:", an
// instruction's fields are separated by tabulators: address, code, name, operands.
Disassembly Disassemble(const std::string& path) {
    Disassembly result;
    std::string function;
    for (const std::string& line : OutputOf("arm-none-eabi-objdump -d '" + path + "'")) {
        if (!line.empty() && line.back() == ':') {
            function = line.substr(0, line.size() - 1);
            continue;
        }
        const std::size_t code = line.find('\t');
        const std::size_t name = code == std::string::npos ? code : line.find('\t', code + 1);
        if (name == std::string::npos) continue;
        const std::size_t end = std::min(line.find_first_of("\t ", name + 1), line.size());
        const std::string mnemonic = line.substr(name + 1, end - name - 1);
        if (mnemonic == ".word" || mnemonic == ".short" || mnemonic == ".byte") continue;
        ++result.instructions;
        const bool unknown = line.find("UNDEFINED") != std::string::npos;
        if ((IsLater(mnemonic, line.substr(end)) || unknown) && !IsOfCoprocessors(function))
            result.beyond.push_back(function + ": " + line);
    }
    return result;
}

}  // namespace device
