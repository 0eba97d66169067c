// The dialog that asks for the name of a group.
#pragma once

#include <windows.h>

#include "channels/channel_record.h"

struct GroupNameRequest {
    UINT uCommand;                     // the command that asks
    WCHAR szName[kGroupNameCapacity];  // proposed, and returned
};

// Runs the dialog; true when a name was accepted.
bool AskGroupName(HWND owner, GroupNameRequest& request);
