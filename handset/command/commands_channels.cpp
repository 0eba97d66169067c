// channels: the channel lists go out to files and come in from them.
#include <windows.h>

#include <algorithm>

#include "handset/command/channel_volume.h"
#include "handset/command/command.h"
#include "handset/controls/device_registry.h"
#include "handset/controls/encoding.h"
#include "handset/controls/host_folder.h"
#include "handset/controls/radio_process.h"
#include "handset/include/tuner_slots.h"
#include "handset/lists/csv_lists.h"
#include "handset/lists/json_lists.h"

namespace panel {
namespace {

// A list of every channel of the band, with texts of full length, is a hundredth of it.
constexpr std::uint64_t kLargestFile = 64 << 20;

enum class Form { kJson, kCsv, kBookmarks };

std::string WriteForm(Form form, const std::vector<lists::ChannelList>& stored,
                      std::vector<std::string>* lost) {
    if (form == Form::kBookmarks) return lists::WriteBookmarks(stored, lost);
    return form == Form::kCsv ? lists::WriteCsvLists(stored) : lists::WriteJson(stored);
}

lists::ListFile ReadForm(Form form, const std::string& bytes) {
    return form == Form::kJson ? lists::ReadJson(bytes) : lists::ReadCsvLists(bytes);
}

// The form by the file's name.
std::optional<Form> FormOf(const std::wstring& path) {
    struct Row {
        const wchar_t* ending;
        Form form;
    };
    constexpr Row kRows[] = {{L".json", Form::kJson}, {L".csv", Form::kCsv}};
    for (const Row& row : kRows) {
        const std::size_t length = std::wcslen(row.ending);
        if (path.size() > length && _wcsicmp(path.c_str() + path.size() - length, row.ending) == 0)
            return row.form;
    }
    return std::nullopt;
}

// "1 list", "2 lists".
std::wstring Count(std::size_t count, const wchar_t* what) {
    return std::to_wstring(count) + L" " + what + (count == 1 ? L"" : L"s");
}

int Failed(CConsole& console, const std::wstring& fault) {
    return Failure(console, L"channels", fault);
}

std::size_t SpoiltTexts(const std::vector<lists::ChannelList>& stored) {
    std::size_t spoilt = 0;
    const auto look = [&](const std::u16string& text) {
        spoilt += handset::Utf16(handset::Utf8(text)) != text;
    };
    for (const lists::ChannelList& list : stored) {
        look(list.name);
        for (const lists::Channel& channel : list.channels) {
            look(channel.name);
            look(channel.guide);
        }
    }
    return spoilt;
}

int Export(const std::wstring& path, Form form, CConsole& console) {
    CChannelVolume volume;
    std::wstring fault = volume.Open(CChannelVolume::When::kMissingIsAFault);
    std::vector<lists::ChannelList> stored;
    std::size_t strays = 0;
    if (fault.empty()) fault = StoreFault(lists::ReadLists(*volume, &stored, &strays));
    if (!fault.empty()) return Failed(console, fault);
    std::vector<std::string> lost;
    if (!WriteWholeFile(path, WriteForm(form, stored, &lost))) {
        return Failed(console, SaidPath(path) + L" could not be written");
    }
    std::size_t channels = 0;
    for (const lists::ChannelList& list : stored) channels += list.channels.size();
    console.Line(Count(stored.size(), L"list") + L", " + Count(channels, L"channel") + L" written to " +
                 SaidPath(path));
    if (strays != 0) {
        console.Line(Count(strays, L"channel") +
                     L" of lists that the phone does not show, under the names that they give");
    }
    const std::size_t spoilt = SpoiltTexts(stored);
    if (spoilt != 0)
        console.Error(L"not written as it is: " + Count(spoilt, L"text") + L" with half a character in it");
    for (const std::string& what : lost) console.Error(L"not written: " + Wide(what));
    return kDone;
}

// The radio shows the list of this name, and none when there is none.
void SelectOneThatIsThere(const lists::ImportPlan& plan, CConsole& console) {
    const std::wstring selected = DeviceString(fm::kTunerKey, L"Selected", L"");
    std::wstring first;
    for (const lists::PlannedList& planned : plan.lists) {
        const std::wstring name = Wide(handset::Utf8(planned.list.name));
        if (name == selected) return;
        if (first.empty()) first = name;
    }
    SetDeviceString(fm::kTunerKey, L"Selected", first);
    console.Line(L"the radio now shows the list \"" + first + L"\"");
}

int Report(const lists::ImportPlan& plan, bool replace, CConsole& console) {
    for (const lists::Refusal& refusal : plan.refused) {
        console.Error(L"line " + std::to_wstring(refusal.line) + L": " + Wide(refusal.why));
    }
    if (replace && !plan.refused.empty()) {
        return Failed(console, L"nothing was stored: --replace wants a file that can be taken whole");
    }
    if (replace && plan.Empty()) return Failed(console, L"nothing was stored: there is nothing in the file");
    console.Line(L"taken: " + Count(plan.newLists, L"new list") + L", " +
                 Count(plan.newChannels, L"new channel") + L"; there already: " +
                 std::to_wstring(plan.present) + L"; refused: " + std::to_wstring(plan.refused.size()));
    if (replace) SelectOneThatIsThere(plan, console);
    if (!replace && !plan.Empty() && RadioProcess()) {
        console.Line(
            L"the radio is running: it shows what is new when a list is chosen in \"Channel lists\"");
    }
    return plan.refused.empty() ? kDone : kFailed;
}

int Import(const std::wstring& path, Form form, bool replace, CConsole& console) {
    // Rows of the radio's list would stand for channels that are gone.
    if (replace && RadioProcess()) {
        return Failed(console, L"the radio is running; close it first (\"handset stop\")");
    }
    WIN32_FILE_ATTRIBUTE_DATA facts = {};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &facts);
    const bool tooLarge = facts.nFileSizeHigh != 0 || facts.nFileSizeLow > kLargestFile;
    const auto bytes = tooLarge ? std::nullopt : ReadWholeFile(path);
    if (!bytes)
        return Failed(console, SaidPath(path) + (tooLarge ? L" is larger than 64 MiB" : L" cannot be read"));
    const lists::ListFile file = ReadForm(form, *bytes);
    if (!file.fault.empty()) {
        return Failed(console, SaidPath(path) + L" is broken, nothing was stored: " + Wide(file.fault));
    }
    CChannelVolume volume;
    std::wstring fault = volume.Open(CChannelVolume::When::kMissingIsMade);
    lists::ImportPlan plan;
    const auto mode = replace ? lists::ImportMode::kReplace : lists::ImportMode::kAdd;
    if (fault.empty()) fault = StoreFault(lists::Import(*volume, file, mode, &plan));
    if (!fault.empty()) return Failed(console, fault + L"; nothing was stored");
    return Report(plan, replace, console);
}

int Channels(const Arguments& arguments, CConsole& console) {
    const std::wstring verb = arguments.empty() ? L"" : arguments[0];
    const bool out = verb == L"export";
    if (!out && verb != L"import")
        return BadArguments(console, L"channels", L"\"export\" or \"import\" is wanted");
    const std::wstring option = out ? L"--bookmarks" : L"--replace";
    Arguments files(arguments.begin() + 1, arguments.end());
    const auto given = std::remove(files.begin(), files.end(), option);
    const bool optional = given != files.end();
    files.erase(given, files.end());
    if (files.size() != 1) return BadArguments(console, L"channels", L"the name of one file is wanted");
    const auto form = FormOf(files[0]);
    if (!form) return BadArguments(console, L"channels", L"the file's name ends in .json or .csv");
    if (out && optional && *form != Form::kCsv) {
        return BadArguments(console, L"channels", L"bookmarks are written to a file whose name ends in .csv");
    }
    const std::wstring path = FullHostPath(files[0]);
    if (!out) return Import(path, *form, optional, console);
    return Export(path, optional ? Form::kBookmarks : *form, console);
}

const Command kCommands[] = {
    {L"channels", Channels, L"export [--bookmarks] FILE | import [--replace] FILE",
     L"writes the channel lists to a file, or reads one", L"handset channels export lists.json",
     L"FILE is JSON or CSV, as its name ends. Both hold everything: lists, channels, frequencies, guides.\n"
     L"With --bookmarks the CSV is one that receivers in software read as their bookmarks; it has no "
     L"guides,\n"
     L"and what else is not in it is said. \"import\" takes each of the three, adds what is new to the "
     L"lists\n"
     L"and says what it refused, with the line and the reason; of a broken file nothing is stored. With\n"
     L"--replace the file takes the place of all lists, whole or not at all; the radio must not run then.\n"
     L"A radio that runs shows what was added when a list is chosen in it.\n"},
};

}  // namespace

CommandGroup ChannelCommands() {
    return {L"Channel lists", kCommands, std::size(kCommands)};
}

}  // namespace panel
