// Draws the editor's application icon into a folder, one PNG per size given:
//   vexa-icon-gen DIR 16 32 48 ...  ->  DIR/16x16/apps/vexa-editor.png, ...
// A small landscape photo with a marching-ants selection around its sun and a pointer: what
// the editor is for. Drawn from one vector description at every size; at small sizes the
// outline and dashes keep a minimum width in pixels so the selection stays readable.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cstdio>

namespace {

constexpr double unit = 256.0; // drawing units across the icon

void drawIcon(QPainter& p, int size)
{
    const double px = unit / size; // one device pixel in drawing units

    // The photo: a rounded tile with sky, sun and two hills.
    const QRectF tile(12, 12, 232, 232);
    QPainterPath frame;
    frame.addRoundedRect(tile, 36, 36);
    QLinearGradient sky(0, tile.top(), 0, tile.bottom());
    sky.setColorAt(0.0, QColor(86, 156, 226));
    sky.setColorAt(1.0, QColor(176, 214, 246));
    p.fillPath(frame, sky);
    p.save();
    p.setClipPath(frame);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 201, 64));
    p.drawEllipse(QPointF(92, 92), 34, 34);
    QPainterPath far;
    far.moveTo(0, 196);
    far.cubicTo(70, 140, 130, 150, 256, 188);
    far.lineTo(256, 256);
    far.lineTo(0, 256);
    p.setBrush(QColor(74, 148, 92));
    p.drawPath(far);
    QPainterPath near;
    near.moveTo(0, 226);
    near.cubicTo(90, 188, 170, 196, 256, 232);
    near.lineTo(256, 256);
    near.lineTo(0, 256);
    p.setBrush(QColor(46, 110, 64));
    p.drawPath(near);
    p.restore();
    QPen edge(QColor(30, 52, 84), std::max(6.0, 1.0 * px));
    p.setPen(edge);
    p.setBrush(Qt::NoBrush);
    p.drawPath(frame);

    // The selection around the sun: white under black dashes, like the canvas outline.
    const QRectF ants(40, 40, 112, 112);
    const double width = std::max(7.0, 1.5 * px);
    p.setPen(QPen(Qt::white, width));
    p.drawEllipse(ants);
    QPen dash(QColor(20, 20, 24), width, Qt::CustomDashLine, Qt::FlatCap);
    dash.setDashPattern({2.2, 2.2});
    p.setPen(dash);
    p.drawEllipse(ants);

    // The pointer that made it.
    QPainterPath arrow;
    arrow.moveTo(150, 132);
    arrow.lineTo(150, 232);
    arrow.lineTo(174, 208);
    arrow.lineTo(192, 246);
    arrow.lineTo(210, 238);
    arrow.lineTo(192, 200);
    arrow.lineTo(226, 200);
    arrow.closeSubpath();
    p.setPen(QPen(QColor(20, 20, 24), std::max(8.0, 1.0 * px), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::white);
    p.drawPath(arrow);
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: vexa-icon-gen DIR SIZE...\n");
        return 2;
    }
    const QString dir = QString::fromLocal8Bit(argv[1]);
    for (int i = 2; i < argc; ++i) {
        bool ok = false;
        const int size = QString::fromLocal8Bit(argv[i]).toInt(&ok);
        if (!ok || size < 8 || size > 1024) {
            std::fprintf(stderr, "vexa-icon-gen: bad size %s\n", argv[i]);
            return 2;
        }
        QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
        img.fill(Qt::transparent);
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing, true);
        p.scale(size / unit, size / unit);
        drawIcon(p, size);
        p.end();
        const QString sub = QStringLiteral("%1/%2x%2/apps").arg(dir).arg(size);
        const QString path = sub + QStringLiteral("/vexa-editor.png");
        if (!QDir().mkpath(sub) || !img.save(path)) {
            std::fprintf(stderr, "vexa-icon-gen: cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
