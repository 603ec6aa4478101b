#include "VexaDemoScript.h"

#include "IVexaTool.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaEditorWindow.h"
#include "VexaMattingWindow.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QEventLoop>
#include <QFile>
#include <QTextStream>
#include <QTimer>

#include <cmath>

// One scripted gesture: which tool, which mode button of its panel, and where, in fractions
// of the canvas size.
struct DemoGesture {
    enum Kind { Drag, Corners, Stroke, Click };
    const char* tool;
    const char* modeButton;
    Kind kind;
    QVector<QPointF> points;
};

namespace {

QVector<QPointF> circle(QPointF centre, double radius, int steps)
{
    QVector<QPointF> pts;
    for (int i = 0; i <= steps; ++i) {
        const double a = 2.0 * M_PI * i / steps;
        pts.append(centre + QPointF(std::cos(a) * radius, std::sin(a) * radius));
    }
    return pts;
}

const QVector<DemoGesture>& gestures()
{
    static const QVector<DemoGesture> list = {
        {"Rectangular Marquee Tool", "newBtn", DemoGesture::Drag, {{0.10, 0.15}, {0.55, 0.70}}},
        {"Ellipse Select Tool", "addBtn", DemoGesture::Drag, {{0.40, 0.35}, {0.88, 0.90}}},
        {"Polygonal Lasso Tool", "substractBtn", DemoGesture::Corners, {{0.15, 0.22}, {0.42, 0.22}, {0.28, 0.58}}},
        {"Lasso Tool", "addBtn", DemoGesture::Stroke, circle({0.78, 0.22}, 0.09, 48)},
        // Grabs the whole selection and shifts it down and to the right.
        {"Move Selection", "", DemoGesture::Drag, {{0.30, 0.62}, {0.34, 0.68}}},
        {"Magic Select Tool", "addBtn", DemoGesture::Click, {{0.03, 0.04}}},
    };
    return list;
}

} // namespace

VexaDemoScript::VexaDemoScript(VexaEditorWindow& window, const QString& outputDir, QObject* parent)
    : QObject(parent)
    , m_window(window)
    , m_out(outputDir)
{
}

void VexaDemoScript::wait(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

bool VexaDemoScript::perform(const DemoGesture& gesture)
{
    IVexaTool* tool = m_window.tool(QLatin1String(gesture.tool));
    if (!tool)
        return false;
    m_window.activateTool(tool);
    if (QWidget* panel = tool->getWidget()) {
        if (auto* button = panel->findChild<QAbstractButton*>(QLatin1String(gesture.modeButton)))
            button->click();
    }
    VexaCanvas* canvas = m_window.canvas();
    const QSizeF size(canvas->getCanvasWidth(), canvas->getCanvasHeight());
    auto at = [&](const QPointF& f) {
        return canvas->canvasToUi(QPointF(f.x() * size.width(), f.y() * size.height())).toPoint();
    };
    const QVector<QPointF>& pts = gesture.points;
    switch (gesture.kind) {
    case DemoGesture::Drag: {
        const QPoint a = at(pts[0]), b = at(pts[1]);
        emit canvas->mouseMove(a.x(), a.y());
        emit canvas->mousePress(a.x(), a.y());
        for (int i = 1; i <= 10; ++i) {
            const QPoint p = a + (b - a) * i / 10;
            emit canvas->mouseMove(p.x(), p.y());
            wait(60); // the move tool takes at most one step per 50 ms
        }
        emit canvas->mouseRelease(b.x(), b.y());
        break;
    }
    case DemoGesture::Corners:
        for (const QPointF& f : pts) {
            const QPoint p = at(f);
            emit canvas->mouseMove(p.x(), p.y());
            emit canvas->mousePress(p.x(), p.y());
            emit canvas->mouseRelease(p.x(), p.y());
            wait(600); // a click right after a finished polygon is swallowed; corners are slower
        }
        {
            const QPoint p = at(pts.last());
            emit canvas->mouseDoubleClick(p.x(), p.y());
            if (tool->eventRegistered(QStringLiteral("DOUBLE_CLICK")))
                tool->processEvent(QStringLiteral("DOUBLE_CLICK"));
        }
        break;
    case DemoGesture::Stroke: {
        const QPoint first = at(pts.first());
        emit canvas->mouseMove(first.x(), first.y());
        emit canvas->mousePress(first.x(), first.y());
        for (const QPointF& f : pts) {
            const QPoint p = at(f);
            emit canvas->mouseMove(p.x(), p.y());
        }
        const QPoint last = at(pts.last());
        emit canvas->mouseRelease(last.x(), last.y());
        break;
    }
    case DemoGesture::Click: {
        const QPoint p = at(pts[0]);
        emit canvas->mouseMove(p.x(), p.y());
        emit canvas->mousePress(p.x(), p.y());
        emit canvas->mouseRelease(p.x(), p.y());
        break;
    }
    }
    wait(150);
    m_log << QStringLiteral("%1 (%2)").arg(QLatin1String(gesture.tool), QLatin1String(gesture.modeButton));
    return true;
}

void VexaDemoScript::hostSelections()
{
    // Without plug-in tools the host's own selection shows what the four modes do.
    VexaSelection* sel = m_window.document()->getSelection();
    const double w = sel->width(), h = sel->height();
    auto shape = [](int type, const QVector<QPointF>& pts) {
        auto path = std::make_unique<VexaSelectionPath>();
        path->setType(type);
        for (const QPointF& p : pts)
            path->addPoint(p);
        return path.release(); // the selection adopts it
    };
    sel->combineMode = 0;
    sel->addPath(shape(0, {{0.10 * w, 0.15 * h}, {0.55 * w, 0.15 * h}, {0.55 * w, 0.70 * h}, {0.10 * w, 0.70 * h}}), 0);
    sel->combineMode = 1;
    sel->addPath(shape(1, {{0.40 * w, 0.35 * h}, {0.88 * w, 0.90 * h}}), 6);
    sel->combineMode = 2;
    sel->addPath(shape(2, {{0.15 * w, 0.22 * h}, {0.42 * w, 0.22 * h}, {0.28 * w, 0.58 * h}}), 0);
    sel->combineMode = 0;
    sel->render(m_window.canvas());
    m_log << QStringLiteral("host selection: rectangle (new), feathered ellipse (add), triangle (subtract)");
}

bool VexaDemoScript::colorRange()
{
    IVexaTool* tool = m_window.tool(QStringLiteral("Color Range"));
    if (!tool)
        return false;
    VexaCanvas* canvas = m_window.canvas();
    m_window.activateTool(tool);
    wait(200);
    // Pick the colour of the crema with a real click: the canvas is in its picking state.
    const QPointF crema(0.52 * canvas->getCanvasWidth(), 0.36 * canvas->getCanvasHeight());
    const QPointF at = canvas->canvasToUi(crema);
    QMouseEvent press(QEvent::MouseButtonPress, at, canvas->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, at, canvas->mapToGlobal(at), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas, &press);
    QCoreApplication::sendEvent(canvas, &release);
    QSpinBox* toleranceField = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (!toleranceField)
            toleranceField = w->findChild<QSpinBox*>(QStringLiteral("toleranceSpin"));
    if (toleranceField)
        toleranceField->setValue(35);
    wait(300);
    // The whole screen: the editor and the color range dialog over it.
    if (QScreen* screen = QGuiApplication::primaryScreen())
        screen->grabWindow(0).save(m_out + QStringLiteral("/screenshot-color-range.png"));
    QString error;
    m_window.exportSelectionMask(m_out + QStringLiteral("/selection-mask-shapes.png"), &error);
    QPushButton* ok = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (!ok && w->isVisible())
            ok = w->findChild<QPushButton*>(QStringLiteral("okBtn"));
    if (ok)
        ok->click();
    wait(200);
    m_log << QStringLiteral("Color Range (colour %1, tolerance 35, OK)").arg(canvas->getFgColor().name());
    return true;
}

bool VexaDemoScript::glMatting()
{
    VexaMattingWindow* matting = m_window.openMattingView();
    if (!matting || !matting->view())
        return false;
    wait(300);
    QWidget* view = matting->view();
    const QSize size = matting->workingSize();
    auto at = [&](double fx, double fy) { return QPointF(fx * size.width(), fy * size.height()); };
    auto stroke = [&](Qt::MouseButton button, const QVector<QPointF>& fractions) {
        auto send = [&](QEvent::Type type, const QPointF& f, Qt::MouseButton which, Qt::MouseButtons held) {
            const QPointF p = at(f.x(), f.y());
            QMouseEvent e(type, p, view->mapToGlobal(p), which, held, Qt::NoModifier);
            QCoreApplication::sendEvent(view, &e);
        };
        send(QEvent::MouseButtonPress, fractions.first(), button, button);
        for (const QPointF& f : fractions)
            send(QEvent::MouseMove, f, Qt::NoButton, button);
        send(QEvent::MouseButtonRelease, fractions.last(), button, Qt::NoButton);
    };
    // An unknown band around the cup and saucer (right button in the first mark mode), an
    // object seed inside it, a background seed outside; flood, then matte.
    matting->setZoom(1.0); // the strokes below are in image pixels
    matting->setMarkMode(0);
    matting->setBrushRadius(std::max(4, size.width() / 75));
    stroke(Qt::RightButton, {{0.29, 0.11}, {0.38, 0.05}, {0.48, 0.04}, {0.58, 0.05}, {0.67, 0.10}, {0.70, 0.15},
                             {0.73, 0.28}, {0.78, 0.45}, {0.80, 0.60}, {0.76, 0.79}, {0.65, 0.91}, {0.48, 0.96},
                             {0.33, 0.93}, {0.21, 0.81}, {0.14, 0.59}, {0.16, 0.38}, {0.25, 0.24}, {0.29, 0.17},
                             {0.29, 0.11}});
    stroke(Qt::LeftButton, {{0.45, 0.40}, {0.50, 0.45}, {0.55, 0.55}});
    matting->setMarkMode(1);
    stroke(Qt::LeftButton, {{0.90, 0.10}, {0.93, 0.20}, {0.95, 0.40}});
    matting->flood();
    matting->matte();
    wait(300);
    const QImage matte = matting->matteImage();
    const bool ok = !matte.isNull() && matte.convertToFormat(QImage::Format_Grayscale8).save(m_out + QStringLiteral("/gl-matte.png"));
    m_log << QStringLiteral("Matting View (%1 x %2, unknown band, object and background seeds, Flood, Matte)")
                 .arg(size.width())
                 .arg(size.height());
    matting->close();
    wait(100);
    return ok;
}

bool VexaDemoScript::writeResults()
{
    bool ok = QDir().mkpath(m_out);
    const QImage shot = m_window.grab().toImage();
    ok &= shot.save(m_out + QStringLiteral("/screenshot.png"));
    QString error;
    ok &= m_window.exportSelectionMask(m_out + QStringLiteral("/selection-mask.png"), &error);
    ok &= m_window.saveImage(m_out + QStringLiteral("/image.png"), &error);

    VexaSelection* sel = m_window.document()->getSelection();
    qint64 selected = 0;
    for (int y = 0; y < sel->height(); ++y)
        for (int x = 0; x < sel->width(); ++x)
            selected += sel->mask()[size_t(y) * size_t(sel->maskStride()) + size_t(x)] >= 128;
    const QRect box = sel->boundingRect();

    QFile report(m_out + QStringLiteral("/report.txt"));
    if (report.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        QTextStream out(&report);
        out << "canvas " << sel->width() << " x " << sel->height() << "\n";
        for (int i = 0; i < m_window.toolNames().size(); ++i)
            out << "tool " << m_window.toolNames()[i] << ": " << (m_window.tools()[i] ? "available" : "not in this build") << "\n";
        for (const QString& line : std::as_const(m_log))
            out << "did " << line << "\n";
        out << "selected pixels " << selected << "\n";
        out << "selection bounds " << box.x() << " " << box.y() << " " << box.width() << " " << box.height() << "\n";
        out << "outline segments " << m_window.canvas()->outlineSegmentCount() << "\n";
    } else {
        ok = false;
    }
    return ok;
}

namespace {

// Waits until the quick select window's step has ended: "Preview" is disabled while one runs.
bool waitForQuickSelectStep(QWidget* window, QPushButton* preview)
{
    QElapsedTimer t;
    t.start();
    while ((!preview->isEnabled() || !window->isVisible()) && t.elapsed() < 120000) {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return preview->isEnabled();
}

} // namespace

bool VexaDemoScript::driveQuickSelect(QWidget* window)
{
    auto* box = window->findChild<QWidget*>(QStringLiteral("imageBox"));
    auto* preview = window->findChild<QPushButton*>(QStringLiteral("previewButton"));
    auto* matte = window->findChild<QPushButton*>(QStringLiteral("matteButton"));
    auto* background = window->findChild<QPushButton*>(QStringLiteral("MarkBkg"));
    auto* apply = window->findChild<QPushButton*>(QStringLiteral("applyButton"));
    if (!box || !preview || !matte || !background || !apply || !waitForQuickSelectStep(window, preview))
        return false;
    const QSize size = box->size(); // the working image, at the window's zoom of 1
    auto at = [&](double fx, double fy) { return QPoint(int(fx * size.width()), int(fy * size.height())); };
    auto stroke = [&](const QVector<QPoint>& pts) {
        for (int i = 1; i < pts.size(); ++i)
            QMetaObject::invokeMethod(box, "line", Q_ARG(QPoint, pts[i - 1]), Q_ARG(QPoint, pts[i]), Q_ARG(bool, false));
    };
    // Foreground across the middle of the picture, background along its edges.
    stroke({at(0.35, 0.45), at(0.60, 0.45)});
    stroke({at(0.30, 0.75), at(0.65, 0.75)});
    stroke({at(0.47, 0.35), at(0.47, 0.85)});
    stroke({at(0.20, 0.55), at(0.24, 0.78)});
    stroke({at(0.72, 0.45), at(0.75, 0.65)});
    stroke({at(0.35, 0.90), at(0.62, 0.90)});
    background->click();
    stroke({at(0.02, 0.02), at(0.98, 0.02), at(0.98, 0.98), at(0.02, 0.98), at(0.02, 0.02)});
    wait(100);
    bool ok = window->property("markImage").value<QImage>().save(m_out + QStringLiteral("/quickselect-marks.png"));
    preview->click();
    ok &= waitForQuickSelectStep(window, preview);
    matte->click();
    ok &= waitForQuickSelectStep(window, preview);
    wait(300); // the view repaints the matte
    ok &= window->window()->grab().save(m_out + QStringLiteral("/quickselect-window.png"));
    apply->click();
    return ok;
}

bool VexaDemoScript::quickSelect()
{
    IVexaTool* tool = m_window.tool(QStringLiteral("Quick Select Tool"));
    if (!tool)
        return false;
    bool driven = false;
    // Activation runs the window's modal loop: the script goes on from inside it.
    QTimer::singleShot(300, this, [&] {
        QWidget* window = tool->getWidget();
        driven = window && driveQuickSelect(window);
        if (tool->isActive() && window) // something failed: leave without applying
            if (auto* cancel = window->findChild<QPushButton*>(QStringLiteral("closeButton")))
                cancel->click();
    });
    m_window.activateTool(tool);
    wait(200);
    QString error;
    bool ok = driven;
    ok &= m_window.exportSelectionMask(m_out + QStringLiteral("/quickselect-mask.png"), &error);
    ok &= m_window.saveImage(m_out + QStringLiteral("/quickselect-image.png"), &error);
    QFile report(m_out + QStringLiteral("/report.txt"));
    if (report.open(QIODevice::Append | QIODevice::Text))
        QTextStream(&report) << "did Quick Select Tool (marks, Preview, Alpha Extract, OK): " << (ok ? "written" : "failed")
                             << "\n";
    return ok;
}

int VexaDemoScript::run()
{
    if (!m_window.document())
        return 1;
    wait(300);
    int done = 0;
    for (const DemoGesture& g : gestures())
        done += perform(g) ? 1 : 0;
    if (done == 0)
        hostSelections();
    QDir().mkpath(m_out);
    colorRange();
    glMatting();
    // A shape tool stays active, so the screenshot shows its options.
    if (IVexaTool* magic = m_window.tool(QStringLiteral("Magic Select Tool")))
        m_window.activateTool(magic);
    wait(400); // let the canvas draw the outline before the screenshot
    bool ok = writeResults();
    // Last: its OK deletes the photo outside the object.
    if (m_window.tool(QStringLiteral("Quick Select Tool")))
        ok &= quickSelect();
    return ok ? 0 : 1;
}
