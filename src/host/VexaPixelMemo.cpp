#include "VexaPixelMemo.h"

#include "VexaLayer.h"

#include <QPainter>

VexaPixelMemo::VexaPixelMemo(VexaLayer* layer, const QPoint& at, const QImage& before, const QImage& after,
                             const QString& text)
    : m_layer(layer)
    , m_at(at)
    , m_before(before)
    , m_after(after)
    , m_text(text)
{
}

void VexaPixelMemo::put(const QImage& patch)
{
    if (!m_layer)
        return;
    QImage pixels = m_layer->getPictureHost()->image();
    {
        QPainter p(&pixels);
        p.setCompositionMode(QPainter::CompositionMode_Source);
        p.drawImage(m_at, patch);
    }
    m_layer->setPixels(pixels);
}

void VexaPixelMemo::undo() { put(m_before); }
void VexaPixelMemo::redo() { put(m_after); }
