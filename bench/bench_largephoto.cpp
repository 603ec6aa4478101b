// A camera-sized document (8256 x 5504, 45 Mpx): the commands a user runs first on a photo,
// median CPU time of repeated runs in milliseconds. Needs a display for the canvas (xvfb-run).
#include "VexaPluginEntry.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaHistory.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"
#include "VexaToolQuickSelect.h"
#include "VexaToolSelectionColorRange.h"

#include <QApplication>
#include <QImage>

#include <sys/resource.h>

#include <algorithm>
#include <ctime>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

template <class Setup, class Work>
double median(int repeats, Setup&& setup, Work&& work)
{
    std::vector<double> times;
    for (int r = 0; r < repeats; ++r) {
        setup();
        // CPU time of the process: the figure that matters on a shared machine.
        timespec a{}, b{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &a);
        work();
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &b);
        times.push_back(double(b.tv_sec - a.tv_sec) * 1e3 + double(b.tv_nsec - a.tv_nsec) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void report(const char* what, double ms) { std::printf("%-36s %9.1f ms\n", what, ms); }

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const int repeats = 3;
    QImage photo(8256, 5504, QImage::Format_ARGB32);
    for (int y = 0; y < photo.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(photo.scanLine(y));
        for (int x = 0; x < photo.width(); ++x)
            row[x] = qRgb((x * 255) / photo.width(), (y * 255) / photo.height(), x < photo.width() / 2 ? 40 : 200);
    }
    std::unique_ptr<VexaContext> doc;
    VexaCanvas canvas;
    canvas.resize(1000, 700);
    report("open (document + canvas)", median(
                                           repeats, [&] { canvas.setContext(nullptr); doc.reset(); },
                                           [&] {
                                               doc = VexaContext::fromImage(photo);
                                               canvas.setContext(doc.get());
                                           }));
    VexaContextManager::getInstance()->setCurrentContext(doc.get());
    VexaSelection* sel = doc->getSelection();
    VexaHistory* history = doc->getHistory();
    auto half = [&] {
        auto path = std::make_unique<VexaSelectionPath>();
        path->setType(VexaSelectionPath::Rectangle);
        for (QPointF p : {QPointF(1000, 1000), QPointF(1000, 4999), QPointF(5999, 4999), QPointF(5999, 1000)})
            path->addPoint(p);
        sel->combineMode = 0;
        sel->addPath(path.release(), 0);
    };
    // --quick-select: only opening and quick select's OK (the rest takes minutes on a busy machine).
    const bool quickOnly = app.arguments().contains(QStringLiteral("--quick-select"));
    if (!quickOnly) {
        report("rectangle 5000 x 4000", median(repeats, [] {}, half));
        report("rectangle feathered 20 px", median(repeats, [] {}, [&] {
                   auto path = std::make_unique<VexaSelectionPath>();
                   path->setType(VexaSelectionPath::Rectangle);
                   for (QPointF p : {QPointF(1000, 1000), QPointF(1000, 4999), QPointF(5999, 4999), QPointF(5999, 1000)})
                       path->addPoint(p);
                   sel->addPath(path.release(), 20);
               }));
        half();
        report("Delete (5000 x 4000 selected)", median(repeats, [&] { half(); }, [&] { doc->deleteSelectedPixels(); }));
        report("Undo Delete", median(repeats, [&] { half(); doc->deleteSelectedPixels(); }, [&] { history->undo(); }));
        report("Redo Delete", median(repeats, [&] { half(); doc->deleteSelectedPixels(); history->undo(); }, [&] { history->redo(); }));
        report("Select All", median(repeats, [] {}, [&] { sel->selectAll(); }));
        report("Invert", median(repeats, [] {}, [&] { sel->inverse(); }));
        report("Undo Invert", median(repeats, [&] { sel->inverse(); }, [&] { history->undo(); }));
        report("Select None", median(repeats, [&] { half(); }, [&] { sel->deselect(); }));

        QObject parent;
        auto* range = VexaToolSelectionColorRange::getInstance(&parent);
        report("Color Range: open (render, preview)", median(repeats, [&] { range->disActive(); }, [&] { range->active(doc.get()); }));
        report("Color Range: tolerance change", median(repeats, [&] { range->onBusyTimeout(); }, [&] { range->setTolerance(range->property("t").toInt() % 200 + 20); range->setProperty("t", range->property("t").toInt() + 7); }));
        report("Color Range: OK (full-size grading)", median(repeats, [&] { range->active(doc.get()); }, [&] { range->apply(); }));

        IVexaTool* magic = getInstance(&parent, QStringLiteral("Magic Select Tool"));
        magic->active(doc.get());
        doc->setCurrentTool(magic);
        const QPoint at = canvas.canvasToUi(QPointF(2000, 3000)).toPoint();
        report("Magic Select click (flood fill)", median(repeats, [&] { sel->deselect(); emit canvas.mouseMove(at.x(), at.y()); }, [&] {
                   emit canvas.mousePress(at.x(), at.y());
                   emit canvas.mouseRelease(at.x(), at.y());
               }));
        magic->disActive();
    }

    // Quick select's OK: the working-size matte (a disc) written into the selection at full
    // size, the outside deleted, all recorded as one undo step.
    QImage matte(1536, 1024, QImage::Format_ARGB32);
    for (int y = 0; y < matte.height(); ++y)
        for (int x = 0; x < matte.width(); ++x) {
            const int d2 = (x - 768) * (x - 768) + (y - 512) * (y - 512);
            matte.setPixel(x, y, d2 < 400 * 400 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
        }
    VexaToolQuickSelect quick;
    quick.context = doc.get();
    auto undoQuick = [&] {
        if (history->undoText() == QLatin1String("Quick Select"))
            history->undo();
    };
    report("Quick Select OK (1536 x 1024 matte)", median(repeats, undoQuick, [&] { quick.apply(matte); }));
    report("Undo Quick Select", median(repeats, [&] { undoQuick(); quick.apply(matte); }, [&] { history->undo(); }));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%-36s %9.0f MB\n", "peak memory", double(usage.ru_maxrss) / 1024.0);
    return 0;
}
