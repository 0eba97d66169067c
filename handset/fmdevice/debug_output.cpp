// Lines of the tuner device in the handset's debug output.
#include "handset/fmdevice/debug_output.h"

#include "handset/state/utf8_text.h"

namespace fm {

void ReportLine(std::string_view utf8) {
    NKDbgPrintfW(L"FM device: %s\n", handset::Wide(utf8).c_str());
}

}  // namespace fm
