#include "VexaQuickSelectKernels.h"

namespace VexaQuickSelect {
namespace detail {

extern const Kernels kernelsBaseline;
#ifdef VEXA_KERNELS_WIDE
extern const Kernels kernelsV3;
extern const Kernels kernelsV4;
#endif

const Kernels& kernels()
{
#ifdef VEXA_KERNELS_WIDE
    static const Kernels& picked = __builtin_cpu_supports("x86-64-v4") ? kernelsV4
        : __builtin_cpu_supports("x86-64-v3")                          ? kernelsV3
                                                                       : kernelsBaseline;
    return picked;
#else
    return kernelsBaseline;
#endif
}

} // namespace detail
} // namespace VexaQuickSelect
