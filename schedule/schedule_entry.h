// The schedule's entries: one booked day each, kept below the radio's settings key as a subkey with four
// texts.
#pragma once

#include <windows.h>

#include <cstddef>

#include "schedule/booking_rule.h"
#include "shell/owned.h"

// Name of an entry, terminator included; what the platform gives is at least kShortestEntryName long. Other
// subkeys of the settings key have shorter names.
inline constexpr std::size_t kEntryNameCapacity = 50;
inline constexpr std::size_t kShortestEntryName = 20;

struct ScheduleEntry {
    WCHAR szName[kEntryNameCapacity];  // of the platform's notification, and of the entry's key
    WCHAR szChannel[kBookingTextCapacity];
    WCHAR szWeek[kBookingTextCapacity];  // the day's display name
    WCHAR szStartTime[kBookingTextCapacity];
    WCHAR szEndTime[kBookingTextCapacity];
};

// Creates the key `path`, with `name` below it unless that is null, and closes it. 0, E_FAIL, or E_INVALIDARG
// for a null root or path.
HRESULT CreateScheduleKey(HKEY root, const WCHAR* path, const WCHAR* name);

// The name of the subkey at `index`; `length` is the room for it in characters, and then its length. 0,
// E_FAIL when there is none or the key cannot be opened, or E_INVALIDARG for a null argument. A name for
// which there is no room is given as an empty one, with 0: it is no entry's, and the walk goes on behind it.
HRESULT EnumScheduleKey(HKEY root, const WCHAR* path, DWORD index, WCHAR* name, DWORD* length);

// The key below which the entries lie, open for a walk over all of them: to find a key by its path takes
// longer than to read it.
class ScheduleKeys {
  public:
    ScheduleKeys(HKEY root, const WCHAR* path);
    // As EnumScheduleKey.
    HRESULT Enum(DWORD index, WCHAR* name, DWORD* length) const;
    // The texts of the entry of this name; one that is missing, too long or of another type is empty.
    ScheduleEntry Read(const WCHAR* name) const;

  private:
    OwnedKey m_key;  // none when it could not be opened
};

// Creates the entry's key and writes its texts. The registry's refusal is not reported.
void WriteScheduleEntry(HKEY root, const WCHAR* path, const ScheduleEntry& entry);

// Removes the entry's key. False when the registry refuses.
bool DeleteScheduleKey(HKEY root, const WCHAR* path, const WCHAR* name);
