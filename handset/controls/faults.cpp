// The table of faults.
#include "handset/controls/faults.h"

#include <algorithm>
#include <iterator>

namespace panel {
namespace {

struct FaultRow {
    const wchar_t* name;
    const wchar_t* meaning;
    bool counted = false;  // "name:N", how often it comes; once without a number
};
// clang-format off
constexpr FaultRow kFaults[] = {
    {L"initialize",      L"the tuner device does not start"},
    {L"create",          L"the tuner device cannot be created"},
    {L"seek",            L"every seek fails"},
    {L"monitor",         L"reading the signal crashes once (as crash:GetSignal)"},
    {L"msgqueue",        L"no message queue can be made"},
    {L"power-notify",    L"power notifications are refused"},
    {L"registry-rights", L"the power manager's registry keys are not to be written"},
    {L"database-write",  L"no record can be written"},
    {L"ether-away",      L"the simulated ether sends its clients away, as if the stick was pulled"},
    {L"ether-greeting",  L"the ether greets new clients as another kind of server does"},
    {L"ether-stall",     L"the ether sends nothing more, though the connection stands"},
    {L"ether-slow",      L"every second buffer of the ether is lost on the way"},
    {L"ether-garbage",   L"the ether sends any bytes in the place of samples"},
    {L"suspend",         L"no thread can be suspended, once; suspend:N so many times", true},
};
// The tuner device's operations, in the order of its interface.
constexpr const wchar_t* kOperations[] = {
    L"QueryInterface", L"AddRef",     L"Release",   L"GetVolume",  L"GetChannel", L"Close",     L"SetChannel",
    L"Initialize",     L"Reserved",   L"SetSpeaker", L"SetBTAudio", L"SetMute",    L"SetVolume", L"SeekNext",
    L"SeekPrev",       L"GetSignal",  L"GetRDSData", L"GetStereo",  L"GetAFCount", L"GetAFItem", L"GetRDSInfo",
    L"GetPTYText",
};
// clang-format on
static_assert(std::size(kOperations) == 22, "slots of the interface");
constexpr wchar_t kCrash[] = L"crash:";

bool IsNumber(const std::wstring& text) {
    return !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring::npos;
}

bool Names(const FaultRow& row, const std::wstring& name) {
    if (name == row.name) return true;
    const std::wstring before = row.name + std::wstring(L":");
    return row.counted && name.rfind(before, 0) == 0 && IsNumber(name.substr(before.size()));
}

}  // namespace

bool IsFault(const std::wstring& name) {
    if (name.rfind(kCrash, 0) != 0) {
        return std::any_of(std::begin(kFaults), std::end(kFaults),
                           [&](const FaultRow& row) { return Names(row, name); });
    }
    const std::wstring operation = name.substr(std::size(kCrash) - 1);
    return std::any_of(std::begin(kOperations), std::end(kOperations),
                       [&](const wchar_t* row) { return operation == row; });
}

std::wstring FaultNames() {
    std::wstring names;
    for (const FaultRow& row : kFaults) names += row.name + std::wstring(L", ");
    return names + kCrash + L"OPERATION";
}

std::wstring FaultHelp() {
    std::wstring help = L"Names, parted by blanks; they replace those before:\n";
    const auto line = [&help](const std::wstring& name, const wchar_t* meaning) {
        help += L"  " + name + std::wstring(17 - name.size(), L' ') + meaning + L"\n";
    };
    for (const FaultRow& row : kFaults) line(row.name, row.meaning);
    line(std::wstring(kCrash) + L"OPERATION",
         L"that operation of the tuner raises an access violation, once");
    help += L"\"none\" takes all of them away. The operations are";
    std::size_t column = 49;
    for (const wchar_t* operation : kOperations) {
        const std::wstring word = L" " + std::wstring(operation);
        const bool wrap = column + word.size() > 100;
        help += wrap ? L"\n" + word.substr(1) : word;
        column = wrap ? word.size() - 1 : column + word.size();
    }
    return help + L".\n";
}

}  // namespace panel
