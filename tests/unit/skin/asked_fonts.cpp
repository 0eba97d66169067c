#include "tests/unit/skin/asked_fonts.h"

namespace test {
std::vector<LOGFONTW> g_askedFonts;
}

extern "C" {
// The linker sends the program's calls of CreateFontIndirectW here.
using CreateFontCall = decltype(CreateFontIndirectW);
extern CreateFontCall* g_realCreateFont __asm__("__real___imp_CreateFontIndirectW");
static HFONT WINAPI NotedCreateFont(const LOGFONTW* font) {
    test::g_askedFonts.push_back(*font);
    return g_realCreateFont(font);
}
CreateFontCall* g_notedCreateFont __asm__("__wrap___imp_CreateFontIndirectW") = NotedCreateFont;
}
