// The WAV file on the device to which everything that is heard is written (state value "SoundLog"). Used by
// the sound thread alone.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "handset/base/owned.h"

namespace sound {

class CSoundLog {
  public:
    ~CSoundLog() { Follow(L"", nullptr); }
    // Goes on in another file, at its end when it is a WAV file of the receiver's sound, anew otherwise; the
    // empty path closes. A file that cannot be opened is reported once and not written.
    void Follow(const std::wstring& devicePath, void (*report)(std::string_view utf8));
    bool IsOpen() const { return static_cast<bool>(file_); }
    // The file is valid and complete up to some tenth of a second at every moment.
    void Write(const std::int16_t* samples, std::size_t frames);

  private:
    void Flush();
    void Report(const char* fault) const;

    std::wstring path_;
    void (*report_)(std::string_view utf8) = nullptr;
    handset::OwnedHandle file_;
    std::uint32_t dataBytes_ = 0;
    std::vector<std::int16_t> pending_;
};

}  // namespace sound
