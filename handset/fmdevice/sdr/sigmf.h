// The metadata of a SigMF recording (SigMF 1.0, core namespace). Portable.
#pragma once

#include <optional>
#include <string>

#include "handset/fmdevice/sdr/sample_form.h"

namespace sdr {

struct SigmfDescription {
    std::string datatype;  // as it stands: "cu8", "ci16_le" and so on
    std::optional<SampleForm> form;
    std::optional<double> rate_Hz;
    std::optional<double> centre_Hz;  // of the first capture that has one
};

// Gives an empty text, or why it is no such metadata.
[[nodiscard]] std::string ParseSigmf(const std::string& text, SigmfDescription* description);

}  // namespace sdr
