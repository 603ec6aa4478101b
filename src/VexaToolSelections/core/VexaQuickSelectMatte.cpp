// The alpha extraction step: a trimap from the marks and the boundary band, the unknown zone
// shrunk by colour matches on a sparse grid, alpha from pairs of nearby boundary samples, then
// the shared border smoothing.
#include "VexaQuickSelectSteps.h"

#include "VexaParallel.h"
#include "VexaQuickSelectShared.h"
#include "VexaSegmentation.h"

#include <algorithm>
#include <cmath>
#include <deque>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace VexaQuickSelect {

using namespace detail;

namespace {

const char* const extracting = QT_TRANSLATE_NOOP("Thread", "Alpha Extracting ..");
const char* const extractDone = QT_TRANSLATE_NOOP("Thread", "Alpha Extract done ..");

// Boundary samples of one side, in the order found (row order), with where each row starts.
struct Samples {
    std::vector<QRgb> colour;
    std::vector<int> x, y;
    std::vector<int> rowStart; // H + 1 entries

    void index(int H)
    {
        rowStart.assign(size_t(H) + 1, 0);
        for (int v : y)
            ++rowStart[size_t(v) + 1];
        for (int r = 0; r < H; ++r)
            rowStart[size_t(r) + 1] += rowStart[size_t(r)];
    }
    size_t size() const { return colour.size(); }
};

struct Slot {
    QRgb colour;
    float distance;
};

// The eight slots of one side while the samples are visited: their distances (squared pixel
// distances, exact in an int) and the list index of the sample each holds.
#ifdef __SSE2__
// Kept in registers: nearly every sample the search looks at replaces a slot, and writing one
// lane to memory only to load all eight again for the next sample stalls on every sample.
class SlotSet
{
public:
    void set(const int* dist, const int* index)
    {
        m_lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(dist));
        m_hi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(dist + 4));
        m_ilo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(index));
        m_ihi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(index + 4));
        m_first = dist[0];
        updateFarthest();
    }
    int farthest() const { return m_farthest; }
    // Puts sample `index` at distance d into the first slot farther than d (d < farthest()).
    void offer(int d, int index)
    {
        if (d < m_first) {
            // The first slot is farther: the commonest case, one lane to replace.
            const bool wasFarthest = m_first == m_farthest;
            m_lo = _mm_castps_si128(_mm_move_ss(_mm_castsi128_ps(m_lo), _mm_castsi128_ps(_mm_cvtsi32_si128(d))));
            m_ilo = _mm_castps_si128(_mm_move_ss(_mm_castsi128_ps(m_ilo), _mm_castsi128_ps(_mm_cvtsi32_si128(index))));
            m_first = d;
            if (wasFarthest)
                updateFarthest();
            return;
        }
        const __m128i v = _mm_set1_epi32(d);
        const int mask = _mm_movemask_ps(_mm_castsi128_ps(_mm_cmpgt_epi32(m_lo, v)))
            | (_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpgt_epi32(m_hi, v))) << 4);
        const int k = __builtin_ctz(unsigned(mask));
        const __m128i f = _mm_set1_epi32(m_farthest);
        const int wasFarthest = (_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(m_lo, f)))
                                 | (_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(m_hi, f))) << 4))
            & (1 << k);
        const __m128i lane = _mm_set1_epi32(k);
        const __m128i selLo = _mm_cmpeq_epi32(lane, _mm_setr_epi32(0, 1, 2, 3));
        const __m128i selHi = _mm_cmpeq_epi32(lane, _mm_setr_epi32(4, 5, 6, 7));
        const __m128i vi = _mm_set1_epi32(index);
        m_lo = _mm_or_si128(_mm_andnot_si128(selLo, m_lo), _mm_and_si128(selLo, v));
        m_hi = _mm_or_si128(_mm_andnot_si128(selHi, m_hi), _mm_and_si128(selHi, v));
        m_ilo = _mm_or_si128(_mm_andnot_si128(selLo, m_ilo), _mm_and_si128(selLo, vi));
        m_ihi = _mm_or_si128(_mm_andnot_si128(selHi, m_ihi), _mm_and_si128(selHi, vi));
        // Only a replaced farthest slot can lower the bound.
        if (wasFarthest)
            updateFarthest();
    }
    void get(int* dist, int* index) const
    {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dist), m_lo);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dist + 4), m_hi);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(index), m_ilo);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(index + 4), m_ihi);
    }

private:
    void updateFarthest()
    {
        int d[8];
        _mm_storeu_si128(reinterpret_cast<__m128i*>(d), m_lo);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 4), m_hi);
        m_farthest = *std::max_element(d, d + 8);
    }
    __m128i m_lo, m_hi, m_ilo, m_ihi;
    int m_first = 0; // the distance in the first slot
    int m_farthest = 0;
};
#else
class SlotSet
{
public:
    void set(const int* dist, const int* index)
    {
        std::copy(dist, dist + 8, m_dist);
        std::copy(index, index + 8, m_index);
        m_farthest = *std::max_element(m_dist, m_dist + 8);
    }
    int farthest() const { return m_farthest; }
    void offer(int d, int index)
    {
        int k = 0;
        while (m_dist[k] <= d)
            ++k;
        const bool wasFarthest = m_dist[k] == m_farthest;
        m_dist[k] = d;
        m_index[k] = index;
        if (wasFarthest)
            m_farthest = *std::max_element(m_dist, m_dist + 8);
    }
    void get(int* dist, int* index) const
    {
        std::copy(m_dist, m_dist + 8, dist);
        std::copy(m_index, m_index + 8, index);
    }

private:
    int m_dist[8];
    int m_index[8];
    int m_farthest = 0;
};
#endif

// The sample slots of the nearest-sample rule: the first 8 samples fill them, and each later sample
// replaces the first slot (in slot order) that is strictly farther than itself. Slot distances
// only ever shrink, so a sample at least as far as the farthest slot at its turn changes
// nothing; rows (and columns within a row) that far are skipped. The result is the slots that
// visiting every sample in list order gives.
int nearestSamples(const Samples& s, int x, int y, int H, Slot* chosen)
{
    const int n = int(s.size());
    const int filled = std::min(8, n);
    int dist[8], index[8];
    for (int k = 0; k < filled; ++k) {
        const int dx = s.x[size_t(k)] - x, dy = s.y[size_t(k)] - y;
        dist[k] = dx * dx + dy * dy;
        index[k] = k;
    }
    if (n > 8) {
        SlotSet slots8;
        slots8.set(dist, index);
        const int* sx = s.x.data();
        // Rows above y whose distance alone reaches the farthest slot cannot contribute.
        int r = s.y[8];
        if (r < y)
            r = std::max(r, y - int(std::sqrt(double(slots8.farthest()))));
        for (; r < H; ++r) {
            const int dy2 = (r - y) * (r - y);
            if (dy2 >= slots8.farthest()) {
                if (r > y)
                    break;
                // Still out of reach above the pixel: go straight to the first row within it.
                r = std::max(r, y - int(std::sqrt(double(slots8.farthest())))) - 1;
                continue;
            }
            int begin = std::max(s.rowStart[size_t(r)], 8);
            int end = s.rowStart[size_t(r) + 1];
            if (begin >= end)
                continue;
            if (end - begin > 16) {
                // A long row: columns with dx^2 >= farthest - dy2 cannot contribute either.
                const int maxDx = int(std::sqrt(double(slots8.farthest() - dy2 - 1)));
                begin = int(std::lower_bound(sx + begin, sx + end, x - maxDx) - sx);
                end = int(std::upper_bound(sx + begin, sx + end, x + maxDx) - sx);
            }
            for (int k = begin; k < end; ++k) {
                const int d = (sx[k] - x) * (sx[k] - x) + dy2;
                if (d < slots8.farthest())
                    slots8.offer(d, k);
                else if (sx[k] > x)
                    break; // right of the pixel distances only grow, and the bound only shrinks
            }
        }
        slots8.get(dist, index);
    }
    for (int k = 0; k < filled; ++k) {
        chosen[k].colour = s.colour[size_t(index[k])];
        chosen[k].distance = float(dist[k]);
    }
    return filled;
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

// Foreground marks seed the foreground (and the flood queue), the green band is unknown, blue
// marks are background; everything else is not yet assigned.
std::deque<qsizetype> seedTrimap(const ConstPixels& marks, const Pixels& trimap)
{
    std::deque<qsizetype> queue;
    for (int y = 0; y < trimap.height; ++y) {
        const QRgb* m = marks.row(y);
        QRgb* a = trimap.row(y);
        for (int x = 0; x < trimap.width; ++x) {
            if (redByte(m[x])) {
                a[x] = trimapForeground;
                queue.push_back(qsizetype(y) * trimap.width + x);
            } else if (greenByte(m[x])) {
                a[x] = trimapUnknown;
            } else if (blueByte(m[x])) {
                a[x] = trimapBackground;
            } else {
                a[x] = 0u;
            }
        }
    }
    return queue;
}

// The foreground spreads to every unassigned pixel it reaches without crossing the band or a
// background mark.
void floodForeground(std::deque<qsizetype>& queue, const Pixels& trimap)
{
    const int W = trimap.width, H = trimap.height;
    while (!queue.empty()) {
        const qsizetype i = queue.front();
        queue.pop_front();
        const int x = int(i % W), y = int(i / W);
        auto grow = [&](qsizetype n) {
            QRgb& w = trimap.at(n);
            if (w == 0u) {
                w = trimapForeground;
                queue.push_back(n);
            }
        };
        if (x > 0)
            grow(i - 1);
        if (x < W - 1)
            grow(i + 1);
        if (y > 0)
            grow(i - W);
        if (y < H - 1)
            grow(i + W);
    }
}

// What the foreground did not reach is background. Returns the unknown pixels in row order.
std::vector<qsizetype> fillBackground(const Pixels& trimap)
{
    std::vector<qsizetype> unknown;
    for (int y = 0; y < trimap.height; ++y) {
        QRgb* a = trimap.row(y);
        for (int x = 0; x < trimap.width; ++x) {
            if (a[x] == 0u)
                a[x] = trimapBackground;
            else if (a[x] == trimapUnknown)
                unknown.push_back(qsizetype(y) * trimap.width + x);
        }
    }
    return unknown;
}

// The first known candidate on the grid of step 4 around (x, y) whose colour is within 0.01 of
// C (squared, over single-precision fractions), or 0.
inline QRgb gridMatch(const ConstPixels& source, const Pixels& trimap, int x, int y)
{
    const float* u = unitChannels();
    const QRgb c = source.row(y)[x];
    const float cr = u[qRed(c)], cg = u[qGreen(c)], cb = u[qBlue(c)];
    for (int j = -4; j <= 4; ++j) {
        const int yy = y + 4 * j;
        if (yy < 0 || yy >= source.height)
            continue;
        const QRgb* arow = trimap.row(yy);
        const QRgb* srow = source.row(yy);
        for (int k = -4; k <= 4; ++k) {
            const int xx = x + 4 * k;
            if ((j == 0 && k == 0) || xx < 0 || xx >= source.width || arow[xx] == trimapUnknown)
                continue;
            const QRgb d = srow[xx];
            const float dr = cr - u[qRed(d)], dg = cg - u[qGreen(d)], db = cb - u[qBlue(d)];
            if (dr * dr + dg * dg + db * db < 0.0001f)
                return arow[xx];
        }
    }
    return 0u;
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
    const int W = source.width, H = source.height;
    std::vector<int> positionOf(size_t(W) * size_t(H), -1); // unknown pixel -> index in `unknown`
    for (size_t n = 0; n < unknown.size(); ++n)
        positionOf[size_t(unknown[n])] = int(n);
    std::vector<char> dirty(unknown.size(), 1);
    for (bool changed = true; changed;) {
        changed = false;
        for (size_t n = 0; n < unknown.size(); ++n) {
            if (!dirty[n])
                continue;
            dirty[n] = 0;
            const qsizetype i = unknown[n];
            const int x = int(i % W), y = int(i / W);
            const QRgb label = gridMatch(source, trimap, x, y);
            if (!label)
                continue;
            trimap.row(y)[x] = label;
            changed = true;
            positionOf[size_t(i)] = -1;
            // The grid is symmetric: the pixels that have this one as a candidate are its own
            // candidates.
            for (int j = -4; j <= 4; ++j) {
                const int yy = y + 4 * j;
                if (yy < 0 || yy >= H)
                    continue;
                for (int k = -4; k <= 4; ++k) {
                    const int xx = x + 4 * k;
                    if (xx < 0 || xx >= W)
                        continue;
                    const int at = positionOf[size_t(yy) * size_t(W) + size_t(xx)];
                    if (at >= 0)
                        dirty[size_t(at)] = 1;
                }
            }
        }
        if (cancel)
            return false;
    }
    unknown.erase(std::remove_if(unknown.begin(), unknown.end(), [&](qsizetype i) { return trimap.at(i) != trimapUnknown; }),
                  unknown.end());
    return true;
}

// Known pixels with an unknown 4-neighbour, per side, in row order.
void collectSamples(const ConstPixels& source, const Pixels& trimap, Samples& fg, Samples& bg)
{
    const int W = source.width, H = source.height;
    for (int y = 0; y < H; ++y) {
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
            Samples& side = a[x] == trimapBackground ? bg : fg;
            side.colour.push_back(s[x]);
            side.x.push_back(x);
            side.y.push_back(y);
        }
    }
    fg.index(H);
    bg.index(H);
}

// Each unknown pixel depends on the sample lists alone: they are estimated in parallel. The
// cost per pixel varies widely (a pixel low in the band searches from its top), so work is
// handed out in small chunks; the greys are written once all are known.
bool estimateUnknown(const ConstPixels& source, const Pixels& trimap, const std::vector<qsizetype>& unknown,
                     const Samples& fgSamples, const Samples& bgSamples, const std::atomic<bool>& cancel)
{
    const int W = source.width, H = source.height;
    std::vector<int> values(unknown.size());
    parallelItems(int(unknown.size()), 64, [&](int n) {
        if (cancel.load(std::memory_order_relaxed))
            return;
        Slot fg[8], bg[8];
        const qsizetype i = unknown[size_t(n)];
        const int x = int(i % W), y = int(i / W);
        const int nf = nearestSamples(fgSamples, x, y, H, fg);
        const int nb = nearestSamples(bgSamples, x, y, H, bg);
        values[size_t(n)] = nf && nb ? estimateAlpha(source.row(y)[x], fg, nf, bg, nb) : 0;
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
        for (int y = first; y < last; ++y) {
            const QRgb* s = source.row(y);
            const QRgb* a = alpha.row(y);
            QRgb* res = result.row(y);
            for (int x = 0; x < source.width; ++x)
                res[x] = (s[x] & 0x00FFFFFFu) + ((a[x] & 0xFFu) << 24);
        }
    });
}

std::vector<float> floatAlpha(const Pixels& alpha)
{
    const int W = alpha.width;
    std::vector<float> A(size_t(W) * size_t(alpha.height));
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

void writeBack(const ConstPixels& source, const Pixels& alpha, const Pixels& result, const std::vector<float>& A)
{
    const int W = source.width;
    parallelRanges(source.height, [&](int first, int last) {
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

    std::deque<qsizetype> queue = seedTrimap(marks, alpha);
    report.progress(text, 10);
    if (cancel)
        return;
    floodForeground(queue, alpha);
    report.progress(text, 20);
    std::vector<qsizetype> unknown = fillBackground(alpha);
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

    std::vector<float> A = floatAlpha(alpha);
    if (!smoothBorder(A, src, seg.markImage, 8, cancel))
        return;
    report.progress(text, 80);

    writeBack(source, alpha, result, A);
    report.checkViewAlpha();
    report.checkViewMatte();
    report.updateImageBox(QRect(0, 0, source.width, source.height));
    report.progress(threadText(extractDone), 0);
    report.setPainting(true);
}

} // namespace VexaQuickSelect
