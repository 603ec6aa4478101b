// The demo editor: opening documents, refusing bad ones, its commands and the scripted demo.
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaDemoScript.h"
#include "VexaEditorWindow.h"
#include "VexaPluginLoader.h"
#include "VexaSelection.h"

#include <QTemporaryDir>
#include <QtTest>

class TestEditor : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void opensAndKeepsDocumentOnFailure();
    void toolBarListsEveryName();
    void exportsMaskAndImage();
    void scriptedDemoWritesResults();

private:
    VexaPluginLoader m_plugin;
};

void TestEditor::initTestCase()
{
    QVERIFY2(m_plugin.load(QStringLiteral(VEXA_PLUGIN_PATH)), qPrintable(m_plugin.errorString()));
}

void TestEditor::opensAndKeepsDocumentOnFailure()
{
    VexaEditorWindow window(m_plugin);
    QString error;
    QVERIFY(!window.document());
    QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/chelsea.png"), &error));
    VexaContext* doc = window.document();
    QVERIFY(doc);
    QCOMPARE(doc->canvasSize(), QSize(451, 300));
    QCOMPARE(window.canvas()->getContext(), doc);

    QVERIFY(!window.openImage(QStringLiteral("/nonexistent/picture.png"), &error));
    QVERIFY(error.contains(QStringLiteral("picture.png")));
    QTemporaryFile junk(QDir::tempPath() + QStringLiteral("/junkXXXXXX.png"));
    QVERIFY(junk.open());
    junk.write("this is not a picture");
    junk.close();
    error.clear();
    QVERIFY(!window.openImage(junk.fileName(), &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(window.document(), doc); // the current document stays
}

void TestEditor::toolBarListsEveryName()
{
    VexaEditorWindow window(m_plugin);
    QCOMPARE(window.toolNames().size(), qsizetype(8));
    QCOMPARE(window.tools().size(), qsizetype(8));
    QCOMPARE(window.toolNames().first(), QStringLiteral("Rectangular Marquee Tool"));
}

void TestEditor::exportsMaskAndImage()
{
    VexaEditorWindow window(m_plugin);
    QString error;
    QVERIFY(!window.exportSelectionMask(QStringLiteral("/tmp/none.png"), &error));
    QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/coffee.png"), &error));
    VexaSelection* sel = window.document()->getSelection();
    sel->selectAll();
    sel->inverse();
    sel->inverse();
    QTemporaryDir dir;
    const QString maskFile = dir.filePath(QStringLiteral("mask.png"));
    QVERIFY(window.exportSelectionMask(maskFile, &error));
    const QImage mask(maskFile);
    QCOMPARE(mask.size(), QSize(600, 400));
    QVERIFY(mask.isGrayscale());
    QCOMPARE(qGray(mask.pixel(599, 399)), 255);
    QVERIFY(!window.exportSelectionMask(QStringLiteral("/nonexistent/dir/mask.png"), &error));
    QVERIFY(window.saveImage(dir.filePath(QStringLiteral("image.png")), &error));
    QCOMPARE(QImage(dir.filePath(QStringLiteral("image.png"))).size(), QSize(600, 400));
}

void TestEditor::scriptedDemoWritesResults()
{
    VexaEditorWindow window(m_plugin);
    QString error;
    QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/coffee.png"), &error));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTemporaryDir dir;
    VexaDemoScript script(window, dir.path());
    QCOMPARE(script.run(), 0);
    const QImage shot(dir.filePath(QStringLiteral("screenshot.png")));
    QCOMPARE(shot.size(), window.size());
    const QImage mask(dir.filePath(QStringLiteral("selection-mask.png")));
    QCOMPARE(mask.size(), QSize(600, 400));
    // Something was selected and something was not.
    int in = 0, out = 0;
    for (int y = 0; y < mask.height(); y += 4)
        for (int x = 0; x < mask.width(); x += 4)
            (qGray(mask.pixel(x, y)) >= 128 ? in : out)++;
    QVERIFY(in > 100 && out > 100);
    QFile report(dir.filePath(QStringLiteral("report.txt")));
    QVERIFY(report.open(QIODevice::ReadOnly));
    const QByteArray text = report.readAll();
    QVERIFY(text.contains("canvas 600 x 400"));
    QVERIFY(text.contains("selected pixels"));
    // The matting view's part: the cup and saucer are the object, the table's corners not.
    const QImage glMatte(dir.filePath(QStringLiteral("gl-matte.png")));
    QCOMPARE(glMatte.size(), QSize(600, 400));
    QCOMPARE(qGray(glMatte.pixel(290, 200)), 255);
    QCOMPARE(qGray(glMatte.pixel(20, 380)), 0);
}

QTEST_MAIN(TestEditor)
#include "tst_editor.moc"
