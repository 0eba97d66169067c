// The telephone's published state.
#include "handset/controls/telephone.h"

#include "handset/controls/device_registry.h"
#include "handset/state/power_manager.h"

namespace panel {
namespace {

constexpr wchar_t kPhoneKey[] = L"HKLM\\System\\State\\Phone";
constexpr std::uint32_t kCallBits = kPhoneIncoming | kPhoneCalling | kPhoneTalking;

// The other bits of the status are not the call's and stay as they are.
bool SetCall(std::uint32_t bits) {
    return SetDeviceDword(kPhoneKey, L"Status", (PhoneStatus() & ~kCallBits) | bits);
}

bool SetNumber(const std::optional<std::wstring>& number) {
    if (number) return SetDeviceString(kPhoneKey, L"Caller Number", *number);
    DeleteDeviceValue(kPhoneKey, L"Caller Number");  // false when there was none, which is as well
    return true;
}

}  // namespace

std::uint32_t PhoneStatus() {
    return DeviceDword(kPhoneKey, L"Status", 0);
}

std::wstring CallerNumber() {
    return DeviceString(kPhoneKey, L"Caller Number", L"");
}

bool CallComesIn(const std::optional<std::wstring>& number) {
    handset::WakePhone();
    return SetNumber(number) && SetCall(kPhoneIncoming);
}

bool CallGoesOut(const std::optional<std::wstring>& number) {
    handset::WakePhone();
    return SetNumber(number) && SetCall(kPhoneCalling);
}

bool CallIsAnswered() {
    return SetCall(kPhoneTalking);
}

bool CallEnds() {
    return SetCall(0) && SetNumber(std::nullopt);
}

const wchar_t* CallName(std::uint32_t status) {
    struct Row {
        std::uint32_t bits;
        const wchar_t* name;
    };
    const Row kRows[] = {{0, L"none"},
                         {kPhoneIncoming, L"incoming"},
                         {kPhoneCalling, L"outgoing"},
                         {kPhoneTalking, L"talking"}};
    for (const Row& row : kRows) {
        if ((status & kCallBits) == row.bits) return row.name;
    }
    return L"other";
}

}  // namespace panel
