#include "VexaMatteResample.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace VexaMatteResample {

namespace {
// Source position of each target index: the lower sample, the upper one and the weight of the upper.
struct Tap {
    int i0, i1;
    double d;
};

std::vector<Tap> taps(int target, int source)
{
    std::vector<Tap> out(static_cast<size_t>(target));
    const double s = target > 1 ? double(source - 1) / double(target - 1) : 0.0;
    for (int x = 0; x < target; ++x) {
        const double f = x * s;
        const int i = int(f); // f >= 0: truncation towards zero
        out[size_t(x)] = {std::max(i, 0), i + 1 > source - 1 ? source - 1 : i + 1, f - i};
    }
    return out;
}
} // namespace

bool toMask(const QImage& alpha, int width, int height, uint8_t* mask, int stride)
{
    if (alpha.isNull() || !mask || width <= 0 || height <= 0)
        return false;
    const QImage src = alpha.convertToFormat(QImage::Format_ARGB32);
    if (src.isNull())
        return false; // out of memory for the 32-bit copy
    const int w = src.width(), h = src.height();
    std::vector<int> grey(size_t(w) * size_t(h));
    for (int y = 0; y < h; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(src.constScanLine(y));
        for (int x = 0; x < w; ++x)
            grey[size_t(y) * size_t(w) + size_t(x)] = gray(row[x]);
    }
    if (w == width && h == height) {
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                mask[size_t(y) * size_t(stride) + size_t(x)] = uint8_t(grey[size_t(y) * size_t(w) + size_t(x)]);
        return true;
    }
    const std::vector<Tap> cols = taps(width, w);
    const std::vector<Tap> rows = taps(height, h);
    for (int y = 0; y < height; ++y) {
        const Tap& ty = rows[size_t(y)];
        const int* g0 = grey.data() + size_t(ty.i0) * size_t(w);
        const int* g1 = grey.data() + size_t(ty.i1) * size_t(w);
        const double dy = ty.d;
        uint8_t* out = mask + size_t(y) * size_t(stride);
        for (int x = 0; x < width; ++x) {
            const Tap& tx = cols[size_t(x)];
            const double dx = tx.d;
            // The four products in double precision, added in this order.
            const double v = g0[tx.i0] * (1 - dx) * (1 - dy) + g1[tx.i0] * (1 - dx) * dy + g0[tx.i1] * dx * (1 - dy)
                             + g1[tx.i1] * dx * dy;
            out[x] = v < 0 ? 0 : v > 255 ? 255 : uint8_t(v);
        }
    }
    return true;
}

QImage toGray(const QImage& alpha, int width, int height)
{
    QImage out(width, height, QImage::Format_Grayscale8);
    if (out.isNull() || !toMask(alpha, width, height, out.bits(), int(out.bytesPerLine())))
        return QImage();
    return out;
}

QImage nearest(const QImage& marks, int width, int height)
{
    if (marks.isNull() || width <= 0 || height <= 0)
        return QImage();
    const QImage src = marks.convertToFormat(QImage::Format_ARGB32);
    QImage out(width, height, QImage::Format_ARGB32);
    if (src.isNull() || out.isNull())
        return QImage();
    const std::vector<Tap> cols = taps(width, src.width());
    const std::vector<Tap> rows = taps(height, src.height());
    for (int y = 0; y < height; ++y) {
        const Tap& ty = rows[size_t(y)];
        const auto* in = reinterpret_cast<const QRgb*>(src.constScanLine(ty.d < 0.5 ? ty.i0 : ty.i1));
        auto* o = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const Tap& tx = cols[size_t(x)];
            o[x] = in[tx.d < 0.5 ? tx.i0 : tx.i1];
        }
    }
    return out;
}

} // namespace VexaMatteResample
