#include "tests/unit/recording/message_boxes.h"

#include <mutex>

namespace test {
namespace {

MessageBoxes* g_boxes = nullptr;
std::mutex g_mutex;  // guards g_shown
std::vector<ShownBox> g_shown;

int WINAPI NoteBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) {
    {
        const std::lock_guard<std::mutex> lock(g_mutex);
        g_shown.push_back({owner, text, caption, style});
    }
    if (g_boxes == nullptr) return IDOK;
    if (g_boxes->whileShown) g_boxes->whileShown();
    return g_boxes->answer;
}

}  // namespace

MessageBoxes::MessageBoxes() {
    g_boxes = this;
    g_shown.clear();
}

MessageBoxes::~MessageBoxes() {
    g_boxes = nullptr;
}

std::vector<ShownBox> MessageBoxes::Shown() const {
    const std::lock_guard<std::mutex> lock(g_mutex);
    return g_shown;
}

}  // namespace test

// The linker sends the program's calls of MessageBoxW here.
extern "C" {
int(WINAPI* g_notedMessageBox)(HWND, LPCWSTR, LPCWSTR,
                               UINT) __asm__("__wrap___imp_MessageBoxW") = test::NoteBox;
}
