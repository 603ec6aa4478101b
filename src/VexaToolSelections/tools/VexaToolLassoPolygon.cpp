#include "VexaToolLassoPolygon.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaLassoPolygonCommand.h"
#include "VexaLayerManager.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"
#include "VexaToolLassoPolygonWidget.h"
#include "VexaToolSelectionWidget.h"

#include <QHBoxLayout>
#include <QLayout>
#include <QVector2D>

#include <memory>

namespace {
// A click this soon after a polygon was handed over is the second half of its double click.
constexpr qint64 swallowMs = 500;
} // namespace

VexaToolLassoPolygon::VexaToolLassoPolygon(QObject* parent)
    : VexaToolSelectionBase(parent)
    , container(new QWidget)
    , pointsWidget(new VexaToolLassoPolygonWidget(container))
    , m_containerOwned(container)
{
    toolName = QStringLiteral("Polygonal Lasso Tool");
    toolId = QStringLiteral("95EDCB73-6A06-4479-BC81-893395270523");
    toolDescription = tr("Alt+Z to delete/recover latest point, double click to close the path");
    registerEvent(QStringLiteral("ESC"));
    registerEvent(QStringLiteral("DELETE"));
    cursor = pictureCursor(QStringLiteral("tool-polygon-select.png"));
    finishTime.start();
    pointsWidget->setLassoPolygonTool(this);
    auto* layout = new QHBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(optionsWidget);
    pointsWidget->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred); // the stretch takes the rest
    layout->addWidget(pointsWidget);
    layout->addStretch();
    optionsWidget->layout()->setContentsMargins(0, 0, 0, 0);
    pointsWidget->layout()->setContentsMargins(0, 0, 0, 0);
    container->hide();
    connect(&undoStack, SIGNAL(canRedoChanged(bool)), pointsWidget, SLOT(updateButtons()));
    connect(&undoStack, SIGNAL(canUndoChanged(bool)), pointsWidget, SLOT(updateButtons()));
    pointsWidget->updateButtons();
}

VexaToolLassoPolygon::~VexaToolLassoPolygon()
{
    undoStack.disconnect();
    delete m_containerOwned.data();
}

QWidget* VexaToolLassoPolygon::getWidget() { return container; }

void VexaToolLassoPolygon::active(VexaContext* ctx)
{
    if (!ctx || ctx->getLayerManager()->getLayerCount() == 0)
        return;
    VexaToolSelectionBase::active(ctx);
    container->show();
    pointsWidget->updateButtons();
    undoStack.clear();
}

void VexaToolLassoPolygon::disActive()
{
    VexaToolSelectionBase::disActive();
    container->hide();
    undoStack.clear();
}

VexaSelectionPath* VexaToolLassoPolygon::getPath() const
{
    return std::make_unique<VexaSelectionPath>(path, nullptr).release();
}

void VexaToolLassoPolygon::setPath(VexaSelectionPath* source)
{
    delete path;
    path = new VexaSelectionPath(source, nullptr); // the tool's own copy
    if (canvas())
        canvas()->repaint();
}

void VexaToolLassoPolygon::deletePoint()
{
    if (!path || path->getPointNumber() == 0)
        return;
    VexaSelectionPath* before = getPath();
    path->deleteFront();
    undoStack.push(new VexaLassoPolygonCommand(this, before)); // the stack owns it
    if (canvas())
        canvas()->update();
}

void VexaToolLassoPolygon::clearPath()
{
    if (!path || path->getPointNumber() == 0)
        return;
    VexaSelectionPath* before = getPath();
    delete path;
    path = nullptr;
    undoStack.push(new VexaLassoPolygonCommand(this, before));
    if (canvas())
        canvas()->update();
}

void VexaToolLassoPolygon::processEvent(const QString& name)
{
    const QString upper = name.toUpper();
    if (upper == QLatin1String("ESC"))
        clearPath();
    else if (upper == QLatin1String("DELETE"))
        deletePoint();
}

void VexaToolLassoPolygon::toolUndo() { undoStack.undo(); }
void VexaToolLassoPolygon::toolRedo() { undoStack.redo(); }

void VexaToolLassoPolygon::onMouseReleased(int x, int y)
{
    if (inputBlocked())
        return;
    if (movingSelection) {
        endMoveSelection(x, y);
        return;
    }
    if (finishTime.elapsed() < swallowMs)
        return;
    if (!path) {
        if (selection()->combineMode == 0)
            selection()->deselect();
        pressed = true;
        VexaSelectionPath* before = getPath();
        path = new VexaSelectionPath(nullptr);
        const QPointF p = canvas()->uiToCanvasCoord(x, y, true);
        startX = p.x();
        startY = p.y();
        pointer = p;
        pointerKnown = true;
        path->addPoint(p);
        path->setType(VexaSelectionPath::Polygon);
        undoStack.push(new VexaLassoPolygonCommand(this, before));
    } else {
        const QPointF p = canvas()->uiToCanvasCoord(x, y, true);
        const float d = QVector2D(float(p.x() - startX), float(p.y() - startY)).length();
        if (d <= 5.0f * canvas()->getScale()) {
            finishSelection();
            return;
        }
        VexaSelectionPath* before = getPath();
        path->addPoint(p);
        undoStack.push(new VexaLassoPolygonCommand(this, before));
    }
    canvas()->update();
}

void VexaToolLassoPolygon::finishSelection()
{
    if (pressed && path && path->getPointNumber() >= 3) {
        path->setType(VexaSelectionPath::Polygon);
        applyPath(path);
        path = nullptr;
        undoStack.clear();
        finishTime.restart();
    } else if (path) {
        delete path;
        path = nullptr;
        undoStack.clear();
    }
    pressed = false;
    pointerKnown = false;
}

void VexaToolLassoPolygon::onMousePressed(int x, int y)
{
    if (selectionMoveable && !inputBlocked())
        startMoveSelection(x, y);
}

void VexaToolLassoPolygon::onMouseMoved(int x, int y)
{
    if (movingSelection)
        moveSelection(x, y);
    else
        checkSelectionMoveable(x, y);
    // A user placing corners needs to see where the next edge goes before clicking, so a
    // segment follows the pointer from the latest corner.
    if (pressed && path && canvas()) {
        pointer = canvas()->uiToCanvasCoord(x, y, true);
        pointerKnown = true;
        canvas()->update();
    }
}

void VexaToolLassoPolygon::onDrawFeedback()
{
    if (!pressed || !path)
        return;
    path->draw(true);
    if (pointerKnown && path->getPointNumber() > 0) {
        VexaSelectionPath edge;
        edge.setType(VexaSelectionPath::Polygon);
        edge.addPoint(path->points().last());
        edge.addPoint(pointer);
        edge.draw(false);
    }
}

void VexaToolLassoPolygon::onMouseEntered()
{
    if (canvas())
        canvas()->setCursor(modeCursor());
}

void VexaToolLassoPolygon::onMouseDoubleClicked(int, int) { finishSelection(); }
