// Folders of the host: where this program lies, where a handset lives, and paths as people write them.
#pragma once

#include <string>

namespace panel {

// The whole path of a host file. A Unix path (a leading slash) becomes one of Wine's drive Z.
std::wstring FullHostPath(const std::wstring& path);

// A whole path as the host's people write it: under Wine one of its drive Z is a Unix path again.
std::wstring SaidPath(const std::wstring& path);

// Whether this program runs under Wine.
bool OnWine();

// The host folder in which this program lies.
std::wstring ProgramFolder();

// The device root for a handset that has none yet: "device" in the handset's home (KORA_HOME), or in the
// user's local application data.
std::wstring DefaultDeviceRoot();

}  // namespace panel
