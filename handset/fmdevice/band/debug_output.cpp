// Lines of the tuner device in the handset's debug output.
#include "handset/fmdevice/band/debug_output.h"

#include <string>

#include "handset/base/utf8.h"

namespace fm {

void ReportLine(std::string_view utf8) {
    // A call writes fewer than 128 characters, the words before the text and the line end included.
    constexpr std::size_t kMost = 115;
    std::wstring text = handset::Wide(utf8);
    do {
        NKDbgPrintfW(L"FM device: %.115s\n", text.c_str());
        text.erase(0, kMost);
    } while (!text.empty());
}

}  // namespace fm
