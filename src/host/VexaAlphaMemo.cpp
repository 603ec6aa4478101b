#include "VexaAlphaMemo.h"

#include "VexaLayer.h"
#include "VexaMaskOps.h"

#include <QImage>

VexaAlphaMemo::VexaAlphaMemo(VexaLayer* layer, const QRect& area, const QString& text)
    : m_layer(layer)
    , m_area(area)
    , m_text(text)
{
}

void VexaAlphaMemo::addRow(const uint8_t* before, const uint8_t* after)
{
    VexaMaskOps::packRuns(before, size_t(m_area.width()), m_before);
    VexaMaskOps::packRuns(after, size_t(m_area.width()), m_after);
}

void VexaAlphaMemo::finish()
{
    m_before.shrink_to_fit();
    m_after.shrink_to_fit();
}

void VexaAlphaMemo::put(const std::vector<uint8_t>& alpha)
{
    if (!m_layer)
        return;
    // In place: a copy of a camera-sized layer for each undo is what the memo saves.
    QImage* writable = m_layer->writablePixels();
    if (!writable || !writable->rect().contains(m_area))
        return;
    QImage& pixels = *writable;
    std::vector<uint8_t> row(size_t(m_area.width()));
    const uint8_t* at = alpha.data();
    const uint8_t* end = at + alpha.size();
    for (int y = m_area.top(); y <= m_area.bottom() && at; ++y) {
        at = VexaMaskOps::unpackRuns(at, end, row.data(), row.size());
        auto* px = reinterpret_cast<QRgb*>(pixels.scanLine(y)) + m_area.left();
        for (size_t x = 0; x < row.size() && at; ++x)
            px[x] = (px[x] & 0x00FFFFFFu) | (QRgb(row[x]) << 24);
    }
    m_layer->pixelsChanged();
}

void VexaAlphaMemo::undo() { put(m_before); }
void VexaAlphaMemo::redo() { put(m_after); }
