#pragma once
// Plain CPU versions of the matting programs, written from their descriptions and kept apart
// from the GLSL on purpose: the tests compare the two on small images.
//
// A Grid holds RGBA values 0..1 in window coordinates: (0, 0) is the bottom-left pixel, as
// gl_FragCoord sees it. fromImage/toImage turn the top-down QImage around. Outputs are rounded
// to bytes the way the 8-bit frame buffer stores them, so passes chain as on the GPU.

#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

namespace ref {

using Px = std::array<float, 4>;

struct Grid {
    int w = 0, h = 0;
    std::vector<Px> px;
    // Clamp to edge, as the textures wrap.
    Px& at(int x, int y) { return px[size_t(std::clamp(y, 0, h - 1) * w + std::clamp(x, 0, w - 1))]; }
    const Px& at(int x, int y) const { return const_cast<Grid*>(this)->at(x, y); }
    // Nearest lookup at a texture coordinate.
    const Px& sample(float u, float v) const { return at(int(std::floor(u * float(w))), int(std::floor(v * float(h)))); }
};

inline float byteOf(float v) { return float(std::lround(std::clamp(v, 0.0f, 1.0f) * 255.0f)) / 255.0f; }
inline Px grey(float a) { return {a, a, a, 1.0f}; }

inline Grid fromImage(const QImage& image)
{
    const QImage img = image.convertToFormat(QImage::Format_RGBA8888);
    Grid g{img.width(), img.height(), std::vector<Px>(size_t(img.width() * img.height()))};
    for (int y = 0; y < g.h; ++y)
        for (int i = 0; i < 4 * g.w; ++i)
            g.at(i / 4, y)[size_t(i % 4)] = float(img.constScanLine(g.h - 1 - y)[i]) / 255.0f;
    return g;
}

inline QImage toImage(const Grid& g)
{
    QImage img(g.w, g.h, QImage::Format_RGBA8888);
    for (int y = 0; y < g.h; ++y)
        for (int i = 0; i < 4 * g.w; ++i)
            img.scanLine(g.h - 1 - y)[i] = uchar(std::lround(std::clamp(g.at(i / 4, y)[size_t(i % 4)], 0.0f, 1.0f) * 255.0f));
    return img;
}

// The pass `f` over every pixel, stored as bytes.
template <typename F>
Grid each(const Grid& like, F f)
{
    Grid out = like;
    for (int y = 0; y < like.h; ++y)
        for (int x = 0; x < like.w; ++x) {
            const Px p = f(x, y);
            out.at(x, y) = {byteOf(p[0]), byteOf(p[1]), byteOf(p[2]), byteOf(p[3])};
        }
    return out;
}

inline bool known(float a) { return a > 0.75f || a < 0.25f; }

inline Grid trimap(const Grid& marks)
{
    return each(marks, [&](int x, int y) { return grey(marks.at(x, y)[0] > 0.5f ? 1 : marks.at(x, y)[1] > 0.5f ? 0.5f : 0); });
}

inline Grid expand(const Grid& tri, const Grid& col)
{
    return each(tri, [&](int x, int y) -> Px {
        if (known(tri.at(x, y)[0]))
            return tri.at(x, y);
        int best = -1, bi = 0, bj = 0;
        for (int j = -10; j <= 10; ++j)
            for (int i = -10; i <= 10; ++i) {
                const int d = i * i + j * j;
                float s = 0;
                for (size_t k = 0; k < 4; ++k)
                    s += (col.at(x + i, y + j)[k] - col.at(x, y)[k]) * (col.at(x + i, y + j)[k] - col.at(x, y)[k]);
                if (d > 0 && d <= 100 && s <= 0.0004f && (best < 0 || d < best))
                    best = d, bi = i, bj = j;
            }
        return tri.at(x + bi, y + bj);
    });
}

inline float length3(const Px& a, const Px& b)
{
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) + (a[2] - b[2]) * (a[2] - b[2]));
}

inline Grid robust(const Grid& tri, const Grid& col)
{
    static const int offsets[32] = {-1, 0, 1, 0, 0, -1, 0, 1, -1, -1, 1, -1, -1, 1, 1, 1,
                                    -2, -1, 2, -1, -2, 1, 2, 1, -1, -2, 1, -2, -1, 2, 1, 2};
    const float dimX = 1.0f / float(tri.w), dimY = 1.0f / float(tri.h);
    return each(tri, [&](int x, int y) -> Px {
        if (known(tri.at(x, y)[0]))
            return tri.at(x, y);
        const Px& c0 = col.at(x, y);
        const float fx = float(x) + 0.5f, fy = float(y) + 0.5f, t = fx * fy * 0.1f, ct = std::cos(t), st = std::sin(t);
        std::vector<std::pair<Px, float>> fg, bg; // colour, distance to the pixel's colour
        bool stopped[16] = {};
        int nstopped = 0;
        for (int i = 0; i < std::max(tri.w, tri.h) && nstopped < 16; i += 4)
            for (int k = 0; k < 16; ++k) {
                const float dx = float(offsets[2 * k]) * dimX, dy = float(offsets[2 * k + 1]) * dimY;
                const float u = fx * dimX + (ct * dx - st * dy) * float(i), v = fy * dimY + (st * dx + ct * dy) * float(i);
                if (stopped[k] || u < 0 || u > 1 || v < 0 || v > 1 || !known(tri.sample(u, v)[0]))
                    continue;
                (tri.sample(u, v)[0] > 0.75f ? fg : bg).push_back({col.sample(u, v), length3(col.sample(u, v), c0)});
                stopped[k] = true;
                ++nstopped;
            }
        if (fg.empty() || bg.empty())
            return grey(fg.empty() && bg.empty() ? 0.5f : fg.empty() ? 0 : 1);
        float slotA[3];
        long double slotV[3];
        int filled = 0;
        for (size_t i = 0; i < fg.size(); ++i)
            for (size_t j = 0; j < bg.size(); ++j) {
                const float fd = fg[i].second, bd = bg[j].second, sum = fd + bd, a = sum > 0 ? bd / sum : 0.5f;
                float e2 = 0;
                for (size_t c = 0; c < 3; ++c) {
                    const float e = a * fg[i].first[c] + (1 - a) * bg[j].first[c] - c0[c];
                    e2 += e * e;
                }
                // The score as written, with a range wide enough that no product underflows.
                using L = long double;
                const L v = std::exp(-L(e2) * 100) * std::exp(-L(fd) * L(fd) * 100) * std::exp(-L(bd) * L(bd) * 100);
                if (filled < 3)
                    slotA[filled] = a, slotV[filled++] = v;
                else
                    for (int s = 0; s < 3; ++s)
                        if (slotV[s] < v)
                            slotA[s] = a, slotV[s] = v;
            }
        return grey(std::accumulate(slotA, slotA + filled, 0.0f) / float(filled)); // summed in slot order
    });
}

inline Grid closed(const Grid& tri, const Grid& col)
{
    return each(tri, [&](int x, int y) -> Px {
        const float centre = tri.at(x, y)[0];
        if (centre > 0.95f || centre < 0.05f)
            return tri.at(x, y);
        float a[9], g[9], mean = 0, s = 0, sw = 0, swa = 0;
        for (int k = 0; k < 9; ++k) {
            const Px& c = col.at(x + k % 3 - 1, y + k / 3 - 1);
            a[k] = tri.at(x + k % 3 - 1, y + k / 3 - 1)[0];
            g[k] = 0.3f * c[0] + 0.59f * c[1] + 0.11f * c[2];
            mean += g[k];
        }
        mean /= 9;
        for (float& v : g)
            v -= mean, s += v * v;
        s = s / 9 + 0.001f / 9;
        for (int n = 0; n < 9; ++n) {
            const float w = n == 4 ? 0 : (1 + g[4] * g[n] / s) / 9;
            sw += w;
            swa += w * a[n];
        }
        return grey(swa / sw);
    });
}

// What matte() computes from the marks: trimap, Expand, Robust, then `closedPasses` Closed.
inline Grid matte(const Grid& marks, const Grid& col, int closedPasses)
{
    Grid a = robust(expand(trimap(marks), col), col);
    for (int i = 0; i < closedPasses; ++i)
        a = closed(a, col);
    return a;
}

} // namespace ref
