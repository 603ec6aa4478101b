#pragma once

#include "VexaHistoryMemo.h"

#include <QPointer>
#include <QRect>

#include <cstdint>
#include <vector>

class QImage;
class VexaLayer;

// Undo step of a change to the alpha of a rectangle of a layer (Delete): only the alpha bytes
// before and after, packed in runs row by row. Colour stays as it was under the change, so
// this is the whole change at a sixteenth or less of two full-colour copies.
class VexaAlphaMemo : public VexaHistoryMemo
{
public:
    VexaAlphaMemo(VexaLayer* layer, const QRect& area, const QString& text);
    // Appends the alpha of the area's rows in `pixels` (the layer's 32-bit ARGB image) as the
    // state before or after the change.
    void recordBefore(const QImage& pixels) { pack(pixels, m_before); }
    void recordAfter(const QImage& pixels) { pack(pixels, m_after); }

    void undo() override;
    void redo() override;
    QString text() const override { return m_text; }

private:
    void pack(const QImage& pixels, std::vector<uint8_t>& to) const;
    void put(const std::vector<uint8_t>& alpha);

    QPointer<VexaLayer> m_layer;
    QRect m_area;
    std::vector<uint8_t> m_before;
    std::vector<uint8_t> m_after;
    QString m_text;
};
