// reg: the device's registry.
#include <cstring>
#include <cwchar>

#include "handset/command/command.h"
#include "handset/controls/device_registry.h"
#include "handset/controls/encoding.h"

namespace panel {
namespace {

std::wstring StringOf(const DeviceValue& value) {
    return handset::AsText(value).value_or(L"");
}

std::wstring NumberOf(const DeviceValue& value) {
    std::uint64_t number = 0;
    if (!value.data.empty())
        std::memcpy(&number, value.data.data(), std::min(sizeof number, value.data.size()));
    return std::to_wstring(number);
}

std::wstring BytesOf(const DeviceValue& value) {
    std::wstring text;
    wchar_t byte[4];
    for (const BYTE b : value.data) {
        swprintf(byte, std::size(byte), L"%02X", b);
        text += (text.empty() ? L"" : L" ") + std::wstring(byte);
    }
    return text;
}

std::optional<DeviceValue> NumberValue(DWORD type, std::size_t size, const std::wstring& text) {
    const auto number = ParseNumber(text);
    if (!number || (size < sizeof *number && *number >> (8 * size) != 0)) return std::nullopt;
    return handset::BytesValue(type, &*number, size);
}

struct ValueType {
    const wchar_t* name;
    DWORD type;
    std::wstring (*show)(const DeviceValue& value);
    std::optional<DeviceValue> (*parse)(const std::wstring& text);
    const wchar_t* wants;
};
const ValueType kTypes[] = {
    {L"dword", REG_DWORD, NumberOf,
     [](const std::wstring& text) { return NumberValue(REG_DWORD, sizeof(DWORD), text); },
     L"a number from 0 to 4294967295"},
    {L"string", REG_SZ, StringOf,
     [](const std::wstring& text) -> std::optional<DeviceValue> { return handset::TextValue(text); },
     L"a text"},
    {L"qword", REG_QWORD, NumberOf,
     [](const std::wstring& text) { return NumberValue(REG_QWORD, sizeof(std::uint64_t), text); },
     L"a number of 64 bits"},
};

// As people know the types from elsewhere.
struct TypeName {
    const wchar_t* name;
    DWORD type;
};
constexpr TypeName kOtherNames[] = {
    {L"REG_DWORD", REG_DWORD}, {L"REG_SZ", REG_SZ}, {L"sz", REG_SZ}, {L"REG_QWORD", REG_QWORD}};

// In any letter case.
const ValueType* TypeNamed(const std::wstring& name) {
    const auto is = [&name](const wchar_t* other) { return _wcsicmp(name.c_str(), other) == 0; };
    for (const ValueType& row : kTypes) {
        if (is(row.name)) return &row;
        for (const TypeName& other : kOtherNames) {
            if (other.type == row.type && is(other.name)) return &row;
        }
    }
    return nullptr;
}

std::wstring Shown(const DeviceValue& value, bool withType) {
    for (const ValueType& row : kTypes) {
        if (row.type == value.type) return (withType ? row.name + std::wstring(L" ") : L"") + row.show(value);
    }
    return (withType ? L"bytes " : L"") + BytesOf(value);
}

int List(const std::wstring& key, CConsole& console) {
    if (!DeviceKeyExists(key)) return Failure(console, L"reg", L"there is no key " + key);
    for (const std::wstring& name : DeviceSubkeys(key)) console.Line(L"[" + name + L"]");
    for (const std::wstring& name : DeviceValueNames(key)) {
        if (const auto value = GetDeviceValue(key, name)) {
            console.Line((name.empty() ? L"(default)" : name) + L" " + Shown(*value, true));
        }
    }
    return kDone;
}

int Get(const Arguments& arguments, CConsole& console) {
    if (arguments.size() == 2) return List(arguments[1], console);
    const auto value = GetDeviceValue(arguments[1], arguments[2]);
    if (!value)
        return Failure(console, L"reg", L"there is no value \"" + arguments[2] + L"\" in " + arguments[1]);
    console.Line(Shown(*value, false));
    return kDone;
}

int Set(const Arguments& arguments, CConsole& console) {
    const ValueType* type = TypeNamed(arguments[3]);
    if (type == nullptr) {
        return BadArguments(console, L"reg",
                            L"there is no type \"" + arguments[3] + L"\"; there are dword, string and qword");
    }
    const auto value = type->parse(arguments[4]);
    if (!value) {
        return BadArguments(
            console, L"reg",
            L"a " + std::wstring(type->name) + L" is " + type->wants + L", not \"" + arguments[4] + L"\"");
    }
    return Written(console, L"reg", SetDeviceValue(arguments[1], arguments[2], *value));
}

int Delete(const Arguments& arguments, CConsole& console) {
    const std::wstring& key = arguments[1];
    if (arguments.size() == 3) {
        if (DeleteDeviceValue(key, arguments[2])) return kDone;
        return Failure(console, L"reg", L"there is no value \"" + arguments[2] + L"\" in " + key);
    }
    // A root by itself holds everything that the handset is.
    if (key.find(L'\\', 1) == std::wstring::npos) {
        return BadArguments(console, L"reg", key + L" is a whole root; a key below it is wanted");
    }
    return DeleteDeviceKey(key) ? kDone : Failure(console, L"reg", L"there is no key " + key);
}

struct RegistryVerb {
    const wchar_t* name;
    std::size_t fewest, most;  // arguments with the verb
    int (*run)(const Arguments& arguments, CConsole& console);
};
const RegistryVerb kVerbs[] = {{L"get", 2, 3, Get}, {L"set", 5, 5, Set}, {L"delete", 2, 3, Delete}};

int Registry(const Arguments& arguments, CConsole& console) {
    for (const RegistryVerb& row : kVerbs) {
        if (arguments.empty() || arguments[0] != row.name) continue;
        if (arguments.size() < row.fewest || arguments.size() > row.most) {
            return BadArguments(console, L"reg",
                                L"\"" + arguments[0] + L"\" was given " +
                                    std::to_wstring(arguments.size() - 1) + L" arguments");
        }
        if (!HostKeyPath(arguments[1])) {
            return BadArguments(
                console, L"reg",
                L"\"" + arguments[1] + L"\" is no key: it begins with HKCR, HKLM, HKCU or HKU");
        }
        return row.run(arguments, console);
    }
    return BadArguments(
        console, L"reg",
        arguments.empty() ? L"\"get\", \"set\" or \"delete\" is wanted, nothing was given"
                          : L"\"get\", \"set\" or \"delete\" is wanted, \"" + arguments[0] + L"\" was given");
}

const Command kCommands[] = {
    {L"reg", Registry, L"get KEY [VALUE] | set KEY VALUE TYPE DATA | delete KEY [VALUE]",
     L"reads and writes the device's registry", L"handset reg get HKLM\\System\\State\\Phone",
     L"KEY is a key of the device, such as HKLM\\System\\State\\Hardware; TYPE is dword, string or qword,\n"
     L"also as REG_DWORD, REG_SZ and REG_QWORD, in any letter case.\n"
     L"get     prints the value's data alone (numbers in decimal); without VALUE the whole key: its subkeys "
     L"in\n"
     L"        brackets, its values with their types. Exit code 1 when it is not there.\n"
     L"set     writes the value and makes the key when it is missing. Numbers may be decimal or 0x….\n"
     L"delete  deletes the value; without VALUE the key and all below it.\n"
     L"Programs that watch the value are told.\n"},
};

}  // namespace

CommandGroup RegistryCommands() {
    return {L"Registry", kCommands, std::size(kCommands)};
}

}  // namespace panel
