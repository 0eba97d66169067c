// Verbs that turn a switch by a word.
#include "handset/command/choice.h"

#include "handset/controls/switches.h"

namespace panel {
namespace {

std::wstring Words(const std::vector<Choice>& choices) {
    std::wstring words;
    for (const Choice& row : choices) {
        const bool last = &row == &choices.back();
        words += (words.empty() ? L"\"" : last ? L" or \"" : L", \"") + std::wstring(row.word) + L"\"";
    }
    return words;
}

}  // namespace

std::wstring Given(const Arguments& arguments) {
    if (arguments.empty()) return L"nothing was given";
    std::wstring text = L"\"" + arguments[0];
    for (std::size_t i = 1; i < arguments.size(); ++i) text += L" " + arguments[i];
    return text + L"\" was given";
}

int Turned(CConsole& console, const wchar_t* verb, bool written) {
    TellPanel();
    return Written(console, verb, written);
}

int Choose(CConsole& console, const wchar_t* verb, const Arguments& arguments,
           const std::vector<Choice>& choices) {
    for (const Choice& row : choices) {
        if (arguments.empty() || arguments[0] != row.word) continue;
        if (arguments.size() == 1 && row.turn) return Turned(console, verb, row.turn());
        if (arguments.size() == 2 && row.turnWith) return Turned(console, verb, row.turnWith(arguments[1]));
        if (arguments.size() > 2 || !row.turnWith) {
            const std::size_t most = row.turnWith ? 2 : 1;
            return BadArguments(
                console, verb, L"\"" + arguments[most] + L"\" is one argument too many; " + Given(arguments));
        }
    }
    return BadArguments(console, verb, Words(choices) + L" is wanted, " + Given(arguments));
}

}  // namespace panel
