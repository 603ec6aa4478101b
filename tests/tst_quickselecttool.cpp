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
#include <QSignalSpy>
#include <QTemporaryDir>

#include <functional>

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

void clickChild(QWidget* window, const char* name)
{
    auto* b = window->findChild<QPushButton*>(QLatin1String(name));
    if (!b)
        qFatal("no button %s", name);
    b->click();
}

// Runs `inside` from within the tool's modal loop, then activates the tool on `doc`.
void activateWith(VexaToolQuickSelect& tool, VexaContext* doc, std::function<void()> inside)
{
    QTimer::singleShot(0, &tool, [inside] { inside(); });
    tool.active(doc);
}

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
    void applyWritesMatteAndDeletesOutside_data();
    void applyWritesMatteAndDeletesOutside();
    void unusableMatteLeavesSelection_data();
    void unusableMatteLeavesSelection();
    void activatingTwiceLoadsOnce();
    void escapeIsCancel();
    void failedRenderRefusesActivation();
    void okAppliesTheWindowsMatteLikeTheCommandLine();
};

void TestQuickSelectTool::applyWritesMatteAndDeletesOutside_data()
{
    // The resampling itself is the command line's, checked by hand in tst_cli; here the tool's
    // part: the bytes reach the mask (padding untouched), the outside goes, the memory comes back.
    QTest::addColumn<QImage>("matte");
    QTest::addColumn<int>("mask"); // at canvas (1, 1) of a 5 x 3 document
    QTest::newRow("same size, grey") << greyMatte({{0, 0, 0, 0, 0}, {0, 128, 0, 0, 0}, {0, 0, 0, 0, 0}}) << 128;
    QImage colour = greyMatte({{0, 0, 0, 0, 0}, {0, 0, 0, 0, 0}, {0, 0, 0, 0, 0}});
    colour.setPixel(1, 1, 0x00FF0000u); // (11 * 255) / 32 = 87.6, truncated; alpha ignored
    QTest::newRow("same size, colour") << colour << 87;
    // Matte 3 x 2 onto 5 x 3: sx = 2/4, sy = 1/2; (1, 1) is the centre of four:
    // (0 + 100 + 200 + 50) / 4 = 87.5.
    QTest::newRow("resampled") << greyMatte({{0, 100, 40}, {200, 50, 10}}) << 87;
}

void TestQuickSelectTool::applyWritesMatteAndDeletesOutside()
{
    QFETCH(QImage, matte);
    QFETCH(int, mask);
    QImage img(5, 3, QImage::Format_ARGB32);
    img.fill(qRgb(10, 200, 30));
    QuickSelectDocument doc(img);
    VexaSelection* sel = doc.doc->getSelection();
    QVERIFY(sel->maskStride() > 5);
    VexaToolQuickSelect tool;
    tool.context = doc.doc.get();
    tool.activated = true;
    const size_t blocks = VexaMemory::getInstance()->liveBlocks();
    tool.apply(matte);
    QCOMPARE(maskAt(sel, 1, 1), mask);
    QCOMPARE(maskAt(sel, 0, 0), 0);
    for (int y = 0; y < 3; ++y)
        for (int x = 5; x < sel->maskStride(); ++x)
            QCOMPARE(int(sel->mask()[size_t(y) * size_t(sel->maskStride()) + size_t(x)]), 0);
    QVERIFY(!tool.activated);
    QCOMPARE(VexaMemory::getInstance()->liveBlocks(), blocks);
    // The outside is deleted in proportion: an unselected pixel is gone, a selected one kept.
    const QImage& pixels = qobject_cast<VexaLayer*>(doc.doc->getLayerManager()->getActiveLayer())->getPictureHost()->image();
    QCOMPARE(qAlpha(pixels.pixel(0, 0)), 0);
    QCOMPARE(qAlpha(pixels.pixel(1, 1)), mask);
}

void TestQuickSelectTool::unusableMatteLeavesSelection_data()
{
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QSize>("matte");
    QTest::newRow("null matte") << QSize(30, 20) << QSize();
    QTest::newRow("one pixel wide") << QSize(1, 20) << QSize(2, 2);
    QTest::newRow("one pixel high") << QSize(30, 1) << QSize(2, 2);
}

void TestQuickSelectTool::unusableMatteLeavesSelection()
{
    QFETCH(QSize, canvas);
    QFETCH(QSize, matte);
    QImage img(canvas, QImage::Format_ARGB32);
    img.fill(qRgb(10, 200, 30));
    QuickSelectDocument doc(img);
    VexaSelection* sel = doc.doc->getSelection();
    sel->selectAll();
    const std::vector<uint8_t> before(sel->mask(), sel->mask() + size_t(sel->maskStride()) * size_t(canvas.height()));
    QImage alpha;
    if (matte.isValid()) {
        alpha = QImage(matte, QImage::Format_ARGB32);
        alpha.fill(0xFF000000u);
    }
    VexaToolQuickSelect tool;
    tool.context = doc.doc.get();
    tool.activated = true;
    tool.apply(alpha);
    QVERIFY(!tool.activated);
    QCOMPARE(std::vector<uint8_t>(sel->mask(), sel->mask() + before.size()), before);
    QCOMPARE(doc.doc->composed(), img);
}

void TestQuickSelectTool::activatingTwiceLoadsOnce()
{
    QuickSelectDocument doc(discPicture(300, 200));
    VexaToolQuickSelect tool;
    // The first activation makes the window; the second is watched.
    activateWith(tool, doc.doc.get(), [&] { clickChild(tool.getWidget(), "closeButton"); });
    auto* made = qobject_cast<VexaToolQuickSelectWidget*>(tool.getWidget());
    QVERIFY(made);
    QSignalSpy reports(made->getThread(), SIGNAL(progress(QString,int)));
    int inits = 0;
    bool ran = false;
    activateWith(tool, doc.doc.get(), [&] {
        auto* window = qobject_cast<VexaToolQuickSelectWidget*>(tool.getWidget());
        QVERIFY(window && window->isVisible());
        QVERIFY(tool.getContainer()->isVisible());
        QVERIFY(waitForStep(window));
        tool.active(doc.doc.get()); // returns at once: already active
        QVERIFY(!window->isStepRunning());
        QTest::qWait(20);
        for (const QList<QVariant>& r : std::as_const(reports))
            inits += r[0].toString() == QLatin1String("Initializing ..") && r[1].toInt() == 0;
        ran = true;
        clickChild(window, "closeButton");
    });
    QVERIFY(ran);
    QCOMPARE(inits, 1);
    QVERIFY(!tool.activated);
    QVERIFY(!tool.getWidget()->isVisible());
    QVERIFY(!tool.getContainer()->isVisible());
}

void TestQuickSelectTool::escapeIsCancel()
{
    QuickSelectDocument doc(discPicture(300, 200));
    VexaToolQuickSelect tool;
    doc.doc->setCurrentTool(&tool);
    activateWith(tool, doc.doc.get(), [&] { tool.getContainer()->reject(); });
    QVERIFY(!tool.activated);
    QVERIFY(!doc.doc->currentTool());
    auto* window = qobject_cast<VexaToolQuickSelectWidget*>(tool.getWidget());
    QVERIFY(!window->getThread()->isRunning());
    QVERIFY(window->segmentation().sourceImage.isNull());
    QVERIFY(!window->segmentation().graph);
    // Activated again, it loads afresh.
    QuickSelectDocument small(discPicture(240, 160));
    activateWith(tool, small.doc.get(), [&] {
        QVERIFY(waitForStep(window));
        QCOMPARE(window->segmentation().regionMap.size(), size_t(240 * 160));
        clickChild(window, "closeButton");
    });
}

void TestQuickSelectTool::failedRenderRefusesActivation()
{
    auto doc = VexaContext::fromImage(discPicture(120, 80)); // no canvas: nothing renders it
    VexaToolQuickSelect tool;
    MessageBoxAnswerer answers;
    // Should the window open all the same, its modal loop is left after a while.
    QTimer::singleShot(3000, &tool, [&] {
        if (tool.getContainer())
            tool.getContainer()->reject();
    });
    tool.active(doc.get());
    QCOMPARE(answers.texts, QStringList{QStringLiteral("The document could not be rendered: there is nothing to select from.")});
    QCOMPARE(answers.titles, QStringList{QStringLiteral("Quick Select Tool")});
    QVERIFY(!tool.activated);
    QVERIFY(!tool.getContainer()->isVisible());
}

void TestQuickSelectTool::okAppliesTheWindowsMatteLikeTheCommandLine()
{
    const QString photo = QStringLiteral(VEXA_DATA_DIR "/coffee.png");
    const QImage image(photo);
    QVERIFY(!image.isNull());
    QVERIFY(image.width() <= 1536 && image.height() <= 1536);
    QuickSelectDocument doc(image);
    QTemporaryDir dir;
    const QString marksFile = dir.filePath(QStringLiteral("marks.png"));
    QImage matte;
    VexaToolQuickSelect tool;
    MessageBoxAnswerer answers;
    activateWith(tool, doc.doc.get(), [&] {
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
    QVERIFY(answers.texts.isEmpty());
    QVERIFY(!tool.activated);
    auto* window = qobject_cast<VexaToolQuickSelectWidget*>(tool.getWidget());
    QVERIFY(!window->isVisible());
    QVERIFY(window->segmentation().alphaImage.isNull());
    QCOMPARE(matte.size(), image.size());

    // The selection is the matte, and the photo outside it is gone.
    VexaSelection* sel = doc.doc->getSelection();
    int soft = 0, inside = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const int a = qBlue(matte.pixel(x, y));
            QCOMPARE(maskAt(sel, x, y), a);
            soft += a > 0 && a < 255;
            inside += a == 255;
        }
    QVERIFY(soft > 0 && inside > image.width() * image.height() / 10);
    QCOMPARE(maskAt(sel, 5, 5), 0);
    QCOMPARE(qAlpha(doc.doc->composed().pixel(5, 5)), 0);
    QCOMPARE(doc.doc->composed().pixel(int(0.45 * image.width()), int(0.45 * image.height())),
             image.convertToFormat(QImage::Format_ARGB32).pixel(int(0.45 * image.width()), int(0.45 * image.height())));
    // One OK is one undo step, named after the tool: it brings back the deleted pixels and the
    // empty selection at once, and redo the cut-out.
    VexaHistory* history = doc.doc->getHistory();
    QCOMPARE(history->index(), 1);
    QCOMPARE(history->undoText(), QStringLiteral("Quick Select"));
    history->undo();
    QVERIFY(!history->canUndo());
    QCOMPARE(doc.doc->composed().pixel(5, 5), image.convertToFormat(QImage::Format_ARGB32).pixel(5, 5));
    QVERIFY(!sel->hasSelection());
    history->redo();
    QCOMPARE(qAlpha(doc.doc->composed().pixel(5, 5)), 0);
    QCOMPARE(maskAt(sel, int(0.45 * image.width()), int(0.45 * image.height())), 255);

    // The command line on the same photo and marks gives the same matte, pixel for pixel.
    const QString alphaFile = dir.filePath(QStringLiteral("alpha.png"));
    QProcess cli;
    cli.start(QStringLiteral(VEXA_CLI_PATH), {photo, marksFile, "--steps", "mark,matte", "--alpha", alphaFile});
    QVERIFY(cli.waitForFinished(120000));
    QCOMPARE(cli.exitCode(), 0);
    QCOMPARE(QImage(alphaFile).convertToFormat(QImage::Format_Grayscale8), matte.convertToFormat(QImage::Format_Grayscale8));
}

QTEST_MAIN(TestQuickSelectTool)
#include "tst_quickselecttool.moc"
