// The editor's Matting View window: the plug-in's GPU matting view reached from the Select
// menu without linking the plug-in, its tool bar, and the matte as the document's selection.
#include "VexaContext.h"
#include "VexaEditorWindow.h"
#include "VexaMattingWindow.h"
#include "VexaPluginLoader.h"
#include "VexaSelection.h"

#include <QAction>
#include <QComboBox>
#include <QMouseEvent>
#include <QScrollArea>
#include <QSpinBox>
#include <QUndoStack>
#include <QWheelEvent>
#include <QtTest>

namespace {

void stroke(QWidget* view, Qt::MouseButton button, const QVector<QPoint>& points, Qt::KeyboardModifiers mods = {})
{
    auto send = [&](QEvent::Type type, QPoint p, Qt::MouseButton which, Qt::MouseButtons held) {
        QMouseEvent e(type, QPointF(p), view->mapToGlobal(QPointF(p)), which, held, mods);
        QCoreApplication::sendEvent(view, &e);
    };
    send(QEvent::MouseButtonPress, points.first(), button, button);
    for (QPoint p : points)
        send(QEvent::MouseMove, p, Qt::NoButton, button);
    send(QEvent::MouseButtonRelease, points.last(), button, Qt::NoButton);
}

// A dark square on a light ground, `size` large, the square in its middle third.
QImage squarePicture(QSize size)
{
    QImage img(size, QImage::Format_ARGB32);
    img.fill(qRgb(230, 225, 210));
    for (int y = size.height() / 3; y < 2 * size.height() / 3; ++y)
        for (int x = size.width() / 3; x < 2 * size.width() / 3; ++x)
            img.setPixel(x, y, qRgb(40, 50, 90));
    return img;
}

} // namespace

class TestMattingWindow : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY2(m_plugin.load(QStringLiteral(VEXA_PLUGIN_PATH)), qPrintable(m_plugin.errorString()));
        QVERIFY(!VexaMattingWindow::viewClass(QStringLiteral(VEXA_HOST_LIB_PATH))); // a library without the view
    }

    void menuOpensViewOnDocument()
    {
        VexaEditorWindow window(m_plugin);
        auto* action = window.findChild<QAction*>(QStringLiteral("mattingView"));
        QVERIFY(action && action->text() == QStringLiteral("Matting View…"));
        action->trigger(); // no document: nothing opens
        QVERIFY(!window.findChild<VexaMattingWindow*>());

        QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/chelsea.png"), nullptr));
        window.show();
        action->trigger();
        auto* matting = window.findChild<VexaMattingWindow*>();
        QVERIFY(matting && QTest::qWaitForWindowExposed(matting));
        QWidget* view = matting->view();
        QCOMPARE(QString::fromLatin1(view->metaObject()->className()), QStringLiteral("QuickSelectGLWidget"));
        QVERIFY(view->size() == QSize(451, 300) && view->property("caption").toString() == QStringLiteral("Matting View"));
        // The tool bar drives the view's settings.
        matting->findChild<QComboBox*>(QStringLiteral("markMode"))->setCurrentIndex(2);
        QCOMPARE(view->property("markMode").toInt(), 2);
        matting->findChild<QSpinBox*>(QStringLiteral("brushRadius"))->setValue(9);
        QCOMPARE(view->property("brushRadius").toInt(), 9);
        matting->findChild<QAction*>(QStringLiteral("viewComposite"))->trigger();
        QCOMPARE(view->property("viewMode").toInt(), 2);
        matting->findChild<QAction*>(QStringLiteral("autoFlood"))->trigger();
        QCOMPARE(view->property("autoFill").toBool(), true);
        // Before any matte the matte is all unknown: mid-grey.
        QVERIFY(matting->matteImage().size() == QSize(451, 300) && qGray(matting->matteImage().pixel(200, 100)) == 128);
    }

    void marksFloodMatteBecomeSelection_data()
    {
        QTest::addColumn<QSize>("canvas"); QTest::addColumn<QSize>("working"); QTest::addColumn<bool>("flood");
        QTest::newRow("at full size") << QSize(300, 240) << QSize(300, 240) << true;
        // A large photo works at most 1536 on a side, as quick select does; the selection is
        // at the canvas size again. (Without the flood, which takes long on a software renderer
        // at this size: the object is the seed, the rest background.)
        QTest::newRow("scaled to fit 1536") << QSize(3072, 1800) << QSize(1536, 900) << false;
    }

    void marksFloodMatteBecomeSelection()
    {
        QFETCH(QSize, canvas); QFETCH(QSize, working); QFETCH(bool, flood);
        std::unique_ptr<VexaContext> doc = VexaContext::fromImage(squarePicture(canvas));
        VexaMattingWindow matting(VexaMattingWindow::viewClass(m_plugin.fileName()), doc.get());
        matting.show();
        QVERIFY(QTest::qWaitForWindowExposed(&matting) && matting.workingSize() == working);
        // Whole on the screen, however large the photo.
        QVERIFY(matting.screen()->availableGeometry().contains(matting.frameGeometry()));
        QWidget* view = matting.view();
        auto* scroll = matting.findChild<QScrollArea*>();
        const int w = working.width(), h = working.height();
        if (!flood) {
            // Larger than the window: it opens fitted, the whole photo in sight.
            QVERIFY(matting.zoom() < 1.0 && scroll->viewport()->rect().contains(view->geometry()));
            QCOMPARE(view->size(), (QSizeF(working) * matting.zoom()).toSize());
            // The wheel zooms a level per notch about the pointer, over the margin as well.
            auto wheelAt = [&](QWidget* target, QPoint at) {
                QWheelEvent e(QPointF(at), target->mapToGlobal(QPointF(at)), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                QCoreApplication::sendEvent(target, &e);
            };
            // Off the centre, but where the photo can scroll far enough to keep the point in place.
            const QPoint anchor = scroll->viewport()->rect().center() + QPoint(-100, 30);
            const double fitted = matting.zoom();
            const QPointF imageBefore = QPointF(view->mapFrom(scroll->viewport(), anchor)) / fitted;
            wheelAt(view, view->mapFrom(scroll->viewport(), anchor));
            QVERIFY(matting.zoom() > fitted);
            const QPointF imageAfter = QPointF(view->mapFrom(scroll->viewport(), anchor)) / matting.zoom();
            QVERIFY2((imageAfter - imageBefore).manhattanLength() <= 2.0,
                     qPrintable(QStringLiteral("%1,%2").arg(imageAfter.x()).arg(imageAfter.y())));
            matting.fitToWindow();
            QVERIFY(matting.zoom() == fitted);
            wheelAt(scroll->viewport(), QPoint(1, 1));
            QVERIFY(matting.zoom() > fitted);
            matting.setZoom(1.0);
            QCOMPARE(view->size(), working);
        }
        // An unknown ring along the square's edge, an object seed in it, a background seed in a corner.
        matting.setBrushRadius(flood ? 5 : 3);
        stroke(view, Qt::RightButton, {{w / 3, h / 3}, {2 * w / 3, h / 3}, {2 * w / 3, 2 * h / 3}, {w / 3, 2 * h / 3}, {w / 3, h / 3}});
        stroke(view, Qt::LeftButton, {{w / 2 - 2, h / 2}, {w / 2 + 2, h / 2}});
        matting.setMarkMode(1);
        stroke(view, Qt::LeftButton, {{5, 5}, {10, 5}});
        if (flood)
            matting.flood();
        matting.matte();
        QCOMPARE(view->property("viewMode").toInt(), 1);
        const QImage matte = matting.matteImage();
        QVERIFY(qGray(matte.pixel(w / 2, h / 2)) == 255 && qGray(matte.pixel(w - 3, h - 3)) == 0);
        QCOMPARE(qGray(matte.pixel(w / 2, h / 2 + h / 8)), flood ? 255 : 0); // flooded object

        QVERIFY(matting.useAsSelection());
        VexaSelection* sel = doc->getSelection();
        const auto maskAt = [&](int x, int y) { return sel->mask()[size_t(y) * size_t(sel->maskStride()) + size_t(x)]; };
        QVERIFY(maskAt(canvas.width() / 2, canvas.height() / 2) == 255 && maskAt(canvas.width() - 1, canvas.height() - 1) == 0);
        // The selection is the matte scaled to the canvas, and undoable like any selection change.
        const QImage expected = matte.convertToFormat(QImage::Format_Grayscale8).scaled(canvas, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        for (int y = 0; y < canvas.height(); y += 7)
            for (int x = 0; x < canvas.width(); x += 7)
                QCOMPARE(int(maskAt(x, y)), qGray(expected.pixel(x, y)));
        QVERIFY(doc->hasSelection());
        // The document closed while the window stays open: refused, with the reason.
        doc.reset();
        QString error;
        QVERIFY(!matting.useAsSelection(&error) && error.contains(QStringLiteral("closed")));
    }

    void strokesAndMatteUndo()
    {
        auto doc = VexaContext::fromImage(squarePicture(QSize(120, 90)));
        VexaMattingWindow matting(VexaMattingWindow::viewClass(m_plugin.fileName()), doc.get());
        matting.show();
        matting.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&matting));
        QWidget* view = matting.view();
        auto shot = [&] { return view->grab().toImage(); };
        auto undo = [&] { QTest::keyClick(matting.windowHandle(), Qt::Key_Z, Qt::ControlModifier); };
        const QImage clean = shot();
        stroke(view, Qt::LeftButton, {{20, 20}, {60, 20}});
        const QImage one = shot();
        // Shift + left in the default mode paints background (blue), for that stroke only.
        stroke(view, Qt::LeftButton, {{20, 70}, {60, 70}}, Qt::ShiftModifier);
        QCOMPARE(view->property("markMode").toInt(), 0);
        const QImage two = shot();
        QVERIFY(two.pixel(40, 70) != two.pixel(40, 20));
        undo();
        const QImage undoneOnce = shot();
        undo();
        QVERIFY(undoneOnce == one && shot() == clean);
        matting.undoStack()->redo();
        matting.undoStack()->redo();
        QCOMPARE(shot(), two);
        // A matte is undone too: back to all unknown, with the marks kept.
        stroke(view, Qt::RightButton, {{30, 30}, {90, 30}, {90, 60}, {30, 60}, {30, 30}});
        matting.matte();
        QVERIFY(qGray(matting.matteImage().pixel(5, 5)) != 128);
        undo();
        QVERIFY(qGray(matting.matteImage().pixel(5, 5)) == 128 && matting.undoStack()->index() == 3);
        // Zoomed in, a stroke lands on the image pixels under the pointer.
        matting.setViewMode(0);
        stroke(view, Qt::LeftButton, {{20, 80}, {60, 80}});
        const QImage atFull = shot();
        undo();
        QVERIFY(shot() != atFull);
        matting.setZoom(2.0);
        QVERIFY(view->size() == QSize(240, 180) && shot().pixel(230, 170) == atFull.pixel(115, 85)); // the image fills the larger view
        stroke(view, Qt::LeftButton, {{40, 160}, {120, 160}});
        matting.setZoom(1.0);
        QCOMPARE(shot(), atFull);
    }

private:
    VexaPluginLoader m_plugin;
};

QTEST_MAIN(TestMattingWindow)
#include "tst_mattingwindow.moc"
