// The dialog in which a channel is added or edited.
#pragma once

#include <windows.h>

#include "channels/channel_record.h"

// Which command opened the dialog; also ids of the popup menu.
inline constexpr DWORD kAddChannel = 501;
inline constexpr DWORD kEditChannel = 503;

struct ChannelEdit {
    DWORD dwMode;       // kAddChannel or kEditChannel
    PropRecord record;  // shown when editing; name, value, guide and group are set when accepted
};

// Runs the dialog: IDOK or the accept command of the mode when accepted; anything else is a cancel.
INT_PTR RunChannelDialog(HWND owner, ChannelEdit& edit);
