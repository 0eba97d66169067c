// The bookings, read and marked.
#include "handset/service/booking_store.h"

#include "handset/controls/device_registry.h"

namespace panel {
namespace {

constexpr DWORD kNoNumber = 0xFFFFFFFF;

std::wstring BookingsKey() {
    return std::wstring(L"HKLM\\") + handset::kBookingsKey;
}

std::wstring KeyOf(const std::wstring& name) {
    return BookingsKey() + L"\\" + name;
}

}  // namespace

std::wstring BookingsHostKey() {
    return HostKeyPath(BookingsKey()).value_or(L"");
}

std::optional<handset::AppBooking> ReadBooking(const std::wstring& name) {
    const std::wstring key = KeyOf(name);
    handset::AppBooking booking;
    booking.name = name;
    booking.program = DeviceString(key, handset::kBookingProgram, L"");
    booking.commandLine = DeviceString(key, handset::kBookingCommandLine, L"");
    const auto start = handset::ReadLocalTime(DeviceString(key, handset::kBookingStart, L""));
    const auto repeat = handset::RepeatOf(DeviceDword(key, handset::kBookingRepeat, kNoNumber));
    if (booking.program.empty() || !start || !repeat) return std::nullopt;
    booking.start = *start;
    booking.repeat = *repeat;
    booking.started = handset::ReadLocalTime(DeviceString(key, handset::kBookingStarted, L""));
    return booking;
}

BookingList ReadBookings() {
    BookingList list;
    for (const std::wstring& name : DeviceSubkeys(BookingsKey())) {
        if (auto booking = ReadBooking(name)) {
            list.bookings.push_back(std::move(*booking));
        } else {
            list.unreadable.push_back(name);
        }
    }
    return list;
}

bool MarkStarted(const std::wstring& name, handset::LocalSeconds time) {
    return DeviceKeyExists(KeyOf(name)) &&
           SetDeviceString(KeyOf(name), handset::kBookingStarted, handset::LocalTimeText(time));
}

}  // namespace panel
