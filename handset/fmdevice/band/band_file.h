// Reads band.ini, the file that says what the handset's antenna receives. Portable; UTF-8.
//
// clang-format off
//   [band]
//   wrap=1              ; a seek past one end goes on from the other (1)
//   [9850]              ; a station, by channel value
//   level=45            ; 0 to 100 (40)
//   stereo=1            ; 0 or 1 (0)
//   ps=KORA ONE         ; service name, at most 8 characters; further lines: further names, in turn, at most 8
//   pstime=8            ; seconds for which each name is sent, 1 to 3600 (8)
//   pty=News            ; programme type, by name or number
//   pt=Football         ; programme type name, at most 8 characters
//   rt=Good morning     ; radio text, at most 64 characters; further lines: further texts, at most 16
//   rttime=30           ; seconds for which each text is sent, 1 to 3600 (30)
//   af=101.1 103.4      ; alternative frequencies in MHz, at most 25
//   ct=1                ; the station sends the clock time (0)
//   programme=tone:440  ; see programme.h
// clang-format on
//
// A semicolon at the beginning of a line or behind a blank begins a comment. Keys and section names may be
// written in any letter case. A text that is too long is cut; anything else that is wrong is left out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "handset/fmdevice/band/band.h"

namespace fm {

// Never fails: what could be read is in the band. Each fault is one line, "band.ini:12: …", with `name`
// before the number; after kMaxBandFaults lines one more says that there are others.
inline constexpr std::size_t kMaxBandFaults = 20;
[[nodiscard]] Band ReadBand(std::string_view name, std::string_view text, std::vector<std::string>* faults);

}  // namespace fm
