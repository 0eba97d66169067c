// A recording's file on the device.
#pragma once

#include <windows.h>

#include <string>

#include "handset/base/owned.h"
#include "handset/capture/files/recording_file.h"

namespace capture {

class CDeviceFile final : public IRecordingFile {
  public:
    CDeviceFile() = default;
    ~CDeviceFile() override { Close(); }
    CDeviceFile(const CDeviceFile&) = delete;
    CDeviceFile& operator=(const CDeviceFile&) = delete;

    // Whether a file of the device can be written; it is made when there is none, and else left as it is.
    static HRESULT Check(const std::wstring& path);
    // Opens a file of the device for writing, empty.
    HRESULT Create(const std::wstring& path);
    void Close();
    bool IsOpen() const { return static_cast<bool>(file_); }

    // Fail also when the handset's state says that the disk is full or the card is out; Error() says why.
    bool WriteAt(std::uint64_t offset, const void* data, std::size_t size) override;
    void Truncate(std::uint64_t size) override;
    HRESULT Error() const { return error_; }

  private:
    bool RoomFor(std::size_t bytes);
    // Its times are those of the handset's clock.
    void Stamp();
    bool Failed(DWORD error);

    handset::OwnedHandle file_;
    bool onCard_ = false;
    bool onDevice_ = false;
    std::uint64_t size_ = 0;
    std::uint64_t looked_ms_ = 0;  // when the state was read last, in the host's milliseconds
    HRESULT error_ = S_OK;
};

}  // namespace capture
