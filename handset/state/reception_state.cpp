// The antenna's values and the key of what is received.
#include "handset/state/reception_state.h"

#include <windows.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <vector>

#include "handset/base/owned.h"
#include "handset/base/registry_value.h"
#include "handset/state/handset_state.h"
#include "handset/state/stored_value.h"

namespace handset {
namespace {

constexpr std::int32_t kMostCorrection_ppm = 1000;
// Every writing makes all readers of the state look anew: where nothing is new it is written just often
// enough.
constexpr std::uint64_t kUnchanged_ms = 2000;
constexpr wchar_t kSource[] = L"Source";
constexpr wchar_t kCondition[] = L"Condition";
constexpr wchar_t kChannel[] = L"Channel";
constexpr wchar_t kLevel[] = L"Level";
constexpr wchar_t kStereo[] = L"Stereo";
constexpr wchar_t kCarrierToNoise[] = L"CN0_dBHz";  // in tenths
constexpr wchar_t kOffset[] = L"Offset_Hz";
constexpr wchar_t kBlockErrors[] = L"BlockErrors_percent";
constexpr wchar_t kPi[] = L"Pi";
constexpr wchar_t kTraffic[] = L"Traffic";  // the sum of these
constexpr std::uint32_t kTrafficProgramme = 1, kTrafficAnnouncement = 2;
constexpr wchar_t kLevels[] = L"Levels";
constexpr wchar_t kWritten[] = L"Written_ms";
// Instead of a number that is not known.
constexpr std::uint32_t kUnknown = 0x80000000;

std::wstring KeyPath() {
    return StateKeyPath() + L"\\Reception";
}

template <typename Known>
RegistryValue NumberIfKnown(const std::optional<Known>& number) {
    return DwordValue(number ? static_cast<std::uint32_t>(*number) : kUnknown);
}

using Values = std::map<std::wstring, RegistryValue>;

Values ValuesOf(const ReceptionState& state) {
    std::optional<std::int32_t> carrierToNoise_tenths;
    if (state.carrierToNoise_dBHz)
        carrierToNoise_tenths = static_cast<std::int32_t>(*state.carrierToNoise_dBHz * 10.0 + 0.5);
    return {
        {kSource, TextValue(state.source)},
        {kCondition, TextValue(state.condition)},
        {kChannel, DwordValue(state.channel_10kHz)},
        {kLevel, DwordValue(state.level)},
        {kStereo, DwordValue(state.stereo ? 1 : 0)},
        {kCarrierToNoise, NumberIfKnown(carrierToNoise_tenths)},
        {kOffset, NumberIfKnown(state.offset_Hz)},
        {kBlockErrors, NumberIfKnown(state.blockErrors_percent)},
        {kPi, NumberIfKnown(state.pi)},
        {kTraffic, DwordValue((state.trafficProgramme ? kTrafficProgramme : 0) |
                              (state.trafficAnnouncement ? kTrafficAnnouncement : 0))},
        {kLevels, BytesValue(REG_BINARY, state.levels.data(), state.levels.size())},
    };
}

// What this process has written, so that a second with nothing new costs one value.
class CReceptionWriter {
  public:
    bool Write(const ReceptionState& state) {
        const std::lock_guard<std::mutex> guard(lock_);
        if (path_ != KeyPath()) Forget();
        if (!key_) {
            path_ = KeyPath();
            if (RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE,
                                nullptr, Put(key_), nullptr) != ERROR_SUCCESS)
                return false;
        }
        bool good = true;
        bool same = true;
        for (auto& [name, value] : ValuesOf(state)) {
            if (const auto found = written_.find(name); found != written_.end() && found->second == value)
                continue;
            good = Set(name, value) && good;
            written_[name] = value;
            same = false;
        }
        const std::uint64_t now_ms = GetTickCount64();
        if (same && now_ms - written_ms_ < kUnchanged_ms) return true;
        written_ms_ = now_ms;
        good = Set(kWritten, BytesValue(REG_QWORD, &now_ms, sizeof now_ms)) && good;
        // Somebody has removed the key: all of it is written again next time.
        if (!good) Forget();
        return good;
    }
    void Clear() {
        const std::lock_guard<std::mutex> guard(lock_);
        Forget();
        RegDeleteKeyW(HKEY_CURRENT_USER, KeyPath().c_str());
    }

  private:
    bool Set(const std::wstring& name, const RegistryValue& value) {
        return RegSetValueExW(key_.get(), name.c_str(), 0, value.type, value.data.data(),
                              static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
    }
    void Forget() {
        key_.reset();
        written_.clear();
    }

    std::mutex lock_;  // guards all of the following
    std::wstring path_;
    OwnedKey key_;
    Values written_;
    std::uint64_t written_ms_ = 0;
};

// Never destroyed: threads still write while the process ends.
CReceptionWriter& TheWriter() {
    static CReceptionWriter& writer = *new CReceptionWriter;
    return writer;
}

std::optional<std::uint64_t> ReadNumber(const wchar_t* name) {
    const auto stored = ReadStoredValue(KeyPath(), name);
    return stored ? AsNumber(*stored) : std::nullopt;
}

std::wstring ReadText(const wchar_t* name) {
    const auto stored = ReadStoredValue(KeyPath(), name);
    return stored ? AsText(*stored).value_or(L"") : L"";
}

std::optional<std::int32_t> ReadKnown(const wchar_t* name) {
    const auto number = ReadNumber(name);
    if (!number || *number == kUnknown) return std::nullopt;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(*number));
}

}  // namespace

AntennaChoice ChosenAntenna() {
    AntennaChoice choice;
    choice.antenna = StateString(L"Antenna", L"");
    choice.gain = StateDword(L"AntennaGain", kAutomaticGain);
    const auto ppm = static_cast<std::int32_t>(StateDword(L"AntennaPpm", 0));
    if (ppm >= -kMostCorrection_ppm && ppm <= kMostCorrection_ppm) choice.correction_ppm = ppm;
    if (StateDword(L"AntennaDeemphasis", 50) == 75) choice.deemphasis_us = 75;
    choice.bias = StateDword(L"AntennaBias", 0) == 1;
    return choice;
}

std::optional<ReceptionState> ReadReception() {
    const auto written_ms = ReadNumber(kWritten);
    if (!written_ms) return std::nullopt;
    const std::uint64_t now_ms = GetTickCount64();
    if (now_ms > *written_ms + kReceptionStale_ms) return std::nullopt;
    ReceptionState state;
    state.written_ms = *written_ms;
    state.source = ReadText(kSource);
    state.condition = ReadText(kCondition);
    state.channel_10kHz = static_cast<std::uint32_t>(ReadNumber(kChannel).value_or(0));
    state.level = static_cast<std::uint32_t>(ReadNumber(kLevel).value_or(0));
    state.stereo = ReadNumber(kStereo).value_or(0) != 0;
    if (const auto tenths = ReadKnown(kCarrierToNoise)) state.carrierToNoise_dBHz = *tenths / 10.0;
    state.offset_Hz = ReadKnown(kOffset);
    if (const auto errors = ReadKnown(kBlockErrors))
        state.blockErrors_percent = static_cast<std::uint32_t>(*errors);
    if (const auto pi = ReadKnown(kPi)) state.pi = static_cast<std::uint16_t>(*pi);
    const auto traffic = ReadNumber(kTraffic).value_or(0);
    state.trafficProgramme = (traffic & kTrafficProgramme) != 0;
    state.trafficAnnouncement = (traffic & kTrafficAnnouncement) != 0;
    const auto levels = ReadStoredValue(KeyPath(), kLevels);
    if (levels && levels->data.size() == state.levels.size())
        std::copy(levels->data.begin(), levels->data.end(), state.levels.begin());
    return state;
}

bool WriteReception(const ReceptionState& state) {
    return TheWriter().Write(state);
}

void ClearReception() {
    TheWriter().Clear();
}

}  // namespace handset
