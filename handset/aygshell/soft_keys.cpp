// Reading soft keys from menu bar and menu resources.
#include "handset/aygshell/soft_keys.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

#include "handset/include/aygshell.h"

namespace handset {
namespace {

constexpr std::size_t kMaximumKeys = 2;
// A key that opens a menu has no command; its toolbar button needs an identifier all the same.
constexpr UINT kFirstPopupCommand = 0xF000;

// The resource as the resource compiler lays it out.
struct BarHeader {
    WORD menu;
    WORD buttonCount;
};
struct BarButton {
    WORD image;
    WORD command;
    WORD state;  // TBSTATE_…
    WORD style;  // TBSTYLE_…
    WORD string;
    WORD data;
    WORD submenu;  // position in the menu, or NOMENU
};
static_assert(sizeof(BarHeader) == 4 && sizeof(BarButton) == 14);

struct ResourceData {
    const BYTE* bytes = nullptr;
    DWORD size = 0;
};

ResourceData FindBarResource(HINSTANCE module, UINT id) {
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), RT_RCDATA);
    if (resource == nullptr) return {};
    const HGLOBAL loaded = LoadResource(module, resource);
    return {static_cast<const BYTE*>(LockResource(loaded)), SizeofResource(module, resource)};
}

std::wstring ModuleString(HINSTANCE module, UINT id) {
    // With no room given, LoadStringW hands out the text in the module's own memory.
    const wchar_t* text = nullptr;
    const int length = LoadStringW(module, id, reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

std::wstring MenuEntryText(HMENU menu, UINT position) {
    const int length = GetMenuStringW(menu, position, nullptr, 0, MF_BYPOSITION);
    if (length <= 0) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    GetMenuStringW(menu, position, text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// False when the button names a submenu that the menu does not have.
bool AddKey(HINSTANCE module, const BarButton& button, SoftKeySet* set) {
    SoftKey key;
    key.command = button.command;
    key.state = static_cast<BYTE>(button.state);
    key.label = ModuleString(module, button.string);
    if (button.submenu != NOMENU) {
        key.popup = GetSubMenu(set->menu.get(), button.submenu);
        if (key.popup == nullptr) return false;
        if (key.label.empty()) key.label = MenuEntryText(set->menu.get(), button.submenu);
    }
    set->keys.push_back(std::move(key));
    return true;
}

}  // namespace

std::optional<SoftKeySet> SoftKeysFromBarResource(HINSTANCE module, UINT id) {
    const ResourceData data = FindBarResource(module, id);
    BarHeader header = {};
    if (data.bytes == nullptr || data.size < sizeof header) return std::nullopt;
    std::memcpy(&header, data.bytes, sizeof header);
    if (data.size < sizeof header + header.buttonCount * sizeof(BarButton)) return std::nullopt;

    SoftKeySet set;
    set.menu.reset(LoadMenuW(module, MAKEINTRESOURCEW(header.menu)));
    // Device differs: buttons beyond the two soft keys are left out; the device would squeeze them in.
    const std::size_t count = std::min<std::size_t>(header.buttonCount, kMaximumKeys);
    for (std::size_t i = 0; i < count; ++i) {
        BarButton button = {};
        std::memcpy(&button, data.bytes + sizeof header + i * sizeof button, sizeof button);
        if (!AddKey(module, button, &set)) return std::nullopt;
    }
    return set;
}

std::optional<SoftKeySet> SoftKeysFromMenu(HINSTANCE module, UINT id) {
    SoftKeySet set;
    set.menu.reset(LoadMenuW(module, MAKEINTRESOURCEW(id)));
    if (!set.menu) return std::nullopt;
    const int entries = std::min(GetMenuItemCount(set.menu.get()), static_cast<int>(kMaximumKeys));
    for (int i = 0; i < entries; ++i) {
        const UINT position = static_cast<UINT>(i);
        SoftKey key;
        key.popup = GetSubMenu(set.menu.get(), i);
        key.command = key.popup != nullptr ? kFirstPopupCommand + position : GetMenuItemID(set.menu.get(), i);
        const UINT entryState = GetMenuState(set.menu.get(), position, MF_BYPOSITION);
        key.state = (entryState & (MF_GRAYED | MF_DISABLED)) != 0 ? 0 : TBSTATE_ENABLED;
        key.label = MenuEntryText(set.menu.get(), position);
        set.keys.push_back(std::move(key));
    }
    return set;
}

SoftKeySet DoneKey() {
    SoftKeySet set;
    set.keys.push_back({IDOK, TBSTATE_ENABLED, nullptr, L"OK"});
    return set;
}

}  // namespace handset
