#include "tuner/bluetooth.h"

#include <gtest/gtest.h>

#include "tests/support/trace_capture.h"

namespace {

constexpr char kNotified[] = "FM: *****BlueToothStatusNotify\n";

std::string TraceOfStatus(DWORD status) {
    return test::TraceOf([status] { OnBluetoothChanged(status); });
}

TEST(Bluetooth, BothRadioBitsWithALinkTraceTheNotifyLineAlone) {
    EXPECT_EQ(TraceOfStatus(0x1 | 0x8 | 0x4), kNotified);
    EXPECT_EQ(TraceOfStatus(0x1 | 0x8 | 0x4 | 0x10), kNotified);
}

TEST(Bluetooth, BothRadioBitsWithoutALinkAreConnectingOrUnconnected) {
    EXPECT_EQ(TraceOfStatus(0x1 | 0x8 | 0x10), std::string(kNotified) + "FM: BT Connecting..............");
    EXPECT_EQ(TraceOfStatus(0x1 | 0x8), std::string(kNotified) + "FM: BT UnConnected..............");
}

TEST(Bluetooth, WithoutBothRadioBitsItIsUnconnectedWhateverElseIsSet) {
    for (const DWORD status : {0x0u, 0x1u, 0x8u, 0x1u | 0x4u, 0x8u | 0x10u, 0x4u | 0x10u}) {
        EXPECT_EQ(TraceOfStatus(status), std::string(kNotified) + "FM: BT UnConnected..............")
            << status;
    }
}

}  // namespace
