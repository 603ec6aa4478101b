#include "VexaSelectionPath.h"

#include <QLineF>
#include <QPolygonF>
#include <QRectF>

#include <GL/gl.h>

#include <cmath>

VexaSelectionPath::VexaSelectionPath(QObject* parent)
    : QObject(parent)
{
}

VexaSelectionPath::VexaSelectionPath(VexaSelectionPath* source, QObject* parent)
    : QObject(parent)
{
    if (source) {
        m_points = source->m_points;
        m_type = source->m_type;
    }
}

VexaSelectionPath::~VexaSelectionPath() = default;

void VexaSelectionPath::addPoint(const QPointF& point) { m_points.append(point); }

void VexaSelectionPath::deleteFront()
{
    if (!m_points.isEmpty())
        m_points.removeLast();
}

int VexaSelectionPath::getPointNumber() const { return int(m_points.size()); }

void VexaSelectionPath::setType(int type) { m_type = type; }

void VexaSelectionPath::doPathSampling(float spacing)
{
    // Walks the stroke by arc length and keeps one point every `spacing` pixels, plus the
    // last one, so a freehand path becomes evenly spaced whatever the pointer speed was.
    if (spacing <= 0.0f || m_points.size() < 2)
        return;
    QVector<QPointF> out;
    out.append(m_points.first());
    double carried = 0.0;
    for (int i = 1; i < m_points.size(); ++i) {
        const QPointF a = m_points[i - 1];
        const QPointF b = m_points[i];
        const double len = QLineF(a, b).length();
        if (len <= 0.0)
            continue;
        double t = spacing - carried;
        while (t <= len) {
            out.append(a + (b - a) * (t / len));
            t += spacing;
        }
        carried = len - (t - spacing);
    }
    if (out.last() != m_points.last())
        out.append(m_points.last());
    m_points = out;
}

void VexaSelectionPath::draw(bool showHandles)
{
    if (m_points.isEmpty())
        return;
    // A dark line under a light one keeps the band visible on any picture.
    for (int pass = 0; pass < 2; ++pass) {
        glLineWidth(pass == 0 ? 3.0f : 1.0f);
        if (pass == 0)
            glColor4f(0.0f, 0.0f, 0.0f, 0.6f);
        else
            glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        glBegin(m_type == Polygon ? GL_LINE_STRIP : GL_LINE_LOOP);
        for (const QPointF& p : m_points)
            glVertex2d(p.x(), p.y());
        glEnd();
    }
    glLineWidth(1.0f);
    if (showHandles) {
        glPointSize(5.0f);
        glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
        glBegin(GL_POINTS);
        for (const QPointF& p : m_points)
            glVertex2d(p.x(), p.y());
        glEnd();
        glPointSize(3.0f);
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        glBegin(GL_POINTS);
        for (const QPointF& p : m_points)
            glVertex2d(p.x(), p.y());
        glEnd();
        glPointSize(1.0f);
    }
}

QPainterPath VexaSelectionPath::toPainterPath() const
{
    QPainterPath shape;
    shape.setFillRule(Qt::WindingFill);
    switch (m_type) {
    case Rectangle:
        if (m_points.size() >= 4) {
            // Corners name pixels, counted inclusively as the marquee's panel shows them: the
            // corners (10, 10) and (19, 19) select the 10 x 10 pixels from column 10 to 19, at
            // any zoom, however fractional the pointer positions were.
            const QRectF box = QPolygonF(m_points.mid(0, 4)).boundingRect();
            const double left = std::floor(box.left()), top = std::floor(box.top());
            shape.addRect(QRectF(QPointF(left, top), QPointF(std::floor(box.right()) + 1.0, std::floor(box.bottom()) + 1.0)));
        }
        break;
    case Ellipse:
        if (m_points.size() >= 2)
            shape.addEllipse(QRectF(m_points[0], m_points[1]).normalized());
        break;
    default:
        if (m_points.size() >= 3) {
            shape.addPolygon(QPolygonF(m_points));
            shape.closeSubpath();
        }
        break;
    }
    return shape;
}
