#include "tests/device/disassembly.h"

#include <cstdio>
#include <memory>
#include <regex>

namespace device {
namespace {

// Later than version 4 of the architecture, without conditions.
bool IsLater(std::string mnemonic) {
    static const std::regex kLater(
        "blx|bxj|clz|pld|ldrd|strd|mcrr2?|mrrc2?|cdp2|ldc2l?|stc2l?|mcr2|mrc2|bkpt|q(d?add|d?sub)|"
        "smul[bt][bt]|smla[bt][bt]|smlal[bt][bt]|smulw[bt]|smlaw[bt]|movw|movt|bfi|bfc|[us]bfx|"
        "rev(16|sh)?|[us]xta?[bh](16)?|dmb|dsb|isb|(ld|st)rex[bhd]?|[us]div|mls|rbit|nopw?\\.w|"
        "yield|wfe|wfi|sev");
    if (std::regex_match(mnemonic, kLater)) return true;
    mnemonic = std::regex_replace(mnemonic, std::regex("(eq|ne|cs|cc|mi|pl|vs|vc|hi|ls|ge|lt|gt|le)$"), "");
    return std::regex_match(mnemonic, kLater);
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
        const std::string mnemonic = line.substr(name + 1, line.find_first_of("\t ", name + 1) - name - 1);
        if (mnemonic == ".word" || mnemonic == ".short" || mnemonic == ".byte") continue;
        ++result.instructions;
        const bool unknown = line.find("UNDEFINED") != std::string::npos;
        if ((IsLater(mnemonic) || unknown) && !IsOfCoprocessors(function))
            result.beyond.push_back(function + ": " + line);
    }
    return result;
}

}  // namespace device
