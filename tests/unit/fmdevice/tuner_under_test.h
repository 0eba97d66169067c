// A tuner device on a handset of its own: an empty device root in a temporary folder and a state key that no
// other test has.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "handset/state/handset_state.h"
#include "tests/support/handset_here.h"
#include "tests/support/wait.h"
#include "tuner/fm_device.h"

namespace test {

inline constexpr HRESULT kNotReady = __HRESULT_FROM_WIN32(ERROR_NOT_READY);
inline constexpr HRESULT kNoStation = __HRESULT_FROM_WIN32(ERROR_NOT_FOUND);

using ClassObjectProc = HRESULT(STDAPICALLTYPE*)(REFCLSID clsid, REFIID iid, void** out);
using CanUnloadProc = HRESULT(STDAPICALLTYPE*)();

// The exports of fmdevice.dll, which are not in its import library.
ClassObjectProc GetClassObject();
CanUnloadProc CanUnloadNow();

// The class factory of the tuner device, and a device made by it (null when that failed).
IClassFactory* Factory();
IFMDevice* CreateDevice(HRESULT* result = nullptr);

// Runs the disabled tests of that name in this program once more with a faster clock, for the clock is that
// of a whole process.
void ExpectToPassAtSixtyTimesTheSpeed(const std::wstring& filter);

class TunerTest : public testing::Test {
  protected:
    TunerTest();
    ~TunerTest() override;

    // Replaces \Windows\band.ini, and creates a device on it that is powered up.
    void WriteBand(const std::string& text) { WriteBytes(handset::HostPath(L"\\Windows\\band.ini"), text); }
    void PowerUp();

    std::uint32_t Channel();
    std::int32_t Signal();

    IFMDevice* device_ = nullptr;

  private:
    const HandsetHere handset_;
};

}  // namespace test
