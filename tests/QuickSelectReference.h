#pragma once

// A plain, slow reading of the quick select steps, written independently of the library for
// the tests to compare with: pixel accessors, full scans, one thread, every iteration.
#include "VexaSegmentation.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <deque>
#include <numeric>
#include <random>
#include <vector>

namespace Reference {

inline int d2(const QColor& a, const QColor& b)
{
    const int r = a.red() - b.red(), g = a.green() - b.green(), bl = a.blue() - b.blue();
    return r * r + g * g + bl * bl;
}

// Pixel i of an image, counted row by row.
inline QColor at(const QImage& img, int i) { return img.pixelColor(i % img.width(), i / img.width()); }

// Left, right, up, down of pixel i; -1 outside the image.
inline std::array<int, 4> neighbours(int i, int W, int H)
{
    const int x = i % W, y = i / W;
    return {x > 0 ? i - 1 : -1, x < W - 1 ? i + 1 : -1, y > 0 ? i - W : -1, y < H - 1 ? i + W : -1};
}

inline int watershed(const QImage& img, std::vector<int>& label)
{
    const int W = img.width(), H = img.height();
    label.assign(size_t(W) * size_t(H), -1);
    std::vector<int> g(label.size());
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            g[size_t(y * W + x)] = d2(img.pixelColor(std::max(x - 1, 0), y), img.pixelColor(std::min(x + 1, W - 1), y))
                + d2(img.pixelColor(x, std::max(y - 1, 0)), img.pixelColor(x, std::min(y + 1, H - 1)));
    int counter = 0;
    for (int p = 0; p < W * H; ++p) {
        if (label[size_t(p)] != -1)
            continue;
        // Descend to a pixel with no lower unlabelled neighbour (the first lower one in neighbour
        // order each step); it founds a region, flooded over neighbours not lower.
        int cur = p;
        for (int next = p; next >= 0;) {
            cur = next;
            next = -1;
            for (int n : neighbours(cur, W, H))
                if (n >= 0 && next < 0 && label[size_t(n)] == -1 && g[size_t(n)] < g[size_t(cur)])
                    next = n;
        }
        label[size_t(cur)] = counter++;
        for (std::deque<int> q{cur}; !q.empty(); q.pop_front())
            for (int n : neighbours(q.front(), W, H))
                if (n >= 0 && label[size_t(n)] == -1 && g[size_t(n)] >= g[size_t(q.front())]) {
                    label[size_t(n)] = label[size_t(q.front())];
                    q.push_back(n);
                }
    }
    return counter;
}

// exp(-d^2) * 10000 truncated, d^2 over the channels as fractions channel / 255 in double.
inline int edgeWeight(const QColor& a, const QColor& b)
{
    const double dr = b.red() / 255.0 - a.red() / 255.0, dg = b.green() / 255.0 - a.green() / 255.0,
                 db = b.blue() / 255.0 - a.blue() / 255.0;
    return int(std::exp(-(dr * dr + dg * dg + db * db)) * 10000.0);
}

inline void init(VexaSegmentation& s)
{
    const int W = s.sourceImage.width(), H = s.sourceImage.height();
    const int N = watershed(s.sourceImage, s.regionMap);
    const std::vector<int>& map = s.regionMap;
    s.terminalWeights.assign(size_t(N), 0);
    s.regionSizes.assign(size_t(N), 0);
    // Neighbouring regions and how many pixel pairs they share, each region's list in the order
    // its neighbours are met (left, then up, pixel by pixel).
    std::vector<std::vector<std::pair<int, int>>> adj(static_cast<size_t>(N));
    auto rec = [&](int a, int b) {
        auto& list = adj[size_t(std::min(a, b))];
        auto e = std::find_if(list.begin(), list.end(), [&](const auto& e) { return e.first == std::max(a, b); });
        e == list.end() ? list.push_back({std::max(a, b), 1}) : void(e->second++);
    };
    std::vector<std::array<int, 3>> sum(static_cast<size_t>(N), {0, 0, 0});
    for (int i = 0; i < W * H; ++i) {
        const QColor c = at(s.sourceImage, i);
        const int a = map[size_t(i)];
        sum[size_t(a)] = {sum[size_t(a)][0] + c.red(), sum[size_t(a)][1] + c.green(), sum[size_t(a)][2] + c.blue()};
        s.regionSizes[size_t(a)]++;
        if (i % W > 0 && map[size_t(i - 1)] != a)
            rec(a, map[size_t(i - 1)]);
        if (i >= W && map[size_t(i - W)] != a)
            rec(a, map[size_t(i - W)]);
    }
    s.regionColors.clear();
    for (int r = 0; r < N; ++r) {
        const int n = s.regionSizes[size_t(r)];
        s.regionColors.push_back(QColor(sum[size_t(r)][0] / n, sum[size_t(r)][1] / n, sum[size_t(r)][2] / n, 255));
    }
    s.graph.reset();
    if (N == 0)
        return;
    s.graph = std::make_unique<VexaSegmentation::FlowGraph>(N, 6 * N, nullptr);
    s.graph->add_node(N);
    for (int i = 0; i < N; ++i)
        for (auto [j, count] : adj[size_t(i)]) {
            const int w = edgeWeight(s.regionColors[size_t(i)], s.regionColors[size_t(j)]);
            s.graph->add_edge(i, j, count * w, count * w);
        }
}

inline double intensityAt(const QImage& src, int x, int y)
{
    const QColor c = src.pixelColor(x, y);
    return 0.3 * c.red() + 0.59 * c.green() + 0.11 * c.blue();
}

inline float patch(const QImage& src, const std::vector<float>& in, int x, int y)
{
    const int W = src.width(), H = src.height();
    std::vector<double> I{intensityAt(src, x, y)}, A{in[size_t(y * W + x)]};
    for (int k = 0; k < 9; ++k) {
        const int xx = x - 1 + k % 3, yy = y - 1 + k / 3;
        if (yy >= 0 && yy < H && xx >= 0 && xx < W && k != 4) {
            I.push_back(intensityAt(src, xx, yy));
            A.push_back(in[size_t(yy * W + xx)]);
        }
    }
    const int n = int(I.size());
    const double mu = std::accumulate(I.begin(), I.end(), 0.0) / n;
    const double var = std::accumulate(I.begin(), I.end(), 0.0, [&](double s, double v) { return s + (v - mu) * (v - mu); }) / n;
    double num = 0, den = 0;
    for (int q = 1; q < n; ++q) {
        const double w = ((I[0] - mu) * (I[q] - mu) / (var + 0.000001 / n) + 1.0) / n;
        num += w * A[size_t(q)];
        den += w;
    }
    return float(num / den);
}

// Whether a 4-neighbour of pixel i inside the image holds another value.
inline bool differs(const std::vector<float>& A, int W, int H, int i)
{
    for (int n : neighbours(i, W, H))
        if (n >= 0 && A[size_t(n)] != A[size_t(i)])
            return true;
    return false;
}

inline void smooth(std::vector<float>& A, const QImage& src, const QImage& marks, int passes)
{
    const int W = src.width(), H = src.height();
    std::vector<float> B(A.size(), 0.0f);
    for (int p = 0; p < passes; ++p) {
        std::vector<float>& in = p % 2 ? B : A;
        std::vector<float>& out = p % 2 ? A : B;
        for (int i = 0; i < W * H; ++i) {
            const QRgb m = marks.pixel(i % W, i / W);
            out[size_t(i)] = qRed(m) ? 1.0f : qBlue(m) ? 0.0f
                : differs(in, W, H, i) ? patch(src, in, i % W, i / W) : in[size_t(i)];
        }
    }
}

// The matte as bytes: alpha, and the source with it as its alpha channel.
inline void writeAlpha(VexaSegmentation& s, const std::vector<float>& A)
{
    const int W = s.sourceImage.width(), H = s.sourceImage.height();
    for (int i = 0; i < W * H; ++i) {
        const int x = i % W, y = i / W;
        const uint a8 = uint(std::clamp(A[size_t(i)] * 255.0f, 0.0f, 255.0f));
        s.resultImage.setPixel(x, y, (s.sourceImage.pixel(x, y) & 0x00FFFFFFu) + (a8 << 24));
        s.alphaImage.setPixel(x, y, 0xFF000000u + a8 * 0x010101u);
    }
}

// Returns the hint, or an empty string.
inline QString mark(VexaSegmentation& s)
{
    const int W = s.sourceImage.width(), H = s.sourceImage.height();
    const int N = int(s.regionColors.size());
    std::vector<bool> isF(size_t(N), false), isB(size_t(N), false); // a region with a red or a blue mark
    for (int i = 0; i < W * H; ++i) {
        const QRgb m = s.markImage.pixel(i % W, i / W);
        const size_t r = size_t(s.regionMap[size_t(i)]);
        isF[r] = isF[r] || qRed(m);
        isB[r] = isB[r] || qBlue(m);
    }
    std::vector<QColor> F, Bk;
    for (int r = 0; r < N; ++r) {
        if (isF[size_t(r)])
            F.push_back(s.regionColors[size_t(r)]);
        if (isB[size_t(r)])
            Bk.push_back(s.regionColors[size_t(r)]);
    }
    if (F.empty())
        return QStringLiteral("Please mark foreground objects.");
    if (Bk.empty())
        return QStringLiteral("Please mark background regions.");
    // K colour centres per side, drawn from the marked colours, then 4 K averaging rounds.
    const int K = std::min(64, std::max(int(F.size()), int(Bk.size())));
    std::vector<QColor> cf(static_cast<size_t>(K)), cb(static_cast<size_t>(K));
    std::mt19937 rnd(0);
    for (int k = 0; k < K; ++k) {
        cf[size_t(k)] = F[rnd() % F.size()];
        cb[size_t(k)] = Bk[rnd() % Bk.size()];
    }
    // The nearest centre, the first of equals, and its squared distance.
    auto nearest = [&](const std::vector<QColor>& centres, const QColor& c) {
        std::pair<int, int> best{0, INT_MAX};
        for (int k = 0; k < K; ++k)
            if (d2(c, centres[size_t(k)]) < best.second)
                best = {k, d2(c, centres[size_t(k)])};
        return best;
    };
    // One round: each centre becomes the truncated mean of the colours nearest to it (a sum over
    // fewer than two divided by 1).
    auto average = [&](std::vector<QColor>& centres, const std::vector<QColor>& colors) {
        std::vector<std::array<int, 4>> acc(static_cast<size_t>(K), {0, 0, 0, 0}); // count, r, g, b
        for (const QColor& c : colors) {
            auto& a = acc[size_t(nearest(centres, c).first)];
            a = {a[0] + 1, a[1] + c.red(), a[2] + c.green(), a[3] + c.blue()};
        }
        for (int k = 0; k < K; ++k) {
            const auto& a = acc[size_t(k)];
            const int n = a[0] >= 2 ? a[0] : 1;
            centres[size_t(k)] = QColor(a[1] / n, a[2] / n, a[3] / n);
        }
    };
    for (int it = 0; it < 4 * K; ++it) {
        average(cf, F);
        average(cb, Bk);
    }
    auto setW = [&](int r, int v) {
        s.graph->add_tweights(r, v, s.terminalWeights[size_t(r)]);
        s.terminalWeights[size_t(r)] = v;
    };
    for (int r = 0; r < N; ++r) {
        const int dF = nearest(cf, s.regionColors[size_t(r)]).second, dB = nearest(cb, s.regionColors[size_t(r)]).second;
        const double D = dF + dB > 0 ? double(dF + dB) : 1.0;
        setW(r, int((dB - dF) * (double(s.sensitivity * 1000) * std::sqrt(double(s.regionSizes[size_t(r)]))) / D));
    }
    for (int r = 0; r < N; ++r) {
        if (isF[size_t(r)])
            setW(r, 100000000);
        if (isB[size_t(r)])
            setW(r, -100000000);
    }
    s.graph->maxflow(false, nullptr);
    std::vector<float> A(size_t(W * H));
    for (int i = 0; i < W * H; ++i) {
        const bool src = s.graph->what_segment(s.regionMap[size_t(i)]) == VexaSegmentation::FlowGraph::SOURCE;
        s.alphaImage.setPixel(i % W, i / W, src ? 0xFFFFFFFFu : 0xFF000000u);
        A[size_t(i)] = float((s.alphaImage.pixel(i % W, i / W) & 0xFF) / 255.0);
    }
    smooth(A, s.sourceImage, s.markImage, 4);
    writeAlpha(s, A);
    for (int i = 0; i < W * H; ++i)
        if (differs(A, W, H, i))
            s.markImage.setPixel(i % W, i / W, 0x8000FF00u);
        else if (qGreen(s.markImage.pixel(i % W, i / W)))
            s.markImage.setPixel(i % W, i / W, 0);
    return QString();
}

inline void matte(VexaSegmentation& s)
{
    const int W = s.sourceImage.width(), H = s.sourceImage.height();
    const QRgb FG = 0xFFFFFFFFu, BG = 0xFF000000u, UN = 0xFF808080u;
    QImage& a = s.alphaImage;
    auto get = [&](int i) { return a.pixel(i % W, i / W); };
    auto put = [&](int i, QRgb v) { a.setPixel(i % W, i / W, v); };
    // The trimap: marks as they are, then everything the object's marks reach without crossing
    // another mark is object, the rest background.
    std::deque<int> q;
    for (int i = 0; i < W * H; ++i) {
        const QRgb m = s.markImage.pixel(i % W, i / W);
        put(i, qRed(m) ? FG : qGreen(m) ? UN : qBlue(m) ? BG : 0u);
        if (qRed(m))
            q.push_back(i);
    }
    for (; !q.empty(); q.pop_front())
        for (int n : neighbours(q.front(), W, H))
            if (n >= 0 && get(n) == 0u) {
                put(n, FG);
                q.push_back(n);
            }
    for (int i = 0; i < W * H; ++i)
        if (get(i) == 0u)
            put(i, BG);
    auto f = [](int c) { return float(c) / 255.0f; };
    auto cdist2 = [&](const QColor& C, const QColor& D) {
        const float dr = f(C.red()) - f(D.red()), dg = f(C.green()) - f(D.green()), db = f(C.blue()) - f(D.blue());
        return dr * dr + dg * dg + db * db;
    };
    // Shrinking: an unknown pixel takes the label of the first known pixel in steps of 4 around
    // it (row by row) of nearly its colour, until nothing changes.
    for (bool changed = true; changed;) {
        changed = false;
        for (int p = 0; p < W * H; ++p) {
            const int x = p % W, y = p / W;
            for (int k = 0; k < 81 && get(p) == UN; ++k) {
                const int xx = x + 4 * (k % 9 - 4), yy = y + 4 * (k / 9 - 4);
                if (k == 40 || xx < 0 || yy < 0 || xx >= W || yy >= H || a.pixel(xx, yy) == UN)
                    continue;
                if (cdist2(s.sourceImage.pixelColor(x, y), s.sourceImage.pixelColor(xx, yy)) < 0.0001f) {
                    put(p, a.pixel(xx, yy));
                    changed = true;
                }
            }
        }
    }
    // Samples: known pixels next to an unknown one.
    using Sample = std::pair<QColor, QPoint>;
    std::vector<Sample> fs, bs;
    for (int i = 0; i < W * H; ++i) {
        const QRgb v = get(i);
        bool edge = false;
        for (int n : neighbours(i, W, H))
            edge = edge || (n >= 0 && get(n) == UN);
        if ((v == FG || v == BG) && edge)
            (v == BG ? bs : fs).push_back({at(s.sourceImage, i), QPoint(i % W, i / W)});
    }
    QImage est = a.copy();
    for (int i = 0; i < W * H; ++i) {
        if (get(i) != UN)
            continue;
        const int x = i % W, y = i / W;
        // Eight samples of a list: the first eight, each later one replacing the first held one
        // that lies farther away.
        auto near8 = [&](const std::vector<Sample>& list) {
            std::vector<std::pair<QColor, float>> slot;
            for (const Sample& smp : list) {
                const float d = float((smp.second.y() - y) * (smp.second.y() - y) + (smp.second.x() - x) * (smp.second.x() - x));
                auto farther = std::find_if(slot.begin(), slot.end(), [&](const auto& sl) { return sl.second > d; });
                if (slot.size() < 8)
                    slot.push_back({smp.first, d});
                else if (farther != slot.end())
                    *farther = {smp.first, d};
            }
            return slot;
        };
        auto fsl = near8(fs), bsl = near8(bs);
        const QColor C = at(s.sourceImage, i);
        // Now the colour distance of each sample, and the least per side.
        float mF = 10000000000.0f, mB = 10000000000.0f;
        for (auto& sl : fsl)
            mF = std::min(mF, sl.second = std::sqrt(cdist2(C, sl.first)));
        for (auto& sl : bsl)
            mB = std::min(mB, sl.second = std::sqrt(cdist2(C, sl.first)));
        const float mF2 = mF * mF, mB2 = mB * mB;
        auto weight = [](float d, float m2) { return m2 == 0.0f ? (d == 0.0f ? 1.0f : 0.0f) : std::exp(-(d * d) / m2); };
        // Every pair's alpha and cost; three are held, a cheaper one replacing the first dearer.
        std::vector<std::pair<float, float>> pairs;
        for (auto& fi : fsl)
            for (auto& bj : bsl) {
                const float al = bj.second / std::max(fi.second + bj.second, 0.000001f);
                auto e = [&](int c, int cf, int cb) { return f(c) - (al * f(cf) + (1 - al) * f(cb)); };
                const float er = e(C.red(), fi.first.red(), bj.first.red());
                const float eg = e(C.green(), fi.first.green(), bj.first.green());
                const float eb = e(C.blue(), fi.first.blue(), bj.first.blue());
                const float cost = weight(fi.second, mF2) * weight(bj.second, mB2) * (er * er + eg * eg + eb * eb);
                auto dearer = std::find_if(pairs.begin(), pairs.end(), [&](const auto& p) { return p.second > cost; });
                if (pairs.size() < 3)
                    pairs.push_back({al, cost});
                else if (dearer != pairs.end())
                    *dearer = {al, cost};
            }
        float sum = 0;
        for (auto& p : pairs)
            sum += p.first;
        const int v = pairs.empty() ? 0 : std::clamp(int(sum * 255.0 / int(pairs.size())), 0, 255);
        est.setPixel(x, y, 0xFF000000u + uint(v) * 0x010101u);
    }
    a = est;
    std::vector<float> A(size_t(W * H));
    for (int i = 0; i < W * H; ++i)
        A[size_t(i)] = float((get(i) & 0xFF) / 255.0);
    smooth(A, s.sourceImage, s.markImage, 8);
    writeAlpha(s, A);
}

} // namespace Reference
