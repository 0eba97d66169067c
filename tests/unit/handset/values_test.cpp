// Whatever stands in the state and in the device's registry, of any type and any length: the command line,
// the switches and the service go on, and what is no value counts as missing.
#include <cstdlib>

#include "handset/controls/device_registry.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/switches.h"
#include "handset/phone/switch_column.h"
#include "handset/service/booking_service.h"
#include "handset/state/handset_state.h"
#include "tests/unit/handset/booked_handset.h"

namespace panel {
namespace {

using Values = BookedHandset;

// Every place is given one kind in three, and each kind comes to a third of the places; with KORA_EVERY_VALUE
// all do.
constexpr std::size_t kUsualStep = 3;

struct Data {
    DWORD type;
    std::string bytes;
};

std::string Bytes(const std::wstring& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

std::vector<Data> EveryKind() {
    const std::string contents[] = {
        "",
        "x",
        std::string(3, '\xFF'),
        std::string(4, '\0'),
        std::string(4, '\xFF'),
        std::string(8, '\xFF'),
        std::string(9, '\x01'),
        std::string(24, '\xFF'),
        Bytes(L"no terminator"),
        Bytes(L"-1") + std::string(2, '\0'),
        Bytes(L"99999999999999999999999") + std::string(3, '\0'),
        Bytes(std::wstring(40000, L'n')),
        Bytes(std::wstring(L"..\\..\0\\x", 8)),
        Bytes(L"\xD800\xDC00\xDFFF"),
    };
    std::vector<Data> kinds;
    for (DWORD type = REG_NONE; type <= REG_QWORD; ++type) {
        for (const std::string& bytes : contents) kinds.push_back({type, bytes});
    }
    kinds.push_back({77, "of no type"});
    return kinds;
}

struct Place {
    std::wstring key;  // below HKEY_CURRENT_USER
    const wchar_t* value;
};

class EveryValue : public Values {
  protected:
    std::vector<Place> Places() const {
        const std::wstring state = handset::StateKeyPath(), device = state + L"\\Registry\\";
        std::vector<Place> places;
        for (const wchar_t* name :
             {L"ClockRate",    L"ClockMoment",        L"TimeZone",           L"ScreenWidth",
              L"ScreenHeight", L"StorageCard",        L"ObjectStoreFree",    L"StorageCardFree",
              L"PowerState",   L"PowerFlags",         L"UnattendedRequests", L"IdleTimerResets",
              L"AllKeys",      L"LastBooking",        L"TunerLog",           L"SoundLog",
              L"SignalLimit",  L"SignalLimitChannel", L"TunedChannel",       L"HostSound",
              L"Fault",        L"OwnDeviceRoots",     L"TunerVolume"})
            places.push_back({state, name});
        for (const wchar_t* name : {L"Headset", L"Bluetooth"})
            places.push_back({device + L"HKLM\\System\\State\\Hardware", name});
        for (const wchar_t* name : {L"Status", L"Caller Number"})
            places.push_back({device + L"HKLM\\System\\State\\Phone", name});
        for (const wchar_t* name : {L"BattSuspend", L"BattUserIdle"})
            places.push_back({device + L"HKLM\\System\\CurrentControlSet\\Control\\Power\\Timeouts", name});
        for (const wchar_t* name : {L"Application", L"CommandLine", L"Start", L"Repeat", L"Started"})
            places.push_back({device + L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001", name});
        places.push_back({device + L"HKLM\\System\\Notifications", L"LastNumber"});
        return places;
    }
    static void Put(const Place& place, const Data& data) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, place.key.c_str(), place.value, data.type,
                                  data.bytes.data(), static_cast<DWORD>(data.bytes.size())),
                  ERROR_SUCCESS);
    }
    static void Take(const Place& place) {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, place.key.c_str(), place.value);
    }
};

TEST_F(EveryValue, OfAnyTypeAndLengthLeavesTheCommandLineTheSwitchesAndTheServiceAtWork) {
    const auto kinds = EveryKind();
    const std::size_t step = std::getenv("KORA_EVERY_VALUE") != nullptr ? 1 : kUsualStep;
    std::size_t first = 0;
    for (const Place& place : Places()) {
        for (std::size_t kind = first++ % step; kind < kinds.size(); kind += step) {
            const Data& data = kinds[kind];
            // Due at the moment of each look, unless it is spoilt; it ends at once.
            DeleteDeviceKey(L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001");
            Put(place, data);
            ASSERT_EQ(Run({L"status"}), kDone) << Utf8(place.value) << " " << data.type;
            ASSERT_EQ(Run({L"schedule"}), kDone) << Utf8(place.value) << " " << data.type;
            const Snapshot now = TakeSnapshot();
            ASSERT_GE(now.screenWidth, kSmallestScreen);
            ASSERT_LE(now.screenHeight, kLargestScreen);
            ASSERT_GE(now.clockRate, 1u);
            ASSERT_LE(now.clockRate, 3600u);
            ASSERT_LE(now.signalLimit, 100u);
            RealTimeUntil_ms(LocalNow() + 100, 1000);
            Take(place);
        }
    }
}

// One value at a time beside a booking that is otherwise in order.
TEST_F(EveryValue, OfABookingLeavesTheServiceAtWork) {
    const auto kinds = EveryKind();
    const wchar_t* const kName = L"RunAppAtTime-0000000001";
    const std::wstring key = handset::StateKeyPath() + L"\\Registry\\HKLM\\System\\Notifications\\" + kName;
    Book(L"RunAppAtTime-0000000002", L"good", ten_);
    handset::LocalSeconds now = ten_;
    for (const wchar_t* value : {L"Application", L"CommandLine", L"Start", L"Repeat", L"Started"}) {
        for (std::size_t i = 0; i < kinds.size(); i += 3) {
            Book(kName, L"spoilt", ten_);
            Put({key, value}, kinds[i]);
            SetClock(now);
            CBookingService service(console_);
            const handset::OwnedHandle stop(CreateEventW(nullptr, TRUE, TRUE, nullptr));
            service.Run(stop.get());
            ASSERT_EQ(Run({L"schedule"}), kDone);
            DeleteDeviceKey(std::wstring(L"HKLM\\System\\Notifications\\") + kName);
        }
    }
    now += kWeek_s;
    SetClock(now);
    LookOnce();
    EXPECT_TRUE(WaitForStart("good"));
}

TEST_F(EveryValue, ThatIsNoNumberCountsAsMissing) {
    const Place place = {handset::StateKeyPath(), L"ScreenWidth"};
    for (const Data& data : EveryKind()) {
        const bool number = (data.type == REG_DWORD && data.bytes.size() == 4) ||
                            (data.type == REG_QWORD && data.bytes.size() == 8);
        Put(place, data);
        if (number) continue;
        EXPECT_EQ(handset::StateDword(L"ScreenWidth", 7), 7u) << data.type << " " << data.bytes.size();
        EXPECT_EQ(handset::StateQword(L"ScreenWidth"), std::nullopt) << data.type << " " << data.bytes.size();
    }
    // Too much for 32 bits.
    handset::SetStateQword(L"ScreenWidth", 0x100000000);
    EXPECT_EQ(handset::StateDword(L"ScreenWidth", 7), 7u);
    EXPECT_EQ(handset::StateQword(L"ScreenWidth"), 0x100000000u);
}

}  // namespace
}  // namespace panel
