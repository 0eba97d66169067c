#include "schedule/command_options.h"

#include <cwchar>

namespace {

// A row without a trace line is a mere switch.
struct OptionRow {
    const wchar_t* pszName;
    std::uint32_t CommandLineRequest::*pField;
    const wchar_t* pszTrace;
};

// clang-format off
constexpr OptionRow kOptions[] = {
    {L"-Rec",      &CommandLineRequest::uRecord,       nullptr},
    {L"-Channel",  &CommandLineRequest::uChannel,      L"Channel: %.100s\r\n"},
    {L"-Duration", &CommandLineRequest::uDuration_min, L"Duration: %.100s\r\n"},
};
// clang-format on

// Cuts the next token off `rest`; nullptr when there is none. A single blank is the only separator.
const wchar_t* NextToken(wchar_t*& rest) {
    while (*rest == L' ') ++rest;
    if (*rest == L'\0') return nullptr;
    const wchar_t* token = rest;
    while (*rest != L' ' && *rest != L'\0') ++rest;
    if (*rest == L' ') *rest++ = L'\0';
    return token;
}

const OptionRow* FindOption(const wchar_t* token) {
    for (const OptionRow& row : kOptions) {
        if (std::wcscmp(row.pszName, token) == 0) return &row;
    }
    return nullptr;
}

}  // namespace

void ReadCommandOptions(wchar_t* line, CommandLineRequest& request, OptionTrace trace) {
    wchar_t* rest = line;
    while (const wchar_t* token = NextToken(rest)) {
        const OptionRow* option = FindOption(token);
        if (option == nullptr) continue;
        if (option->pszTrace == nullptr) {
            request.*option->pField = 1;
            continue;
        }
        // The next token is the value whatever it says, another option's name included.
        const wchar_t* value = NextToken(rest);
        if (value == nullptr) return;
        request.*option->pField = static_cast<std::uint32_t>(std::wcstol(value, nullptr, 10));
        trace(option->pszTrace, value);
    }
}
