#pragma once

#include <QObject>
#include <QPainterPath>
#include <QPointF>
#include <QVector>

// A shape in canvas coordinates handed to VexaSelection::addPath.
// Type 0: rectangle by its four corners, which name the pixels at its corners (inclusive); 1: ellipse in the box of two opposite corners;
// 2: closed polygon through all points.
class VexaSelectionPath : public QObject
{
    Q_OBJECT
public:
    enum Type { Rectangle = 0, Ellipse = 1, Polygon = 2 };

    explicit VexaSelectionPath(QObject* parent = nullptr);
    VexaSelectionPath(VexaSelectionPath* source, QObject* parent);
    ~VexaSelectionPath() override;

    virtual void addPoint(const QPointF& point);
    virtual void deleteFront();
    virtual int getPointNumber() const;
    virtual void setType(int type);
    virtual void doPathSampling(float spacing);
    virtual void draw(bool showHandles);

    int type() const { return m_type; }
    const QVector<QPointF>& points() const { return m_points; }
    // The closed outline this path encloses; empty while too few points exist for its type.
    QPainterPath toPainterPath() const;

private:
    QVector<QPointF> m_points;
    int m_type = Polygon;
};
