// Filling the lists from the volume, and the senders on real list windows.
#include <windows.h>

#include <commctrl.h>

#include "channels/list_senders.h"
#include "tests/unit/channels/channels_test.h"

namespace {

using test::SentMessage;
using test::TraceOf;
using testing::ElementsAre;
using testing::IsEmpty;

class ChannelLists : public test::ChannelsTest {
  protected:
    int Show(const wchar_t* group) {
        int result = -1;
        trace = TraceOf([&] { result = db.CEDB_ShowGroup(kChannelDatabase, group); });
        return result;
    }
    int Load() {
        int result = -1;
        trace = TraceOf([&] { result = db.CEDB_LoadGroups(kGroupDatabase); });
        return result;
    }
    std::string trace;
};

TEST_F(ChannelLists, AGroupIsShownInTheOrderOfItsNames) {
    const CEOID second = Put(L"Mine", L"Bravo", 9850);
    Put(L"Yours", L"Alarm", 9850);
    const CEOID first = Put(L"Mine", L"Alpha", 8755);
    EXPECT_EQ(Show(L"Mine"), 1);
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_DELETEALLITEMS, 0, 0, L""},
                                              SentMessage{LVM_INSERTITEMW, 0, first, L"Alpha"},
                                              SentMessage{LVM_SETITEMTEXTW, 0, 1, L"87.5 MHz "},
                                              SentMessage{LVM_SETCOLUMNWIDTH, 1, -2, L""},
                                              SentMessage{LVM_INSERTITEMW, 1, second, L"Bravo"},
                                              SentMessage{LVM_SETITEMTEXTW, 1, 1, L"98.5 MHz "},
                                              SentMessage{LVM_SETCOLUMNWIDTH, 1, -2, L""}));
    EXPECT_EQ(trace, "");
}

TEST_F(ChannelLists, AGroupWithoutChannelsOnlyEmptiesTheList) {
    Put(L"Mine", L"One", 9850);
    EXPECT_EQ(Show(L"Yours"), 1);
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_DELETEALLITEMS, 0, 0, L""}));
}

TEST_F(ChannelLists, AChannelThatNamesNoGroupIsInNone) {
    PutProperties(kChannelDatabase,
                  {TextProperty(kPropChannelName, L"Alpha"), NumberProperty(kPropChannelValue, 9850)});
    const CEOID mine = Put(L"Mine", L"Bravo", 9860);
    EXPECT_EQ(Show(L"Mine"), 1);
    ASSERT_EQ(channelList.sent.size(), 4u);
    EXPECT_EQ(channelList.sent[1], (SentMessage{LVM_INSERTITEMW, 0, mine, L"Bravo"}));
    channelList.sent.clear();
    EXPECT_EQ(Show(L""), 1);
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_DELETEALLITEMS, 0, 0, L""}));
}

TEST_F(ChannelLists, AChannelDatabaseThatIsMissingEmptiesTheListAndIsTold) {
    EXPECT_EQ(Show(L"Mine"), 0);
    EXPECT_EQ(trace,
              "DumPDB: Couldn't seek to beginning of DB!\r\n"
              "ERROR: could not dump the database!!\n");
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_DELETEALLITEMS, 0, 0, L""}));
    EXPECT_TRUE(VolumeIsMounted());
    EXPECT_TRUE(db.CEDB_Close());
}

TEST_F(ChannelLists, AnUnknownPropertyIsToldAndTheScanGoesOn) {
    PutProperties(kChannelDatabase,
                  {TextProperty(kPropGroupName, L"Mine"), TextProperty(kPropChannelName, L"Alpha"),
                   NumberProperty(0x00990013, 7), NumberProperty(kPropChannelValue, 9850)});
    const CEOID next = Put(L"Mine", L"Bravo", 9860);
    EXPECT_EQ(Show(L"Mine"), 1);
    EXPECT_EQ(trace, "Unknown propid !!!!\r\n");
    ASSERT_EQ(channelList.sent.size(), 7u);
    EXPECT_EQ(channelList.sent[4], (SentMessage{LVM_INSERTITEMW, 1, next, L"Bravo"}));
}

TEST_F(ChannelLists, TheGroupsAreAppendedInTheOrderOfTheirNamesWithTheirIdentifiersOneRowOn) {
    const CEOID yours = PutGroup(L"Yours");
    const CEOID mine = PutGroup(L"Mine");
    EXPECT_EQ(Load(), 1);
    EXPECT_THAT(
        groupList.sent,
        ElementsAre(SentMessage{LB_INSERTSTRING, -1, 0, L"Mine"}, SentMessage{LB_GETCOUNT, 0, 0, L""},
                    SentMessage{LB_SETITEMDATA, 1, mine, L""}, SentMessage{LB_INSERTSTRING, -1, 0, L"Yours"},
                    SentMessage{LB_GETCOUNT, 0, 0, L""}, SentMessage{LB_SETITEMDATA, 2, yours, L""}));
}

TEST_F(ChannelLists, AGroupDatabaseThatIsMissingIsTold) {
    EXPECT_EQ(Load(), 0);
    EXPECT_EQ(trace, "DumPDB: Couldn't seek to beginning of DB!\r\n");
    EXPECT_THAT(groupList.sent, IsEmpty());
    EXPECT_TRUE(db.CEDB_Close());
}

TEST_F(ChannelLists, AnUnknownPropertyOfAGroupIsToldAndTheScanGoesOn) {
    PutGroup(L"Mine");
    PutProperties(kGroupDatabase, {TextProperty(kPropGroupName, L"Odd"), NumberProperty(0x00990013, 7)});
    EXPECT_EQ(Load(), 1);
    EXPECT_EQ(trace, "Unknown propid !!!!\r\n");
    EXPECT_EQ(groupList.rows, 2);
}

TEST_F(ChannelLists, AnEmptiedGroupIsStillListed) {
    PutGroup(L"Mine");
    Put(L"Mine", L"One", 9850);
    TraceOf([&] { db.CEDB_DeleteGroup(kEmptyGroup, L"Mine"); });
    EXPECT_EQ(Load(), 1);
    EXPECT_EQ(groupList.rows, 1);
}

// A list window of its own, taken away at the end of the test.
struct ListWindow {
    ListWindow(const wchar_t* windowClass, DWORD style)
        : handle(CreateWindowExW(0, windowClass, L"", WS_POPUP | style, 0, 0, 200, 100, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr)) {}
    ~ListWindow() { DestroyWindow(handle); }
    ListWindow(const ListWindow&) = delete;
    ListWindow& operator=(const ListWindow&) = delete;
    HWND handle;
};

TEST_F(ChannelLists, TheChannelListSenderFillsARealListView) {
    const ListWindow view(WC_LISTVIEWW, LVS_REPORT);
    for (int column = 0; column < 2; ++column) {
        LVCOLUMNW info = {};
        info.mask = LVCF_WIDTH;
        info.cx = 50;
        SendMessageW(view.handle, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&info));
    }
    db.SetListSender(view.handle, SendToChannelList);
    const CEOID oid = Put(L"Mine", L"One", 9850);
    Show(L"Mine");
    ASSERT_EQ(SendMessageW(view.handle, LVM_GETITEMCOUNT, 0, 0), 1);
    LVITEMW item = {};
    WCHAR text[100] = L"";
    item.mask = LVIF_PARAM;
    SendMessageW(view.handle, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(static_cast<CEOID>(item.lParam), oid);
    item.iSubItem = 1;
    item.pszText = text;
    item.cchTextMax = 100;
    SendMessageW(view.handle, LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(text, L"98.5 MHz ");
}

TEST_F(ChannelLists, TheChannelListSenderAnswersOnlyTheTwoQueries) {
    const ListWindow view(WC_LISTVIEWW, LVS_REPORT);
    LVITEMW item = {};
    EXPECT_EQ(SendToChannelList(view.handle, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)), 0);
    EXPECT_EQ(SendToChannelList(view.handle, LVM_GETITEMCOUNT, 0, 0), 1);
    EXPECT_EQ(SendToChannelList(view.handle, LVM_GETSELECTIONMARK, 0, 0), -1);
    EXPECT_EQ(SendToChannelList(view.handle, LVM_DELETEALLITEMS, 0, 0), 0);
    EXPECT_EQ(SendMessageW(view.handle, LVM_GETITEMCOUNT, 0, 0), 0);
}

TEST_F(ChannelLists, TheGroupListSenderForwardsItsMessagesAndAnswersTheQueries) {
    const ListWindow box(WC_LISTBOXW, LBS_HASSTRINGS);
    const auto send = [&](UINT message, WPARAM wParam, const void* lParam) {
        return SendToGroupList(box.handle, message, wParam, reinterpret_cast<LPARAM>(lParam));
    };
    EXPECT_EQ(send(LB_INSERTSTRING, static_cast<WPARAM>(-1), L"Mine"), 0);
    EXPECT_EQ(send(LB_ADDSTRING, 0, L"Yours"), 0);
    EXPECT_EQ(send(LB_GETCOUNT, 0, nullptr), 2);
    EXPECT_EQ(send(LB_FINDSTRING, static_cast<WPARAM>(-1), L"you"), 1);
    EXPECT_EQ(send(LB_SETITEMDATA, 1, reinterpret_cast<const void*>(77)), 0);
    EXPECT_EQ(send(LB_GETITEMDATA, 1, reinterpret_cast<const void*>(5)), 77);
    EXPECT_EQ(send(LB_SETCURSEL, 1, nullptr), 0);
    EXPECT_EQ(send(LB_GETCURSEL, 0, nullptr), 1);
    WCHAR text[20] = L"";
    EXPECT_EQ(send(LB_GETTEXT, 1, text), 5);
    EXPECT_STREQ(text, L"Yours");
    EXPECT_EQ(send(LB_DELETESTRING, 0, nullptr), 0);
    EXPECT_EQ(send(LB_GETCOUNT, 0, nullptr), 1);
    EXPECT_EQ(send(LB_RESETCONTENT, 0, nullptr), 0);
    EXPECT_EQ(send(LB_GETCOUNT, 0, nullptr), 1);
}

TEST_F(ChannelLists, ASenderWithoutAListAnswersNothing) {
    EXPECT_EQ(SendToGroupList(nullptr, LB_GETCOUNT, 0, 0), 0);
    EXPECT_EQ(SendToChannelList(nullptr, LVM_GETITEMCOUNT, 0, 0), 0);
}

}  // namespace
