// One line of band.ini, taken apart: whoever reads the file and whoever changes it see the same in it.
// Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace fm {

enum class BandLineKind {
    kEmpty,        // nothing but blanks and a comment
    kSection,      // "[name]"
    kOpenSection,  // begins as one and lacks the closing bracket
    kKey,          // "name=value"
    kOther,
};

// The views point into the line; blanks around them are taken off.
struct BandLine {
    BandLineKind kind = BandLineKind::kEmpty;
    std::string_view text;   // the whole, without its comment
    std::string_view name;   // of the section or the key
    std::string_view value;  // of the key
};

// `line` without its line feed; a carriage return at its end belongs to the line's end.
[[nodiscard]] BandLine ReadBandLine(std::string_view line);

// The channel that a section's name says, in units of 10 kHz; nothing for another name.
[[nodiscard]] std::optional<std::uint32_t> SectionChannel(std::string_view name);

// A file may begin with the mark of UTF-8, which is no part of its first line.
[[nodiscard]] std::string_view AfterByteOrderMark(std::string_view text);

// Takes the next line off `text`, without its line feed. There is none when `text` is empty.
[[nodiscard]] std::string_view TakeBandLine(std::string_view& text);

}  // namespace fm
