// The device's counted formatting for portable code under the sanitizers: wide formats after the Microsoft
// rules, in which %s is a wide string. Takes the place of <strsafe.h>.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cwchar>
#include <string>

// 0 when the text fits; else what fits, with its terminator, and a failure (STRSAFE_E_INSUFFICIENT_BUFFER).
inline long StringCchPrintfW(wchar_t* text, std::size_t capacity, const wchar_t* format, ...) {
    std::wstring here(format);
    for (std::size_t at = here.find(L"%s"); at != std::wstring::npos; at = here.find(L"%s", at + 3))
        here.insert(at + 1, L"l");
    va_list values;
    va_start(values, format);
    const int length = std::vswprintf(text, capacity, here.c_str(), values);
    va_end(values);
    if (length >= 0) return 0;
    if (capacity > 0) text[capacity - 1] = L'\0';
    return static_cast<long>(0x8007007A - 0x100000000);
}
