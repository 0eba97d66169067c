// Text in the order of a Windows locale: sort keys, which order as CompareString does.
#include "handset/coredll/cedb/windows_collator.h"

#include <windows.h>

namespace cedb {
namespace {

struct FlagRow {
    std::uint32_t sort;
    DWORD nls;
};

// clang-format off
constexpr FlagRow kFlags[] = {
    {kSortCaseInsensitive, NORM_IGNORECASE},
    {kSortIgnoreNonSpace,  NORM_IGNORENONSPACE},
    {kSortIgnoreSymbols,   NORM_IGNORESYMBOLS},
    {kSortIgnoreKanaType,  NORM_IGNOREKANATYPE},
    {kSortIgnoreWidth,     NORM_IGNOREWIDTH},
    {kSortStringSort,      SORT_STRINGSORT},
};
// clang-format on

std::string SortKeyOf(LCID lcid, DWORD flags, const wchar_t* text, int length) {
    const int size = LCMapStringW(lcid, flags, text, length, nullptr, 0);
    std::string key(static_cast<std::size_t>(size), '\0');
    // For sort keys the room is counted in bytes although the parameter is a wide string.
    if (size != 0) LCMapStringW(lcid, flags, text, length, reinterpret_cast<wchar_t*>(key.data()), size);
    return key;
}

}  // namespace

std::string CWindowsCollator::TextKey(std::uint32_t lcid, std::uint32_t flags,
                                      const std::u16string& text) const {
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    DWORD nls = LCMAP_SORTKEY;
    for (const FlagRow& row : kFlags) {
        if ((flags & row.sort) != 0) nls |= row.nls;
    }
    // With its terminator, because a text without a character has no sort key.
    const int length = static_cast<int>(text.size() + 1);
    const auto* wide = reinterpret_cast<const wchar_t*>(text.c_str());
    std::string key = SortKeyOf(lcid, nls, wide, length);
    return key.empty() ? SortKeyOf(LOCALE_INVARIANT, nls, wide, length) : key;
}

bool CWindowsCollator::Knows(std::uint32_t lcid) const {
    return IsValidLocale(lcid, LCID_INSTALLED) != FALSE;
}

}  // namespace cedb
