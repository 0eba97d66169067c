// The phone's keys: their names on the command line, their virtual-key codes and what a press does.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "handset/phone/phone_layout.h"

namespace panel {

struct PhoneKeyRow {
    PhoneKey key;
    const wchar_t* name;   // on the command line
    const wchar_t* label;  // on the key; empty where a sign is drawn
    WORD virtualKey;       // a soft key's is for a program that gets it in the dark
    bool fromComputer;     // taken from the computer's keyboard, which means nothing to the radio's window
    const wchar_t* hint;   // a sentence for whoever rests the pointer on it
};
const std::vector<PhoneKeyRow>& PhoneKeys();
const PhoneKeyRow& RowOf(PhoneKey key);
std::optional<PhoneKey> KeyNamed(const std::wstring& name);
// The key that the panel presses for one of the computer's.
std::optional<PhoneKey> KeyOfComputer(WORD virtualKey);

// Presses or releases a key as the handset does. The call keys answer and end a call while there is one; else
// they are the phone's own, unless the radio has asked for all keys. The other keys go to the radio, in the
// dark only when it has asked for them. False when there is nobody to take it.
bool PressPhoneKey(PhoneKey key, bool down);

}  // namespace panel
