// The resources of a program: from the resource compiler's file (.res) to the tree that the system reads.
#pragma once

#include <cstdint>
#include <string>

#include "device/pe/bytes.h"

namespace pe {

// The bytes of the section .rsrc (PE format, "The .rsrc Section"): three levels of tables by type, name and
// language, each with its texts before its numbers, then the texts, the rows of data and the data. `rva` is
// where the section will begin, since the rows of data hold addresses relative to the image. Throws BadFile
// when `file` is no .res file.
[[nodiscard]] Bytes ResourceSection(const Bytes& file, const std::string& name, std::uint32_t rva);

}  // namespace pe
