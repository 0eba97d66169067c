// The inner loops for processors with AVX2 and FMA; compiled for these alone, and called only on them.
#ifdef __AVX2__
#define KORA_SDR_LANES 8
#include "handset/fmdevice/sdr/kernels_body.h"
#else
#include "handset/fmdevice/sdr/kernels.h"
#endif

namespace sdr {

const Kernels* Avx2Kernels() {
#ifdef __AVX2__
    static constexpr Kernels kKernels = MakeKernels("avx2");
    static const bool present = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    return present ? &kKernels : nullptr;
#else
    return nullptr;
#endif
}

}  // namespace sdr
