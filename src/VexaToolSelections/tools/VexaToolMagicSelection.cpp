#include "VexaToolMagicSelection.h"

#include "VexaAlgorithmGrow.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaLayer.h"
#include "VexaLayerManager.h"
#include "VexaMemory.h"
#include "VexaSelection.h"
#include "VexaToolMagicSelectWidget.h"
#include "VexaToolSelectionWidget.h"

#include <QHBoxLayout>
#include <QLayout>

#include <algorithm>
#include <cstring>
#include <limits>

VexaToolMagicSelection::VexaToolMagicSelection(QObject* parent)
    : VexaToolSelectionBase(parent)
    , container(new QWidget)
    , thresholdWidget(new VexaToolMagicSelectWidget(container))
    , m_containerOwned(container)
{
    toolName = QStringLiteral("Magic Select Tool");
    toolId = QStringLiteral("95EDCB73-6A06-4479-BC81-893395270524");
    toolDescription = QStringLiteral("This tool is to make selection");
    cursor = pictureCursor(QStringLiteral("tool-fuzzy-select.png"));
    thresholdWidget->setMagicSelectTool(this);
    auto* layout = new QHBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(optionsWidget);
    thresholdWidget->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred); // the stretch takes the rest
    layout->addWidget(thresholdWidget);
    layout->addStretch();
    optionsWidget->layout()->setContentsMargins(0, 0, 0, 0);
    thresholdWidget->layout()->setContentsMargins(0, 0, 0, 0);
    container->hide();
}

VexaToolMagicSelection::~VexaToolMagicSelection()
{
    delete m_containerOwned.data();
}

QWidget* VexaToolMagicSelection::getWidget() { return container; }

void VexaToolMagicSelection::active(VexaContext* ctx)
{
    if (!ctx || ctx->getLayerManager()->getLayerCount() == 0)
        return;
    VexaToolSelectionBase::active(ctx);
    container->show();
}

void VexaToolMagicSelection::disActive()
{
    VexaToolSelectionBase::disActive();
    container->hide();
}

void VexaToolMagicSelection::onMouseEntered()
{
    if (canvas())
        canvas()->setCursor(modeCursor());
}

void VexaToolMagicSelection::onDrawFeedback() {}

void VexaToolMagicSelection::onMousePressed(int x, int y)
{
    if (selectionMoveable)
        startMoveSelection(x, y);
}

void VexaToolMagicSelection::onMouseMoved(int x, int y)
{
    if (movingSelection)
        moveSelection(x, y);
    else
        checkSelectionMoveable(x, y);
}

void VexaToolMagicSelection::onMouseReleased(int x, int y)
{
    if (inputBlocked())
        return;
    if (movingSelection) {
        endMoveSelection(x, y);
        return;
    }
    auto* layer = qobject_cast<VexaLayer*>(context->getLayerManager()->getActiveLayer());
    if (!layer)
        return;
    if (layer->getLatestPlace() == VexaLayer::OnDevice) {
        layer->fboTextureToHost(true);
        layer->setLatestPlace(VexaLayer::InHost);
    }
    VexaCanvas* c = canvas();
    const QPointF at = c->uiToCanvasCoord(x, y, false);
    const double cx = at.x(), cy = at.y();
    if (cx < 0 || cy < 0 || cx > c->getCanvasWidth() - 1 || cy > c->getCanvasHeight() - 1)
        return;
    const QPointF position = layer->getPosition();
    const int w = layer->getWidth(), h = layer->getHeight();
    // The host's blocks are counted in int: a layer beyond that is refused before the
    // selection is touched, not wrapped round.
    const qsizetype bytes = qsizetype(w) * qsizetype(h);
    if (w <= 0 || h <= 0 || bytes > std::numeric_limits<int>::max())
        return;
    if (selection()->combineMode == 0)
        selection()->clear();
    auto clampInto = [](double v, int size) {
        if (std::max(v, 0.0) > size - 1)
            return size - 1;
        return v < 0 ? 0 : int(v);
    };
    const int sx = clampInto(cx - position.x(), w);
    const int sy = clampInto(cy - position.y(), h);

    unsigned char* mask = VexaMemory::getInstance()->alloc(int(bytes));
    if (!mask)
        return;
    std::memset(mask, 0, size_t(w) * size_t(h));
    VexaAlgorithmGrow::grow(layer->getPictureHost(), mask, threshold, sx, sy);
    selection()->addMask(mask, w, h, int(position.x()), int(position.y()));
    VexaMemory::getInstance()->release(mask);
    selection()->render(c);
}
