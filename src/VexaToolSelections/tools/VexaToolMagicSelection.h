#pragma once

#include "VexaToolSelectionBase.h"

#include <QPointer>

class VexaToolMagicSelectWidget;

// Selects the region of similar colour around a clicked pixel of the active layer.
class VexaToolMagicSelection : public VexaToolSelectionBase
{
    Q_OBJECT
public:
    explicit VexaToolMagicSelection(QObject* parent = nullptr);
    ~VexaToolMagicSelection() override;

    void active(VexaContext* context) override;
    void disActive() override;
    QWidget* getWidget() override;
    VexaToolMagicSelectWidget* getThresholdWidget() const { return thresholdWidget; }

    // Colour tolerance handed to the region grow.
    float threshold = 32.0f;

protected slots:
    void onMouseReleased(int x, int y) override;
    void onDrawFeedback() override;
    void onMouseEntered() override;
    void onMouseMoved(int x, int y) override;
    void onMousePressed(int x, int y) override;

private:
    QWidget* container;
    VexaToolMagicSelectWidget* thresholdWidget;
    QPointer<QWidget> m_containerOwned;
};
