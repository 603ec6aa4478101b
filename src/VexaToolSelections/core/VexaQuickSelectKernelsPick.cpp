#include "VexaQuickSelectKernels.h"

#include <atomic>
#include <cstring>

namespace VexaQuickSelect {
namespace detail {

extern const Kernels kernelsBaseline;
#ifdef VEXA_KERNELS_WIDE
extern const Kernels kernelsV3;
extern const Kernels kernelsV4;
#endif

namespace {

struct Level {
    const char* name;
    const Kernels* kernels;
    bool runs;
};

// Worst first.
std::vector<Level> levels()
{
    std::vector<Level> all{{"baseline", &kernelsBaseline, true}};
#ifdef VEXA_KERNELS_WIDE
    all.push_back({"x86-64-v3", &kernelsV3, bool(__builtin_cpu_supports("x86-64-v3"))});
    all.push_back({"x86-64-v4", &kernelsV4, bool(__builtin_cpu_supports("x86-64-v4"))});
#endif
    return all;
}

const Kernels* best()
{
    const Kernels* k = &kernelsBaseline;
    for (const Level& l : levels())
        if (l.runs)
            k = l.kernels;
    return k;
}

std::atomic<const Kernels*> current{nullptr};

} // namespace

const Kernels& kernels()
{
    const Kernels* k = current.load(std::memory_order_acquire);
    if (!k) {
        k = best();
        current.store(k, std::memory_order_release);
    }
    return *k;
}

std::vector<const char*> kernelLevels()
{
    std::vector<const char*> names;
    for (const Level& l : levels())
        if (l.runs)
            names.push_back(l.name);
    return names;
}

bool useKernelLevel(const char* name)
{
    for (const Level& l : levels())
        if (l.runs && std::strcmp(l.name, name) == 0) {
            current.store(l.kernels, std::memory_order_release);
            return true;
        }
    return false;
}

const char* kernelLevel()
{
    const Kernels* k = &kernels();
    for (const Level& l : levels())
        if (l.kernels == k)
            return l.name;
    return "";
}

} // namespace detail
} // namespace VexaQuickSelect
