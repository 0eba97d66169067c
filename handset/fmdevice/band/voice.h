// A murmur that sounds like somebody speaking behind a wall. Portable.
#pragma once

#include <memory>
#include <string_view>

#include "handset/fmdevice/band/generators.h"

namespace fm {

// Another text gives another voice and another row of vowels.
[[nodiscard]] std::unique_ptr<IGenerator> MakeVoice(std::string_view text);

}  // namespace fm
