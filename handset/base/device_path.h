// Paths of the device's file system and where they lie on the host: the one place that knows. Portable;
// handset_state.h gives the paths of the handset as it stands (OnDevice).
#pragma once

#include <string>

namespace handset {

// What the host's calls take at the most, with the end of the text.
inline constexpr unsigned kLongestHostPath = 32768;

// A path as a program or a person gives it, with its place on the host.
//
// The device has no current directory: a path without a backslash at its front begins at the root. "." and
// ".." are resolved, and nothing leads above the root. Blanks and dots at the end of a name count for
// nothing, as the host has it, which would otherwise find what is known here under another name.
// Device differs: a path with a drive or with two backslashes at its front is the host's own, taken as it is.
class CDevicePath {
  public:
    // `root`: the host folder, without a separator at its end; empty when the device has no file system.
    // `cardIn` is asked for a path on the storage card alone.
    CDevicePath(const wchar_t* path, const std::wstring& root, bool (*cardIn)());

    // False for a path on a storage card that is not in, and for any when the device has no file system.
    explicit operator bool() const { return reachable_; }
    // The host's path; null when a null path was given, empty when the device has no file system.
    [[nodiscard]] const wchar_t* host() const { return given_ ? host_.c_str() : nullptr; }
    // The path in the device's own form; empty for one of the host's.
    [[nodiscard]] const std::wstring& device() const { return device_; }
    [[nodiscard]] bool onStorageCard() const;

  private:
    std::wstring host_;
    std::wstring device_;
    bool given_;
    bool reachable_ = true;
};

// True for \Storage Card and everything below it, in any letter case; `path` is in the device's own form.
[[nodiscard]] bool IsOnStorageCard(const std::wstring& path);

// The device path of a host path below the root; empty for any other.
[[nodiscard]] std::wstring DevicePathOfHost(const std::wstring& hostPath, const std::wstring& root);

}  // namespace handset
