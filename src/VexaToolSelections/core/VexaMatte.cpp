#include "VexaMatte.h"

#include <vector>

namespace VexaMatte {

bool toMask(const QImage& matte, int width, int height, int stride, uint8_t* mask)
{
    if (matte.isNull() || !mask || width <= 0 || height <= 0 || stride < width)
        return false;
    const QImage src = matte.format() == QImage::Format_ARGB32 || matte.format() == QImage::Format_RGB32
        ? matte
        : matte.convertToFormat(QImage::Format_ARGB32);
    const int w = src.width();
    const int h = src.height();
    if (w == width && h == height) {
        for (int y = 0; y < height; ++y) {
            const auto* row = reinterpret_cast<const QRgb*>(src.constScanLine(y));
            uint8_t* out = mask + size_t(y) * size_t(stride);
            for (int x = 0; x < width; ++x)
                out[x] = uint8_t(gray(row[x]));
        }
        return true;
    }
    // Corner-to-corner scaling divides by the canvas size minus one.
    if (width < 2 || height < 2)
        return false;
    const double sx = double(w - 1) / double(width - 1);
    const double sy = double(h - 1) / double(height - 1);

    // Column weights are the same on every row: work them out once.
    struct Col {
        int x0, x1;
        double dx;
    };
    std::vector<Col> cols(static_cast<size_t>(width));
    for (int x = 0; x < width; ++x) {
        const double fx = x * sx;
        const int ix = int(fx);
        cols[size_t(x)] = {ix < 0 ? 0 : ix, ix + 1 > w - 1 ? w - 1 : ix + 1, fx - ix};
    }
    std::vector<int> g0(static_cast<size_t>(w)), g1(static_cast<size_t>(w));
    for (int y = 0; y < height; ++y) {
        const double fy = y * sy;
        const int iy = int(fy);
        const int y0 = iy < 0 ? 0 : iy;
        const int y1 = iy + 1 > h - 1 ? h - 1 : iy + 1;
        const double dy = fy - iy;
        const auto* r0 = reinterpret_cast<const QRgb*>(src.constScanLine(y0));
        const auto* r1 = reinterpret_cast<const QRgb*>(src.constScanLine(y1));
        for (int x = 0; x < w; ++x) {
            g0[size_t(x)] = gray(r0[x]);
            g1[size_t(x)] = gray(r1[x]);
        }
        uint8_t* out = mask + size_t(y) * size_t(stride);
        for (int x = 0; x < width; ++x) {
            const Col& c = cols[size_t(x)];
            const double v = g0[size_t(c.x0)] * (1 - c.dx) * (1 - dy) + g1[size_t(c.x0)] * (1 - c.dx) * dy
                + g0[size_t(c.x1)] * c.dx * (1 - dy) + g1[size_t(c.x1)] * c.dx * dy;
            out[x] = v < 0 ? 0 : v > 255 ? 255 : uint8_t(v);
        }
    }
    return true;
}

} // namespace VexaMatte
