// The soft-key menu bar's window.
#include "handset/aygshell/menu_bar_window.h"

#include <commctrl.h>

#include <memory>

#include "handset/aygshell/soft_key_look.h"
#include "handset/aygshell/soft_key_menu.h"
#include "handset/base/module_edge.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/screen_size.h"

namespace handset {
namespace {

// No control of a program's own has this identifier.
constexpr int kBarId = 0xE81B;
// To the bar itself: press the soft key wParam. Posted, so that whoever reports the press is not kept waiting
// until a menu or a dialog is closed again.
constexpr UINT kPressMessage = WM_APP + 1;
// The toolbar's own messages end well below this; further up lie those of other shell windows.
constexpr UINT kLastToolbarMessage = WM_USER + 399;

UINT SoftKeyMessage() {
    static const UINT message = RegisterWindowMessageW(kSoftKeyMessage);
    return message;
}

class CMenuBar {
  public:
    CMenuBar(HWND parent, SoftKeySet keys, BarKind kind)
        : parent_(parent), kind_(kind), menu_(std::move(keys.menu)), keys_(std::move(keys.keys)) {}

    static CMenuBar* Of(HWND bar) {
        return reinterpret_cast<CMenuBar*>(GetWindowLongPtrW(bar, GWLP_USERDATA));
    }
    bool IsPlaceholder() const { return kind_ == BarKind::Placeholder; }
    // Makes the toolbar inside the new window.
    bool Create(HWND bar);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK BarProc(HWND bar, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK ParentProc(HWND parent, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR bar);

  private:
    void AddButtons();
    bool HeightChanges() const;
    void FitToParent() const;
    void LayOutButtons();
    void Press(WPARAM index);
    void OpenMenu(const TBBUTTONINFOW& button, WPARAM index);
    void CloseMenu() const;
    LRESULT Notify(LPARAM lParam);
    void SwallowClickOn(WPARAM index) const;
    TBBUTTONINFOW Button(WPARAM index) const;

    HWND bar_ = nullptr;
    HWND toolbar_ = nullptr;
    HWND parent_;
    BarKind kind_;
    OwnedMenu menu_;
    std::vector<SoftKey> keys_;
    OwnedFont font_;
    bool menuOpen_ = false;
};

bool CMenuBar::Create(HWND bar) {
    bar_ = bar;
    toolbar_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                               WS_CHILD | WS_VISIBLE | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER |
                                   TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_CUSTOMERASE,
                               0, 0, 0, 0, bar, nullptr, nullptr, nullptr);
    if (toolbar_ == nullptr) return false;
    SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    AddButtons();
    return SetWindowSubclass(parent_, ParentProc, reinterpret_cast<UINT_PTR>(bar_),
                             reinterpret_cast<DWORD_PTR>(this)) != FALSE;
}

void CMenuBar::AddButtons() {
    for (const SoftKey& key : keys_) {
        TBBUTTON button = {};
        button.iBitmap = I_IMAGENONE;
        button.idCommand = static_cast<int>(key.command);
        button.fsState = key.state;
        button.fsStyle = key.popup != nullptr ? BTNS_WHOLEDROPDOWN | BTNS_SHOWTEXT : BTNS_SHOWTEXT;
        button.dwData = reinterpret_cast<DWORD_PTR>(key.popup);
        button.iString = reinterpret_cast<INT_PTR>(key.label.c_str());
        SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    keys_.clear();
}

bool CMenuBar::HeightChanges() const {
    RECT place = {};
    GetWindowRect(bar_, &place);
    return place.bottom - place.top != static_cast<LONG>(ShellBarHeight());
}

void CMenuBar::FitToParent() const {
    RECT client = {};
    GetClientRect(parent_, &client);
    const auto height = static_cast<int>(ShellBarHeight());
    SetWindowPos(bar_, HWND_TOP, 0, client.bottom - height, client.right, height, SWP_NOACTIVATE);
}

void CMenuBar::LayOutButtons() {
    RECT client = {};
    GetClientRect(bar_, &client);
    OwnedFont font = SoftKeyFont(client.bottom);
    SendMessageW(toolbar_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    font_ = std::move(font);
    SetWindowPos(toolbar_, nullptr, 0, 0, client.right, client.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageW(toolbar_, TB_SETBUTTONSIZE, 0, MAKELPARAM(client.right / 2, client.bottom));
    const LRESULT count = SendMessageW(toolbar_, TB_BUTTONCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTONINFOW info = {};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_SIZE | TBIF_BYINDEX;
        info.cx = static_cast<WORD>(i == 0 ? client.right / 2 : client.right - client.right / 2);
        SendMessageW(toolbar_, TB_SETBUTTONINFOW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&info));
    }
}

TBBUTTONINFOW CMenuBar::Button(WPARAM index) const {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_COMMAND | TBIF_STATE | TBIF_LPARAM | TBIF_BYINDEX;
    const LRESULT found = SendMessageW(toolbar_, TB_GETBUTTONINFOW, index, reinterpret_cast<LPARAM>(&info));
    if (found < 0) info.fsState = 0;
    return info;
}

void CMenuBar::Press(WPARAM index) {
    // A second press closes the menu that the first one opened.
    if (menuOpen_) {
        CloseMenu();
        return;
    }
    const TBBUTTONINFOW button = Button(index);
    if ((button.fsState & TBSTATE_ENABLED) == 0 || !IsWindowEnabled(parent_) || !IsWindowVisible(bar_))
        return;
    if (button.lParam != 0) {
        OpenMenu(button, index);
    } else {
        PostMessageW(parent_, WM_COMMAND, MAKEWPARAM(button.idCommand, 0), reinterpret_cast<LPARAM>(bar_));
    }
}

void CMenuBar::OpenMenu(const TBBUTTONINFOW& button, WPARAM index) {
    const HWND bar = bar_;
    const WPARAM command = static_cast<WPARAM>(button.idCommand);
    menuOpen_ = true;
    SendMessageW(toolbar_, TB_PRESSBUTTON, command, TRUE);
    TrackSoftKeyMenu(reinterpret_cast<HMENU>(button.lParam), parent_, bar,
                     index == 0 ? BarSide::Left : BarSide::Right);
    // The program may have closed its window, and with it this bar, while the menu was open.
    if (!IsWindow(bar)) return;
    menuOpen_ = false;
    SendMessageW(toolbar_, TB_PRESSBUTTON, command, FALSE);
    SwallowClickOn(index);
}

void CMenuBar::CloseMenu() const {
    if (!menuOpen_) return;
    EndMenu();
    // When the windows are on their way out, nothing else would wake the menu's loop to see that it is over.
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

// The click that closes a menu by its own key stays in the queue and would open the menu again.
void CMenuBar::SwallowClickOn(WPARAM index) const {
    RECT key = {};
    MSG click = {};
    SendMessageW(toolbar_, TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&key));
    if (!PeekMessageW(&click, toolbar_, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE)) return;
    if (PtInRect(&key,
                 {static_cast<short>(LOWORD(click.lParam)), static_cast<short>(HIWORD(click.lParam))})) {
        PeekMessageW(&click, toolbar_, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE);
    }
}

LRESULT CMenuBar::Notify(LPARAM lParam) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.code == NM_CUSTOMDRAW) {
        return PaintSoftKey(*reinterpret_cast<const NMTBCUSTOMDRAW*>(lParam), font_.get());
    }
    if (header.code == TBN_DROPDOWN) {
        const auto& dropDown = *reinterpret_cast<const NMTOOLBARW*>(lParam);
        const LRESULT index =
            SendMessageW(toolbar_, TB_COMMANDTOINDEX, static_cast<WPARAM>(dropDown.iItem), 0);
        PostMessageW(bar_, kPressMessage, static_cast<WPARAM>(index), 0);
        return TBDDRET_DEFAULT;
    }
    return 0;
}

LRESULT CMenuBar::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == SoftKeyMessage()) return PostMessageW(bar_, kPressMessage, wParam, 0);
    if (message > WM_USER && message <= kLastToolbarMessage) {
        return SendMessageW(toolbar_, message, wParam, lParam);
    }
    switch (message) {
        case WM_SIZE:
            LayOutButtons();
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_COMMAND:
            return PostMessageW(parent_, WM_COMMAND, MAKEWPARAM(LOWORD(wParam), 0),
                                reinterpret_cast<LPARAM>(bar_));
        case WM_NOTIFY:
            return Notify(lParam);
        case WM_DESTROY:
            CloseMenu();
            return 0;
        case kPressMessage:
            Press(wParam);
            return 0;
        default:
            return DefWindowProcW(bar_, message, wParam, lParam);
    }
}

LRESULT CALLBACK CMenuBar::BarProc(HWND bar, UINT message, WPARAM wParam, LPARAM lParam) try {
    if (message == WM_CREATE) {
        // From here on the window owns the object, also when its creation fails now.
        auto& handedOver = *static_cast<std::unique_ptr<CMenuBar>*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        CMenuBar* const created = handedOver.release();
        SetWindowLongPtrW(bar, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
        if (!created->Create(bar)) return -1;
        created->FitToParent();
        return 0;
    }
    CMenuBar* const self = Of(bar);
    if (self == nullptr) return DefWindowProcW(bar, message, wParam, lParam);
    if (message != WM_NCDESTROY) return self->Handle(message, wParam, lParam);
    RemoveWindowSubclass(self->parent_, ParentProc, reinterpret_cast<UINT_PTR>(bar));
    SetWindowLongPtrW(bar, GWLP_USERDATA, 0);
    delete self;
    return DefWindowProcW(bar, message, wParam, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>(message == WM_CREATE ? -1 : 0);
}

LRESULT CALLBACK CMenuBar::ParentProc(HWND parent, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR bar) try {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(parent, ParentProc, id);
    const auto& self = *reinterpret_cast<const CMenuBar*>(bar);
    // On a display of twice the pixels it is twice as high: a parent that lays itself out is to know.
    if (message == WM_WINDOWPOSCHANGED && self.HeightChanges()) self.FitToParent();
    const LRESULT result = DefSubclassProc(parent, message, wParam, lParam);
    // The parent's own handling may have destroyed the bar.
    if (message == WM_WINDOWPOSCHANGED && IsWindow(reinterpret_cast<HWND>(id))) {
        self.FitToParent();
    }
    return result;
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

bool RegisterBarClass() {
    WNDCLASSW description = {};
    description.lpfnWndProc = CMenuBar::BarProc;
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
    description.lpszClassName = kMenuBarClass;
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
    return InitCommonControlsEx(&classes) &&
           (RegisterClassW(&description) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS);
}

}  // namespace

HWND CreateMenuBarWindow(HWND parent, SoftKeySet keys, BarKind kind) {
    static const bool registered = RegisterBarClass();
    if (!registered) return nullptr;
    const HWND previous = FindMenuBarWindow(parent);
    auto object = std::make_unique<CMenuBar>(parent, std::move(keys), kind);
    const DWORD visible = kind == BarKind::Hidden ? 0 : WS_VISIBLE;
    const HWND bar = CreateWindowExW(0, kMenuBarClass, nullptr, WS_CHILD | WS_CLIPSIBLINGS | visible, 0, 0, 0,
                                     0, parent, reinterpret_cast<HMENU>(INT_PTR{kBarId}), nullptr, &object);
    if (bar == nullptr || previous == nullptr) return bar;
    const CMenuBar* const replaced = CMenuBar::Of(previous);
    if (replaced != nullptr && replaced->IsPlaceholder()) DestroyWindow(previous);
    return bar;
}

HWND FindMenuBarWindow(HWND parent) {
    return FindWindowExW(parent, nullptr, kMenuBarClass, nullptr);
}

}  // namespace handset
