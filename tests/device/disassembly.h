// The instructions of a program as the toolchain's own disassembler reads them.
#pragma once

#include <string>
#include <vector>

namespace device {

// What a command prints, line by line, complaints included.
[[nodiscard]] std::vector<std::string> OutputOf(const std::string& command);

struct Disassembly {
    std::vector<std::string> beyond;  // "function: line" of each instruction that ARMv4T has not
    std::size_t instructions = 0;
};

// Of an ELF file. Code that the exception library keeps for coprocessors is passed over: it looks for them
// first.
[[nodiscard]] Disassembly Disassemble(const std::string& path);

}  // namespace device
