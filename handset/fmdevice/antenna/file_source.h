// Recorded samples as a stream, at the pace at which they were recorded, again from the beginning at the end.
#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "handset/base/antenna_text.h"
#include "handset/fmdevice/antenna/sample_stream.h"
#include "handset/fmdevice/sdr/iq_file.h"

namespace fm {

class CFileSource : public ISampleSource {
  public:
    // A path that begins with one backslash is the device's, any other the host's. A file that cannot be read
    // is tried again.
    CFileSource(const handset::Antenna& antenna, CSampleStream* stream);
    ~CFileSource() override;

    double SetCentre(double) override { return 0.0; }
    void SetGain(std::uint32_t, std::int32_t, bool) override {}

  private:
    void Run();
    std::string Open(sdr::CIqFile* file) const;
    void Play(sdr::CIqFile* file);

    const handset::Antenna antenna_;
    CSampleStream* const stream_;
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

}  // namespace fm
