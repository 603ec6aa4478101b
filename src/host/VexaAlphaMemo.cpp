#include "VexaAlphaMemo.h"

#include "VexaBackground.h"
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
    uchar* const bits = writable->bits(); // taken here: QImage's own calls stay on this thread
    const qsizetype bytesPerLine = writable->bytesPerLine();
    const QRect area = m_area;
    auto write = [bits, bytesPerLine, area, &alpha] {
        std::vector<uint8_t> row(size_t(area.width()));
        const uint8_t* at = alpha.data();
        const uint8_t* end = at + alpha.size();
        for (int y = area.top(); y <= area.bottom() && at; ++y) {
            at = VexaMaskOps::unpackRuns(at, end, row.data(), row.size());
            auto* px = reinterpret_cast<QRgb*>(bits + y * bytesPerLine) + area.left();
            for (size_t x = 0; x < row.size() && at; ++x)
                px[x] = (px[x] & 0x00FFFFFFu) | (QRgb(row[x]) << 24);
        }
        return true;
    };
    // Undoing a Delete on a camera-sized photo is a pass over all of it: a pool thread makes it
    // while the windows go on drawing.
    if (size_t(area.width()) * size_t(area.height()) * 4 >= VexaAsideBytes) {
        m_layer->setBeingWritten(true);
        VexaRunAside(write);
        m_layer->setBeingWritten(false);
    } else {
        write();
    }
    m_layer->pixelsChanged();
}

void VexaAlphaMemo::undo() { put(m_before); }
void VexaAlphaMemo::redo() { put(m_after); }
