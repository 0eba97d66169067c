#include "handset/coredll/windows/large_font.h"

namespace coredll {

LOGFONTW HostFont(LOGFONTW NONCLIENTMETRICSW::*which) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return metrics.*which;
}

handset::OwnedFont LargeFont(LOGFONTW font, int scale) {
    font.lfHeight *= scale;
    font.lfWidth = 0;
    return handset::OwnedFont(CreateFontIndirectW(&font));
}

}  // namespace coredll
