// antenna, ether: what the radio receives with.
#include <algorithm>

#include "handset/base/antenna_text.h"
#include "handset/command/antenna.h"
#include "handset/command/choice.h"
#include "handset/command/command.h"
#include "handset/controls/encoding.h"
#include "handset/controls/host_folder.h"
#include "handset/service/ether_service.h"
#include "handset/state/handset_state.h"
#include "handset/state/reception_state.h"

namespace panel {
namespace {

constexpr std::uint64_t kMostGain = 255;
constexpr std::int64_t kMostCorrection_ppm = 1000;

// A whole number with or without a sign.
std::optional<std::int64_t> ParseSigned(const std::wstring& text) {
    const bool negative = !text.empty() && text[0] == L'-';
    const bool hasSign = negative || (!text.empty() && text[0] == L'+');
    const auto number = ParseNumber(hasSign ? text.substr(1) : text);
    if (!number || *number > INT32_MAX) return std::nullopt;
    return negative ? -static_cast<std::int64_t>(*number) : static_cast<std::int64_t>(*number);
}

// What is to be written, and what was not understood.
struct Change {
    const wchar_t* value = nullptr;
    std::uint32_t number = 0;
    std::wstring fault;
};

Change Gain(const std::wstring& text) {
    if (text == L"auto") return {L"AntennaGain", handset::kAutomaticGain, L""};
    const auto step = ParseNumber(text);
    if (step && *step <= kMostGain) return {L"AntennaGain", static_cast<std::uint32_t>(*step), L""};
    return {nullptr, 0, L"\"" + text + L"\" is no gain: \"auto\" or a step, 0 being the lowest"};
}

Change Correction(const std::wstring& text) {
    const auto ppm = ParseSigned(text);
    if (ppm && *ppm >= -kMostCorrection_ppm && *ppm <= kMostCorrection_ppm)
        return {L"AntennaPpm", static_cast<std::uint32_t>(*ppm), L""};
    return {nullptr, 0, L"\"" + text + L"\" is no correction: -1000 to 1000 ppm"};
}

Change DeEmphasis(const std::wstring& text) {
    if (text == L"50" || text == L"75") return {L"AntennaDeemphasis", text == L"50" ? 50U : 75U, L""};
    return {nullptr, 0,
            L"\"" + text + L"\" is no de-emphasis: 50 (most of the world) or 75 (the Americas, Korea)"};
}

Change BiasTee(const std::wstring& text) {
    if (text == L"on" || text == L"off") return {L"AntennaBias", text == L"on" ? 1U : 0U, L""};
    return {nullptr, 0, L"\"" + text + L"\" is neither \"on\" nor \"off\""};
}

struct Setting {
    const wchar_t* word;
    Change (*read)(const std::wstring& text);
};
constexpr Setting kSettings[] = {
    {L"gain", Gain}, {L"ppm", Correction}, {L"deemphasis", DeEmphasis}, {L"bias", BiasTee}};

const Setting* FindSetting(const std::wstring& word) {
    const auto* found = std::find_if(std::begin(kSettings), std::end(kSettings),
                                     [&](const Setting& setting) { return word == setting.word; });
    return found == std::end(kSettings) ? nullptr : found;
}

// A file's path as the host has it, whatever folder the radio runs in.
std::wstring WithFullPath(const std::wstring& text) {
    constexpr std::size_t kPrefix = 5;  // file:
    const std::size_t end = std::min(text.find(L';'), text.size());
    return text.substr(0, kPrefix) + FullHostPath(text.substr(kPrefix, end - kPrefix)) + text.substr(end);
}

// Checked and complete: `antenna` as the radio will read it. Result: what is wrong.
std::wstring Resolve(std::wstring* antenna) {
    if (*antenna == L"ether") return L"";
    handset::Antenna parsed;
    const std::string fault = handset::ParseAntenna(Utf8(*antenna), &parsed);
    if (!fault.empty()) return Wide(fault);
    if (parsed.kind != handset::AntennaKind::kFile) return L"";
    *antenna = WithFullPath(*antenna);
    const std::wstring path = FullHostPath(Wide(parsed.path));
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return L"there is no file " + path;
    return L"";
}

int Choose(CConsole& console, const std::wstring& antenna) {
    std::wstring chosen = antenna;
    if (antenna == L"ether") {
        const auto port = StartEther();
        if (!port)
            return Failure(console, L"antenna", L"the ether did not start; \"handset ether\" says why");
        chosen = EtherAntenna(*port);
    }
    const bool written = handset::SetStateString(L"Antenna", chosen);
    // Nobody hears it any more.
    const auto port = EtherPort();
    if (written && port && chosen != EtherAntenna(*port)) StopEther();
    return Turned(console, L"antenna", written);
}

int Antenna(const Arguments& arguments, CConsole& console) {
    if (arguments.empty()) {
        console.Line(L"antenna    " + AntennaText());
        console.Line(L"reception  " + ReceptionText());
        return kDone;
    }
    std::optional<std::wstring> antenna;
    std::vector<Change> changes;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Setting* setting = FindSetting(arguments[i]);
        if (setting == nullptr) {
            if (antenna) {
                return BadArguments(console, L"antenna",
                                    L"\"" + arguments[i] + L"\" is none of gain, ppm, deemphasis and bias");
            }
            antenna = arguments[i];
            const std::wstring fault = Resolve(&*antenna);
            if (!fault.empty()) return BadArguments(console, L"antenna", fault);
            continue;
        }
        if (++i == arguments.size()) {
            return BadArguments(console, L"antenna",
                                L"behind \"" + std::wstring(setting->word) + L"\" a value is wanted");
        }
        changes.push_back(setting->read(arguments[i]));
        if (!changes.back().fault.empty()) return BadArguments(console, L"antenna", changes.back().fault);
    }
    for (const Change& change : changes) {
        const int result = Turned(console, L"antenna", handset::SetStateDword(change.value, change.number));
        if (result != kDone) return result;
    }
    return antenna ? Choose(console, *antenna) : kDone;
}

int Ether(const Arguments& arguments, CConsole& console) {
    if (arguments.size() == 1 && arguments[0] == L"stop") {
        return StopEther() ? kDone : Failure(console, L"ether", L"the ether did not end in 10 s");
    }
    std::uint16_t port = 0;
    ether::StreamOptions options;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const auto number = ParseSigned(i + 1 < arguments.size() ? arguments[i + 1] : L"");
        const auto is = [&](const wchar_t* word, std::int64_t lowest, std::int64_t highest) {
            return arguments[i] == word && number && *number >= lowest && *number <= highest;
        };
        if (is(L"port", 0, UINT16_MAX)) {
            port = static_cast<std::uint16_t>(*number);
        } else if (is(L"crystal", -kMostCorrection_ppm, kMostCorrection_ppm)) {
            options.crystal_ppm = static_cast<double>(*number);
        } else if (is(L"buffer", ether::kLeastBuffer_bytes, ether::kMostBuffer_bytes) && *number % 2 == 0) {
            options.buffer_bytes = static_cast<std::size_t>(*number);
        } else {
            return BadArguments(
                console, L"ether",
                L"\"port\" with 0 to 65535, \"crystal\" with -1000 to 1000 ppm, \"buffer\" with "
                L"16384 to 262144 bytes, or \"stop\" is wanted, " +
                    Given(arguments));
        }
    }
    const std::wstring fault = RunEther(port, options, console);
    return fault.empty() ? kDone : Failure(console, L"ether", fault);
}

const Command kCommands[] = {
    {L"antenna", Antenna, L"[WHAT] [gain auto|N] [ppm N] [deemphasis 50|75] [bias on|off]",
     L"chooses what the radio receives with", L"handset antenna rtl_tcp gain auto",
     L"WHAT is one of\n"
     L"  band                   the simulated band of \\Windows\\band.ini, without any radio waves (the "
     L"first)\n"
     L"  ether                  the same stations as real signals of a simulated stick, which is started\n"
     L"  rtl_tcp[:HOST[:PORT]]  a server of a receiver stick, here (127.0.0.1, port 1234) or elsewhere\n"
     L"  file:PATH              recorded samples: a WAV or SigMF file, or raw ones with what they do not "
     L"say\n"
     L"                         of themselves: file:PATH;rate=HZ;centre=HZ;form=cu8|cs8|cs16|cf32\n"
     L"gain: \"auto\", or a step of the tuner's, 0 being the lowest. ppm: what the stick's crystal is to be\n"
     L"corrected by. deemphasis: 50 µs, or 75 in the Americas and Korea. bias: power for an amplifier at "
     L"the\n"
     L"antenna. Each takes effect while the radio plays. Without arguments: what is chosen and received.\n"},
    {L"ether", Ether, L"[port PORT] [crystal PPM] [buffer BYTES] | stop",
     L"serves the band as a receiver stick would", L"handset ether port 1234",
     L"The stations of \\Windows\\band.ini as real signals with stereo and data, to one client at a time, as "
     L"a\n"
     L"server of a receiver stick sends them: any receiver that takes such a server can be tried on it. Runs "
     L"until\n"
     L"\"handset ether stop\"; the port is any that is free, unless it is given. \"crystal\" is an error of "
     L"the\n"
     L"stick's clock; \"buffer\", how much is sent at a time (262144, as a stick's server does; less of it\n"
     L"lets a seek go faster). \"handset antenna ether\" starts one by itself.\n"},
};

}  // namespace

CommandGroup AntennaCommands() {
    return {L"The antenna", kCommands, std::size(kCommands)};
}

}  // namespace panel
