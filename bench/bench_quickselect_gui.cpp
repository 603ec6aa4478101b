// Quick select in its window at the working size: a photo scaled to 1536 x 1536, scripted
// strokes through the mark view, the steps started as the buttons start them.
// While each step runs, a 10 ms timer ticks in the GUI thread: the longest gap between two
// ticks says how long the window froze (target: at most 30 ms). Then each step is started
// again and cancelled part way: the time from Cancel to the worker's end (target: at most
// 100 ms). Prints medians and maxima over the runs.
#include "Thread.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaToolQuickSelectImageBox.h"
#include "VexaToolQuickSelectWidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

double maximum(const std::vector<double>& v) { return *std::max_element(v.begin(), v.end()); }

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
        clock.restart();
        last = 0;
        timer.start();
        while (running())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        timer.stop();
        // The gap that was open when the step ended counts too.
        return std::max(longest, double(clock.nsecsElapsed()) / 1e6 - last);
    }

private:
    QTimer timer;
    QElapsedTimer clock;
    double last = 0;
    double longest = 0;
};

void spinWhile(const VexaToolQuickSelectWidget& w)
{
    while (w.isStepRunning())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
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
    while (double(t.nsecsElapsed()) / 1e6 < waitMs && window.getThread()->isRunning())
        QApplication::processEvents(QEventLoop::AllEvents, 1);
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
    window.show();
    GapWatch watch;

    std::vector<double> loadMs, gapInit, gapMark, gapMatte, stepInit, stepMark, stepMatte;
    for (int r = 0; r < repeats; ++r) {
        QElapsedTimer t;
        t.start();
        window.load(doc.get());
        loadMs.push_back(double(t.nsecsElapsed()) / 1e6);
        t.restart();
        gapInit.push_back(watch.during([&] { return window.isStepRunning(); }));
        stepInit.push_back(double(t.nsecsElapsed()) / 1e6);
        paintMarks(window);
        t.restart();
        window.mark();
        gapMark.push_back(watch.during([&] { return window.isStepRunning(); }));
        stepMark.push_back(double(t.nsecsElapsed()) / 1e6);
        t.restart();
        window.matte();
        gapMatte.push_back(watch.during([&] { return window.isStepRunning(); }));
        stepMatte.push_back(double(t.nsecsElapsed()) / 1e6);
    }

    // Cancel part way through each step: a third of its usual time.
    std::vector<double> cancelInit, cancelMark, cancelMatte;
    for (int r = 0; r < repeats; ++r) {
        window.load(doc.get());
        const double c0 = cancelAfter(window, median(stepInit) / 3);
        if (c0 >= 0)
            cancelInit.push_back(c0);
        window.load(doc.get());
        spinWhile(window);
        paintMarks(window);
        window.mark();
        const double c1 = cancelAfter(window, median(stepMark) / 3);
        if (c1 >= 0)
            cancelMark.push_back(c1);
        window.load(doc.get());
        spinWhile(window);
        paintMarks(window);
        window.mark();
        spinWhile(window);
        window.matte();
        const double c2 = cancelAfter(window, median(stepMatte) / 3);
        if (c2 >= 0)
            cancelMatte.push_back(c2);
    }
    window.releaseData();

    std::printf("photo %s at 1536 x 1536 in the quick select window, %d runs\n", qPrintable(file), repeats);
    std::printf("load (GUI thread)        median %7.1f ms  max %7.1f ms\n", median(loadMs), maximum(loadMs));
    auto row = [](const char* name, const std::vector<double>& step, const std::vector<double>& gap) {
        std::printf("%-6s step %7.1f ms   longest GUI gap median %5.1f ms  max %5.1f ms\n", name, median(step), median(gap),
                    maximum(gap));
    };
    row("init", stepInit, gapInit);
    row("mark", stepMark, gapMark);
    row("matte", stepMatte, gapMatte);
    auto cancelRow = [](const char* name, const std::vector<double>& v) {
        if (v.empty())
            std::printf("cancel %-6s the step always ended before the cancel\n", name);
        else
            std::printf("cancel %-6s to thread end median %5.1f ms  max %5.1f ms  (%zu runs)\n", name, median(v), maximum(v),
                        v.size());
    };
    cancelRow("init", cancelInit);
    cancelRow("mark", cancelMark);
    cancelRow("matte", cancelMatte);
    return 0;
}
