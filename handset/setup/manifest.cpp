// The text of UI.exe.manifest.
#include "handset/setup/manifest.h"

#include <objbase.h>

#include <algorithm>
#include <iterator>

#include "handset/capture/graph/class_ids.h"
#include "handset/controls/encoding.h"
#include "handset/include/tuner_slots.h"
#include "handset/setup/host_builder.h"

namespace panel {
namespace {

std::wstring ClassText(const CLSID& id) {
    wchar_t text[39] = L"";
    StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    CharLowerW(text);
    return text;
}

}  // namespace

const std::vector<ManifestClass>& HandsetClasses() {
    // clang-format off
    static const std::vector<ManifestClass> kClasses = {
        {L"fmdevice.dll", fm::kTunerClass, L"Both", L"FM tuner"},
        {L"capture.dll", capture::kClassAudioCapture, L"Both", L"Audio capture filter"},
        {L"capture.dll", capture::kClassWavWriter, L"Both", L"WAV writer"},
        {L"capture.dll", capture::kClassAmrEncoder, L"Both", L"AMR-NB encoder"},
        {L"capture.dll", capture::kClassMultiplexer, L"Both", L"MP4 multiplexer"},
        {L"capture.dll", capture::kClassGraphBuilder, L"Both", L"Capture graph builder", HostLacksStreamControl},
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
        text += L"    <comClass clsid=\"" + ClassText(row.classId) + L"\" threadingModel=\"" +
                row.threadingModel + L"\" description=\"" + row.description + L"\"/>\r\n";
    }
    if (!open.empty()) text += L"  </file>\r\n";
    return Utf8(text + L"</assembly>\r\n");
}

}  // namespace panel
