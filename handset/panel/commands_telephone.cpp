// call.
#include "handset/panel/command.h"
#include "handset/panel/switches.h"
#include "handset/panel/telephone.h"

namespace panel {
namespace {

struct CallVerb {
    const wchar_t* name;
    std::size_t mostArguments;
    bool (*run)(const std::optional<std::wstring>& number);
};
const CallVerb kCallVerbs[] = {
    {L"incoming", 1, CallComesIn},
    {L"outgoing", 1, CallGoesOut},
    {L"talk", 0, [](const std::optional<std::wstring>&) { return CallIsAnswered(); }},
    {L"hangup", 0, [](const std::optional<std::wstring>&) { return CallEnds(); }},
};

int Call(const Arguments& arguments, Console& console) {
    const std::wstring verb = arguments.empty() ? L"" : arguments[0];
    for (const CallVerb& row : kCallVerbs) {
        if (verb != row.name) continue;
        if (arguments.size() > 1 + row.mostArguments) {
            return BadArguments(console, L"call",
                                L"\"" + arguments[1 + row.mostArguments] + L"\" is one argument too many");
        }
        const auto number = arguments.size() > 1 ? std::optional<std::wstring>(arguments[1]) : std::nullopt;
        const bool written = row.run(number);
        TellPanel();
        return Written(console, L"call", written);
    }
    return BadArguments(
        console, L"call",
        L"\"incoming\", \"outgoing\", \"talk\" or \"hangup\" is wanted, " +
            (verb.empty() ? std::wstring(L"nothing was given") : L"\"" + verb + L"\" was given"));
}

const Command kCommands[] = {
    {L"call", Call, L"incoming|outgoing [NUMBER] | talk | hangup", L"telephone calls",
     L"incoming [NUMBER]  it rings; without NUMBER the caller is not known\n"
     L"outgoing [NUMBER]  it dials; without NUMBER the number is not published yet\n"
     L"talk               the call is answered\n"
     L"hangup             the call is over\n"
     L"The state is HKLM System\\State\\Phone in the device's registry: \"Status\" (0x00010000 incoming,\n"
     L"0x00020000 calling, 0x20000000 talking) and \"Caller Number\". A running radio is told.\n"},
};

}  // namespace

CommandGroup TelephoneCommands() {
    return {L"Telephone", kCommands, std::size(kCommands)};
}

}  // namespace panel
