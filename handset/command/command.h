// The verbs of handset.exe: rows of {verb, handler, help}, one table a group.
#pragma once

#include <string>
#include <vector>

#include "handset/controls/console.h"

namespace panel {

using Arguments = std::vector<std::wstring>;  // what follows the verb

struct Command {
    const wchar_t* verb;
    int (*handler)(const Arguments& arguments, CConsole& console);
    const wchar_t* synopsis;  // the arguments, as the help shows them
    const wchar_t* summary;   // one line for the list of verbs
    const wchar_t* example;   // a whole command line
    const wchar_t* help;      // whole sentences; lines end with \n
};

struct CommandGroup {
    const wchar_t* title;
    const Command* commands;
    std::size_t count;
};

// The groups, each made by its own file.
CommandGroup SetupCommands();
CommandGroup SwitchCommands();
CommandGroup BandCommands();
CommandGroup AntennaCommands();
CommandGroup TelephoneCommands();
CommandGroup RegistryCommands();
CommandGroup RadioCommands();
CommandGroup ChannelCommands();
CommandGroup RecordingCommands();
CommandGroup ScheduleCommands();
CommandGroup PanelCommands();
CommandGroup RemovalCommands();

// Every group in the order of the help.
std::vector<CommandGroup> CommandGroups();
// Null for a verb that there is not.
const Command* FindCommand(const std::wstring& verb);

// Runs a command line without the program's name; no words at all open the panel. Result: the exit code.
int RunCommandLine(const Arguments& words, CConsole& console);

// Reports an argument that is not understood, with the verb's usage. Result: kBadUsage.
int BadArguments(CConsole& console, const wchar_t* verb, const std::wstring& fault);
// kDone, or the report that the user's registry refused the change.
int Written(CConsole& console, const wchar_t* verb, bool written);

}  // namespace panel
