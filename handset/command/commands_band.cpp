// band: what is on the air.
#include "handset/command/command.h"
#include "handset/controls/encoding.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/station_name.h"
#include "handset/controls/switches.h"
#include "handset/fmdevice/band/band_edit.h"
#include "handset/fmdevice/band/band_file.h"
#include "handset/phone/band_drawing.h"
#include "handset/phone/band_source.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

std::wstring BandPath() {
    return handset::HostPath(L"\\Windows\\band.ini");
}

std::vector<std::string> FaultsOf(const std::string& text) {
    std::vector<std::string> faults;
    (void)fm::ReadBand("band.ini", text, &faults);
    return faults;
}

std::wstring Padded(const std::wstring& text, std::size_t width) {
    return text + std::wstring(text.size() < width ? width - text.size() : 1, L' ');
}

int List(CConsole& console) {
    const auto text = ReadWholeFile(BandPath());
    if (!text) return Failure(console, L"band", L"there is no " + BandPath());
    std::vector<std::string> faults;
    const fm::Band band = fm::ReadBand("band.ini", *text, &faults);
    for (const auto& [channel, station] : band.stations) {
        const bool tuned = channel == TunedChannel();
        console.Line(Padded(StationText(channel), 7) + Padded(std::to_wstring(station.level), 5) +
                     Padded(station.stereo ? L"stereo" : L"mono", 8) +
                     Padded(Wide(station.rds.serviceNames.empty() ? "-" : station.rds.serviceNames[0]), 10) +
                     (tuned ? L"tuned" : L""));
    }
    for (const std::string& fault : faults) console.Error(Wide(fault));
    return kDone;
}

int Picture(const Arguments& arguments, CConsole& console) {
    if (arguments.size() != 2) return BadArguments(console, L"band", L"--picture wants the name of a file");
    CBandSource source;
    const std::string png = BandPng(source.Look(RadioProcess().has_value()));
    if (png.empty()) return Failure(console, L"band", L"the system has no memory for the picture");
    if (!WriteWholeFile(arguments[1], png))
        return Failure(console, L"band", arguments[1] + L" could not be written");
    return kDone;
}

int Band(const Arguments& arguments, CConsole& console) {
    if (arguments.empty()) return List(console);
    if (arguments[0] == L"--picture") return Picture(arguments, console);
    const auto channel = ParseStation(arguments[0]);
    if (!channel) {
        return BadArguments(console, L"band", L"\"" + arguments[0] + L"\" is no station, such as 98.5");
    }
    if (arguments.size() < 2) return BadArguments(console, L"band", L"a KEY=VALUE is wanted after a station");
    const std::string before = ReadWholeFile(BandPath()).value_or("");
    std::string text = before;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::size_t equals = arguments[i].find(L'=');
        if (equals == std::wstring::npos || equals == 0) {
            return BadArguments(console, L"band", L"\"" + arguments[i] + L"\" is no KEY=VALUE");
        }
        text = fm::SetBandKey(text, *channel, Utf8(arguments[i].substr(0, equals)),
                              Utf8(arguments[i].substr(equals + 1)));
    }
    const auto faults = FaultsOf(text);
    if (faults.size() > FaultsOf(before).size()) return BadArguments(console, L"band", Wide(faults.back()));
    if (!WriteWholeFile(BandPath(), text)) {
        return Failure(console, L"band", BandPath() + L" could not be written");
    }
    return kDone;
}

const Command kCommands[] = {
    {L"band", Band, L"[STATION KEY=VALUE … | --picture FILE.png]", L"what is on the air",
     L"handset band 98.5 level=12",
     L"Without arguments every station of \\Windows\\band.ini: frequency, level, stereo, name. With a "
     L"station,\n"
     L"such as 98.5 (or its channel value 9850), keys of it are changed: level, stereo, ps, pstime, pty, "
     L"pt,\n"
     L"rt, rttime, af, ct, tp, ta, programme. A station that is not there is added. The file may be edited "
     L"by hand "
     L"as\n"
     L"well; the radio follows it as it plays. --picture draws the levels of all channels as they were last\n"
     L"seen, with the tuned one marked and what is known of it.\n"},
};

}  // namespace

CommandGroup BandCommands() {
    return {L"The band", kCommands, std::size(kCommands)};
}

}  // namespace panel
