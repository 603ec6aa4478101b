#include "VexaToolEllipseSelect.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaLayerManager.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"

#include <GL/gl.h>

#include <cmath>
#include <memory>

VexaToolEllipseSelect::VexaToolEllipseSelect(QObject* parent)
    : VexaToolSelectionBase(parent)
{
    toolName = QStringLiteral("Ellipse Select Tool");
    toolId = QStringLiteral("95EDCB73-6A06-4479-BC81-893395270535");
    toolDescription = QStringLiteral("This tool is to make selection");
    cursor = QCursor(Qt::CrossCursor);
}

VexaToolEllipseSelect::~VexaToolEllipseSelect() = default;

void VexaToolEllipseSelect::active(VexaContext* ctx)
{
    if (!ctx)
        return;
    context = ctx;
    if (!activated && ctx->getLayerManager()->getLayerCount() > 0)
        startX = startY = endX = endY = 0;
    VexaToolSelectionBase::active(ctx);
}

void VexaToolEllipseSelect::disActive() { VexaToolSelectionBase::disActive(); }

// This tool takes presses and releases even while the host blocks tool input.
void VexaToolEllipseSelect::onMousePressed(int x, int y)
{
    if (selectionMoveable) {
        startMoveSelection(x, y);
        return;
    }
    if (pressed)
        return;
    feedbackVisible = false;
    dropSelectionForNewShape();
    const QPointF p = canvas()->uiToCanvasCoord(x, y, true);
    startX = endX = p.x();
    startY = endY = p.y();
    pressed = true;
}

void VexaToolEllipseSelect::onMouseMoved(int x, int y)
{
    if (movingSelection) {
        moveSelection(x, y);
        return;
    }
    checkSelectionMoveable(x, y);
    if (!pressed)
        return;
    feedbackVisible = true;
    const QPointF end = boxEnd(startX, startY, canvas()->uiToCanvasCoord(x, y, true));
    endX = end.x();
    endY = end.y();
    canvas()->update();
}

void VexaToolEllipseSelect::onMouseReleased(int x, int y)
{
    if (movingSelection) {
        endMoveSelection(x, y);
        return;
    }
    if (pressed)
        apply();
    pressed = false;
}

void VexaToolEllipseSelect::apply()
{
    if (endX == startX || endY == startY) {
        startX = 0;
        startY = 0;
        return;
    }
    auto shape = std::make_unique<VexaSelectionPath>(nullptr);
    shape->addPoint(QPointF(startX, startY));
    shape->addPoint(QPointF(endX, endY));
    shape->setType(VexaSelectionPath::Ellipse);
    path = shape.release();
    applyPath(path);
    path = nullptr;
}

void VexaToolEllipseSelect::onDrawFeedback()
{
    if (!pressed || !feedbackVisible)
        return;
    const float rx = float(std::abs(std::trunc(startX - endX))) * 0.5f;
    const float ry = float(std::abs(std::trunc(startY - endY))) * 0.5f;
    if (rx < 0.01f || ry < 0.01f)
        return;
    drawEllipse(float((startX + endX) * 0.5), float((startY + endY) * 0.5), rx, ry);
}

void VexaToolEllipseSelect::drawEllipse(float cx, float cy, float rx, float ry)
{
    glColor4f(1, 1, 1, 1);
    glBegin(GL_LINE_STRIP);
    const double step = std::max(0.01, double(rx) / 100.0);
    for (double t = -rx; t <= rx; t += step)
        glVertex3f(float(cx + t), float(cy + ry * std::sqrt(std::max(0.0, 1.0 - t * t / (double(rx) * rx)))), 0.0f);
    for (double t = rx; t >= -rx; t -= step)
        glVertex3f(float(cx + t), float(cy - ry * std::sqrt(std::max(0.0, 1.0 - t * t / (double(rx) * rx)))), 0.0f);
    glEnd();
    glColor4f(1, 1, 1, 1);
}

void VexaToolEllipseSelect::onMouseEntered()
{
    if (canvas())
        canvas()->setCursor(modeCursor());
}
