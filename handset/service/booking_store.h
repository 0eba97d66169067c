// The programs that are booked on this handset, in the device's registry.
#pragma once

#include <string>
#include <vector>

#include "handset/state/app_booking.h"

namespace panel {

struct BookingList {
    std::vector<handset::AppBooking> bookings;  // by name, which is the order in which they were booked
    std::vector<std::wstring> unreadable;       // names of keys that hold no booking; they are never served
};

BookingList ReadBookings();
// Nothing when there is no such booking or it cannot be read.
std::optional<handset::AppBooking> ReadBooking(const std::wstring& name);

// Notes that this time of the booking has been served. Call it with the booking lock held. False when the
// booking is gone or the registry refuses.
bool MarkStarted(const std::wstring& name, handset::LocalSeconds time);

// The key of all bookings, below HKEY_CURRENT_USER of the host.
std::wstring BookingsHostKey();

}  // namespace panel
