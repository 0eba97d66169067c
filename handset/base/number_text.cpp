#include "handset/base/number_text.h"

#include <cwchar>

namespace handset {

std::optional<std::uint64_t> ParseNumber(const std::wstring& text) {
    const bool hex = text.size() > 2 && text[0] == L'0' && (text[1] == L'x' || text[1] == L'X');
    const wchar_t* digits = hex ? L"0123456789abcdefABCDEF" : L"0123456789";
    const std::wstring body = hex ? text.substr(2) : text;
    const std::size_t longest = hex ? 16 : 19;
    if (body.empty() || body.size() > longest || body.find_first_not_of(digits) != std::wstring::npos) {
        return std::nullopt;
    }
    return std::wcstoull(body.c_str(), nullptr, hex ? 16 : 10);
}

}  // namespace handset
