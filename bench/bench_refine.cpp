// Edge refinement against the quick select matte step on composites whose alpha is known:
// procedurally drawn hair-like strands, fur tufts, a motion-blurred shape, a semi-transparent
// glass edge and a plain anti-aliased shape, each in 8 bits, laid over the sample photos (one
// photo as the object's colours, another as the background). The trimap is the true alpha's
// object eroded and its support dilated. For every composite: SAD (sum of absolute alpha
// errors over the unknown pixels, in thousands, alpha 0..1), MSE (mean squared error over the
// unknown pixels, times 1000) and gradient error (squared differences of Gaussian gradient
// magnitudes, sigma 1.4, in thousands) of the matte step given the trimap as marks, of refine
// from the trimap, and of the matte step with refinement as the window runs it; then the time
// per megapixel of unknown pixels. Last, refine at 1536 x 1536 with a 20 % unknown band:
// median time and the process's peak memory.
//
//   bench-refine [runs]    (runs of the large case, default 3; 0 skips it)
#include "VexaQuickSelectSteps.h"
#include "VexaRefine.h"
#include "VexaSegmentation.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <sys/resource.h>
#include <vector>

namespace {

using Alpha = std::vector<uint8_t>;

double cpuMs()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

long peakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// Draws white on black with anti-aliasing; the red byte becomes the alpha.
Alpha paint(int W, int H, const std::function<void(QPainter&)>& draw)
{
    QImage canvas(W, H, QImage::Format_RGB32);
    canvas.fill(Qt::black);
    {
        QPainter p(&canvas);
        p.setRenderHint(QPainter::Antialiasing);
        draw(p);
    }
    Alpha a(size_t(W) * size_t(H));
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            a[size_t(y) * W + x] = uint8_t(qRed(canvas.pixel(x, y)));
    return a;
}

// Strands leaving the edge of an ellipse: `count` curves of `minLength`..`maxLength` pixels,
// pens of 0.6..1.6 pixels, some see-through, as hair or fur shows against a background.
void strands(QPainter& p, const QRectF& body, int count, double minLength, double maxLength, double spread,
             double fromAngle, double toAngle, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const QPointF c = body.center();
    for (int k = 0; k < count; ++k) {
        const double t = fromAngle + (toAngle - fromAngle) * unit(rng);
        const QPointF start(c.x() + body.width() / 2 * std::cos(t) * 0.97, c.y() + body.height() / 2 * std::sin(t) * 0.97);
        const double dir = t + (unit(rng) - 0.5) * spread, bend = (unit(rng) - 0.5) * 1.2;
        const double length = minLength + (maxLength - minLength) * unit(rng);
        auto along = [&](double s, double turn) {
            return start + QPointF(std::cos(dir + turn * s), std::sin(dir + turn * s)) * (length * s);
        };
        QPainterPath path(start);
        path.cubicTo(along(0.33, bend * 0.5), along(0.66, bend), along(1.0, bend * 1.2));
        QColor ink = Qt::white;
        ink.setAlphaF(0.55 + 0.45 * unit(rng));
        p.setPen(QPen(ink, 0.6 + unit(rng), Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawPath(path);
    }
}

Alpha hair(int W, int H)
{
    return paint(W, H, [&](QPainter& p) {
        const QRectF body(W * 0.28, H * 0.35, W * 0.44, H * 0.6);
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        p.drawEllipse(body);
        strands(p, body, 700 * W / 640, 25, 0.14 * W, 0.5, -M_PI, 0.0, 7);
    });
}

Alpha fur(int W, int H)
{
    return paint(W, H, [&](QPainter& p) {
        const QRectF body(W * 0.25, H * 0.25, W * 0.5, H * 0.5);
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        p.drawEllipse(body);
        strands(p, body, 4000 * W / 640, 5, 16, 0.9, 0.0, 2 * M_PI, 11);
    });
}

Alpha motionBlur(int W, int H)
{
    Alpha shape = paint(W, H, [&](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        p.drawRoundedRect(QRectF(W * 0.3, H * 0.25, W * 0.35, H * 0.5), 30, 30);
        p.drawEllipse(QRectF(W * 0.55, H * 0.15, W * 0.15, H * 0.25));
    });
    // A horizontal box blur of 31 pixels, rounded back to bytes.
    Alpha out(shape.size());
    const int r = 15;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            int s = 0;
            for (int k = -r; k <= r; ++k)
                s += shape[size_t(y) * W + std::clamp(x + k, 0, W - 1)];
            out[size_t(y) * W + x] = uint8_t((s + r) / (2 * r + 1));
        }
    return out;
}

Alpha glass(int W, int H)
{
    return paint(W, H, [&](QPainter& p) {
        const QRectF bowl(W * 0.25, H * 0.2, W * 0.5, H * 0.65);
        // A see-through body darker towards one side, an opaque rim and a soft highlight.
        QLinearGradient body(bowl.topLeft(), bowl.topRight());
        body.setColorAt(0.0, QColor(70, 70, 70));
        body.setColorAt(1.0, QColor(150, 150, 150));
        p.setPen(QPen(Qt::white, 8));
        p.setBrush(body);
        p.drawEllipse(bowl);
        QRadialGradient shine(bowl.center() + QPointF(-W * 0.08, -H * 0.12), W * 0.08);
        shine.setColorAt(0.0, QColor(220, 220, 220));
        shine.setColorAt(1.0, QColor(220, 220, 220, 0));
        p.setPen(Qt::NoPen);
        p.setBrush(shine);
        p.drawEllipse(bowl.center() + QPointF(-W * 0.08, -H * 0.12), W * 0.08, W * 0.08);
    });
}

Alpha antiAliased(int W, int H)
{
    return paint(W, H, [&](QPainter& p) {
        QPolygonF star;
        for (int k = 0; k < 14; ++k) {
            const double t = k * M_PI / 7, r = (k % 2 ? 0.2 : 0.42) * std::min(W, H);
            star << QPointF(W / 2 + r * std::cos(t + 0.1), H / 2 + r * std::sin(t + 0.1));
        }
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::white);
        p.drawPolygon(star);
    });
}

// Square min (erode) or max (dilate) filter of radius r over a 0/1 map, separably.
std::vector<uint8_t> squareFilter(const std::vector<uint8_t>& in, int W, int H, int r, bool grow)
{
    std::vector<uint8_t> tmp(in.size()), out(in.size());
    auto pick = [grow](uint8_t a, uint8_t b) { return grow ? std::max(a, b) : std::min(a, b); };
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            uint8_t v = in[size_t(y) * W + x];
            for (int k = std::max(0, x - r); k <= std::min(W - 1, x + r); ++k)
                v = pick(v, in[size_t(y) * W + k]);
            tmp[size_t(y) * W + x] = v;
        }
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            uint8_t v = tmp[size_t(y) * W + x];
            for (int k = std::max(0, y - r); k <= std::min(H - 1, y + r); ++k)
                v = pick(v, tmp[size_t(k) * W + x]);
            out[size_t(y) * W + x] = v;
        }
    return out;
}

// 255 where the object survives erosion by r, 0 outside the support dilated by r, else 128.
QImage trimapOf(const Alpha& a, int W, int H, int r)
{
    std::vector<uint8_t> solid(a.size()), support(a.size());
    for (size_t i = 0; i < a.size(); ++i) {
        solid[i] = a[i] == 255;
        support[i] = a[i] > 0;
    }
    const std::vector<uint8_t> fg = squareFilter(solid, W, H, r, false), any = squareFilter(support, W, H, r, true);
    QImage t(W, H, QImage::Format_Grayscale8);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const size_t i = size_t(y) * W + x;
            t.scanLine(y)[x] = fg[i] ? 255 : any[i] ? 128 : 0;
        }
    return t;
}

QImage composite(const Alpha& a, const QImage& fg, const QImage& bg)
{
    QImage out(fg.size(), QImage::Format_ARGB32);
    for (int y = 0; y < out.height(); ++y)
        for (int x = 0; x < out.width(); ++x) {
            const double al = a[size_t(y) * out.width() + x] / 255.0;
            const QRgb f = fg.pixel(x, y), b = bg.pixel(x, y);
            auto mix = [&](int cf, int cb) { return int(std::lround(al * cf + (1 - al) * cb)); };
            out.setPixel(x, y, qRgb(mix(qRed(f), qRed(b)), mix(qGreen(f), qGreen(b)), mix(qBlue(f), qBlue(b))));
        }
    return out;
}

// Gaussian derivative magnitudes, sigma 1.4, of an alpha 0..1.
std::vector<double> gradient(const Alpha& a, int W, int H)
{
    const double sigma = 1.4;
    const int R = 4;
    double g[2 * R + 1], d[2 * R + 1];
    for (int k = -R; k <= R; ++k) {
        g[k + R] = std::exp(-k * k / (2 * sigma * sigma));
        d[k + R] = -k * g[k + R] / (sigma * sigma);
    }
    double gs = 0;
    for (double v : g)
        gs += v;
    for (int k = 0; k <= 2 * R; ++k) {
        g[k] /= gs;
        d[k] /= gs;
    }
    auto at = [&](int x, int y) { return a[size_t(std::clamp(y, 0, H - 1)) * W + std::clamp(x, 0, W - 1)] / 255.0; };
    std::vector<double> sx(a.size()), sy(a.size()), out(a.size());
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            double u = 0, v = 0;
            for (int k = -R; k <= R; ++k) {
                u += d[k + R] * at(x + k, y);
                v += g[k + R] * at(x + k, y);
            }
            sx[size_t(y) * W + x] = u;
            sy[size_t(y) * W + x] = v;
        }
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            double gx = 0, gy = 0;
            for (int k = -R; k <= R; ++k) {
                const size_t j = size_t(std::clamp(y + k, 0, H - 1)) * W + x;
                gx += g[k + R] * sx[j];
                gy += d[k + R] * sy[j];
            }
            out[size_t(y) * W + x] = std::hypot(gx, gy);
        }
    return out;
}

struct Score {
    double sad = 0, mse = 0, grad = 0;
};

Score score(const Alpha& got, const Alpha& truth, const QImage& trimap)
{
    const int W = trimap.width(), H = trimap.height();
    const std::vector<double> gg = gradient(got, W, H), gt = gradient(truth, W, H);
    Score s;
    long n = 0;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            if (trimap.constScanLine(y)[x] != 128)
                continue;
            const size_t i = size_t(y) * W + x;
            const double e = (int(got[i]) - int(truth[i])) / 255.0;
            s.sad += std::abs(e);
            s.mse += e * e;
            s.grad += (gg[i] - gt[i]) * (gg[i] - gt[i]);
            ++n;
        }
    s.sad /= 1000;
    s.mse = n ? s.mse / n * 1000 : 0;
    s.grad /= 1000;
    return s;
}

// The matte step with the trimap as marks (red object, blue background, green band); with
// `refine` set, as the window runs it with "Refine Edges" on.
Alpha matteStep(const QImage& photo, const QImage& trimap, bool refine, double* ms)
{
    VexaSegmentation seg;
    seg.load(photo);
    seg.refineEdges = refine;
    for (int y = 0; y < trimap.height(); ++y) {
        auto* m = reinterpret_cast<QRgb*>(seg.markImage.scanLine(y));
        for (int x = 0; x < trimap.width(); ++x) {
            const int t = trimap.constScanLine(y)[x];
            m[x] = t == 255 ? VexaSegmentation::ForegroundMark : t == 0 ? VexaSegmentation::BackgroundMark
                                                                          : VexaSegmentation::BoundaryMark;
        }
    }
    VexaQuickSelectQuietReporter quiet;
    const std::atomic<bool> never{false};
    QElapsedTimer t;
    t.start();
    VexaQuickSelect::matte(seg, quiet, never);
    *ms = double(t.nsecsElapsed()) / 1e6;
    Alpha a(size_t(photo.width()) * size_t(photo.height()));
    for (int y = 0; y < photo.height(); ++y)
        for (int x = 0; x < photo.width(); ++x)
            a[size_t(y) * photo.width() + x] = uint8_t(qBlue(seg.alphaImage.pixel(x, y)));
    return a;
}

Alpha refineOnly(const QImage& photo, const QImage& trimap, double* ms)
{
    std::vector<float> alpha;
    const std::atomic<bool> never{false};
    QElapsedTimer t;
    t.start();
    VexaQuickSelect::refine(photo, trimap, nullptr, alpha, {}, never);
    *ms = double(t.nsecsElapsed()) / 1e6;
    Alpha a(alpha.size());
    for (size_t i = 0; i < a.size(); ++i)
        a[i] = uint8_t(VexaQuickSelect::refinedByte(alpha[i]));
    return a;
}

long unknownCount(const QImage& trimap)
{
    long n = 0;
    for (int y = 0; y < trimap.height(); ++y)
        for (int x = 0; x < trimap.width(); ++x)
            n += trimap.constScanLine(y)[x] == 128;
    return n;
}

QImage photo(const char* name, int W, int H)
{
    const QImage img(QStringLiteral(VEXA_DATA_DIR "/%1.png").arg(QLatin1String(name)));
    return img.scaled(W, H, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_ARGB32);
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(0, atoi(argv[1])) : 3;

    // The large case first, so the peak memory is its own and not the composites'.
    if (runs > 0) {
        const int S = 1536;
        const Alpha truth = hair(S, S);
        const QImage image = composite(truth, photo("chelsea", S, S), photo("coffee", S, S));
        int r = 1;
        QImage trimap = trimapOf(truth, S, S, r);
        while (unknownCount(trimap) < 0.2 * S * S)
            trimap = trimapOf(truth, S, S, ++r);
        const long before = peakKiB();
        std::vector<double> times, cpu;
        Alpha got;
        for (int k = 0; k < runs; ++k) {
            double ms = 0;
            const double c = cpuMs();
            got = refineOnly(image, trimap, &ms);
            cpu.push_back(cpuMs() - c);
            times.push_back(ms);
        }
        const Score s = score(got, truth, trimap);
        std::printf("refine 1536 x 1536, %.1f %% unknown (band radius %d): median %.0f ms of %d runs (min %.0f, max %.0f), "
                    "processor time (all threads) median %.0f ms; SAD %.1f; peak memory %.0f MB (%.0f MB before)\n",
                    100.0 * unknownCount(trimap) / (S * S), r, median(times), runs,
                    *std::min_element(times.begin(), times.end()), *std::max_element(times.begin(), times.end()), median(cpu), s.sad,
                    peakKiB() / 1024.0, before / 1024.0);
    }

    const int W = 640, H = 480;
    struct Kind {
        const char* name;
        Alpha (*make)(int, int);
        int radius;
    };
    const Kind kinds[] = {{"hair", hair, 4}, {"fur", fur, 4}, {"motion blur", motionBlur, 3},
                          {"glass", glass, 3}, {"8-bit AA", antiAliased, 3}};
    const char* pairs[][2] = {{"chelsea", "coffee"}, {"coffee", "astronaut"}, {"astronaut", "chelsea"}};
    std::printf("%-24s %7s | %8s %8s %8s | %7s %7s %7s | %8s %8s %8s | %7s %7s %7s\n", "composite", "unknown", "SAD matte",
                "refine", "m+refine", "MSE m", "refine", "m+ref", "grad m", "refine", "m+ref", "ms m", "refine", "m+ref");
    Score total[3];
    double unknownMpx = 0, refineMs = 0;
    int count = 0;
    for (const auto& pair : pairs) {
        const QImage fg = photo(pair[0], W, H), bg = photo(pair[1], W, H);
        for (const Kind& kind : kinds) {
            const Alpha truth = kind.make(W, H);
            const QImage trimap = trimapOf(truth, W, H, kind.radius);
            const QImage image = composite(truth, fg, bg);
            double ms[3];
            const Alpha got[3] = {matteStep(image, trimap, false, &ms[0]), refineOnly(image, trimap, &ms[1]),
                                  matteStep(image, trimap, true, &ms[2])};
            Score s[3];
            for (int m = 0; m < 3; ++m) {
                s[m] = score(got[m], truth, trimap);
                total[m].sad += s[m].sad;
                total[m].mse += s[m].mse;
                total[m].grad += s[m].grad;
            }
            const long n = unknownCount(trimap);
            unknownMpx += n / 1e6;
            refineMs += ms[1];
            ++count;
            std::printf("%-11s over %-7.7s %6.1f%% | %8.2f %8.2f %8.2f | %7.2f %7.2f %7.2f | %8.2f %8.2f %8.2f | %7.0f %7.0f %7.0f\n",
                        kind.name, pair[1], 100.0 * n / (W * H), s[0].sad, s[1].sad, s[2].sad, s[0].mse, s[1].mse, s[2].mse,
                        s[0].grad, s[1].grad, s[2].grad, ms[0], ms[1], ms[2]);
            std::fflush(stdout);
        }
    }
    std::printf("mean of %d: SAD matte %.2f, refine %.2f (%.0f %% below), matte+refine %.2f (%.0f %% below); "
                "MSE %.2f / %.2f / %.2f; gradient %.2f / %.2f / %.2f\n",
                count, total[0].sad / count, total[1].sad / count, 100.0 * (1 - total[1].sad / total[0].sad),
                total[2].sad / count, 100.0 * (1 - total[2].sad / total[0].sad), total[0].mse / count, total[1].mse / count,
                total[2].mse / count, total[0].grad / count, total[1].grad / count, total[2].grad / count);
    std::printf("refine time per megapixel of unknown pixels: %.0f ms (%.2f Mpx unknown in %.0f ms, %d composites of %d x %d)\n",
                refineMs / unknownMpx, unknownMpx, refineMs, count, W, H);
    return 0;
}
