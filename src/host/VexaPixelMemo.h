#pragma once

#include "VexaHistoryMemo.h"

#include <QImage>
#include <QPoint>
#include <QPointer>

class VexaLayer;

// Undo step of a pixel edit: the changed rectangle of a layer, before and after.
class VexaPixelMemo : public VexaHistoryMemo
{
public:
    VexaPixelMemo(VexaLayer* layer, const QPoint& at, const QImage& before, const QImage& after, const QString& text);

    void undo() override;
    void redo() override;
    QString text() const override { return m_text; }

private:
    void put(const QImage& patch);

    QPointer<VexaLayer> m_layer;
    QPoint m_at;
    QImage m_before;
    QImage m_after;
    QString m_text;
};
