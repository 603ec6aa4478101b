// Quick select at the working size: a photo scaled to 1536 x 1536 with scripted scribbles.
// Prints the median time of init, mark and matte, the region count and the peak memory, and,
// when OpenCV is available, its grabCut (one iteration, from the same scribbles) and watershed
// on the same image.
#include "VexaQuickSelectSteps.h"
#include "VexaSegmentation.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <sys/resource.h>
#include <vector>

#ifdef VEXA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

namespace {

class Silent : public VexaQuickSelectReporter
{
public:
    void progress(const QString&, int) override {}
    void setPainting(bool) override {}
    void setMessage(const QString& text) override { std::printf("hint: %s\n", qPrintable(text)); }
    void checkViewAlpha() override {}
    void checkViewMatte() override {}
    void updateImageBox(const QRect&) override {}
};

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double ms(const QElapsedTimer& t) { return double(t.nsecsElapsed()) / 1e6; }

// Object strokes in the middle, background strokes along the frame and one across the right.
void scribble(QImage& marks)
{
    const double w = marks.width(), h = marks.height();
    QPainter p(&marks);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QPen(QColor::fromRgba(VexaSegmentation::ForegroundMark), 20));
    p.drawLine(QPointF(w * 0.40, h * 0.35), QPointF(w * 0.62, h * 0.35));
    p.drawLine(QPointF(w * 0.45, h * 0.25), QPointF(w * 0.58, h * 0.55));
    p.drawLine(QPointF(w * 0.35, h * 0.70), QPointF(w * 0.65, h * 0.75));
    p.setPen(QPen(QColor::fromRgba(VexaSegmentation::BackgroundMark), 24));
    p.drawRect(QRectF(w * 0.03, h * 0.03, w * 0.94, h * 0.94));
    p.drawLine(QPointF(w * 0.9, h * 0.1), QPointF(w * 0.85, h * 0.9));
}

long peakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QString file = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(VEXA_DATA_DIR "/coffee.png");
    const QImage photo(file);
    if (photo.isNull()) {
        std::fprintf(stderr, "bench-quickselect: cannot read %s\n", qPrintable(file));
        return 2;
    }
    const int repeats = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    const QImage doc = photo.scaled(1536, 1536, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const long before = peakKiB();

    Silent report;
    const std::atomic<bool> never{false};
    std::vector<double> initMs, markMs, matteMs;
    size_t regions = 0;
    for (int r = 0; r < repeats; ++r) {
        VexaSegmentation seg;
        seg.load(doc);
        QImage marks(seg.markImage.size(), QImage::Format_ARGB32);
        marks.fill(0u);
        scribble(marks);
        seg.markImage = marks;
        QElapsedTimer t;
        t.start();
        VexaQuickSelect::init(seg, report, never);
        initMs.push_back(ms(t));
        regions = seg.regionColors.size();
        t.restart();
        VexaQuickSelect::mark(seg, report, never);
        markMs.push_back(ms(t));
        t.restart();
        VexaQuickSelect::matte(seg, report, never);
        matteMs.push_back(ms(t));
    }
    std::printf("photo %s at 1536 x 1536, %d runs, median times\n", qPrintable(file), repeats);
    std::printf("regions %zu\n", regions);
    std::printf("init %.1f ms\n", median(initMs));
    std::printf("mark %.1f ms\n", median(markMs));
    std::printf("matte %.1f ms\n", median(matteMs));
    std::printf("peak memory %.1f MB (process, %.1f MB before the first session)\n", peakKiB() / 1024.0, before / 1024.0);

#ifdef VEXA_HAVE_OPENCV
    {
        const QImage rgb = doc.convertToFormat(QImage::Format_RGB888);
        cv::Mat image(rgb.height(), rgb.width(), CV_8UC3, const_cast<uchar*>(rgb.constBits()), size_t(rgb.bytesPerLine()));
        cv::Mat bgr;
        cv::cvtColor(image, bgr, cv::COLOR_RGB2BGR);
        QImage marks(doc.size(), QImage::Format_ARGB32);
        marks.fill(0u);
        scribble(marks);
        cv::Mat mask(bgr.rows, bgr.cols, CV_8UC1, cv::Scalar(cv::GC_PR_BGD));
        cv::Mat markers(bgr.rows, bgr.cols, CV_32SC1, cv::Scalar(0));
        for (int y = 0; y < bgr.rows; ++y) {
            const auto* m = reinterpret_cast<const QRgb*>(marks.constScanLine(y));
            for (int x = 0; x < bgr.cols; ++x) {
                if (m[x] == VexaSegmentation::ForegroundMark) {
                    mask.at<uchar>(y, x) = cv::GC_FGD;
                    markers.at<int>(y, x) = 1;
                } else if (m[x] == VexaSegmentation::BackgroundMark) {
                    mask.at<uchar>(y, x) = cv::GC_BGD;
                    markers.at<int>(y, x) = 2;
                }
            }
        }
        std::vector<double> grab, shed;
        for (int r = 0; r < repeats; ++r) {
            cv::Mat m = mask.clone(), bgd, fgd;
            QElapsedTimer t;
            t.start();
            cv::grabCut(bgr, m, cv::Rect(), bgd, fgd, 1, cv::GC_INIT_WITH_MASK);
            grab.push_back(ms(t));
            cv::Mat k = markers.clone();
            t.restart();
            cv::watershed(bgr, k);
            shed.push_back(ms(t));
        }
        const double ours = median(markMs) + median(initMs);
        std::printf("opencv grabCut (1 iteration) %.1f ms; init + mark %.1f ms, ratio %.1fx\n", median(grab), ours,
                    median(grab) / ours);
        std::printf("opencv watershed %.1f ms; init (watershed, statistics, graph) %.1f ms, ratio %.1fx\n", median(shed),
                    median(initMs), median(shed) / median(initMs));
    }
#else
    std::printf("opencv comparison skipped (OpenCV not found at build time)\n");
#endif
    return 0;
}
