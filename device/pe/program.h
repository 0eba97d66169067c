// A Windows CE program, as the phone's loader takes it, made of a linked ELF image.
#pragma once

#include "device/pe/bytes.h"
#include "device/pe/elf_image.h"

namespace pe {

// The file's bytes: machine ARM, subsystem "Windows CE GUI" 5.2. Sections stay where the linker put them;
// behind them come the imports by name (of the symbols "__import:DLL:FUNCTION"), one row a function for the
// unwinder (.pdata), the resources and the fixups. `resources` is a .res file's content, or empty. The same
// input gives the same bytes. Throws BadFile, naming `name`, when the image cannot be laid out so.
[[nodiscard]] Bytes MakeProgram(const ElfImage& image, const Bytes& resources, const std::string& name);

}  // namespace pe
