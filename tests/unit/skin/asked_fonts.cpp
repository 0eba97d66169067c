#include "tests/unit/skin/asked_fonts.h"

#include <mutex>
#include <utility>

namespace {

std::mutex g_lock;  // guards g_fonts: two threads may paint at once
std::vector<LOGFONTW> g_fonts;

void Note(const LOGFONTW& font) {
    const std::lock_guard<std::mutex> lock(g_lock);
    g_fonts.push_back(font);
}

}  // namespace

std::vector<LOGFONTW> test::TakeAskedFonts() {
    const std::lock_guard<std::mutex> lock(g_lock);
    return std::exchange(g_fonts, {});
}

extern "C" {
// The linker sends the program's calls of CreateFontIndirectW here.
using CreateFontCall = decltype(CreateFontIndirectW);
extern CreateFontCall* g_realCreateFont __asm__("__real___imp_CreateFontIndirectW");
static HFONT WINAPI NotedCreateFont(const LOGFONTW* font) {
    Note(*font);
    return g_realCreateFont(font);
}
CreateFontCall* g_notedCreateFont __asm__("__wrap___imp_CreateFontIndirectW") = NotedCreateFont;
}
