// Verbs that turn one of the handset's switches: the first argument is one of a few words, and each word does
// something to the switch.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "handset/command/command.h"

namespace panel {

struct Choice {
    const wchar_t* word;
    // May follow the word; "" when it is left out. No second word is understood where there is no `more`.
    std::function<bool()> turn;
    std::function<bool(const std::wstring& more)> turnWith = nullptr;
};

// Turns the switch as the arguments say and tells the panel. kBadUsage, with the words that there are, when
// no choice is meant; kFailed when the user's registry refuses.
int Choose(CConsole& console, const wchar_t* verb, const Arguments& arguments,
           const std::vector<Choice>& choices);
// The same for a change that was understood by the caller.
int Turned(CConsole& console, const wchar_t* verb, bool written);

// "nothing was given", or the arguments in quotation marks with "was given".
std::wstring Given(const Arguments& arguments);

}  // namespace panel
