// The command line's dispatch and its help.
#include "handset/command/command.h"

namespace panel {
namespace {

std::wstring Padded(const std::wstring& text, std::size_t width) {
    return text.size() >= width ? text + L" " : text + std::wstring(width - text.size(), L' ');
}

// One line at a time, so that a line is one write.
void Lines(CConsole& console, const std::wstring& text) {
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find(L'\n', start);
        console.Line(text.substr(start, end - start));
        start = end == std::wstring::npos ? text.size() : end + 1;
    }
}

std::wstring Usage(const Command& command) {
    const std::wstring synopsis = command.synopsis;
    return L"usage: handset " + std::wstring(command.verb) + (synopsis.empty() ? L"" : L" " + synopsis);
}

int ShowOverview(CConsole& console) {
    Lines(console,
          L"handset - the phone under the radio: its panel, its switches and its set-up\n"
          L"\n"
          L"  handset                opens the panel, the phone drawn around its display\n"
          L"  handset VERB …         does one thing and ends\n"
          L"  handset help VERB      explains a verb and its arguments\n");
    for (const CommandGroup& group : CommandGroups()) {
        console.Line(L"");
        console.Line(std::wstring(group.title) + L":");
        for (std::size_t i = 0; i < group.count; ++i) {
            const Command& command = group.commands[i];
            console.Line(L"  " + Padded(command.verb, 13) + Padded(command.summary, 52) + L"$ " +
                         command.example);
        }
    }
    Lines(console,
          L"\n"
          L"Exit codes: 0 done, 1 could not be done (standard error says why), 2 not understood.\n"
          L"The handset's state lies under HKEY_CURRENT_USER\\Software\\Kora Handset; an environment\n"
          L"variable KORA_<NAME> wins over the value of that name (KORA_CLOCKRATE, KORA_DEVICEROOT …),\n"
          L"and KORA_STATEKEY names another key, for a second handset.\n");
    return kDone;
}

int UnknownVerb(CConsole& console, const std::wstring& verb) {
    console.Error(L"handset: there is no verb \"" + verb + L"\"; \"handset help\" lists them all");
    return kBadUsage;
}

int ShowHelp(const Arguments& words, CConsole& console) {
    if (words.size() < 2) return ShowOverview(console);
    const Command* command = FindCommand(words[1]);
    if (command == nullptr) return UnknownVerb(console, words[1]);
    console.Line(Usage(*command));
    console.Line(L"");
    Lines(console, command->help);
    console.Line(L"");
    console.Line(L"For example: " + std::wstring(command->example));
    return kDone;
}

}  // namespace

std::vector<CommandGroup> CommandGroups() {
    return {SetupCommands(),    RadioCommands(),     ChannelCommands(), RecordingCommands(),
            SwitchCommands(),   TelephoneCommands(), BandCommands(),    AntennaCommands(),
            RegistryCommands(), ScheduleCommands(),  PanelCommands(),   RemovalCommands()};
}

const Command* FindCommand(const std::wstring& verb) {
    for (const CommandGroup& group : CommandGroups()) {
        for (std::size_t i = 0; i < group.count; ++i) {
            if (verb == group.commands[i].verb) return &group.commands[i];
        }
    }
    return nullptr;
}

int RunCommandLine(const Arguments& words, CConsole& console) {
    const std::wstring verb = words.empty() ? L"panel" : words[0];
    if (verb == L"help" || verb == L"--help" || verb == L"-h") return ShowHelp(words, console);
    const Command* command = FindCommand(verb);
    if (command == nullptr) return UnknownVerb(console, verb);
    const Arguments arguments(words.empty() ? words.end() : words.begin() + 1, words.end());
    // "handset VERB --help" as people type it; start hands everything on to the radio.
    if (arguments.size() == 1 && arguments[0] == L"--help" && verb != L"start") {
        return ShowHelp({L"help", verb}, console);
    }
    return command->handler(arguments, console);
}

int BadArguments(CConsole& console, const wchar_t* verb, const std::wstring& fault) {
    console.Error(L"handset " + std::wstring(verb) + L": " + fault);
    if (const Command* command = FindCommand(verb)) console.Error(Usage(*command));
    return kBadUsage;
}

int Written(CConsole& console, const wchar_t* verb, bool written) {
    return written ? kDone : Failure(console, verb, L"the user's registry refused the change");
}

}  // namespace panel
