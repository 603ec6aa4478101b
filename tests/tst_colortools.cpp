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

#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

#include <cmath>
#include <random>

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

// A canvas whose rendering of the document has another size than the document: what a
// canvas showing another document hands back.
class OddRenderCanvas : public VexaCanvas
{
public:
    explicit OddRenderCanvas(const QSize& size)
        : m_size(size)
    {
    }
    QImage* renderToImage(VexaContext*) override
    {
        auto img = std::make_unique<QImage>(m_size, QImage::Format_ARGB32);
        img->fill(qRgb(100, 100, 100)); // the foreground colour: grade 255 everywhere
        return img.release();
    }

private:
    QSize m_size;
};

} // namespace

class TestColorTools : public QObject
{
    Q_OBJECT
private slots:
    void tableEqualsDefinition_data();
    void tableEqualsDefinition();
    void grades_data();
    void grades();
    void gradeImageMatchesPerPixel();
    void thumbnails_data();
    void thumbnails();
    void toleranceControlsStayEqual();
    void deferredRecomputation();
    void okWritesFullSizeMask();
    void okRefusesRenderingOfAnotherSize_data();
    void okRefusesRenderingOfAnotherSize();
    void pickerFollowsActivation();
    void singleton();
    void magicSeedOnShiftedLayer();
    void magicCanvasEdge_data();
    void magicCanvasEdge();
    void magicNewAndAdd();
    void magicReadsNewestPixelsAndHonoursBlock();
    void thresholdField_data();
    void thresholdField();
};

void TestColorTools::tableEqualsDefinition_data()
{
    QTest::addColumn<int>("tolerance");
    for (int t : {0, 1, 7, 40, 85, 200, 255})
        QTest::newRow(qPrintable(QString::number(t))) << t;
}

void TestColorTools::tableEqualsDefinition()
{
    QFETCH(int, tolerance);
    const VexaColorGrading::Table table(tolerance);
    for (int d2 = 0; d2 <= 3 * 255 * 255; ++d2)
        if (table(d2) != plainGrade(d2, tolerance))
            QFAIL(qPrintable(QString("d2 %1: %2 != %3").arg(d2).arg(table(d2)).arg(plainGrade(d2, tolerance))));
}

void TestColorTools::grades_data()
{
    QTest::addColumn<uint>("pixel");
    QTest::addColumn<int>("tolerance");
    QTest::addColumn<int>("grade");
    // Foreground (100, 100, 100).
    QTest::newRow("same colour") << 0xFF646464u << 40 << 255;
    QTest::newRow("distance 60: 127") << 0xFFA06464u << 40 << 127;
    QTest::newRow("distance 60 on two axes (36 + 48)") << 0xFF889464u << 40 << 127;
    QTest::newRow("distance 120: 0") << 0xFFDC6464u << 40 << 0;
    QTest::newRow("beyond") << 0xFFFFFFFFu << 40 << 0;
    QTest::newRow("tolerance 0: even the colour itself") << 0xFF646464u << 0 << 0;
    QTest::newRow("alpha plays no part") << 0x00646464u << 40 << 255;
}

void TestColorTools::grades()
{
    QFETCH(uint, pixel);
    QFETCH(int, tolerance);
    QFETCH(int, grade);
    QCOMPARE(VexaColorGrading::grade(pixel, qRgb(100, 100, 100), tolerance), grade);
}

void TestColorTools::gradeImageMatchesPerPixel()
{
    std::mt19937 rng(5);
    QImage img(97, 41, QImage::Format_ARGB32);
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            img.setPixel(x, y, rng()); // alpha plays no part
    const int stride = 104;
    std::vector<uint8_t> out(size_t(stride) * 41, 0xEE);
    VexaColorGrading::gradeImage(img, qRgb(120, 60, 200), 60, out.data(), stride);
    for (int y = 0; y < img.height(); ++y) {
        for (int x = 0; x < img.width(); ++x)
            QCOMPARE(int(out[size_t(y) * stride + x]), VexaColorGrading::grade(img.pixel(x, y), qRgb(120, 60, 200), 60));
        QCOMPARE(int(out[size_t(y) * stride + 97]), 0xEE); // beyond the width: untouched
    }
    const QImage grey = VexaColorGrading::gradeThumbnail(img, qRgb(120, 60, 200), 60);
    QCOMPARE(qGray(grey.pixel(10, 10)), int(out[size_t(10) * stride + 10]));
    QCOMPARE(qAlpha(grey.pixel(10, 10)), 255);
}

void TestColorTools::thumbnails_data()
{
    QTest::addColumn<QSize>("document");
    QTest::addColumn<QSize>("thumb");
    QTest::newRow("wide") << QSize(1000, 500) << QSize(300, 150);
    QTest::newRow("tall") << QSize(200, 1000) << QSize(60, 300);
    QTest::newRow("small stays") << QSize(100, 80) << QSize(100, 80);
}

void TestColorTools::thumbnails()
{
    QFETCH(QSize, document);
    QFETCH(QSize, thumb);
    VexaToolFixture f(document, 1.0f);
    QObject parent;
    auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
    tool->active(f.doc.get());
    QCOMPARE(tool->imageThumbnail().size(), thumb);
    QCOMPARE(tool->selectionThumbnail().size(), thumb);
    tool->disActive();
}

void TestColorTools::toleranceControlsStayEqual()
{
    VexaToolFixture f(QSize(60, 40), 1.0f);
    f.canvas->setFgColor(QColor(90, 120, 150));
    QObject parent;
    auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
    tool->active(f.doc.get());
    QWidget* dialog = tool->getDialog();
    auto* spin = find<QSpinBox>(dialog, "toleranceSpin");
    auto* slider = find<QSlider>(dialog, "toleranceSlider");
    QTRY_VERIFY(!tool->isThrottled()); // past the throttle of the first preview
    slider->setValue(70);
    QCOMPARE(spin->value(), 70);
    QCOMPARE(tool->getTolerance(), 70);
    QVERIFY(tool->isPreviewUpToDate());
    QTRY_VERIFY(!tool->isThrottled());
    spin->setValue(3);
    QCOMPARE(slider->value(), 3);
    QCOMPARE(tool->getTolerance(), 3);
    // The document is one colour, the foreground's: the preview is white whatever the tolerance.
    QCOMPARE(tool->selectionThumbnail().pixel(5, 5), qRgb(255, 255, 255));
    tool->disActive();
}

void TestColorTools::deferredRecomputation()
{
    VexaToolFixture f(QSize(60, 40), 1.0f);
    f.canvas->setFgColor(QColor(90, 120, 150)); // the document's colour
    QObject parent;
    auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
    tool->active(f.doc.get());
    auto* preview = find<VexaToolColorRangeCanvas>(tool->getDialog(), "canvas");
    QTRY_VERIFY(!tool->isThrottled());
    f.canvas->setFgColor(QColor(90, 120, 190)); // distance 40: grade 170 at tolerance 40
    QCOMPARE(qGray(tool->selectionThumbnail().pixel(0, 0)), 170);
    // Within 5 ms of that recomputation: remembered, not done.
    f.canvas->setFgColor(QColor(90, 120, 210));
    QVERIFY(!tool->isPreviewUpToDate());
    QCOMPARE(qGray(tool->selectionThumbnail().pixel(0, 0)), 170);
    // The throttle ends only when its timer's event is delivered, and no event loop has run
    // since the recomputation: a tick now lies inside the interval and still waits.
    QVERIFY(tool->isThrottled());
    f.tick();
    QVERIFY(!tool->isPreviewUpToDate());
    QCOMPARE(qGray(tool->selectionThumbnail().pixel(0, 0)), 170);
    QTRY_VERIFY(!tool->isThrottled());
    f.tick();
    QVERIFY(tool->isPreviewUpToDate());
    QCOMPARE(qGray(tool->selectionThumbnail().pixel(0, 0)), 127); // distance 60
    QCOMPARE(preview->currentImage(), tool->selectionThumbnail()); // the preview shows it too
    tool->disActive();
}

void TestColorTools::okWritesFullSizeMask()
{
    // 30 x 20: the selection's rows are wider than the canvas.
    QImage img(30, 20, QImage::Format_ARGB32);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x)
            img.setPixel(x, y, qRgb(100 + 2 * x, 100, 100));
    VexaToolFixture f(QSize(30, 20), 1.0f);
    f.doc->getLayerManager()->layerAt(0)->setPixels(img);
    f.canvas->setFgColor(QColor(100, 100, 100));
    QObject parent;
    auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
    tool->active(f.doc.get());
    f.doc->setCurrentTool(tool);
    QVERIFY(f.selection()->maskStride() > 30);
    find<QPushButton>(tool->getDialog(), "okBtn")->click();
    for (int x = 0; x < 30; ++x)
        QCOMPARE(f.at(x, 7), VexaColorGrading::grade(qRgb(100 + 2 * x, 100, 100), qRgb(100, 100, 100), 40));
    QCOMPARE(f.at(30, 7), 0);
    QVERIFY(!tool->isActive());
    QVERIFY(!tool->getDialog()->isVisible());
    QVERIFY(!f.doc->currentTool());
    // A second OK without a new activation changes nothing.
    f.selection()->clear();
    tool->apply();
    QVERIFY(!f.selection()->hasSelection());
}

void TestColorTools::okRefusesRenderingOfAnotherSize_data()
{
    QTest::addColumn<QSize>("rendered");
    QTest::addColumn<bool>("applied");
    // The document is 30 x 20 and its mask rows are 32 bytes.
    QTest::newRow("same size") << QSize(30, 20) << true;
    QTest::newRow("taller") << QSize(30, 40) << false;
    QTest::newRow("wider than a mask row") << QSize(37, 20) << false;
    QTest::newRow("smaller") << QSize(10, 10) << false;
}

void TestColorTools::okRefusesRenderingOfAnotherSize()
{
    QFETCH(QSize, rendered);
    QFETCH(bool, applied);
    VexaToolFixture f(QSize(30, 20), 1.0f);
    OddRenderCanvas odd(rendered);
    odd.setContext(f.doc.get());
    f.doc->setCanvas(&odd);
    odd.setFgColor(QColor(100, 100, 100));
    f.selectRect(QRect(2, 3, 4, 5));
    QObject parent;
    auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
    tool->active(f.doc.get());
    QVERIFY(tool->isActive());
    tool->apply();
    QVERIFY(!tool->isActive()); // OK ends the tool either way
    if (applied) {
        QCOMPARE(f.bounds(), QRect(0, 0, 30, 20));
    } else {
        QCOMPARE(f.bounds(), QRect(2, 3, 4, 5)); // the user's selection is kept
        QCOMPARE(f.at(1, 3), 0);
    }
}

void TestColorTools::pickerFollowsActivation()
{
    VexaToolFixture f(QSize(60, 40), 1.0f);
    QObject parent;
    auto* tool = VexaToolSelectionColorRange::getInstance(&parent);
    tool->active(f.doc.get());
    QVERIFY(f.canvas->getColorPickerWidget()->isPicking());
    find<QPushButton>(tool->getDialog(), "cancelBtn")->click();
    QVERIFY(!f.canvas->getColorPickerWidget()->isPicking());
    QVERIFY(!tool->isActive());
    // Inactive: colour changes no longer reach it.
    f.canvas->setFgColor(QColor(1, 2, 3));
    QVERIFY(tool->isPreviewUpToDate());
}

void TestColorTools::singleton()
{
    auto first = std::make_unique<QObject>();
    QObject second;
    IVexaTool* a = getInstance(first.get(), QStringLiteral("Color Range"));
    IVexaTool* b = getInstance(&second, QStringLiteral("Color Range"));
    QVERIFY(a);
    QCOMPARE(a, b);
    QCOMPARE(a->parent(), first.get());
    QCOMPARE(static_cast<IVexaTool*>(instance), a);
    first.reset(); // the tool goes with its parent
    QVERIFY(!instance);
    IVexaTool* c = getInstance(&second, QStringLiteral("Color Range"));
    QCOMPARE(c->parent(), &second);
}

void TestColorTools::magicSeedOnShiftedLayer()
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

void TestColorTools::magicCanvasEdge_data()
{
    QTest::addColumn<float>("scale");
    QTest::addColumn<int>("x");
    QTest::addColumn<bool>("selects");
    QTest::newRow("last column") << 1.0f << 39 << true;
    QTest::newRow("beyond") << 1.0f << 40 << false;
    QTest::newRow("half scale: 39") << 0.5f << 78 << true;
    QTest::newRow("half scale: 39.5") << 0.5f << 79 << false;
    QTest::newRow("left of the canvas") << 1.0f << -1 << false;
}

void TestColorTools::magicCanvasEdge()
{
    QFETCH(float, scale);
    QFETCH(int, x);
    QFETCH(bool, selects);
    VexaToolFixture f(QSize(40, 40), scale);
    VexaToolMagicSelection tool;
    tool.active(f.doc.get());
    f.click(x, 2);
    QCOMPARE(f.selection()->hasSelection(), selects);
}

void TestColorTools::magicNewAndAdd()
{
    VexaToolFixture f(QSize(40, 40), 1.0f);
    QImage half(40, 40, QImage::Format_ARGB32);
    half.fill(qRgb(0, 0, 0));
    for (int y = 0; y < 40; ++y)
        for (int x = 20; x < 40; ++x)
            half.setPixel(x, y, qRgb(255, 255, 255));
    f.doc->getLayerManager()->layerAt(0)->setPixels(half);
    VexaToolMagicSelection tool;
    tool.active(f.doc.get());
    f.selectRect(QRect(0, 0, 2, 2));
    tool.getWidget()->findChild<QPushButton*>(QStringLiteral("addBtn"))->click();
    f.click(30, 30);
    QCOMPARE(f.bounds(), QRect(0, 0, 40, 40)); // kept the corner, added the white half
    QCOMPARE(f.at(5, 5), 0);
    // New: a click outside the selection replaces it (inside, it would drag the selection).
    f.selectRect(QRect(0, 0, 2, 2));
    tool.getWidget()->findChild<QPushButton*>(QStringLiteral("newBtn"))->click();
    f.click(30, 30);
    QCOMPARE(f.bounds(), QRect(20, 0, 20, 40)); // the corner is gone
}

void TestColorTools::magicReadsNewestPixelsAndHonoursBlock()
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

void TestColorTools::thresholdField_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<float>("threshold");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("number") << "12" << 12.0f << true;
    QTest::newRow("cleared") << "" << 0.0f << true;
    QTest::newRow("300 refused") << "300" << 32.0f << false;
}

void TestColorTools::thresholdField()
{
    QFETCH(QString, typed);
    QFETCH(float, threshold);
    QFETCH(bool, accepted);
    VexaToolMagicSelection tool;
    auto* edit = tool.getWidget()->findChild<QLineEdit*>(QStringLiteral("thresholdEdit"));
    QCOMPARE(tool.threshold, 32.0f);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    if (!typed.isEmpty()) {
        tool.threshold = 32.0f;
        QTest::keyClicks(edit, typed);
    }
    QCOMPARE(edit->text() == typed, accepted);
    if (accepted)
        QCOMPARE(tool.threshold, threshold);
}

QTEST_MAIN(TestColorTools)
#include "tst_colortools.moc"
