#include "shell/texts.h"

#include "shell/app_block.h"

ResourceText::ResourceText(UINT id) : sz{} {
    LoadStringW(g_app.hInstance, id, sz, ARRAYSIZE(sz));
}

int ShowText(HWND owner, UINT textId, const WCHAR* caption, UINT style) {
    return MessageBoxW(owner, ResourceText(textId).sz, caption, style);
}

int ShowTexts(HWND owner, UINT textId, UINT captionId, UINT style) {
    return MessageBoxW(owner, ResourceText(textId).sz, ResourceText(captionId).sz, style);
}
