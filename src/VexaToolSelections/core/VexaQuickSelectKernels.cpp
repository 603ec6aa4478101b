// Built once per processor level, each time with its own VEXA_KERNEL_LEVEL (the name of the
// table it defines), compiler flags and lane counts, which are what the level's registers hold:
// VEXA_LANES pixels per nearest-sample search, VEXA_COLOUR_LANES colours per vector in the
// colour search, VEXA_DOUBLE_LANES pixels per smoothing estimate. See kernels().
#include "VexaLanes.h"
#include "VexaQuickSelectKernels.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <vector>

namespace VexaQuickSelect {
namespace detail {

extern const Kernels VEXA_KERNEL_LEVEL;

namespace {

int isqrt(int v) { return v > 0 ? int(std::sqrt(double(v))) : 0; }

// The sample slots of the nearest-sample rule, for VEXA_LANES pixels at once (one per lane): the
// first 8 samples fill the slots, and each later sample replaces the first slot (in slot order)
// that is strictly farther than itself. Slot distances only ever shrink, so a sample at least as
// far as the farthest slot of a pixel at its turn changes nothing for that pixel; rows (and
// columns within a row) that far for every lane are skipped. The result is the slots that
// visiting every sample in list order gives each pixel. Distances are squared pixel distances,
// exact in an int.
int nearestSamples(const Samples& s, const int* px, const int* py, int H, LaneSlots& out)
{
    const int n = int(s.size());
    const int filled = std::min(8, n);
    const Lanes X = loadLanes(px), Y = loadLanes(py);
    Lanes D[8], I[8];
    for (int k = 0; k < filled; ++k) {
        const Lanes dx = lanes(s.x[size_t(k)]) - X, dy = lanes(s.y[size_t(k)]) - Y;
        D[k] = dx * dx + dy * dy;
        I[k] = lanes(k);
    }
    if (n > 8) {
        // The farthest slot of each lane, as of the start of the row in hand.
        Lanes F = D[0];
        for (int k = 1; k < 8; ++k)
            F = laneMax(F, D[k]);
        // The first row within reach of some lane above it.
        auto firstRowInReach = [&] {
            int r = INT_MAX;
            for (int l = 0; l < VEXA_LANES; ++l)
                r = std::min(r, Y[l] - isqrt(F[l]));
            return r;
        };
        int lowest = Y[0];
        for (int l = 1; l < VEXA_LANES; ++l)
            lowest = std::max(lowest, Y[l]);
        const int* sx = s.x.data();
        for (int r = std::max(s.y[8], firstRowInReach()); r < H; ++r) {
            const Lanes dy = lanes(r) - Y;
            const Lanes dy2 = dy * dy;
            const Lanes inReach = dy2 < F;
            if (!anyLane(inReach)) {
                if (r > lowest)
                    break; // below every pixel distances only grow, and the bounds only shrink
                r = std::max(r, firstRowInReach()) - 1;
                continue;
            }
            int begin = std::max(s.rowStart[size_t(r)], 8);
            int end = s.rowStart[size_t(r) + 1];
            if (begin >= end)
                continue;
            if (end - begin > 16) {
                // A long row: columns with dx^2 >= farthest - dy^2 for every lane cannot contribute.
                int left = INT_MAX, right = INT_MIN;
                for (int l = 0; l < VEXA_LANES; ++l) {
                    if (!inReach[l])
                        continue;
                    const int reach = isqrt(F[l] - dy2[l] - 1);
                    left = std::min(left, X[l] - reach);
                    right = std::max(right, X[l] + reach);
                }
                begin = int(std::lower_bound(sx + begin, sx + end, left) - sx);
                end = int(std::upper_bound(sx + begin, sx + end, right) - sx);
            }
            // No test per sample: a sample no lane takes leaves every slot as it is, and the
            // update below has no branch to mispredict.
            for (int k = begin; k < end; ++k) {
                const Lanes dx = lanes(sx[k]) - X;
                const Lanes d = dx * dx + dy2;
                const Lanes kk = lanes(k);
                Lanes f[8];
#pragma GCC unroll 8
                for (int j = 0; j < 8; ++j)
                    f[j] = D[j] > d;
                // Slot j takes the sample where it is farther and no earlier slot is.
                const Lanes f01 = f[0] | f[1], f23 = f[2] | f[3], f45 = f[4] | f[5], f0123 = f01 | f23;
                const Lanes before[8] = {lanes(0), f[0], f01, f01 | f[2], f0123, f0123 | f[4], f0123 | f45,
                                         f0123 | f45 | f[6]};
#pragma GCC unroll 8
                for (int j = 0; j < 8; ++j) {
                    const Lanes first = f[j] & ~before[j];
                    D[j] = first ? d : D[j];
                    I[j] = first ? kk : I[j];
                }
            }
            F = laneMax(laneMax(laneMax(D[0], D[1]), laneMax(D[2], D[3])), laneMax(laneMax(D[4], D[5]), laneMax(D[6], D[7])));
        }
    }
    for (int k = 0; k < filled; ++k)
        for (int l = 0; l < VEXA_LANES; ++l) {
            out.distance[k][l] = D[k][l];
            out.index[k][l] = I[k][l];
        }
    return filled;
}

// The colour search in single precision, VEXA_COLOUR_LANES colours to a vector: channel
// differences, their squares and the sums of three squares are integers below 2^24, which floats hold
// exactly, so the distances and their order are those of integer arithmetic. Centres are tried
// in index order and taken only when strictly nearer, so ties go to the lowest index; two
// interleaved runs (even and odd centres) are joined by the same rule.
typedef float Floats __attribute__((vector_size(4 * VEXA_COLOUR_LANES)));
typedef int Ints __attribute__((vector_size(4 * VEXA_COLOUR_LANES)));

void nearestCentres(const int* cr, const int* cg, const int* cb, int K, const int* r, const int* g, const int* b,
                    int n, int* index, int* best)
{
    // The centres as floats once, not once per block.
    std::vector<float> centres(3 * size_t(K));
    for (int k = 0; k < K; ++k) {
        centres[3 * size_t(k)] = float(cr[k]);
        centres[3 * size_t(k) + 1] = float(cg[k]);
        centres[3 * size_t(k) + 2] = float(cb[k]);
    }
    const float* c = centres.data();
    for (int first = 0; first < n; first += VEXA_COLOUR_LANES) {
        // A short last block repeats its last colour.
        const int count = std::min(VEXA_COLOUR_LANES, n - first);
        Ints R, G, B;
        for (int l = 0; l < VEXA_COLOUR_LANES; ++l) {
            const int i = first + std::min(l, count - 1);
            R[l] = r[i];
            G[l] = g[i];
            B[l] = b[i];
        }
        const Floats fr = __builtin_convertvector(R, Floats), fg = __builtin_convertvector(G, Floats),
                     fb = __builtin_convertvector(B, Floats);
        // The two runs in named variables: indexed by k & 1 they would live in memory.
        Floats least0 = Floats{} + 1e30f, least1 = least0;
        Ints at0 = Ints{}, at1 = Ints{};
        auto visit = [&](int k, Floats& least, Ints& at) {
            const Floats dr = fr - c[3 * k], dg = fg - c[3 * k + 1], db = fb - c[3 * k + 2];
            const Floats d = dr * dr + dg * dg + db * db;
            const Ints nearer = d < least;
            least = nearer ? d : least;
            at = nearer ? Ints{} + k : at;
        };
        int k = 0;
        for (; k + 1 < K; k += 2) {
            visit(k, least0, at0);
            visit(k + 1, least1, at1);
        }
        if (k < K)
            visit(k, least0, at0);
        const Ints odd = (least1 < least0) | ((least1 == least0) & (at1 < at0));
        const Floats d = odd ? least1 : least0;
        const Ints nearest = odd ? at1 : at0;
        for (int l = 0; l < count; ++l) {
            index[first + l] = nearest[l];
            best[first + l] = int(d[l]);
        }
    }
}

// Nine candidates of a row are nine neighbouring words: they are tested VEXA_COLOUR_LANES at a
// time, with the arithmetic of the one-by-one test lane by lane.
int gridMatch(const GridPlanes& p, size_t at)
{
    constexpr int L = VEXA_COLOUR_LANES, chunks = (9 + L - 1) / L;
    // All nine rows are tested without a branch (padding rows and columns are never known),
    // then the first hit is looked for.
    Ints inRow[chunks];
    for (int k = 0; k < chunks; ++k)
        for (int l = 0; l < L; ++l)
            inRow[k][l] = k * L + l < 9 ? -1 : 0;
    const QRgb c = p.words[at];
    const int cr = qRed(c), cg = qGreen(c), cb = qBlue(c);
    const QRgb* first = p.words.data() + at - 4 - 16 * size_t(p.stride);
    Ints hits[9][chunks];
    Ints any = Ints{};
    for (int j = 0; j < 9; ++j)
        for (int k = 0; k < chunks; ++k) {
            Ints w;
            __builtin_memcpy(&w, first + size_t(4 * j) * size_t(p.stride) + size_t(k * L), sizeof w);
            const Ints dr = ((w >> 16) & 0xFF) - cr, dg = ((w >> 8) & 0xFF) - cg, db = (w & 0xFF) - cb;
            hits[j][k] = inRow[k] & (((w >> 24) & 0xFF) != 0) & (dr * dr + dg * dg + db * db <= nearColourLimit);
            any |= hits[j][k];
        }
    if (!anyLane(any))
        return 0;
    for (int j = 0; j < 9; ++j)
        for (int k = 0; k < chunks; ++k)
            for (int l = 0; l < L; ++l)
                if (hits[j][k][l])
                    return int(first[size_t(4 * j) * size_t(p.stride) + size_t(k * L + l)] >> 24);
    return 0;
}

inline double intensity(QRgb c) { return 0.3 * qRed(c) + 0.59 * qGreen(c) + 0.11 * qBlue(c); }

// The patch estimate of pixel (x, y): the 3 x 3 patch clipped to the image, the centre first
// and the others in scan order; sums in double, the centre's own alpha left out.
float patchEstimate(const QRgb* source, qsizetype stride, const float* in, int W, int H, int x, int y)
{
    double I[9], alpha[9];
    I[0] = intensity(source[qsizetype(y) * stride + x]);
    alpha[0] = in[qsizetype(y) * W + x];
    int n = 1;
    for (int yy = y - 1; yy <= y + 1; ++yy) {
        if (yy < 0 || yy >= H)
            continue;
        const QRgb* s = source + qsizetype(yy) * stride;
        for (int xx = x - 1; xx <= x + 1; ++xx) {
            if (xx < 0 || xx >= W || (xx == x && yy == y))
                continue;
            I[n] = intensity(s[xx]);
            alpha[n] = in[qsizetype(yy) * W + xx];
            ++n;
        }
    }
    double sum = 0;
    for (int q = 0; q < n; ++q)
        sum += I[q];
    const double mu = sum / n;
    double d[9], var = 0;
    for (int q = 0; q < n; ++q) {
        d[q] = I[q] - mu;
        var += d[q] * d[q];
    }
    var /= n;
    const double denominator = var + 0.000001 / n;
    double num = 0, den = 0;
    for (int q = 1; q < n; ++q) {
        const double w = (d[0] * d[q] / denominator + 1.0) / n;
        num += w * alpha[q];
        den += w;
    }
    return float(num / den);
}

typedef double Doubles __attribute__((vector_size(8 * VEXA_DOUBLE_LANES)));

// Interior pixels have the whole patch: VEXA_DOUBLE_LANES of them at once, one per lane. Each
// lane does exactly the operations of patchEstimate in the same order (the unit is built
// without contracted multiply-adds), so the results are the same bits.
void interiorEstimates(const QRgb* source, qsizetype stride, const float* in, int W, const qsizetype* at, float* result)
{
    constexpr int L = VEXA_DOUBLE_LANES;
    typedef int LaneInts __attribute__((vector_size(4 * L)));
    typedef float LaneFloats __attribute__((vector_size(4 * L)));
    // The words and alphas lane by lane; the intensities then in vectors, with the operations of
    // intensity() in its order.
    LaneInts P[9];
    LaneFloats A[9];
    for (int l = 0; l < L; ++l) {
        const qsizetype i = at[l];
        const QRgb* row = stride == W ? source + i : source + (i / W) * stride + i % W;
        const float* a = in + i;
        const QRgb patch[9] = {row[0], row[-stride - 1], row[-stride], row[-stride + 1], row[-1], row[1],
                               row[stride - 1], row[stride], row[stride + 1]};
        const float alphas[9] = {a[0], a[-W - 1], a[-W], a[-W + 1], a[-1], a[1], a[W - 1], a[W], a[W + 1]};
        for (int q = 0; q < 9; ++q) {
            P[q][l] = int(patch[q]);
            A[q][l] = alphas[q];
        }
    }
    Doubles I[9], alpha[9];
    for (int q = 0; q < 9; ++q) {
        const Doubles r = __builtin_convertvector((P[q] >> 16) & 0xFF, Doubles),
                      g = __builtin_convertvector((P[q] >> 8) & 0xFF, Doubles),
                      b = __builtin_convertvector(P[q] & 0xFF, Doubles);
        I[q] = 0.3 * r + 0.59 * g + 0.11 * b;
        alpha[q] = __builtin_convertvector(A[q], Doubles);
    }
    Doubles sum = Doubles{} + 0.0;
    for (int q = 0; q < 9; ++q)
        sum += I[q];
    const Doubles mu = sum / 9.0;
    Doubles d[9], var = Doubles{} + 0.0;
    for (int q = 0; q < 9; ++q) {
        d[q] = I[q] - mu;
        var += d[q] * d[q];
    }
    var /= 9.0;
    const Doubles denominator = var + 0.000001 / 9;
    Doubles num = Doubles{} + 0.0, den = Doubles{} + 0.0;
    for (int q = 1; q < 9; ++q) {
        const Doubles w = (d[0] * d[q] / denominator + 1.0) / 9.0;
        num += w * alpha[q];
        den += w;
    }
    const Doubles r = num / den;
    for (int l = 0; l < L; ++l)
        result[l] = float(r[l]);
}

void patchEstimates(const QRgb* source, qsizetype stride, const float* in, int W, int H, const qsizetype* at,
                    int count, float* result)
{
    constexpr int L = VEXA_DOUBLE_LANES;
    qsizetype group[L];
    int members[L];
    int filled = 0;
    auto flush = [&] {
        if (!filled)
            return;
        // A short group repeats its last pixel in the spare lanes.
        for (int l = filled; l < L; ++l)
            group[l] = group[filled - 1];
        float out[L];
        interiorEstimates(source, stride, in, W, group, out);
        for (int l = 0; l < filled; ++l)
            result[members[l]] = out[l];
        filled = 0;
    };
    for (int k = 0; k < count; ++k) {
        const int x = int(at[k] % W), y = int(at[k] / W);
        if (x > 0 && y > 0 && x < W - 1 && y < H - 1) {
            group[filled] = at[k];
            members[filled++] = k;
            if (filled == L)
                flush();
        } else {
            result[k] = patchEstimate(source, stride, in, W, H, x, y);
        }
    }
    flush();
}

} // namespace

const Kernels VEXA_KERNEL_LEVEL = {VEXA_LANES, nearestSamples, nearestCentres, gridMatch, patchEstimates};

} // namespace detail
} // namespace VexaQuickSelect
