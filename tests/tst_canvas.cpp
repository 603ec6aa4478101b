// The canvas: coordinates, input routing to tools, the colour picker and what it draws.
#include "IVexaTool.h"
#include "VexaCanvas.h"
#include "VexaCanvasFrame.h"
#include "VexaColorPicker.h"
#include "VexaContext.h"
#include "VexaLayer.h"
#include "VexaLayerManager.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QtTest>

#include <memory>

namespace {

class RecordingTool : public IVexaTool
{
public:
    using IVexaTool::IVexaTool;
    void active(VexaContext*) override {}
    void disActive() override {}
    bool event(QEvent* e) override
    {
        if (e->type() == QEvent::KeyPress || e->type() == QEvent::KeyRelease)
            keys << static_cast<QKeyEvent*>(e)->key() * (e->type() == QEvent::KeyPress ? 1 : -1);
        return IVexaTool::event(e);
    }
    void processEvent(const QString& name) override { named << name; }
    QList<int> keys;
    QStringList named;
};

QImage twoColours()
{
    QImage img(4, 2, QImage::Format_ARGB32);
    img.fill(qRgb(0, 0, 255));
    for (int i = 0; i < 4; ++i)
        img.setPixel(i % 2, i / 2, qRgb(255, 0, 0));
    return img;
}

// A document on a 200 x 100 canvas (by default the 4 x 2 one, left half red) at the given view.
struct OnCanvas {
    explicit OnCanvas(float scale = 1.0f, QPointF origin = {}, const QImage& img = twoColours(), QSize size = {200, 100})
        : doc(VexaContext::fromImage(img))
    {
        canvas.resize(size);
        canvas.setContext(doc.get());
        canvas.setView(scale, origin); // chosen: showing the canvas does not fit it to the window
    }
    bool shown()
    {
        canvas.show();
        return QTest::qWaitForWindowExposed(&canvas);
    }
    std::unique_ptr<VexaContext> doc;
    VexaCanvas canvas; // goes first
};

} // namespace

class TestCanvas : public QObject
{
    Q_OBJECT
private slots:
    void uiToCanvas_data()
    {
        QTest::addColumn<float>("scale"); QTest::addColumn<QPoint>("widget"); QTest::addColumn<bool>("clamp");
        QTest::addColumn<QPointF>("expected");
        // Origin (10, 20): widget (10, 20) shows canvas (0, 0). The document is 4 x 2.
        QTest::newRow("1, inside") << 1.0f << QPoint(12, 21) << false << QPointF(2, 1);
        QTest::newRow("0.5, inside") << 0.5f << QPoint(17, 22) << false << QPointF(3.5, 1);
        QTest::newRow("2, inside") << 2.0f << QPoint(11, 20) << false << QPointF(2, 0);
        QTest::newRow("1, outside unclamped") << 1.0f << QPoint(5, 30) << false << QPointF(-5, 10);
        QTest::newRow("1, outside clamped") << 1.0f << QPoint(5, 30) << true << QPointF(0, 2);
        QTest::newRow("2, far right clamped") << 2.0f << QPoint(100, 21) << true << QPointF(4, 2);
    }

    void uiToCanvas()
    {
        QFETCH(float, scale); QFETCH(QPoint, widget); QFETCH(bool, clamp); QFETCH(QPointF, expected);
        OnCanvas t(scale, QPointF(10, 20));
        QCOMPARE(t.canvas.getScale(), scale);
        QCOMPARE(t.canvas.uiToCanvasCoord(widget.x(), widget.y(), clamp), expected);
        if (!clamp)
            QCOMPARE(t.canvas.canvasToUi(expected), QPointF(widget));
        QCOMPARE(t.doc->getCanvas(), &t.canvas);
    }

    void panKeepsToolCoordinates_data()
    {
        QTest::addColumn<bool>("space"); QTest::addColumn<float>("scale");
        QTest::newRow("Space + left drag") << true << 1.0f;
        QTest::newRow("Space + left drag at 200 %") << true << 0.5f;
        QTest::newRow("middle drag") << false << 1.0f;
    }

    void panKeepsToolCoordinates()
    {
        QFETCH(bool, space); QFETCH(float, scale);
        OnCanvas t(scale);
        VexaCanvas& canvas = t.canvas;
        RecordingTool tool;
        t.doc->setCurrentTool(&tool);
        QSignalSpy press(&canvas, &VexaCanvas::mousePress);
        QSignalSpy move(&canvas, &VexaCanvas::mouseMove);
        QSignalSpy release(&canvas, &VexaCanvas::mouseRelease);
        const QPointF grabbed = canvas.uiToCanvasCoord(50, 50, false);
        const Qt::MouseButton button = space ? Qt::LeftButton : Qt::MiddleButton;
        if (space)
            QTest::keyPress(&canvas, Qt::Key_Space);
        QCOMPARE(canvas.cursor().shape(), space ? Qt::OpenHandCursor : Qt::ArrowCursor);
        QTest::mousePress(&canvas, button, {}, QPoint(50, 50));
        QTest::mouseMove(&canvas, QPoint(65, 55));
        QTest::mouseMove(&canvas, QPoint(80, 61));
        QCOMPARE(canvas.cursor().shape(), Qt::ClosedHandCursor);
        QTest::mouseRelease(&canvas, button, {}, QPoint(80, 61));
        if (space)
            QTest::keyRelease(&canvas, Qt::Key_Space);
        // The photo followed the pointer; the tool saw none of it, not even the key.
        QCOMPARE(canvas.viewOrigin(), QPointF(30, 11));
        QCOMPARE(canvas.uiToCanvasCoord(80, 61, false), grabbed);
        QVERIFY(press.count() + move.count() + release.count() == 0 && tool.keys.isEmpty());
        QCOMPARE(canvas.cursor().shape(), Qt::ArrowCursor);
        // Without Space the left button is the tool's again, at the moved view's coordinates.
        QTest::mouseClick(&canvas, Qt::LeftButton, {}, QPoint(80, 61));
        QCOMPARE(press.count(), 1);
        QCOMPARE(canvas.uiToCanvasCoord(press[0][0].toInt(), press[0][1].toInt(), false), grabbed);
    }

    void scrollBarsFollowView()
    {
        QImage img(400, 300, QImage::Format_ARGB32);
        img.fill(qRgb(0, 128, 0));
        auto doc = VexaContext::fromImage(img);
        VexaCanvasFrame frame(new VexaCanvas);
        VexaCanvas* canvas = frame.canvas();
        frame.resize(300, 200);
        canvas->setContext(doc.get());
        frame.show();
        QVERIFY(QTest::qWaitForWindowExposed(&frame));
        QScrollBar *h = frame.horizontalBar(), *v = frame.verticalBar();
        // Fitted, the whole photo shows: no bars.
        QVERIFY(!h->isVisible() && !v->isVisible());
        canvas->setView(1.0f, QPointF(0, 0));
        QTRY_VERIFY(h->isVisible() && v->isVisible());
        QTRY_COMPARE(h->maximum(), 400 - canvas->width());
        QVERIFY(v->maximum() == 300 - canvas->height() && h->pageStep() == canvas->width());
        h->setValue(50);
        v->setValue(20);
        QVERIFY(canvas->viewOrigin() == QPointF(-50, -20) && canvas->uiToCanvasCoord(10, 10, false) == QPointF(60, 30));
        // Zooming about the pointer keeps the point under it and moves the bars with the view.
        canvas->zoomAt(QPointF(10, 10), 2.0f);
        QCOMPARE(canvas->uiToCanvasCoord(10, 10, false), QPointF(60, 30));
        QVERIFY(h->value() == -int(canvas->viewOrigin().x()) && h->maximum() == 800 - canvas->width());
        canvas->fitToWindow();
        QTRY_VERIFY(!h->isVisible() && !v->isVisible());
    }

    void inputReachesTool()
    {
        OnCanvas t;
        VexaCanvas& canvas = t.canvas;
        QSignalSpy press(&canvas, &VexaCanvas::mousePress);
        QSignalSpy release(&canvas, &VexaCanvas::mouseRelease);
        QSignalSpy dbl(&canvas, &VexaCanvas::mouseDoubleClick);
        QTest::mousePress(&canvas, Qt::LeftButton, {}, QPoint(30, 40));
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, QPoint(31, 41));
        QCOMPARE(QPoint(press.at(0).at(0).toInt(), press.at(0).at(1).toInt()), QPoint(30, 40)); // widget pixels
        QCOMPARE(release.at(0).at(0).toInt(), 31);
        // A press whose release never came does not lock the tool out of the next one.
        QTest::mousePress(&canvas, Qt::LeftButton, {}, QPoint(30, 40));
        QMouseEvent again(QEvent::MouseButtonPress, QPointF(32, 42), canvas.mapToGlobal(QPointF(32, 42)), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&canvas, &again);
        QCOMPARE(press.count(), 3);
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, QPoint(32, 42));

        // Keys, and the named events a tool registered (once is enough), reach the current tool.
        RecordingTool tool;
        for (const char* name : {"ESC", "DOUBLE_CLICK", "ESC"})
            tool.registerEvent(QLatin1String(name));
        QCOMPARE(tool.registeredEvents().size(), qsizetype(2));
        t.doc->setCurrentTool(&tool);
        QTest::keyPress(&canvas, Qt::Key_Control);
        QTest::keyRelease(&canvas, Qt::Key_Control);
        QTest::keyClick(&canvas, Qt::Key_Escape);
        QTest::keyClick(&canvas, Qt::Key_Delete); // not registered: no named event
        QTest::mouseDClick(&canvas, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(dbl.count(), 1);
        QCOMPARE(tool.keys, QList<int>({Qt::Key_Control, -Qt::Key_Control, Qt::Key_Escape, -Qt::Key_Escape, Qt::Key_Delete,
                                        -Qt::Key_Delete}));
        QCOMPARE(tool.named, QStringList({QStringLiteral("ESC"), QStringLiteral("DOUBLE_CLICK")}));
        // Without a current tool nothing is delivered.
        t.doc->setCurrentTool(nullptr);
        QTest::keyClick(&canvas, Qt::Key_Escape);
        QCOMPARE(tool.named.size(), qsizetype(2));
    }

    void pickerTakesForegroundColour()
    {
        OnCanvas t(0.1f); // 10 widget pixels per document pixel
        VexaCanvas& canvas = t.canvas;
        QSignalSpy colour(&canvas, &VexaCanvas::FgColorChange);
        QSignalSpy press(&canvas, &VexaCanvas::mousePress);
        canvas.getColorPickerWidget()->onColorRangeToolPickStarted();
        QTest::mouseClick(&canvas, Qt::LeftButton, {}, QPoint(35, 5)); // document (3, 0): blue
        QCOMPARE(canvas.getFgColor(), QColor(0, 0, 255));
        QVERIFY(colour.count() == 1 && press.count() == 0);
        QTest::mouseClick(&canvas, Qt::LeftButton, {}, QPoint(500, 5)); // beyond the document: no pick
        QCOMPARE(colour.count(), 1);
        canvas.getColorPickerWidget()->onColorRangeToolPickStoped();
        QTest::mouseClick(&canvas, Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(canvas.getFgColor() == QColor(0, 0, 255) && press.count() == 1);
    }

    void renderToImageAndSync()
    {
        OnCanvas t;
        std::unique_ptr<QImage> image(t.canvas.renderToImage(t.doc.get()));
        QVERIFY(image && image->size() == QSize(4, 2) && image->format() == QImage::Format_ARGB32);
        QCOMPARE(image->pixel(3, 1), qRgb(0, 0, 255));
        // Pixels a tool left on the card come back to the layer before anything reads it.
        auto* layer = qobject_cast<VexaLayer*>(t.doc->getLayerManager()->getActiveLayer());
        QImage painted = layer->getPictureHost()->image();
        painted.setPixel(0, 0, qRgb(0, 255, 0));
        layer->setDevicePixels(painted);
        t.canvas.syncLayerPixels();
        QCOMPARE(layer->getLatestPlace(), int(VexaLayer::InHost));
        std::unique_ptr<QImage> after(t.canvas.renderToImage(nullptr));
        QCOMPARE(after->pixel(0, 0), qRgb(0, 255, 0));
    }

    void drawsDocumentOutlineAndFeedback()
    {
        QImage img(40, 20, QImage::Format_ARGB32);
        img.fill(qRgb(0, 128, 0));
        OnCanvas t(0.5f, QPointF(10, 10), img); // each document pixel is 2 x 2 widget pixels
        QVERIFY(t.shown());
        VexaCanvas& canvas = t.canvas;
        VexaContext* doc = t.doc.get();
        QSignalSpy feedback(&canvas, &VexaCanvas::drawFeedback);

        auto path = std::make_unique<VexaSelectionPath>();
        path->setType(VexaSelectionPath::Rectangle);
        for (QPointF p : {QPointF(10, 5), QPointF(30, 5), QPointF(30, 15), QPointF(10, 15)})
            path->addPoint(p);
        doc->getSelection()->addPath(path.release(), 0);
        doc->getSelection()->render(&canvas);
        QCOMPARE(canvas.outlineSegmentCount(), 4);

        const QImage shot = canvas.grabFramebuffer();
        QVERIFY(feedback.count() >= 1); // the tool draws its own feedback over the canvas
        QCOMPARE(shot.pixel(10 + 2, 10 + 2), qRgb(0, 128, 0)); // document pixel (1, 1)
        QVERIFY(shot.pixel(5, 5) != qRgb(0, 128, 0));           // outside the document
        // The outline runs along x = 10 (widget 30) between y = 5 and 15 (widget 20 to 40): every
        // pixel there is drawn black or white, and both colours of the dashes appear.
        int black = 0, white = 0;
        for (int y = 21; y < 40; ++y) {
            black += shot.pixel(30, y) == qRgb(0, 0, 0);
            white += shot.pixel(30, y) == qRgb(255, 255, 255);
        }
        QVERIFY2(black + white >= 17 && black && white, qPrintable(QStringLiteral("%1 %2").arg(black).arg(white)));
    }

    void showsTransparencyOverCheckerboard_data()
    {
        QTest::addColumn<int>("width");
        QTest::newRow("one strip") << 100;
        QTest::newRow("rows 512 on in a second, shorter strip") << 8192; // strips of 16 MB
    }

    void showsTransparencyOverCheckerboard()
    {
        // The document's own bytes go to the card: colours land where they belong, and the
        // checkerboard under transparency has its cells at document rows and columns.
        QFETCH(int, width);
        QImage img(width, 700, QImage::Format_ARGB32);
        img.fill(qRgb(200, 0, 0));
        for (int y = 600; y < 700; ++y)
            std::fill_n(reinterpret_cast<QRgb*>(img.scanLine(y)), img.width(), qRgba(0, 0, 0, 0));
        img.setPixel(5, 3, qRgb(0, 0, 250));
        OnCanvas t(1.0f, QPointF(0, -590), img, QSize(100, 40)); // widget row 0 is document row 590
        QVERIFY(t.shown());
        VexaCanvas& canvas = t.canvas;
        QImage shot;
        for (int frame = 0; frame < 10 && (shot.isNull() || !canvas.pictureComplete()); ++frame)
            shot = canvas.grabFramebuffer();
        QCOMPARE(shot.pixel(0, 9), qRgb(200, 0, 0));
        QCOMPARE(shot.pixel(0, 10), qRgb(204, 204, 204)); // cell (0, 75): grey
        QCOMPARE(shot.pixel(8, 10), qRgb(255, 255, 255)); // cell (1, 75): white
        canvas.setView(1.0f, QPointF(0, 0));
        shot = canvas.grabFramebuffer();
        QCOMPARE(shot.pixel(5, 3), qRgb(0, 0, 250)); // blue stays blue: the bytes are not read as RGBA
    }
};

QTEST_MAIN(TestCanvas)
#include "tst_canvas.moc"
