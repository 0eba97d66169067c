// What the tests of the monitor's rounds share: the tuner's test, the radio's settings and a round to run.
#pragma once

#include "shell/monitor_thread.h"
#include "tests/support/device_settings.h"
#include "tests/unit/tuner/tuner_test.h"

// How often a number was read from the registry.
int RegistryReads();

class MonitorTest : public TunerTest {
  protected:
    MonitorTest() { g_app.lLastSignal = device.signal; }

    void Round() { RunMonitorRound(*state, window); }
    void Rounds(int count) {
        while (count-- > 0) Round();
    }
    // What a round writes to the debug output.
    std::string TraceOfRound() {
        return test::TraceOf([this] { Round(); });
    }
    // A posted message of this kind that waits for the window, taken out.
    bool TakePosted(UINT message) {
        MSG taken;
        return PeekMessageW(&taken, window, message, message, PM_REMOVE) != FALSE;
    }

    test::DeviceSettings settings;
};
