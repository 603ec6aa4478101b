// Max-flow benchmark: segmentation graphs built from a photo, solved by this engine and, in the
// same process on the same graph, by Boost Graph's push-relabel when Boost is available.
// Prints one line per figure: construction and solve medians, the ratio to Boost, bytes per
// node and per edge, and a tree-reusing solve after changing 1 % of the terminal weights.
#include "graph.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

#ifdef VEXA_HAVE_BOOST
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/push_relabel_max_flow.hpp>
#endif

namespace {

using G = Graph<int, int, int>;

// A segmentation problem in plain arrays: terminal capacities per node and one edge per
// neighbour pair (capacity the same both ways).
struct Problem {
    QString name;
    int nodes = 0;
    std::vector<int> source, sink;
    std::vector<int> from, to, cap;
};

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double ms(const QElapsedTimer& t) { return double(t.nsecsElapsed()) / 1e6; }

// Colour models trained on an ellipse in the middle (object) and a frame (background).
Problem gridProblem(const QImage& photo, int width, int height, const QString& name)
{
    const QImage img = photo.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGB32);
    Problem p;
    p.name = name;
    p.nodes = width * height;
    auto rgb = [&](int x, int y) { return reinterpret_cast<const QRgb*>(img.constScanLine(y))[x]; };
    auto bin = [](QRgb c) { return (qRed(c) >> 5) * 64 + (qGreen(c) >> 5) * 8 + (qBlue(c) >> 5); };
    auto inObject = [&](int x, int y) {
        const double dx = (x - width / 2.0) / (width * 0.15), dy = (y - height / 2.0) / (height * 0.15);
        return dx * dx + dy * dy <= 1.0;
    };
    const int frame = std::max(2, width / 25);
    auto inFrame = [&](int x, int y) { return x < frame || y < frame || x >= width - frame || y >= height - frame; };

    std::vector<double> fg(512, 1.0), bg(512, 1.0);
    double nf = 512, nb = 512;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            if (inObject(x, y)) {
                fg[size_t(bin(rgb(x, y)))] += 1;
                nf += 1;
            } else if (inFrame(x, y)) {
                bg[size_t(bin(rgb(x, y)))] += 1;
                nb += 1;
            }
        }
    // Every pixel's terminal capacities are its colour likelihoods under the two models; the
    // seed regions only train the models.
    p.source.resize(size_t(p.nodes));
    p.sink.resize(size_t(p.nodes));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const size_t i = size_t(y) * size_t(width) + size_t(x);
            const int b = bin(rgb(x, y));
            p.source[i] = int(std::lround(10.0 * -std::log(bg[size_t(b)] / nb)));
            p.sink[i] = int(std::lround(10.0 * -std::log(fg[size_t(b)] / nf)));
        }

    // Contrast-sensitive neighbour weights, scaled by the mean squared colour difference.
    auto diff2 = [&](QRgb a, QRgb c) {
        const int dr = qRed(a) - qRed(c), dg = qGreen(a) - qGreen(c), db = qBlue(a) - qBlue(c);
        return double(dr * dr + dg * dg + db * db);
    };
    double sum = 0;
    long count = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            if (x + 1 < width) {
                sum += diff2(rgb(x, y), rgb(x + 1, y));
                ++count;
            }
            if (y + 1 < height) {
                sum += diff2(rgb(x, y), rgb(x, y + 1));
                ++count;
            }
        }
    const double beta = 1.0 / (2.0 * std::max(1.0, sum / double(count)));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int i = y * width + x;
            for (int k = 0; k < 2; ++k) {
                const int nx = x + (k == 0), ny = y + (k == 1);
                if (nx >= width || ny >= height)
                    continue;
                p.from.push_back(i);
                p.to.push_back(ny * width + nx);
                p.cap.push_back(1 + int(std::lround(50.0 * std::exp(-beta * diff2(rgb(x, y), rgb(nx, ny))))));
            }
        }
    return p;
}

// Regions the size watershed gives: 6 x 6 pixel blocks of the 1 Mpx problem with summed weights.
Problem regionProblem(const Problem& grid, int width, int height)
{
    const int s = 6, rw = (width + s - 1) / s, rh = (height + s - 1) / s;
    Problem p;
    p.name = QStringLiteral("regions %1").arg(rw * rh);
    p.nodes = rw * rh;
    p.source.assign(size_t(p.nodes), 0);
    p.sink.assign(size_t(p.nodes), 0);
    auto region = [&](int i) { return ((i / width) / s) * rw + (i % width) / s; };
    for (int i = 0; i < width * height; ++i) {
        const size_t r = size_t(region(i));
        p.source[r] = std::min(1 << 24, p.source[r] + grid.source[size_t(i)]);
        p.sink[r] = std::min(1 << 24, p.sink[r] + grid.sink[size_t(i)]);
    }
    std::vector<std::vector<std::pair<int, int>>> links(size_t(p.nodes));
    for (size_t e = 0; e < grid.from.size(); ++e) {
        int a = region(grid.from[e]), b = region(grid.to[e]);
        if (a == b)
            continue;
        if (a > b)
            std::swap(a, b);
        auto& l = links[size_t(a)];
        auto it = std::find_if(l.begin(), l.end(), [&](const std::pair<int, int>& q) { return q.first == b; });
        if (it == l.end())
            l.emplace_back(b, grid.cap[e]);
        else
            it->second += grid.cap[e];
    }
    for (int a = 0; a < p.nodes; ++a)
        for (auto [b, c] : links[size_t(a)]) {
            p.from.push_back(a);
            p.to.push_back(b);
            p.cap.push_back(c);
        }
    return p;
}

void build(G& g, const Problem& p)
{
    g.add_node(p.nodes);
    for (int i = 0; i < p.nodes; ++i)
        g.add_tweights(i, p.source[size_t(i)], p.sink[size_t(i)]);
    for (size_t e = 0; e < p.from.size(); ++e)
        g.add_edge(p.from[e], p.to[e], p.cap[e], p.cap[e]);
}

#ifdef VEXA_HAVE_BOOST
long long boostFlow(const Problem& p, double* buildMs, double* solveMs)
{
    using namespace boost;
    using Traits = adjacency_list_traits<vecS, vecS, directedS>;
    using BG = adjacency_list<vecS, vecS, directedS, no_property,
                              property<edge_capacity_t, long,
                                       property<edge_residual_capacity_t, long, property<edge_reverse_t, Traits::edge_descriptor>>>>;
    QElapsedTimer t;
    t.start();
    BG g(size_t(p.nodes) + 2);
    auto capacity = get(edge_capacity, g);
    auto reverse = get(edge_reverse, g);
    const int s = p.nodes, sink = p.nodes + 1;
    auto pair = [&](int u, int v, long c, long rc) {
        auto e = add_edge(size_t(u), size_t(v), g).first;
        auto r = add_edge(size_t(v), size_t(u), g).first;
        capacity[e] = c;
        capacity[r] = rc;
        reverse[e] = r;
        reverse[r] = e;
    };
    for (int i = 0; i < p.nodes; ++i) {
        if (p.source[size_t(i)])
            pair(s, i, p.source[size_t(i)], 0);
        if (p.sink[size_t(i)])
            pair(i, sink, p.sink[size_t(i)], 0);
    }
    // Push-relabel wants reverse edges of capacity 0: each link is two directed pairs.
    for (size_t e = 0; e < p.from.size(); ++e) {
        pair(p.from[e], p.to[e], p.cap[e], 0);
        pair(p.to[e], p.from[e], p.cap[e], 0);
    }
    *buildMs = ms(t);
    t.restart();
    const long flow = push_relabel_max_flow(g, size_t(s), size_t(sink));
    *solveMs = ms(t);
    return flow;
}
#endif

bool g_withPeer = true;

void run(const Problem& p, int repeats)
{
    std::printf("== %s: %d nodes, %zu edges\n", qPrintable(p.name), p.nodes, p.from.size());
    std::vector<double> buildTimes, solveTimes;
    long long flow = 0;
    for (int r = 0; r < repeats; ++r) {
        QElapsedTimer t;
        t.start();
        G g(p.nodes, int(p.from.size()));
        build(g, p);
        buildTimes.push_back(ms(t));
        t.restart();
        flow = g.maxflow();
        solveTimes.push_back(ms(t));
    }
    const double buildMs = median(buildTimes), solveMs = median(solveTimes);
    std::printf("%s build %.1f ms (%.1f ms per million edges)\n", qPrintable(p.name), buildMs,
                buildMs / (double(p.from.size()) / 1e6));
    std::printf("%s maxflow %.1f ms, flow %lld\n", qPrintable(p.name), solveMs, flow);
    std::printf("%s bytes per node %zu, per edge %zu\n", qPrintable(p.name), sizeof(G::node), 2 * sizeof(G::arc));

    // Tree reuse: raise the terminal weights of 1 % of the nodes, then solve again.
    std::mt19937 rng(1);
    std::uniform_int_distribution<int> pick(0, p.nodes - 1), inc(0, 40);
    std::vector<int> touched;
    for (int k = 0; k < std::max(1, p.nodes / 100); ++k)
        touched.push_back(pick(rng));
    std::vector<int> ds(touched.size()), dt(touched.size());
    for (size_t k = 0; k < touched.size(); ++k) {
        ds[k] = inc(rng);
        dt[k] = inc(rng);
    }
    G reused(p.nodes, int(p.from.size()));
    build(reused, p);
    reused.maxflow();
    for (size_t k = 0; k < touched.size(); ++k) {
        reused.add_tweights(touched[k], ds[k], dt[k]);
        reused.mark_node(touched[k]);
    }
    QElapsedTimer t;
    t.start();
    const long long reusedFlow = reused.maxflow(true);
    const double reuseMs = ms(t);
    Problem changed = p;
    for (size_t k = 0; k < touched.size(); ++k) {
        changed.source[size_t(touched[k])] += ds[k];
        changed.sink[size_t(touched[k])] += dt[k];
    }
    G fresh(p.nodes, int(p.from.size()));
    build(fresh, changed);
    t.restart();
    const long long freshFlow = fresh.maxflow();
    const double freshMs = ms(t);
    std::printf("%s reuse after 1%% change %.2f ms, fresh %.1f ms, speed-up %.1fx%s\n", qPrintable(p.name), reuseMs,
                freshMs, freshMs / std::max(reuseMs, 1e-3), reusedFlow == freshFlow ? "" : "  FLOW MISMATCH");

#ifdef VEXA_HAVE_BOOST
    if (!g_withPeer)
        return;
    double bBuild = 0, bSolve = 0;
    const long long bFlow = boostFlow(p, &bBuild, &bSolve);
    std::printf("%s boost push_relabel build %.1f ms, maxflow %.1f ms, flow %lld%s\n", qPrintable(p.name), bBuild, bSolve,
                bFlow, bFlow == flow ? "" : "  FLOW MISMATCH");
    std::printf("%s ratio boost/engine maxflow %.1fx\n", qPrintable(p.name), bSolve / solveMs);
#else
    std::printf("%s boost push_relabel skipped (Boost Graph not found at build time)\n", qPrintable(p.name));
#endif
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    // --no-peer: this engine only, for profiling.
    g_withPeer = !args.removeAll(QStringLiteral("--no-peer"));
    const QString file = !args.isEmpty() ? args[0] : QStringLiteral(VEXA_DATA_DIR "/coffee.png");
    const QImage photo(file);
    if (photo.isNull()) {
        std::fprintf(stderr, "bench-maxflow: cannot read %s\n", qPrintable(file));
        return 2;
    }
    const int repeats = args.size() > 1 ? std::max(1, args[1].toInt()) : 5;
    std::printf("photo %s, %d repeats, median times\n", qPrintable(file), repeats);
    struct Size {
        int w, h;
        const char* name;
    };
    const Size sizes[] = {{612, 408, "0.25 Mpx"}, {1224, 816, "1 Mpx"}, {1896, 1264, "2.4 Mpx"}};
    Problem oneMpx;
    for (const Size& s : sizes) {
        const Problem p = gridProblem(photo, s.w, s.h, QString::fromLatin1(s.name));
        run(p, repeats);
        if (s.w == 1224)
            oneMpx = p;
    }
    run(regionProblem(oneMpx, 1224, 816), repeats);
    return 0;
}
