// The colour-based tools: the grading and its fast table, the color range tool and dialog, and
// magic select on shifted layers.
#include "VexaToolFixture.h"

#include "VexaColorGrading.h"
#include "VexaColorPicker.h"
#include "VexaLayer.h"
#include "VexaLayerManager.h"
#include "VexaMemory.h"
#include "VexaPluginEntry.h"
#include "VexaToolColorRangeCanvas.h"
#include "VexaToolMagicSelection.h"
#include "VexaToolSelectionColorRange.h"
#include "VexaToolSelectionColorRangeWidget.h"

#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

#include <cmath>

namespace {

// The grade as the definition reads, written out independently of the library.
int plainGrade(int d2, int tolerance)
{
    if (tolerance == 0)
        return 0;
    const double v = 255.0 - 255.0 * std::sqrt(double(d2)) / (3.0 * tolerance);
    return v < 0 ? 0 : int(v);
}

template <class T>
T* find(QWidget* root, const char* name)
{
    return root->findChild<T*>(QLatin1String(name));
}

QRgb ramp(int x) { return qRgb(100 + 2 * x, 100 + x, 100); }

} // namespace

class TestColorTools : public QObject
{
    Q_OBJECT
private slots:
    void grades_data()
    {
        QTest::addColumn<uint>("pixel"); QTest::addColumn<int>("tolerance"); QTest::addColumn<int>("grade");
        // Foreground (100, 100, 100).
        QTest::newRow("same colour") << 0xFF646464u << 40 << 255;
        QTest::newRow("distance 60: 127") << 0xFFA06464u << 40 << 127;
        QTest::newRow("distance 60 on two axes (36 + 48)") << 0xFF889464u << 40 << 127;
        QTest::newRow("distance 120: 0") << 0xFFDC6464u << 40 << 0;
        QTest::newRow("beyond") << 0xFFFFFFFFu << 40 << 0;
        QTest::newRow("tolerance 0: even the colour itself") << 0xFF646464u << 0 << 0;
        QTest::newRow("alpha plays no part") << 0x00646464u << 40 << 255;
        QTest::newRow("tolerance 1, distance 1") << 0xFF656464u << 1 << 170;
        QTest::newRow("tolerance 7, (5, 3, 0)") << 0xFF696764u << 7 << 184;
        QTest::newRow("tolerance 85, distance 50") << 0xFF646496u << 85 << 205;
        QTest::newRow("tolerance 200, (100, 100, 0)") << 0xFFC8C864u << 200 << 194;
        QTest::newRow("tolerance 255, white") << 0xFFFFFFFFu << 255 << 165;
    }
    void grades()
    {
        QFETCH(uint, pixel); QFETCH(int, tolerance); QFETCH(int, grade);
        QCOMPARE(VexaColorGrading::grade(pixel, qRgb(100, 100, 100), tolerance), grade);
        const int r = qRed(pixel) - 100, g = qGreen(pixel) - 100, b = qBlue(pixel) - 100;
        QCOMPARE(plainGrade(r * r + g * g + b * b, tolerance), grade); // the definition reads so too
        // The fast table gives the definition's grade for every squared distance.
        const VexaColorGrading::Table table(tolerance);
        for (int d2 = 0; d2 <= 3 * 255 * 255; ++d2)
            if (table(d2) != plainGrade(d2, tolerance))
                QFAIL(qPrintable(QString("d2 %1: %2").arg(d2).arg(table(d2))));
        // A whole image graded at a stride into a buffer with a row to spare: only its own bytes change.
        QImage image(3, 2, QImage::Format_ARGB32);
        image.fill(pixel);
        std::vector<uint8_t> out(12, 0xAB);
        VexaColorGrading::gradeImage(image, qRgb(100, 100, 100), tolerance, out.data(), 4);
        const uint8_t v = uint8_t(grade), k = 0xAB;
        QCOMPARE(out, (std::vector<uint8_t>{v, v, v, k, v, v, v, k, k, k, k, k}));
    }

    void thumbnails_data()
    {
        QTest::addColumn<QSize>("document"); QTest::addColumn<QSize>("thumb");
        QTest::newRow("wide") << QSize(1000, 500) << QSize(300, 150);
        QTest::newRow("tall") << QSize(200, 1000) << QSize(60, 300);
        QTest::newRow("small stays") << QSize(100, 80) << QSize(100, 80);
    }
    void thumbnails()
    {
        QFETCH(QSize, document); QFETCH(QSize, thumb);
        VexaToolFixture f(document, 1.0f);
        // One tool for the plug-in, whoever asks; it goes with the parent it was made for.
        auto first = std::make_unique<QObject>();
        QObject second;
        auto* tool = static_cast<VexaToolSelectionColorRange*>(getInstance(first.get(), QStringLiteral("Color Range")));
        QVERIFY(getInstance(&second, QStringLiteral("Color Range")) == tool && tool->parent() == first.get());
        QCOMPARE(static_cast<IVexaTool*>(instance), tool);
        tool->active(f.doc.get());
        QVERIFY(tool->imageThumbnail().size() == thumb && tool->selectionThumbnail().size() == thumb);
        tool->disActive();
        first.reset();
        QVERIFY(!instance);
        QCOMPARE(getInstance(&second, QStringLiteral("Color Range"))->parent(), &second);
    }

    void dialogFollowsColourAndTolerance()
    {
        VexaToolFixture f(QSize(60, 40), 1.0f);
        f.canvas->setFgColor(QColor(90, 120, 150)); // the document's colour
        QObject parent;
        auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
        tool->active(f.doc.get());
        QVERIFY(f.canvas->getColorPickerWidget()->isPicking());
        QWidget* dialog = tool->getDialog();
        auto* spin = find<QSpinBox>(dialog, "toleranceSpin");
        auto* slider = find<QSlider>(dialog, "toleranceSlider");
        auto grey = [&] { return qGray(tool->selectionThumbnail().pixel(0, 0)); };
        QTRY_VERIFY(!tool->isThrottled()); // past the throttle of the first preview
        slider->setValue(70);
        QVERIFY(spin->value() == 70 && tool->getTolerance() == 70 && tool->isPreviewUpToDate());
        QCOMPARE(grey(), 255); // the foreground's colour: white whatever the tolerance
        QTRY_VERIFY(!tool->isThrottled());
        spin->setValue(40);
        QVERIFY(slider->value() == 40 && tool->getTolerance() == 40);
        QTRY_VERIFY(!tool->isThrottled());
        f.canvas->setFgColor(QColor(90, 120, 190)); // distance 40: grade 170 at tolerance 40
        QCOMPARE(grey(), 170);
        // Within 5 ms of that recomputation: remembered, not done. The throttle ends only when its
        // timer's event is delivered, and no event loop has run since the recomputation: a tick
        // now lies inside the interval and still waits.
        f.canvas->setFgColor(QColor(90, 120, 210));
        QVERIFY(tool->isThrottled());
        f.tick();
        QVERIFY(!tool->isPreviewUpToDate() && grey() == 170);
        QTRY_VERIFY(!tool->isThrottled());
        f.tick();
        QVERIFY(tool->isPreviewUpToDate());
        QCOMPARE(grey(), 127); // distance 60
        QCOMPARE(find<VexaToolColorRangeCanvas>(dialog, "canvas")->currentImage(), tool->selectionThumbnail());
        // Cancel ends the tool and the picking; colour changes no longer reach it.
        find<QPushButton>(dialog, "cancelBtn")->click();
        QVERIFY(!f.canvas->getColorPickerWidget()->isPicking() && !tool->isActive());
        f.canvas->setFgColor(QColor(1, 2, 3));
        QVERIFY(tool->isPreviewUpToDate());
    }

    void okWritesFullSizeMask()
    {
        // A red ramp on a 30 x 20 document, whose mask rows are 32 bytes: OK writes every pixel's
        // grade and leaves the padding zero.
        VexaToolFixture f(QSize(30, 20), 1.0f);
        QImage img(30, 20, QImage::Format_ARGB32);
        for (int x = 0; x < 30; ++x)
            QPainter(&img).fillRect(x, 0, 1, 20, QColor::fromRgb(ramp(x)));
        f.doc->getLayerManager()->layerAt(0)->setPixels(img);
        f.canvas->setFgColor(QColor(100, 100, 100));
        f.selectRect(QRect(2, 3, 4, 5));
        QObject parent;
        auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
        tool->active(f.doc.get());
        f.doc->setCurrentTool(tool);
        find<QPushButton>(tool->getDialog(), "okBtn")->click();
        QVERIFY(!tool->isActive() && !tool->getDialog()->isVisible() && !f.doc->currentTool()); // OK ends the tool
        QCOMPARE(f.bounds(), QRect(0, 0, 30, 20));
        for (int x = 0; x < 32; ++x)
            QCOMPARE(f.at(x, 7), x < 30 ? VexaColorGrading::grade(ramp(x), qRgb(100, 100, 100), 40) : 0);
        // A second OK without a new activation changes nothing.
        f.selection()->clear();
        tool->apply();
        QVERIFY(!f.selection()->hasSelection());
    }

    void magicSeedOnShiftedLayer()
    {
        VexaToolFixture f(QSize(40, 40), 1.0f);
        // A red layer at (10.5, -3.2) with a blue island at layer (0..2, 7..9).
        QImage layerPixels(20, 20, QImage::Format_ARGB32);
        layerPixels.fill(qRgb(200, 0, 0));
        for (int y = 7; y <= 9; ++y)
            for (int x = 0; x <= 2; ++x)
                layerPixels.setPixel(x, y, qRgb(0, 0, 200));
        f.doc->getLayerManager()->addLayer(layerPixels, QPointF(10.5, -3.2), QStringLiteral("shifted"));
        VexaToolMagicSelection tool;
        tool.active(f.doc.get());
        const size_t blocks = VexaMemory::getInstance()->liveBlocks();
        f.click(5, 5); // canvas (5, 5): layer (-5.5, 8.2), clamped to (0, 8)
        QCOMPARE(f.bounds(), QRect(10, 4, 3, 3)); // the island, placed at (10, -3)
        QCOMPARE(VexaMemory::getInstance()->liveBlocks(), blocks);
    }

    void magicCanvasEdge_data()
    {
        QTest::addColumn<float>("scale"); QTest::addColumn<int>("x"); QTest::addColumn<bool>("selects");
        QTest::newRow("first column") << 1.0f << 0 << true;
        QTest::newRow("last column") << 1.0f << 39 << true;
        QTest::newRow("beyond") << 1.0f << 40 << false;
        QTest::newRow("half scale: 39") << 0.5f << 78 << true;
        QTest::newRow("half scale: 39.5") << 0.5f << 79 << false;
        QTest::newRow("left of the canvas") << 1.0f << -1 << false;
    }
    void magicCanvasEdge()
    {
        QFETCH(float, scale); QFETCH(int, x); QFETCH(bool, selects);
        ToolFixture<VexaToolMagicSelection> f(QSize(40, 40), scale);
        f.click(x, 2);
        QCOMPARE(f.selection()->hasSelection(), selects);
        // The same rounding decides whether the pointer is over the selection.
        f.selection()->selectAll();
        f.move(x, 2);
        QCOMPARE(f.tool.isInSelection(x, 2), selects);
        QCOMPARE(f.canvas->cursor().shape() == Qt::OpenHandCursor, selects);
    }

    void magicReadsNewestPixelsAndHonoursBlock()
    {
        VexaToolFixture f(QSize(10, 10), 1.0f);
        auto* layer = f.doc->getLayerManager()->layerAt(0);
        QImage painted = layer->getPictureHost()->image();
        painted.setPixel(4, 4, qRgb(255, 0, 0)); // a stroke still on the graphics card
        layer->setDevicePixels(painted);
        VexaToolMagicSelection tool;
        tool.active(f.doc.get());
        f.doc->toolInputBlocked = true;
        f.click(4, 4);
        QVERIFY(!f.selection()->hasSelection());
        f.doc->toolInputBlocked = false;
        f.click(4, 4);
        QCOMPARE(layer->getLatestPlace(), int(VexaLayer::InHost));
        QCOMPARE(f.bounds(), QRect(4, 4, 1, 1)); // the red pixel alone, as painted
    }
};

QTEST_MAIN(TestColorTools)
#include "tst_colortools.moc"
