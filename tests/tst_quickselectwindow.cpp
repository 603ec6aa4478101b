// The quick select window, its mark view and its worker, driven as a user would: strokes
// through the view, buttons by click, steps waited for on the event loop.
#include "QuickSelectTestSupport.h"

#include "VexaToolQuickSelectImageBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSlider>
#include <QPaintEvent>
#include <QWheelEvent>

namespace {

template <class T>
T* child(QObject* parent, const char* name)
{
    T* w = parent->findChild<T*>(QLatin1String(name));
    if (!w)
        qFatal("no child %s", name);
    return w;
}

void wheel(QWidget* w, int delta, QPointF at = QPointF(5, 5))
{
    QWheelEvent e(at, w->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
}

int countPixels(const QImage& img, QRgb value, QRect* box = nullptr)
{
    int n = 0;
    QRect b;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (img.pixel(x, y) == value) {
                ++n;
                b |= QRect(x, y, 1, 1);
            }
    if (box)
        *box = b;
    return n;
}

void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held)
{
    QMouseEvent e(type, at, w->mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

// Paints a closed polyline of image points with the chosen pen, through the view's signal.
void stroke(VexaToolQuickSelectImageBox* box, const QVector<QPoint>& pts)
{
    for (int i = 1; i < pts.size(); ++i)
        emit box->line(pts[i - 1], pts[i], false);
}

} // namespace

class TestQuickSelectWindow : public QObject
{
    Q_OBJECT
private slots:
    void mapping_data();
    void mapping();
    void wheelZoom_data();
    void wheelZoom();
    void wheelIgnoresModifiersAndBusyPeriod();
    void partialRepaintMatchesFull_data();
    void partialRepaintMatchesFull();
    void pressWhileNotPainting();
    void bothButtonsPaintTwice();
    void zoomByWheelAndKeys();

    void loadScalesToWorkingSize_data();
    void loadScalesToWorkingSize();
    void clickPaintsDotOfPenWidth_data();
    void clickPaintsDotOfPenWidth();
    void strokesThatLeaveNoMarks();
    void recompositionRepaintsAtTheZoom();
    void stepDisablesControls();
    void hints_data();
    void hints();
    void viewSwitchDuringStepShowsItsEnd();
    void resetAfterCut();
    void cancelThenReloadBuildsFreshSegmentation();
};

// ---------------------------------------------------------------------------------------------
// Mark view

void TestQuickSelectWindow::mapping_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QPoint>("widget");
    QTest::addColumn<QPoint>("image");
    QTest::newRow("factor 2") << 11 << QPoint(101, 51) << QPoint(50, 25);
    QTest::newRow("factor 1") << 20 << QPoint(101, 51) << QPoint(101, 51);
    // 1 / 0.3: 5 * 0.3 = 1.5 and 9 * 0.3 = 2.7 truncate, never round.
    QTest::newRow("factor 3.33") << 7 << QPoint(5, 9) << QPoint(1, 2);
    QTest::newRow("factor 2/3") << 22 << QPoint(2, 1) << QPoint(3, 1);
    QTest::newRow("factor 1/32") << 34 << QPoint(3, 1) << QPoint(96, 32);
}

void TestQuickSelectWindow::mapping()
{
    QFETCH(int, index);
    QFETCH(QPoint, widget);
    QFETCH(QPoint, image);
    VexaToolQuickSelectImageBox box;
    box.allocImageToDraw(400, 300);
    box.zoomStep(index - 20);
    QCOMPARE(box.getScaleIndex(), index);
    QCOMPARE(box.uiToImageCoord(widget), image);
    QSignalSpy spy(&box, SIGNAL(line(QPoint,QPoint,bool)));
    QTest::mousePress(&box, Qt::LeftButton, Qt::NoModifier, widget);
    QCOMPARE(spy, QList<QList<QVariant>>({{image, image, false}}));
}

void TestQuickSelectWindow::wheelZoom_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("delta");
    QTest::addColumn<int>("to");
    QTest::addColumn<QSize>("size"); // of the view, for a 100 x 80 buffer
    // A notch goes to the next factor at least about 1.2 times away: the list's neighbours near
    // 1 are only 5 % apart.
    QTest::newRow("magnify: 1.25") << 20 << 120 << 16 << QSize(125, 100);
    QTest::newRow("magnify again: 1.5") << 16 << 120 << 14 << QSize(150, 120);
    QTest::newRow("reduce: 0.833") << 20 << -120 << 21 << QSize(83, 66);
    QTest::newRow("reduce again: 0.667") << 21 << -120 << 22 << QSize(66, 53);
    QTest::newRow("largest stays") << 0 << 120 << 0 << QSize(1600, 1280);
    QTest::newRow("smallest stays") << 34 << -120 << 34 << QSize(3, 2);
}

void TestQuickSelectWindow::wheelZoom()
{
    QFETCH(int, from);
    QFETCH(int, delta);
    QFETCH(int, to);
    QFETCH(QSize, size);
    VexaToolQuickSelectImageBox box;
    box.allocImageToDraw(100, 80);
    box.zoomStep(from - 20);
    box.onBusyTimeout();
    wheel(&box, delta);
    QCOMPARE(box.getScaleIndex(), to);
    QCOMPARE(box.size(), size);
}

void TestQuickSelectWindow::wheelIgnoresModifiersAndBusyPeriod()
{
    VexaToolQuickSelectImageBox box;
    box.allocImageToDraw(100, 80);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QTest::keyPress(&box, Qt::Key_Control, Qt::ControlModifier);
    QCOMPARE(QApplication::keyboardModifiers(), Qt::ControlModifier);
    box.onBusyTimeout();
    wheel(&box, 120);
    QCOMPARE(box.getScaleIndex(), 20);
    QTest::keyRelease(&box, Qt::Key_Control, Qt::NoModifier);
    box.onBusyTimeout();
    wheel(&box, -120);
    wheel(&box, -120); // within the 5 ms: only remembered
    QCOMPARE(box.getScaleIndex(), 21);
    // Once the busy period ends, the next notch zooms one step (the remembered ones add none).
    QVERIFY(spinUntil([&] {
        wheel(&box, -120);
        return box.getScaleIndex() != 21;
    }, 5000));
    QCOMPARE(box.getScaleIndex(), 22);
}

void TestQuickSelectWindow::partialRepaintMatchesFull_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("part"); // widget pixels
    for (const int index : {20, 11, 7, 0, 17})
        QTest::addRow("index %d", index) << index << QRect(13, 17, 40, 40);
    QTest::newRow("factor 2/3") << 22 << QRect(7, 5, 20, 20);
}

// A repaint of part of the view shows exactly what a repaint of the whole shows there.
void TestQuickSelectWindow::partialRepaintMatchesFull()
{
    QFETCH(int, index);
    QFETCH(QRect, part);
    const QImage picture = discPicture(64, 64);
    VexaToolQuickSelectImageBox box;
    box.initImageToDraw(&picture);
    box.zoomStep(index - 20);
    QImage full(box.size(), QImage::Format_ARGB32), partial(box.size(), QImage::Format_ARGB32);
    full.fill(0u);
    partial.fill(0u);
    box.render(&full);
    box.render(&partial, part.topLeft(), QRegion(part));
    QCOMPARE(partial.copy(part), full.copy(part));
}

void TestQuickSelectWindow::pressWhileNotPainting()
{
    VexaToolQuickSelectImageBox box;
    box.allocImageToDraw(100, 80);
    QSignalSpy spy(&box, SIGNAL(line(QPoint,QPoint,bool)));
    auto moveWith = [&](Qt::MouseButtons held, QPoint at) { mouse(&box, QEvent::MouseMove, at, Qt::NoButton, held); };
    box.setPainting(false);
    QTest::mousePress(&box, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QTest::mouseMove(&box, QPoint(12, 10));
    QCOMPARE(spy.size(), 0);

    // A drag under way survives painting going off...
    box.setPainting(true);
    QTest::mousePress(&box, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QCOMPARE(spy.size(), 1);
    box.setPainting(false);
    moveWith(Qt::LeftButton, QPoint(20, 20));
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy[1][0].toPoint(), QPoint(10, 10));
    QCOMPARE(spy[1][1].toPoint(), QPoint(20, 20));
    // ...but ends with its button: a hover after a release during the step paints nothing,
    QTest::mouseRelease(&box, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    box.setPainting(true);
    moveWith(Qt::NoButton, QPoint(30, 20));
    QCOMPARE(spy.size(), 2);
    // nor one after a release the view never saw,
    QTest::mousePress(&box, Qt::RightButton, Qt::NoModifier, QPoint(10, 10));
    QCOMPARE(spy.size(), 3);
    moveWith(Qt::NoButton, QPoint(30, 20));
    QCOMPARE(spy.size(), 3);
    // nor a drag cut short by hiding the view, even with a button held when it comes back.
    box.show();
    QTest::mousePress(&box, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QCOMPARE(spy.size(), 4);
    box.hide();
    box.show();
    moveWith(Qt::LeftButton, QPoint(30, 20));
    QCOMPARE(spy.size(), 4);
}

void TestQuickSelectWindow::bothButtonsPaintTwice()
{
    VexaToolQuickSelectImageBox box;
    box.allocImageToDraw(100, 80);
    QSignalSpy spy(&box, SIGNAL(line(QPoint,QPoint,bool)));
    mouse(&box, QEvent::MouseButtonPress, QPoint(10, 10), Qt::LeftButton, Qt::LeftButton);
    mouse(&box, QEvent::MouseButtonPress, QPoint(10, 10), Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    spy.clear();
    mouse(&box, QEvent::MouseMove, QPoint(30, 15), Qt::NoButton, Qt::LeftButton | Qt::RightButton);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy[0], spy[1]);
    QCOMPARE(spy[0][1].toPoint(), QPoint(30, 15));
}

// The wheel zooms about the pointer: the image point under it stays under it, both ways.
// Keys zoom by one step, and Ctrl+0 picks the largest factor at which all of the image shows.
void TestQuickSelectWindow::zoomByWheelAndKeys()
{
    QuickSelectDocument doc(discPicture(600, 400));
    VexaToolQuickSelectWidget window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.load(doc.doc.get());
    QVERIFY(waitForStep(&window));
    auto* box = window.getImageBox();
    QWidget* viewport = box->parentWidget();
    auto* area = window.findChild<QScrollArea*>();
    box->zoomStep(11 - 20); // factor 2
    // Scrolled to the middle, the pointer a little off the viewport's centre: no step below
    // takes the scroll offsets to their ends.
    area->horizontalScrollBar()->setValue(area->horizontalScrollBar()->maximum() / 2);
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum() / 2);
    const QPoint pointer = QPoint(viewport->width() / 2 + 17, viewport->height() / 2 - 11);
    const QPoint under = box->uiToImageCoord(box->mapFrom(viewport, pointer));
    for (const int delta : {120, 120, 120, -120, -120, -120}) {
        box->onBusyTimeout();
        wheel(box, delta, box->mapFrom(viewport, pointer));
        const QPoint now = box->uiToImageCoord(box->mapFrom(viewport, pointer));
        QVERIFY2((now - under).manhattanLength() <= 2, qPrintable(QStringLiteral("index %1").arg(box->getScaleIndex())));
    }
    QCOMPARE(box->getScaleIndex(), 11);
    // The wheel over the grey margin zooms as over the image.
    box->zoomStep(34 - 11);
    box->onBusyTimeout();
    wheel(viewport, 120);
    QCOMPARE(box->getScaleIndex(), 33);
    box->zoomStep(11 - 33);

    box->zoomStep(20 - 11);
    QTest::keyClick(&window, Qt::Key_Plus);
    QCOMPARE(box->getScaleIndex(), 19);
    QTest::keyClick(&window, Qt::Key_Minus);
    QTest::keyClick(&window, Qt::Key_Minus);
    QCOMPARE(box->getScaleIndex(), 21);
    QCOMPARE(box->size(), QSize(500, 333));
    box->zoomStep(-10);
    QTest::keyClick(&window, Qt::Key_0, Qt::ControlModifier);
    const QSize room = area->maximumViewportSize();
    QVERIFY(box->width() <= room.width() && box->height() <= room.height());
    box->zoomStep(-1);
    QVERIFY(box->width() > room.width() || box->height() > room.height());
    // One key per pen, named in its tool tip.
    QTest::keyClick(&window, Qt::Key_B);
    QVERIFY(child<QPushButton>(&window, "MarkBkg")->isChecked());
    QVERIFY(child<QPushButton>(&window, "MarkBkg")->toolTip().endsWith(QLatin1String("(B)")));
    QTest::keyClick(&window, Qt::Key_F);
    QVERIFY(child<QPushButton>(&window, "markObjButton")->isChecked());
}

// ---------------------------------------------------------------------------------------------
// Window

void TestQuickSelectWindow::loadScalesToWorkingSize_data()
{
    QTest::addColumn<QSize>("document");
    QTest::addColumn<QSize>("working");
    QTest::addColumn<QString>("title");
    QTest::newRow("4000 x 3000") << QSize(4000, 3000) << QSize(1536, 1152) << "1536 x 1152 - Quick Select Tool";
    QTest::newRow("3000 x 2000") << QSize(3000, 2000) << QSize(1536, 1024) << "1536 x 1024 - Quick Select Tool";
    QTest::newRow("1200 x 900 keeps") << QSize(1200, 900) << QSize(1200, 900) << "1200 x 900 - Quick Select Tool";
}

void TestQuickSelectWindow::loadScalesToWorkingSize()
{
    QFETCH(QSize, document);
    QFETCH(QSize, working);
    QFETCH(QString, title);
    QImage img = discPicture(document.width(), document.height());
    img.setPixel(document.width() - 1, document.height() - 1, qRgba(200, 100, 50, 90)); // the working image is opaque all the same
    QuickSelectDocument doc(img);
    VexaToolQuickSelectWidget window;
    window.load(doc.doc.get()); // as the tool does: loaded, then shown
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.windowTitle(), title);
    const VexaSegmentation& seg = window.segmentation();
    QCOMPARE(seg.sourceImage.size(), working);
    QVERIFY(waitForStep(&window));
    QCOMPARE(qAlpha(seg.sourceImage.pixel(working.width() - 1, working.height() - 1)), 255);
    QCOMPARE(seg.regionMap.size(), size_t(working.width()) * size_t(working.height()));
    auto* box = window.getImageBox();
    QCOMPARE(*box->getImageToDraw(), seg.sourceImage);
    // It opens fitted to the window.
    const QSize room = window.findChild<QScrollArea*>()->maximumViewportSize();
    QVERIFY(box->getScaleIndex() > 20);
    QVERIFY(box->width() <= room.width() && box->height() <= room.height());
    // "Show User Marks" shows the marks over the matte and the alpha too.
    const QPoint at(working.width() / 2, working.height() / 2);
    stroke(box, {at - QPoint(30, 0), at + QPoint(30, 0)});
    for (const auto& [button, shown] : {std::pair<const char*, const QImage*>{"viewMatteButton", &seg.resultImage},
                                        {"viewAlphaButton", &seg.alphaImage}}) {
        child<QRadioButton>(&window, button)->click();
        QVERIFY2(box->getImageToDraw()->pixel(at) != shown->pixel(at), button);
        child<QCheckBox>(&window, "showMarkBox")->click();
        QCOMPARE(box->getImageToDraw()->pixel(at), shown->pixel(at));
        child<QCheckBox>(&window, "showMarkBox")->click();
    }
    // Picking a pen from the alpha view shows the image to paint on.
    child<QPushButton>(&window, "MarkBkg")->click();
    const QImage shownByPen = *box->getImageToDraw();
    child<QRadioButton>(&window, "viewImageButton")->click();
    QCOMPARE(shownByPen, *box->getImageToDraw());
}

void TestQuickSelectWindow::clickPaintsDotOfPenWidth_data()
{
    QTest::addColumn<int>("width");
    QTest::newRow("10") << 10;
    QTest::newRow("7") << 7;
    QTest::newRow("31") << 31;
}

void TestQuickSelectWindow::clickPaintsDotOfPenWidth()
{
    QFETCH(int, width);
    QuickSelectDocument doc(discPicture(200, 160));
    VexaToolQuickSelectWidget window;
    window.load(doc.doc.get());
    QVERIFY(waitForStep(&window));
    QCOMPARE(window.getImageBox()->getRadius(), 5); // the default pen of 10
    child<QSlider>(&window, "radiusSlider")->setValue(width);
    QCOMPARE(window.getImageBox()->getRadius(), width / 2);
    QCOMPARE(child<QLabel>(&window, "radiusLabel")->text(), QStringLiteral("Mark Radius: %1").arg(width));
    QTest::mousePress(window.getImageBox(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 80));
    QTest::mouseRelease(window.getImageBox(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 80));
    QRect box;
    const int n = countPixels(window.segmentation().markImage, VexaSegmentation::ForegroundMark, &box);
    QVERIFY2(qAbs(box.width() - width) <= 1 && qAbs(box.height() - width) <= 1,
             qPrintable(QStringLiteral("dot %1 x %2").arg(box.width()).arg(box.height())));
    QVERIFY(box.contains(QPoint(100, 80)));
    const double area = M_PI * width * width / 4.0;
    QVERIFY2(qAbs(n - area) <= 0.25 * area + 2, qPrintable(QString::number(n)));
    // Nothing else was painted: marks are exactly the pen's colour or nothing.
    QCOMPARE(n + countPixels(window.segmentation().markImage, 0u), 200 * 160);
    // Scripts get the marks as a deep copy, never a second reference to what a step writes.
    const QImage handed = window.property("markImage").value<QImage>();
    QCOMPARE(handed, window.segmentation().markImage);
    QVERIFY(handed.constBits() != window.segmentation().markImage.constBits());
    // The view shows the mark blended over the photo.
    const QRgb shown = window.getImageBox()->getImageToDraw()->pixel(100, 80);
    QVERIFY(qRed(shown) > qRed(window.segmentation().sourceImage.pixel(100, 80)) || qRed(shown) == 255);
}

void TestQuickSelectWindow::strokesThatLeaveNoMarks()
{
    QuickSelectDocument doc(discPicture(200, 160));
    VexaToolQuickSelectWidget window;
    window.load(doc.doc.get());
    QVERIFY(waitForStep(&window));
    auto* box = window.getImageBox();
    // Strokes outside the image view paint nothing; the alpha view shows the matte, all
    // selected after load.
    child<QRadioButton>(&window, "viewAlphaButton")->click();
    stroke(box, {QPoint(20, 40), QPoint(180, 40)});
    QCOMPARE(countPixels(window.segmentation().markImage, 0u), 200 * 160);
    QCOMPARE(box->getImageToDraw()->pixel(50, 50), 0xFFFFFFFFu);
    child<QRadioButton>(&window, "viewImageButton")->click();
    stroke(box, {QPoint(20, 40), QPoint(180, 40)});
    QVERIFY(countPixels(window.segmentation().markImage, VexaSegmentation::ForegroundMark) > 0);
    // The clear pen erases fully.
    child<QPushButton>(&window, "markClrButton")->click();
    QVERIFY(child<QPushButton>(&window, "markClrButton")->isChecked());
    QVERIFY(!child<QPushButton>(&window, "markObjButton")->isChecked());
    QCOMPARE(child<QPushButton>(&window, "markClrButton")->styleSheet(), QStringLiteral("background:#ffffff"));
    child<QSlider>(&window, "radiusSlider")->setValue(40);
    stroke(box, {QPoint(10, 40), QPoint(190, 40)});
    QCOMPARE(countPixels(window.segmentation().markImage, 0u), 200 * 160);
    // A pen of width 0 paints nothing either.
    child<QPushButton>(&window, "markObjButton")->click();
    child<QSlider>(&window, "radiusSlider")->setValue(0);
    stroke(box, {QPoint(20, 40), QPoint(180, 40)});
    QCOMPARE(countPixels(window.segmentation().markImage, 0u), 200 * 160);
}

// Records the rectangles the view is asked to paint.
class PaintRecorder : public QObject
{
public:
    QRegion painted;
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(e)->region();
        return false;
    }
};

void TestQuickSelectWindow::recompositionRepaintsAtTheZoom()
{
    QuickSelectDocument doc(discPicture(200, 160));
    VexaToolQuickSelectWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.load(doc.doc.get());
    QVERIFY(waitForStep(&window));
    auto* box = window.getImageBox();
    box->zoomStep(11 - 20); // factor 2
    QCOMPARE(box->size(), QSize(400, 320));
    QTest::qWait(50);
    PaintRecorder recorder;
    box->installEventFilter(&recorder);
    // A dot at image (100, 80) with the 10 pixel pen changes image pixels (87, 67)-(112, 92).
    window.line(QPoint(100, 80), QPoint(100, 80));
    QTest::qWait(50);
    QVERIFY(recorder.painted.contains(QRect(QPoint(174, 134), QPoint(225, 185))));
    // The view shows the mark where the zoom puts it.
    const QImage shown = box->grab().toImage();
    QCOMPARE(qRed(shown.pixel(200, 160)), qRed(box->getImageToDraw()->pixel(100, 80)));
}

void TestQuickSelectWindow::stepDisablesControls()
{
    QuickSelectDocument doc(discPicture(600, 400));
    VexaToolQuickSelectWidget window;
    QSignalSpy reports(window.getThread(), SIGNAL(progress(QString,int)));
    window.load(doc.doc.get());
    QVERIFY(window.isStepRunning());
    const char* names[] = {"previewButton", "matteButton", "resetButton", "applyButton"};
    for (const char* name : names)
        QVERIFY2(!child<QPushButton>(&window, name)->isEnabled() && child<QPushButton>(&window, "closeButton")->isEnabled(), name);
    window.matte(); // the worker is busy with init: this start is lost
    QCOMPARE(window.getThread()->getProcess(), 2);
    QVERIFY(waitForStep(&window));
    for (const char* name : names)
        QVERIFY2(child<QPushButton>(&window, name)->isEnabled(), name);
    // Every report of init reached the window, and nothing else ran; the last one empties the bar.
    QTest::qWait(50);
    QCOMPARE(reports.size(), 10);
    for (const QList<QVariant>& r : std::as_const(reports))
        QVERIFY2(r[0].toString().startsWith(QLatin1String("Initializ")), qPrintable(r[0].toString()));
    QCOMPARE(window.segmentation().alphaImage.pixel(0, 0), 0xFFFFFFFFu);
    QCOMPARE(child<QLabel>(&window, "progressLabel")->text(), QStringLiteral("Initialize done."));
    // ... and the window fills it at the step's end, so that the step is seen to have run.
    QCOMPARE(child<QProgressBar>(&window, "progressBar")->value(), 100);
    QVERIFY(window.getImageBox()->isPainting());
}

void TestQuickSelectWindow::hints_data()
{
    QTest::addColumn<bool>("foreground");
    QTest::addColumn<QString>("hint");
    QTest::newRow("no marks") << false << "Please mark foreground objects.";
    QTest::newRow("object only") << true << "Please mark background regions.";
}

void TestQuickSelectWindow::hints()
{
    QFETCH(bool, foreground);
    QFETCH(QString, hint);
    QuickSelectDocument doc(discPicture(200, 160));
    VexaToolQuickSelectWidget window;
    window.show();
    MessageBoxAnswerer answers;
    window.load(doc.doc.get());
    QVERIFY(waitForStep(&window));
    if (foreground)
        stroke(window.getImageBox(), {QPoint(90, 80), QPoint(110, 80)});
    const QImage alphaBefore = window.segmentation().alphaImage.copy();
    const std::vector<int> weightsBefore = window.segmentation().terminalWeights;
    child<QPushButton>(&window, "previewButton")->click();
    QVERIFY(waitForStep(&window));
    QVERIFY(spinUntil([&] { return !answers.texts.isEmpty(); }, 5000));
    QTest::qWait(50);
    QCOMPARE(answers.texts, QStringList{hint});
    QCOMPARE(window.segmentation().alphaImage, alphaBefore);
    QCOMPARE(window.segmentation().terminalWeights, weightsBefore);
    QCOMPARE(child<QLabel>(&window, "progressLabel")->text(), QStringLiteral("Mark done"));
    QCOMPARE(child<QProgressBar>(&window, "progressBar")->value(), 0); // refused: no progress shown
    QVERIFY(window.getImageBox()->isPainting());
}

void TestQuickSelectWindow::viewSwitchDuringStepShowsItsEnd()
{
    QuickSelectDocument doc(discPicture(600, 400));
    VexaToolQuickSelectWidget window;
    window.load(doc.doc.get());
    QVERIFY(waitForStep(&window));
    auto* box = window.getImageBox();
    stroke(box, {QPoint(280, 200), QPoint(320, 200)});
    child<QPushButton>(&window, "MarkBkg")->click();
    stroke(box, {QPoint(5, 5), QPoint(594, 5), QPoint(594, 394), QPoint(5, 394), QPoint(5, 5)});
    child<QPushButton>(&window, "markObjButton")->click();
    child<QPushButton>(&window, "previewButton")->click();
    // The step is writing the matte: the switch waits for its end, and so do strokes.
    QVERIFY(window.isStepRunning());
    child<QRadioButton>(&window, "viewAlphaButton")->click();
    child<QRadioButton>(&window, "viewImageButton")->click();
    stroke(box, {QPoint(100, 100), QPoint(120, 100)});
    child<QCheckBox>(&window, "showMarkBox")->setChecked(false); // the alpha alone
    child<QRadioButton>(&window, "viewAlphaButton")->click();
    // A host reading the marks now gets those the step leaves, its band included: never the
    // pixels it is writing.
    const QImage marksRead = window.property("markImage").value<QImage>();
    QVERIFY(waitForStep(&window));
    QVERIFY(countPixels(marksRead, VexaSegmentation::BoundaryMark) > 0);
    QCOMPARE(marksRead, window.segmentation().markImage);
    QCOMPARE(*box->getImageToDraw(), window.segmentation().alphaImage);
    QCOMPARE(qBlue(window.segmentation().alphaImage.pixel(300, 200)), 255);
    QCOMPARE(qBlue(window.segmentation().alphaImage.pixel(3, 3)), 0);
    QCOMPARE(window.segmentation().markImage.pixel(110, 100), 0u);
}

void TestQuickSelectWindow::resetAfterCut()
{
    QuickSelectDocument doc(discPicture(240, 200));
    VexaToolQuickSelectWidget window;
    window.show();
    window.load(doc.doc.get());
    QVERIFY(waitForStep(&window));
    auto* box = window.getImageBox();
    stroke(box, {QPoint(110, 100), QPoint(130, 100)});
    child<QPushButton>(&window, "MarkBkg")->click();
    QCOMPARE(child<QPushButton>(&window, "MarkBkg")->styleSheet() + child<QPushButton>(&window, "markObjButton")->styleSheet(),
             QStringLiteral("background:#0000ff"));
    stroke(box, {QPoint(5, 5), QPoint(234, 5), QPoint(234, 194), QPoint(5, 194), QPoint(5, 5)});
    child<QPushButton>(&window, "previewButton")->click();
    QVERIFY(waitForStep(&window));
    const VexaSegmentation& seg = window.segmentation();
    QCOMPARE(qBlue(seg.alphaImage.pixel(120, 100)), 255);
    QCOMPARE(qBlue(seg.alphaImage.pixel(3, 3)), 0);
    // The band the cut drew and the boundary the user paints over it are one mark to the steps,
    // but show in two colours; the next cut makes the user's part band again.
    child<QPushButton>(&window, "markBndButton")->click();
    QRect band;
    QVERIFY(countPixels(seg.markImage, VexaSegmentation::BoundaryMark, &band) > 0);
    QPoint p = band.topLeft();
    while (seg.markImage.pixel(p) != VexaSegmentation::BoundaryMark)
        p.rx()++;
    const QRgb computed = box->getImageToDraw()->pixel(p);
    stroke(box, {p, p});
    QCOMPARE(seg.markImage.pixel(p), VexaSegmentation::BoundaryMark);
    QVERIFY(box->getImageToDraw()->pixel(p) != computed);
    child<QPushButton>(&window, "previewButton")->click();
    QVERIFY(waitForStep(&window));
    child<QRadioButton>(&window, "viewImageButton")->click();
    QCOMPARE(box->getImageToDraw()->pixel(p), computed);

    child<QSlider>(&window, "radiusSlider")->setValue(30);
    child<QSlider>(&window, "lambdaSlider")->setValue(60);
    child<QRadioButton>(&window, "viewMatteButton")->click();
    child<QPushButton>(&window, "resetButton")->click();
    QCOMPARE(child<QSlider>(&window, "radiusSlider")->value(), 10);
    QCOMPARE(child<QSlider>(&window, "lambdaSlider")->value(), 10);
    QCOMPARE(child<QLabel>(&window, "lambdaLabel")->text(), QStringLiteral("Sensitivity: 10"));
    QVERIFY(child<QRadioButton>(&window, "viewImageButton")->isChecked());
    QCOMPARE(*box->getImageToDraw(), seg.sourceImage);
    QCOMPARE(seg.alphaImage.pixel(3, 3), 0xFFFFFFFFu);
    QCOMPARE(countPixels(seg.markImage, 0u), 240 * 200);
    // The foreground pen is chosen as by a click: the background pen is off, and the buttons show it.
    QVERIFY(!child<QPushButton>(&window, "MarkBkg")->isChecked() && child<QPushButton>(&window, "markObjButton")->isChecked());
    QCOMPARE(child<QPushButton>(&window, "MarkBkg")->styleSheet() + child<QPushButton>(&window, "markObjButton")->styleSheet(),
             QStringLiteral("background:#ff0000"));
    stroke(box, {QPoint(110, 100), QPoint(130, 100)});
    QCOMPARE(seg.markImage.pixel(120, 100), VexaSegmentation::ForegroundMark);
}

void TestQuickSelectWindow::cancelThenReloadBuildsFreshSegmentation()
{
    QuickSelectDocument doc(discPicture(1536, 1536));
    VexaToolQuickSelectWidget window;
    // The step's reports, counted as they reach the GUI thread (a spy would record them on the
    // worker's thread, a race with reading it here).
    int reports = 0;
    bool done = false;
    connect(window.getThread(), &Thread::progress, &window, [&](const QString& text, int) {
        ++reports;
        done |= text == QLatin1String("Initialize done.");
    });
    connect(window.getThread(), &Thread::setPainting, &window, [&](bool on) { done |= on; });
    window.load(doc.doc.get());
    // The init step is at work (it has reported), and still is when Cancel comes.
    QVERIFY(spinUntil([&] { return reports > 0 || !window.getThread()->isRunning(); }));
    QVERIFY(window.getThread()->isRunning());
    window.stopThread();
    QVERIFY(!window.getThread()->isRunning());
    QCoreApplication::sendPostedEvents(); // every report it sent before it ended
    // It ended early: it never got to say it was done, nor to let the user paint.
    QVERIFY(!done);
    QVERIFY(!window.isStepRunning());
    QVERIFY(child<QPushButton>(&window, "previewButton")->isEnabled());
    window.getImageBox()->zoomStep(11 - 20); // factor 2
    window.releaseData();
    QVERIFY(window.segmentation().sourceImage.isNull());
    QVERIFY(!window.segmentation().graph);
    QCOMPARE(window.getImageBox()->size(), QSize(0, 0));

    QuickSelectDocument small(discPicture(300, 200));
    window.load(small.doc.get());
    // The zoom is kept, and the view takes the size it gives: all of the image can be marked.
    QCOMPARE(window.getImageBox()->getScaleIndex(), 11);
    QCOMPARE(window.getImageBox()->size(), QSize(600, 400));
    QCOMPARE(window.getImageBox()->uiToImageCoord(599, 399), QPoint(299, 199));
    // Views picked while a step runs are shown once it has ended: until then the window reads
    // none of the step's images (each read asserts so, since the race checker cannot see a
    // read that QPainter or QImage::copy makes).
    QVERIFY(window.isStepRunning());
    child<QRadioButton>(&window, "viewAlphaButton")->click();
    child<QCheckBox>(&window, "showMarkBox")->click();
    QVERIFY(waitForStep(&window));
    QCOMPARE(window.getImageBox()->getImageToDraw()->pixel(150, 100), 0xFFFFFFFFu); // the alpha view, all selected
    const VexaSegmentation& seg = window.segmentation();
    QCOMPARE(seg.regionMap.size(), size_t(300 * 200));
    QVERIFY(seg.graph);
    QVERIFY(!seg.regionColors.empty());
    // Stale reports of the cancelled step, if any were still queued, change nothing now.
    QTest::qWait(50);
    QVERIFY(!window.isStepRunning());
}

QTEST_MAIN(TestQuickSelectWindow)
#include "tst_quickselectwindow.moc"
