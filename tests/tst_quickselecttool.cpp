// The quick select tool as the host sees it: modal activation, the matte written into the
// selection with the outside deleted, and the window's matte equal to the command line's.
#include "QuickSelectTestSupport.h"

#include "VexaFilterContainer.h"
#include "VexaHistory.h"
#include "VexaLayer.h"
#include "VexaLayerManager.h"
#include "VexaMemory.h"
#include "VexaPictureHost.h"
#include "VexaSelection.h"
#include "VexaToolQuickSelect.h"
#include "VexaToolQuickSelectImageBox.h"

#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>


namespace {

QImage greyMatte(const QVector<QVector<int>>& rows)
{
    QImage img(rows[0].size(), rows.size(), QImage::Format_ARGB32);
    for (int y = 0; y < rows.size(); ++y)
        for (int x = 0; x < rows[y].size(); ++x)
            img.setPixel(x, y, 0xFF000000u + QRgb(rows[y][x]) * 0x010101u);
    return img;
}

int maskAt(VexaSelection* sel, int x, int y) { return sel->mask()[size_t(y) * size_t(sel->maskStride()) + size_t(x)]; }

void clickChild(QWidget* window, const char* name) { window->findChild<QPushButton*>(QLatin1String(name))->click(); }

// Foreground strokes on the object, background strokes around it, in image fractions.
void paintCupMarks(VexaToolQuickSelectWidget* window)
{
    auto* box = window->getImageBox();
    const QSize s = window->segmentation().sourceImage.size();
    auto at = [&](double fx, double fy) { return QPoint(int(fx * s.width()), int(fy * s.height())); };
    emit box->line(at(0.35, 0.45), at(0.60, 0.45), false);
    emit box->line(at(0.30, 0.75), at(0.65, 0.75), false);
    clickChild(window, "MarkBkg");
    const QPoint corners[] = {at(0.02, 0.02), at(0.98, 0.02), at(0.98, 0.98), at(0.02, 0.98), at(0.02, 0.02)};
    for (int i = 1; i < 5; ++i)
        emit box->line(corners[i - 1], corners[i], false);
}

} // namespace

class TestQuickSelectTool : public QObject
{
    Q_OBJECT
private slots:
    void applyWritesMatteAndDeletesOutside_data()
    {
        // The resampling itself is the command line's, checked by hand in tst_cli; here the tool's
        // part: the bytes reach the mask (padding untouched), the outside goes, the memory comes back.
        // A matte that cannot be used leaves the whole selection (mask -1) and the pixels as they were.
        QTest::addColumn<QSize>("canvas"); QTest::addColumn<QImage>("matte"); QTest::addColumn<int>("mask"); // at canvas (1, 1)
        QTest::newRow("same size, grey") << QSize(5, 3) << greyMatte({{0, 0, 0, 0, 0}, {0, 128, 0, 0, 0}, {0, 0, 0, 0, 0}}) << 128;
        QImage colour = greyMatte({{0, 0, 0, 0, 0}, {0, 0, 0, 0, 0}, {0, 0, 0, 0, 0}});
        colour.setPixel(1, 1, 0x00FF0000u); // (11 * 255) / 32 = 87.6, truncated; alpha ignored
        QTest::newRow("same size, colour") << QSize(5, 3) << colour << 87;
        // Matte 3 x 2 onto 5 x 3: sx = 2/4, sy = 1/2; (1, 1) is the centre of four:
        // (0 + 100 + 200 + 50) / 4 = 87.5.
        QTest::newRow("resampled") << QSize(5, 3) << greyMatte({{0, 100, 40}, {200, 50, 10}}) << 87;
        QTest::newRow("null matte") << QSize(30, 20) << QImage() << -1;
        QTest::newRow("one pixel wide") << QSize(1, 20) << greyMatte({{0, 0}, {0, 0}}) << -1;
        QTest::newRow("one pixel high") << QSize(30, 1) << greyMatte({{0, 0}, {0, 0}}) << -1;
    }

    void applyWritesMatteAndDeletesOutside()
    {
        QFETCH(QSize, canvas); QFETCH(QImage, matte); QFETCH(int, mask);
        QImage img(canvas, QImage::Format_ARGB32);
        img.fill(qRgb(10, 200, 30));
        QuickSelectDocument doc(img);
        VexaSelection* sel = doc.doc->getSelection();
        if (mask < 0)
            sel->selectAll();
        const std::vector<uint8_t> before(sel->mask(), sel->mask() + size_t(sel->maskStride()) * size_t(canvas.height()));
        VexaToolQuickSelect tool;
        tool.context = doc.doc.get();
        tool.activated = true;
        const size_t blocks = VexaMemory::getInstance()->liveBlocks();
        tool.apply(matte);
        QVERIFY(!tool.activated && VexaMemory::getInstance()->liveBlocks() == blocks);
        if (mask < 0) {
            QVERIFY(std::vector<uint8_t>(sel->mask(), sel->mask() + before.size()) == before);
            QCOMPARE(doc.doc->composed(), img);
            return;
        }
        QVERIFY(maskAt(sel, 1, 1) == mask && maskAt(sel, 0, 0) == 0 && sel->maskStride() > 5);
        for (int i = 0; i < 3 * sel->maskStride(); ++i)
            QVERIFY(i % sel->maskStride() < 5 || !sel->mask()[i]);
        // The outside is deleted in proportion: an unselected pixel is gone, a selected one kept.
        const QImage& pixels = qobject_cast<VexaLayer*>(doc.doc->getLayerManager()->getActiveLayer())->getPictureHost()->image();
        QVERIFY(qAlpha(pixels.pixel(0, 0)) == 0 && qAlpha(pixels.pixel(1, 1)) == mask);
    }

    void okAppliesTheWindowsMatteLikeTheCommandLine()
    {
        const QString photo = QStringLiteral(VEXA_DATA_DIR "/coffee.png");
        const QImage image = QImage(photo).convertToFormat(QImage::Format_ARGB32);
        QVERIFY(!image.isNull() && image.width() <= 1536 && image.height() <= 1536);
        QuickSelectDocument doc(image);
        QTemporaryDir dir;
        const QString marksFile = dir.filePath(QStringLiteral("marks.png"));
        QImage matte;
        VexaToolQuickSelect tool;
        MessageBoxAnswerer answers;
        QTimer::singleShot(0, &tool, [&] { // from within the tool's modal loop
            auto* window = qobject_cast<VexaToolQuickSelectWidget*>(tool.getWidget());
            QVERIFY(waitForStep(window));
            paintCupMarks(window);
            QVERIFY(window->segmentation().markImage.save(marksFile));
            clickChild(window, "previewButton");
            QVERIFY(waitForStep(window));
            clickChild(window, "matteButton");
            QVERIFY(waitForStep(window));
            QVERIFY(window->findChild<QRadioButton*>(QStringLiteral("viewMatteButton"))->isChecked());
            matte = window->segmentation().alphaImage.copy();
            clickChild(window, "applyButton");
        });
        tool.active(doc.doc.get());
        auto* window = qobject_cast<VexaToolQuickSelectWidget*>(tool.getWidget());
        QVERIFY(answers.texts.isEmpty() && !tool.activated && !window->isVisible() && window->segmentation().alphaImage.isNull());
        QCOMPARE(matte.size(), image.size());

        // The selection is the matte, and the photo outside it is gone.
        VexaSelection* sel = doc.doc->getSelection();
        const QImage mask(sel->mask(), image.width(), image.height(), sel->maskStride(), QImage::Format_Grayscale8);
        QCOMPARE(mask, matte.convertToFormat(QImage::Format_Grayscale8));
        const QPoint object(int(0.45 * image.width()), int(0.45 * image.height()));
        QVERIFY(maskAt(sel, 5, 5) == 0 && qAlpha(doc.doc->composed().pixel(5, 5)) == 0);
        QCOMPARE(doc.doc->composed().pixel(object), image.pixel(object));
        // One OK is one undo step, named after the tool: it brings back the deleted pixels and the
        // empty selection at once, and redo the cut-out.
        VexaHistory* history = doc.doc->getHistory();
        QVERIFY(history->index() == 1 && history->undoText() == QStringLiteral("Quick Select"));
        history->undo();
        QVERIFY(!history->canUndo() && !sel->hasSelection() && doc.doc->composed().pixel(5, 5) == image.pixel(5, 5));
        history->redo();
        QVERIFY(qAlpha(doc.doc->composed().pixel(5, 5)) == 0 && maskAt(sel, object.x(), object.y()) == 255);

        // The command line on the same photo and marks gives the same matte, pixel for pixel.
        const QString alphaFile = dir.filePath(QStringLiteral("alpha.png"));
        QProcess cli;
        cli.start(QStringLiteral(VEXA_CLI_PATH), {photo, marksFile, "--steps", "mark,matte", "--alpha", alphaFile});
        QVERIFY(cli.waitForFinished(120000) && cli.exitCode() == 0);
        QCOMPARE(QImage(alphaFile).convertToFormat(QImage::Format_Grayscale8), matte.convertToFormat(QImage::Format_Grayscale8));
    }
};

QTEST_MAIN(TestQuickSelectTool)
#include "tst_quickselecttool.moc"
