// The handset's service: starts booked programs at their time, on the handset's clock.
#pragma once

#include <windows.h>

#include <thread>

#include "handset/base/owned.h"
#include "handset/controls/console.h"
#include "handset/service/booking_store.h"

namespace panel {

// Any number of services may serve one handset, in one process or several: each time of a booking is served
// by one of them, once. A time is marked as served before its program is started, so that a service that is
// killed in between costs a start and never makes a second one. Radios that are due together are started one
// after the other, so that each finds the one before it and takes its place: the last one stays.
class CBookingService {
  public:
    explicit CBookingService(CConsole& console) : console_(console) {}

    // Serves until `stop` is signalled.
    void Run(HANDLE stop);

    // Starts what is due now; false when something has to wait for its turn.
    bool ServeDue();

  private:
    bool Serve(const handset::AppBooking& due);
    void Wake();
    // Until what it was woken for has had time to come up, a woken handset is kept from suspending again.
    void KeepAwake();
    void Say(const handset::AppBooking& booking, const std::wstring& outcome);
    [[nodiscard]] DWORD RealTimeToNext_ms() const;

    CConsole& console_;
    BookingList list_;
    ULONGLONG awakeUntil_ms_ = 0, lastReset_ms_ = 0;  // of the host's clock
};

// A service on a thread of its own, for as long as the object lives.
class CBackgroundService {
  public:
    explicit CBackgroundService(CConsole& console);
    ~CBackgroundService();
    CBackgroundService(const CBackgroundService&) = delete;
    CBackgroundService& operator=(const CBackgroundService&) = delete;

  private:
    handset::OwnedHandle stop_;
    CBookingService service_;
    std::thread thread_;
};

// Whether any service serves this handset.
bool ServiceRuns();

}  // namespace panel
