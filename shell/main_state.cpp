#include "shell/main_state.h"

#include "skin/skin_load.h"

CMainState::CMainState(HINSTANCE hInstance, const SkinTables& tables)
    : m_hInstance(hInstance), m_hStopRecordEvent(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
    static_cast<SkinTables&>(m_skin) = tables;
    m_skin.hInstance = hInstance;
    LoadSkinBitmaps(m_skin);
}

CMainState* MainStateOf(HWND window) {
    return reinterpret_cast<CMainState*>(GetWindowLongW(window, GWL_USERDATA));
}
