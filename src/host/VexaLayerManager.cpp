#include "VexaLayerManager.h"

#include "VexaLayer.h"

#include <QPainter>

VexaLayerManager::VexaLayerManager(QObject* parent)
    : QObject(parent)
{
}

VexaLayerManager::~VexaLayerManager() = default;

int VexaLayerManager::getLayerCount() const { return int(m_layers.size()); }

QObject* VexaLayerManager::getActiveLayer() const { return layerAt(m_active); }

VexaLayer* VexaLayerManager::layerAt(int index) const
{
    return index >= 0 && index < m_layers.size() ? m_layers[index] : nullptr;
}

VexaLayer* VexaLayerManager::addLayer(const QImage& pixels, const QPointF& position, const QString& name)
{
    auto* layer = new VexaLayer(pixels, position, name, this);
    connect(layer, &VexaLayerBase::changed, this, &VexaLayerManager::changed);
    m_layers.append(layer);
    m_active = int(m_layers.size()) - 1;
    emit changed();
    return layer;
}

void VexaLayerManager::setActiveLayer(int index)
{
    if (index >= -1 && index < m_layers.size())
        m_active = index;
}

QImage VexaLayerManager::compose(const QSize& canvasSize) const
{
    QImage out(canvasSize, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    {
        QPainter p(&out);
        for (VexaLayer* layer : m_layers)
            // Layers sit on whole pixels, truncated like every tool that maps layer to canvas.
            p.drawImage(QPoint(int(layer->getPosition().x()), int(layer->getPosition().y())), layer->getPictureHost()->image());
    }
    return out.convertToFormat(QImage::Format_ARGB32);
}
