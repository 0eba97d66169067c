// What holds for a band read from any text at all; shared by the fuzzers.
#pragma once

#include <algorithm>

#include <string>
#include <string_view>
#include <vector>

#include "handset/base/utf8.h"
#include "handset/fmdevice/band/band_file.h"
#include "handset/fmdevice/band/generators.h"
#include "handset/fmdevice/band/pty_names.h"

// The first promise that the band breaks; null when it keeps them all.
inline const char* BrokenPromise(std::string_view text) {
    std::vector<std::string> faults;
    const fm::Band band = fm::ReadBand("band.ini", text, &faults);
    if (faults.size() > fm::kMaxBandFaults + 1) return "too many faults";
    for (const std::string& fault : faults) {
        if (fault.rfind("band.ini:", 0) != 0 || !handset::IsUtf8(fault)) return "a fault is no plain line";
        if (fault.find_first_of("\r\n") != std::string::npos) return "a fault has several lines";
    }
    for (const auto& [channel, station] : band.stations) {
        const fm::RdsData& rds = station.rds;
        if (!fm::InBand(channel)) return "a station outside the band";
        if (station.level < 0 || station.level > 100) return "a level out of range";
        if (rds.programmeType < -1 || rds.programmeType >= fm::kProgrammeTypes) return "a type out of range";
        if (rds.alternatives_10kHz.size() > fm::kMaxAlternatives) return "too many alternatives";
        for (const auto alternative : rds.alternatives_10kHz) {
            if (!fm::InBand(alternative)) return "an alternative outside the band";
        }
        if (rds.serviceNames.size() > fm::kMaxServiceNames || rds.radioTexts.size() > fm::kMaxRadioTexts)
            return "too many texts";
        if (rds.nameTime_s < 1 || rds.textTime_s < 1) return "a time out of range";
        const auto fits = [](const std::vector<std::string>& texts, std::size_t length) {
            return std::all_of(texts.begin(), texts.end(), [length](const std::string& text) {
                return handset::IsUtf8(text) && !text.empty() && handset::Utf8Prefix(text, length) == text;
            });
        };
        if (!fits(rds.serviceNames, fm::kServiceNameLength)) return "a service name that does not do";
        if (!fits(rds.radioTexts, fm::kRadioTextLength)) return "a radio text that does not do";
        if (!handset::IsUtf8(rds.programText)) return "a text that is not UTF-8";
        float frames[2 * 16];
        fm::MakeGenerator(station.programme)->Render(frames, 16);
        for (const float sample : frames) {
            if (!(sample >= -1.0F && sample <= 1.0F)) return "a programme that is too loud";
        }
    }
    return nullptr;
}
