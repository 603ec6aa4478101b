#pragma once

#include <QObject>
#include <QPointF>
#include <QString>

// What every layer of a document has: a name and an offset on the canvas.
class VexaLayerBase : public QObject
{
    Q_OBJECT
public:
    explicit VexaLayerBase(QObject* parent = nullptr);
    ~VexaLayerBase() override;

    QPointF getPosition() const { return m_position; }
    void setPosition(const QPointF& position);
    QString name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }

signals:
    void changed();

private:
    QPointF m_position;
    QString m_name;
};
