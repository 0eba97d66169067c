// What a program shows, thing by thing: written by the reader inside the program, read by whoever asked it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace screens {

// Class of the reader's window, one in each program that has a reader; it can be seen by nobody.
inline constexpr wchar_t kReaderClass[] = L"KoraScreenReader";
// To that window: write down what the program shows now, and what it has drawn since the last time.
inline constexpr UINT kWriteReport = WM_APP + 1;
// Environment: the file that the report goes to, and the companion that the program would have without a
// reader.
inline constexpr wchar_t kReportFileName[] = L"KORA_SCREEN_REPORT";
inline constexpr wchar_t kOtherCompanion[] = L"KORA_OTHER_COMPANION";

enum class Kind {
    kWindow,  // any visible one, of whatever depth
    kText,    // of a control or a menu, by its own font
    kDrawn,   // a text that a program drew itself, or a control of the common ones
    kRows,    // the rows of a list: as tall as the room, or they are sliced at its foot
};

struct Item {
    Kind kind = Kind::kWindow;
    std::uint64_t window = 0;  // 0: drawn where nobody could see which
    std::uint64_t parent = 0;
    std::string className;
    int id = 0;
    std::uint32_t style = 0;
    RECT place{};   // of a window, a control's text or a menu's item on the screen; of a drawn text in the
                    // window
    RECT room{};    // of a window: its client area on the screen; of a text, its size alone counts
    SIZE need{};    // what the text takes
    RECT ink{};     // of a drawn text: where its letters stand
    SIZE ground{};  // of a drawn text: its window's client area when it was drawn
    int lost = 0;   // of a drawn text: columns of pixels of its letters that its place cuts off
    std::string text;
};

std::string ToLine(const Item& item);
Item FromLine(const std::string& line);
std::string ToUtf8(const std::wstring& text);

}  // namespace screens
