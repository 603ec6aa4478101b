#include "VexaAlgorithmGrow.h"

#include "VexaPictureHost.h"

#include <cstdlib>
#include <vector>

namespace {
inline bool near(QRgb a, QRgb b, int t)
{
    return std::abs(qRed(a) - qRed(b)) <= t && std::abs(qGreen(a) - qGreen(b)) <= t
        && std::abs(qBlue(a) - qBlue(b)) <= t && std::abs(qAlpha(a) - qAlpha(b)) <= t;
}
} // namespace

void VexaAlgorithmGrow::grow(VexaPictureHost* picture, unsigned char* mask, float threshold, int x, int y)
{
    if (!picture || !mask)
        return;
    const int w = picture->width();
    const int h = picture->height();
    if (x < 0 || y < 0 || x >= w || y >= h)
        return;
    // Channel differences are whole numbers, so a fractional threshold acts as its floor.
    const int t = threshold < 0 ? -1 : int(threshold);
    const QRgb seed = picture->pixel(x, y);
    std::vector<unsigned char> seen(size_t(w) * size_t(h), 0);
    auto fits = [&](int px, int py) {
        return !seen[size_t(py) * size_t(w) + size_t(px)] && near(picture->pixel(px, py), seed, t);
    };

    // Scanline fill: take a seed, widen it to its whole run, then queue one seed for every
    // matching run touching it on the rows above and below.
    std::vector<std::pair<int, int>> stack;
    stack.emplace_back(x, y);
    while (!stack.empty()) {
        auto [sx, sy] = stack.back();
        stack.pop_back();
        if (!fits(sx, sy))
            continue;
        int left = sx;
        while (left > 0 && fits(left - 1, sy))
            --left;
        int right = sx;
        while (right + 1 < w && fits(right + 1, sy))
            ++right;
        unsigned char* seenRow = seen.data() + size_t(sy) * size_t(w);
        unsigned char* maskRow = mask + size_t(sy) * size_t(w);
        for (int i = left; i <= right; ++i) {
            seenRow[i] = 1;
            maskRow[i] = 255;
        }
        for (int ny : {sy - 1, sy + 1}) {
            if (ny < 0 || ny >= h)
                continue;
            bool inRun = false;
            for (int i = left; i <= right; ++i) {
                const bool ok = fits(i, ny);
                if (ok && !inRun)
                    stack.emplace_back(i, ny);
                inRun = ok;
            }
        }
    }
}
