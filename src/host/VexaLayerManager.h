#pragma once

#include <QImage>
#include <QObject>
#include <QPointF>
#include <QSize>

class VexaLayer;

// The layers of a document, bottom first, and which one is active.
class VexaLayerManager : public QObject
{
    Q_OBJECT
public:
    explicit VexaLayerManager(QObject* parent = nullptr);
    ~VexaLayerManager() override;

    virtual int getLayerCount() const;
    // The active layer, or null when the document has none.
    virtual QObject* getActiveLayer() const;
    VexaLayer* layerAt(int index) const;
    VexaLayer* addLayer(const QImage& pixels, const QPointF& position, const QString& name);
    void setActiveLayer(int index);
    int activeIndex() const { return m_active; }
    // The visible document: layers drawn in order over transparency, 32-bit ARGB; of `area`
    // alone when one is given. One opaque layer that covers the canvas is the document as it
    // stands, and comes back sharing its pixels.
    QImage compose(const QSize& canvasSize, const QRect& area = QRect()) const;
    // The document for the screen: as compose, except that one layer covering the canvas is
    // its own pixels at any alpha (shared, not rounded through premultiplying).
    QImage shown(const QSize& canvasSize) const;

signals:
    void changed();

private:
    QList<VexaLayer*> m_layers; // children of this object
    int m_active = -1;
};
