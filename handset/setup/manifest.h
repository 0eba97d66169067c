// The manifest beside \Windows\UI.exe: the handset's COM classes, found by this program alone and without any
// registration.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace panel {

// A COM class that one of the handset's DLLs serves.
struct ManifestClass {
    const wchar_t* dll;
    const CLSID& classId;
    const wchar_t* threadingModel;  // "Both", "Apartment" or "Free"
    const wchar_t* description;
    bool (*wanted)() = nullptr;  // none: on every host
};
// Every class of the handset, those of one DLL in a row.
const std::vector<ManifestClass>& HandsetClasses();

// The manifest's text, UTF-8, with the classes of the DLLs that are there, as far as this host wants
// them.
std::string ManifestText(const std::vector<std::wstring>& presentDlls);

}  // namespace panel
