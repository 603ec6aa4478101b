// Quick select in its window at the working size: a photo scaled to 1536 x 1536, scripted
// strokes through the mark view, the steps started as the buttons start them.
// While each step runs, a 10 ms timer ticks in the GUI thread: the longest gap between two
// ticks says how long the window froze (target: at most 30 ms). Then each step is started
// again and cancelled part way, run r at (2 (r mod 5) + 1) tenths of its usual time, so that
// five runs cancel every stage from the first to the last: the time from Cancel to the
// worker's end (target: at most 100 ms). Prints medians and maxima over the runs, and the longest gap of the same timer
// while nothing runs, which is what a busy machine alone costs.
// With --refine, "Refine Edges" is checked, so the matte step ends with edge refinement.
//
//   bench-quickselect-gui [photo] [runs] [--refine]
#include "BenchEventLoop.h"
#include "Thread.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaToolQuickSelectImageBox.h"
#include "VexaToolQuickSelectWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QImage>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double maximum(const std::vector<double>& v) { return *std::max_element(v.begin(), v.end()); }

// CPU time of the calling thread in ms: the GUI thread's own work, whatever else the machine runs.
double threadCpuMs()
{
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return double(ts.tv_sec) * 1e3 + double(ts.tv_nsec) / 1e6;
}

// The longest gap between ticks of a 10 ms timer, in ms, while `running` holds.
class GapWatch
{
public:
    GapWatch()
    {
        timer.setInterval(10);
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, [this] {
            const double now = double(clock.nsecsElapsed()) / 1e6;
            longest = std::max(longest, now - last);
            last = now;
        });
    }
    template <class Running>
    double during(Running running)
    {
        longest = 0;
        const double cpu0 = threadCpuMs();
        clock.restart();
        last = 0;
        timer.start();
        runUntil([&] { return !running(); });
        timer.stop();
        cpu = threadCpuMs() - cpu0;
        // The gap that was open when the step ended counts too.
        return std::max(longest, double(clock.nsecsElapsed()) / 1e6 - last);
    }

    double cpu = 0; // GUI thread CPU time of the last watch, ms

private:
    QTimer timer;
    QElapsedTimer clock;
    double last = 0;
    double longest = 0;
};

void spinWhile(const VexaToolQuickSelectWidget& w)
{
    runUntil([&] { return !w.isStepRunning(); });
}

void paintMarks(VexaToolQuickSelectWidget& window)
{
    VexaToolQuickSelectImageBox* box = window.getImageBox();
    const double w = window.segmentation().sourceImage.width(), h = window.segmentation().sourceImage.height();
    auto at = [&](double fx, double fy) { return QPoint(int(fx * w), int(fy * h)); };
    emit box->line(at(0.40, 0.35), at(0.62, 0.35), false);
    emit box->line(at(0.45, 0.25), at(0.58, 0.55), false);
    emit box->line(at(0.35, 0.70), at(0.65, 0.75), false);
    window.findChild<QPushButton*>(QStringLiteral("MarkBkg"))->click();
    const QPoint frame[] = {at(0.03, 0.03), at(0.97, 0.03), at(0.97, 0.97), at(0.03, 0.97), at(0.03, 0.03)};
    for (int i = 1; i < 5; ++i)
        emit box->line(frame[i - 1], frame[i], false);
    emit box->line(at(0.9, 0.1), at(0.85, 0.9), false);
    window.findChild<QPushButton*>(QStringLiteral("markObjButton"))->click();
}

double cancelAfter(VexaToolQuickSelectWidget& window, double waitMs)
{
    QElapsedTimer t;
    t.start();
    runUntil([&] { return double(t.nsecsElapsed()) / 1e6 >= waitMs || !window.getThread()->isRunning(); });
    if (!window.getThread()->isRunning())
        return -1; // ended by itself first
    QElapsedTimer c;
    c.start();
    window.stopThread(); // what Cancel does before it hides the window
    return double(c.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QString file = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(VEXA_DATA_DIR "/coffee.png");
    const int repeats = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    const bool refine = argc > 3 && QLatin1String(argv[3]) == QLatin1String("--refine");
    const QImage photo(file);
    if (photo.isNull()) {
        std::fprintf(stderr, "bench-quickselect-gui: cannot read %s\n", qPrintable(file));
        return 2;
    }
    auto doc = VexaContext::fromImage(photo.scaled(1536, 1536, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    VexaCanvas canvas;
    canvas.setContext(doc.get());
    VexaContextManager::getInstance()->setCurrentContext(doc.get());
    VexaToolQuickSelectWidget window;
    window.findChild<QCheckBox*>(QStringLiteral("refineEdgesBox"))->setChecked(refine);
    window.show();
    GapWatch watch;

    // The same watch with nothing running: what the machine's own load costs the GUI thread.
    std::vector<double> gapIdle;
    for (int r = 0; r < repeats; ++r) {
        QElapsedTimer idle;
        idle.start();
        gapIdle.push_back(watch.during([&] { return idle.elapsed() < 1000; }));
    }

    std::vector<double> loadMs, gapInit, gapMark, gapMatte, stepInit, stepMark, stepMatte, cpuInit, cpuMark, cpuMatte;
    for (int r = 0; r < repeats; ++r) {
        QElapsedTimer t;
        t.start();
        window.load(doc.get());
        loadMs.push_back(double(t.nsecsElapsed()) / 1e6);
        t.restart();
        gapInit.push_back(watch.during([&] { return window.isStepRunning(); }));
        cpuInit.push_back(watch.cpu);
        stepInit.push_back(double(t.nsecsElapsed()) / 1e6);
        paintMarks(window);
        t.restart();
        window.mark();
        gapMark.push_back(watch.during([&] { return window.isStepRunning(); }));
        cpuMark.push_back(watch.cpu);
        stepMark.push_back(double(t.nsecsElapsed()) / 1e6);
        t.restart();
        window.matte();
        gapMatte.push_back(watch.during([&] { return window.isStepRunning(); }));
        cpuMatte.push_back(watch.cpu);
        stepMatte.push_back(double(t.nsecsElapsed()) / 1e6);
    }

    // Cancel part way through each step, at 10, 30, 50, 70 and 90 % of its usual time in turn.
    std::vector<double> cancelInit, cancelMark, cancelMatte;
    for (int r = 0; r < repeats; ++r) {
        const double part = (2 * (r % 5) + 1) / 10.0;
        window.load(doc.get());
        const double c0 = cancelAfter(window, median(stepInit) * part);
        if (c0 >= 0)
            cancelInit.push_back(c0);
        window.load(doc.get());
        spinWhile(window);
        paintMarks(window);
        window.mark();
        const double c1 = cancelAfter(window, median(stepMark) * part);
        if (c1 >= 0)
            cancelMark.push_back(c1);
        window.load(doc.get());
        spinWhile(window);
        paintMarks(window);
        window.mark();
        spinWhile(window);
        window.matte();
        const double c2 = cancelAfter(window, median(stepMatte) * part);
        if (c2 >= 0)
            cancelMatte.push_back(c2);
    }
    window.releaseData();

    std::printf("photo %s at 1536 x 1536 in the quick select window, %d runs%s\n", qPrintable(file), repeats,
                refine ? ", Refine Edges on" : "");
    std::printf("load (GUI thread)        median %7.1f ms  max %7.1f ms\n", median(loadMs), maximum(loadMs));
    auto row = [](const char* name, const std::vector<double>& step, const std::vector<double>& gap,
                  const std::vector<double>& cpu) {
        std::printf("%-6s step %7.1f ms   longest GUI gap median %5.1f ms  max %5.1f ms   GUI thread CPU median %5.1f ms\n",
                    name, median(step), median(gap), maximum(gap), median(cpu));
    };
    std::printf("idle 1 s                 longest GUI gap median %5.1f ms  max %5.1f ms\n", median(gapIdle), maximum(gapIdle));
    row("init", stepInit, gapInit, cpuInit);
    row("mark", stepMark, gapMark, cpuMark);
    row("matte", stepMatte, gapMatte, cpuMatte);
    auto cancelRow = [](const char* name, const std::vector<double>& v) {
        if (v.empty()) {
            std::printf("cancel %-6s the step always ended before the cancel\n", name);
            return;
        }
        std::printf("cancel %-6s to thread end median %5.1f ms  max %5.1f ms  (%zu runs:", name, median(v), maximum(v),
                    v.size());
        for (double ms : v)
            std::printf(" %.1f", ms);
        std::printf(")\n");
    };
    cancelRow("init", cancelInit);
    cancelRow("mark", cancelMark);
    cancelRow("matte", cancelMatte);
    return 0;
}
