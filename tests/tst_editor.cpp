// The demo editor: opening documents, refusing bad ones, its commands and the scripted demo.
#include "IVexaTool.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaDemoScript.h"
#include "VexaEditorWindow.h"
#include "VexaFilterContainer.h"
#include "VexaPluginLoader.h"
#include "VexaHistory.h"
#include "VexaSelection.h"
#include "VexaTestImages.h"

#include <QAction>
#include <QApplication>
#include <QImageWriter>
#include <QWheelEvent>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <QProcess>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <QStyleHints>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

namespace {

QAction* action(QWidget& window, const QString& text)
{
    for (QAction* a : window.findChildren<QAction*>())
        if (a->text() == text)
            return a;
    return nullptr;
}

// Real window-system input: it updates the application's modifier state as X11 input does.
void press(QWidget* canvas, QPoint at, Qt::KeyboardModifiers mods = {}, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mousePress(canvas->window()->windowHandle(), button, mods, canvas->mapTo(canvas->window(), at));
}
void moveTo(QWidget* canvas, QPoint at, Qt::KeyboardModifiers mods = {})
{
    QTest::mouseEvent(QTest::MouseMove, canvas->window()->windowHandle(), Qt::NoButton, mods, canvas->mapTo(canvas->window(), at));
}
void release(QWidget* canvas, QPoint at, Qt::KeyboardModifiers mods = {}, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseRelease(canvas->window()->windowHandle(), button, mods, canvas->mapTo(canvas->window(), at));
}
void drag(QWidget* canvas, QPoint a, QPoint b, Qt::KeyboardModifiers mods = {})
{
    moveTo(canvas, a, mods);
    press(canvas, a, mods);
    moveTo(canvas, (a + b) / 2, mods);
    moveTo(canvas, b, mods);
    release(canvas, b, mods);
}

// The sample photo in a shown editor window, ready for real input.
bool openShown(VexaEditorWindow& window)
{
    QString error;
    if (!window.openImage(QStringLiteral(VEXA_DATA_DIR "/coffee.png"), &error))
        return false;
    window.show();
    return QTest::qWaitForWindowExposed(&window);
}

} // namespace

class TestEditor : public QObject
{
    Q_OBJECT
    VexaPluginLoader m_plugin;

private slots:
    void initTestCase()
    {
        QVERIFY2(m_plugin.load(QStringLiteral(VEXA_PLUGIN_PATH)), qPrintable(m_plugin.errorString()));
    }

    void opensAndKeepsDocumentOnFailure()
    {
        VexaEditorWindow window(m_plugin);
        const QList<QAction*> tools = window.findChild<QToolBar*>(QStringLiteral("tools"))->actions();
        const QList<QLabel*> labels = window.statusBar()->findChildren<QLabel*>();
        // Without a document no tool can be picked and the status bar is empty.
        auto enabledToolsAndTexts = [&] {
            emit window.canvas()->mouseMove(10, 10);
            const auto enabled = [](QAction* a) { return a->isEnabled() && a->isCheckable(); };
            return QPoint(std::count_if(tools.begin(), tools.end(), enabled),
                          std::count_if(labels.begin(), labels.end(), [](QLabel* l) { return !l->text().isEmpty(); }));
        };
        QString error;
        QVERIFY(!window.openImage(QStringLiteral("/nonexistent/picture.png"), &error));
        QVERIFY(error.contains(QStringLiteral("picture.png")) && !window.document());
        QCOMPARE(enabledToolsAndTexts(), QPoint(0, 0));
        // A tool picked without a document is activated when one opens.
        IVexaTool* ellipse = window.tool(QStringLiteral("Ellipse Select Tool"));
        window.activateTool(ellipse);
        QVERIFY(window.chosenTool() == ellipse && !ellipse->isActive());
        QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/chelsea.png"), &error));
        QCOMPARE(window.document()->canvasSize(), QSize(451, 300));
        QVERIFY(ellipse->isActive() && window.currentTool() == ellipse);
        // Every tool, the pixel under the pointer and the zoom.
        QCOMPARE(enabledToolsAndTexts(), QPoint(window.toolNames().size(), 2));
        VexaCanvas* canvas = window.canvas();
        const QPoint a = canvas->canvasToUi(QPointF(10, 10)).toPoint(), b = canvas->canvasToUi(QPointF(60, 50)).toPoint();
        emit canvas->mouseMove(a.x(), a.y());
        emit canvas->mousePress(a.x(), a.y());
        emit canvas->mouseMove(b.x(), b.y());
        emit canvas->mouseRelease(b.x(), b.y());
        QVERIFY(window.document()->getSelection()->hasSelection());
        // Every kind of file the Open dialog offers opens, photos from cameras and the web included
        // (Qt reads GIF but writes none to try).
        QTemporaryDir dir;
        const QString filter = VexaEditorWindow::openFilter();
        QVERIFY2(filter.contains("*.tif") && filter.contains("*.jpg") && filter.contains("*.webp"), qPrintable(filter));
        QImage small(12, 8, QImage::Format_RGB32);
        small.fill(qRgb(200, 100, 50));
        for (const QString& pattern : filter.section(QLatin1Char('('), 1).chopped(1).split(QLatin1Char(' '))) {
            const QString file = dir.filePath("photo" + pattern.mid(1));
            if (QImageWriter::supportedImageFormats().contains(pattern.mid(2).toLatin1()))
                QVERIFY2(small.save(file) && window.openImage(file, &error) && window.document()->canvasSize() == QSize(12, 8),
                         qPrintable(file + error));
        }
        const QString photo = dir.filePath(QStringLiteral("camera.jpg"));
        QVERIFY(VexaTestImages::writeCameraJpeg(photo));
        QVERIFY2(window.openImage(photo, &error), qPrintable(error));
        VexaContext* doc = window.document();
        QVERIFY(doc->canvasSize() == QSize(8256, 5504) && window.canvas()->getContext() == doc);

        // What cannot be opened is refused with its cause, and the current document stays: junk, an
        // empty file (said so, instead of blaming the format), a picture larger than this machine holds.
        for (auto [name, bytes, cause] :
             {std::tuple{"junk.png", QByteArray("this is not a picture"), ""},
              std::tuple{"empty.jpg", QByteArray(), "empty file"},
              std::tuple{"huge.png", VexaTestImages::pngClaiming(200000, 200000),
                         "too large: 200000 x 200000 needs 149.0 GB, more than the "}}) {
            QFile file(dir.filePath(QLatin1String(name)));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
            file.close();
            error.clear();
            QVERIFY(!window.openImage(file.fileName(), &error));
            QVERIFY2(!error.isEmpty() && error.contains(QLatin1String(cause)), qPrintable(error));
        }
        QCOMPARE(window.document(), doc);
        window.deactivateTool();
    }

    void startupErrorOverShownWindow()
    {
        // A photo that cannot be read is reported over the shown window, which stays empty. Opening
        // runs its own event loop (the file is read on a pool thread): the report is looked for until
        // it appears rather than at the first turn of the loop.
        VexaEditorWindow window(m_plugin);
        QString report;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &window, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                poll.stop();
                report = window.isVisible() ? box->text() : QStringLiteral("reported before the window showed");
                box->close();
            }
        });
        poll.start(10);
        window.showAndOpen(QStringLiteral("/nonexistent/picture.png"));
        QVERIFY2(report.contains(QStringLiteral("picture.png")) && !window.document(), qPrintable(report));
    }

    void scriptedDemoWritesResults()
    {
        VexaEditorWindow window(m_plugin);
        QVERIFY(openShown(window));
        QTemporaryDir dir;
        VexaDemoScript script(window, dir.path());
        QCOMPARE(script.run(), 0);
        QCOMPARE(QImage(dir.filePath(QStringLiteral("screenshot.png"))).size(), window.size());
        // Something was selected and something was not.
        const QImage mask = QImage(dir.filePath(QStringLiteral("selection-mask.png"))).convertToFormat(QImage::Format_Grayscale8);
        QCOMPARE(mask.size(), QSize(600, 400));
        const auto in = std::count_if(mask.constBits(), mask.constBits() + mask.sizeInBytes(), [](uchar v) { return v >= 128; });
        QVERIFY2(in > 1600 && in < 600 * 400 - 1600, qPrintable(QString::number(in)));
        QFile report(dir.filePath(QStringLiteral("report.txt")));
        QVERIFY(report.open(QIODevice::ReadOnly));
        const QByteArray text = report.readAll();
        QVERIFY2(text.contains("canvas 600 x 400") && text.contains("selected pixels"), text.constData());
        // The matting view's and quick select's parts, OK included: the cup and saucer are the
        // object, the table's corner not, and deleted from the picture; marks of both kinds.
        for (const char* file : {"gl-matte.png", "quickselect-mask.png", "quickselect-image.png"}) {
            const QImage result(dir.filePath(QLatin1String(file)));
            QCOMPARE(result.size(), QSize(600, 400));
            const bool alpha = QByteArray(file).endsWith("image.png");
            QCOMPARE(alpha ? qAlpha(result.pixel(290, 200)) : qGray(result.pixel(290, 200)), 255);
            QCOMPARE(alpha ? qAlpha(result.pixel(20, 380)) : qGray(result.pixel(20, 380)), 0);
        }
        const QImage marks = QImage(dir.filePath(QStringLiteral("quickselect-marks.png"))).convertToFormat(QImage::Format_RGB32);
        const auto* pixels = reinterpret_cast<const QRgb*>(marks.constBits());
        const QSet<QRgb> kinds(pixels, pixels + marks.width() * marks.height());
        QVERIFY2(kinds.size() >= 3, qPrintable(QString::number(kinds.size()))); // none, object, background
        QVERIFY(!QImage(dir.filePath(QStringLiteral("quickselect-window.png"))).isNull());
    }

    void toolWindowAndOptionsBar()
    {
        // Every tool's options take one height: the canvas never jumps when the tool changes.
        VexaEditorWindow window(m_plugin);
        QVERIFY(openShown(window));
        QSet<int> canvasTops{window.canvas()->mapTo(&window, QPoint(0, 0)).y()};
        for (const char* name : {"Ellipse Select Tool", "Polygonal Lasso Tool", "Move Selection", "Magic Select Tool",
                                 "Lasso Tool", ""}) {
            window.activateTool(window.tool(QLatin1String(name))); // none for ""
            QApplication::processEvents();
            canvasTops << window.canvas()->mapTo(&window, QPoint(0, 0)).y();
        }
        QCOMPARE(canvasTops.size(), qsizetype(1));

        // The colour range's window is the editor's tool window beside the canvas, never over its
        // middle; opening a document closes it, picking the tool (again after Cancel) reopens it.
        IVexaTool* range = window.tool(QStringLiteral("Color Range"));
        window.activateTool(range);
        auto* container = window.findChild<VexaFilterContainer*>();
        QVERIFY(container && container->isVisible() && container->parentWidget() == &window);
        QCOMPARE(container->windowFlags() & Qt::WindowType_Mask, Qt::Tool);
        const QRect canvas(window.canvas()->mapToGlobal(QPoint(0, 0)), window.canvas()->size());
        QVERIFY2(container->geometry().left() > canvas.center().x(), qPrintable(QString::number(container->geometry().left())));
        QString error;
        QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/chelsea.png"), &error));
        QVERIFY(!container->isVisible() && !range->isActive() && !window.chosenTool());
        window.activateTool(range);
        container->findChild<QPushButton*>(QStringLiteral("cancelBtn"))->click();
        QVERIFY(!container->isVisible() && !window.currentTool());
        window.activateTool(range);
        QVERIFY(container->isVisible() && range->isActive());
        window.deactivateTool();
    }

    void undoRedoStateAndExports()
    {
        VexaEditorWindow window(m_plugin);
        QAction* undo = action(window, QStringLiteral("&Undo"));
        QAction* redo = action(window, QStringLiteral("&Redo"));
        QVERIFY(undo && redo && !undo->isEnabled() && !redo->isEnabled());
        QString error;
        QVERIFY(!window.exportSelectionMask(QStringLiteral("/tmp/none.png"), &error)); // no document
        QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/coffee.png"), &error));
        QVERIFY(!undo->isEnabled());
        action(window, QStringLiteral("&All"))->trigger(); // the menu names the step
        QVERIFY(undo->isEnabled() && !redo->isEnabled() && undo->text() == QStringLiteral("&Undo Select All"));
        undo->trigger();
        QVERIFY(!undo->isEnabled() && redo->isEnabled() && redo->text() == QStringLiteral("&Redo Select All"));
        redo->trigger();
        QVERIFY(undo->isEnabled() && !redo->isEnabled());

        // Move Selection, two arrow keys, Ctrl+Z at once: the keys' shift is taken back, not the
        // selection under it.
        VexaSelection* sel = window.document()->getSelection();
        window.activateTool(window.tool(QStringLiteral("Move Selection")));
        for (int i = 0; i < 2; ++i) {
            QTest::qWait(60);
            QTest::keyClick(window.canvas(), Qt::Key_Right);
        }
        QCOMPARE(sel->getTranslation(), QPointF(2, 0));
        undo->trigger();
        QVERIFY(sel->getTranslation() == QPointF() && sel->boundingRect() == QRect(0, 0, 600, 400));
        QCOMPARE(redo->text() + undo->text(), QStringLiteral("&Redo Move Selection&Undo Select All"));
        window.deactivateTool();

        // Names without a suffix get ".png".
        QTemporaryDir dir;
        QVERIFY(window.exportSelectionMask(dir.filePath(QStringLiteral("mask")), &error));
        const QImage mask(dir.filePath(QStringLiteral("mask.png")));
        QVERIFY(mask.size() == QSize(600, 400) && mask.isGrayscale() && qGray(mask.pixel(599, 399)) == 255);
        QVERIFY(!window.exportSelectionMask(QStringLiteral("/nonexistent/dir/mask.png"), &error));
        QVERIFY(window.saveImage(dir.filePath(QStringLiteral("picture")), &error));
        QCOMPARE(QImage(dir.filePath(QStringLiteral("picture.png"))).size(), QSize(600, 400));

        // A save that fails half-way (here: a file size limit, as a full disk) keeps the old file.
        std::signal(SIGXFSZ, SIG_IGN); // the write fails rather than ending the test
        rlimit was{};
        QVERIFY(getrlimit(RLIMIT_FSIZE, &was) == 0);
        const rlimit tight{100, was.rlim_max};
        for (const QString& name : {QStringLiteral("picture.png"), QStringLiteral("mask.png")}) {
            QFile old(dir.filePath(name));
            QVERIFY(old.open(QIODevice::ReadOnly));
            const QByteArray before = old.readAll();
            old.close();
            QVERIFY(setrlimit(RLIMIT_FSIZE, &tight) == 0);
            const bool saved = name.startsWith(QLatin1String("mask")) ? window.exportSelectionMask(old.fileName(), &error)
                                                                       : window.saveImage(old.fileName(), &error);
            setrlimit(RLIMIT_FSIZE, &was);
            QVERIFY2(!saved && error.contains(name), qPrintable(error));
            QVERIFY(old.open(QIODevice::ReadOnly) && old.readAll() == before);
            QCOMPARE(QDir(dir.path()).entryList(QDir::Files).size(), 2); // no temporary left behind
        }
    }

    void gestureIsOneUndoStep()
    {
        VexaEditorWindow window(m_plugin);
        QVERIFY(openShown(window));
        window.activateTool(window.tool(QStringLiteral("Rectangular Marquee Tool")));
        VexaCanvas* canvas = window.canvas();
        VexaSelection* sel = window.document()->getSelection();
        VexaHistory* history = window.document()->getHistory();
        auto ui = [&](int x, int y) { return canvas->canvasToUi(QPointF(x, y)).toPoint(); };
        QCOMPARE(window.windowTitle(), QStringLiteral("coffee.png - Vexa Selections"));
        drag(canvas, ui(10, 10), ui(50, 40));
        const QRect first = sel->boundingRect();
        QCOMPARE(first, QRect(10, 10, 41, 31));
        const int steps = history->count();
        // A new shape elsewhere in New mode: it deselects at the press, then adds itself; one step.
        drag(canvas, ui(200, 200), ui(260, 230));
        QVERIFY(sel->boundingRect() == QRect(200, 200, 61, 31) && history->count() == steps + 1);
        history->undo();
        QCOMPARE(sel->boundingRect(), first);

        // A polygon takes a click per corner; from the first corner, which drops the selection, to
        // the closing click it is still one gesture.
        window.activateTool(window.tool(QStringLiteral("Polygonal Lasso Tool")));
        QTest::qWait(600); // past the polygon's swallow of clicks that follow a finished shape
        for (const QPoint corner : {QPoint(300, 50), QPoint(400, 50), QPoint(400, 150), QPoint(301, 51)}) {
            moveTo(canvas, ui(corner.x(), corner.y()));
            press(canvas, ui(corner.x(), corner.y()));
            release(canvas, ui(corner.x(), corner.y()));
            QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval() + 50);
        }
        QCOMPARE(sel->boundingRect(), QRect(300, 50, 100, 100));
        history->undo(); // one step back is the selection before the polygon, not an empty one
        QCOMPARE(sel->boundingRect(), first);
        window.deactivateTool();
    }

    void heldModifierAtPress_data()
    {
        QTest::addColumn<int>("modifier"); // none: a right-button drag
        QTest::addColumn<QPoint>("from"); QTest::addColumn<bool>("hasNew");
        // The old selection is (10, 10) to (50, 40); the new shape is dragged from `from` to (80, 70).
        QTest::newRow("Ctrl adds") << int(Qt::ControlModifier) << QPoint(60, 45) << true;
        // Inside the old selection: in Add mode a press there starts a shape, it does not drag.
        QTest::newRow("Ctrl adds, press inside") << int(Qt::ControlModifier) << QPoint(40, 30) << true;
        QTest::newRow("Alt subtracts, press inside") << int(Qt::AltModifier) << QPoint(40, 30) << false;
        // Where the window manager takes Alt + drag, a right-button drag subtracts.
        QTest::newRow("right drag subtracts, press inside") << int(Qt::NoModifier) << QPoint(40, 30) << false;
    }

    void heldModifierAtPress()
    {
        QFETCH(int, modifier); QFETCH(QPoint, from); QFETCH(bool, hasNew);
        const auto mods = Qt::KeyboardModifiers(modifier);
        const Qt::Key key = mods == Qt::ControlModifier ? Qt::Key_Control : Qt::Key_Alt;
        const Qt::MouseButton button = modifier ? Qt::LeftButton : Qt::RightButton;
        VexaEditorWindow window(m_plugin);
        QVERIFY(openShown(window));
        window.activateTool(window.tool(QStringLiteral("Rectangular Marquee Tool")));
        VexaCanvas* canvas = window.canvas();
        VexaSelection* sel = window.document()->getSelection();
        auto ui = [&](int x, int y) { return canvas->canvasToUi(QPointF(x, y)).toPoint(); };
        auto selected = [&](int x, int y) { return sel->mask()[size_t(y) * size_t(sel->maskStride()) + size_t(x)] >= 128; };
        drag(canvas, ui(10, 10), ui(50, 40));
        moveTo(canvas, ui(from.x(), from.y()));
        // The key as X11 delivers a modifier's own press: with the state from before it.
        if (modifier)
            QTest::keyPress(window.windowHandle(), key, Qt::NoModifier);
        press(canvas, ui(from.x(), from.y()), mods, button); // no move in between
        moveTo(canvas, ui(60, 50), mods);
        moveTo(canvas, ui(80, 70), mods);
        release(canvas, ui(80, 70), mods, button);
        if (modifier)
            QTest::keyRelease(window.windowHandle(), key, mods);
        QVERIFY(selected(15, 15));
        QCOMPARE(selected(70, 60), hasNew);
        QCOMPARE(selected(45, 35), hasNew || from.x() > 50); // subtracting removed the overlap
        if (!modifier)
            QCOMPARE(sel->combineMode, 0); // the drag's mode lasts for the drag only
        window.deactivateTool();
    }

    void pixelAlignedZoomAndViewMenu()
    {
        VexaEditorWindow window(m_plugin);
        QString error;
        QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/chelsea.png"), &error));
        window.resize(1001, 701); // odd sizes: centring alone would put the photo half a pixel off
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        VexaCanvas* canvas = window.canvas();
        QLabel* zoom = window.statusBar()->findChildren<QLabel*>().last(); // after the pixel under the pointer
        auto check100 = [&] {
            QCOMPARE(canvas->getScale(), 1.0f);
            const QPointF o = canvas->viewOrigin();
            QCOMPARE(o, QPointF(std::round(o.x()), std::round(o.y())));
            // The photo's pixels land on widget pixels unchanged, and a press over column 50 is column 50.
            const QImage shot = canvas->grabFramebuffer();
            const QImage photo = window.document()->composed();
            for (QPoint p : {QPoint(50, 10), QPoint(51, 10), QPoint(200, 150), QPoint(201, 151)})
                QCOMPARE(shot.pixel(o.toPoint() + p), photo.pixel(p));
            QSignalSpy pressed(canvas, &VexaCanvas::mousePress);
            QTest::mouseClick(canvas, Qt::LeftButton, {}, o.toPoint() + QPoint(50, 10));
            QCOMPARE(pressed.count(), 1);
            QCOMPARE(canvas->uiToCanvasCoord(pressed[0][0].toInt(), pressed[0][1].toInt(), false), QPointF(50, 10));
        };
        check100();
        QCOMPARE(zoom->text(), QStringLiteral("100 %"));
        for (const char* level : {"150 %", "200 %"}) {
            action(window, QStringLiteral("Zoom &In"))->trigger();
            QCOMPARE(zoom->text(), QLatin1String(level));
        }
        QCOMPARE(canvas->viewOrigin(), QPointF(std::round(canvas->viewOrigin().x()), std::round(canvas->viewOrigin().y())));
        action(window, QStringLiteral("&100 %"))->trigger();
        QCOMPARE(zoom->text(), QStringLiteral("100 %"));
        check100();
        action(window, QStringLiteral("Zoom &Out"))->trigger();
        QCOMPARE(zoom->text(), QStringLiteral("67 %"));
        // The wheel steps through the same levels, and the label follows it too. A
        // fine-stepping wheel takes a level per notch's worth (8 x 15), not a level per event.
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(zoom->text(), QStringLiteral("67 %"));
            QWheelEvent wheel(QPointF(100, 100), canvas->mapToGlobal(QPointF(100, 100)), QPoint(), QPoint(0, 15), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(canvas, &wheel);
        }
        QCOMPARE(zoom->text(), QStringLiteral("100 %"));
        action(window, QStringLiteral("&Fit to Window"))->trigger();
        QCOMPARE(zoom->text(), QStringLiteral("100 %")); // a small photo is never blown up
    }

    // Quick select is offered on the tool bar, opens modally from it, stays out of the options bar,
    // and is offered again once its window has closed itself (by Close or by Esc).
    void quickSelectFromToolBarAgainAndAgain()
    {
        VexaEditorWindow window(m_plugin);
        QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/chelsea.png"), nullptr));
        IVexaTool* tool = window.tool(QStringLiteral("Quick Select Tool"));
        QAction* pick = action(window, QStringLiteral("Quick Select Tool"));
        QVERIFY(tool && pick && pick->isEnabled());
        QStringList titles;
        for (int round = 0; round < 3; ++round) {
            QTimer::singleShot(0, &window, [&, round] {
                QWidget* quick = tool->getWidget();
                if (!quick || !quick->isVisible())
                    return;
                titles << quick->window()->windowTitle();
                QVERIFY(quick->window() != &window && window.currentTool() == tool);
                // Esc cancels as Close does.
                round == 1 ? QTest::keyClick(quick, Qt::Key_Escape) : quick->findChild<QPushButton*>("closeButton")->click();
            });
            pick->trigger(); // returns when the modal window has closed
            QVERIFY(!tool->isActive() && !window.currentTool() && !window.document()->currentTool() && !pick->isChecked());
        }
        QCOMPARE(titles, QStringList(3, QStringLiteral("451 x 300 - Quick Select Tool")));
    }
    void exitsWithoutOpenGl()
    {
        // Offscreen there is no OpenGL: the editor says so and exits. Without any display at all,
        // --help and --version still answer.
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        for (auto [option, code, says] : {std::tuple{VEXA_DATA_DIR "/coffee.png", 3, "needs OpenGL 2.1"},
                                          std::tuple{"--help", 0, "--locale"}, std::tuple{"--version", 0, "vexa-editor 1."}}) {
            QProcess editor;
            editor.setProcessEnvironment(env);
            editor.start(QStringLiteral(VEXA_EDITOR_PATH), {QLatin1String(option)});
            QVERIFY(editor.waitForFinished(60000) && editor.exitStatus() == QProcess::NormalExit);
            const QByteArray out = editor.readAllStandardOutput() + editor.readAllStandardError();
            QVERIFY2(editor.exitCode() == code && out.contains(says), out.constData());
            for (const char* var : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
                env.remove(QLatin1String(var));
        }
    }
};

QTEST_MAIN(TestEditor)
#include "tst_editor.moc"
