// The shell library, common controls and COM, with the tuner device behind it.
#include <array>
#include <cstdio>
#include <iterator>
#include <stdexcept>

#include "tests/device/phone.h"
#include "tests/support/tuner_contract.h"

namespace device {
namespace {

constexpr std::uint32_t kFail = 0x80004005, kNotRegistered = 0x80040154;

// Records that say their own size: another than the device's is refused there.
std::uint32_t WithRecord(Phone& phone, int argument, std::uint32_t size, const char* name) {
    if (phone.Cpu().Read32(phone.Argument(argument)) != size)
        throw std::runtime_error(std::string(name) + " has another size on the device");
    return 1;
}

std::uint32_t MenuBar(Phone& phone) {
    constexpr std::uint32_t kSizeOfRecord = 36, kBarAt = 28;
    const std::uint32_t record = phone.Argument(0);
    WithRecord(phone, 0, kSizeOfRecord, "SHMENUBARINFO");
    const std::uint32_t bar = phone.NewHandle();
    phone.windows[bar].className = "menu bar";
    phone.Cpu().Write32(record + kBarAt, bar);
    return 1;
}

std::uint32_t Activate(Phone& phone) {
    return WithRecord(phone, 3, 12, "SHACTIVATEINFO");
}

std::uint32_t RegisterControls(Phone& phone) {
    return WithRecord(phone, 0, 8, "INITCOMMONCONTROLSEX");
}

// As it lies in memory.
std::vector<std::uint8_t> TunerClass() {
    unsigned first = 0, words[2] = {}, bytes[8] = {};
    if (std::sscanf(TEST_TUNER_CLASS, "{%8x-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x}", &first, &words[0], &words[1],
                    &bytes[0], &bytes[1], &bytes[2], &bytes[3], &bytes[4], &bytes[5], &bytes[6],
                    &bytes[7]) != 11)
        throw std::logic_error("the tuner's class cannot be read");
    std::vector<std::uint8_t> lying;
    for (int shift = 0; shift < 32; shift += 8) lying.push_back(static_cast<std::uint8_t>(first >> shift));
    for (const unsigned word : words) {
        lying.push_back(static_cast<std::uint8_t>(word));
        lying.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    lying.insert(lying.end(), std::begin(bytes), std::end(bytes));
    return lying;
}

std::uint32_t CreateObject(Phone& phone) {
    phone.Cpu().Write32(phone.Argument(4), 0);
    if (!phone.receiver || phone.Cpu().Read(phone.Argument(0), 16) != TunerClass()) return kNotRegistered;
    phone.Cpu().Write32(phone.Argument(4), MakeTuner(phone));
    return 0;
}

// --- The tuner ---------------------------------------------------------------------------------------------

// Arguments begin behind the object itself. An operation's line in the log is its name, what it took and what
// it gave.
struct Slot {
    const char* name;
    bool takes;
    std::uint32_t (*serve)(Phone&, std::string& gave);
};

std::uint32_t Give(Phone& phone, std::string& gave, std::uint32_t value) {
    phone.Cpu().Write32(phone.Argument(1), value);
    gave = std::to_string(static_cast<std::int32_t>(value));
    return 0;
}

std::uint32_t Tune(Phone& phone, std::string&) {
    const std::uint32_t wanted = phone.Argument(1);
    if (wanted < 8750 || wanted > 10800) return kFail;
    phone.channel = wanted;
    return 0;
}

// The next station of three; the search goes round.
std::uint32_t Seek(Phone& phone, std::string&) {
    for (const std::uint32_t station : {8760U, 9850U, 10790U}) {
        if (station <= phone.channel) continue;
        phone.channel = station;
        return 0;
    }
    phone.channel = 8760;
    return 0;
}

std::uint32_t Done(Phone&, std::string&) {
    return 0;
}
std::uint32_t None(Phone&, std::string&) {
    return kFail;
}

// In the order of the device's table.
const std::array<Slot, kTunerSlots> kSlots = {{
    {"QueryInterface", false, None},
    {"AddRef", false, Done},
    {"Release", false, Done},
    {"GetVolume", false, [](Phone& p, std::string& gave) { return Give(p, gave, 50); }},
    {"GetChannel", false, [](Phone& p, std::string& gave) { return Give(p, gave, p.channel); }},
    {"Close", false, Done},
    {"SetChannel", true, Tune},
    {"Initialize", false, Done},
    {"Reserved", false, None},
    {"SetSpeaker", true, Done},
    {"SetBTAudio", true, Done},
    {"SetMute", true, Done},
    {"SetVolume", true, Done},
    {"SeekNext", false, Seek},
    {"SeekPrev", false, Done},
    {"GetSignal", false,
     [](Phone& p, std::string& gave) { return Give(p, gave, static_cast<std::uint32_t>(p.signal)); }},
    {"GetRDSData", false, None},
    {"GetStereo", false, Done},
    {"GetAFCount", false, [](Phone& p, std::string& gave) { return Give(p, gave, 0); }},
    {"GetAFItem", false, None},
    {"GetRDSInfo", false, None},
    {"GetPTYText", false, None},
}};

}  // namespace

std::uint32_t MakeTuner(Phone& phone) {
    Machine& cpu = phone.Cpu();
    const std::uint32_t object = cpu.Allocate(4), table = cpu.Allocate(4 * kTunerSlots);
    cpu.Write32(object, table);
    for (std::uint32_t i = 0; i < kTunerSlots; ++i)
        cpu.Write32(table + 4 * i, Machine::TrapAddress(kTunerTrap + i));
    return object;
}

std::uint32_t ServeTunerSlot(Phone& phone, std::uint32_t number) {
    const Slot& slot = kSlots.at(number);
    std::string gave;
    std::string line = slot.name;
    if (slot.takes) line += " " + std::to_string(phone.Argument(1));
    const std::uint32_t result = slot.serve(phone, gave);
    line += " -> " + std::to_string(static_cast<std::int32_t>(result));
    if (!gave.empty()) line += ": " + gave;
    phone.tuner.push_back(line);
    return result;
}

void AddShellCalls(SystemCalls& calls) {
    const SystemCalls mine = {
        {"SHInitExtraControls", One},
        {"SHCreateMenuBar", MenuBar},
        {"SHHandleWMActivate", Activate},
        {"SHHandleWMSettingChange", Activate},
        {"InitCommonControlsEx", RegisterControls},
        {"CoInitializeEx", Nothing},
        {"CoCreateInstance", CreateObject},
    };
    calls.insert(mine.begin(), mine.end());
}

}  // namespace device
