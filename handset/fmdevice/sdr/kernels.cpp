// The choice among the forms of the inner loops.
#include "handset/fmdevice/sdr/kernels.h"

namespace sdr {

const Kernels& ActiveKernels() {
    static const Kernels& kernels = Avx2Kernels() != nullptr ? *Avx2Kernels() : *PlainKernels();
    return kernels;
}

}  // namespace sdr
