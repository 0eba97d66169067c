// A handset of its own for a test of the recording filters: a device root, a state key, a radio that plays a
// tone, and the handset's classes under their identifiers, as the radio finds them: through the manifest.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/direct_show.h"
#include "handset/state/handset_state.h"
#include "tests/support/handset_here.h"
#include "tuner/fm_device.h"

namespace test {

using capture::CRef;
using capture::Query;

inline constexpr double kTone_Hz = 440;
inline constexpr double kTonePeak = 0.4;  // at full volume

// A class of the handset's, by its identifier; empty when it cannot be made.
CRef<IUnknown> Create(const CLSID& classId);
template <typename Interface>
CRef<Interface> CreateAs(const CLSID& classId, const IID& iid) {
    return Query<Interface>(Create(classId).Get(), iid);
}

// The references to an object, apart from the one that the caller has.
ULONG OtherReferences(IUnknown* object);

// Removes all that the first handset of another process of this program has left behind.
void ForgetHandsetOf(DWORD processId);

class CaptureTest : public testing::Test {
  protected:
    CaptureTest();
    ~CaptureTest() override;

    // Switches the radio on, tuned to the tone, as loud as `volume` percent.
    void PlayTone(std::uint32_t volume = 100);
    std::wstring Host(const std::wstring& devicePath) const { return handset::HostPath(devicePath.c_str()); }

    CRef<IFMDevice> radio_;

  private:
    const HandsetHere handset_;
    const std::wstring manifest_;
    HANDLE activation_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
};

}  // namespace test
