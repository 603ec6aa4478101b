#include "VexaMaskOps.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace VexaMaskOps {

std::vector<uint8_t> rasterize(const QPainterPath& shape, const QRect& area)
{
    std::vector<uint8_t> out(size_t(std::max(0, area.width())) * size_t(std::max(0, area.height())), 0);
    if (area.isEmpty() || shape.isEmpty())
        return out;
    QImage img(area.size(), QImage::Format_Alpha8);
    img.fill(0);
    {
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing, true);
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::black);
        p.translate(-area.topLeft());
        p.drawPath(shape);
    }
    for (int y = 0; y < area.height(); ++y)
        std::memcpy(out.data() + size_t(y) * size_t(area.width()), img.constScanLine(y), size_t(area.width()));
    return out;
}

namespace {

// Box widths whose three-fold convolution has the variance of a Gaussian of sigma.
std::array<int, 3> boxWidths(double sigma)
{
    const int n = 3;
    const double ideal = std::sqrt(12.0 * sigma * sigma / n + 1.0);
    int wl = int(std::floor(ideal));
    if (wl % 2 == 0)
        --wl;
    wl = std::max(wl, 1);
    const int wu = wl + 2;
    const double mIdeal = (12.0 * sigma * sigma - n * wl * wl - 4.0 * n * wl - 3.0 * n) / (-4.0 * wl - 4.0);
    const int m = int(std::lround(mIdeal));
    std::array<int, 3> w{};
    for (int i = 0; i < n; ++i)
        w[size_t(i)] = i < m ? wl : wu;
    return w;
}

// One box pass along a line of `count` samples spaced `step` apart, zero beyond both ends,
// values scaled by 256 so three passes keep sub-level precision.
void boxLine(uint32_t* line, ptrdiff_t step, int count, int width, std::vector<uint32_t>& tmp)
{
    const int r = width / 2;
    tmp.resize(size_t(count));
    for (int i = 0; i < count; ++i)
        tmp[size_t(i)] = line[i * step];
    uint64_t sum = 0;
    for (int i = 0; i <= std::min(r, count - 1); ++i)
        sum += tmp[size_t(i)];
    for (int i = 0; i < count; ++i) {
        line[i * step] = uint32_t((sum + uint64_t(width) / 2) / uint64_t(width));
        const int add = i + r + 1;
        const int sub = i - r;
        if (add < count)
            sum += tmp[size_t(add)];
        if (sub >= 0)
            sum -= tmp[size_t(sub)];
    }
}

} // namespace

int featherReach(float radius)
{
    if (!(radius > 0.0f))
        return 0;
    int reach = 0;
    for (int w : boxWidths(radius / 2.0))
        reach += w / 2;
    return reach;
}

void feather(std::vector<uint8_t>& buf, int width, int height, float radius)
{
    if (!(radius > 0.0f) || width <= 0 || height <= 0)
        return;
    const auto widths = boxWidths(radius / 2.0);
    if (widths[0] <= 1 && widths[2] <= 1)
        return;
    std::vector<uint32_t> v(buf.size());
    for (size_t i = 0; i < buf.size(); ++i)
        v[i] = uint32_t(buf[i]) << 8;
    std::vector<uint32_t> tmp;
    for (int w : widths) {
        if (w <= 1)
            continue;
        for (int y = 0; y < height; ++y)
            boxLine(v.data() + size_t(y) * size_t(width), 1, width, w, tmp);
        for (int x = 0; x < width; ++x)
            boxLine(v.data() + x, width, height, w, tmp);
    }
    for (size_t i = 0; i < buf.size(); ++i)
        buf[i] = uint8_t(std::min<uint32_t>(255, (v[i] + 128) >> 8));
}

void combine(uint8_t* dst, int dstStride, const uint8_t* src, int srcStride, int width, int height, int mode)
{
    for (int y = 0; y < height; ++y) {
        uint8_t* d = dst + ptrdiff_t(y) * dstStride;
        const uint8_t* s = src + ptrdiff_t(y) * srcStride;
        switch (mode) {
        case Add:
            for (int x = 0; x < width; ++x)
                d[x] = std::max(d[x], s[x]);
            break;
        case Subtract:
            for (int x = 0; x < width; ++x)
                d[x] = std::min<uint8_t>(d[x], uint8_t(255 - s[x]));
            break;
        case Intersect:
            for (int x = 0; x < width; ++x)
                d[x] = std::min(d[x], s[x]);
            break;
        default:
            std::memcpy(d, s, size_t(width));
            break;
        }
    }
}

} // namespace VexaMaskOps

namespace VexaMaskOps {

std::vector<float> outline(const uint8_t* mask, int width, int height, int stride)
{
    std::vector<float> out;
    auto inside = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < width && y < height && mask[size_t(y) * size_t(stride) + size_t(x)] >= 128;
    };
    auto emitRuns = [&](int count, auto differs, auto segment) {
        int start = -1;
        for (int i = 0; i <= count; ++i) {
            const bool d = i < count && differs(i);
            if (d && start < 0)
                start = i;
            if (!d && start >= 0) {
                segment(start, i);
                start = -1;
            }
        }
    };
    for (int y = 0; y <= height; ++y) {
        emitRuns(width, [&](int x) { return inside(x, y - 1) != inside(x, y); },
                 [&](int a, int b) { out.insert(out.end(), {float(a), float(y), float(b), float(y)}); });
    }
    for (int x = 0; x <= width; ++x) {
        emitRuns(height, [&](int y) { return inside(x - 1, y) != inside(x, y); },
                 [&](int a, int b) { out.insert(out.end(), {float(x), float(a), float(x), float(b)}); });
    }
    return out;
}

} // namespace VexaMaskOps
