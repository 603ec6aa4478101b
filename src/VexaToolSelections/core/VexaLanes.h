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

// Whether any lane of a comparison result (all ones or zero per lane) is set, for a vector of
// 32-bit lanes of any width the levels use; it is read as 64-bit quads.
template <int Bytes>
struct QuadsOf;
template <>
struct QuadsOf<16> {
    typedef long long type __attribute__((vector_size(16)));
};
template <>
struct QuadsOf<32> {
    typedef long long type __attribute__((vector_size(32)));
};
template <>
struct QuadsOf<64> {
    typedef long long type __attribute__((vector_size(64)));
};

template <class Vector>
inline bool anyLane(Vector m)
{
    const typename QuadsOf<sizeof(Vector)>::type q = reinterpret_cast<typename QuadsOf<sizeof(Vector)>::type>(m);
    long long any = 0;
    for (int k = 0; k < int(sizeof(Vector) / 8); ++k)
        any |= q[k];
    return any != 0;
}

inline Lanes laneMax(Lanes a, Lanes b) { return a > b ? a : b; }

} // namespace detail
} // namespace VexaQuickSelect
