// The pointing selection tools driven through the canvas signals at widget coordinates, checked
// on the host's real selection mask, their panels and their undo stack.
#include "VexaToolFixture.h"

#include "VexaPluginEntry.h"
#include "VexaToolEllipseSelect.h"
#include "VexaToolLasso.h"
#include "VexaToolLassoPolygon.h"
#include "VexaToolRectangularMarquee.h"
#include "VexaToolRectangularMarqueeWidget.h"
#include "VexaToolSelectionMove.h"
#include "VexaToolSelectionWidget.h"

#include "VexaHistory.h"
#include "VexaSelectionPath.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

namespace {

const QStringList modes{"newBtn", "addBtn", "substractBtn", "intersectBtn"};

QString checkedMode(QWidget* panel)
{
    for (const QString& name : modes)
        if (panel->findChild<QPushButton*>(name)->isChecked())
            return name;
    return QString();
}

QLineEdit* edit(IVexaTool& tool, const char* name) { return tool.getWidget()->findChild<QLineEdit*>(QLatin1String(name)); }

// Types `value` over a panel field's text; then the key, or with none the focus leaving.
void type(IVexaTool& tool, const char* name, const char* value, int key = 0)
{
    edit(tool, name)->selectAll();
    QTest::keyClicks(edit(tool, name), QLatin1String(value));
    key ? QTest::keyClick(edit(tool, name), Qt::Key(key)) : edit(tool, name)->editingFinished();
}
QPushButton* button(IVexaTool& tool, const QString& name) { return tool.getWidget()->findChild<QPushButton*>(name); }

// The panel's region fields as a rectangle.
QRect shown(IVexaTool& tool)
{
    auto v = [&](const char* n) { return edit(tool, n)->text().toInt(); };
    return QRect(v("startXEdit"), v("startYEdit"), v("widthEdit"), v("heightEdit"));
}

void sendKey(IVexaTool& tool, QEvent::Type type, int key)
{
    QKeyEvent e(type, key, Qt::NoModifier);
    tool.event(&e);
}

// Whether the pixels selected (>= 128) along the middle row and column of `r` are exactly r's.
void checkSoftEdges(const VexaToolFixture& f, const QRect& r)
{
    const QPoint mid = r.center();
    for (int x = 0; x < f.selection()->width(); ++x)
        QVERIFY2((f.at(x, mid.y()) >= 128) == (x >= r.left() && x <= r.right()), qPrintable(QString::number(x)));
    for (int y = 0; y < f.selection()->height(); ++y)
        QVERIFY2((f.at(mid.x(), y) >= 128) == (y >= r.top() && y <= r.bottom()), qPrintable(QString::number(y)));
}

} // namespace

class TestTools : public QObject
{
    Q_OBJECT
private slots:
    void modeFollowsModifiers_data()
    {
        QTest::addColumn<QString>("clicked"); QTest::addColumn<int>("modifiers"); QTest::addColumn<bool>("byKey");
        QTest::addColumn<bool>("rightDrag"); QTest::addColumn<QString>("checked");
        const int ctrl = Qt::ControlModifier, alt = Qt::AltModifier, shift = Qt::ShiftModifier;
        QTest::newRow("clicked add") << "addBtn" << 0 << false << false << "addBtn";
        QTest::newRow("control adds") << "newBtn" << ctrl << false << false << "addBtn";
        QTest::newRow("alt subtracts") << "newBtn" << alt << false << false << "substractBtn";
        QTest::newRow("both intersect") << "addBtn" << (ctrl | alt) << false << false << "intersectBtn";
        QTest::newRow("shift ignored") << "substractBtn" << shift << false << false << "substractBtn";
        QTest::newRow("control with shift") << "intersectBtn" << (ctrl | shift) << false << false << "addBtn";
        QTest::newRow("right-button drag subtracts") << "newBtn" << 0 << false << true << "substractBtn";
        QTest::newRow("right-button drag beats control") << "addBtn" << ctrl << false << true << "substractBtn";
        QTest::newRow("alt by key event") << "intersectBtn" << alt << true << false << "substractBtn";
    }
    void modeFollowsModifiers()
    {
        QFETCH(QString, clicked); QFETCH(int, modifiers); QFETCH(bool, byKey); QFETCH(bool, rightDrag); QFETCH(QString, checked);
        ToolFixture<VexaToolEllipseSelect> f(QSize(20, 20), 1.0f);
        button(f.tool, clicked)->click();
        QVERIFY(!button(f.tool, clicked)->icon().isNull());
        const int clickedMode = f.tool.getClickedMode();
        QCOMPARE(clickedMode, modes.indexOf(clicked));
        // The cursor wears the mode in effect: a badge for each mode but New.
        const auto cursorImage = [&] { return f.canvas->cursor().pixmap().toImage(); };
        const QImage before = cursorImage();
        QCOMPARE(before.isNull(), clickedMode == 0);
        for (bool held : {true, false}) { // held, then let go: the clicked mode comes back
            f.modifiers = held ? Qt::KeyboardModifiers(modifiers) : Qt::NoModifier;
            f.canvas->setProperty("subtractDrag", held && rightDrag);
            if (byKey)
                sendKey(f.tool, held ? QEvent::KeyPress : QEvent::KeyRelease, Qt::Key_Alt);
            else
                f.tick();
            const QString now = held ? checked : clicked;
            QCOMPARE(f.selection()->combineMode, modes.indexOf(now));
            QCOMPARE(checkedMode(f.tool.getWidget()), now);
            QCOMPARE(f.tool.getClickedMode(), clickedMode); // the check mark moved, the clicked mode did not
            QCOMPARE(cursorImage() == before, now == clicked);
        }
    }

    void rectangleDrags_data()
    {
        QTest::addColumn<float>("scale"); QTest::addColumn<QPoint>("from"); QTest::addColumn<QPoint>("to");
        QTest::addColumn<bool>("shift"); QTest::addColumn<float>("feather"); QTest::addColumn<QRect>("expected");
        // A 400 x 300 document; no drag (from == to) types `expected` into the panel instead.
        // Whatever the panel shows at the end is what is selected.
        const QPoint none;
        QTest::newRow("drag, scale 1") << 1.0f << QPoint(10, 10) << QPoint(30, 16) << false << 0.0f << QRect(10, 10, 21, 7);
        QTest::newRow("drag, scale 2") << 2.0f << QPoint(5, 5) << QPoint(15, 8) << false << 0.0f << QRect(10, 10, 21, 7);
        QTest::newRow("drag, scale 0.5") << 0.5f << QPoint(21, 21) << QPoint(61, 33) << false << 0.0f << QRect(10, 10, 21, 7);
        QTest::newRow("drag, scale 0.5, odd") << 0.5f << QPoint(20, 20) << QPoint(61, 35) << false << 0.0f
                                              << QRect(10, 10, 21, 8);
        QTest::newRow("shift: square") << 1.0f << QPoint(10, 10) << QPoint(30, 16) << true << 0.0f << QRect(10, 10, 21, 21);
        QTest::newRow("shift: square up and left") << 1.0f << QPoint(30, 30) << QPoint(10, 24) << true << 0.0f
                                                   << QRect(10, 10, 21, 21);
        // Past the right edge the width field caps and sets the end to the last column.
        QTest::newRow("width capped") << 1.0f << QPoint(380, 10) << QPoint(450, 20) << false << 0.0f << QRect(380, 10, 20, 11);
        QTest::newRow("typed, feathered") << 1.0f << none << none << false << 3.0f << QRect(20, 30, 50, 40);
        QTest::newRow("drag, feathered, scale 2") << 2.0f << QPoint(5, 5) << QPoint(24, 14) << false << 4.0f
                                                  << QRect(10, 10, 39, 19);
    }
    void rectangleDrags()
    {
        QFETCH(float, scale); QFETCH(QPoint, from); QFETCH(QPoint, to); QFETCH(bool, shift); QFETCH(float, feather);
        QFETCH(QRect, expected);
        ToolFixture<VexaToolRectangularMarquee> f(QSize(400, 300), scale);
        f.tool.setFeatherRadius(feather);
        if (from == to) {
            f.tool.getRegionWidget()->setRegion(expected.x(), expected.y(), expected.right(), expected.bottom());
            button(f.tool, QStringLiteral("okBtn"))->click();
        } else {
            f.modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
            f.drag(from, to);
        }
        // Dragged up or left, the panel names the start corner with W = H = 1 (it counts from the
        // start only); the selection still covers the rectangle between both corners.
        if (to.x() >= from.x() && to.y() >= from.y())
            QCOMPARE(shown(f.tool), expected);
        if (feather > 0.0f) // the half-level edge runs along the panel's rectangle (the corners round off)
            return checkSoftEdges(f, expected);
        QCOMPARE(f.bounds(), expected);
        QCOMPARE(f.at(expected.left(), expected.top()), 255);
        QCOMPARE(f.at(expected.right(), expected.bottom()), 255);
    }

    void rectangleClickAndTypedRegion()
    {
        ToolFixture<VexaToolRectangularMarquee> f(QSize(40, 40), 1.0f);
        f.selectRect(QRect(30, 30, 5, 5));
        f.click(12, 7); // outside the old selection: a new shape, empty
        QVERIFY(!f.selection()->hasSelection());
        QCOMPARE(shown(f.tool), QRect(0, 0, 13, 8));
        f.tool.getRegionWidget()->setRegion(5, 6, 12, 8);
        button(f.tool, QStringLiteral("okBtn"))->click();
        QCOMPARE(f.bounds(), QRect(5, 6, 8, 3));
        // W = 1 puts the end on the start: OK selects nothing and changes nothing.
        const int steps = f.doc->getHistory()->count();
        type(f.tool, "widthEdit", "1", Qt::Key_Return);
        QVERIFY(f.doc->getHistory()->count() == steps && f.bounds() == QRect(5, 6, 8, 3));
        // Typed as a user types, field by field: each value stays as typed while the rectangle has
        // no area (a cleared field is not rewritten to "0"), and it is applied once it has.
        f.selection()->deselect();
        type(f.tool, "startXEdit", "30");
        type(f.tool, "startYEdit", "20");
        type(f.tool, "heightEdit", "", Qt::Key_Backspace);
        QCOMPARE(edit(f.tool, "heightEdit")->text(), QString());
        type(f.tool, "heightEdit", "5");
        QVERIFY(shown(f.tool).topLeft() == QPoint(30, 20) && !f.selection()->hasSelection());
        type(f.tool, "widthEdit", "4", Qt::Key_Return);
        QCOMPARE(f.bounds(), QRect(30, 20, 4, 5));
        // A field typed in, then the tool switched: the focus leaving applies nothing.
        f.selection()->deselect();
        QTest::keyClicks(edit(f.tool, "widthEdit"), QStringLiteral("2"));
        f.tool.disActive();
        emit edit(f.tool, "widthEdit")->editingFinished();
        QVERIFY(!f.selection()->hasSelection());
    }

    // Shapes drawn over a small selection at (35, 35), in New mode unless another is clicked: a
    // drag (rectangle, ellipse), a stroke through `points` (lasso) or clicks at `points`
    // (polygon, 5 widget pixels from the first corner closing it). While the document blocks
    // tool input, every tool but the ellipse leaves the selection as it was.
    void shapes_data()
    {
        QTest::addColumn<QString>("tool"); QTest::addColumn<float>("scale"); QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("shift"); QTest::addColumn<bool>("blocked"); QTest::addColumn<QList<QPoint>>("points");
        QTest::addColumn<QRect>("expected");
        auto row = [](const char* name, const char* tool, float scale, const char* mode, bool shift, bool blocked,
                      const QList<QPoint>& points, const QRect& expected) {
            QTest::newRow(name) << QString::fromLatin1(tool) << scale << QString::fromLatin1(mode) << shift << blocked << points
                                << expected;
        };
        const char *ellipse = "Ellipse Select Tool", *lasso = "Lasso Tool", *polygon = "Polygonal Lasso Tool";
        const char* rectangle = "Rectangular Marquee Tool";
        QList<QPoint> square; // a stroke of 40 points around (5, 5) - (25, 25)
        const QPoint corner[5] = {{5, 5}, {25, 5}, {25, 25}, {5, 25}, {5, 5}};
        for (int i = 0; i < 40; ++i)
            square << corner[i / 10] + (corner[i / 10 + 1] - corner[i / 10]) * (i % 10) / 10;
        const QList<QPoint> triangle{{4, 4}, {14, 4}, {14, 14}, {7, 8}}, old{{35, 35}}, drag{{4, 6}, {24, 16}};
        row("ellipse box", ellipse, 1, "newBtn", false, false, drag, QRect(4, 6, 20, 10));
        row("ellipse, shift: circle up-left's mirror", ellipse, 1, "newBtn", true, false, {{20, 20}, {12, 23}},
            QRect(12, 20, 8, 8));
        row("ellipse click: nothing", ellipse, 1, "newBtn", false, false, {{9, 9}, {9, 9}}, QRect());
        row("lasso square", lasso, 1, "newBtn", false, false, square, QRect(5, 5, 20, 20));
        row("lasso, add keeps the old selection", lasso, 1, "addBtn", false, false, square, QRect(5, 5, 33, 33));
        row("lasso, two points: nothing, old cleared", lasso, 1, "newBtn", false, false, {{5, 5}, {5, 25}}, QRect());
        row("lasso, two points in add mode: old kept", lasso, 1, "addBtn", false, false, {{5, 5}, {5, 25}}, QRect(35, 35, 3, 3));
        row("triangle", polygon, 1, "newBtn", false, false, triangle, QRect(4, 4, 10, 10));
        row("too far: a corner", polygon, 1, "newBtn", false, false, {{4, 4}, {14, 4}, {14, 14}, {8, 8}}, QRect());
        row("scale 2: 5 widget px", polygon, 2, "newBtn", false, false, triangle, QRect(8, 8, 20, 20));
        row("two corners: discarded", polygon, 1, "newBtn", false, false, {{4, 4}, {14, 4}, {5, 5}}, QRect());
        // Pressed inside the selection, the marquee drags it (a fraction of a pixel is dropped) unless
        // a mode other than New is clicked.
        row("drag the selection, scale 0.5: 7 px is 3", rectangle, 0.5f, "newBtn", false, false, {{72, 72}, {79, 79}},
            QRect(38, 38, 2, 2));
        row("drag the selection, scale 2", rectangle, 2, "newBtn", false, false, {{18, 18}, {19, 19}}, QRect(37, 37, 3, 3));
        row("add mode draws instead", rectangle, 1, "addBtn", false, false, {{36, 36}, {38, 38}}, QRect(35, 35, 4, 4));
        row("blocked rectangle", rectangle, 1, "newBtn", false, true, drag, QRect(35, 35, 3, 3));
        row("blocked lasso", lasso, 1, "newBtn", false, true, square, QRect(35, 35, 3, 3));
        row("blocked polygon", polygon, 1, "newBtn", false, true, triangle, QRect(35, 35, 3, 3));
        row("the ellipse ignores the block", ellipse, 1, "newBtn", false, true, drag, QRect(4, 6, 20, 10));
    }
    void shapes()
    {
        QFETCH(QString, tool); QFETCH(float, scale); QFETCH(QString, mode); QFETCH(bool, shift); QFETCH(bool, blocked);
        QFETCH(QList<QPoint>, points); QFETCH(QRect, expected);
        VexaToolFixture f(QSize(40, 40), scale);
        QObject parent;
        IVexaTool* t = getInstance(&parent, tool);
        t->active(f.doc.get());
        button(*t, mode)->click();
        f.selectRect(QRect(35, 35, 3, 3));
        f.now += 1000; // past the polygonal lasso's first half second, which swallows releases
        f.modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
        f.doc->toolInputBlocked = blocked;
        if (tool == QLatin1String("Polygonal Lasso Tool")) {
            for (QPoint p : points)
                f.click(p.x(), p.y());
            const bool open = !blocked && points.size() == 4 && expected.isEmpty(); // too far: still open
            QCOMPARE(static_cast<VexaToolLassoPolygon*>(t)->currentPath() != nullptr, open);
        } else {
            f.release(20, 20); // a release that never had a press changes nothing
            QCOMPARE(f.bounds(), QRect(35, 35, 3, 3));
            f.move(points[0].x(), points[0].y());
            f.press(points[0].x(), points[0].y());
            for (QPoint p : points.mid(1))
                f.move(p.x(), p.y());
            f.release(points.last().x(), points.last().y());
        }
        QCOMPARE(f.bounds(), expected);
        if (mode == QLatin1String("newBtn") && !expected.isEmpty()) { // inside, away from the triangle's slanted edge
            const QPoint in(expected.right() - 1, expected.top() + expected.height() / 3);
            QCOMPARE(f.at(in.x(), in.y()), 255);
            const QPoint ui = f.canvas->canvasToUi(QPointF(in)).toPoint();
            f.move(ui.x(), ui.y()); // moves are never blocked: the cursor follows the selection
            QCOMPARE(f.canvas->cursor().shape(), Qt::OpenHandCursor);
        }
    }

    void polygonFourCornersByDoubleClick()
    {
        ToolFixture<VexaToolLassoPolygon> f(QSize(40, 40), 1.0f);
        QVERIFY(f.canvas->hasMouseTracking()); // the live edge follows a pointer with no button down
        auto undoBtn = button(f.tool, QStringLiteral("undoBtn"));
        auto points = [&] { return f.tool.currentPath()->getPointNumber(); };
        f.now += 1000; // past the first half second of the tool's life
        f.tool.processEvent(QStringLiteral("DELETE")); // no corners: nothing to undo afterwards
        QVERIFY(!undoBtn->isEnabled());
        for (QPoint p : {QPoint(10, 10), QPoint(30, 10), QPoint(30, 30)}) {
            f.click(p.x(), p.y());
            f.now += 300;
        }
        f.tool.toolUndo();
        QVERIFY(points() == 2 && button(f.tool, QStringLiteral("redoBtn"))->isEnabled());
        button(f.tool, QStringLiteral("redoBtn"))->click();
        QCOMPARE(f.tool.currentPath()->points().last(), QPointF(30, 30));
        // Named events: delete drops the last corner, Esc all of them (undoably); others are
        // not this tool's business.
        const std::pair<const char*, int> steps[] = {
            {"delete", 2}, {"Esc", 0}, {"undo button", 2}, {"DOUBLE_CLICK", 2}, {"undo button", 3}};
        for (auto [event, left] : steps) {
            if (event == QLatin1String("undo button"))
                undoBtn->click();
            else
                f.tool.processEvent(QLatin1String(event));
            QCOMPARE(points(), left);
        }
        // A double click at a fourth spot: press, release (a corner), double click (closes), release.
        f.click(10, 30);
        f.doubleClick(10, 30);
        f.now += 100;
        f.release(10, 30); // within 500 ms of the finished polygon: swallowed
        QCOMPARE(f.bounds(), QRect(10, 10, 20, 20));
        QVERIFY(!f.tool.currentPath() && !f.tool.getUndoStack()->canUndo());
        for (int wait : {350, 100}) { // 450 ms after the polygon: still swallowed; then a new one starts
            f.now += wait;
            f.click(5, 5);
            QCOMPARE(f.tool.currentPath() != nullptr, wait == 100);
        }
    }

    // The move tool, by keys (at scale 1) or by a drag at a scale: `by` is where the square at
    // (10, 10) ends up moved to.
    void moveSelection_data()
    {
        QTest::addColumn<int>("key"); QTest::addColumn<bool>("shift"); QTest::addColumn<float>("scale");
        QTest::addColumn<int>("step"); QTest::addColumn<QPoint>("by");
        QTest::newRow("right") << int(Qt::Key_Right) << false << 1.0f << 0 << QPoint(2, 0);
        QTest::newRow("shift right") << int(Qt::Key_Right) << true << 1.0f << 0 << QPoint(20, 0);
        QTest::newRow("up") << int(Qt::Key_Up) << false << 1.0f << 0 << QPoint(0, -2);
        QTest::newRow("shift down") << int(Qt::Key_Down) << true << 1.0f << 0 << QPoint(0, 20);
        QTest::newRow("other key") << int(Qt::Key_A) << false << 1.0f << 0 << QPoint(0, 0);
        QTest::newRow("drag, scale 0.5, 1 px per step: lost") << 0 << false << 0.5f << 1 << QPoint(0, 0);
        QTest::newRow("drag, scale 0.5, 2 px per step") << 0 << false << 0.5f << 2 << QPoint(6, 0);
        QTest::newRow("drag, scale 2") << 0 << false << 2.0f << 1 << QPoint(12, 0);
    }
    void moveSelection()
    {
        QFETCH(int, key); QFETCH(bool, shift); QFETCH(float, scale); QFETCH(int, step); QFETCH(QPoint, by);
        VexaToolFixture f(QSize(60, 60), scale);
        f.selectRect(QRect(10, 10, 5, 5));
        VexaToolSelectionMove tool;
        tool.active(f.doc.get());
        QVERIFY(tool.isActive());
        f.modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
        f.now += 100;
        if (!key) {
            f.press(3, 3);
            for (int i = 1; i <= 6; ++i) {
                f.now += 50;
                f.move(3 + i * step, 3);
                f.now += 10;
                f.move(3 + i * step + 1, 3); // too soon after the last step: dropped entirely
            }
            f.release(40, 40);
            QCOMPARE(f.bounds(), QRect(10, 10, 5, 5).translated(by));
            return;
        }
        // A held key repeats at most once per 50 ms: presses at 0, 20 and 50 ms move twice.
        for (int wait : {0, 20, 30}) {
            f.now += wait;
            sendKey(tool, QEvent::KeyPress, key);
            QCOMPARE(f.selection()->getTranslation(), QPointF(by) / (wait == 30 ? 1 : 2));
        }
        QCOMPARE(f.bounds(), QRect(10, 10, 5, 5)); // shown, not yet in the mask
        // Once the keys rest, the burst enters the mask as one undo step, without a mouse release.
        VexaHistory* history = f.doc->getHistory();
        QTRY_COMPARE(f.bounds(), QRect(10, 10, 5, 5).translated(by));
        QCOMPARE(f.selection()->getTranslation(), QPointF());
        QCOMPARE(history->index(), by.isNull() ? 1 : 2);
        history->undo();
        QCOMPARE(f.bounds(), by.isNull() ? QRect() : QRect(10, 10, 5, 5));
    }

    void lifecycle_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* n : {"Rectangular Marquee Tool", "Polygonal Lasso Tool", "Lasso Tool", "Move Selection",
                              "Color Range", "Magic Select Tool", "Ellipse Select Tool"})
            QTest::newRow(n) << QString::fromLatin1(n);
    }
    void lifecycle()
    {
        QFETCH(QString, name);
        VexaToolFixture f(QSize(30, 30), 1.0f);
        QObject parent;
        f.selectRect(QRect(5, 5, 10, 10));
        QPointer<IVexaTool> tool = getInstance(&parent, name);
        VexaContext empty(QSize(30, 30)); // a document without layers
        VexaCanvas canvas;
        canvas.setContext(&empty);
        empty.getSelection()->selectAll();
        tool->active(&empty);
        QVERIFY(!tool->isActive());
        // The tool still works on a real document afterwards, and a host deletes tools it has left.
        tool->active(f.doc.get());
        QVERIFY(tool->isActive());
        tool->disActive();
        emit f.canvas->mousePress(7, 7); // a tool left behind takes no press (nor the cursor)
        QVERIFY(f.canvas->cursor().shape() != Qt::ClosedHandCursor);
        // The tool's own event handler receives the deferred delete: it must delete the tool and
        // then touch nothing of it (the address sanitizer build sees any read).
        tool->deleteLater();
        QCoreApplication::sendPostedEvents(tool, QEvent::DeferredDelete);
        QVERIFY(!tool);
    }
};

QTEST_MAIN(TestTools)
#include "tst_tools.moc"
