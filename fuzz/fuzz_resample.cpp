// The command line's output path: a working-size matte and marks brought to the photo's size
// by the resampling the quick select tool shares. Whatever the two sizes, the outputs have the
// asked size, the corners land on the corners, a grey value never leaves the range of the
// values around it, marks stay mark colours, and equal sizes copy.
//
// Input: source width and height bytes (1..32 each), target width and height bytes (1..256),
// then one byte per source pixel: the matte's grey level; its low two bits also pick the mark
// (none, object, background, boundary). Missing bytes read as 0.
#include "VexaMatteResample.h"
#include "VexaSegmentation.h"

#include <QImage>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

[[noreturn]] void fail(const char* what, int x = -1, int y = -1)
{
    std::fprintf(stderr, "fuzz-resample: %s (%d, %d)\n", what, x, y);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    auto byte = [&](size_t i) { return i < size ? data[i] : uint8_t(0); };
    const int w = 1 + byte(0) % 32, h = 1 + byte(1) % 32;
    const int W = 1 + byte(2), H = 1 + byte(3);
    static const QRgb markColour[4] = {0, VexaSegmentation::ForegroundMark, VexaSegmentation::BackgroundMark,
                                       VexaSegmentation::BoundaryMark};
    QImage alpha(w, h, QImage::Format_ARGB32), marks(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const uint8_t v = byte(4 + size_t(y) * size_t(w) + size_t(x));
            alpha.setPixel(x, y, qRgb(v, v, v));
            marks.setPixel(x, y, markColour[v & 3]);
        }

    const QImage grey = VexaMatteResample::toGray(alpha, W, H);
    const QImage near = VexaMatteResample::nearest(marks, W, H);
    if (grey.size() != QSize(W, H) || grey.format() != QImage::Format_Grayscale8 || near.size() != QSize(W, H))
        fail("an output of the wrong size or format");
    // The same bytes through the selection's path, in rows wider than the picture.
    const int stride = W + 3;
    std::vector<uint8_t> mask(size_t(stride) * size_t(H), 0xA5);
    if (!VexaMatteResample::toMask(alpha, W, H, mask.data(), stride))
        fail("toMask refused a matte");
    auto value = [&](int x, int y) { return VexaMatteResample::gray(alpha.pixel(std::clamp(x, 0, w - 1), std::clamp(y, 0, h - 1))); };
    for (int y = 0; y < H; ++y) {
        const uchar* row = grey.constScanLine(y);
        for (int x = 0; x < W; ++x) {
            if (mask[size_t(y) * size_t(stride) + size_t(x)] != row[x])
                fail("toMask and toGray differ", x, y);
            // Corner-to-corner mapping: the sample sits between four source pixels.
            const double fx = W > 1 ? x * double(w - 1) / double(W - 1) : 0.0;
            const double fy = H > 1 ? y * double(h - 1) / double(H - 1) : 0.0;
            const int x0 = int(fx), y0 = int(fy);
            const int lo = std::min({value(x0, y0), value(x0 + 1, y0), value(x0, y0 + 1), value(x0 + 1, y0 + 1)});
            const int hi = std::max({value(x0, y0), value(x0 + 1, y0), value(x0, y0 + 1), value(x0 + 1, y0 + 1)});
            if (row[x] < lo - 1 || row[x] > hi)
                fail("a grey value outside its neighbours' range", x, y);
            const QRgb m = near.pixel(x, y);
            if (m != markColour[0] && m != markColour[1] && m != markColour[2] && m != markColour[3])
                fail("a mark colour that was not in the marks", x, y);
        }
        for (int x = W; x < stride; ++x)
            if (mask[size_t(y) * size_t(stride) + size_t(x)] != 0xA5)
                fail("toMask wrote past the width", x, y);
    }
    // (A target one pixel wide or high samples the first column or row.) The far corner's
    // position is a product in double, (W - 1) * ((w - 1) / (W - 1)), which may fall a hair
    // short of w - 1; the level truncated from it may then be one below the corner's.
    const bool far = W > 1 && H > 1;
    if (grey.constScanLine(0)[0] != value(0, 0)
        || (far && std::abs(int(grey.constScanLine(H - 1)[W - 1]) - value(w - 1, h - 1)) > 1))
        fail("the corners do not land on the corners");
    if (near.pixel(0, 0) != marks.pixel(0, 0) || (far && near.pixel(W - 1, H - 1) != marks.pixel(w - 1, h - 1)))
        fail("the marks' corners do not land on the corners");
    if (W == w && H == h) {
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (grey.constScanLine(y)[x] != value(x, y) || near.pixel(x, y) != marks.pixel(x, y))
                    fail("equal sizes do not copy", x, y);
    }
    return 0;
}
