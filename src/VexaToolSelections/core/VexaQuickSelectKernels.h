#pragma once

// The innermost loops of quick select, built once per processor level (baseline x86-64, and
// where the compiler can, with 256-bit integer vectors, and with 512-bit-era registers) from one
// source; kernels() picks the best the processor runs. They do exact integer work, so every
// build gives the same results.
#include <QRgb>
#include <QtGlobal>

#include <vector>

namespace VexaQuickSelect {
namespace detail {

// Boundary samples of one side, in the order found (row order), with where each row starts.
struct Samples {
    std::vector<QRgb> colour;
    std::vector<int> x, y;
    std::vector<int> rowStart; // H + 1 entries

    void index(int H)
    {
        rowStart.assign(size_t(H) + 1, 0);
        for (int v : y)
            ++rowStart[size_t(v) + 1];
        for (int r = 0; r < H; ++r)
            rowStart[size_t(r) + 1] += rowStart[size_t(r)];
    }
    size_t size() const { return colour.size(); }
};

// The eight nearest-sample slots of up to 16 pixels: squared pixel distance and sample index.
struct LaneSlots {
    int distance[8][16]; // [slot][lane]
    int index[8][16];
};

struct Kernels {
    // How many pixels nearestSamples takes at once.
    int lanes;
    // The slots that the nearest-sample rule leaves for each of the `lanes` pixels (px[l], py[l])
    // after visiting the samples in list order; returns how many are filled (at most 8).
    int (*nearestSamples)(const Samples& s, const int* px, const int* py, int H, LaneSlots& out);
    // For each of the n colours (r[i], g[i], b[i]), the nearest of the K centres (cr, cg, cb),
    // least squared distance with ties to the lowest index: index[i] and its distance best[i].
    void (*nearestCentres)(const int* cr, const int* cg, const int* cb, int K, const int* r, const int* g,
                           const int* b, int n, int* index, int* best);
    // The border smoothing's patch estimates of the `count` pixels at[k] (indices y W + x),
    // over the working image (rows `stride` words apart) and the alpha `in` (W x H), into
    // result[k].
    void (*patchEstimates)(const QRgb* source, qsizetype stride, const float* in, int W, int H, const qsizetype* at,
                           int count, float* result);
};

const Kernels& kernels();

// The processor levels built and runnable here, worst first; for tests and benchmarks, which
// compare them. useKernelLevel makes kernels() return that level from now on (false for a
// level not in the list).
std::vector<const char*> kernelLevels();
bool useKernelLevel(const char* name);
// The name of the level kernels() returns.
const char* kernelLevel();

} // namespace detail
} // namespace VexaQuickSelect
