// The initialisation step: regions by watershed, their sizes and mean colours, and the flow
// graph over their adjacency, one edge per touching pair weighted by colour similarity.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectShared.h"
#include "VexaSegmentation.h"
#include "VexaWatershed.h"

#include <algorithm>
#include <climits>
#include <cmath>

VexaQuickSelectReporter::~VexaQuickSelectReporter() = default;

namespace VexaQuickSelect {

using namespace detail;

namespace {

const char* const initializing = QT_TRANSLATE_NOOP("Thread", "Initializing ..");
const char* const initializeDone = QT_TRANSLATE_NOOP("Thread", "Initialize done.");

// Touching pairs, each in the list of its smaller region, counted per pixel edge; lists in
// the order the pairs were first met.
struct NodeLink {
    int neighbour;
    int count;
};
using Adjacency = std::vector<std::vector<NodeLink>>;

// Pixel count and channel sums of every region.
struct RegionSums {
    std::vector<int> size, r, g, b;
    explicit RegionSums(int N) : size(size_t(N)), r(size_t(N)), g(size_t(N)), b(size_t(N)) {}
};

// Sums are integers, so adding per-core partial sums gives exactly the row-order sums.
bool sumRegions(const QImage& source, const std::vector<int>& regionMap, int W, int H, RegionSums& sums,
                const std::atomic<bool>& cancel)
{
    const ConstPixels src = pixels(source);
    const int N = int(sums.size.size());
    std::vector<RegionSums> partial(size_t(parallelParts(H)) - 1, RegionSums(N));
    parallelParts(H, [&](int part, int first, int last) {
        RegionSums& s = part == 0 ? sums : partial[size_t(part) - 1];
        for (int y = first; y < last && !cancel.load(std::memory_order_relaxed); ++y) {
            const QRgb* px = src.row(y);
            const int* labels = regionMap.data() + qsizetype(y) * W;
            for (int x = 0; x < W; ++x) {
                const size_t r = size_t(labels[x]);
                s.r[r] += qRed(px[x]);
                s.g[r] += qGreen(px[x]);
                s.b[r] += qBlue(px[x]);
                ++s.size[r];
            }
        }
    });
    for (const RegionSums& p : partial)
        for (size_t r = 0; r < size_t(N); ++r) {
            sums.size[r] += p.size[r];
            sums.r[r] += p.r[r];
            sums.g[r] += p.g[r];
            sums.b[r] += p.b[r];
        }
    return !cancel;
}

std::vector<QColor> meanColours(const RegionSums& sums)
{
    std::vector<QColor> colours(sums.size.size());
    for (size_t r = 0; r < colours.size(); ++r) {
        const int n = sums.size[r];
        colours[r] = QColor(sums.r[r] / n, sums.g[r] / n, sums.b[r] / n, 255);
    }
    return colours;
}

// Records the adjacent pairs of rows [first, last) in row order, the left neighbour before the
// upper one, into `links`: a new pair at the end of its list, a known one counted in place.
bool adjacentPairs(const std::vector<int>& regionMap, int W, int first, int last, Adjacency& links,
                   const std::atomic<bool>& cancel)
{
    // Along a border the same pair comes again and again: the last one found is tried first.
    int lastLo = -1, lastHi = -1;
    size_t lastAt = 0;
    auto record = [&](int a, int b) {
        const int lo = std::min(a, b), hi = std::max(a, b);
        std::vector<NodeLink>& list = links[size_t(lo)];
        if (lo == lastLo && hi == lastHi) {
            ++list[lastAt].count;
            return;
        }
        lastLo = lo;
        lastHi = hi;
        for (size_t k = 0; k < list.size(); ++k) {
            if (list[k].neighbour == hi) {
                ++list[k].count;
                lastAt = k;
                return;
            }
        }
        lastAt = list.size();
        list.push_back({hi, 1});
    };
    for (int y = first; y < last; ++y) {
        if (cancel.load(std::memory_order_relaxed))
            return false;
        const int* labels = regionMap.data() + qsizetype(y) * W;
        for (int x = 0; x < W; ++x) {
            const int a = labels[x];
            if (x > 0 && labels[x - 1] != a)
                record(a, labels[x - 1]);
            if (y > 0 && labels[x - W] != a)
                record(a, labels[x - W]);
        }
    }
    return true;
}

// Every horizontally or vertically adjacent pixel pair of two regions, counted per pair in the
// list of the smaller region, lists in the order of a row-order scan. (Scanning stretches of
// rows on two cores and joining the lists in order costs more in the join than it saves.)
bool findAdjacency(const std::vector<int>& regionMap, int W, int H, Adjacency& links, const std::atomic<bool>& cancel)
{
    return adjacentPairs(regionMap, W, 0, H, links, cancel);
}

// exp(-d^2) * 10000 truncated, d^2 over the channels as fractions channel / 255 in double.
std::vector<int> linkWeights(const std::vector<QColor>& colours, const Adjacency& links)
{
    const int N = int(colours.size());
    std::vector<double> fr(colours.size()), fg(colours.size()), fb(colours.size());
    for (size_t r = 0; r < size_t(N); ++r) {
        fr[r] = colours[r].red() / 255.0;
        fg[r] = colours[r].green() / 255.0;
        fb[r] = colours[r].blue() / 255.0;
    }
    std::vector<size_t> firstLink(size_t(N) + 1, 0);
    for (size_t r = 0; r < size_t(N); ++r)
        firstLink[r + 1] = firstLink[r] + links[r].size();
    std::vector<int> weights(firstLink.back());
    // Each link on its own: both cores, the same values.
    parallelRanges(N, [&](int first, int last) {
        for (int i = first; i < last; ++i) {
            size_t at = firstLink[size_t(i)];
            for (const NodeLink& l : links[size_t(i)]) {
                const size_t a = size_t(i), b = size_t(l.neighbour);
                const double dr = fr[b] - fr[a], dg = fg[b] - fg[a], db = fb[b] - fb[a];
                weights[at++] = int(std::exp(-(dr * dr + dg * dg + db * db)) * 10000.0);
            }
        }
    });
    return weights;
}

// One edge per link, in region order and list order: the capacity is the border length times
// the weight, the same both ways.
void addEdges(VexaSegmentation::FlowGraph& graph, const Adjacency& links, const std::vector<int>& weights)
{
    size_t at = 0;
    for (int i = 0; i < int(links.size()); ++i) {
        for (const NodeLink& l : links[size_t(i)]) {
            // A border long enough to overflow an int cannot occur on a working image; saturate anyway.
            const int c = int(std::min<long long>(INT_MAX, (long long)l.count * weights[at++]));
            graph.add_edge(i, l.neighbour, c, c);
        }
    }
}

} // namespace

void init(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel)
{
    const QString text = threadText(initializing);
    report.setPainting(false);
    report.progress(text, 0);

    // The statistics read 32-bit pixels; a working image always has them, any other is read as such.
    const QImage source = seg.sourceImage.depth() == 32 ? seg.sourceImage
                                                          : seg.sourceImage.convertToFormat(QImage::Format_ARGB32);
    const int W = std::min(seg.maxWidth, source.width());
    const int H = std::min(seg.maxHeight, source.height());
    report.progress(text, 10);
    if (cancel)
        return;

    const int N = watershed(source, seg.regionMap, cancel);
    seg.terminalWeights.assign(size_t(N), 0);
    report.progress(text, 20);
    if (cancel)
        return;

    RegionSums sums(N);
    report.progress(text, 30);
    if (!sumRegions(source, seg.regionMap, W, H, sums, cancel))
        return;
    seg.regionSizes = sums.size;
    report.progress(text, 40);

    seg.regionColors = meanColours(sums);
    report.progress(text, 50);

    Adjacency links(static_cast<size_t>(N));
    if (!findAdjacency(seg.regionMap, W, H, links, cancel))
        return;
    report.progress(text, 60);

    seg.graph.reset();
    report.progress(text, 70);

    if (N > 0) {
        seg.graph = std::make_unique<VexaSegmentation::FlowGraph>(N, 6 * N, nullptr);
        seg.graph->add_node(N);
    }
    report.progress(text, 80);

    const std::vector<int> weights = linkWeights(seg.regionColors, links);
    if (cancel)
        return;
    if (seg.graph)
        addEdges(*seg.graph, links, weights);
    report.progress(threadText(initializeDone), 0);
    report.setPainting(true);
}

} // namespace VexaQuickSelect
