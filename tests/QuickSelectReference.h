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
#include <random>
#include <vector>

namespace Reference {

inline int d2(const QColor& a, const QColor& b)
{
    return (a.red() - b.red()) * (a.red() - b.red()) + (a.green() - b.green()) * (a.green() - b.green())
        + (a.blue() - b.blue()) * (a.blue() - b.blue());
}

inline int watershed(const QImage& img, std::vector<int>& label)
{
    const int W = img.width(), H = img.height();
    label.assign(size_t(W) * size_t(H), -1);
    if (W == 0 || H == 0)
        return 0;
    std::vector<int> g(size_t(W) * size_t(H));
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            g[size_t(y * W + x)] = d2(img.pixelColor(std::max(x - 1, 0), y), img.pixelColor(std::min(x + 1, W - 1), y))
                + d2(img.pixelColor(x, std::max(y - 1, 0)), img.pixelColor(x, std::min(y + 1, H - 1)));
    // Left, right, up, down; -1 outside the image.
    auto neighbours = [&](int i) {
        const int x = i % W, y = i / W;
        return std::array<int, 4>{x > 0 ? i - 1 : -1, x < W - 1 ? i + 1 : -1, y > 0 ? i - W : -1, y < H - 1 ? i + W : -1};
    };
    int counter = 0;
    for (int p = 0; p < W * H; ++p) {
        if (label[size_t(p)] != -1)
            continue;
        std::deque<int> q{p};
        bool flood = false;
        while (!flood) {
            const int cur = q.front();
            q.pop_front();
            int next = -1;
            for (int n : neighbours(cur))
                if (n >= 0 && next < 0 && label[size_t(n)] == -1 && g[size_t(n)] < g[size_t(cur)])
                    next = n;
            if (next >= 0) {
                q.push_back(next);
            } else {
                label[size_t(cur)] = counter++;
                q.push_back(cur);
                flood = true;
            }
        }
        while (!q.empty()) {
            const int cur = q.front();
            q.pop_front();
            for (int n : neighbours(cur)) {
                if (n >= 0 && label[size_t(n)] == -1 && g[size_t(n)] >= g[size_t(cur)]) {
                    label[size_t(n)] = label[size_t(cur)];
                    q.push_back(n);
                }
            }
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
    s.terminalWeights.assign(size_t(N), 0);
    s.regionSizes.assign(size_t(N), 0);
    std::vector<int> R(static_cast<size_t>(N)), G(static_cast<size_t>(N)), B(static_cast<size_t>(N));
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const int r = s.regionMap[size_t(y * W + x)];
            const QColor c = s.sourceImage.pixelColor(x, y);
            R[size_t(r)] += c.red();
            G[size_t(r)] += c.green();
            B[size_t(r)] += c.blue();
            s.regionSizes[size_t(r)]++;
        }
    s.regionColors.assign(size_t(N), QColor());
    for (int r = 0; r < N; ++r) {
        const int n = s.regionSizes[size_t(r)];
        s.regionColors[size_t(r)] = QColor(R[size_t(r)] / n, G[size_t(r)] / n, B[size_t(r)] / n, 255);
    }
    std::vector<std::vector<std::pair<int, int>>> adj(static_cast<size_t>(N));
    auto rec = [&](int a, int b) {
        const int lo = std::min(a, b), hi = std::max(a, b);
        for (auto& e : adj[size_t(lo)])
            if (e.first == hi) {
                e.second++;
                return;
            }
        adj[size_t(lo)].push_back({hi, 1});
    };
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const int a = s.regionMap[size_t(y * W + x)];
            if (x > 0 && s.regionMap[size_t(y * W + x - 1)] != a)
                rec(a, s.regionMap[size_t(y * W + x - 1)]);
            if (y > 0 && s.regionMap[size_t((y - 1) * W + x)] != a)
                rec(a, s.regionMap[size_t((y - 1) * W + x)]);
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
    double mu = 0, var = 0;
    for (double v : I)
        mu += v;
    mu /= n;
    for (double v : I)
        var += (v - mu) * (v - mu);
    var /= n;
    double num = 0, den = 0;
    for (int q = 1; q < n; ++q) {
        const double w = ((I[0] - mu) * (I[q] - mu) / (var + 0.000001 / n) + 1.0) / n;
        num += w * A[size_t(q)];
        den += w;
    }
    return float(num / den);
}

// Whether a 4-neighbour inside the image holds another value.
inline bool differs(const std::vector<float>& A, int W, int H, int x, int y)
{
    const size_t i = size_t(y * W + x);
    return (x > 0 && A[i - 1] != A[i]) || (x < W - 1 && A[i + 1] != A[i]) || (y > 0 && A[i - size_t(W)] != A[i])
        || (y < H - 1 && A[i + size_t(W)] != A[i]);
}

inline void smooth(std::vector<float>& A, const QImage& src, const QImage& marks, int passes)
{
    const int W = src.width(), H = src.height();
    std::vector<float> B(A.size(), 0.0f);
    for (int p = 0; p < passes; ++p) {
        std::vector<float>& in = p % 2 ? B : A;
        std::vector<float>& out = p % 2 ? A : B;
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                const QRgb m = marks.pixel(x, y);
                const size_t i = size_t(y * W + x);
                if (qRed(m))
                    out[i] = 1.0f;
                else if (qBlue(m))
                    out[i] = 0.0f;
                else
                    out[i] = differs(in, W, H, x, y) ? patch(src, in, x, y) : in[i];
            }
    }
}

// The matte as bytes: alpha, and the source with it as its alpha channel.
inline void writeAlpha(VexaSegmentation& s, const std::vector<float>& A)
{
    const int W = s.sourceImage.width(), H = s.sourceImage.height();
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const uint a8 = uint(std::clamp(A[size_t(y * W + x)] * 255.0f, 0.0f, 255.0f));
            s.resultImage.setPixel(x, y, (s.sourceImage.pixel(x, y) & 0x00FFFFFFu) + (a8 << 24));
            s.alphaImage.setPixel(x, y, 0xFF000000u + a8 * 0x010101u);
        }
}

// Returns the hint, or an empty string.
inline QString mark(VexaSegmentation& s)
{
    const int W = s.sourceImage.width(), H = s.sourceImage.height();
    const int N = int(s.regionColors.size());
    std::vector<unsigned> flags(size_t(N), 0);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const QRgb m = s.markImage.pixel(x, y);
            unsigned& f = flags[size_t(s.regionMap[size_t(y * W + x)])];
            f |= (qRed(m) ? 0xFFFF0000u : 0) | (qGreen(m) ? 0xFF00FF00u : 0) | (qBlue(m) ? 0xFF0000FFu : 0);
        }
    std::vector<QColor> F, Bk;
    for (int r = 0; r < N; ++r) {
        if ((flags[size_t(r)] >> 16) & 0xFF)
            F.push_back(s.regionColors[size_t(r)]);
        if (flags[size_t(r)] & 0xFF)
            Bk.push_back(s.regionColors[size_t(r)]);
    }
    if (F.empty())
        return QStringLiteral("Please mark foreground objects.");
    if (Bk.empty())
        return QStringLiteral("Please mark background regions.");
    const int K = std::min(64, std::max(int(F.size()), int(Bk.size())));
    std::vector<QColor> cf(static_cast<size_t>(K)), cb(static_cast<size_t>(K));
    std::mt19937 rnd(0);
    for (int k = 0; k < K; ++k) {
        cf[size_t(k)] = F[rnd() % F.size()];
        cb[size_t(k)] = Bk[rnd() % Bk.size()];
    }
    auto nearest = [&](const std::vector<QColor>& centres, const QColor& c, int* dist) {
        int best = INT_MAX, idx = 0;
        for (int k = 0; k < K; ++k)
            if (d2(c, centres[size_t(k)]) < best) {
                best = d2(c, centres[size_t(k)]);
                idx = k;
            }
        if (dist)
            *dist = best;
        return idx;
    };
    auto step = [&](std::vector<QColor>& centres, const std::vector<QColor>& colors) {
        std::vector<int> cnt(size_t(K), 0), r(size_t(K), 0), g(size_t(K), 0), b(size_t(K), 0);
        for (const QColor& c : colors) {
            const size_t m = size_t(nearest(centres, c, nullptr));
            cnt[m]++;
            r[m] += c.red();
            g[m] += c.green();
            b[m] += c.blue();
        }
        return std::make_tuple(cnt, r, g, b);
    };
    for (int it = 0; it < 4 * K; ++it) {
        auto [fc, fr, fg, fb] = step(cf, F);
        auto [bc, br, bg, bb] = step(cb, Bk);
        for (int k = 0; k < K; ++k) {
            const int nf = fc[size_t(k)] >= 2 ? fc[size_t(k)] : 1, nb = bc[size_t(k)] >= 2 ? bc[size_t(k)] : 1;
            cf[size_t(k)] = QColor(fr[size_t(k)] / nf, fg[size_t(k)] / nf, fb[size_t(k)] / nf);
            cb[size_t(k)] = QColor(br[size_t(k)] / nb, bg[size_t(k)] / nb, bb[size_t(k)] / nb);
        }
    }
    auto setW = [&](int r, int v) {
        s.graph->add_tweights(r, v, s.terminalWeights[size_t(r)]);
        s.terminalWeights[size_t(r)] = v;
    };
    for (int r = 0; r < N; ++r) {
        int dF, dB;
        nearest(cf, s.regionColors[size_t(r)], &dF);
        nearest(cb, s.regionColors[size_t(r)], &dB);
        const double D = dF + dB > 0 ? double(dF + dB) : 1.0;
        setW(r, int((dB - dF) * (double(s.sensitivity * 1000) * std::sqrt(double(s.regionSizes[size_t(r)]))) / D));
    }
    for (int r = 0; r < N; ++r) {
        if ((flags[size_t(r)] >> 16) & 0xFF)
            setW(r, 100000000);
        if (flags[size_t(r)] & 0xFF)
            setW(r, -100000000);
    }
    s.graph->maxflow(false, nullptr);
    std::vector<float> A(size_t(W * H));
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const bool src = s.graph->what_segment(s.regionMap[size_t(y * W + x)]) == VexaSegmentation::FlowGraph::SOURCE;
            s.alphaImage.setPixel(x, y, src ? 0xFFFFFFFFu : 0xFF000000u);
            A[size_t(y * W + x)] = float((s.alphaImage.pixel(x, y) & 0xFF) / 255.0);
        }
    smooth(A, s.sourceImage, s.markImage, 4);
    writeAlpha(s, A);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            if (differs(A, W, H, x, y))
                s.markImage.setPixel(x, y, 0x8000FF00u);
            else if (qGreen(s.markImage.pixel(x, y)))
                s.markImage.setPixel(x, y, 0);
    return QString();
}

inline void matte(VexaSegmentation& s)
{
    const int W = s.sourceImage.width(), H = s.sourceImage.height();
    const QRgb FG = 0xFFFFFFFFu, BG = 0xFF000000u, UN = 0xFF808080u;
    QImage& a = s.alphaImage;
    a.fill(0u);
    std::deque<int> q;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const QRgb m = s.markImage.pixel(x, y);
            a.setPixel(x, y, qRed(m) ? FG : qGreen(m) ? UN : qBlue(m) ? BG : 0u);
            if (qRed(m))
                q.push_back(y * W + x);
        }
    while (!q.empty()) {
        const int i = q.front();
        q.pop_front();
        const int x = i % W, y = i / W;
        const int nx[4] = {x - 1, x + 1, x, x}, ny[4] = {y, y, y - 1, y + 1};
        for (int k = 0; k < 4; ++k)
            if (nx[k] >= 0 && nx[k] < W && ny[k] >= 0 && ny[k] < H && a.pixel(nx[k], ny[k]) == 0u) {
                a.setPixel(nx[k], ny[k], FG);
                q.push_back(ny[k] * W + nx[k]);
            }
    }
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            if (a.pixel(x, y) == 0u)
                a.setPixel(x, y, BG);
    auto f = [](int c) { return float(c) / 255.0f; };
    for (bool changed = true; changed;) {
        changed = false;
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                if (a.pixel(x, y) != UN)
                    continue;
                const QColor C = s.sourceImage.pixelColor(x, y);
                bool done = false;
                for (int j = -4; j <= 4 && !done; ++j)
                    for (int i = -4; i <= 4 && !done; ++i) {
                        const int xx = x + 4 * i, yy = y + 4 * j;
                        if ((i == 0 && j == 0) || xx < 0 || yy < 0 || xx >= W || yy >= H || a.pixel(xx, yy) == UN)
                            continue;
                        const QColor D = s.sourceImage.pixelColor(xx, yy);
                        const float dr = f(C.red()) - f(D.red()), dg = f(C.green()) - f(D.green()), db = f(C.blue()) - f(D.blue());
                        if (dr * dr + dg * dg + db * db < 0.0001f) {
                            a.setPixel(x, y, a.pixel(xx, yy));
                            changed = true;
                            done = true;
                        }
                    }
            }
    }
    struct Sample {
        QColor c;
        QPoint p;
    };
    std::vector<Sample> fs, bs;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const QRgb v = a.pixel(x, y);
            if (v != FG && v != BG)
                continue;
            if ((x > 0 && a.pixel(x - 1, y) == UN) || (x < W - 1 && a.pixel(x + 1, y) == UN)
                || (y > 0 && a.pixel(x, y - 1) == UN) || (y < H - 1 && a.pixel(x, y + 1) == UN))
                (v == BG ? bs : fs).push_back({s.sourceImage.pixelColor(x, y), QPoint(x, y)});
        }
    QImage est = a.copy();
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            if (a.pixel(x, y) != UN)
                continue;
            auto near8 = [&](const std::vector<Sample>& list) {
                std::vector<std::pair<QColor, float>> slot;
                for (const Sample& smp : list) {
                    const float d = float((smp.p.y() - y) * (smp.p.y() - y) + (smp.p.x() - x) * (smp.p.x() - x));
                    if (slot.size() < 8) {
                        slot.push_back({smp.c, d});
                        continue;
                    }
                    for (auto& sl : slot)
                        if (sl.second > d) {
                            sl = {smp.c, d};
                            break;
                        }
                }
                return slot;
            };
            auto fsl = near8(fs), bsl = near8(bs);
            const QColor C = s.sourceImage.pixelColor(x, y);
            auto cdist = [&](const QColor& D) {
                const float dr = f(C.red()) - f(D.red()), dg = f(C.green()) - f(D.green()), db = f(C.blue()) - f(D.blue());
                return std::sqrt(dr * dr + dg * dg + db * db);
            };
            float mF = 10000000000.0f, mB = 10000000000.0f;
            for (auto* l : {&fsl, &bsl})
                for (auto& sl : *l)
                    (l == &fsl ? mF : mB) = std::min(l == &fsl ? mF : mB, sl.second = cdist(sl.first));
            const float mF2 = mF * mF, mB2 = mB * mB;
            auto weight = [](float d, float m2) { return m2 == 0.0f ? (d == 0.0f ? 1.0f : 0.0f) : std::exp(-(d * d) / m2); };
            std::vector<std::pair<float, float>> pairs; // alpha, cost
            for (auto& fi : fsl)
                for (auto& bj : bsl) {
                    float sum = fi.second + bj.second;
                    if (sum < 0.000001f)
                        sum = 0.000001f;
                    const float al = bj.second / sum;
                    auto e = [&](int c, int cf, int cb) { return f(c) - (al * f(cf) + (1 - al) * f(cb)); };
                    const float er = e(C.red(), fi.first.red(), bj.first.red()), eg = e(C.green(), fi.first.green(), bj.first.green()),
                                eb = e(C.blue(), fi.first.blue(), bj.first.blue());
                    const float cost = weight(fi.second, mF2) * weight(bj.second, mB2) * (er * er + eg * eg + eb * eb);
                    if (pairs.size() < 3) {
                        pairs.push_back({al, cost});
                        continue;
                    }
                    for (auto& p : pairs)
                        if (p.second > cost) {
                            p = {al, cost};
                            break;
                        }
                }
            float sum = 0;
            for (auto& p : pairs)
                sum += p.first;
            const int v = pairs.empty() ? 0 : std::clamp(int(sum * 255.0 / int(pairs.size())), 0, 255);
            est.setPixel(x, y, 0xFF000000u + uint(v) * 0x010101u);
        }
    a = est;
    std::vector<float> A(size_t(W * H));
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            A[size_t(y * W + x)] = float((a.pixel(x, y) & 0xFF) / 255.0);
    smooth(A, s.sourceImage, s.markImage, 8);
    writeAlpha(s, A);
}

} // namespace Reference
