#pragma once

#include "VexaToolSelectionBase.h"

// Selects the ellipse inscribed in a dragged box (Shift: a circle).
class VexaToolEllipseSelect : public VexaToolSelectionBase
{
    Q_OBJECT
public:
    explicit VexaToolEllipseSelect(QObject* parent = nullptr);
    ~VexaToolEllipseSelect() override;

    void active(VexaContext* context) override;
    void disActive() override;
    void apply();
    // Draws the ellipse as one open line strip of two halves, about 200 vertices each.
    void drawEllipse(float cx, float cy, float rx, float ry);

protected slots:
    void onMouseReleased(int x, int y) override;
    void onMouseMoved(int x, int y) override;
    void onMousePressed(int x, int y) override;
    void onDrawFeedback() override;
    void onMouseEntered() override;

private:
    double startX = -1, startY = -1;
    double endX = 0, endY = 0;
    bool feedbackVisible = false;
};
