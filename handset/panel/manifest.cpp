// The text of UI.exe.manifest.
#include "handset/panel/manifest.h"

#include <algorithm>

#include "handset/panel/encoding.h"

namespace panel {

const std::vector<ManifestClass>& HandsetClasses() {
    // clang-format off
    static const std::vector<ManifestClass> kClasses = {
        {L"fmdevice.dll", L"{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}", L"Both", L"FM tuner"},
        // The recording filters of capture.dll stand here, one row a class.
    };
    // clang-format on
    return kClasses;
}

std::string ManifestText(const std::vector<std::wstring>& presentDlls) {
    std::wstring text =
        L"<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
        L"<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\r\n"
        L"  <assemblyIdentity type=\"win32\" name=\"Kora.UI\" version=\"1.0.0.0\" "
        L"processorArchitecture=\"amd64\"/>\r\n";
    std::wstring open;
    for (const ManifestClass& row : HandsetClasses()) {
        if (std::find(presentDlls.begin(), presentDlls.end(), row.dll) == presentDlls.end()) continue;
        if (open != row.dll) {
            if (!open.empty()) text += L"  </file>\r\n";
            open = row.dll;
            text += L"  <file name=\"" + open + L"\">\r\n";
        }
        text += L"    <comClass clsid=\"" + std::wstring(row.classId) + L"\" threadingModel=\"" +
                row.threadingModel + L"\" description=\"" + row.description + L"\"/>\r\n";
    }
    if (!open.empty()) text += L"  </file>\r\n";
    return Utf8(text + L"</assembly>\r\n");
}

}  // namespace panel
