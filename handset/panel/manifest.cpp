// The text of UI.exe.manifest.
#include "handset/panel/manifest.h"

#include <algorithm>

#include "handset/panel/encoding.h"
#include "handset/panel/host_builder.h"

namespace panel {

const std::vector<ManifestClass>& HandsetClasses() {
    // clang-format off
    static const std::vector<ManifestClass> kClasses = {
        {L"fmdevice.dll", L"{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}", L"Both", L"FM tuner"},
        {L"capture.dll", L"{e30629d2-27e5-11ce-875d-00608cb78066}", L"Both", L"Audio capture filter"},
        {L"capture.dll", L"{a3abfe59-c33f-4e34-a0c4-cec0ce25ec9e}", L"Both", L"WAV writer"},
        {L"capture.dll", L"{94297043-bd82-4dfd-b0de-8177739c6d20}", L"Both", L"AMR-NB encoder"},
        {L"capture.dll", L"{6a59220b-a696-4b79-ad80-e3c239a9d788}", L"Both", L"MP4 multiplexer"},
        {L"capture.dll", L"{bf87b6e0-8c27-11d0-b3f0-00aa003761c5}", L"Both", L"Capture graph builder", HostLacksStreamControl},
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
        if (row.wanted != nullptr && !row.wanted()) continue;
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
