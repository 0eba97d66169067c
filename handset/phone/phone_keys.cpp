// The phone's keys.
#include "handset/phone/phone_keys.h"

#include "handset/base/rows.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/controls/telephone.h"

namespace panel {

namespace {

constexpr wchar_t kSoftLeftHint[] =
    L"What is written above it: its menu, or OK and Cancel. On your keyboard it is F1.";
constexpr wchar_t kSoftRightHint[] =
    L"What is written above it: its menu, or OK and Cancel. On your keyboard it is F2.";
constexpr wchar_t kDigitHint[] = L"Type a frequency: 9 8 5 is 98.5, 1 0 1 2 is 101.2 MHz.";

}  // namespace

const std::vector<PhoneKeyRow>& PhoneKeys() {
    // Windows Mobile gives the soft keys and the telephone's keys the codes of the function keys.
    // clang-format off
    static const std::vector<PhoneKeyRow> kRows = {
        {PhoneKey::kSoftLeft,  L"soft1",  L"",  VK_F1, true,  kSoftLeftHint},
        {PhoneKey::kSoftRight, L"soft2",  L"",  VK_F2, true,  kSoftRightHint},
        {PhoneKey::kCall,      L"call",   L"",  VK_F3, true,  L"Takes a call that comes in. On your keyboard it is F3."},
        {PhoneKey::kHangUp,    L"end",    L"",  VK_F4, true,  L"Ends a call. On your keyboard it is F4."},
        {PhoneKey::kUp,        L"up",     L"",  VK_UP, false, L"One row of the list up."},
        {PhoneKey::kDown,      L"down",   L"",  VK_DOWN, false, L"One row of the list down."},
        {PhoneKey::kLeft,      L"left",   L"",  VK_LEFT, false, L"Quieter."},
        {PhoneKey::kRight,     L"right",  L"",  VK_RIGHT, false, L"Louder."},
        {PhoneKey::kReturn,    L"return", L"",  VK_RETURN, false, L"Display dark, display lit; the radio plays on."},
        {PhoneKey::k0,         L"0",      L"0", '0', false, kDigitHint},
        {PhoneKey::k1,         L"1",      L"1", '1', false, kDigitHint},
        {PhoneKey::k2,         L"2",      L"2", '2', false, kDigitHint},
        {PhoneKey::k3,         L"3",      L"3", '3', false, kDigitHint},
        {PhoneKey::k4,         L"4",      L"4", '4', false, kDigitHint},
        {PhoneKey::k5,         L"5",      L"5", '5', false, kDigitHint},
        {PhoneKey::k6,         L"6",      L"6", '6', false, kDigitHint},
        {PhoneKey::k7,         L"7",      L"7", '7', false, kDigitHint},
        {PhoneKey::k8,         L"8",      L"8", '8', false, kDigitHint},
        {PhoneKey::k9,         L"9",      L"9", '9', false, kDigitHint},
        {PhoneKey::kStar,      L"star",   L"*", VK_F8, false, L"Nothing of the radio's."},
        {PhoneKey::kHash,      L"hash",   L"#", VK_F9, false, L"Nothing of the radio's."},
    };
    // clang-format on
    return kRows;
}

const PhoneKeyRow& RowOf(PhoneKey key) {
    const PhoneKeyRow* row = handset::RowWith(PhoneKeys(), &PhoneKeyRow::key, key);
    return row == nullptr ? PhoneKeys().front() : *row;
}

std::optional<PhoneKey> KeyOfComputer(WORD virtualKey) {
    const PhoneKeyRow* row = handset::RowWith(PhoneKeys(), &PhoneKeyRow::virtualKey, virtualKey);
    return row == nullptr || !row->fromComputer ? std::nullopt : std::optional(row->key);
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
