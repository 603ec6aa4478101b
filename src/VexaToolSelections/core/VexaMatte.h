#pragma once

#include <QImage>

#include <cstdint>

// Turning a grey matte into a selection mask of the canvas size.
namespace VexaMatte {

// The grey level of a matte pixel: (11 R + 16 G + 5 B) / 32 in integers; alpha is ignored.
inline int gray(QRgb p)
{
    return (11 * qRed(p) + 16 * qGreen(p) + 5 * qBlue(p)) / 32;
}

// Writes the matte into `mask` (height rows of `stride` bytes, the first `width` of each row
// used): pixel for pixel when the matte has the canvas size, otherwise resampled bilinearly
// so that the matte's corners land on the canvas's corners. Bytes past `width` are left
// alone. Returns false, writing nothing, for a null matte or when resampling would need a
// canvas of more than one pixel on each axis.
bool toMask(const QImage& matte, int width, int height, int stride, uint8_t* mask);

} // namespace VexaMatte
