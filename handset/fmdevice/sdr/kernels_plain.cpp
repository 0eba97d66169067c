// The inner loops for every processor: four floats to a register, as every x86-64 and every ARM has them.
#define KORA_SDR_LANES 4
#include "handset/fmdevice/sdr/kernels_body.h"

namespace sdr {

const Kernels* PlainKernels() {
    static constexpr Kernels kKernels = MakeKernels("plain");
    return &kKernels;
}

}  // namespace sdr
