// Quick select on a small picture with marks, both decoded from the input: init, mark and
// matte through the core's public steps, with what every result must satisfy checked.
//
// Input: width byte, height byte (1..256 each: from 128 rows on, the steps split their rows
// between two threads), sensitivity byte, steps byte (bit 0 mark, bit 1 matte, bit 2 noise),
// then one byte per pixel: bits 0-3 pick one of 16 colours, bits 4-5 the mark (0 none,
// 1 object, 2 background, 3 boundary). Noise varies each colour by a few levels from pixel to
// pixel, so that a picture has the hundreds of colours that the two-thread clustering needs.
// Missing bytes read as 0.
#include "VexaQuickSelectSteps.h"
#include "VexaSegmentation.h"

#include <QImage>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

[[noreturn]] void fail(const char* what, int x = -1, int y = -1)
{
    std::fprintf(stderr, "fuzz-quickselect: %s (%d, %d)\n", what, x, y);
    std::abort();
}

// Labels 0..N-1, each used, each region one 4-connected piece.
void checkRegions(const VexaSegmentation& seg)
{
    const int W = seg.sourceImage.width(), H = seg.sourceImage.height();
    const int N = int(seg.regionColors.size());
    if (seg.regionMap.size() != size_t(W) * size_t(H) || N < 1 || seg.regionSizes.size() != size_t(N)
        || seg.terminalWeights.size() != size_t(N) || !seg.graph || seg.graph->get_node_num() != N)
        fail("region data of the wrong size");
    std::vector<int> count(size_t(N), 0), first(size_t(N), -1);
    for (int i = 0; i < W * H; ++i) {
        const int r = seg.regionMap[size_t(i)];
        if (r < 0 || r >= N)
            fail("label out of range", i % W, i / W);
        if (count[size_t(r)]++ == 0)
            first[size_t(r)] = i;
    }
    std::vector<char> seen(size_t(W) * size_t(H), 0);
    std::vector<int> stack;
    for (int r = 0; r < N; ++r) {
        if (count[size_t(r)] == 0)
            fail("unused label");
        if (count[size_t(r)] != seg.regionSizes[size_t(r)])
            fail("region size differs from its pixel count");
        int reached = 0;
        stack.assign(1, first[size_t(r)]);
        seen[size_t(first[size_t(r)])] = 1;
        while (!stack.empty()) {
            const int i = stack.back();
            stack.pop_back();
            ++reached;
            const int x = i % W, y = i / W;
            const int next[4][2] = {{x - 1, y}, {x + 1, y}, {x, y - 1}, {x, y + 1}};
            for (const auto& n : next) {
                if (n[0] < 0 || n[1] < 0 || n[0] >= W || n[1] >= H)
                    continue;
                const int j = n[1] * W + n[0];
                if (!seen[size_t(j)] && seg.regionMap[size_t(j)] == r) {
                    seen[size_t(j)] = 1;
                    stack.push_back(j);
                }
            }
        }
        if (reached != count[size_t(r)])
            fail("region not 4-connected", first[size_t(r)] % W, first[size_t(r)] / W);
    }
}

// The matte is opaque grey, the result carries it in its alpha over the source colour, and
// the marks given to the step hold: object marks 255, background marks 0.
void checkMatte(const VexaSegmentation& seg, const QImage& marks)
{
    for (int y = 0; y < seg.sourceImage.height(); ++y) {
        for (int x = 0; x < seg.sourceImage.width(); ++x) {
            const QRgb a = seg.alphaImage.pixel(x, y), r = seg.resultImage.pixel(x, y), s = seg.sourceImage.pixel(x, y);
            const int v = qBlue(a);
            if (a != 0xFF000000u + uint(v) * 0x010101u)
                fail("matte pixel not opaque grey", x, y);
            if (uint(qAlpha(r)) != uint(v) || (r & 0x00FFFFFFu) != (s & 0x00FFFFFFu))
                fail("result pixel does not carry the matte over the source", x, y);
            const QRgb m = marks.pixel(x, y);
            if (qRed(m) && v != 255)
                fail("object mark not selected", x, y);
            if (!qRed(m) && qBlue(m) && v != 0)
                fail("background mark selected", x, y);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    auto byte = [&](size_t i) { return i < size ? data[i] : uint8_t(0); };
    const int W = 1 + byte(0), H = 1 + byte(1);
    const bool noise = byte(3) & 4;
    static const QRgb palette[16] = {0xFF000000, 0xFFFFFFFF, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF808080,
                                     0xFF804020, 0xFF2040A0, 0xFFF0E0D0, 0xFF102030, 0xFF7F7F80, 0xFF808081,
                                     0xFFFFFF00, 0xFF00FFFF, 0xFFC0C0C0, 0xFF404040};
    static const QRgb markColour[4] = {0, VexaSegmentation::ForegroundMark, VexaSegmentation::BackgroundMark,
                                       VexaSegmentation::BoundaryMark};
    QImage picture(W, H, QImage::Format_ARGB32);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            picture.setPixel(x, y, palette[byte(4 + size_t(y) * size_t(W) + size_t(x)) & 15] ^ (noise ? uint(x * 7 + y * 13) % 8 * 0x010203u : 0u));

    VexaSegmentation seg;
    seg.load(picture);
    if (seg.sourceImage.size() != picture.size())
        fail("a small picture was scaled");
    seg.sensitivity = byte(2) % 101;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            seg.markImage.setPixel(x, y, markColour[(byte(4 + size_t(y) * size_t(W) + size_t(x)) >> 4) & 3]);

    VexaQuickSelectQuietReporter report;
    const std::atomic<bool> never{false};
    VexaQuickSelect::init(seg, report, never);
    checkRegions(seg);
    if (byte(3) & 1) {
        const QImage marks = seg.markImage.copy();
        const QImage alphaBefore = seg.alphaImage.copy(), resultBefore = seg.resultImage.copy();
        VexaQuickSelect::mark(seg, report, never);
        if (report.message.isEmpty()) {
            checkMatte(seg, marks);
        } else if (seg.alphaImage != alphaBefore || seg.resultImage != resultBefore || seg.markImage != marks) {
            fail("a mark step that asked for marks changed the matte");
        }
        checkRegions(seg);
    }
    if (byte(3) & 2) {
        const QImage marks = seg.markImage.copy();
        VexaQuickSelect::matte(seg, report, never);
        checkMatte(seg, marks);
        if (seg.markImage != marks)
            fail("the matte step changed the marks");
    }
    return 0;
}
