// An automatic scan on the test's window and tuner device.
#pragma once

#include "tests/support/own_device.h"
#include "tests/unit/tuner/tuner_test.h"

class ScanOnScreen : public TunerTest {
  protected:
    const test::OwnDevice ownDevice{L"Software\\Kora Scan Test"};

    ScanOnScreen();
    ~ScanOnScreen() override;

    // Three short walks, each ended by a wrap.
    void ThreeShortWalks();
    // From the start to the scan's last message, its boxes answered with OK.
    void Scan();
    // Answers the question and returns while the scan runs.
    void Begin();
    // Whether that box of the scan is open.
    static HWND Box(const WCHAR* caption);
    // True when the scan's last message arrived.
    static bool Finished();
    // Name of the channel stored for a frequency in the scanned group; empty when there is none.
    static std::wstring StoredName(DWORD channel);
    // How often the tuner was asked that.
    int Asked(const std::string& call) const;
};
