// One stored channel, in memory and as properties of a database record.
#pragma once

#include <windows.h>

#include <cedb.h>
#include <cstddef>

inline constexpr std::size_t kChannelTextCapacity = 260;
inline constexpr std::size_t kGroupNameCapacity = 100;

struct PropRecord {
    CEOID oid;                                  // of the stored record; 0 = not stored yet
    WCHAR szCountryName[kChannelTextCapacity];  // name of the group
    WCHAR szPropRecord_ChannelName[kChannelTextCapacity];
    DWORD dwPropRecord_ChannelValue;  // units of 10 kHz
    WCHAR szPropRecord_ChannelPGuide[kChannelTextCapacity];
};

// A property's number in the high word, its type in the low word.
inline constexpr CEPROPID kPropGroupName = MAKELONG(CEVT_LPWSTR, 0x65);
inline constexpr CEPROPID kPropChannelName = MAKELONG(CEVT_LPWSTR, 0x66);
inline constexpr CEPROPID kPropChannelValue = MAKELONG(CEVT_UI4, 0x67);
inline constexpr CEPROPID kPropChannelPGuide = MAKELONG(CEVT_LPWSTR, 0x68);
static_assert(kPropGroupName == 0x0065001F && kPropChannelName == 0x0066001F &&
              kPropChannelValue == 0x00670013 && kPropChannelPGuide == 0x0068001F);

inline constexpr WORD kChannelPropertyCount = 4;

// A text property; the record holds the pointer, not the text.
CEPROPVAL TextProperty(CEPROPID id, const WCHAR* text);
CEPROPVAL NumberProperty(CEPROPID id, DWORD value);

// The four properties of a channel, in the order in which they are always written.
void ChannelProperties(const PropRecord& record, CEPROPVAL (&properties)[kChannelPropertyCount]);
