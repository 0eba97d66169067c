// What the tests of the channel store share: an empty device of a test's own, the store, and what it sends to
// its lists.
#pragma once

#include <windows.h>

#include <cedb.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "channels/channel_db.h"
#include "tests/support/own_device.h"
#include "tests/support/stored_channels.h"
#include "tests/support/trace_capture.h"

namespace test {

// A message that a list sender was given.
struct SentMessage {
    UINT message;
    long long wParam;
    long long item;  // CEOID of a new row, or the column or width of what is set
    std::wstring text;
    bool operator==(const SentMessage& other) const {
        return message == other.message && wParam == other.wParam && item == other.item && text == other.text;
    }
};
std::ostream& operator<<(std::ostream& out, const SentMessage& sent);

PropRecord Record(const wchar_t* group, const wchar_t* name, DWORD value, const wchar_t* guide = L"");

// A list of either kind: writes down its messages and answers the queries.
class RecordedList {
  public:
    static LRESULT Send(void* list, UINT message, WPARAM wParam, LPARAM lParam);
    std::vector<SentMessage> sent;
    LRESULT rows = 0;
    LRESULT selectionMark = -1;
};

class ChannelsTest : public testing::Test {
  private:
    const OwnDevice m_device{L"Software\\Kora Channels Test"};  // gone last

  protected:
    ChannelsTest();
    ~ChannelsTest() override;

    // Puts a record straight into the volume, whatever the store would say to it.
    CEOID Put(const wchar_t* group, const wchar_t* name, DWORD value, const wchar_t* guide = L"");
    CEOID PutProperties(const wchar_t* database, std::vector<CEPROPVAL> properties);
    CEOID PutGroup(const wchar_t* name);
    static std::vector<StoredChannel> Channels() { return StoredChannels(); }
    static std::vector<std::wstring> Groups() { return StoredGroups(); }
    // Whether somebody still has the volume mounted.
    static bool VolumeIsMounted();

    // Makes the volume's file one that is no volume.
    void SpoilVolume() const;
    std::string VolumeBytes() const;

    CChannelDB db;
    RecordedList channelList;
    RecordedList groupList;
};

}  // namespace test
