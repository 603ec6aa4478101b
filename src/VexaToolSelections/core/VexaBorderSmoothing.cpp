// Border smoothing, shared by the marking and the matting steps: a few passes that re-estimate
// every pixel on an edge of the alpha from its 3 x 3 patch, weighted by the patch's intensities.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectShared.h"

namespace VexaQuickSelect {

using namespace detail;

namespace {

inline double intensity(QRgb c) { return 0.3 * qRed(c) + 0.59 * qGreen(c) + 0.11 * qBlue(c); }

// What a pass reads: the alpha of the previous pass, the working image and the marks.
struct PassInput {
    const float* in;
    ConstPixels source, marks;
};

// The patch estimate of pixel (x, y): the 3 x 3 patch clipped to the image, the centre first
// and the others in scan order; sums in double, the centre's own alpha left out.
float estimate(const PassInput& p, int x, int y)
{
    const int W = p.source.width, H = p.source.height;
    double I[9], alpha[9];
    I[0] = intensity(p.source.row(y)[x]);
    alpha[0] = p.in[qsizetype(y) * W + x];
    int n = 1;
    for (int yy = y - 1; yy <= y + 1; ++yy) {
        if (yy < 0 || yy >= H)
            continue;
        const QRgb* s = p.source.row(yy);
        for (int xx = x - 1; xx <= x + 1; ++xx) {
            if (xx < 0 || xx >= W || (xx == x && yy == y))
                continue;
            I[n] = intensity(s[xx]);
            alpha[n] = p.in[qsizetype(yy) * W + xx];
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

// The new alpha of one pixel: marks pin it, an edge pixel is re-estimated, any other keeps its value.
inline float smoothed(const PassInput& p, int x, int y)
{
    const QRgb m = p.marks.row(y)[x];
    if (redByte(m))
        return 1.0f;
    if (blueByte(m))
        return 0.0f;
    if (onEdge(p.in, p.source.width, p.source.height, x, y))
        return estimate(p, x, y);
    return p.in[qsizetype(y) * p.source.width + x];
}

// Pixels whose value a pass changed, gathered per core and joined in order.
using Changes = std::vector<std::vector<qsizetype>>;

std::vector<qsizetype> joined(Changes& parts)
{
    std::vector<qsizetype> all;
    for (std::vector<qsizetype>& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

// The first pass writes every pixel (the other buffer holds nothing yet).
std::vector<qsizetype> fullPass(const PassInput& p, float* out, const std::atomic<bool>& cancel)
{
    const int W = p.source.width;
    Changes changed(size_t(parallelParts(p.source.height)));
    parallelParts(p.source.height, [&](int part, int first, int last) {
        for (int y = first; y < last && !cancel.load(std::memory_order_relaxed); ++y) {
            for (int x = 0; x < W; ++x) {
                const qsizetype i = qsizetype(y) * W + x;
                out[i] = smoothed(p, x, y);
                if (out[i] != p.in[i])
                    changed[size_t(part)].push_back(i);
            }
        }
    });
    return joined(changed);
}

// A later pass: a pixel none of whose 3 x 3 patch changed in the previous pass would get the
// value it got then, which is the value it had before, and that is what the buffer written now
// still holds from two passes ago. Only the patches around the previous changes are computed.
std::vector<qsizetype> sparsePass(const PassInput& p, float* out, const std::vector<qsizetype>& changedBefore,
                                  std::vector<unsigned char>& seen, unsigned char stamp)
{
    const int W = p.source.width, H = p.source.height;
    std::vector<qsizetype> todo;
    todo.reserve(changedBefore.size() * 3);
    for (const qsizetype i : changedBefore) {
        const int x = int(i % W), y = int(i / W);
        for (int yy = std::max(0, y - 1); yy <= std::min(H - 1, y + 1); ++yy)
            for (int xx = std::max(0, x - 1); xx <= std::min(W - 1, x + 1); ++xx) {
                const qsizetype n = qsizetype(yy) * W + xx;
                if (seen[size_t(n)] != stamp) {
                    seen[size_t(n)] = stamp;
                    todo.push_back(n);
                }
            }
    }
    Changes changed(size_t(parallelParts(int(todo.size()))));
    parallelParts(int(todo.size()), [&](int part, int first, int last) {
        for (int k = first; k < last; ++k) {
            const qsizetype i = todo[size_t(k)];
            out[i] = smoothed(p, int(i % W), int(i / W));
            if (out[i] != p.in[i])
                changed[size_t(part)].push_back(i);
        }
    });
    return joined(changed);
}

} // namespace

bool smoothBorder(std::vector<float>& a, const QImage& source, const QImage& marks, int passes,
                  const std::atomic<bool>& cancel)
{
    std::vector<float> b(a.size(), 0.0f);
    std::vector<unsigned char> seen;
    std::vector<qsizetype> changed;
    for (int pass = 0; pass < passes; ++pass) {
        const PassInput p{pass % 2 == 0 ? a.data() : b.data(), pixels(source), pixels(marks)};
        float* out = pass % 2 == 0 ? b.data() : a.data();
        if (pass == 0) {
            changed = fullPass(p, out, cancel);
        } else {
            if (seen.empty())
                seen.assign(a.size(), 0);
            changed = sparsePass(p, out, changed, seen, (unsigned char)(pass));
        }
        if (cancel)
            return false;
    }
    if (passes % 2 == 1)
        a.swap(b);
    return true;
}

} // namespace VexaQuickSelect
