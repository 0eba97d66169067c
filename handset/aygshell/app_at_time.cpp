// RunAppAtTimeEx and StopAppAtTimeEx: bookings of programs, kept in the device's registry. The handset's
// service starts them.
#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <optional>
#include <string>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/aygshell.h"
#include "handset/include/regext.h"
#include "handset/state/app_booking.h"
#include "handset/state/booking_lock.h"
#include "handset/state/handset_state.h"

namespace {

using handset::CBookingLock;

constexpr wchar_t kLastBooking[] = L"LastBooking";

std::wstring KeyOf(const std::wstring& name) {
    return handset::kBookingsKey + (L"\\" + name);
}

bool IsBooked(const std::wstring& name) {
    handset::OwnedKey key;
    return RegOpenKeyExW(HKEY_LOCAL_MACHINE, KeyOf(name).c_str(), 0, KEY_READ, handset::Put(key)) ==
           ERROR_SUCCESS;
}

// The time as it is kept; nothing for one that does not exist. The day of the week does not matter.
std::optional<std::wstring> TimeText(const SYSTEMTIME& time) {
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"%04u-%02u-%02u %02u:%02u:%02u", time.wYear, time.wMonth, time.wDay,
                  time.wHour, time.wMinute, time.wSecond);
    if (!handset::ReadLocalTime(text)) return std::nullopt;
    return text;
}

// A name that was never given, also when the key of the bookings was deleted by hand: a program may still
// know the names from before, and must not take back another's booking by one of them.
std::wstring TakeNewName() {
    DWORD number = 0;
    RegistryGetDWORD(HKEY_LOCAL_MACHINE, handset::kBookingsKey, handset::kBookingNumber, &number);
    number = std::max<DWORD>(number, handset::StateDword(kLastBooking, 0));
    do {
        ++number;
    } while (IsBooked(handset::BookingName(number)));
    RegistrySetDWORD(HKEY_LOCAL_MACHINE, handset::kBookingsKey, handset::kBookingNumber, number);
    handset::SetStateDword(kLastBooking, number);
    return handset::BookingName(number);
}

// The start comes last: a booking without one is never served, so nobody meets a half-written one.
bool Write(const std::wstring& name, LPCWSTR application, LPCWSTR commandLine, DWORD repeat,
           const std::wstring& time) {
    const std::wstring key = KeyOf(name);
    const auto setText = [&key](const wchar_t* value, const wchar_t* text) {
        return SUCCEEDED(RegistrySetString(HKEY_LOCAL_MACHINE, key.c_str(), value, text));
    };
    return setText(handset::kBookingProgram, application) &&
           setText(handset::kBookingCommandLine, commandLine == nullptr ? L"" : commandLine) &&
           SUCCEEDED(RegistrySetDWORD(HKEY_LOCAL_MACHINE, key.c_str(), handset::kBookingRepeat, repeat)) &&
           setText(handset::kBookingStart, time.c_str());
}

}  // namespace

extern "C" HRESULT WINAPI RunAppAtTimeEx(LPCWSTR application, LPCWSTR commandLine, SYSTEMTIME* time,
                                         DWORD repeat, LPWSTR name, DWORD count) try {
    const CPlatformCall call(true);
    if (name != nullptr && count != 0) name[0] = L'\0';
    if (application == nullptr || time == nullptr || name == nullptr || !handset::RepeatOf(repeat)) {
        return E_INVALIDARG;
    }
    const auto text = TimeText(*time);
    if (!text) return E_INVALIDARG;
    if (count <= handset::BookingName(0).size()) return HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
    const CBookingLock lock;
    if (!lock) return E_FAIL;
    const std::wstring given = TakeNewName();
    if (!Write(given, application, commandLine, repeat, *text)) {
        RegDeleteKeyW(HKEY_LOCAL_MACHINE, KeyOf(given).c_str());
        return E_FAIL;
    }
    std::wmemcpy(name, given.c_str(), given.size() + 1);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI StopAppAtTimeEx(LPCWSTR name) try {
    const CPlatformCall call(true);
    if (name == nullptr) return E_INVALIDARG;
    const std::wstring booking = name;
    // A name leads nowhere but to the key of one booking.
    if (booking.empty() || booking.find(L'\\') != std::wstring::npos) return E_FAIL;
    const CBookingLock lock;
    if (!lock || !IsBooked(booking)) return E_FAIL;
    return RegDeleteKeyW(HKEY_LOCAL_MACHINE, KeyOf(booking).c_str()) == ERROR_SUCCESS ? S_OK : E_FAIL;
} catch (...) {
    return handset::EdgeResult();
}
