#pragma once

// Eight 32-bit integer lanes for loops that do the same exact integer work for eight items at
// once. Written with the compiler's vector types, so the same source serves every machine:
// functions marked VEXA_WIDE are built twice, for processors with 256-bit integer vectors and
// for the baseline (where each operation becomes two 128-bit ones), and the loader picks one.
// Integer arithmetic gives the same bits on both.

// The helpers below are inline and never cross a call boundary, so the note that vectors are
// passed differently with and without wider registers does not apply.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace VexaQuickSelect {
namespace detail {

typedef int Lanes __attribute__((vector_size(32)));

#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && !defined(__SANITIZE_THREAD__)
#define VEXA_WIDE __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#else
#define VEXA_WIDE
#endif

inline Lanes lanes(int v) { return Lanes{} + v; }

inline Lanes loadLanes(const int* p)
{
    Lanes v;
    __builtin_memcpy(&v, p, sizeof v);
    return v;
}

// Whether any lane of a comparison result (all ones or zero per lane) is set.
inline bool anyLane(Lanes m)
{
    typedef long long Quads __attribute__((vector_size(32)));
    const Quads q = reinterpret_cast<Quads>(m);
    return (q[0] | q[1] | q[2] | q[3]) != 0;
}

// Per lane: b where the mask is set, else a.
inline Lanes pick(Lanes mask, Lanes a, Lanes b) { return mask ? b : a; }

inline Lanes laneMax(Lanes a, Lanes b) { return a > b ? a : b; }
inline Lanes laneMin(Lanes a, Lanes b) { return a < b ? a : b; }

} // namespace detail
} // namespace VexaQuickSelect
