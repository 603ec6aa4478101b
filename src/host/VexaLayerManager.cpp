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

namespace {
bool opaque(const QImage& image)
{
    if (image.format() != QImage::Format_ARGB32)
        return !image.hasAlphaChannel();
    // The bounds are read once: QImage's accessors are calls the compiler cannot lift out of a
    // loop over 45 million pixels.
    const int w = image.width(), h = image.height();
    for (int y = 0; y < h; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        QRgb all = 0xFF000000u;
        for (int x = 0; x < w; ++x)
            all &= row[x];
        if (qAlpha(all) != 255)
            return false;
    }
    return true;
}
} // namespace

namespace {
bool covers(VexaLayer* layer, const QSize& canvasSize)
{
    return int(layer->getPosition().x()) == 0 && int(layer->getPosition().y()) == 0
        && layer->getPictureHost()->image().size() == canvasSize;
}
} // namespace

QImage VexaLayerManager::shown(const QSize& canvasSize) const
{
    if (m_layers.size() == 1 && covers(m_layers.front(), canvasSize))
        return m_layers.front()->getPictureHost()->image();
    return compose(canvasSize);
}

QImage VexaLayerManager::compose(const QSize& canvasSize, const QRect& area) const
{
    const QRect whole(QPoint(0, 0), canvasSize);
    const QRect part = area.isNull() ? whole : area;
    // One layer covering the canvas, a photo as opened: drawing it over transparency takes two
    // more full-size copies. Opaque, it is the document as it stands; else the same bytes come
    // from premultiplying and back, the second conversion in place.
    if (part == whole && m_layers.size() == 1) {
        const QImage& pixels = m_layers.front()->getPictureHost()->image();
        if (covers(m_layers.front(), canvasSize)) {
            if (opaque(pixels))
                return pixels;
            QImage out = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
            out.convertTo(QImage::Format_ARGB32);
            return out;
        }
    }
    QImage out(part.size(), QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    {
        QPainter p(&out);
        p.translate(-part.topLeft());
        for (VexaLayer* layer : m_layers)
            // Layers sit on whole pixels, truncated like every tool that maps layer to canvas.
            p.drawImage(QPoint(int(layer->getPosition().x()), int(layer->getPosition().y())), layer->getPictureHost()->image());
    }
    return out.convertToFormat(QImage::Format_ARGB32);
}
