#include "handset/coredll/windows/large_font.h"

namespace coredll {

handset::OwnedFont LargeFont(LOGFONTW NONCLIENTMETRICSW::*which, int scale) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW font = metrics.*which;
    font.lfHeight *= scale;
    font.lfWidth = 0;
    return handset::OwnedFont(CreateFontIndirectW(&font));
}

}  // namespace coredll
