// Keys of the channel list: what is the main window's goes there, and moving the selection keeps the hints
// that there is more above or below. Beside them, the frequencies' column fits into what the list shows.
#pragma once

#include <windows.h>

// Rows at the edges of the list that are cut off or scrolled out.
struct ListEdgeHints {
    int nFirstRow;  // first fully visible row
    int nLastRow;   // last partly visible row
    BOOL bMoreAbove;
    BOOL bMoreBelow;
};

// Puts the list's own procedure behind ours.
void SubclassChannelList(HWND list);

// The hints of the list as they were last worked out.
const ListEdgeHints& ChannelListHints();
