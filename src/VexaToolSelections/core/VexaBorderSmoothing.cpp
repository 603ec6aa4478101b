// Border smoothing, shared by the marking and the matting steps: a few passes that re-estimate
// every pixel on an edge of the alpha from its 3 x 3 patch, weighted by the patch's intensities.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectShared.h"

namespace VexaQuickSelect {

using namespace detail;

std::vector<double> intensities(const QImage& source)
{
    const int W = source.width(), H = source.height();
    std::vector<double> out(size_t(W) * size_t(H));
    const ConstPixels src = pixels(source);
    parallelRanges(H, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            const QRgb* r = src.row(y);
            double* o = out.data() + qsizetype(y) * W;
            for (int x = 0; x < W; ++x)
                o[x] = 0.3 * qRed(r[x]) + 0.59 * qGreen(r[x]) + 0.11 * qBlue(r[x]);
        }
    });
    return out;
}

namespace {

// The patch estimate over raw arrays: the centre first, then the other patch pixels in scan
// order; sums in double, the result as a float.
inline float estimate(const double* intensity, const float* in, int W, int H, int x, int y)
{
    double I[9], alpha[9];
    const qsizetype centre = qsizetype(y) * W + x;
    I[0] = intensity[centre];
    alpha[0] = in[centre];
    int n = 1;
    for (int yy = y - 1; yy <= y + 1; ++yy) {
        if (yy < 0 || yy >= H)
            continue;
        for (int xx = x - 1; xx <= x + 1; ++xx) {
            if (xx < 0 || xx >= W || (xx == x && yy == y))
                continue;
            const qsizetype q = qsizetype(yy) * W + xx;
            I[n] = intensity[q];
            alpha[n] = in[q];
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

// One pass over rows [first, last): marked pixels are pinned, edge pixels re-estimated, the
// rest copied.
void smoothRows(const float* in, float* out, const double* intensity, const ConstPixels& marks, int first, int last)
{
    const int W = marks.width, H = marks.height;
    for (int y = first; y < last; ++y) {
        const QRgb* m = marks.row(y);
        const qsizetype base = qsizetype(y) * W;
        for (int x = 0; x < W; ++x) {
            float& o = out[base + x];
            if (redByte(m[x]))
                o = 1.0f;
            else if (blueByte(m[x]))
                o = 0.0f;
            else if (onEdge(in, W, H, x, y))
                o = estimate(intensity, in, W, H, x, y);
            else
                o = in[base + x];
        }
    }
}

} // namespace

float patchEstimate(const std::vector<double>& intensity, const std::vector<float>& in, int W, int H, int x, int y)
{
    return estimate(intensity.data(), in.data(), W, H, x, y);
}

bool smoothBorder(std::vector<float>& a, const std::vector<double>& intensity, const QImage& marks, int passes,
                  const std::atomic<bool>& cancel)
{
    const ConstPixels m = pixels(marks);
    std::vector<float> b(a.size(), 0.0f);
    for (int pass = 0; pass < passes; ++pass) {
        const float* in = pass % 2 == 0 ? a.data() : b.data();
        float* out = pass % 2 == 0 ? b.data() : a.data();
        // Each pass reads one buffer and writes the other: rows are independent.
        parallelRanges(m.height, [&](int first, int last) {
            for (int y = first; y < last && !cancel.load(std::memory_order_relaxed); ++y)
                smoothRows(in, out, intensity.data(), m, y, y + 1);
        });
        if (cancel)
            return false;
    }
    if (passes % 2 == 1)
        a.swap(b);
    return true;
}

} // namespace VexaQuickSelect
