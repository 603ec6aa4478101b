#include "VexaWatershed.h"

#include "VexaParallel.h"

int watershed(QImage const& image, std::vector<int>& labels)
{
    static const std::atomic<bool> never{false};
    return watershed(image, labels, never);
}

int watershed(QImage const& image, std::vector<int>& labels, const std::atomic<bool>& cancel)
{
    return watershed(image, labels, cancel, nullptr);
}

int watershed(QImage const& image, std::vector<int>& labels, const std::atomic<bool>& cancel,
              std::atomic<int>* rowsFinal)
{
    const int W = image.width(), H = image.height();
    labels.assign(size_t(W) * size_t(H), -1);
    if (W <= 0 || H <= 0)
        return 0;
    const QImage src = image.format() == QImage::Format_ARGB32 || image.format() == QImage::Format_RGB32
        ? image
        : image.convertToFormat(QImage::Format_ARGB32);

    // Squared central differences, neighbours clamped to the image; the pixel itself takes no part.
    // Every value is written below, on both cores: no zero-filling on one core first.
    std::vector<int, FilledLater<int>> g(size_t(W) * size_t(H));
    auto sq = [](int d) { return d * d; };
    parallelRanges(H, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            const auto* up = reinterpret_cast<const QRgb*>(src.constScanLine(y > 0 ? y - 1 : y));
            const auto* row = reinterpret_cast<const QRgb*>(src.constScanLine(y));
            const auto* down = reinterpret_cast<const QRgb*>(src.constScanLine(y < H - 1 ? y + 1 : y));
            int* out = g.data() + size_t(y) * size_t(W);
            for (int x = 0; x < W; ++x) {
                const QRgb l = row[x > 0 ? x - 1 : x], r = row[x < W - 1 ? x + 1 : x];
                const QRgb u = up[x], d = down[x];
                out[x] = sq(qRed(l) - qRed(r)) + sq(qRed(u) - qRed(d)) + sq(qGreen(l) - qGreen(r)) + sq(qGreen(u) - qGreen(d))
                    + sq(qBlue(l) - qBlue(r)) + sq(qBlue(u) - qBlue(d));
            }
        }
    });

    int regions = 0;
    // A first-in first-out queue over one buffer: each pixel enters it at most once per
    // descent and once per flood, so a run never needs more than twice the pixel count.
    // Left uninitialised: only the pages a run reaches are ever touched.
    std::vector<int, FilledLater<int>> queue(2 * size_t(W) * size_t(H) + 1);
    const int total = W * H;
    for (int p = 0; p < total; ++p) {
        if (p % W == 0) {
            // Every pixel of the rows before this one is labelled, and labels never change.
            if (rowsFinal && p > 0)
                rowsFinal->store(p / W, std::memory_order_release);
            if (cancel.load(std::memory_order_relaxed))
                break;
        }
        if (labels[size_t(p)] >= 0)
            continue;
        size_t head = 0, tail = 0;
        queue[tail++] = p;
        // Descent: follow the first strictly lower unlabelled neighbour (left, right, up, down)
        // down to a local minimum.
        for (;;) {
            const int cur = queue[head++];
            const int x = cur % W, y = cur / W;
            const int gc = g[size_t(cur)];
            int next = -1;
            if (x > 0 && labels[size_t(cur - 1)] < 0 && g[size_t(cur - 1)] < gc)
                next = cur - 1;
            else if (x < W - 1 && labels[size_t(cur + 1)] < 0 && g[size_t(cur + 1)] < gc)
                next = cur + 1;
            else if (y > 0 && labels[size_t(cur - W)] < 0 && g[size_t(cur - W)] < gc)
                next = cur - W;
            else if (y < H - 1 && labels[size_t(cur + W)] < 0 && g[size_t(cur + W)] < gc)
                next = cur + W;
            if (next >= 0) {
                queue[tail++] = next;
                continue;
            }
            labels[size_t(cur)] = regions++;
            queue[tail++] = cur;
            break;
        }
        // Flood: climb along non-decreasing gradients through unlabelled pixels. The tests go
        // without branches (an outcome per neighbour is a coin toss the processor would often
        // guess wrong): a neighbour's label is written back as it is when not taken, and the
        // queue's next slot is written and kept only when taken. Rows above the scan are final
        // and being read meanwhile, so above the scan's row a label is written only when taken.
        const int scanRowEnd = p - p % W + W;
        int* const label = labels.data();
        const int* const grad = g.data();
        int* const fifo = queue.data();
        // A flat area can flood a large part of the image from one seed: the cancel flag is
        // looked at every 65536 pixels of a flood too, not only once per row of the scan.
        size_t nextCheck = head + 65536;
        while (head < tail) {
            if (head == nextCheck) {
                if (cancel.load(std::memory_order_relaxed))
                    break;
                nextCheck += 65536;
            }
            const int cur = fifo[head++];
            const int x = cur % W;
            const int own = label[cur], gc = grad[cur];
            auto take = [&](int n, bool inside) {
                const bool taken = inside & (label[n] < 0) & (grad[n] >= gc);
                label[n] = taken ? own : label[n];
                fifo[tail] = n;
                tail += taken;
            };
            take(x > 0 ? cur - 1 : cur, x > 0);
            take(x < W - 1 ? cur + 1 : cur, x < W - 1);
            if (cur >= scanRowEnd) {
                take(cur - W, true);
            } else if (cur >= W && label[cur - W] < 0 && grad[cur - W] >= gc) {
                label[cur - W] = own;
                fifo[tail++] = cur - W;
            }
            take(cur < total - W ? cur + W : cur, cur < total - W);
        }
        if (head < tail)
            break; // cancelled part way through the flood
    }
    if (rowsFinal && !cancel.load(std::memory_order_relaxed))
        rowsFinal->store(H, std::memory_order_release);
    return regions;
}
