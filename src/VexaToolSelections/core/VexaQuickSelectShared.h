#pragma once

// What the quick select steps share inside the core: the worker's report texts, mark and
// trimap bytes, and plain pixel views of the segmentation's images.
#include <QCoreApplication>
#include <QImage>
#include <QRgb>
#include <QString>

#include <cstdint>

namespace VexaQuickSelect {
namespace detail {

// The worker's texts belong to the translation context of the worker thread class. The
// literals are marked where they stand (QT_TRANSLATE_NOOP) so the catalogues find them there.
inline QString threadText(const char* text) { return QCoreApplication::translate("Thread", text); }

constexpr int hardWeight = 100000000;
constexpr QRgb trimapForeground = 0xFFFFFFFFu;
constexpr QRgb trimapBackground = 0xFF000000u;
constexpr QRgb trimapUnknown = 0xFF808080u;

inline bool redByte(QRgb m) { return (m >> 16) & 0xFFu; }
inline bool greenByte(QRgb m) { return (m >> 8) & 0xFFu; }
inline bool blueByte(QRgb m) { return m & 0xFFu; }

// The 32-bit pixels of an image as one array of rows `stride` words apart. A view is taken
// once, in the thread that runs the step, before any work is split: taking a writable view
// detaches a shared image, and two threads detaching the same image race.
template <class Word>
struct PixelView {
    Word* data = nullptr;
    qsizetype stride = 0;
    int width = 0, height = 0;

    Word* row(int y) const { return data + qsizetype(y) * stride; }
    Word& at(qsizetype i) const { return row(int(i / width))[i % width]; }
};
using ConstPixels = PixelView<const QRgb>;
using Pixels = PixelView<QRgb>;

inline ConstPixels pixels(const QImage& img)
{
    return {reinterpret_cast<const QRgb*>(img.constBits()), img.bytesPerLine() / 4, img.width(), img.height()};
}
inline Pixels writablePixels(QImage& img)
{
    return {reinterpret_cast<QRgb*>(img.bits()), img.bytesPerLine() / 4, img.width(), img.height()};
}

// Whether `img` can be read as 32-bit words at the size of the working image.
inline bool matches(const QImage& img, const QImage& source)
{
    return !img.isNull() && img.size() == source.size() && img.depth() == 32;
}

// Does pixel i = y W + x have a 4-neighbour inside the image whose value differs from its own?
template <class T>
inline bool onEdge(const T* v, int W, int H, int x, int y)
{
    const qsizetype i = qsizetype(y) * W + x;
    const T a = v[i];
    return (x > 0 && v[i - 1] != a) || (x < W - 1 && v[i + 1] != a) || (y > 0 && v[i - W] != a)
        || (y < H - 1 && v[i + W] != a);
}

// An alpha 0..1 as the byte the images store: times 255 in single precision, truncated, clamped.
// The clamp comes before the conversion: a patch whose weights nearly cancel can estimate far
// outside 0..1, beyond what an int holds (found by fuzzing).
inline int alphaByte(float alpha)
{
    const float a = alpha * 255.0f;
    if (!(a > 0.0f))
        return 0;
    return a >= 255.0f ? 255 : int(a);
}

// Channel c as the single-precision fraction c / 255.
struct UnitChannels {
    float v[256];
    UnitChannels()
    {
        for (int c = 0; c < 256; ++c)
            v[c] = float(c) / 255.0f;
    }
};
inline const float* unitChannels()
{
    static const UnitChannels table;
    return table.v;
}

} // namespace detail
} // namespace VexaQuickSelect
