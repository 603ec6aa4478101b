#pragma once

#include "VexaToolSelectionBase.h"

// Selects the area inside a line drawn freehand with the button held.
class VexaToolLasso : public VexaToolSelectionBase
{
    Q_OBJECT
public:
    explicit VexaToolLasso(QObject* parent = nullptr);
    ~VexaToolLasso() override;

protected slots:
    void onMouseReleased(int x, int y) override;
    void onMouseMoved(int x, int y) override;
    void onMousePressed(int x, int y) override;
    void onDrawFeedback() override;
    void onMouseEntered() override;

private:
    double startX = -1, startY = -1;
};
