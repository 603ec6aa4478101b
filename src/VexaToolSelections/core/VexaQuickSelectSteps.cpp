#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaSegmentation.h"
#include "VexaWatershed.h"

#include <QCoreApplication>

#include <algorithm>
#include <climits>
#include <limits>
#include <cmath>
#include <cstdint>
#include <deque>
#include <random>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

VexaQuickSelectReporter::~VexaQuickSelectReporter() = default;

namespace VexaQuickSelect {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Thread", text); }

constexpr int hardWeight = 100000000;
constexpr QRgb trimapForeground = 0xFFFFFFFFu;
constexpr QRgb trimapBackground = 0xFF000000u;
constexpr QRgb trimapUnknown = 0xFF808080u;

inline bool redByte(QRgb m) { return (m >> 16) & 0xFFu; }
inline bool greenByte(QRgb m) { return (m >> 8) & 0xFFu; }
inline bool blueByte(QRgb m) { return m & 0xFFu; }

inline const QRgb* row(const QImage& img, int y) { return reinterpret_cast<const QRgb*>(img.constScanLine(y)); }
inline QRgb* row(QImage& img, int y) { return reinterpret_cast<QRgb*>(img.scanLine(y)); }

inline int squaredDistance(int r1, int g1, int b1, int r2, int g2, int b2)
{
    return (r1 - r2) * (r1 - r2) + (g1 - g2) * (g1 - g2) + (b1 - b2) * (b1 - b2);
}

// Channel c as the float c / 255.
struct UnitChannels {
    float v[256];
    UnitChannels()
    {
        for (int c = 0; c < 256; ++c)
            v[c] = float(c) / 255.0f;
    }
};
const UnitChannels& unit()
{
    static const UnitChannels table;
    return table;
}

// Does a pixel have a 4-neighbour inside the image whose value differs from its own?
template <class T>
inline bool onEdge(const T* v, int W, int H, int x, int y)
{
    const size_t i = size_t(y) * size_t(W) + size_t(x);
    const T a = v[i];
    return (x > 0 && v[i - 1] != a) || (x < W - 1 && v[i + 1] != a) || (y > 0 && v[i - size_t(W)] != a)
        || (y < H - 1 && v[i + size_t(W)] != a);
}

// Puts the matte back: alpha in the result's top byte, grey in the alpha image.
inline int alphaByte(float alpha)
{
    // Truncated toward zero and clamped. The clamp comes before the conversion: a patch whose
    // weights nearly cancel can estimate far outside 0..1, beyond what an int holds.
    const float a = alpha * 255.0f;
    if (!(a > 0.0f))
        return 0;
    return a >= 255.0f ? 255 : int(a);
}

} // namespace

std::vector<double> intensities(const QImage& source)
{
    const int W = source.width(), H = source.height();
    std::vector<double> out(size_t(W) * size_t(H));
    for (int y = 0; y < H; ++y) {
        const QRgb* r = row(source, y);
        double* o = out.data() + size_t(y) * size_t(W);
        for (int x = 0; x < W; ++x)
            o[x] = 0.3 * qRed(r[x]) + 0.59 * qGreen(r[x]) + 0.11 * qBlue(r[x]);
    }
    return out;
}

float patchEstimate(const std::vector<double>& intensity, const std::vector<float>& in, int W, int H, int x, int y)
{
    double I[9], alpha[9];
    const size_t centre = size_t(y) * size_t(W) + size_t(x);
    I[0] = intensity[centre];
    alpha[0] = in[centre];
    int n = 1;
    for (int yy = y - 1; yy <= y + 1; ++yy) {
        if (yy < 0 || yy >= H)
            continue;
        for (int xx = x - 1; xx <= x + 1; ++xx) {
            if (xx < 0 || xx >= W || (xx == x && yy == y))
                continue;
            const size_t q = size_t(yy) * size_t(W) + size_t(xx);
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

bool smoothBorder(std::vector<float>& a, const std::vector<double>& intensity, const QImage& marks, int passes,
                  const std::atomic<bool>& cancel)
{
    const int W = marks.width(), H = marks.height();
    std::vector<float> b(a.size(), 0.0f);
    for (int pass = 0; pass < passes; ++pass) {
        const std::vector<float>& in = pass % 2 == 0 ? a : b;
        std::vector<float>& out = pass % 2 == 0 ? b : a;
        // Each pass reads one buffer and writes the other: rows are independent.
        parallelRanges(H, [&](int first, int last) {
            for (int y = first; y < last && !cancel.load(std::memory_order_relaxed); ++y) {
                const QRgb* m = row(marks, y);
                const size_t base = size_t(y) * size_t(W);
                for (int x = 0; x < W; ++x) {
                    if (redByte(m[x]))
                        out[base + size_t(x)] = 1.0f;
                    else if (blueByte(m[x]))
                        out[base + size_t(x)] = 0.0f;
                    else if (onEdge(in.data(), W, H, x, y))
                        out[base + size_t(x)] = patchEstimate(intensity, in, W, H, x, y);
                    else
                        out[base + size_t(x)] = in[base + size_t(x)];
                }
            }
        });
        if (cancel)
            return false;
    }
    if (passes % 2 == 1)
        a.swap(b);
    return true;
}

// ---------------------------------------------------------------------------------------------

void init(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel)
{
    const QString text = tr("Initializing ..");
    report.setPainting(false);
    report.progress(text, 0);

    const int W = std::min(seg.maxWidth, seg.sourceImage.width());
    const int H = std::min(seg.maxHeight, seg.sourceImage.height());
    report.progress(text, 10);
    if (cancel)
        return;

    const int N = watershed(seg.sourceImage, seg.regionMap);
    seg.terminalWeights.assign(size_t(N), 0);
    report.progress(text, 20);
    if (cancel)
        return;

    std::vector<int> sumR(size_t(N), 0), sumG(size_t(N), 0), sumB(size_t(N), 0);
    seg.regionSizes.assign(size_t(N), 0);
    report.progress(text, 30);

    for (int y = 0; y < H; ++y) {
        if (cancel)
            return;
        const QRgb* px = row(seg.sourceImage, y);
        const int* labels = seg.regionMap.data() + size_t(y) * size_t(W);
        for (int x = 0; x < W; ++x) {
            const size_t r = size_t(labels[x]);
            sumR[r] += qRed(px[x]);
            sumG[r] += qGreen(px[x]);
            sumB[r] += qBlue(px[x]);
            ++seg.regionSizes[r];
        }
    }
    report.progress(text, 40);

    seg.regionColors.resize(size_t(N));
    for (size_t r = 0; r < size_t(N); ++r) {
        const int n = seg.regionSizes[r];
        seg.regionColors[r] = QColor(sumR[r] / n, sumG[r] / n, sumB[r] / n, 255);
    }
    report.progress(text, 50);

    // Touching pairs, each in the list of its smaller region, counted per pixel edge.
    struct NodeLink {
        int neighbour;
        int count;
    };
    std::vector<std::vector<NodeLink>> links(static_cast<size_t>(N));
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
    for (int y = 0; y < H; ++y) {
        if (cancel)
            return;
        const int* labels = seg.regionMap.data() + size_t(y) * size_t(W);
        for (int x = 0; x < W; ++x) {
            const int a = labels[x];
            if (x > 0 && labels[x - 1] != a)
                record(a, labels[x - 1]);
            if (y > 0 && labels[x - W] != a)
                record(a, labels[x - W]);
        }
    }
    report.progress(text, 60);

    seg.graph.reset();
    report.progress(text, 70);

    if (N > 0) {
        seg.graph = std::make_unique<VexaSegmentation::FlowGraph>(N, 6 * N, nullptr);
        seg.graph->add_node(N);
    }
    report.progress(text, 80);

    // The channels as QColor gives them (float c / 255), once per region.
    std::vector<float> fr(static_cast<size_t>(N)), fgr(static_cast<size_t>(N)), fb(static_cast<size_t>(N));
    for (size_t r = 0; r < size_t(N); ++r) {
        fr[r] = seg.regionColors[r].redF();
        fgr[r] = seg.regionColors[r].greenF();
        fb[r] = seg.regionColors[r].blueF();
    }
    // Weights on both cores (each link on its own), then the edges in their fixed order.
    std::vector<int> weights;
    std::vector<size_t> firstLink(static_cast<size_t>(N) + 1, 0);
    for (size_t r = 0; r < size_t(N); ++r)
        firstLink[r + 1] = firstLink[r] + links[r].size();
    weights.resize(firstLink.back());
    parallelRanges(N, [&](int first, int last) {
        for (int i = first; i < last; ++i) {
            size_t at = firstLink[size_t(i)];
            for (const NodeLink& l : links[size_t(i)]) {
                const size_t a = size_t(i), b = size_t(l.neighbour);
                const double dr = double(fr[b]) - double(fr[a]);
                const double dg = double(fgr[b]) - double(fgr[a]);
                const double db = double(fb[b]) - double(fb[a]);
                weights[at++] = int(std::exp(-(dr * dr + dg * dg + db * db)) * 10000.0);
            }
        }
    });
    if (cancel)
        return;
    for (int i = 0; i < N; ++i) {
        size_t at = firstLink[size_t(i)];
        for (const NodeLink& l : links[size_t(i)]) {
            // A border long enough to overflow an int cannot occur on a working image; saturate anyway.
            const int c = int(std::min<long long>(INT_MAX, (long long)l.count * weights[at++]));
            seg.graph->add_edge(i, l.neighbour, c, c);
        }
    }
    report.progress(tr("Initialize done."), 0);
    report.setPainting(true);
}

// ---------------------------------------------------------------------------------------------

void mark(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel)
{
    const QString text = tr("Marking..");
    report.setPainting(false);
    report.progress(text, 0);
    if (seg.sourceImage.isNull())
        return;
    const int W = seg.sourceImage.width(), H = seg.sourceImage.height();
    const int N = int(seg.regionColors.size());
    // Without a finished init (cancelled, say) there are no regions to mark: like no image.
    if (seg.regionMap.size() != size_t(W) * size_t(H) || (N > 0 && !seg.graph))
        return;

    std::vector<uint32_t> flags(size_t(N), 0);
    for (int y = 0; y < H; ++y) {
        if (cancel)
            return;
        const QRgb* m = row(seg.markImage, y);
        const int* labels = seg.regionMap.data() + size_t(y) * size_t(W);
        for (int x = 0; x < W; ++x) {
            if (!m[x])
                continue;
            uint32_t& f = flags[size_t(labels[x])];
            if (redByte(m[x]))
                f |= 0xFFFF0000u;
            if (greenByte(m[x]))
                f |= 0xFF00FF00u;
            if (blueByte(m[x]))
                f |= 0xFF0000FFu;
        }
    }
    report.progress(text, 10);

    std::vector<QColor> fgColors, bgColors;
    for (int r = 0; r < N; ++r) {
        if (redByte(flags[size_t(r)]))
            fgColors.push_back(seg.regionColors[size_t(r)]);
        if (blueByte(flags[size_t(r)]))
            bgColors.push_back(seg.regionColors[size_t(r)]);
    }
    report.progress(text, 20);

    const QString done = tr("Mark done");
    if (fgColors.empty() || bgColors.empty()) {
        report.setMessage(fgColors.empty() ? tr("Please mark foreground objects.") : tr("Please mark background regions."));
        report.progress(done, 0);
        report.setPainting(true);
        return;
    }

    // Colour models: K centres per side by k-means over the marked regions' mean colours.
    const int nF = int(fgColors.size()), nB = int(bgColors.size());
    const int K = std::min(64, std::max(nF, nB));
    struct Model {
        std::vector<int> r, g, b, count, member;
    };
    Model fg{std::vector<int>(size_t(K)), std::vector<int>(size_t(K)), std::vector<int>(size_t(K)),
             std::vector<int>(size_t(K)), std::vector<int>(size_t(nF))};
    Model bg{std::vector<int>(size_t(K)), std::vector<int>(size_t(K)), std::vector<int>(size_t(K)),
             std::vector<int>(size_t(K)), std::vector<int>(size_t(nB))};
    // A fixed generator seeded with 0, local to the step: the same centres on every run and
    // every platform.
    std::mt19937 random(0);
    report.progress(text, 30);

    for (int k = 0; k < K; ++k) {
        const QColor& f = fgColors[size_t(random() % uint32_t(nF))];
        fg.r[size_t(k)] = f.red();
        fg.g[size_t(k)] = f.green();
        fg.b[size_t(k)] = f.blue();
        const QColor& b = bgColors[size_t(random() % uint32_t(nB))];
        bg.r[size_t(k)] = b.red();
        bg.g[size_t(k)] = b.green();
        bg.b[size_t(k)] = b.blue();
    }
    report.progress(text, 40);

    // Centre arrays hold 64 entries whatever K is; those past K sit far outside the colour cube
    // (and their squares still fit an int), so the distance loop has a fixed length the
    // compiler vectorises and they are never the nearest.
    constexpr int unusedCentre = 20000;
    for (Model* m : {&fg, &bg}) {
        m->r.resize(64, unusedCentre);
        m->g.resize(64, unusedCentre);
        m->b.resize(64, unusedCentre);
    }
    auto nearest = [K](const Model& m, int r, int g, int b) {
        int d[64];
        const int* cr = m.r.data();
        const int* cg = m.g.data();
        const int* cb = m.b.data();
        for (int k = 0; k < 64; ++k)
            d[k] = (r - cr[k]) * (r - cr[k]) + (g - cg[k]) * (g - cg[k]) + (b - cb[k]) * (b - cb[k]);
        int best = INT_MAX, index = 0;
        for (int k = 0; k < K; ++k) {
            if (d[k] < best) {
                best = d[k];
                index = k;
            }
        }
        return std::make_pair(index, best);
    };
    // The marked regions' mean colours repeat a lot: each distinct colour is clustered once,
    // with its multiplicity in the sums and counts (the same integers either way).
    struct Colours {
        std::vector<int> r, g, b, times;
    };
    auto channels = [](const std::vector<QColor>& colors) {
        std::vector<QRgb> packed;
        packed.reserve(colors.size());
        for (const QColor& c : colors)
            packed.push_back(qRgb(c.red(), c.green(), c.blue()));
        std::sort(packed.begin(), packed.end());
        Colours out;
        for (size_t i = 0; i < packed.size();) {
            size_t j = i;
            while (j < packed.size() && packed[j] == packed[i])
                ++j;
            out.r.push_back(qRed(packed[i]));
            out.g.push_back(qGreen(packed[i]));
            out.b.push_back(qBlue(packed[i]));
            out.times.push_back(int(j - i));
            i = j;
        }
        return out;
    };
    const Colours fgc = channels(fgColors), bgc = channels(bgColors);
    fg.member.assign(fgc.r.size(), 0);
    bg.member.assign(bgc.r.size(), 0);
    // One iteration of one model; false when no colour changed cluster, in which case the
    // centres come out as they went in and every further iteration repeats this one.
    //
    // Most colours keep their cluster from one iteration to the next. Each keeps an upper
    // bound on its (Euclidean) distance to its centre and a lower bound on its distance to all
    // the others, loosened by how far the centres moved; while the first stays clearly below
    // the second every other centre is strictly farther, so the least-distance rule (ties to
    // the lowest index) keeps the cluster and the full search is skipped. Close calls and ties
    // go to the exact integer search.
    struct Bounds {
        std::vector<double> upper, lower;
    };
    Bounds fgBounds{std::vector<double>(fgc.r.size()), std::vector<double>(fgc.r.size())};
    Bounds bgBounds{std::vector<double>(bgc.r.size()), std::vector<double>(bgc.r.size())};
    constexpr double margin = 1e-7; // far below the gap between square roots of distinct integers here
    auto fullSearch = [K](const Model& m, int r, int g, int b, double& upper, double& lower) {
        int best = INT_MAX, second = INT_MAX, index = 0;
        for (int k = 0; k < K; ++k) {
            const int d = squaredDistance(r, g, b, m.r[size_t(k)], m.g[size_t(k)], m.b[size_t(k)]);
            if (d < best) {
                second = best;
                best = d;
                index = k;
            } else if (d < second) {
                second = d;
            }
        }
        upper = std::sqrt(double(best));
        lower = second == INT_MAX ? std::numeric_limits<double>::infinity() : std::sqrt(double(second));
        return index;
    };
    auto iterate = [&](Model& m, Bounds& bounds, const Colours& colors, bool first, const std::vector<double>& shift) {
        // The largest and second largest centre shift: the lower bound of a colour loses the
        // largest shift of the centres other than its own.
        int top = -1;
        double topShift = 0, secondShift = 0;
        if (!first) {
            for (int k = 0; k < K; ++k) {
                if (shift[size_t(k)] > topShift) {
                    secondShift = topShift;
                    topShift = shift[size_t(k)];
                    top = k;
                } else if (shift[size_t(k)] > secondShift) {
                    secondShift = shift[size_t(k)];
                }
            }
        }
        bool moved = first;
        for (size_t c = 0; c < colors.r.size(); ++c) {
            double& upper = bounds.upper[c];
            double& lower = bounds.lower[c];
            int k;
            if (first) {
                k = fullSearch(m, colors.r[c], colors.g[c], colors.b[c], upper, lower);
            } else {
                const int a = m.member[c];
                upper += shift[size_t(a)];
                lower -= a == top ? secondShift : topShift;
                if (upper + margin < lower) {
                    k = a;
                } else {
                    upper = std::sqrt(double(squaredDistance(colors.r[c], colors.g[c], colors.b[c], m.r[size_t(a)],
                                                             m.g[size_t(a)], m.b[size_t(a)])));
                    k = upper + margin < lower ? a : fullSearch(m, colors.r[c], colors.g[c], colors.b[c], upper, lower);
                }
            }
            moved |= k != m.member[c];
            m.member[c] = k;
        }
        return moved;
    };
    // New centres from the clusters; `shift` gets how far each moved.
    auto recentre = [K](Model& m, const Colours& colors, std::vector<double>& shift) {
        const std::vector<int> oldR(m.r.begin(), m.r.begin() + K), oldG(m.g.begin(), m.g.begin() + K),
            oldB(m.b.begin(), m.b.begin() + K);
        std::fill(m.count.begin(), m.count.end(), 0);
        std::fill(m.r.begin(), m.r.begin() + K, 0);
        std::fill(m.g.begin(), m.g.begin() + K, 0);
        std::fill(m.b.begin(), m.b.begin() + K, 0);
        for (size_t c = 0; c < colors.r.size(); ++c) {
            const size_t k = size_t(m.member[c]);
            const int n = colors.times[c];
            m.count[k] += n;
            m.r[k] += n * colors.r[c];
            m.g[k] += n * colors.g[c];
            m.b[k] += n * colors.b[c];
        }
        for (size_t k = 0; k < size_t(K); ++k) {
            const int n = m.count[k] >= 2 ? m.count[k] : 1;
            m.r[k] /= n;
            m.g[k] /= n;
            m.b[k] /= n;
            shift[k] = std::sqrt(double(squaredDistance(m.r[k], m.g[k], m.b[k], oldR[k], oldG[k], oldB[k])));
        }
    };
    std::vector<double> fgShift(static_cast<size_t>(K), 0.0), bgShift(static_cast<size_t>(K), 0.0);
    bool fgMoving = true, bgMoving = true;
    for (int it = 0; it < 4 * K && (fgMoving || bgMoving); ++it) {
        if (fgMoving) {
            fgMoving = iterate(fg, fgBounds, fgc, it == 0, fgShift);
            recentre(fg, fgc, fgShift);
        }
        if (bgMoving) {
            bgMoving = iterate(bg, bgBounds, bgc, it == 0, bgShift);
            recentre(bg, bgc, bgShift);
        }
    }
    report.progress(text, 50);
    if (cancel)
        return;

    VexaSegmentation::FlowGraph& graph = *seg.graph;
    auto setWeight = [&](int r, int v) {
        graph.add_tweights(r, v, seg.terminalWeights[size_t(r)]);
        seg.terminalWeights[size_t(r)] = v;
    };
    const int lambda = seg.sensitivity;
    for (int r = 0; r < N; ++r) {
        const QColor& c = seg.regionColors[size_t(r)];
        const int dF = nearest(fg, c.red(), c.green(), c.blue()).second;
        const int dB = nearest(bg, c.red(), c.green(), c.blue()).second;
        const double D = dF + dB > 0 ? double(dF + dB) : 1.0;
        const double scale = double(lambda * 1000) * std::sqrt(double(seg.regionSizes[size_t(r)]));
        setWeight(r, int(double(dB - dF) * scale / D));
    }
    report.progress(text, 60);

    for (int r = 0; r < N; ++r) {
        if (redByte(flags[size_t(r)]))
            setWeight(r, hardWeight);
        if (blueByte(flags[size_t(r)]))
            setWeight(r, -hardWeight);
    }
    report.progress(text, 70);
    if (cancel)
        return;

    graph.maxflow(false, nullptr);
    if (cancel)
        return;

    for (int y = 0; y < H; ++y) {
        QRgb* a = row(seg.alphaImage, y);
        const int* labels = seg.regionMap.data() + size_t(y) * size_t(W);
        for (int x = 0; x < W; ++x)
            a[x] = graph.what_segment(labels[x], VexaSegmentation::FlowGraph::SOURCE) == VexaSegmentation::FlowGraph::SOURCE
                ? 0xFFFFFFFFu
                : 0xFF000000u;
    }
    report.progress(text, 80);

    std::vector<float> A(size_t(W) * size_t(H));
    for (int y = 0; y < H; ++y) {
        const QRgb* a = row(seg.alphaImage, y);
        for (int x = 0; x < W; ++x)
            A[size_t(y) * size_t(W) + size_t(x)] = float((a[x] & 0xFFu) / 255.0);
    }
    report.progress(text, 90);

    const std::vector<double> intensity = intensities(seg.sourceImage);
    if (!smoothBorder(A, intensity, seg.markImage, 4, cancel))
        return;
    report.progress(text, 100);

    // Write-back, and the new boundary band: every pixel on an edge of the matte.
    parallelRanges(H, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            const QRgb* s = row(seg.sourceImage, y);
            QRgb* res = row(seg.resultImage, y);
            QRgb* al = row(seg.alphaImage, y);
            QRgb* m = row(seg.markImage, y);
            for (int x = 0; x < W; ++x) {
                const size_t i = size_t(y) * size_t(W) + size_t(x);
                const int a8 = alphaByte(A[i]);
                res[x] = (s[x] & 0x00FFFFFFu) + (QRgb(a8) << 24);
                al[x] = 0xFF000000u + QRgb(a8) * 0x010101u;
                if (onEdge(A.data(), W, H, x, y))
                    m[x] = VexaSegmentation::BoundaryMark;
                else if (greenByte(m[x]))
                    m[x] = 0;
            }
        }
    });
    report.progress(done, 0);
    report.setPainting(true);
    report.updateImageBox(QRect(0, 0, W, H));
}

// ---------------------------------------------------------------------------------------------

namespace {

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

struct Slot {
    QRgb colour;
    float distance;
};

// The eight slots of one side while the samples are visited: their distances (squared pixel
// distances, exact in an int) and the list index of the sample each holds.
#ifdef __SSE2__
// Kept in registers: nearly every sample the search looks at replaces a slot, and writing one
// lane to memory only to load all eight again for the next sample stalls on every sample.
class SlotSet
{
public:
    void set(const int* dist, const int* index)
    {
        m_lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(dist));
        m_hi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(dist + 4));
        m_ilo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(index));
        m_ihi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(index + 4));
        updateFarthest();
    }
    int farthest() const { return m_farthest; }
    // Puts sample `index` at distance d into the first slot farther than d (d < farthest()).
    void offer(int d, int index)
    {
        const __m128i v = _mm_set1_epi32(d);
        const int mask = _mm_movemask_ps(_mm_castsi128_ps(_mm_cmpgt_epi32(m_lo, v)))
            | (_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpgt_epi32(m_hi, v))) << 4);
        const int k = __builtin_ctz(unsigned(mask));
        const __m128i f = _mm_set1_epi32(m_farthest);
        const int wasFarthest = (_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(m_lo, f)))
                                 | (_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(m_hi, f))) << 4))
            & (1 << k);
        const __m128i lane = _mm_set1_epi32(k);
        const __m128i selLo = _mm_cmpeq_epi32(lane, _mm_setr_epi32(0, 1, 2, 3));
        const __m128i selHi = _mm_cmpeq_epi32(lane, _mm_setr_epi32(4, 5, 6, 7));
        const __m128i vi = _mm_set1_epi32(index);
        m_lo = _mm_or_si128(_mm_andnot_si128(selLo, m_lo), _mm_and_si128(selLo, v));
        m_hi = _mm_or_si128(_mm_andnot_si128(selHi, m_hi), _mm_and_si128(selHi, v));
        m_ilo = _mm_or_si128(_mm_andnot_si128(selLo, m_ilo), _mm_and_si128(selLo, vi));
        m_ihi = _mm_or_si128(_mm_andnot_si128(selHi, m_ihi), _mm_and_si128(selHi, vi));
        // Only a replaced farthest slot can lower the bound.
        if (wasFarthest)
            updateFarthest();
    }
    void get(int* dist, int* index) const
    {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dist), m_lo);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dist + 4), m_hi);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(index), m_ilo);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(index + 4), m_ihi);
    }

private:
    void updateFarthest()
    {
        int d[8];
        _mm_storeu_si128(reinterpret_cast<__m128i*>(d), m_lo);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 4), m_hi);
        m_farthest = *std::max_element(d, d + 8);
    }
    __m128i m_lo, m_hi, m_ilo, m_ihi;
    int m_farthest = 0;
};
#else
class SlotSet
{
public:
    void set(const int* dist, const int* index)
    {
        std::copy(dist, dist + 8, m_dist);
        std::copy(index, index + 8, m_index);
        m_farthest = *std::max_element(m_dist, m_dist + 8);
    }
    int farthest() const { return m_farthest; }
    void offer(int d, int index)
    {
        int k = 0;
        while (m_dist[k] <= d)
            ++k;
        const bool wasFarthest = m_dist[k] == m_farthest;
        m_dist[k] = d;
        m_index[k] = index;
        if (wasFarthest)
            m_farthest = *std::max_element(m_dist, m_dist + 8);
    }
    void get(int* dist, int* index) const
    {
        std::copy(m_dist, m_dist + 8, dist);
        std::copy(m_index, m_index + 8, index);
    }

private:
    int m_dist[8];
    int m_index[8];
    int m_farthest = 0;
};
#endif

// The sample slots of the nearest-sample rule: the first 8 samples fill them, and each later sample
// replaces the first slot (in slot order) that is strictly farther than itself. Slot distances
// only ever shrink, so a sample at least as far as the farthest slot at its turn changes
// nothing; rows (and columns within a row) that far are skipped. The result is the slots that
// visiting every sample in list order gives.
int nearestSamples(const Samples& s, int x, int y, int H, Slot* chosen)
{
    const int n = int(s.size());
    const int filled = std::min(8, n);
    int dist[8], index[8];
    for (int k = 0; k < filled; ++k) {
        const int dx = s.x[size_t(k)] - x, dy = s.y[size_t(k)] - y;
        dist[k] = dx * dx + dy * dy;
        index[k] = k;
    }
    if (n > 8) {
        SlotSet slots8;
        slots8.set(dist, index);
        const int* sx = s.x.data();
        // Rows above y whose distance alone reaches the farthest slot cannot contribute.
        int r = s.y[8];
        if (r < y)
            r = std::max(r, y - int(std::sqrt(double(slots8.farthest()))));
        for (; r < H; ++r) {
            const int dy2 = (r - y) * (r - y);
            if (dy2 >= slots8.farthest()) {
                if (r > y)
                    break;
                // Still out of reach above the pixel: go straight to the first row within it.
                r = std::max(r, y - int(std::sqrt(double(slots8.farthest())))) - 1;
                continue;
            }
            int begin = std::max(s.rowStart[size_t(r)], 8);
            int end = s.rowStart[size_t(r) + 1];
            if (begin >= end)
                continue;
            if (end - begin > 16) {
                // A long row: columns with dx^2 >= farthest - dy2 cannot contribute either.
                const int maxDx = int(std::sqrt(double(slots8.farthest() - dy2 - 1)));
                begin = int(std::lower_bound(sx + begin, sx + end, x - maxDx) - sx);
                end = int(std::upper_bound(sx + begin, sx + end, x + maxDx) - sx);
            }
            for (int k = begin; k < end; ++k) {
                const int d = (sx[k] - x) * (sx[k] - x) + dy2;
                if (d < slots8.farthest())
                    slots8.offer(d, k);
            }
        }
        slots8.get(dist, index);
    }
    for (int k = 0; k < filled; ++k) {
        chosen[k].colour = s.colour[size_t(index[k])];
        chosen[k].distance = float(dist[k]);
    }
    return filled;
}

// A Gaussian weight exp(-d^2 / m^2) where m is the least distance on that side. When m is 0
// the ratio is 0/0 for the samples at distance 0: the limit is taken, 1 for those and 0 for
// the others, so an exact colour match dominates as it should.
inline float sideWeight(float d, float m2)
{
    if (m2 == 0.0f)
        return d == 0.0f ? 1.0f : 0.0f;
    return std::exp(-(d * d) / m2);
}

int estimateAlpha(QRgb c, const Slot* fg, int nf, Slot* bg, int nb)
{
    const float* u = unit().v;
    const float cr = u[qRed(c)], cg = u[qGreen(c)], cb = u[qBlue(c)];
    auto colourDistance = [&](Slot& s) {
        const float dr = cr - u[qRed(s.colour)], dg = cg - u[qGreen(s.colour)], db = cb - u[qBlue(s.colour)];
        s.distance = std::sqrt(dr * dr + dg * dg + db * db);
    };
    Slot f[8];
    for (int i = 0; i < nf; ++i) {
        f[i] = fg[i];
        colourDistance(f[i]);
    }
    for (int j = 0; j < nb; ++j)
        colourDistance(bg[j]);
    float mF = 10000000000.0f, mB = 10000000000.0f;
    for (int i = 0; i < nf; ++i)
        mF = std::min(mF, f[i].distance);
    for (int j = 0; j < nb; ++j)
        mB = std::min(mB, bg[j].distance);
    const float mF2 = mF * mF, mB2 = mB * mB;

    // The Gaussian factors depend on one side only: once per slot, not per pair.
    float wb[8];
    for (int j = 0; j < nb; ++j)
        wb[j] = sideWeight(bg[j].distance, mB2);
    float pairAlpha[3], pairCost[3];
    int k = 0;
    for (int i = 0; i < nf; ++i) {
        const float fd = f[i].distance;
        const float wf = sideWeight(fd, mF2);
        const float Fr = u[qRed(f[i].colour)], Fg = u[qGreen(f[i].colour)], Fb = u[qBlue(f[i].colour)];
        for (int j = 0; j < nb; ++j) {
            const float bd = bg[j].distance;
            float s = fd + bd;
            if (s < 0.000001f)
                s = 0.000001f;
            const float a = bd / s;
            const float Br = u[qRed(bg[j].colour)], Bg = u[qGreen(bg[j].colour)], Bb = u[qBlue(bg[j].colour)];
            const float er = cr - (a * Fr + (1 - a) * Br);
            const float eg = cg - (a * Fg + (1 - a) * Bg);
            const float eb = cb - (a * Fb + (1 - a) * Bb);
            const float cost = wf * wb[j] * (er * er + eg * eg + eb * eb);
            if (k < 3) {
                pairAlpha[k] = a;
                pairCost[k] = cost;
                ++k;
                continue;
            }
            for (int q = 0; q < 3; ++q) {
                if (pairCost[q] > cost) {
                    pairAlpha[q] = a;
                    pairCost[q] = cost;
                    break;
                }
            }
        }
    }
    if (k == 0)
        return 0;
    float sum = 0;
    for (int q = 0; q < k; ++q)
        sum += pairAlpha[q];
    const int v = int(sum * 255.0 / k);
    return v < 0 ? 0 : v > 255 ? 255 : v;
}

} // namespace

int alphaFromSamples(QRgb colour, const QRgb* foreground, int nf, const QRgb* background, int nb)
{
    if (nf <= 0 || nb <= 0)
        return 0;
    Slot f[8], b[8];
    nf = std::min(nf, 8);
    nb = std::min(nb, 8);
    for (int i = 0; i < nf; ++i)
        f[i].colour = foreground[i];
    for (int j = 0; j < nb; ++j)
        b[j].colour = background[j];
    return estimateAlpha(colour, f, nf, b, nb);
}

void matte(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel)
{
    if (seg.sourceImage.isNull())
        return;
    const QString text = tr("Alpha Extracting ..");
    const int W = seg.sourceImage.width(), H = seg.sourceImage.height();
    report.setPainting(false);
    report.progress(text, 0);

    // Trimap: foreground marks seed the foreground, the green band is unknown, blue is background.
    QImage& alpha = seg.alphaImage;
    alpha.fill(0u);
    std::deque<int> queue;
    for (int y = 0; y < H; ++y) {
        const QRgb* m = row(seg.markImage, y);
        QRgb* a = row(alpha, y);
        for (int x = 0; x < W; ++x) {
            if (redByte(m[x])) {
                a[x] = trimapForeground;
                queue.push_back(y * W + x);
            } else if (greenByte(m[x])) {
                a[x] = trimapUnknown;
            } else if (blueByte(m[x])) {
                a[x] = trimapBackground;
            }
        }
    }
    report.progress(text, 10);
    if (cancel)
        return;

    auto word = [&](int i) -> QRgb& { return row(alpha, i / W)[i % W]; };
    while (!queue.empty()) {
        const int i = queue.front();
        queue.pop_front();
        const int x = i % W, y = i / W;
        auto grow = [&](int n) {
            if (word(n) == 0u) {
                word(n) = trimapForeground;
                queue.push_back(n);
            }
        };
        if (x > 0)
            grow(i - 1);
        if (x < W - 1)
            grow(i + 1);
        if (y > 0)
            grow(i - W);
        if (y < H - 1)
            grow(i + W);
    }
    report.progress(text, 20);

    std::vector<int> unknown;
    for (int y = 0; y < H; ++y) {
        QRgb* a = row(alpha, y);
        for (int x = 0; x < W; ++x) {
            if (a[x] == 0u)
                a[x] = trimapBackground;
            else if (a[x] == trimapUnknown)
                unknown.push_back(y * W + x);
        }
    }
    report.progress(text, 30);
    if (cancel)
        return;

    // Shrinking: an unknown pixel takes the label of the first known pixel of (nearly) its colour
    // on a sparse grid around it. Only unknown pixels act in a pass, so walking their list in
    // row order is the full pass; assignments count at once for the pixels after them. A pixel
    // can only find a match after one of its grid candidates was assigned, so an assignment
    // marks the unknown pixels that look at it, and a pass visits only those (still in row
    // order); a pass that assigns nothing leaves nothing to look at again.
    const float* u = unit().v;
    std::vector<int> positionOf(size_t(W) * size_t(H), -1); // unknown pixel -> index in `unknown`
    for (size_t n = 0; n < unknown.size(); ++n)
        positionOf[size_t(unknown[n])] = int(n);
    std::vector<char> dirty(unknown.size(), 1);
    const QImage& trimapView = alpha;
    for (bool changed = true; changed;) {
        changed = false;
        for (size_t n = 0; n < unknown.size(); ++n) {
            if (!dirty[n])
                continue;
            dirty[n] = 0;
            const int i = unknown[n];
            const int x = i % W, y = i / W;
            const QRgb c = row(seg.sourceImage, y)[x];
            const float cr = u[qRed(c)], cg = u[qGreen(c)], cb = u[qBlue(c)];
            bool assigned = false;
            for (int j = -4; j <= 4 && !assigned; ++j) {
                const int yy = y + 4 * j;
                if (yy < 0 || yy >= H)
                    continue;
                const QRgb* arow = row(trimapView, yy);
                const QRgb* srow = row(seg.sourceImage, yy);
                for (int k = -4; k <= 4; ++k) {
                    const int xx = x + 4 * k;
                    if ((j == 0 && k == 0) || xx < 0 || xx >= W || arow[xx] == trimapUnknown)
                        continue;
                    const QRgb d = srow[xx];
                    const float dr = cr - u[qRed(d)], dg = cg - u[qGreen(d)], db = cb - u[qBlue(d)];
                    if (dr * dr + dg * dg + db * db < 0.0001f) {
                        row(alpha, y)[x] = arow[xx];
                        assigned = true;
                        break;
                    }
                }
            }
            if (!assigned)
                continue;
            changed = true;
            positionOf[size_t(i)] = -1;
            // The grid is symmetric: the pixels that have this one as a candidate are its own
            // candidates.
            for (int j = -4; j <= 4; ++j) {
                const int yy = y + 4 * j;
                if (yy < 0 || yy >= H)
                    continue;
                for (int k = -4; k <= 4; ++k) {
                    const int xx = x + 4 * k;
                    if (xx < 0 || xx >= W)
                        continue;
                    const int at = positionOf[size_t(yy) * size_t(W) + size_t(xx)];
                    if (at >= 0)
                        dirty[size_t(at)] = 1;
                }
            }
        }
        if (cancel)
            return;
    }
    unknown.erase(std::remove_if(unknown.begin(), unknown.end(),
                                 [&](int i) { return row(trimapView, i / W)[i % W] != trimapUnknown; }),
                  unknown.end());
    report.progress(text, 40);

    Samples fgSamples, bgSamples;
    const QImage& trimap = alpha;
    for (int y = 0; y < H; ++y) {
        const QRgb* a = row(trimap, y);
        const QRgb* up = y > 0 ? row(trimap, y - 1) : nullptr;
        const QRgb* down = y < H - 1 ? row(trimap, y + 1) : nullptr;
        const QRgb* s = row(seg.sourceImage, y);
        for (int x = 0; x < W; ++x) {
            if (a[x] != trimapForeground && a[x] != trimapBackground)
                continue;
            const bool touches = (x > 0 && a[x - 1] == trimapUnknown) || (x < W - 1 && a[x + 1] == trimapUnknown)
                || (up && up[x] == trimapUnknown) || (down && down[x] == trimapUnknown);
            if (!touches)
                continue;
            Samples& side = a[x] == trimapBackground ? bgSamples : fgSamples;
            side.colour.push_back(s[x]);
            side.x.push_back(x);
            side.y.push_back(y);
        }
    }
    fgSamples.index(H);
    bgSamples.index(H);
    report.progress(text, 50);
    if (cancel)
        return;

    // Each unknown pixel depends on the sample lists alone: they are estimated in parallel.
    // The cost per pixel varies widely (a pixel low in the band searches from its top), so work
    // is handed out in small chunks.
    std::vector<int> values(unknown.size());
    parallelItems(int(unknown.size()), 64, [&](int n) {
        if (cancel.load(std::memory_order_relaxed))
            return;
        Slot fg[8], bg[8];
        const int i = unknown[size_t(n)];
        const int x = i % W, y = i / W;
        const int nf = nearestSamples(fgSamples, x, y, H, fg);
        const int nb = nearestSamples(bgSamples, x, y, H, bg);
        values[size_t(n)] = nf && nb ? estimateAlpha(row(seg.sourceImage, y)[x], fg, nf, bg, nb) : 0;
    });
    if (cancel)
        return;
    for (size_t n = 0; n < unknown.size(); ++n)
        word(unknown[n]) = 0xFF000000u + QRgb(values[n]) * 0x010101u;
    report.progress(text, 60);

    for (int y = 0; y < H; ++y) {
        const QRgb* s = row(seg.sourceImage, y);
        const QRgb* a = row(alpha, y);
        QRgb* res = row(seg.resultImage, y);
        for (int x = 0; x < W; ++x)
            res[x] = (s[x] & 0x00FFFFFFu) + ((a[x] & 0xFFu) << 24);
    }
    report.progress(text, 70);

    std::vector<float> A(size_t(W) * size_t(H));
    for (int y = 0; y < H; ++y) {
        const QRgb* a = row(alpha, y);
        for (int x = 0; x < W; ++x)
            A[size_t(y) * size_t(W) + size_t(x)] = float((a[x] & 0xFFu) / 255.0);
    }
    const std::vector<double> intensity = intensities(seg.sourceImage);
    if (!smoothBorder(A, intensity, seg.markImage, 8, cancel))
        return;
    report.progress(text, 80);

    for (int y = 0; y < H; ++y) {
        const QRgb* s = row(seg.sourceImage, y);
        QRgb* res = row(seg.resultImage, y);
        QRgb* al = row(alpha, y);
        for (int x = 0; x < W; ++x) {
            const int a8 = alphaByte(A[size_t(y) * size_t(W) + size_t(x)]);
            res[x] = (s[x] & 0x00FFFFFFu) + (QRgb(a8) << 24);
            al[x] = 0xFF000000u + QRgb(a8) * 0x010101u;
        }
    }
    report.checkViewAlpha();
    report.checkViewMatte();
    report.updateImageBox(QRect(0, 0, W, H));
    report.progress(tr("Alpha Extract done .."), 0);
    report.setPainting(true);
}

} // namespace VexaQuickSelect
