#include "VexaToolLasso.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"

VexaToolLasso::VexaToolLasso(QObject* parent)
    : VexaToolSelectionBase(parent)
{
    toolName = QStringLiteral("Lasso Tool");
    toolId = QStringLiteral("95EDCB73-6A06-4479-BC81-893395270522");
    toolDescription = QStringLiteral("This tool is to make selection");
    drawing = false;
    cursor = pictureCursor(QStringLiteral("tool-free-select.png"));
}

VexaToolLasso::~VexaToolLasso() = default;

void VexaToolLasso::onMousePressed(int x, int y)
{
    if (inputBlocked())
        return;
    if (selectionMoveable) {
        startMoveSelection(x, y);
        return;
    }
    if (drawing)
        return;
    if (selection()->combineMode == 0)
        selection()->deselect();
    drawing = true;
    delete path; // a stroke left over from a release that never came
    path = new VexaSelectionPath(nullptr); // the tool's until the stroke is handed over
    const QPointF p = canvas()->uiToCanvasCoord(x, y, true);
    startX = p.x();
    startY = p.y();
    path->addPoint(p);
    path->setType(VexaSelectionPath::Polygon);
    canvas()->update();
}

void VexaToolLasso::onMouseMoved(int x, int y)
{
    if (movingSelection) {
        moveSelection(x, y);
        return;
    }
    checkSelectionMoveable(x, y);
    if (drawing && path) {
        path->addPoint(canvas()->uiToCanvasCoord(x, y, true));
        canvas()->update();
    }
}

void VexaToolLasso::onMouseReleased(int x, int y)
{
    if (inputBlocked())
        return;
    if (movingSelection) {
        endMoveSelection(x, y);
        return;
    }
    if (drawing && path && path->getPointNumber() >= 3) {
        path->doPathSampling(5.0f);
        path->setType(VexaSelectionPath::Polygon);
        applyPath(path);
        path = nullptr;
    } else {
        delete path;
        path = nullptr;
    }
    drawing = false;
}

void VexaToolLasso::onDrawFeedback()
{
    if (drawing && path)
        path->draw(false);
}

void VexaToolLasso::onMouseEntered()
{
    if (canvas())
        canvas()->setCursor(modeCursor());
}
