// Quick select at the working size: a photo scaled to 1536 x 1536 with scripted scribbles.
// Prints the median, least and largest times of init, mark, matte and a second mark after one
// more stroke, the wall and processor time of every stage (between two progress reports), the
// peak memory, and, when OpenCV is available, its grabCut (one iteration, from the same
// scribbles) and marker watershed on the same image with the ratios. Ends with a check that the
// steps, the second mark included, give exactly what the plain reference gives at this size.
#include "QuickSelectReference.h"
#include "VexaQuickSelectKernels.h"
#include "VexaQuickSelectSteps.h"
#include "VexaSegmentation.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <map>
#include <sys/resource.h>
#include <vector>

#ifdef VEXA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

namespace {

double cpuMs()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

// Times every stage: from one progress report to the next, wall and processor time (all threads).
class StageClock : public VexaQuickSelectReporter
{
public:
    void start(const char* step)
    {
        m_step = step;
        m_last = QStringLiteral("start");
        m_wall.start();
        m_cpu = cpuMs();
    }
    void progress(const QString& text, int percent) override
    {
        const QString now = QStringLiteral("%1 %2").arg(text).arg(percent);
        const double cpu = cpuMs();
        const QString key = QStringLiteral("%1: %2 -> %3").arg(QLatin1String(m_step), m_last, now);
        if (!stages.count(key))
            order.push_back(key);
        Figures& f = stages[key];
        f.wall.push_back(double(m_wall.nsecsElapsed()) / 1e6);
        f.cpu.push_back(cpu - m_cpu);
        m_wall.restart();
        m_cpu = cpu;
        m_last = now;
    }
    void setPainting(bool) override {}
    void setMessage(const QString& text) override { std::printf("hint: %s\n", qPrintable(text)); }
    void checkViewAlpha() override {}
    void checkViewMatte() override {}
    void updateImageBox(const QRect&) override {}

    struct Figures {
        std::vector<double> wall, cpu;
    };
    std::map<QString, Figures> stages;
    std::vector<QString> order; // of first report

private:
    const char* m_step = "";
    QString m_last;
    QElapsedTimer m_wall;
    double m_cpu = 0;
};

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

struct Timing {
    std::vector<double> wall, cpu;
    void print(const char* name) const
    {
        std::printf("%s %.1f ms (min %.1f, max %.1f), processor %.1f ms\n", name, median(wall),
                    *std::min_element(wall.begin(), wall.end()), *std::max_element(wall.begin(), wall.end()), median(cpu));
    }
};

// The scripted strokes. First: object strokes in the middle, background strokes along the frame
// and one across the right. Again: the stroke a user adds before pressing "Preview" once more,
// one more object stroke left of the first ones.
enum class Strokes { First, Again };
void scribble(QImage& marks, Strokes which = Strokes::First)
{
    const double w = marks.width(), h = marks.height();
    QPainter p(&marks);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QPen(QColor::fromRgba(VexaSegmentation::ForegroundMark), 20));
    if (which == Strokes::Again) {
        p.drawLine(QPointF(w * 0.30, h * 0.50), QPointF(w * 0.38, h * 0.60));
        return;
    }
    p.drawLine(QPointF(w * 0.40, h * 0.35), QPointF(w * 0.62, h * 0.35));
    p.drawLine(QPointF(w * 0.45, h * 0.25), QPointF(w * 0.58, h * 0.55));
    p.drawLine(QPointF(w * 0.35, h * 0.70), QPointF(w * 0.65, h * 0.75));
    p.setPen(QPen(QColor::fromRgba(VexaSegmentation::BackgroundMark), 24));
    p.drawRect(QRectF(w * 0.03, h * 0.03, w * 0.94, h * 0.94));
    p.drawLine(QPointF(w * 0.9, h * 0.1), QPointF(w * 0.85, h * 0.9));
}

void prepare(VexaSegmentation& seg, const QImage& doc)
{
    seg.load(doc);
    QImage marks(seg.markImage.size(), QImage::Format_ARGB32);
    marks.fill(0u);
    scribble(marks);
    seg.markImage = marks;
}

long peakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

template <class Step>
void timed(Timing& t, StageClock& clock, const char* name, Step step)
{
    QElapsedTimer wall;
    const double cpu = cpuMs();
    wall.start();
    clock.start(name);
    step();
    t.wall.push_back(double(wall.nsecsElapsed()) / 1e6);
    t.cpu.push_back(cpuMs() - cpu);
}

// The optimised steps against the plain reference on the benchmark's own input.
bool sameAsReference(const QImage& doc)
{
    VexaSegmentation fast, plain;
    prepare(fast, doc);
    prepare(plain, doc);
    StageClock quiet;
    const std::atomic<bool> never{false};
    VexaQuickSelect::init(fast, quiet, never);
    Reference::init(plain);
    bool same = fast.regionMap == plain.regionMap && fast.regionColors == plain.regionColors
        && fast.regionSizes == plain.regionSizes && fast.graph->get_arc_num() == plain.graph->get_arc_num();
    auto a = fast.graph->get_first_arc();
    auto b = plain.graph->get_first_arc();
    for (int k = 0; same && k < fast.graph->get_arc_num(); ++k, a = fast.graph->get_next_arc(a), b = plain.graph->get_next_arc(b)) {
        int i1, j1, i2, j2;
        fast.graph->get_arc_ends(a, i1, j1);
        plain.graph->get_arc_ends(b, i2, j2);
        same = i1 == i2 && j1 == j2 && fast.graph->get_rcap(a) == plain.graph->get_rcap(b);
    }
    std::printf("identity init: %s\n", same ? "same" : "DIFFERENT");
    VexaQuickSelect::mark(fast, quiet, never);
    Reference::mark(plain);
    const bool markSame = fast.alphaImage == plain.alphaImage && fast.resultImage == plain.resultImage
        && fast.markImage == plain.markImage && fast.terminalWeights == plain.terminalWeights;
    std::printf("identity mark: %s\n", markSame ? "same" : "DIFFERENT");
    VexaQuickSelect::matte(fast, quiet, never);
    Reference::matte(plain);
    const bool matteSame = fast.alphaImage == plain.alphaImage && fast.resultImage == plain.resultImage;
    std::printf("identity matte: %s\n", matteSame ? "same" : "DIFFERENT");
    scribble(fast.markImage, Strokes::Again);
    scribble(plain.markImage, Strokes::Again);
    VexaQuickSelect::mark(fast, quiet, never);
    Reference::mark(plain);
    const bool againSame = fast.alphaImage == plain.alphaImage && fast.resultImage == plain.resultImage
        && fast.markImage == plain.markImage && fast.terminalWeights == plain.terminalWeights;
    std::printf("identity mark again: %s\n", againSame ? "same" : "DIFFERENT");
    return same && markSame && matteSame && againSame;
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
    // Options after the photo and the run count: --no-identity, --no-opencv, --level NAME (the
    // processor level of the inner loops; the best one the processor runs by default).
    bool check = true;
    [[maybe_unused]] bool peers = true; // read only where OpenCV is there
    for (int a = 3; a < argc; ++a) {
        check &= QByteArray(argv[a]) != "--no-identity";
        peers &= QByteArray(argv[a]) != "--no-opencv";
        if (QByteArray(argv[a]) == "--level" && a + 1 < argc && !VexaQuickSelect::detail::useKernelLevel(argv[++a])) {
            std::fprintf(stderr, "bench-quickselect: level %s does not run here\n", argv[a]);
            return 2;
        }
    }
    const QImage doc = photo.scaled(1536, 1536, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const long before = peakKiB();

    StageClock clock;
    const std::atomic<bool> never{false};
    Timing init, mark, matte, again;
    size_t regions = 0;
    for (int r = 0; r < repeats; ++r) {
        VexaSegmentation seg;
        prepare(seg, doc);
        timed(init, clock, "init", [&] { VexaQuickSelect::init(seg, clock, never); });
        regions = seg.regionColors.size();
        timed(mark, clock, "mark", [&] { VexaQuickSelect::mark(seg, clock, never); });
        timed(matte, clock, "matte", [&] { VexaQuickSelect::matte(seg, clock, never); });
        // "Preview" again after one more stroke: the cut continues from the flow of the first.
        scribble(seg.markImage, Strokes::Again);
        timed(again, clock, "mark again", [&] { VexaQuickSelect::mark(seg, clock, never); });
    }
    const long after = peakKiB();
    std::printf("photo %s at 1536 x 1536, %d runs, medians; inner loops at level %s of", qPrintable(file), repeats,
                VexaQuickSelect::detail::kernelLevel());
    for (const char* level : VexaQuickSelect::detail::kernelLevels())
        std::printf(" %s", level);
    std::printf("\n");
    std::printf("regions %zu\n", regions);
    init.print("init");
    mark.print("mark");
    matte.print("matte");
    again.print("mark again");
    std::printf("peak memory %.1f MB (process, %.1f MB before the first session)\n", after / 1024.0, before / 1024.0);
    for (const QString& stage : clock.order) {
        const StageClock::Figures& f = clock.stages[stage];
        std::printf("  stage %s: %.1f ms, processor %.1f ms\n", qPrintable(stage), median(f.wall), median(f.cpu));
    }

#ifdef VEXA_HAVE_OPENCV
    if (peers) {
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
            grab.push_back(double(t.nsecsElapsed()) / 1e6);
            cv::Mat k = markers.clone();
            t.restart();
            cv::watershed(bgr, k);
            shed.push_back(double(t.nsecsElapsed()) / 1e6);
        }
        const double ours = median(mark.wall) + median(init.wall);
        std::printf("opencv grabCut (1 iteration) %.1f ms; mark %.1f ms, ratio %.1fx\n", median(grab), median(mark.wall),
                    median(grab) / median(mark.wall));
        std::printf("opencv marker watershed %.1f ms; init + mark %.1f ms, ratio %.2fx\n", median(shed), ours,
                    median(shed) / ours);
    }
#else
    std::printf("opencv comparison skipped (OpenCV not found at build time)\n");
#endif
    if (check && !sameAsReference(doc))
        return 1;
    return 0;
}
