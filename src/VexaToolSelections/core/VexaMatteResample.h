#pragma once

#include <QImage>

#include <cstdint>

// Bringing a quick select matte from the working image to the document's size, as the quick
// select tool writes it into the selection: grey (11 R + 16 G + 5 B) / 32 of each matte pixel,
// copied where the sizes agree, bilinear otherwise with the corners on the corners
// (scale (w - 1) / (W - 1)). Shared by the tool and the command line, so both give the same bytes.
namespace VexaMatteResample {

inline int gray(QRgb p) { return (11 * qRed(p) + 16 * qGreen(p) + 5 * qBlue(p)) / 32; }

// Writes width x height bytes into `mask` (rows of `stride` bytes; bytes past the width are
// left alone). A null matte writes nothing and returns false. A document one pixel wide (or
// high) samples the matte's first column (row).
bool toMask(const QImage& alpha, int width, int height, uint8_t* mask, int stride);

// The matte at width x height as an 8-bit grey image.
QImage toGray(const QImage& alpha, int width, int height);

// `marks` at width x height by the same corner-to-corner mapping, each pixel taken from the
// nearest sample, so mark colours stay mark colours.
QImage nearest(const QImage& marks, int width, int height);

} // namespace VexaMatteResample
