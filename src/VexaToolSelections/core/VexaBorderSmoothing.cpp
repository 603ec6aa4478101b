// Border smoothing, shared by the marking and the matting steps: a few passes that re-estimate
// every pixel on an edge of the alpha from its 3 x 3 patch, weighted by the patch's intensities.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectShared.h"

namespace VexaQuickSelect {

using namespace detail;

namespace {

inline double intensity(QRgb c) { return 0.3 * qRed(c) + 0.59 * qGreen(c) + 0.11 * qBlue(c); }

// The patch of a pixel other than its centre: the 3 x 3 block clipped to the image, in scan
// order. Writes the pixel indices and returns their number (3, 5 or 8).
int patchNeighbours(int W, int H, int x, int y, qsizetype* at)
{
    int n = 0;
    for (int yy = std::max(0, y - 1); yy <= std::min(H - 1, y + 1); ++yy)
        for (int xx = std::max(0, x - 1); xx <= std::min(W - 1, x + 1); ++xx)
            if (xx != x || yy != y)
                at[n++] = qsizetype(yy) * W + xx;
    return n;
}

// The weights of a pixel's patch estimate depend on the working image alone: computed once per
// pixel and smoothing, reused by every pass that estimates the pixel again. The weights wq of
// the neighbours in patch order and their sum, in double as the estimate adds them.
struct PatchWeights {
    double w[8];
    double sum;
};

PatchWeights patchWeights(const ConstPixels& source, int x, int y)
{
    qsizetype at[8];
    const int others = patchNeighbours(source.width, source.height, x, y, at);
    const int n = others + 1;
    double I[9];
    I[0] = intensity(source.row(y)[x]);
    for (int q = 1; q < n; ++q)
        I[q] = intensity(source.row(int(at[q - 1] / source.width))[at[q - 1] % source.width]);
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
    PatchWeights p{};
    for (int q = 1; q < n; ++q) {
        p.w[q - 1] = (d[0] * d[q] / denominator + 1.0) / n;
        p.sum += p.w[q - 1];
    }
    return p;
}

// The patch estimate: the neighbours' alphas weighted, the centre's own left out.
float estimate(const PatchWeights& p, const float* in, int W, int H, int x, int y)
{
    qsizetype at[8];
    int others;
    if (x > 0 && y > 0 && x < W - 1 && y < H - 1) {
        const qsizetype i = qsizetype(y) * W + x;
        const qsizetype inner[8] = {i - W - 1, i - W, i - W + 1, i - 1, i + 1, i + W - 1, i + W, i + W + 1};
        std::copy(inner, inner + 8, at);
        others = 8;
    } else {
        others = patchNeighbours(W, H, x, y, at);
    }
    double num = 0;
    for (int q = 0; q < others; ++q)
        num += p.w[q] * in[at[q]];
    return float(num / p.sum);
}

// What a pass reads: the alpha of the previous pass, the working image and the marks.
struct PassInput {
    const float* in;
    ConstPixels source, marks;
};

// Per pixel, where its weights are kept (-1 before its first estimate).
struct WeightCache {
    std::vector<int> slotOf;
    std::vector<PatchWeights> weights;
};

// Pixels of one pass, gathered per core and joined in order.
using Lists = std::vector<std::vector<qsizetype>>;

std::vector<qsizetype> joined(Lists& parts)
{
    std::vector<qsizetype> all;
    for (std::vector<qsizetype>& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

// Marks pin a pixel and a pixel off every edge keeps its value; an edge pixel is left for
// estimation. Pixels whose value changed are noted.
inline void settle(const PassInput& p, float* out, int x, int y, qsizetype i, std::vector<qsizetype>& edges,
                   std::vector<qsizetype>& changed)
{
    const QRgb m = p.marks.row(y)[x];
    if (redByte(m)) {
        out[i] = 1.0f;
    } else if (blueByte(m)) {
        out[i] = 0.0f;
    } else if (onEdge(p.in, p.source.width, p.source.height, x, y)) {
        edges.push_back(i);
        return;
    } else {
        out[i] = p.in[i];
    }
    if (out[i] != p.in[i])
        changed.push_back(i);
}

// settle() over row y. Most of a row is neither marked nor on an edge and keeps its value:
// the row is copied, and only stretches of eight with a mark or an edge are looked at closely.
void settleRow(const PassInput& p, float* out, int y, std::vector<qsizetype>& edges, std::vector<qsizetype>& changed)
{
    typedef float Floats __attribute__((vector_size(32)));
    typedef unsigned Words __attribute__((vector_size(32)));
    const int W = p.source.width, H = p.source.height;
    const qsizetype row = qsizetype(y) * W;
    const float* in = p.in + row;
    const QRgb* marks = p.marks.row(y);
    std::copy(in, in + W, out + row);
    auto load = [](const auto* at, auto& v) { __builtin_memcpy(&v, at, sizeof v); };
    auto quiet = [&](int x) {
        Words m;
        load(marks + x, m);
        Floats c, l, r;
        load(in + x, c);
        load(in + x - 1, l);
        load(in + x + 1, r);
        auto flags = (m != 0) | (c != l) | (c != r);
        if (y > 0) {
            Floats u;
            load(in + x - W, u);
            flags |= c != u;
        }
        if (y < H - 1) {
            Floats d;
            load(in + x + W, d);
            flags |= c != d;
        }
        typedef long long Quads __attribute__((vector_size(32)));
        const Quads q = reinterpret_cast<Quads>(flags);
        return (q[0] | q[1] | q[2] | q[3]) == 0;
    };
    int x = 0;
    auto closely = [&](int end) {
        for (; x < end; ++x)
            settle(p, out, x, y, row + x, edges, changed);
    };
    closely(std::min(W, 1));
    while (x + 8 < W) {
        if (quiet(x))
            x += 8;
        else
            closely(x + 8);
    }
    closely(W);
}

// One pass: `visit(part, first, last, edges, changed)` settles its share of the candidates
// (parallelParts(count) shares), then the edge pixels get their weights' slots in order (new
// ones only) and are estimated on both cores. Returns the pixels whose value changed.
template <class Visit>
std::vector<qsizetype> pass(const PassInput& p, float* out, WeightCache& cache, int count, Visit visit,
                            const std::atomic<bool>& cancel)
{
    const int W = p.source.width, H = p.source.height;
    const size_t parts = size_t(parallelParts(count));
    Lists edges(parts), changed(parts);
    parallelParts(count, [&](int part, int first, int last) {
        visit(first, last, edges[size_t(part)], changed[size_t(part)]);
    });
    if (cancel)
        return {};
    const std::vector<qsizetype> edge = joined(edges);
    const size_t known = cache.weights.size();
    for (const qsizetype i : edge)
        if (cache.slotOf[size_t(i)] < 0)
            cache.slotOf[size_t(i)] = int(cache.weights.size()), cache.weights.emplace_back();
    Lists estimated(size_t(parallelParts(int(edge.size()))));
    parallelParts(int(edge.size()), [&](int part, int first, int last) {
        for (int k = first; k < last; ++k) {
            const qsizetype i = edge[size_t(k)];
            const int x = int(i % W), y = int(i / W);
            const size_t slot = size_t(cache.slotOf[size_t(i)]);
            if (slot >= known)
                cache.weights[slot] = patchWeights(p.source, x, y);
            out[i] = estimate(cache.weights[slot], p.in, W, H, x, y);
            if (out[i] != p.in[i])
                estimated[size_t(part)].push_back(i);
        }
    });
    std::vector<qsizetype> all = joined(changed);
    const std::vector<qsizetype> more = joined(estimated);
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

// A later pass: a pixel none of whose 3 x 3 patch changed in the previous pass would get the
// value it got then, which is the value it had before, and that is what the buffer written now
// still holds from two passes ago. Only the patches around the previous changes are computed.
std::vector<qsizetype> around(const std::vector<qsizetype>& changedBefore, int W, int H,
                              std::vector<unsigned char>& seen, unsigned char stamp)
{
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
    return todo;
}

} // namespace

bool smoothBorder(std::vector<float>& a, const QImage& source, const QImage& marks, int passes,
                  const std::atomic<bool>& cancel)
{
    const ConstPixels src = pixels(source);
    const int W = src.width, H = src.height;
    std::vector<float> b(a.size(), 0.0f);
    std::vector<unsigned char> seen;
    std::vector<qsizetype> changed;
    WeightCache cache;
    cache.slotOf.assign(a.size(), -1);
    for (int step = 0; step < passes; ++step) {
        const PassInput p{step % 2 == 0 ? a.data() : b.data(), src, pixels(marks)};
        float* out = step % 2 == 0 ? b.data() : a.data();
        if (step == 0) {
            // The first pass writes every pixel (the other buffer holds nothing yet), row by row.
            changed = pass(p, out, cache, H, [&](int first, int last, auto& edges, auto& moved) {
                for (int y = first; y < last && !cancel.load(std::memory_order_relaxed); ++y)
                    settleRow(p, out, y, edges, moved);
            }, cancel);
        } else {
            if (seen.empty())
                seen.assign(a.size(), 0);
            const std::vector<qsizetype> todo = around(changed, W, H, seen, (unsigned char)(step));
            changed = pass(p, out, cache, int(todo.size()), [&](int first, int last, auto& edges, auto& moved) {
                for (int k = first; k < last; ++k) {
                    const qsizetype i = todo[size_t(k)];
                    settle(p, out, int(i % W), int(i / W), i, edges, moved);
                }
            }, cancel);
        }
        if (cancel)
            return false;
    }
    if (passes % 2 == 1)
        a.swap(b);
    return true;
}

} // namespace VexaQuickSelect
