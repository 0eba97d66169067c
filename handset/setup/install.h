// Setting a handset up: its folders, its programs, its band and its first registry values.
#pragma once

#include <string>
#include <vector>

namespace panel {

struct InstallReport {
    std::vector<std::wstring> done;  // what was laid down, a line each
    std::wstring fault;              // empty when everything is in place
};

// Lays the programs found in the host folder `source` into the device root of the state. Programs and the
// manifest are replaced; data (band, registry values, favourites, files of the user) are kept. May be
// repeated.
InstallReport InstallHandset(const std::wstring& source);

}  // namespace panel
