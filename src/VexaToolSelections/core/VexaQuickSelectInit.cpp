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
#include <thread>

VexaQuickSelectReporter::~VexaQuickSelectReporter() = default;

namespace VexaQuickSelect {

using namespace detail;

namespace {

const char* const initializing = QT_TRANSLATE_NOOP("Thread", "Initializing ..");
const char* const initializeDone = QT_TRANSLATE_NOOP("Thread", "Initialize done.");

// What init learns from the labels, row by row: every region's pixel count and channel sums,
// and its touching pairs. The pairs of a region sit in the list of its smaller member, counted
// per pixel edge, each list in the order the pairs were first met in a row-order scan. The
// lists are chains through one array (a pair's `next` follows it in its list), so that 160,000
// regions do not mean 160,000 allocations. Arrays grow with the labels met so far.
class RegionScan
{
public:
    std::vector<int> size, r, g, b;
    struct Link {
        int lo, hi, count, next;
    };
    std::vector<Link> links;          // in the order first met
    std::vector<int> firstLink, lastLink; // per region, -1 for none

    explicit RegionScan(int W) : m_W(W) {}

    void addRow(const QRgb* px, const int* labels, int y)
    {
        for (int x = 0; x < m_W; ++x) {
            const int a = labels[x];
            if (size_t(a) >= size.size())
                grow(a);
            ++size[size_t(a)];
            r[size_t(a)] += qRed(px[x]);
            g[size_t(a)] += qGreen(px[x]);
            b[size_t(a)] += qBlue(px[x]);
            if (x > 0 && labels[x - 1] != a)
                record(a, labels[x - 1]);
            if (y > 0 && labels[x - m_W] != a)
                record(a, labels[x - m_W]);
        }
    }
    // Exactly N regions (every label 0 .. N-1 occurs).
    void finish(int N)
    {
        for (std::vector<int>* v : {&size, &r, &g, &b, &firstLink, &lastLink})
            v->resize(size_t(N), v == &firstLink || v == &lastLink ? -1 : 0);
    }

private:
    void grow(int label)
    {
        const size_t n = std::max(size_t(label) + 1, size.size() * 2);
        for (std::vector<int>* v : {&size, &r, &g, &b})
            v->resize(n, 0);
        firstLink.resize(n, -1);
        lastLink.resize(n, -1);
    }
    void record(int a, int c)
    {
        const int lo = std::min(a, c), hi = std::max(a, c);
        // Along a border the same pair comes again and again: the last one found is tried first.
        if (m_last >= 0 && links[size_t(m_last)].lo == lo && links[size_t(m_last)].hi == hi) {
            ++links[size_t(m_last)].count;
            return;
        }
        if (size_t(lo) >= firstLink.size())
            grow(lo);
        for (int k = firstLink[size_t(lo)]; k >= 0; k = links[size_t(k)].next) {
            if (links[size_t(k)].hi == hi) {
                ++links[size_t(k)].count;
                m_last = k;
                return;
            }
        }
        m_last = int(links.size());
        links.push_back({lo, hi, 1, -1});
        if (lastLink[size_t(lo)] >= 0)
            links[size_t(lastLink[size_t(lo)])].next = m_last;
        else
            firstLink[size_t(lo)] = m_last;
        lastLink[size_t(lo)] = m_last;
    }

    int m_W;
    int m_last = -1;
};

// The watershed labels the image while the statistics and the pairs of the rows it has
// finished are gathered on the other core: a row is final once the scan has passed it.
// Returns the number of regions, or -1 when cancelled.
int labelAndScan(const QImage& source, std::vector<int>& regionMap, int W, int H, RegionScan& scan,
                 const std::atomic<bool>& cancel)
{
    std::atomic<int> rowsFinal{0};
    std::atomic<bool> stop{false};
    std::thread gather([&] {
        const ConstPixels src = pixels(source);
        for (int y = 0; y < H;) {
            // On a busy machine this thread may lag far behind the scan: a cancelled scan must
            // not wait for it to catch up.
            if (cancel.load(std::memory_order_relaxed))
                return;
            const int ready = std::min(H, rowsFinal.load(std::memory_order_acquire));
            if (y >= ready) {
                if (stop.load(std::memory_order_acquire) && y >= rowsFinal.load(std::memory_order_acquire))
                    return;
                std::this_thread::yield();
                continue;
            }
            for (; y < ready && !cancel.load(std::memory_order_relaxed); ++y)
                scan.addRow(src.row(y), regionMap.data() + qsizetype(y) * W, y);
        }
    });
    const int N = watershed(source, regionMap, cancel, &rowsFinal);
    stop.store(true, std::memory_order_release);
    gather.join();
    if (cancel)
        return -1;
    scan.finish(N);
    return N;
}

std::vector<QColor> meanColours(const RegionScan& sums)
{
    std::vector<QColor> colours(sums.size.size());
    for (size_t r = 0; r < colours.size(); ++r) {
        const int n = sums.size[r];
        colours[r] = QColor(sums.r[r] / n, sums.g[r] / n, sums.b[r] / n, 255);
    }
    return colours;
}

// The edges in region order and list order. A region's list holds its links in the order they
// were made, so that order is the links stably sorted by their smaller region: a counting sort.
struct EdgeOrder {
    std::vector<int, FilledLater<int>> lo, hi, count;
    explicit EdgeOrder(const RegionScan& scan)
    {
        const size_t regions = scan.firstLink.size(), n = scan.links.size();
        std::vector<int> start(regions + 1, 0);
        for (const RegionScan::Link& l : scan.links)
            ++start[size_t(l.lo) + 1];
        for (size_t r = 0; r < regions; ++r)
            start[r + 1] += start[r];
        lo.resize(n);
        hi.resize(n);
        count.resize(n);
        for (const RegionScan::Link& l : scan.links) {
            const size_t at = size_t(start[size_t(l.lo)]++);
            lo[at] = l.lo;
            hi[at] = l.hi;
            count[at] = l.count;
        }
    }
};

// One edge per link: the capacity is the border length times exp(-d^2) * 10000 truncated, with
// d^2 over the channels as fractions channel / 255 in double, the same both ways. The records
// are written on both cores, each core the arcs leaving its half of the regions; the graph ends
// as if the edges had been added one by one. The kernel is asked to fault in the fresh arc pages
// on a third thread from the start, and the filling does not wait for it: waiting for it, or
// leaving the faults to the two filling cores alone, stalled the stage at 30-70 ms in about a
// third of the runs on this machine, against 10-30 ms this way.
void addEdges(VexaSegmentation::FlowGraph& graph, const RegionScan& scan, const std::vector<QColor>& colours)
{
    std::thread prefault([pages = graph.arc_pages(int(scan.links.size()))] { pages.prefault(); });
    const EdgeOrder order(scan);
    std::vector<QRgb> rgb(colours.size());
    for (size_t r = 0; r < colours.size(); ++r)
        rgb[r] = colours[r].rgb();
    double unit[256];
    for (int c = 0; c < 256; ++c)
        unit[c] = c / 255.0;
    auto capacity = [&](int k) {
        const QRgb a = rgb[size_t(order.lo[size_t(k)])], b = rgb[size_t(order.hi[size_t(k)])];
        const double dr = unit[qRed(b)] - unit[qRed(a)], dg = unit[qGreen(b)] - unit[qGreen(a)],
                     db = unit[qBlue(b)] - unit[qBlue(a)];
        const int w = int(std::exp(-(dr * dr + dg * dg + db * db)) * 10000.0);
        // A border long enough to overflow an int cannot occur on a working image; saturate anyway.
        const int c = int(std::min<long long>(INT_MAX, (long long)order.count[size_t(k)] * w));
        return std::pair<int, int>(c, c);
    };
    auto batch = graph.begin_edges(order.lo.data(), order.hi.data(), int(order.lo.size()));
    parallelParts(graph.get_node_num(), [&](int, int first, int last) { batch.fill(first, last, capacity); });
    batch.finish();
    prefault.join();
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

    RegionScan scan(W);
    const int N = labelAndScan(source, seg.regionMap, W, H, scan, cancel);
    if (N < 0)
        return;
    seg.terminalWeights.assign(size_t(N), 0);
    report.progress(text, 20);
    if (cancel)
        return;
    report.progress(text, 30);
    seg.regionSizes = scan.size;
    report.progress(text, 40);
    seg.regionColors = meanColours(scan);
    report.progress(text, 50);
    report.progress(text, 60);
    if (cancel)
        return;

    seg.graph.reset();
    report.progress(text, 70);

    if (N > 0) {
        seg.graph = std::make_unique<VexaSegmentation::FlowGraph>(N, 6 * N, nullptr);
        seg.graph->add_node(N);
    }
    report.progress(text, 80);

    if (seg.graph && !cancel)
        addEdges(*seg.graph, scan, seg.regionColors);
    if (cancel)
        return;
    report.progress(threadText(initializeDone), 0);
    report.setPainting(true);
}

} // namespace VexaQuickSelect
