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
    // One pass over the rows, comparing each with the one above. Where they differ (spans of
    // x) lie the edges along the row; an edge along a column left of x starts or ends exactly
    // where such a span starts or ends, so only those places are visited, and a column edge
    // stays open while rows repeat. Rows like their predecessor, the bulk of a photo-sized
    // mask, cost one compare; the others a scan that skips eight equal bytes at a time.
    std::vector<float> out;
    if (width <= 0 || height <= 0)
        return out;
    std::vector<uint8_t> above(size_t(width) + 1, 0), row(size_t(width) + 1, 0);
    std::vector<int> columnRun(size_t(width) + 1, -1); // start row of an open edge left of x, or -1
    std::vector<int> spans;                            // start, end (exclusive) of each differing span
    auto binarise = [&](int y, std::vector<uint8_t>& dst) {
        if (y >= height) {
            std::fill(dst.begin(), dst.end(), uint8_t(0));
            return;
        }
        const uint8_t* m = mask + size_t(y) * size_t(stride);
        for (int x = 0; x < width; ++x)
            dst[size_t(x)] = m[x] >= 128;
    };
    auto differs = [&](int x) { return row[size_t(x)] != above[size_t(x)]; };
    for (int y = 0; y <= height; ++y) {
        binarise(y, row);
        if (y > 0 && y < height && std::equal(row.begin(), row.end(), above.begin()))
            continue; // no edge along this row; column edges carry on unchanged
        spans.clear();
        int x = 0;
        while (x < width) {
            // Equal stretches eight bytes at a time.
            uint64_t a = 0, b = 0;
            while (x + 8 <= width && (std::memcpy(&a, &row[size_t(x)], 8), std::memcpy(&b, &above[size_t(x)], 8), a == b))
                x += 8;
            while (x < width && !differs(x))
                ++x;
            if (x >= width)
                break;
            const int start = x;
            while (x < width && differs(x))
                ++x;
            spans.push_back(start);
            spans.push_back(x);
        }
        // Edges along the row between y - 1 and y.
        for (size_t i = 0; i < spans.size(); i += 2)
            out.insert(out.end(), {float(spans[i]), float(y), float(spans[i + 1]), float(y)});
        // Edges along columns change only at the ends of those spans: one opens, or one ends.
        for (int at : spans) {
            int& run = columnRun[size_t(at)];
            if (run < 0) {
                run = y;
            } else {
                out.insert(out.end(), {float(at), float(run), float(at), float(y)});
                run = -1;
            }
        }
        above.swap(row);
    }
    return out;
}

} // namespace VexaMaskOps

namespace VexaMaskOps {

void packRuns(const uint8_t* src, size_t n, std::vector<uint8_t>& out)
{
    size_t i = 0;
    while (i < n) {
        const size_t most = std::min<size_t>(129, n - i);
        size_t run = 1;
        while (run < most && src[i + run] == src[i])
            ++run;
        if (run >= 3) {
            out.push_back(uint8_t(run + 126));
            out.push_back(src[i]);
            i += run;
            continue;
        }
        // Bytes as they stand, up to where three equal ones begin a run.
        const size_t start = i;
        while (i < n && i - start < 128 && !(i + 2 < n && src[i] == src[i + 1] && src[i] == src[i + 2]))
            ++i;
        out.push_back(uint8_t(i - start - 1));
        out.insert(out.end(), src + start, src + i);
    }
}

const uint8_t* unpackRuns(const uint8_t* from, const uint8_t* end, uint8_t* dst, size_t n)
{
    size_t done = 0;
    while (done < n) {
        if (from >= end)
            return nullptr;
        const uint8_t h = *from++;
        if (h < 128) {
            const size_t count = size_t(h) + 1;
            if (count > n - done || size_t(end - from) < count)
                return nullptr;
            std::memcpy(dst + done, from, count);
            from += count;
            done += count;
        } else {
            const size_t count = size_t(h) - 126;
            if (count > n - done || from >= end)
                return nullptr;
            std::memset(dst + done, *from++, count);
            done += count;
        }
    }
    return from;
}

} // namespace VexaMaskOps
