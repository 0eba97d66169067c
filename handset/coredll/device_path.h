// Paths of the device's file system and where they lie on the host.
#pragma once

#include <windows.h>

#include <string>

namespace coredll {

// A path as a program gives it, with its place on the host.
//
// The device has no current directory: a path without a backslash at its front begins at the root. "." and
// ".." are resolved, and nothing leads above the root.
// Device differs: a path with a colon or with two backslashes at its front is the host's own, taken as it is.
class DevicePath {
  public:
    explicit DevicePath(const wchar_t* path);

    // False for a path on a storage card that is not in, and for any when the device has no file system; then
    // the last error is ERROR_PATH_NOT_FOUND.
    explicit operator bool() const { return reachable_; }
    // The host's path; null when a null path was given.
    const wchar_t* host() const { return given_ ? host_.c_str() : nullptr; }
    // The path in the device's own form; empty for one of the host's.
    const std::wstring& device() const { return device_; }
    bool onStorageCard() const;

  private:
    std::wstring host_;
    std::wstring device_;
    bool given_;
    bool reachable_ = true;
};

// The device path of a host path below the device's root; empty for any other.
std::wstring DevicePathOfHost(const std::wstring& hostPath);

}  // namespace coredll
