// Draws the host skin's mode-button icons, picker icons and cursor pictures into a folder.
// Icons are drawn at 16 px and at 32 px ("@2x") from the same vector description so both
// stay sharp; cursors are 32 px with the hot spot at the centre.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <functional>

namespace {

const QColor fill(66, 133, 214);
const QColor ink(30, 30, 34);

using Drawer = std::function<void(QPainter&)>;

bool save(const QString& dir, const QString& name, int size, const Drawer& draw)
{
    QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing, true);
    p.scale(size / 16.0, size / 16.0);
    draw(p);
    p.end();
    const QString path = dir + QLatin1Char('/') + name;
    if (!img.save(path)) {
        std::fprintf(stderr, "vexa-skin-gen: cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

bool icon(const QString& dir, const QString& base, const Drawer& draw)
{
    return save(dir, base + QStringLiteral(".png"), 16, draw) && save(dir, base + QStringLiteral("@2x.png"), 32, draw);
}

QPainterPath square(double x, double y, double s)
{
    QPainterPath path;
    path.addRect(x, y, s, s);
    return path;
}

void outlineOf(QPainter& p, const QPainterPath& path, bool dashed = false)
{
    QPen pen(ink, 1.0);
    if (dashed)
        pen.setDashPattern({1.5, 1.5});
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
}

void filled(QPainter& p, const QPainterPath& path)
{
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawPath(path);
}

// The two overlapping squares every combination icon is drawn from.
const QPainterPath a = square(1.5, 1.5, 9);
const QPainterPath b = square(5.5, 5.5, 9);

void eyedropper(QPainter& p)
{
    QPainterPath body;
    body.moveTo(2.0, 14.0);
    body.lineTo(3.0, 11.0);
    body.lineTo(9.0, 5.0);
    body.lineTo(11.0, 7.0);
    body.lineTo(5.0, 13.0);
    body.closeSubpath();
    p.setPen(QPen(ink, 1.0));
    p.setBrush(QColor(235, 235, 240));
    p.drawPath(body);
    p.setBrush(ink);
    p.drawEllipse(QPointF(11.5, 4.5), 2.6, 2.6);
}

void sign(QPainter& p, bool plus)
{
    p.setPen(QPen(QColor(0, 120, 40), 1.6, Qt::SolidLine, Qt::FlatCap));
    if (!plus)
        p.setPen(QPen(QColor(190, 30, 30), 1.6, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(10.0, 12.5), QPointF(15.0, 12.5));
    if (plus)
        p.drawLine(QPointF(12.5, 10.0), QPointF(12.5, 15.0));
}

// Cursor pictures: a crosshair at the centre and a small glyph below right of it.
void crosshair(QPainter& p)
{
    for (int pass = 0; pass < 2; ++pass) {
        p.setPen(QPen(pass == 0 ? QColor(Qt::white) : ink, pass == 0 ? 1.2 : 0.5, Qt::SolidLine, Qt::FlatCap));
        p.drawLine(QPointF(8.0, 3.0), QPointF(8.0, 6.5));
        p.drawLine(QPointF(8.0, 9.5), QPointF(8.0, 13.0));
        p.drawLine(QPointF(3.0, 8.0), QPointF(6.5, 8.0));
        p.drawLine(QPointF(9.5, 8.0), QPointF(13.0, 8.0));
    }
}

void glyph(QPainter& p, const QPainterPath& path)
{
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Qt::white, 1.3));
    p.drawPath(path);
    p.setPen(QPen(ink, 0.6));
    p.drawPath(path);
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: vexa-skin-gen OUTPUT_DIR\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    const QString modes = out + QStringLiteral("/skin/icon/selection-mode");
    const QString cursors = out + QStringLiteral("/icons");
    if (!QDir().mkpath(modes) || !QDir().mkpath(cursors)) {
        std::fprintf(stderr, "vexa-skin-gen: cannot create %s\n", qPrintable(out));
        return 1;
    }

    bool ok = true;
    ok &= icon(modes, QStringLiteral("selection_new"), [](QPainter& p) {
        const QPainterPath one = square(2.5, 2.5, 11);
        filled(p, one);
        outlineOf(p, one, true);
    });
    ok &= icon(modes, QStringLiteral("selection_add"), [](QPainter& p) {
        const QPainterPath both = a.united(b);
        filled(p, both);
        outlineOf(p, both);
    });
    ok &= icon(modes, QStringLiteral("selection_substract"), [](QPainter& p) {
        const QPainterPath rest = a.subtracted(b);
        filled(p, rest);
        outlineOf(p, rest);
        outlineOf(p, b, true);
    });
    ok &= icon(modes, QStringLiteral("selection_intersect"), [](QPainter& p) {
        filled(p, a.intersected(b));
        outlineOf(p, a, true);
        outlineOf(p, b, true);
        outlineOf(p, a.intersected(b));
    });
    ok &= icon(modes, QStringLiteral("picker-new"), [](QPainter& p) { eyedropper(p); });
    ok &= icon(modes, QStringLiteral("picker-add"), [](QPainter& p) {
        eyedropper(p);
        sign(p, true);
    });
    ok &= icon(modes, QStringLiteral("picker-substract"), [](QPainter& p) {
        eyedropper(p);
        sign(p, false);
    });

    ok &= save(cursors, QStringLiteral("tool-polygon-select.png"), 32, [](QPainter& p) {
        crosshair(p);
        QPainterPath poly;
        poly.moveTo(10.0, 10.5);
        poly.lineTo(14.5, 11.0);
        poly.lineTo(15.0, 14.5);
        poly.lineTo(11.5, 15.0);
        poly.closeSubpath();
        glyph(p, poly);
    });
    ok &= save(cursors, QStringLiteral("tool-free-select.png"), 32, [](QPainter& p) {
        crosshair(p);
        QPainterPath loop;
        loop.addEllipse(QPointF(12.8, 12.0), 2.3, 1.7);
        loop.moveTo(11.2, 13.3);
        loop.cubicTo(10.5, 14.5, 11.5, 15.3, 10.6, 15.6);
        glyph(p, loop);
    });
    ok &= save(cursors, QStringLiteral("tool-fuzzy-select.png"), 32, [](QPainter& p) {
        crosshair(p);
        QPainterPath wand;
        wand.moveTo(10.5, 15.5);
        wand.lineTo(13.5, 12.5);
        glyph(p, wand);
        QPainterPath star;
        for (int i = 0; i < 4; ++i) {
            star.moveTo(14.0, 12.0);
            star.lineTo(14.0 + 1.6 * ((i == 0) - (i == 1)), 12.0 + 1.6 * ((i == 2) - (i == 3)));
        }
        glyph(p, star);
    });
    return ok ? 0 : 1;
}
