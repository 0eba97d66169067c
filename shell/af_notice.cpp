#include "shell/af_notice.h"

#include "resources/resource_ids.h"
#include "shell/texts.h"

void ShowAFNotice(HWND window) {
    ShowText(window, IDS_AF_SWITCHED, L"FM", MB_TOPMOST);
}
