// The quick select window, its mark view and its worker, driven as a user would: strokes
// through the view, buttons by click, steps waited for on the event loop.
#include "QuickSelectTestSupport.h"

#include "VexaToolQuickSelectImageBox.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSlider>
#include <QWheelEvent>

namespace {

template <class T = QPushButton>
T* child(QObject* parent, const char* name)
{
    T* w = parent->findChild<T*>(QLatin1String(name));
    if (!w)
        qFatal("no child %s", name);
    return w;
}

void click(QObject* window, const char* name) { child<QAbstractButton>(window, name)->click(); }

void wheel(QWidget* w, int delta, QPointF at = QPointF(5, 5))
{
    QWheelEvent e(at, w->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
}

void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held)
{
    QMouseEvent e(type, at, w->mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

int countPixels(const QImage& img, QRgb value, QRect* box = nullptr)
{
    int n = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (img.pixel(x, y) == value && ++n && box)
                *box |= QRect(x, y, 1, 1);
    return n;
}

// Paints a polyline of image points with the chosen pen, through the view's signal.
void stroke(VexaToolQuickSelectImageBox* box, const QVector<QPoint>& pts)
{
    for (int i = 1; i < pts.size(); ++i)
        emit box->line(pts[i - 1], pts[i], false);
}

// A window with `picture` loaded and its first step done.
struct Loaded {
    explicit Loaded(const QImage& picture, bool shown = true)
        : doc(picture)
    {
        if (shown)
            window.show();
        window.load(doc.doc.get());
        if (!waitForStep(&window))
            qFatal("the first step does not end");
    }
    QuickSelectDocument doc;
    VexaToolQuickSelectWidget window;
    VexaToolQuickSelectImageBox* box = window.getImageBox();
    const VexaSegmentation& seg = window.segmentation();
};

} // namespace

class TestQuickSelectWindow : public QObject
{
    Q_OBJECT
private slots:

    // ---- Mark view ----------------------------------------------------------------------------

    void wheelZoom_data()
    {
        QTest::addColumn<int>("from"); QTest::addColumn<int>("delta"); QTest::addColumn<int>("to");
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
    void wheelZoom()
    {
        QFETCH(int, from); QFETCH(int, delta); QFETCH(int, to); QFETCH(QSize, size);
        VexaToolQuickSelectImageBox box;
        box.allocImageToDraw(100, 80);
        box.zoomStep(from - 20);
        box.onBusyTimeout();
        wheel(&box, delta);
        QCOMPARE(box.getScaleIndex(), to);
        QCOMPARE(box.size(), size);
    }

    void wheelIgnoresModifiersAndBusyPeriod()
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
        QVERIFY(spinUntil([&] { wheel(&box, -120); return box.getScaleIndex() != 21; }, 5000));
        QCOMPARE(box.getScaleIndex(), 22);
    }

    // A repaint of part of the view shows exactly what a repaint of the whole shows there.
    void partialRepaintMatchesFull_data()
    {
        QTest::addColumn<int>("index"); QTest::addColumn<QRect>("part"); // widget pixels
        for (const int index : {20, 11, 7, 0, 17})
            QTest::addRow("index %d", index) << index << QRect(13, 17, 40, 40);
        QTest::newRow("factor 2/3") << 22 << QRect(7, 5, 20, 20);
    }
    void partialRepaintMatchesFull()
    {
        QFETCH(int, index); QFETCH(QRect, part);
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

    void pressWhileNotPainting()
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
        box.setPainting(false);
        moveWith(Qt::LeftButton, QPoint(20, 20));
        QCOMPARE(spy.size(), 2);
        QCOMPARE(spy[1].mid(0, 2), (QList<QVariant>{QPoint(10, 10), QPoint(20, 20)}));
        // ...but ends with its button: a hover after a release during the step paints nothing,
        QTest::mouseRelease(&box, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
        box.setPainting(true);
        moveWith(Qt::NoButton, QPoint(30, 20));
        QCOMPARE(spy.size(), 2);
        // nor one after a release the view never saw.
        QTest::mousePress(&box, Qt::RightButton, Qt::NoModifier, QPoint(10, 10));
        moveWith(Qt::NoButton, QPoint(30, 20));
        QCOMPARE(spy.size(), 3);
        // Both buttons held paint twice, one line for each.
        mouse(&box, QEvent::MouseButtonPress, QPoint(10, 10), Qt::LeftButton, Qt::LeftButton);
        mouse(&box, QEvent::MouseButtonPress, QPoint(10, 10), Qt::RightButton, Qt::LeftButton | Qt::RightButton);
        spy.clear();
        moveWith(Qt::LeftButton | Qt::RightButton, QPoint(30, 15));
        QVERIFY(spy.size() == 2 && spy[0] == spy[1] && spy[0][1].toPoint() == QPoint(30, 15));
    }

    // The wheel zooms about the pointer: the image point under it stays under it, both ways.
    // Keys zoom by one step, and Ctrl+0 picks the largest factor at which all of the image shows.
    void zoomByWheelAndKeys()
    {
        Loaded l(discPicture(600, 400));
        l.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&l.window));
        auto* box = l.box;
        QWidget* viewport = box->parentWidget();
        auto* area = l.window.findChild<QScrollArea*>();
        box->zoomStep(11 - 20); // factor 2
        QCOMPARE(box->uiToImageCoord(1199, 799), QPoint(599, 399)); // truncated, not rounded
        // Scrolled to the middle, the pointer a little off the viewport's centre: no step below
        // takes the scroll offsets to their ends.
        area->horizontalScrollBar()->setValue(area->horizontalScrollBar()->maximum() / 2);
        area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum() / 2);
        const QPoint pointer = QPoint(viewport->width() / 2 + 17, viewport->height() / 2 - 11);
        const QPoint under = box->uiToImageCoord(box->mapFrom(viewport, pointer));
        for (const int delta : {120, 120, 120, -120, -120, -120}) {
            box->onBusyTimeout();
            wheel(box, delta, box->mapFrom(viewport, pointer));
            QVERIFY2((box->uiToImageCoord(box->mapFrom(viewport, pointer)) - under).manhattanLength() <= 2, qPrintable(QString::number(box->getScaleIndex())));
        }
        QCOMPARE(box->getScaleIndex(), 11);
        // The wheel over the grey margin zooms as over the image.
        box->zoomStep(34 - 11);
        box->onBusyTimeout();
        wheel(viewport, 120);
        QCOMPARE(box->getScaleIndex(), 33);

        box->zoomStep(20 - 33);
        QTest::keyClick(&l.window, Qt::Key_Plus);
        QCOMPARE(box->getScaleIndex(), 19);
        QTest::keyClicks(&l.window, QStringLiteral("--"));
        QVERIFY(box->getScaleIndex() == 21 && box->size() == QSize(500, 333));
        box->zoomStep(-10);
        QTest::keyClick(&l.window, Qt::Key_0, Qt::ControlModifier);
        const QSize room = area->maximumViewportSize();
        QVERIFY(box->width() <= room.width() && box->height() <= room.height());
        box->zoomStep(-1);
        QVERIFY(box->width() > room.width() || box->height() > room.height());
        // One key per pen, named in its tool tip.
        QTest::keyClick(&l.window, Qt::Key_B);
        QVERIFY(child(&l.window, "MarkBkg")->isChecked());
        QVERIFY(child(&l.window, "MarkBkg")->toolTip().endsWith(QLatin1String("(B)")));
        QTest::keyClick(&l.window, Qt::Key_F);
        QVERIFY(child(&l.window, "markObjButton")->isChecked());
    }

    // ---- Window -------------------------------------------------------------------------------

    void loadScalesToWorkingSize_data()
    {
        QTest::addColumn<QSize>("document"); QTest::addColumn<QSize>("working");
        QTest::newRow("4000 x 3000") << QSize(4000, 3000) << QSize(1536, 1152);
        QTest::newRow("1200 x 900 keeps") << QSize(1200, 900) << QSize(1200, 900);
    }
    void loadScalesToWorkingSize()
    {
        QFETCH(QSize, document); QFETCH(QSize, working);
        QImage img = discPicture(document.width(), document.height());
        img.setPixel(document.width() - 1, document.height() - 1, qRgba(200, 100, 50, 90)); // the working image is opaque all the same
        QuickSelectDocument doc(img);
        VexaToolQuickSelectWidget window;
        window.load(doc.doc.get()); // as the tool does: loaded, then shown
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowTitle(), QStringLiteral("%1 x %2 - Quick Select Tool").arg(working.width()).arg(working.height()));
        const VexaSegmentation& seg = window.segmentation();
        QCOMPARE(seg.sourceImage.size(), working);
        QVERIFY(waitForStep(&window) && qAlpha(seg.sourceImage.pixel(working.width() - 1, working.height() - 1)) == 255);
        QCOMPARE(seg.regionMap.size(), size_t(working.width()) * size_t(working.height()));
        auto* box = window.getImageBox();
        QCOMPARE(*box->getImageToDraw(), seg.sourceImage);
        // It opens fitted to the window.
        const QSize room = window.findChild<QScrollArea*>()->maximumViewportSize();
        QVERIFY(box->getScaleIndex() > 20 && box->width() <= room.width() && box->height() <= room.height());
        // "Show User Marks" shows the marks over the matte and the alpha too.
        const QPoint at(working.width() / 2, working.height() / 2);
        stroke(box, {at - QPoint(30, 0), at + QPoint(30, 0)});
        for (const auto& [button, shown] : {std::pair<const char*, const QImage*>{"viewMatteButton", &seg.resultImage},
                                            {"viewAlphaButton", &seg.alphaImage}}) {
            click(&window, button);
            QVERIFY2(box->getImageToDraw()->pixel(at) != shown->pixel(at), button);
            click(&window, "showMarkBox");
            QCOMPARE(box->getImageToDraw()->pixel(at), shown->pixel(at));
            click(&window, "showMarkBox");
        }
        // Picking a pen from the alpha view shows the image to paint on.
        click(&window, "MarkBkg");
        const QImage shownByPen = *box->getImageToDraw();
        click(&window, "viewImageButton");
        QCOMPARE(shownByPen, *box->getImageToDraw());
    }

    void clickPaintsDotOfPenWidth_data()
    {
        QTest::addColumn<int>("width");
        for (const int width : {10, 7, 31})
            QTest::addRow("%d", width) << width;
    }
    void clickPaintsDotOfPenWidth()
    {
        QFETCH(int, width);
        Loaded l(discPicture(200, 160), false);
        QCOMPARE(l.box->getRadius(), 5); // the default pen of 10
        child<QSlider>(&l.window, "radiusSlider")->setValue(width);
        QCOMPARE(l.box->getRadius(), width / 2);
        QCOMPARE(child<QLabel>(&l.window, "radiusLabel")->text(), QStringLiteral("Mark Radius: %1").arg(width));
        QTest::mouseClick(l.box, Qt::LeftButton, Qt::NoModifier, QPoint(100, 80));
        QRect box;
        const int n = countPixels(l.seg.markImage, VexaSegmentation::ForegroundMark, &box);
        QVERIFY2(qAbs(box.width() - width) <= 1 && qAbs(box.height() - width) <= 1 && box.contains(QPoint(100, 80)),
                 qPrintable(QStringLiteral("dot %1 x %2").arg(box.width()).arg(box.height())));
        const double area = M_PI * width * width / 4.0;
        QVERIFY2(qAbs(n - area) <= 0.25 * area + 2, qPrintable(QString::number(n)));
        // Nothing else was painted: marks are exactly the pen's colour or nothing.
        QCOMPARE(n + countPixels(l.seg.markImage, 0u), 200 * 160);
        // Scripts get the marks as a deep copy, never a second reference to what a step writes.
        const QImage handed = l.window.property("markImage").value<QImage>();
        QVERIFY(handed == l.seg.markImage && handed.constBits() != l.seg.markImage.constBits());
        // The view shows the mark blended over the photo.
        const QRgb shown = l.box->getImageToDraw()->pixel(100, 80);
        QVERIFY(qRed(shown) > qRed(l.seg.sourceImage.pixel(100, 80)) || qRed(shown) == 255);
        // The clear pen erases fully.
        click(&l.window, "markClrButton");
        QCOMPARE(child(&l.window, "markClrButton")->styleSheet(), QStringLiteral("background:#ffffff"));
        QTest::mouseClick(l.box, Qt::LeftButton, Qt::NoModifier, QPoint(100, 80));
        QCOMPARE(countPixels(l.seg.markImage, 0u), 200 * 160);
    }

    // While a step runs, the buttons that start one are off and a start is lost; a view switch
    // waits for the step's end and a stroke is dropped (until the end the window reads none of the
    // step's images: each read asserts so, since the race checker cannot see a read that QPainter
    // or QImage::copy makes).
    void stepHoldsTheControls()
    {
        QuickSelectDocument doc(discPicture(600, 400));
        VexaToolQuickSelectWidget window;
        QSignalSpy reports(window.getThread(), SIGNAL(progress(QString,int)));
        window.load(doc.doc.get());
        QVERIFY(window.isStepRunning());
        const char* names[] = {"previewButton", "matteButton", "resetButton", "applyButton"};
        for (const char* name : names)
            QVERIFY2(!child(&window, name)->isEnabled() && child(&window, "closeButton")->isEnabled(), name);
        window.matte(); // the worker is busy with init: this start is lost
        QCOMPARE(window.getThread()->getProcess(), 2);
        stroke(window.getImageBox(), {QPoint(100, 100), QPoint(120, 100)});
        click(&window, "viewAlphaButton");
        QVERIFY(waitForStep(&window));
        for (const char* name : names)
            QVERIFY2(child(&window, name)->isEnabled(), name);
        // Every report of init reached the window, and nothing else ran; the last one empties the bar.
        QTest::qWait(50);
        QCOMPARE(reports.size(), 10);
        for (const QList<QVariant>& r : std::as_const(reports))
            QVERIFY2(r[0].toString().startsWith(QLatin1String("Initializ")), qPrintable(r[0].toString()));
        const VexaSegmentation& seg = window.segmentation();
        QVERIFY(seg.alphaImage.pixel(0, 0) == 0xFFFFFFFFu && *window.getImageBox()->getImageToDraw() == seg.alphaImage);
        QCOMPARE(seg.markImage.pixel(110, 100), 0u);
        QCOMPARE(child<QLabel>(&window, "progressLabel")->text(), QStringLiteral("Initialize done."));
        // ... and the window fills it at the step's end, so that the step is seen to have run.
        QVERIFY(child<QProgressBar>(&window, "progressBar")->value() == 100 && window.getImageBox()->isPainting());
    }

    void hints_data()
    {
        QTest::addColumn<bool>("foreground"); QTest::addColumn<QString>("hint");
        QTest::newRow("no marks") << false << "Please mark foreground objects.";
        QTest::newRow("object only") << true << "Please mark background regions.";
    }
    void hints()
    {
        QFETCH(bool, foreground); QFETCH(QString, hint);
        MessageBoxAnswerer answers;
        Loaded l(discPicture(200, 160));
        if (foreground)
            stroke(l.box, {QPoint(90, 80), QPoint(110, 80)});
        const QImage alphaBefore = l.seg.alphaImage.copy();
        const std::vector<int> weightsBefore = l.seg.terminalWeights;
        click(&l.window, "previewButton");
        QVERIFY(waitForStep(&l.window));
        QVERIFY(spinUntil([&] { return !answers.texts.isEmpty(); }, 5000));
        QTest::qWait(50);
        QCOMPARE(answers.texts, QStringList{hint});
        QVERIFY(l.seg.alphaImage == alphaBefore && l.seg.terminalWeights == weightsBefore);
        QCOMPARE(child<QLabel>(&l.window, "progressLabel")->text(), QStringLiteral("Mark done"));
        QCOMPARE(child<QProgressBar>(&l.window, "progressBar")->value(), 0); // refused: no progress shown
        QVERIFY(l.box->isPainting());
    }

    void resetAfterCut()
    {
        Loaded l(discPicture(240, 200));
        const auto penColours = [&] { return child(&l.window, "MarkBkg")->styleSheet() + child(&l.window, "markObjButton")->styleSheet(); };
        stroke(l.box, {QPoint(110, 100), QPoint(130, 100)});
        click(&l.window, "MarkBkg");
        QCOMPARE(penColours(), QStringLiteral("background:#0000ff"));
        stroke(l.box, {QPoint(5, 5), QPoint(234, 5), QPoint(234, 194), QPoint(5, 194), QPoint(5, 5)});
        click(&l.window, "previewButton");
        QVERIFY(waitForStep(&l.window));
        QVERIFY(qBlue(l.seg.alphaImage.pixel(120, 100)) == 255 && qBlue(l.seg.alphaImage.pixel(3, 3)) == 0);
        // The band the cut drew and the boundary the user paints over it are one mark to the steps,
        // but show in two colours; the next cut makes the user's part band again.
        click(&l.window, "markBndButton");
        QRect band;
        QVERIFY(countPixels(l.seg.markImage, VexaSegmentation::BoundaryMark, &band) > 0);
        QPoint p = band.topLeft();
        while (l.seg.markImage.pixel(p) != VexaSegmentation::BoundaryMark)
            p.rx()++;
        const QRgb computed = l.box->getImageToDraw()->pixel(p);
        stroke(l.box, {p, p});
        QVERIFY(l.seg.markImage.pixel(p) == VexaSegmentation::BoundaryMark && l.box->getImageToDraw()->pixel(p) != computed);
        // A dot's own update near the top (rows 7 to 32) shows it as a full redraw does.
        stroke(l.box, {QPoint(50, 20), QPoint(50, 20)});
        const QRgb dot = l.box->getImageToDraw()->pixel(50, 20);
        click(&l.window, "viewAlphaButton");
        click(&l.window, "viewImageButton");
        QCOMPARE(l.box->getImageToDraw()->pixel(50, 20), dot);
        click(&l.window, "previewButton");
        QVERIFY(waitForStep(&l.window));
        click(&l.window, "viewImageButton");
        QCOMPARE(l.box->getImageToDraw()->pixel(p), computed);

        child<QSlider>(&l.window, "radiusSlider")->setValue(30);
        child<QSlider>(&l.window, "lambdaSlider")->setValue(60);
        click(&l.window, "viewMatteButton");
        click(&l.window, "resetButton");
        QVERIFY(child<QSlider>(&l.window, "radiusSlider")->value() == 10 && child<QSlider>(&l.window, "lambdaSlider")->value() == 10);
        QCOMPARE(child<QLabel>(&l.window, "lambdaLabel")->text(), QStringLiteral("Sensitivity: 10"));
        QVERIFY(child<QRadioButton>(&l.window, "viewImageButton")->isChecked() && *l.box->getImageToDraw() == l.seg.sourceImage);
        QCOMPARE(l.seg.alphaImage.pixel(3, 3), 0xFFFFFFFFu);
        QCOMPARE(countPixels(l.seg.markImage, 0u), 240 * 200);
        // The foreground pen is chosen as by a click: the background pen is off, and the buttons show it.
        QVERIFY(!child(&l.window, "MarkBkg")->isChecked() && child(&l.window, "markObjButton")->isChecked());
        QCOMPARE(penColours(), QStringLiteral("background:#ff0000"));
        stroke(l.box, {QPoint(110, 100), QPoint(130, 100)});
        QCOMPARE(l.seg.markImage.pixel(120, 100), VexaSegmentation::ForegroundMark);
    }
};

QTEST_MAIN(TestQuickSelectWindow)
#include "tst_quickselectwindow.moc"
