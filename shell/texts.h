// The user's texts, from the string table.
#pragma once

#include <windows.h>

// A string of the table; empty when the id is not there.
struct ResourceText {
    explicit ResourceText(UINT id);
    WCHAR sz[260];
};

// A box with a text of the table and a literal caption; the answer.
int ShowText(HWND owner, UINT textId, const WCHAR* caption, UINT style);
// The same with the caption from the table.
int ShowTexts(HWND owner, UINT textId, UINT captionId, UINT style);
