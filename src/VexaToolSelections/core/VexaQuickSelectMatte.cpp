// The alpha extraction step: a trimap from the marks and the boundary band, the unknown zone
// shrunk by colour matches on a sparse grid, alpha from pairs of nearby boundary samples, then
// the shared border smoothing.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectKernels.h"
#include "VexaQuickSelectShared.h"
#include "VexaRefine.h"
#include "VexaSegmentation.h"

#include <QPoint>

#include <algorithm>
#include <cmath>

#include <climits>
#include <cstring>

namespace VexaQuickSelect {

using namespace detail;

namespace {

const char* const extracting = QT_TRANSLATE_NOOP("Thread", "Alpha Extracting ..");
const char* const extractDone = QT_TRANSLATE_NOOP("Thread", "Alpha Extract done ..");
const char* const refining = QT_TRANSLATE_NOOP("Thread", "Refining Edges ..");

struct Slot {
    QRgb colour;
    float distance;
};

// The slots of one lane, as colours and distances.
void laneSlots(const Samples& s, const LaneSlots& found, int filled, int lane, Slot* chosen)
{
    for (int k = 0; k < filled; ++k) {
        chosen[k].colour = s.colour[size_t(found.index[k][lane])];
        chosen[k].distance = float(found.distance[k][lane]);
    }
}

// A Gaussian weight exp(-d^2 / m^2) where m is the least distance on that side. When m is 0
// the ratio is 0/0 for the samples at distance 0: the limit is taken, 1 for those and 0 for
// the others, so an exact colour match dominates as it should.
inline float sideWeight(float d, float m2)
{
    if (m2 == 0.0f)
        return d == 0.0f ? 1.0f : 0.0f;
    return std::exp(-(d * d) / m2);
}

int estimateAlpha(QRgb c, const Slot* fg, int nf, Slot* bg, int nb)
{
    const float* u = unitChannels();
    const float cr = u[qRed(c)], cg = u[qGreen(c)], cb = u[qBlue(c)];
    auto colourDistance = [&](Slot& s) {
        const float dr = cr - u[qRed(s.colour)], dg = cg - u[qGreen(s.colour)], db = cb - u[qBlue(s.colour)];
        s.distance = std::sqrt(dr * dr + dg * dg + db * db);
    };
    Slot f[8];
    for (int i = 0; i < nf; ++i) {
        f[i] = fg[i];
        colourDistance(f[i]);
    }
    for (int j = 0; j < nb; ++j)
        colourDistance(bg[j]);
    float mF = 10000000000.0f, mB = 10000000000.0f;
    for (int i = 0; i < nf; ++i)
        mF = std::min(mF, f[i].distance);
    for (int j = 0; j < nb; ++j)
        mB = std::min(mB, bg[j].distance);
    const float mF2 = mF * mF, mB2 = mB * mB;

    // The Gaussian factors depend on one side only: once per slot, not per pair.
    float wb[8];
    for (int j = 0; j < nb; ++j)
        wb[j] = sideWeight(bg[j].distance, mB2);
    float pairAlpha[3], pairCost[3];
    int k = 0;
    for (int i = 0; i < nf; ++i) {
        const float fd = f[i].distance;
        const float wf = sideWeight(fd, mF2);
        const float Fr = u[qRed(f[i].colour)], Fg = u[qGreen(f[i].colour)], Fb = u[qBlue(f[i].colour)];
        for (int j = 0; j < nb; ++j) {
            const float bd = bg[j].distance;
            float s = fd + bd;
            if (s < 0.000001f)
                s = 0.000001f;
            const float a = bd / s;
            const float Br = u[qRed(bg[j].colour)], Bg = u[qGreen(bg[j].colour)], Bb = u[qBlue(bg[j].colour)];
            const float er = cr - (a * Fr + (1 - a) * Br);
            const float eg = cg - (a * Fg + (1 - a) * Bg);
            const float eb = cb - (a * Fb + (1 - a) * Bb);
            const float cost = wf * wb[j] * (er * er + eg * eg + eb * eb);
            if (k < 3) {
                pairAlpha[k] = a;
                pairCost[k] = cost;
                ++k;
                continue;
            }
            for (int q = 0; q < 3; ++q) {
                if (pairCost[q] > cost) {
                    pairAlpha[q] = a;
                    pairCost[q] = cost;
                    break;
                }
            }
        }
    }
    if (k == 0)
        return 0;
    float sum = 0;
    for (int q = 0; q < k; ++q)
        sum += pairAlpha[q];
    const int v = int(sum * 255.0 / k);
    return v < 0 ? 0 : v > 255 ? 255 : v;
}


// ---- trimap ---------------------------------------------------------------------------------

// Per-row work split over the cores: each part fills its own T from its rows, and the parts
// are returned in row order.
template <class T, class Body>
std::vector<T> rowParts(int H, Body&& body)
{
    std::vector<T> parts(size_t(parallelParts(H)));
    parallelParts(H, [&](int part, int top, int bottom) { body(parts[size_t(part)], top, bottom); });
    return parts;
}

// Foreground marks seed the foreground (and the flood), the green band is unknown, blue marks
// are background; everything else is not yet assigned.
std::vector<QPoint> seedTrimap(const ConstPixels& marks, const Pixels& trimap)
{
    auto parts = rowParts<std::vector<QPoint>>(trimap.height, [&](std::vector<QPoint>& seeds, int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            const QRgb* m = marks.row(y);
            QRgb* a = trimap.row(y);
            for (int x = 0; x < trimap.width; ++x) {
                if (redByte(m[x])) {
                    a[x] = trimapForeground;
                    seeds.emplace_back(x, y);
                } else if (greenByte(m[x])) {
                    a[x] = trimapUnknown;
                } else if (blueByte(m[x])) {
                    a[x] = trimapBackground;
                } else {
                    a[x] = 0u;
                }
            }
        }
    });
    return joined(parts);
}

// The foreground spreads to every unassigned pixel it reaches without crossing the band or a
// background mark. What is reached does not depend on the order, so the spread goes by runs
// along rows: a run is filled out from a foreground pixel, and the first pixel of every
// unassigned run touching it above and below is taken and followed in turn.
void floodForeground(std::vector<QPoint>& stack, const Pixels& trimap)
{
    const int W = trimap.width, H = trimap.height;
    while (!stack.empty()) {
        const QPoint p = stack.back();
        stack.pop_back();
        QRgb* row = trimap.row(p.y());
        int left = p.x(), right = p.x();
        while (left > 0 && row[left - 1] == 0u)
            row[--left] = trimapForeground;
        while (right < W - 1 && row[right + 1] == 0u)
            row[++right] = trimapForeground;
        for (const int y : {p.y() - 1, p.y() + 1}) {
            if (y < 0 || y >= H)
                continue;
            QRgb* next = trimap.row(y);
            for (int x = left; x <= right; ++x) {
                if (next[x] != 0u)
                    continue;
                next[x] = trimapForeground;
                stack.emplace_back(x, y);
                while (x < right && next[x + 1] == 0u)
                    ++x; // the rest of this run is filled from the pixel just taken
            }
        }
    }
}

// What the foreground did not reach is background. Returns the unknown pixels in row order.
std::vector<qsizetype> fillBackground(const Pixels& trimap)
{
    auto parts = rowParts<std::vector<qsizetype>>(trimap.height, [&](std::vector<qsizetype>& unknown, int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            QRgb* a = trimap.row(y);
            for (int x = 0; x < trimap.width; ++x) {
                if (a[x] == 0u)
                    a[x] = trimapBackground;
                else if (a[x] == trimapUnknown)
                    unknown.push_back(qsizetype(y) * trimap.width + x);
            }
        }
    });
    return joined(parts);
}

// The image and the trimap in the layout the grid search reads (see GridPlanes), each core
// writing whole plane rows, padding included.
GridPlanes gridPlanes(const ConstPixels& source, const Pixels& trimap)
{
    GridPlanes p;
    p.W = source.width;
    p.H = source.height;
    p.stride = (p.W + 3) / 4 + 8;
    const size_t plane = size_t(p.H + 32) * size_t(p.stride), body = 4 * plane;
    p.words.resize(body + GridPlanes::slack);
    std::fill(p.words.begin() + qsizetype(body), p.words.end(), 0u);
    for (int r = 0; r < 4; ++r) {
        QRgb* top = p.words.data() + size_t(r) * plane;
        std::fill(top, top + 16 * p.stride, 0u);
        std::fill(top + size_t(p.H + 16) * size_t(p.stride), top + plane, 0u);
    }
    parallelRanges(p.H, [&](int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            const QRgb* s = source.row(y);
            const QRgb* t = trimap.row(y);
            for (int r = 0; r < 4; ++r) {
                QRgb* out = p.words.data() + p.at(r, y) - 4;
                std::fill(out, out + 4, 0u);
                int q = 0;
                for (int x = r; x < p.W; x += 4, ++q) {
                    const QRgb side = t[x] == trimapForeground ? 1u : t[x] == trimapBackground ? 2u : 0u;
                    out[4 + q] = (s[x] & 0xFFFFFFu) | side << 24;
                }
                std::fill(out + 4 + q, out + p.stride, 0u);
            }
        }
    });
    return p;
}

// Shrinking: an unknown pixel takes the label of the first known pixel of (nearly) its colour
// on a sparse grid around it, pass after pass until nothing changes. Only unknown pixels act in
// a pass, so walking their list in row order is the full pass; assignments count at once for
// the pixels after them. A pixel can only find a match after one of its grid candidates was
// assigned, so an assignment marks the unknown pixels that look at it, and a pass visits only
// those (still in row order); a pass that assigns nothing leaves nothing to look at again.
bool shrinkUnknown(const ConstPixels& source, const Pixels& trimap, std::vector<qsizetype>& unknown,
                   const std::atomic<bool>& cancel)
{
    const int W = source.width;
    if (unknown.empty())
        return true;
    GridPlanes planes = gridPlanes(source, trimap);
    const auto gridMatch = kernels().gridMatch;
    // Per pixel, whether it is to be looked at (again); only unknown pixels ever are. Laid out
    // as the planes are, so the nine grid columns of a row are nine neighbouring bytes.
    std::vector<unsigned char> dirty(planes.words.size(), 0);
    std::vector<size_t> where(unknown.size());
    for (size_t n = 0; n < unknown.size(); ++n) {
        where[n] = planes.at(int(unknown[n] % W), int(unknown[n] / W));
        dirty[where[n]] = 1;
    }
    for (bool changed = true; changed;) {
        changed = false;
        for (size_t n = 0; n < unknown.size(); ++n) {
            const size_t at = where[n];
            if (!dirty[at])
                continue;
            dirty[at] = 0;
            if (planes.side(at))
                continue;
            const int side = gridMatch(planes, at);
            if (!side)
                continue;
            planes.setSide(at, side);
            changed = true;
            // The grid is symmetric: the pixels that have this one as a candidate are its own
            // candidates. Marking the padding is harmless: it is never visited.
            for (int j = -4; j <= 4; ++j)
                std::memset(dirty.data() + at - 4 + ptrdiff_t(4 * j) * planes.stride, 1, 9);
        }
        if (cancel)
            return false;
    }
    std::vector<qsizetype> left;
    for (size_t n = 0; n < unknown.size(); ++n) {
        const int side = planes.side(where[n]);
        if (side)
            trimap.at(unknown[n]) = side == 1 ? trimapForeground : trimapBackground;
        else
            left.push_back(unknown[n]);
    }
    unknown.swap(left);
    return true;
}

// Known pixels with an unknown 4-neighbour, per side, in row order.
void collectSamples(const ConstPixels& source, const Pixels& trimap, Samples& fg, Samples& bg)
{
    const int W = source.width, H = source.height;
    struct Found {
        Samples fg, bg;
    };
    std::vector<Found> parts = rowParts<Found>(H, [&](Found& found, int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            const QRgb* a = trimap.row(y);
            const QRgb* up = y > 0 ? trimap.row(y - 1) : nullptr;
            const QRgb* down = y < H - 1 ? trimap.row(y + 1) : nullptr;
            const QRgb* s = source.row(y);
            for (int x = 0; x < W; ++x) {
                if (a[x] != trimapForeground && a[x] != trimapBackground)
                    continue;
                const bool touches = (x > 0 && a[x - 1] == trimapUnknown) || (x < W - 1 && a[x + 1] == trimapUnknown)
                    || (up && up[x] == trimapUnknown) || (down && down[x] == trimapUnknown);
                if (!touches)
                    continue;
                Samples& side = a[x] == trimapBackground ? found.bg : found.fg;
                side.colour.push_back(s[x]);
                side.x.push_back(x);
                side.y.push_back(y);
            }
        }
    });
    for (Found& part : parts)
        for (auto [to, from] : {std::pair<Samples*, Samples*>{&fg, &part.fg}, {&bg, &part.bg}}) {
            to->colour.insert(to->colour.end(), from->colour.begin(), from->colour.end());
            to->x.insert(to->x.end(), from->x.begin(), from->x.end());
            to->y.insert(to->y.end(), from->y.begin(), from->y.end());
        }
    fg.index(H);
    bg.index(H);
}

// Each unknown pixel depends on the sample lists alone: they are estimated in parallel, several
// neighbours at a time in the sample search (as many as the processor's vectors hold). The cost varies widely (a pixel low in the band
// searches from its top), so work is handed out in small chunks; the greys are written once all
// are known.
bool estimateUnknown(const ConstPixels& source, const Pixels& trimap, const std::vector<qsizetype>& unknown,
                     const Samples& fgSamples, const Samples& bgSamples, const std::atomic<bool>& cancel)
{
    const int W = source.width, H = source.height;
    const int count = int(unknown.size());
    std::vector<int> values(unknown.size());
    const int lanes = kernels().lanes;
    parallelItems((count + lanes - 1) / lanes, 8, [&](int group) {
        if (cancel.load(std::memory_order_relaxed))
            return;
        // A short last group repeats its last pixel in the spare lanes.
        const int first = group * lanes, lanesUsed = std::min(lanes, count - first);
        int px[16], py[16];
        for (int l = 0; l < lanes; ++l) {
            const qsizetype i = unknown[size_t(first + std::min(l, lanesUsed - 1))];
            px[l] = int(i % W);
            py[l] = int(i / W);
        }
        LaneSlots fgSlots, bgSlots;
        const int nf = kernels().nearestSamples(fgSamples, px, py, H, fgSlots);
        const int nb = kernels().nearestSamples(bgSamples, px, py, H, bgSlots);
        for (int l = 0; l < lanesUsed; ++l) {
            if (!nf || !nb) {
                values[size_t(first + l)] = 0;
                continue;
            }
            Slot fg[8], bg[8];
            laneSlots(fgSamples, fgSlots, nf, l, fg);
            laneSlots(bgSamples, bgSlots, nb, l, bg);
            values[size_t(first + l)] = estimateAlpha(source.row(py[l])[px[l]], fg, nf, bg, nb);
        }
    });
    if (cancel)
        return false;
    for (size_t n = 0; n < unknown.size(); ++n)
        trimap.at(unknown[n]) = 0xFF000000u + QRgb(values[n]) * 0x010101u;
    return true;
}

// ---- result ---------------------------------------------------------------------------------

// The estimated matte in the result's alpha byte, before smoothing.
void previewResult(const ConstPixels& source, const Pixels& alpha, const Pixels& result)
{
    parallelRanges(source.height, [&](int first, int last) {
        const int W = source.width; // a copy: stores through the rows could change it, as far as the compiler knows
        for (int y = first; y < last; ++y) {
            const QRgb* s = source.row(y);
            const QRgb* a = alpha.row(y);
            QRgb* res = result.row(y);
            for (int x = 0; x < W; ++x)
                res[x] = (s[x] & 0x00FFFFFFu) + ((a[x] & 0xFFu) << 24);
        }
    });
}

AlphaBuffer floatAlpha(const Pixels& alpha)
{
    const int W = alpha.width;
    AlphaBuffer A(size_t(W) * size_t(alpha.height));
    parallelRanges(alpha.height, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            const QRgb* a = alpha.row(y);
            float* f = A.data() + qsizetype(y) * W;
            for (int x = 0; x < W; ++x)
                f[x] = float((a[x] & 0xFFu) / 255.0);
        }
    });
    return A;
}

void writeBack(const ConstPixels& source, const Pixels& alpha, const Pixels& result, const AlphaBuffer& A)
{
    parallelRanges(source.height, [&](int first, int last) {
        const int W = source.width; // a copy: stores through the rows could change it, as far as the compiler knows
        for (int y = first; y < last; ++y) {
            const QRgb* s = source.row(y);
            QRgb* res = result.row(y);
            QRgb* al = alpha.row(y);
            const float* f = A.data() + qsizetype(y) * W;
            for (int x = 0; x < W; ++x) {
                const int a8 = alphaByte(f[x]);
                res[x] = (s[x] & 0x00FFFFFFu) + (QRgb(a8) << 24);
                al[x] = 0xFF000000u + QRgb(a8) * 0x010101u;
            }
        }
    });
}

// The trimap as grey bytes (255 object, 0 background, 128 unknown) for `refine`.
QImage trimapBytes(const Pixels& trimap)
{
    QImage bytes(trimap.width, trimap.height, QImage::Format_Grayscale8);
    if (bytes.isNull())
        return bytes;
    for (int y = 0; y < trimap.height; ++y) {
        const QRgb* t = trimap.row(y);
        uchar* b = bytes.scanLine(y);
        for (int x = 0; x < trimap.width; ++x)
            b[x] = uchar(t[x] & 0xFFu);
    }
    return bytes;
}

} // namespace

int alphaFromSamples(QRgb colour, const QRgb* foreground, int nf, const QRgb* background, int nb)
{
    if (nf <= 0 || nb <= 0)
        return 0;
    Slot f[8], b[8];
    nf = std::min(nf, 8);
    nb = std::min(nb, 8);
    for (int i = 0; i < nf; ++i)
        f[i].colour = foreground[i];
    for (int j = 0; j < nb; ++j)
        b[j].colour = background[j];
    return estimateAlpha(colour, f, nf, b, nb);
}

void matte(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel)
{
    if (seg.sourceImage.isNull())
        return;
    const QString text = threadText(extracting);
    const QImage& src = seg.sourceImage;
    report.setPainting(false);
    report.progress(text, 0);
    if (src.depth() != 32 || !matches(seg.markImage, src) || !matches(seg.alphaImage, src)
        || !matches(seg.resultImage, src)) {
        // Images of different sizes cannot be read side by side: refused.
        report.progress(threadText(extractDone), 0);
        report.setPainting(true);
        return;
    }
    // Views once, here: the passes below run on several threads.
    const ConstPixels source = pixels(src), marks = pixels(seg.markImage);
    const Pixels alpha = writablePixels(seg.alphaImage), result = writablePixels(seg.resultImage);

    std::vector<QPoint> seeds = seedTrimap(marks, alpha);
    report.progress(text, 10);
    if (cancel)
        return;
    floodForeground(seeds, alpha);
    report.progress(text, 20);
    std::vector<qsizetype> unknown = fillBackground(alpha);
    // Refinement solves the whole band as drawn: the colour matching below settles pixels by
    // one exact match on a sparse grid, which is a guess the solver need not inherit.
    const QImage band = seg.refineEdges ? trimapBytes(alpha) : QImage();
    report.progress(text, 30);
    if (cancel)
        return;
    if (!shrinkUnknown(source, alpha, unknown, cancel))
        return;
    report.progress(text, 40);

    Samples fgSamples, bgSamples;
    collectSamples(source, alpha, fgSamples, bgSamples);
    report.progress(text, 50);
    if (cancel)
        return;
    if (!estimateUnknown(source, alpha, unknown, fgSamples, bgSamples, cancel))
        return;
    report.progress(text, 60);

    previewResult(source, alpha, result);
    report.progress(text, 70);

    AlphaBuffer A = floatAlpha(alpha), scratch;
    if (!smoothBorder(A, scratch, src, seg.markImage, 8, cancel))
        return;
    report.progress(text, 80);

    if (seg.refineEdges && !band.isNull()) {
        // The step's own matte starts the solve; a refusal (no known pixel) keeps that matte.
        const QString refineText = threadText(refining);
        std::vector<float> refined;
        const VexaQuickSelect::RefineResult outcome = refine(
            src, band, A.data(), refined, [&](int percent) { report.progress(refineText, percent); }, cancel);
        if (outcome == RefineResult::Cancelled)
            return;
        // Mid-byte values, so the write-back's truncation lands on the rounded byte.
        if (outcome == RefineResult::Done)
            for (size_t i = 0; i < refined.size(); ++i)
                A[i] = (float(refinedByte(refined[i])) + 0.5f) / 255.0f;
    }
    writeBack(source, alpha, result, A);
    report.checkViewAlpha();
    report.checkViewMatte();
    report.updateImageBox(QRect(0, 0, source.width, source.height));
    report.progress(threadText(extractDone), 0);
    report.setPainting(true);
}

} // namespace VexaQuickSelect
