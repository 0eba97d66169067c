// Files of I/Q samples: raw ones, WAV and SigMF. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "handset/fmdevice/sdr/sample_form.h"

namespace sdr {

// What the caller knows of a file; it goes before what the file says of itself. A raw file says its form by
// its extension (cu8, cs8, cs16, cf32), and nothing of its rate.
struct IqHints {
    std::optional<SampleForm> form;
    std::optional<double> rate_Hz;
    std::optional<double> centre_Hz;
};

struct IqDescription {
    SampleForm form = SampleForm::kCu8;
    double rate_Hz = 0.0;
    // Of the middle of the samples: from the hints, a SigMF capture, a WAV file's chunk "auxi", or a part of
    // the file's name like "_98500000Hz", "_98500kHz" or "_98.5MHz".
    std::optional<double> centre_Hz;
    std::uint64_t samples = 0;
};

// One thread at a time.
class CIqFile {
  public:
    // `path` in UTF-8; of SigMF either of both files. Gives an empty text, or what is wrong, with the file's
    // name.
    [[nodiscard]] std::string Open(const std::string& path, const IqHints& hints = {});
    [[nodiscard]] const IqDescription& Description() const { return description_; }
    // Appends up to `most` samples; gives their number, 0 at the end.
    std::size_t Read(std::size_t most, std::vector<Sample>* samples);
    // To the first sample again.
    void Rewind();

  private:
    std::ifstream stream_;
    IqDescription description_;
    std::uint64_t begin_ = 0;  // of the samples, in bytes
    std::uint64_t left_ = 0;   // samples
    std::vector<std::uint8_t> bytes_;
};

// The centre that a file's name says.
[[nodiscard]] std::optional<double> CentreInName(const std::string& name);

}  // namespace sdr
