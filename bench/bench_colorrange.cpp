// Color range grading of a full document: the table-driven pass against the straightforward
// per-pixel square root, at 1536 x 1536, median of repeated runs.
#include "VexaColorGrading.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

template <class F>
double timeIt(int repeats, F&& work)
{
    std::vector<double> times;
    for (int r = 0; r < repeats; ++r) {
        QElapsedTimer t;
        t.start();
        work();
        times.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    return median(times);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QString file = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(VEXA_DATA_DIR "/coffee.png");
    const QImage photo = QImage(file).convertToFormat(QImage::Format_ARGB32);
    if (photo.isNull()) {
        std::fprintf(stderr, "bench-colorrange: cannot read %s\n", qPrintable(file));
        return 2;
    }
    const QImage doc = photo.scaled(1536, 1536, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_ARGB32);
    const int stride = 1544;
    std::vector<uint8_t> fast(size_t(stride) * 1536), plain(size_t(stride) * 1536);
    const QRgb fg = qRgb(214, 140, 60);
    const int repeats = 21;
    for (int tolerance : {10, 40, 120}) {
        const double fastMs = timeIt(repeats, [&] { VexaColorGrading::gradeImage(doc, fg, tolerance, fast.data(), stride); });
        const double plainMs = timeIt(repeats, [&] {
            for (int y = 0; y < doc.height(); ++y) {
                const auto* row = reinterpret_cast<const QRgb*>(doc.constScanLine(y));
                for (int x = 0; x < doc.width(); ++x)
                    plain[size_t(y) * stride + size_t(x)] = uint8_t(VexaColorGrading::grade(row[x], fg, tolerance));
            }
        });
        const bool same = fast == plain;
        std::printf("grading 1536x1536 tolerance %d: %.2f ms (per-pixel square root %.2f ms, %.1fx)%s\n", tolerance, fastMs,
                    plainMs, plainMs / fastMs, same ? ", identical" : ", DIFFERENT");
    }
    const double thumbMs = timeIt(repeats, [&] {
        const QImage thumb = VexaColorGrading::thumbnail(doc, 300);
        const QImage grey = VexaColorGrading::gradeThumbnail(thumb, fg, 40);
        (void)grey;
    });
    std::printf("preview 300x300 thumbnail and grading: %.2f ms\n", thumbMs);
    return 0;
}
