// call.
#include "handset/command/choice.h"
#include "handset/controls/telephone.h"

namespace panel {
namespace {

int Call(const Arguments& arguments, CConsole& console) {
    static const std::vector<Choice> kChoices = {
        {L"incoming", [] { return CallComesIn(std::nullopt); }, CallComesIn},
        {L"outgoing", [] { return CallGoesOut(std::nullopt); }, CallGoesOut},
        {L"talk", CallIsAnswered},
        {L"hangup", CallEnds},
    };
    return Choose(console, L"call", arguments, kChoices);
}

const Command kCommands[] = {
    {L"call", Call, L"incoming|outgoing [NUMBER] | talk | hangup", L"telephone calls",
     L"handset call incoming 5550123",
     L"incoming [NUMBER]  it rings; without NUMBER the caller is not known\n"
     L"outgoing [NUMBER]  it dials; without NUMBER the number is not published yet\n"
     L"talk               the call is answered\n"
     L"hangup             the call is over\n"
     L"The state is HKLM System\\State\\Phone in the device's registry: \"Status\" (0x00010000 incoming,\n"
     L"0x00020000 calling, 0x20000000 talking) and \"Caller Number\". A running radio is told; a sleeping\n"
     L"phone wakes for a call.\n"},
};

}  // namespace

CommandGroup TelephoneCommands() {
    return {L"Telephone", kCommands, std::size(kCommands)};
}

}  // namespace panel
