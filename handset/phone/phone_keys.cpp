// The phone's keys.
#include "handset/phone/phone_keys.h"

#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/controls/telephone.h"

namespace panel {

const std::vector<PhoneKeyRow>& PhoneKeys() {
    // Windows Mobile gives the soft keys and the telephone's keys the codes of the function keys.
    // clang-format off
    static const std::vector<PhoneKeyRow> kRows = {
        {PhoneKey::kSoftLeft,  L"soft1",  L"",  VK_F1},
        {PhoneKey::kSoftRight, L"soft2",  L"",  VK_F2},
        {PhoneKey::kCall,      L"call",   L"",  VK_F3},
        {PhoneKey::kHangUp,    L"end",    L"",  VK_F4},
        {PhoneKey::kUp,        L"up",     L"",  VK_UP},
        {PhoneKey::kDown,      L"down",   L"",  VK_DOWN},
        {PhoneKey::kLeft,      L"left",   L"",  VK_LEFT},
        {PhoneKey::kRight,     L"right",  L"",  VK_RIGHT},
        {PhoneKey::kReturn,    L"return", L"",  VK_RETURN},
        {PhoneKey::k0,         L"0",      L"0", '0'},
        {PhoneKey::k1,         L"1",      L"1", '1'},
        {PhoneKey::k2,         L"2",      L"2", '2'},
        {PhoneKey::k3,         L"3",      L"3", '3'},
        {PhoneKey::k4,         L"4",      L"4", '4'},
        {PhoneKey::k5,         L"5",      L"5", '5'},
        {PhoneKey::k6,         L"6",      L"6", '6'},
        {PhoneKey::k7,         L"7",      L"7", '7'},
        {PhoneKey::k8,         L"8",      L"8", '8'},
        {PhoneKey::k9,         L"9",      L"9", '9'},
        {PhoneKey::kStar,      L"star",   L"*", VK_F8},
        {PhoneKey::kHash,      L"hash",   L"#", VK_F9},
    };
    // clang-format on
    return kRows;
}

const PhoneKeyRow& RowOf(PhoneKey key) {
    for (const PhoneKeyRow& row : PhoneKeys()) {
        if (row.key == key) return row;
    }
    return PhoneKeys().front();
}

std::optional<PhoneKey> KeyNamed(const std::wstring& name) {
    for (const PhoneKeyRow& row : PhoneKeys()) {
        if (name == row.name) return row.key;
    }
    return std::nullopt;
}

namespace {

bool IsSoftKey(PhoneKey key) {
    return key == PhoneKey::kSoftLeft || key == PhoneKey::kSoftRight;
}

bool IsCallKey(PhoneKey key) {
    return key == PhoneKey::kCall || key == PhoneKey::kHangUp;
}

}  // namespace

bool PressPhoneKey(PhoneKey key, bool down) {
    if (IsSoftKey(key) && DisplayLit()) return !down || PressSoftKey(key == PhoneKey::kSoftRight);
    const std::uint32_t call = PhoneStatus() & (kPhoneIncoming | kPhoneCalling | kPhoneTalking);
    const bool answers = key == PhoneKey::kCall && (call & kPhoneIncoming) != 0;
    const bool ends = key == PhoneKey::kHangUp && call != 0;
    if (answers || ends) {
        if (!down) return true;
        const bool written = answers ? CallIsAnswered() : CallEnds();
        TellPanel();
        return written;
    }
    // Without a call the telephone's keys are the phone's own, which has nothing else to show for them.
    if (IsCallKey(key) && !RadioHasAllKeys()) return !PhoneSleeps();
    return SendKey(RowOf(key).virtualKey, down);
}

}  // namespace panel
