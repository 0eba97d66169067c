// The two lists that the channel database fills: what it sends, as messages of the real windows. `context` is
// the window.
#pragma once

#include <windows.h>

#include "channels/channel_db.h"

// The channel list view. Gives the window's answer to LVM_GETITEMCOUNT and LVM_GETSELECTIONMARK, else 0.
LRESULT SendToChannelList(void* context, UINT message, WPARAM wParam, LPARAM lParam);

// The group list box. Gives the window's answer to queries, else 0; other messages are not passed on.
LRESULT SendToGroupList(void* context, UINT message, WPARAM wParam, LPARAM lParam);

// A store for one operation that shows what it does in the channel list. The list answers such a message with
// notifications, whose handlers read the store, and a scan works on its own thread meanwhile: an object of
// its own for each operation keeps them apart.
class ListedChannelDB : public CChannelDB {
  public:
    explicit ListedChannelDB(HWND list) { SetListSender(list, SendToChannelList); }
};
