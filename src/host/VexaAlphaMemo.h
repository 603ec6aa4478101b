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
    // Appends the next row of the area, top to bottom: area.width() alpha bytes before and
    // after the change. Recorded while the change is made, in the same pass over the pixels.
    void addRow(const uint8_t* before, const uint8_t* after);
    // Done recording: gives back what the packed rows did not use.
    void finish();

    void undo() override;
    void redo() override;
    QString text() const override { return m_text; }

private:
    void put(const std::vector<uint8_t>& alpha);

    QPointer<VexaLayer> m_layer;
    QRect m_area;
    std::vector<uint8_t> m_before;
    std::vector<uint8_t> m_after;
    QString m_text;
};
