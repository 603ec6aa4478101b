// Border smoothing, shared by the marking and the matting steps: a few passes that re-estimate
// every pixel on an edge of the alpha from its 3 x 3 patch, weighted by the patch's intensities.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectKernels.h"
#include "VexaQuickSelectShared.h"

namespace VexaQuickSelect {

using namespace detail;

namespace {

// What a pass reads: the alpha of the previous pass, the working image and the marks.
struct PassInput {
    const float* in;
    ConstPixels source, marks;
};

// Marks pin a pixel and a pixel off every edge keeps its value; an edge pixel is left in
// `edges` for estimation. Pixels whose value changed are noted.
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

// The edge pixels that one core settled, re-estimated from their patches several at a time.
void estimateEdges(const PassInput& p, float* out, const std::vector<qsizetype>& edges, std::vector<qsizetype>& changed)
{
    std::vector<float> values(edges.size());
    kernels().patchEstimates(p.source.data, p.source.stride, p.in, p.source.width, p.source.height, edges.data(),
                             int(edges.size()), values.data());
    for (size_t k = 0; k < edges.size(); ++k) {
        const qsizetype i = edges[k];
        out[i] = values[k];
        if (out[i] != p.in[i])
            changed.push_back(i);
    }
}

// Pixels whose value a pass changed, gathered per core and joined in order.
using Changes = std::vector<std::vector<qsizetype>>;

// The first pass writes every pixel (the other buffer holds nothing yet). Most pixels are
// neither marked nor on an edge and keep their value: a row is copied whole, and only the
// pixels that a mark or a differing neighbour singles out are settled one by one. The image's
// outer pixels are always settled, so the one-by-one test keeps its bounds.
std::vector<qsizetype> fullPass(const PassInput& p, float* out, const std::atomic<bool>& cancel)
{
    const int W = p.source.width, H = p.source.height;
    Changes changed(size_t(parallelParts(H)));
    parallelParts(H, [&](int part, int first, int last) {
        std::vector<qsizetype> edges;
        std::vector<unsigned char> single(static_cast<size_t>(W));
        for (int y = first; y < last && !cancel.load(std::memory_order_relaxed); ++y) {
            const qsizetype row = qsizetype(y) * W;
            const float* in = p.in + row;
            std::copy(in, in + W, out + row);
            if (y == 0 || y == H - 1 || W < 3) {
                for (int x = 0; x < W; ++x)
                    settle(p, out, x, y, row + x, edges, changed[size_t(part)]);
                continue;
            }
            const float *up = in - W, *down = in + W;
            const QRgb* m = p.marks.row(y);
            for (int x = 1; x < W - 1; ++x)
                single[size_t(x)] = ((m[x] & 0x00FF00FFu) != 0) | (in[x] != in[x - 1]) | (in[x] != in[x + 1])
                    | (in[x] != up[x]) | (in[x] != down[x]);
            single[0] = single[size_t(W) - 1] = 1;
            for (int x = 0; x < W; ++x)
                if (single[size_t(x)])
                    settle(p, out, x, y, row + x, edges, changed[size_t(part)]);
        }
        estimateEdges(p, out, edges, changed[size_t(part)]);
    });
    return joined(changed);
}

// A later pass: a pixel none of whose 3 x 3 patch changed in the previous pass would get the
// value it got then, which is the value it had before, and that is what the buffer written now
// still holds from two passes ago. Only the patches around the previous changes are computed.
//
// The work is split by rows, so that each core gathers and settles the pixels of its own rows
// (and marks them seen) without meeting the other; the split row halves the previous changes.
std::vector<qsizetype> sparsePass(const PassInput& p, float* out, const std::vector<qsizetype>& changedBefore,
                                  std::vector<unsigned char>& seen, unsigned char stamp)
{
    const int W = p.source.width, H = p.source.height;
    const int parts = parallelParts(int(changedBefore.size()));
    std::vector<int> bounds{0, H};
    if (parts > 1) {
        std::vector<int> perRow(size_t(H), 0);
        for (const qsizetype i : changedBefore)
            ++perRow[size_t(i / W)];
        bounds.assign(size_t(parts) + 1, H);
        bounds[0] = 0;
        size_t seenSoFar = 0;
        for (int y = 0, part = 1; y < H && part < parts; ++y) {
            seenSoFar += size_t(perRow[size_t(y)]);
            if (seenSoFar * size_t(parts) >= changedBefore.size() * size_t(part))
                bounds[size_t(part++)] = y + 1;
        }
    }
    Changes changed(bounds.size() - 1);
    eachPart(int(bounds.size()) - 1, [&](int part) {
        const int top = bounds[size_t(part)], bottom = bounds[size_t(part) + 1];
        std::vector<qsizetype> todo, edges;
        for (const qsizetype i : changedBefore) {
            const int x = int(i % W), y = int(i / W);
            if (y < top - 1 || y > bottom)
                continue;
            for (int yy = std::max(top, y - 1); yy <= std::min(bottom - 1, y + 1); ++yy)
                for (int xx = std::max(0, x - 1); xx <= std::min(W - 1, x + 1); ++xx) {
                    const qsizetype n = qsizetype(yy) * W + xx;
                    if (seen[size_t(n)] != stamp) {
                        seen[size_t(n)] = stamp;
                        todo.push_back(n);
                    }
                }
        }
        for (const qsizetype i : todo)
            settle(p, out, int(i % W), int(i / W), i, edges, changed[size_t(part)]);
        estimateEdges(p, out, edges, changed[size_t(part)]);
    });
    return joined(changed);
}

} // namespace

bool smoothBorder(AlphaBuffer& a, AlphaBuffer& b, const QImage& source, const QImage& marks, int passes,
                  const std::atomic<bool>& cancel)
{
    b.resize(a.size()); // the first pass writes all of it
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
