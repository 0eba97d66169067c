// A dialog template resource, read into plain records.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

struct DialogItem {
    DWORD style;
    int x, y, cx, cy;        // dialog units
    int id;                  // as the low word of WM_COMMAND has it
    std::wstring className;  // of a predefined class: its name in lower case ("button", "edit" …)
    std::wstring text;       // empty when it names a resource by number
};

struct DialogTemplate {
    DWORD style = 0;
    int cx = 0, cy = 0;  // dialog units; 0 when there is no such template
    std::wstring caption, font;
    int points = 0;
    std::vector<DialogItem> items;

    // The item with this id, or null.
    [[nodiscard]] const DialogItem* Find(int id) const;
};

// The form of WIN32 DLGTEMPLATE (not its extended one).
[[nodiscard]] DialogTemplate LoadDialogTemplate(unsigned id);
