// The marking step: colour models of the marked regions by k-means, terminal weights from
// them and from the marks, the cut, a softened matte and the new boundary band.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectKernels.h"
#include "VexaQuickSelectShared.h"
#include "VexaSegmentation.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <thread>

namespace VexaQuickSelect {

using namespace detail;

namespace {

const char* const marking = QT_TRANSLATE_NOOP("Thread", "Marking..");
const char* const markDone = QT_TRANSLATE_NOOP("Thread", "Mark done");
const char* const markForeground = QT_TRANSLATE_NOOP("Thread", "Please mark foreground objects.");
const char* const markBackground = QT_TRANSLATE_NOOP("Thread", "Please mark background regions.");

using FlowGraph = VexaSegmentation::FlowGraph;

// ---- marks ----------------------------------------------------------------------------------

// Per region, the OR of 0xFFFF0000 (red byte), 0xFF00FF00 (green) and 0xFF0000FF (blue) over
// the marks on its pixels. Each core ORs its rows into its own flags; ORs join in any order.
bool regionMarkFlags(const VexaSegmentation& seg, std::vector<uint32_t>& flags, const std::atomic<bool>& cancel)
{
    const ConstPixels marks = pixels(seg.markImage);
    const int W = marks.width, H = marks.height;
    std::vector<std::vector<uint32_t>> parts(size_t(parallelParts(H)));
    parallelParts(H, [&](int part, int first, int last) {
        std::vector<uint32_t>& own = part == 0 ? flags : parts[size_t(part)];
        own.resize(flags.size(), 0);
        for (int y = first; y < last && !cancel.load(std::memory_order_relaxed); ++y) {
            const QRgb* m = marks.row(y);
            const int* labels = seg.regionMap.data() + qsizetype(y) * W;
            for (int x = 0; x < W; ++x) {
                if (!m[x])
                    continue;
                uint32_t& f = own[size_t(labels[x])];
                if (redByte(m[x]))
                    f |= 0xFFFF0000u;
                if (greenByte(m[x]))
                    f |= 0xFF00FF00u;
                if (blueByte(m[x]))
                    f |= 0xFF0000FFu;
            }
        }
    });
    if (cancel)
        return false;
    for (size_t part = 1; part < parts.size(); ++part)
        for (size_t r = 0; r < flags.size(); ++r)
            flags[r] |= parts[part][r];
    return true;
}

// The mean colours of the foreground-marked and of the background-marked regions, in region order.
void markedColours(const VexaSegmentation& seg, const std::vector<uint32_t>& flags, std::vector<QColor>& fg,
                   std::vector<QColor>& bg)
{
    for (size_t r = 0; r < flags.size(); ++r) {
        if (redByte(flags[r]))
            fg.push_back(seg.regionColors[r]);
        if (blueByte(flags[r]))
            bg.push_back(seg.regionColors[r]);
    }
}

// ---- colour models --------------------------------------------------------------------------

// K centres of one side.
struct ColourModel {
    int K = 0;
    std::vector<int> r, g, b, count;

    explicit ColourModel(int k) : K(k), r(size_t(k)), g(size_t(k)), b(size_t(k)), count(size_t(k)) {}
    // For n colours, the nearest centre (ties to the lowest index) and its squared distance.
    void nearest(const int* cr, const int* cg, const int* cb, int n, int* index, int* best) const
    {
        kernels().nearestCentres(r.data(), g.data(), b.data(), K, cr, cg, cb, n, index, best);
    }
};

// Centre k of each side from two draws of a generator seeded with 0 and local to the step: the
// same centres on every run and every platform.
void seedCentres(ColourModel& fg, ColourModel& bg, const std::vector<QColor>& fgColours,
                 const std::vector<QColor>& bgColours)
{
    std::mt19937 random(0);
    for (size_t k = 0; k < size_t(fg.K); ++k) {
        const QColor& f = fgColours[size_t(random() % uint32_t(fgColours.size()))];
        fg.r[k] = f.red();
        fg.g[k] = f.green();
        fg.b[k] = f.blue();
        const QColor& b = bgColours[size_t(random() % uint32_t(bgColours.size()))];
        bg.r[k] = b.red();
        bg.g[k] = b.green();
        bg.b[k] = b.blue();
    }
}

// The colours one side clusters. They repeat a lot: each distinct colour is clustered once,
// with its multiplicity in the sums and counts (the same integers either way).
struct ColourSet {
    std::vector<int> r, g, b, times;
    explicit ColourSet(const std::vector<QColor>& colours)
    {
        std::vector<QRgb> packed;
        packed.reserve(colours.size());
        for (const QColor& c : colours)
            packed.push_back(qRgb(c.red(), c.green(), c.blue()));
        std::sort(packed.begin(), packed.end());
        for (size_t i = 0; i < packed.size();) {
            size_t j = i;
            while (j < packed.size() && packed[j] == packed[i])
                ++j;
            r.push_back(qRed(packed[i]));
            g.push_back(qGreen(packed[i]));
            b.push_back(qBlue(packed[i]));
            times.push_back(int(j - i));
            i = j;
        }
    }
    size_t size() const { return r.size(); }
};

// Splits work over [0, n) between the calling thread (the first half) and one helper thread (the
// second), meeting before it returns; for many short rounds, where starting a thread each time
// would cost more than the round. Rounds are handed over by generations of an atomic counter.
class HalfShare
{
public:
    HalfShare()
    {
        if (std::thread::hardware_concurrency() > 1)
            m_helper = std::thread([this] { serve(); });
    }
    ~HalfShare()
    {
        if (m_helper.joinable()) {
            post(nullptr, 0);
            m_helper.join();
        }
    }
    template <class Job>
    void run(int n, const Job& job)
    {
        if (!m_helper.joinable() || n < 128) {
            job(0, n);
            return;
        }
        const std::function<void(int, int)> work = job;
        const int generation = post(&work, n);
        job(0, n / 2);
        while (m_done.load(std::memory_order_acquire) != generation)
            std::this_thread::yield();
    }

private:
    int post(const std::function<void(int, int)>* job, int n)
    {
        m_job = job;
        m_n = n;
        return m_generation.fetch_add(1, std::memory_order_release) + 1;
    }
    void serve()
    {
        for (int seen = 0;;) {
            int generation;
            while ((generation = m_generation.load(std::memory_order_acquire)) == seen)
                std::this_thread::yield();
            seen = generation;
            if (!m_job)
                return;
            (*m_job)(m_n / 2, m_n);
            m_done.store(generation, std::memory_order_release);
        }
    }

    const std::function<void(int, int)>* m_job = nullptr;
    int m_n = 0;
    std::atomic<int> m_generation{0}, m_done{0};
    std::thread m_helper;
};

// K-means of one side: each iteration assigns every colour to its nearest centre and moves the
// centres to the integer means of their clusters (an empty cluster to black).
//
// Most colours lie well inside their cluster, and those need no search: if a colour is closer
// to its own centre a than half the distance from a to every other centre, the triangle
// inequality puts every other centre strictly farther away, so a stays the nearest. In squares
// of integers, exactly: 4 d(x, a)^2 < d(a, k)^2 for every k other than a. Only the other
// colours are searched against all K centres. The cluster sums follow the colours that
// changed cluster instead of being summed anew: the same integers.
class KMeans
{
public:
    KMeans(ColourModel& model, const std::vector<QColor>& colours)
        : m(model), set(colours), member(set.size(), -1), sums(3 * size_t(m.K), 0), search(set.size()),
          sr(set.size()), sg(set.size()), sb(set.size()), index(set.size()), distance(set.size())
    {
        for (Half& half : halves)
            half.delta.resize(4 * size_t(m.K));
    }
    // One iteration; false when no colour changed cluster, in which case the centres come out as
    // they went in and every further iteration would repeat this one.
    bool iterate(HalfShare& share)
    {
        const std::vector<int> clear = clearance();
        for (Half& half : halves) {
            std::fill(half.delta.begin(), half.delta.end(), 0);
            half.moved = false;
        }
        share.run(int(set.size()), [&](int first, int last) { assign(first, last, clear); });
        for (size_t k = 0; k < size_t(m.K); ++k) {
            for (const Half& half : halves) {
                m.count[k] += half.delta[4 * k];
                sums[3 * k] += half.delta[4 * k + 1];
                sums[3 * k + 1] += half.delta[4 * k + 2];
                sums[3 * k + 2] += half.delta[4 * k + 3];
            }
            const int n = m.count[k] >= 2 ? m.count[k] : 1;
            m.r[k] = sums[3 * k] / n;
            m.g[k] = sums[3 * k + 1] / n;
            m.b[k] = sums[3 * k + 2] / n;
        }
        return halves[0].moved || halves[1].moved;
    }

private:
    // The nearest centre of colours [first, last); those that changed cluster move their share
    // of the sums in the half's deltas.
    void assign(int first, int last, const std::vector<int>& clear)
    {
        // Colours that keep their centre without a search; the others are listed, without
        // branches (whether a colour is kept is a coin toss to the processor).
        int* list = search.data() + first;
        int count = 0;
        for (int c = first; c < last; ++c) {
            const int a = member[size_t(c)];
            const int k = a >= 0 ? a : 0;
            const int dr = set.r[size_t(c)] - m.r[size_t(k)], dg = set.g[size_t(c)] - m.g[size_t(k)],
                      db = set.b[size_t(c)] - m.b[size_t(k)];
            const bool kept = a >= 0 && 4 * (long long)(dr * dr + dg * dg + db * db) < clear[size_t(k)];
            list[count] = c;
            count += !kept;
        }
        for (int i = 0; i < count; ++i) {
            sr[size_t(first + i)] = set.r[size_t(list[i])];
            sg[size_t(first + i)] = set.g[size_t(list[i])];
            sb[size_t(first + i)] = set.b[size_t(list[i])];
        }
        m.nearest(sr.data() + first, sg.data() + first, sb.data() + first, count, index.data() + first,
                  distance.data() + first);
        Half& half = halves[first == 0 ? 0 : 1];
        for (int i = 0; i < count; ++i) {
            const size_t c = size_t(list[i]);
            const int to = index[size_t(first + i)], from = member[c];
            if (to == from)
                continue;
            half.moved = true;
            if (from >= 0)
                add(half, c, from, -1);
            add(half, c, to, 1);
            member[c] = to;
        }
    }
    // Per centre, the least squared distance to another centre (none: beyond any colour).
    std::vector<int> clearance() const
    {
        std::vector<int> clear(size_t(m.K));
        const int *r = m.r.data(), *g = m.g.data(), *b = m.b.data();
        for (int a = 0; a < m.K; ++a) {
            int least = std::numeric_limits<int>::max();
            for (int k = 0; k < m.K; ++k) {
                const int dr = r[a] - r[k], dg = g[a] - g[k], db = b[a] - b[k];
                const int d = dr * dr + dg * dg + db * db;
                least = k != a && d < least ? d : least;
            }
            clear[size_t(a)] = least;
        }
        return clear;
    }
    struct Half {
        std::vector<int> delta; // per cluster: count, red, green and blue sums
        bool moved = false;
    };
    // Colour c (with its multiplicity) into or out of cluster k.
    void add(Half& half, size_t c, int k, int sign)
    {
        const int n = sign * set.times[c];
        half.delta[4 * size_t(k)] += n;
        half.delta[4 * size_t(k) + 1] += n * set.r[c];
        half.delta[4 * size_t(k) + 2] += n * set.g[c];
        half.delta[4 * size_t(k) + 3] += n * set.b[c];
    }

    ColourModel& m;
    const ColourSet set;
    std::vector<int> member;
    std::vector<int> sums; // per cluster: red, green and blue sums
    Half halves[2];
    std::vector<int> search, sr, sg, sb, index, distance; // scratch of the searches, by colour range
};

// 4 K iterations of each model, fewer where it has settled (no further change) or when the
// step is cancelled. The models are unequal in size (the background strokes usually cover far
// more regions), so rather than one model per core, each iteration's search is shared by both.
void clusterColours(ColourModel& fg, ColourModel& bg, const std::vector<QColor>& fgColours,
                    const std::vector<QColor>& bgColours, const std::atomic<bool>& cancel)
{
    HalfShare share;
    auto run = [&](ColourModel& model, const std::vector<QColor>& colours) {
        KMeans means(model, colours);
        for (int it = 0; it < 4 * model.K && !cancel.load(std::memory_order_relaxed) && means.iterate(share); ++it) {
        }
    };
    run(fg, fgColours);
    run(bg, bgColours);
}

// ---- terminal weights -----------------------------------------------------------------------

// Moves node r's net terminal capacity from its old value to v.
inline void setTerminalWeight(VexaSegmentation& seg, int r, int v)
{
    seg.graph->add_tweights(r, v, seg.terminalWeights[size_t(r)]);
    seg.terminalWeights[size_t(r)] = v;
}

// Towards the nearer model, scaled by the sensitivity and the square root of the region's size.
// The values on both cores (each region on its own), then set in region order.
void softWeights(VexaSegmentation& seg, const ColourModel& fg, const ColourModel& bg)
{
    const int N = int(seg.regionColors.size());
    const int lambda = seg.sensitivity;
    const size_t count = static_cast<size_t>(N);
    std::vector<int> r(count), g(count), b(count), dF(count), dB(count), index(count);
    std::vector<int> v(size_t(N), 0);
    parallelRanges(N, [&](int first, int last) {
        for (size_t i = size_t(first); i < size_t(last); ++i) {
            r[i] = seg.regionColors[i].red();
            g[i] = seg.regionColors[i].green();
            b[i] = seg.regionColors[i].blue();
        }
        const int n = last - first;
        fg.nearest(r.data() + first, g.data() + first, b.data() + first, n, index.data() + first, dF.data() + first);
        bg.nearest(r.data() + first, g.data() + first, b.data() + first, n, index.data() + first, dB.data() + first);
        for (size_t i = size_t(first); i < size_t(last); ++i) {
            const double D = dF[i] + dB[i] > 0 ? double(dF[i] + dB[i]) : 1.0;
            const double scale = double(lambda * 1000) * std::sqrt(double(seg.regionSizes[i]));
            v[i] = int(double(dB[i] - dF[i]) * scale / D);
        }
    });
    for (int i = 0; i < N; ++i)
        setTerminalWeight(seg, i, v[size_t(i)]);
}

// Marked regions are tied to their side; one marked both ways ends as background.
void hardWeights(VexaSegmentation& seg, const std::vector<uint32_t>& flags)
{
    for (int r = 0; r < int(flags.size()); ++r) {
        if (redByte(flags[size_t(r)]))
            setTerminalWeight(seg, r, hardWeight);
        if (blueByte(flags[size_t(r)]))
            setTerminalWeight(seg, r, -hardWeight);
    }
}

// ---- the matte ------------------------------------------------------------------------------

// The cut as a hard matte, straight into the float alpha: 1 for the source side, 0 for the
// sink. (The alpha image is written once, after smoothing; nothing reads it in between.) The
// side of each region is asked of the graph once, not once per pixel.
void hardMatte(const VexaSegmentation& seg, AlphaBuffer& A, int W, int H)
{
    const FlowGraph& graph = *seg.graph;
    std::vector<float> side(seg.regionColors.size());
    for (size_t r = 0; r < side.size(); ++r)
        side[r] = graph.what_segment(int(r), FlowGraph::SOURCE) == FlowGraph::SOURCE ? 1.0f : 0.0f;
    parallelRanges(H, [&](int first, int last) {
        const int* labels = seg.regionMap.data() + qsizetype(first) * W;
        float* f = A.data() + qsizetype(first) * W;
        for (qsizetype i = 0, n = qsizetype(last - first) * W; i < n; ++i)
            f[i] = side[size_t(labels[i])];
    });
}

// The smoothed matte into the result and alpha images, and the new boundary band: every pixel
// on an edge of the matte; green marks away from it are erased. Inside the frame of the image
// every pixel has its four neighbours, so the edge test there goes without bound checks; the
// frame takes the bounded test.
void writeBack(const ConstPixels& source, const Pixels& result, const Pixels& alpha, const Pixels& marks,
               const AlphaBuffer& A)
{
    parallelRanges(source.height, [&](int first, int last) {
        // Copies: stores through the row pointers could otherwise change them, as far as the
        // compiler can tell, and they would be read again for every pixel.
        const int W = source.width, H = source.height;
        const float* const matte = A.data();
        for (int y = first; y < last; ++y) {
            const QRgb* s = source.row(y);
            QRgb* res = result.row(y);
            QRgb* al = alpha.row(y);
            QRgb* m = marks.row(y);
            const float* a = matte + qsizetype(y) * W;
            auto pixel = [s, res, al, m, a](int x, bool edge) {
                const QRgb a8 = QRgb(alphaByte(a[x]));
                res[x] = (s[x] & 0x00FFFFFFu) + (a8 << 24);
                al[x] = 0xFF000000u + a8 * 0x010101u;
                m[x] = edge ? VexaSegmentation::BoundaryMark : greenByte(m[x]) ? 0u : m[x];
            };
            if (y == 0 || y == H - 1 || W < 3) {
                for (int x = 0; x < W; ++x)
                    pixel(x, onEdge(matte, W, H, x, y));
                continue;
            }
            const float *up = a - W, *down = a + W;
            pixel(0, onEdge(matte, W, H, 0, y));
            for (int x = 1; x < W - 1; ++x)
                pixel(x, (a[x] != a[x - 1]) | (a[x] != a[x + 1]) | (a[x] != up[x]) | (a[x] != down[x]));
            pixel(W - 1, onEdge(matte, W, H, W - 1, y));
        }
    });
}

// Whether the mark, alpha and result images can be read beside the working image.
bool imagesMatch(const VexaSegmentation& seg)
{
    const QImage& src = seg.sourceImage;
    return src.depth() == 32 && matches(seg.markImage, src) && matches(seg.alphaImage, src)
        && matches(seg.resultImage, src);
}

// Whether the segmentation holds a finished init of the working image.
bool initialised(const VexaSegmentation& seg)
{
    const size_t N = seg.regionColors.size();
    return seg.regionMap.size() == size_t(seg.sourceImage.width()) * size_t(seg.sourceImage.height())
        && seg.regionSizes.size() == N && seg.terminalWeights.size() == N
        && (N == 0 || (seg.graph && seg.graph->get_node_num() == int(N)));
}

} // namespace

void mark(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel)
{
    const QString text = threadText(marking);
    report.setPainting(false);
    report.progress(text, 0);
    if (seg.sourceImage.isNull())
        return;
    const int N = int(seg.regionColors.size());
    if (!imagesMatch(seg)) {
        // Marks or matte of another size cannot be read beside the image: refused.
        report.progress(threadText(markDone), 0);
        report.setPainting(true);
        return;
    }
    // Without a finished init (cancelled, say) there are no regions to mark: like no image.
    if (!initialised(seg))
        return;

    std::vector<uint32_t> flags(size_t(N), 0);
    if (!regionMarkFlags(seg, flags, cancel))
        return;
    report.progress(text, 10);

    std::vector<QColor> fgColours, bgColours;
    markedColours(seg, flags, fgColours, bgColours);
    report.progress(text, 20);

    if (fgColours.empty() || bgColours.empty()) {
        report.setMessage(threadText(fgColours.empty() ? markForeground : markBackground));
        report.progress(threadText(markDone), 0);
        report.setPainting(true);
        return;
    }

    const int K = std::min(64, std::max(int(fgColours.size()), int(bgColours.size())));
    ColourModel fg(K), bg(K);
    report.progress(text, 30);
    seedCentres(fg, bg, fgColours, bgColours);
    report.progress(text, 40);
    clusterColours(fg, bg, fgColours, bgColours, cancel);
    report.progress(text, 50);
    if (cancel)
        return;

    softWeights(seg, fg, bg);
    report.progress(text, 60);
    hardWeights(seg, flags);
    report.progress(text, 70);
    if (cancel)
        return;

    // The cut runs on one core; meanwhile the other faults in the two alpha buffers that the
    // matte and its smoothing write next.
    const size_t pixelCount = size_t(seg.sourceImage.width()) * size_t(seg.sourceImage.height());
    AlphaBuffer A(pixelCount), B(pixelCount);
    std::thread fault([&A, &B] {
        for (AlphaBuffer* buffer : {&A, &B})
            for (size_t i = 0; i < buffer->size(); i += 1024)
                (*buffer)[i] = 0.0f;
    });
    seg.graph->maxflow(false, nullptr, &cancel);
    fault.join();
    if (cancel) {
        // The cut stopped part way: its flow is not a maximum one and its trees are half-grown,
        // so this graph must never be cut again. Without it the segmentation counts as not
        // initialised until the next init builds a new one.
        seg.graph.reset();
        return;
    }

    // Writable views once, here: the passes below run on several threads.
    const ConstPixels source = pixels(seg.sourceImage);
    const Pixels result = writablePixels(seg.resultImage), alpha = writablePixels(seg.alphaImage),
                 marks = writablePixels(seg.markImage);
    hardMatte(seg, A, source.width, source.height);
    report.progress(text, 80);
    report.progress(text, 90);

    if (!smoothBorder(A, B, seg.sourceImage, seg.markImage, 4, cancel))
        return;
    report.progress(text, 100);

    writeBack(source, result, alpha, marks, A);
    if (!seg.userBoundary.isNull())
        seg.userBoundary.fill(0u); // what the user marked as boundary is the band's now, or erased
    report.progress(threadText(markDone), 0);
    report.setPainting(true);
    report.updateImageBox(QRect(0, 0, source.width, source.height));
}

} // namespace VexaQuickSelect
