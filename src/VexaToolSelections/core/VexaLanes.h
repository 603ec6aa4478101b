#pragma once

// VEXA_LANES 32-bit integer lanes, for loops that do the same exact integer work for that many
// items at once, written with the compiler's vector types (the unit that includes this is
// built once per processor level, with the lane count of its registers).

// The helpers below are inline and never cross a call boundary, so the note that vectors are
// passed differently with and without wider registers does not apply.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace VexaQuickSelect {
namespace detail {

typedef int Lanes __attribute__((vector_size(4 * VEXA_LANES)));

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
    typedef long long Quads __attribute__((vector_size(4 * VEXA_LANES)));
    const Quads q = reinterpret_cast<Quads>(m);
    long long any = 0;
    for (int k = 0; k < VEXA_LANES / 2; ++k)
        any |= q[k];
    return any != 0;
}

inline Lanes laneMax(Lanes a, Lanes b) { return a > b ? a : b; }

} // namespace detail
} // namespace VexaQuickSelect
