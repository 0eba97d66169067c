// What the tests of the recording control share: the main state on a window with the real skin, a handset of
// its own, a tuner device and a capture graph that write down their calls, and message boxes that answer
// themselves.
#pragma once

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "recording/capture_recorder.h"
#include "recording/recording_control.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/settings_key.h"
#include "tests/support/fake_fm_device.h"
#include "tests/support/trace_capture.h"
#include "tests/support/wait.h"
#include "tests/unit/coredll/handset_fixture.h"
#include "tests/unit/recording/fake_graph.h"
#include "tests/unit/recording/message_boxes.h"

namespace test {

inline constexpr LPARAM kSilent = -1;

class RecordingTest : public HandsetTest {
  protected:
    RecordingTest();
    ~RecordingTest() override;

    // The record button brought to its state and reported, as a tap does. The trace.
    std::string PressRecord(LPARAM lParam = 0);
    std::string ReleaseRecord(LPARAM lParam = 0);
    void SetFreeSpace(const WCHAR* bytes) { SetState(L"KORA_OBJECTSTOREFREE", bytes); }
    void DefineName(const std::wstring& name);
    bool IsDisabled(int button) const;
    int RecordButton() const;
    bool ScanIsGrey() const;
    bool ListIsShown() const;
    // Stored in the group that the settings have selected.
    void StoreChannel(const WCHAR* name, DWORD channel);
    std::wstring RecordPathText() const { return state->m_szRecordPath; }
    // The last text of a field; "(never shown)".
    static std::wstring LastShown(int field);
    // Everything that a field has shown, in its order.
    static std::vector<std::wstring> ShownIn(int field);

    FakeGraph graph;
    FakeFMDevice device;
    MessageBoxes boxes;
    CMainState* state = nullptr;
    HWND window = nullptr;

  private:
    std::string Click(int frame, LPARAM lParam);
};

}  // namespace test
