#pragma once

// The innermost loops of quick select, built once per processor level (baseline x86-64, and
// where the compiler can, with 256-bit integer vectors, and with 512-bit-era registers) from one
// source; kernels() picks the best the processor runs. They do exact integer work, so every
// build gives the same results.
#include <QRgb>
#include <QtGlobal>

#include "VexaParallel.h"

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

// The image and the trimap as the shrinking reads them, one word per pixel: the colour in the
// low three bytes and the side in the top byte (0 unknown, and padding; 1 foreground;
// 2 background). The pixels of one residue x mod 4 of a row are stored together (plane x mod 4,
// row y, column 4 + x / 4), so the nine grid columns x - 16, x - 12, .., x + 16 of a row are
// nine neighbouring words. Four padding words on either side of every row, 16 padding rows
// above and below every plane, and `slack` words after the last are never known, so no
// candidate needs a bounds test.
struct GridPlanes {
    static constexpr int slack = 16;
    int W = 0, H = 0, stride = 0;
    std::vector<QRgb, FilledLater<QRgb>> words;

    size_t at(int x, int y) const
    {
        return (size_t(x & 3) * size_t(H + 32) + size_t(y + 16)) * size_t(stride) + 4 + size_t(x >> 2);
    }
    int side(size_t at) const { return int(words[at] >> 24); }
    void setSide(size_t at, int side) { words[at] = (words[at] & 0xFFFFFFu) | (QRgb(side) << 24); }
};

// Whether two colours are within 0.01 of each other, the sum of the squared channel
// differences taken over single-precision fractions c / 255 and compared with 0.0001. In whole
// channel steps that is a sum of squares of at most 6: 6 / 255^2 and 7 / 255^2 lie 8 % below
// and above 0.0001, far beyond what single-precision rounding moves, and a channel 3 or more
// apart is too far alone (a test checks every case).
constexpr int nearColourLimit = 6;
inline bool nearColours(QRgb a, QRgb b)
{
    const int dr = qRed(a) - qRed(b), dg = qGreen(a) - qGreen(b), db = qBlue(a) - qBlue(b);
    return dr * dr + dg * dg + db * db <= nearColourLimit;
}

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
    // The side (1 or 2) of the first known candidate around the pixel at `at`, rows y - 16 ..
    // y + 16 and in a row columns x - 16 .. x + 16, in steps of 4, whose colour is near the
    // pixel's (see nearColours); 0 if there is none.
    int (*gridMatch)(const GridPlanes& p, size_t at);
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
