// The host selection: combine modes, feathering, masks, translation, undo and outline.
#include "VexaHistory.h"
#include "VexaMaskOps.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"

#include <QtTest>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>

Q_DECLARE_METATYPE(QRectF)

namespace {

VexaSelectionPath* path(VexaSelectionPath::Type type, std::initializer_list<QPointF> points)
{
    auto p = std::make_unique<VexaSelectionPath>();
    p->setType(type);
    for (QPointF pt : points)
        p->addPoint(pt);
    return p.release(); // adopted by the selection
}

// The rectangle path that selects the pixels of `r`, as the marquee builds it: its corners name
// the first and last pixels.
VexaSelectionPath* rectPath(const QRectF& r)
{
    const QPointF a = r.topLeft(), b = r.bottomRight() - QPointF(1, 1);
    return path(VexaSelectionPath::Rectangle, {a, QPointF(a.x(), b.y()), b, QPointF(b.x(), a.y())});
}

int at(const VexaSelection& sel, int x, int y) { return sel.mask()[size_t(y) * size_t(sel.maskStride()) + size_t(x)]; }

// The mask's used bytes row by row; checks on the way that the padding is zero.
QByteArray bytes(const VexaSelection& sel)
{
    QByteArray out;
    for (int y = 0; y < sel.height(); ++y)
        for (int x = 0; x < sel.maskStride(); ++x)
            if (x < sel.width())
                out.append(char(at(sel, x, y)));
            else if (at(sel, x, y) != 0)
                return "padding";
    return out;
}

// '#' for 255 and '.' for 0; anything else separates rows for reading.
QByteArray grid(const char* rows)
{
    QByteArray out;
    for (const char* p = rows; *p; ++p)
        if (*p == '#' || *p == '.')
            out.append(char(*p == '#' ? 255 : 0));
    return out;
}

QByteArray values(std::initializer_list<int> v)
{
    QByteArray out;
    for (int b : v)
        out.append(char(b));
    return out;
}

} // namespace

class TestSelection : public QObject
{
    Q_OBJECT
private slots:
    void combine_data()
    {
        QTest::addColumn<QSize>("canvas"); QTest::addColumn<QRectF>("first"); QTest::addColumn<QRectF>("second");
        QTest::addColumn<int>("mode"); QTest::addColumn<float>("feather"); QTest::addColumn<QByteArray>("expected");
        const QSize small(6, 4);
        const QRectF a(1, 0, 3, 3), b(3, 1, 3, 3);
        QTest::newRow("new replaces") << small << a << b << 0 << 0.0f << grid("...... ...### ...### ...###");
        QTest::newRow("add unites") << small << a << b << 1 << 0.0f << grid(".###.. .##### .##### ...###");
        QTest::newRow("subtract removes") << small << a << b << 2 << 0.0f << grid(".###.. .##... .##... ......");
        QTest::newRow("intersect keeps common") << small << a << b << 3 << 0.0f << grid("...... ...#.. ...#.. ......");
        QTest::newRow("one pixel") << small << QRectF() << QRectF(0, 0, 1, 1) << 0 << 0.0f << grid("#..... ...... ...... ......");
        // Shapes reaching past the canvas are cut at its edges.
        QTest::newRow("clipped at canvas") << small << QRectF() << QRectF(-5, -5, 7, 6) << 0 << 0.0f
                                           << grid("##.... ...... ...... ......");
        QTest::newRow("one column") << small << a << QRectF(2, 0, 1, 4) << 0 << 0.0f << grid("..#... ..#... ..#... ..#...");
        // Feathering an edge: a step across x = 8 on a 16 x 1 canvas, the shape running far past
        // the canvas above, below and to the right, so only the left edge softens.
        const QSize strip(16, 1);
        const QRectF tall(8, -50, 40, 100);
        QTest::newRow("feather 4") << strip << QRectF() << tall << 0 << 4.0f
                                   << values({0, 0, 0, 0, 6, 23, 57, 102, 153, 198, 232, 249, 255, 255, 255, 255});
        QTest::newRow("feather 2") << strip << QRectF() << tall << 0 << 2.0f
                                   << values({0, 0, 0, 0, 0, 0, 0, 85, 170, 255, 255, 255, 255, 255, 255, 255});
        QTest::newRow("feather below half a pixel is hard") << strip << QRectF() << tall << 0 << 0.4f
                                                            << grid("........ ########");
        // Softened area combines like any other: subtracting the feathered step from a full strip.
        QTest::newRow("subtract feathered") << strip << QRectF(-10, -10, 40, 20) << tall << 2 << 4.0f
                                            << values({255, 255, 255, 255, 249, 232, 198, 153, 102, 57, 23, 6, 0, 0, 0, 0});
        QTest::newRow("intersect feathered") << strip << QRectF(0, -10, 10, 20) << tall << 3 << 4.0f
                                             << values({0, 0, 0, 0, 6, 23, 57, 102, 153, 198, 0, 0, 0, 0, 0, 0});
    }

    void combine()
    {
        QFETCH(QSize, canvas); QFETCH(QRectF, first); QFETCH(QRectF, second);
        QFETCH(int, mode); QFETCH(float, feather); QFETCH(QByteArray, expected);
        VexaSelection sel(canvas.width(), canvas.height());
        if (!first.isNull())
            sel.addPath(rectPath(first), 0);
        sel.combineMode = mode;
        sel.addPath(rectPath(second), feather);
        QCOMPARE(bytes(sel), expected);
    }

    void ellipseAndPolygonShapes()
    {
        VexaSelection sel(20, 20);
        sel.addPath(path(VexaSelectionPath::Ellipse, {QPointF(18, 18), QPointF(2, 2)}), 0); // corners in either order
        QVERIFY(at(sel, 10, 10) == 255 && at(sel, 2, 2) == 0);
        QCOMPARE(sel.boundingRect(), QRect(2, 2, 16, 16));
        bool soft = false; // edge pixels of a curve are partly covered: anti-aliased
        for (int x = 0; x < 20; ++x)
            soft = soft || (at(sel, x, 4) > 0 && at(sel, x, 4) < 255);
        QVERIFY(soft);
        sel.addPath(path(VexaSelectionPath::Polygon, {QPointF(0, 0), QPointF(20, 0), QPointF(0, 20)}), 0);
        QVERIFY(at(sel, 1, 1) == 255 && at(sel, 18, 18) == 0);
        // Too few points for the type: the new area is empty, so New leaves nothing.
        sel.addPath(path(VexaSelectionPath::Polygon, {QPointF(1, 1), QPointF(5, 5)}), 0);
        QVERIFY(!sel.hasSelection());
    }

    void addMask_data()
    {
        QTest::addColumn<int>("x"); QTest::addColumn<int>("y"); QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("expected");
        // A 3 x 2 block of 255 on a 5 x 3 canvas that already has its first column selected.
        QTest::newRow("inside, add") << 1 << 1 << 1 << grid("#.... ####. ####.");
        QTest::newRow("inside, new") << 1 << 1 << 0 << grid("..... .###. .###.");
        QTest::newRow("left and top clipped") << -2 << -1 << 1 << grid("#.... #.... #....");
        QTest::newRow("right and bottom clipped") << 3 << 2 << 1 << grid("#.... #.... #..##");
        QTest::newRow("fully outside, new") << 9 << 9 << 0 << grid("..... ..... .....");
        QTest::newRow("intersect") << 0 << 1 << 3 << grid("..... #.... #....");
        QTest::newRow("subtract") << 0 << 0 << 2 << grid("..... ..... #....");
    }

    void addMask()
    {
        QFETCH(int, x); QFETCH(int, y); QFETCH(int, mode); QFETCH(QByteArray, expected);
        VexaSelection sel(5, 3);
        sel.addPath(rectPath(QRectF(0, 0, 1, 3)), 0);
        std::vector<unsigned char> block(6, 255);
        sel.combineMode = mode;
        sel.addMask(block.data(), 3, 2, x, y);
        QCOMPARE(bytes(sel), expected);
    }

    void copyMaskHonoursStride()
    {
        VexaSelection sel(5, 2);
        const int s = sel.maskStride();
        std::vector<unsigned char> mask(size_t(s) * 2, 0xAB); // bytes beyond the width must not leak in
        for (int x = 0; x < 5; ++x) {
            mask[size_t(x)] = uint8_t(x * 50);
            mask[size_t(s + x)] = uint8_t(255 - x);
        }
        sel.copyMask(mask.data());
        QCOMPARE(bytes(sel), values({0, 50, 100, 150, 200, 255, 254, 253, 252, 251}));
        // A write through the writable mask is seen, although the answer is cached otherwise.
        sel.clear();
        QVERIFY(!sel.hasSelection());
        sel.getMask()[2] = 7;
        QVERIFY(sel.hasSelection());
    }

    void translation_data()
    {
        QTest::addColumn<QPointF>("offset"); QTest::addColumn<QString>("change"); QTest::addColumn<QByteArray>("expected");
        // A 2 x 2 square at (1, 1) on a 5 x 4 canvas, moved but pending: applied, or settled by a
        // change, what the user sees is what each change builds on (commit) or replaces (drop).
        QTest::newRow("right down") << QPointF(2, 1) << "apply" << grid("..... ..... ...## ...##");
        QTest::newRow("partly off the left") << QPointF(-2, 0) << "apply" << grid("..... #.... #.... .....");
        QTest::newRow("off the canvas") << QPointF(0, 10) << "apply" << grid("..... ..... ..... .....");
        QTest::newRow("rounded to whole pixels") << QPointF(0.6, -0.4) << "apply" << grid("..... ..##. ..##. .....");
        const QPointF right(2, 0);
        QTest::newRow("select all drops") << right << "all" << grid("##### ##### ##### #####");
        QTest::newRow("deselect drops") << right << "none" << grid("..... ..... ..... .....");
        QTest::newRow("clear drops") << right << "clear" << grid("..... ..... ..... .....");
        QTest::newRow("invert commits") << right << "invert" << grid("##### ###.. ###.. #####");
        QTest::newRow("add commits") << right << "add" << grid("#.... ...## ...## .....");
        QTest::newRow("new replaces") << right << "new" << grid("#.... ..... ..... .....");
    }

    void translation()
    {
        QFETCH(QPointF, offset); QFETCH(QString, change); QFETCH(QByteArray, expected);
        VexaSelection sel(5, 4);
        sel.addPath(rectPath(QRectF(1, 1, 2, 2)), 0);
        const QByteArray before = bytes(sel);
        QSignalSpy moved(&sel, &VexaSelection::translationChanged);
        sel.setTranslation(offset);
        QCOMPARE(moved.count(), 1);
        QCOMPARE(bytes(sel), before); // pending only: the mask is untouched until applied
        const std::map<QString, std::function<void()>> changes{
            {"apply", [&] { sel.applyTranslation(); }}, {"all", [&] { sel.selectAll(); }}, {"none", [&] { sel.deselect(); }},
            {"clear", [&] { sel.clear(); }}, {"invert", [&] { sel.inverse(); }},
            {"new", [&] { sel.addPath(rectPath(QRectF(0, 0, 1, 1)), 0); }},
            {"add", [&] { sel.combineMode = 1; sel.addPath(rectPath(QRectF(0, 0, 1, 1)), 0); }}};
        changes.at(change)();
        QCOMPARE(bytes(sel), expected);
        QCOMPARE(sel.getTranslation(), QPointF()); // the outline is drawn where the mask is
        QCOMPARE(moved.count(), 2);
    }

    void undoAndGestures()
    {
        VexaHistory history;
        VexaSelection sel(6, 4);
        sel.setHistory(&history);
        // Undo or redo, then the mask must read `state`.
        auto go = [&](void (VexaHistory::*move)(), const QByteArray& state) {
            (history.*move)();
            QCOMPARE(bytes(sel), state);
        };
        sel.addPath(rectPath(QRectF(0, 0, 2, 2)), 0);
        const QByteArray one = bytes(sel);
        sel.combineMode = 1;
        sel.addPath(rectPath(QRectF(3, 2, 2, 2)), 0);
        const QByteArray two = bytes(sel);
        sel.inverse();
        const QByteArray three = bytes(sel);
        sel.addPath(rectPath(QRectF(2, 0, 1, 1)), 0); // a change that changes nothing records nothing
        QCOMPARE(history.count(), 3);
        go(&VexaHistory::undo, two);
        go(&VexaHistory::undo, one);
        go(&VexaHistory::undo, QByteArray(24, 0));
        QVERIFY(!history.canUndo());
        history.redo();
        history.redo();
        go(&VexaHistory::redo, three);
        // A new change after undo drops what could be redone.
        history.undo();
        sel.clear();
        QVERIFY(!history.canRedo());
        QCOMPARE(history.count(), 3);
        go(&VexaHistory::undo, two);
        // A new shape over a selection: the deselect at the press and the shape are one step.
        history.beginGesture();
        sel.deselect();
        sel.addPath(rectPath(QRectF(1, 1, 2, 2)), 0);
        history.endGesture();
        const QByteArray four = bytes(sel);
        QCOMPARE(history.count(), 3);
        go(&VexaHistory::undo, two);
        go(&VexaHistory::redo, four);
        // A gesture that changes nothing leaves no step; one left open ends at the next undo.
        history.beginGesture();
        history.endGesture();
        QCOMPARE(history.count(), 3);
        history.beginGesture();
        sel.clear();
        sel.selectAll();
        go(&VexaHistory::undo, four);
        QCOMPARE(history.count(), 4);
    }

    void outlineMatchesPixelByPixel()
    {
        // The outline, cut into unit edges, is exactly the set of pixel edges between a selected
        // and an unselected pixel (outside the canvas counts as unselected): first on an L shape,
        // whose runs along a row or column merge into six edges, then on seeded random masks with
        // repeated rows (the outline skips those) and soft bytes around 128.
        const uint8_t ell[] = {255, 0, 0, 255, 0, 0, 255, 255, 255};
        std::mt19937 random(7);
        for (int round = 0; round <= 40; ++round) {
            const int w = round ? 1 + int(random() % 23) : 3, h = round ? 1 + int(random() % 17) : 3, stride = w + 3;
            std::vector<uint8_t> mask(size_t(stride) * size_t(h), 0xAB); // padding must be ignored
            for (int y = 0; y < h; ++y) {
                uint8_t* row = mask.data() + size_t(y) * size_t(stride);
                const bool repeat = round && y > 0 && random() % 3 == 0;
                for (int x = 0; x < w; ++x)
                    row[x] = !round ? ell[3 * y + x]
                        : repeat    ? row[x - stride]
                                    : uint8_t(random() % 3 == 0 ? 126 + random() % 4 : (random() % 2) * 255);
            }
            auto in = [&](int x, int y) {
                return x >= 0 && y >= 0 && x < w && y < h && mask[size_t(y) * size_t(stride) + size_t(x)] >= 128;
            };
            std::set<std::array<int, 4>> expected, got;
            for (int y = 0; y <= h; ++y)
                for (int x = 0; x <= w; ++x) {
                    if (x < w && in(x, y - 1) != in(x, y))
                        expected.insert({x, y, x + 1, y});
                    if (y < h && in(x - 1, y) != in(x, y))
                        expected.insert({x, y, x, y + 1});
                }
            const std::vector<float> segs = VexaMaskOps::outline(mask.data(), w, h, stride);
            if (!round)
                QCOMPARE(segs.size(), size_t(6 * 4));
            for (size_t i = 0; i < segs.size(); i += 4) {
                const int x0 = int(segs[i]), y0 = int(segs[i + 1]), x1 = int(segs[i + 2]), y1 = int(segs[i + 3]);
                QVERIFY(x0 == x1 || y0 == y1);
                for (int x = x0; x < x1; ++x)
                    QVERIFY(got.insert({x, y0, x + 1, y0}).second); // no edge twice
                for (int y = y0; y < y1; ++y)
                    QVERIFY(got.insert({x0, y, x0, y + 1}).second);
            }
            QCOMPARE(got, expected);
        }
    }
};

QTEST_MAIN(TestSelection)
#include "tst_selection.moc"
