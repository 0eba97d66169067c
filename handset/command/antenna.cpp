#include "handset/command/antenna.h"

#include <cwchar>

#include "handset/controls/station_name.h"
#include "handset/service/ether_service.h"
#include "handset/state/reception_state.h"

namespace panel {
namespace {

template <typename... Values>
std::wstring Formatted(const wchar_t* format, Values... values) {
    wchar_t text[96];
    const int length = swprintf(text, std::size(text), format, values...);
    return length < 0 ? L"" : text;
}

}  // namespace

std::wstring AntennaText() {
    const handset::AntennaChoice choice = handset::ChosenAntenna();
    if (choice.antenna.empty() || choice.antenna == L"band") return L"the simulated band";
    const auto port = EtherPort();
    std::wstring text = choice.antenna;
    if (port && choice.antenna == EtherAntenna(*port)) text = L"the simulated ether, " + text;
    text += choice.gain == handset::kAutomaticGain ? L", gain auto"
                                                   : L", gain step " + std::to_wstring(choice.gain);
    if (choice.correction_ppm != 0) text += Formatted(L", %+d ppm", static_cast<int>(choice.correction_ppm));
    text += L", " + std::to_wstring(choice.deemphasis_us) + L" µs";
    return choice.bias ? text + L", bias tee on" : text;
}

std::wstring ReceptionText() {
    const auto reception = handset::ReadReception();
    if (!reception) return L"none: the radio does not play";
    std::wstring text = reception->condition;
    if (reception->channel_10kHz != 0) {
        text += L"; " + StationText(reception->channel_10kHz) + L" MHz, level " +
                std::to_wstring(reception->level) + (reception->stereo ? L", stereo" : L", mono");
    }
    if (reception->carrierToNoise_dBHz)
        text += Formatted(L", C/N0 %.1f dB-Hz", *reception->carrierToNoise_dBHz);
    if (reception->offset_Hz) text += Formatted(L", %+d Hz beside", static_cast<int>(*reception->offset_Hz));
    if (reception->blockErrors_percent)
        text += Formatted(L", %u %% block errors", static_cast<unsigned>(*reception->blockErrors_percent));
    if (reception->pi) text += Formatted(L", PI %04X", static_cast<unsigned>(*reception->pi));
    if (reception->trafficProgramme) text += L", TP";
    if (reception->trafficAnnouncement) text += L", TA";
    return text;
}

}  // namespace panel
