#pragma once

#include <QRect>

#include <cstdint>
#include <vector>

class QPainterPath;

// Widget-free 8-bit mask arithmetic shared by the selection: rasterising shapes,
// feathering and combining by selection mode. Buffers are row-major with explicit strides.
namespace VexaMaskOps {

enum Mode { New = 0, Add = 1, Subtract = 2, Intersect = 3 };

// Anti-aliased coverage (0..255) of `shape` over `area`; the result has area.width() bytes per row.
std::vector<uint8_t> rasterize(const QPainterPath& shape, const QRect& area);

// How far, in pixels, feathering by `radius` spreads coverage beyond a shape's edge.
int featherReach(float radius);

// Softens `buf` in place by a Gaussian whose standard deviation is radius / 2, approximated by
// three successive box filters in each direction (exact integer arithmetic, so results are the
// same on every machine). Pixels outside the buffer count as 0.
void feather(std::vector<uint8_t>& buf, int width, int height, float radius);

// Combines `src` into `dst` over a width x height block.
void combine(uint8_t* dst, int dstStride, const uint8_t* src, int srcStride, int width, int height, int mode);

// What a mode does to selected pixels that the new area does not reach (src = 0 there).
inline bool clearsOutside(int mode) { return mode == New || mode == Intersect; }

} // namespace VexaMaskOps

namespace VexaMaskOps {
// The boundary between selected (>= 128) and unselected pixels as line segments on pixel
// edges, in canvas coordinates: x0, y0, x1, y1 for each segment, runs along a row or a
// column merged into one segment.
std::vector<float> outline(const uint8_t* mask, int width, int height, int stride);
} // namespace VexaMaskOps

namespace VexaMaskOps {
// Undo keeps whole masks and alpha planes of camera-sized photos: in runs, a mask of a few
// shapes takes a few hundred kilobytes instead of tens of megabytes.
// Appends `n` bytes of `src` to `out`: a header byte h < 128 then h + 1 bytes as they stand,
// or h >= 128 then one byte repeated h - 126 times.
void packRuns(const uint8_t* src, size_t n, std::vector<uint8_t>& out);
// Writes the `n` bytes packed at `from` into `dst`; returns where the packed data that follows
// begins, or null when the data ends before `n` bytes or a run reaches past them.
const uint8_t* unpackRuns(const uint8_t* from, const uint8_t* end, uint8_t* dst, size_t n);
} // namespace VexaMaskOps
