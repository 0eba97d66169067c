// The registry and the phone's database, as a new phone has them.
#include "tests/device/phone.h"

namespace device {
namespace {

constexpr std::uint32_t kFail = 0x80004005, kNoFile = 2, kDuplicateName = 52, kInvalidHandle = 6, kSeek = 25;
constexpr std::uint32_t kNoHandle = 0xFFFFFFFF;

std::string Root(std::uint32_t key) {
    constexpr std::uint32_t kFirst = 0x80000000;
    const char* const kNames[] = {"HKCR", "HKCU", "HKLM"};
    return key >= kFirst && key < kFirst + 3 ? kNames[key - kFirst] : "KEY";
}

// A leading backslash makes no difference.
std::string Value(Phone& phone) {
    std::string key = phone.Wide(1);
    if (!key.empty() && key[0] == '\\') key.erase(0, 1);
    return Root(phone.Argument(0)) + "\\" + key + ":" + phone.Wide(2);
}

std::uint32_t GetNumber(Phone& phone) {
    const auto found = phone.numbers.find(Value(phone));
    if (found == phone.numbers.end()) return kFail;
    phone.Cpu().Write32(phone.Argument(3), found->second);
    return 0;
}

std::uint32_t GetText(Phone& phone) {
    const auto found = phone.texts.find(Value(phone));
    if (found == phone.texts.end() || found->second.size() >= phone.Argument(4)) return kFail;
    phone.Cpu().WriteWide(phone.Argument(3), found->second);
    return 0;
}

std::uint32_t Notify(Phone& phone) {
    phone.Cpu().Write32(phone.Argument(7), phone.NewHandle());
    return 0;
}

std::uint32_t OpenKey(Phone& phone) {
    phone.Cpu().Write32(phone.Argument(4), phone.NewHandle());
    return 0;
}

std::uint32_t Mount(Phone& phone) {
    const std::uint32_t guid[] = {1, 2, 3, 4};
    phone.Cpu().Write(phone.Argument(0), guid, sizeof guid);
    return 1;
}

std::uint32_t CreateDatabase(Phone& phone) {
    // CEDBASEINFOEX: flags of both kinds, number of orders, kind, then the name.
    constexpr std::uint32_t kNameAt = 12;
    const std::string name = phone.Cpu().WideText(phone.Argument(1) + kNameAt);
    if (phone.databases.insert(name).second) return phone.NewHandle();
    phone.lastError = kDuplicateName;
    return 0;
}

std::uint32_t OpenDatabase(Phone& phone, int name) {
    if (phone.databases.count(phone.Wide(name)) != 0) return phone.NewHandle();
    phone.lastError = kNoFile;
    return kNoHandle;
}

// Nothing is stored.
std::uint32_t Seek(Phone& phone) {
    phone.lastError = phone.Argument(0) == kNoHandle ? kInvalidHandle : kSeek;
    return 0;
}

}  // namespace

void AddStoreCalls(SystemCalls& calls) {
    const SystemCalls mine = {
        {"RegistryGetDWORD", GetNumber},
        {"RegistryGetString", GetText},
        {"RegistryNotifyWindow", Notify},
        {"RegistryCloseNotification", Nothing},
        {"RegOpenKeyExW", OpenKey},
        {"RegSetValueExW", Nothing},
        {"RegDeleteValueW", Nothing},
        {"RegCloseKey", Nothing},
        {"CeMountDBVol", Mount},
        {"CeUnmountDBVol", One},
        {"CeFlushDBVol", One},
        {"CeChangeDatabaseLCID", One},
        {"CeCreateDatabaseEx2", CreateDatabase},
        {"CeOpenDatabaseEx2", [](Phone& p) { return OpenDatabase(p, 2); }},
        {"CeSeekDatabaseEx", Seek},
        {"CeReadRecordPropsEx", Nothing},
        {"GetSystemDefaultLCID", [](Phone&) { return 0x409U; }},
    };
    calls.insert(mine.begin(), mine.end());
}

}  // namespace device
