#include "VexaToolSelectionMove.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaLayerManager.h"
#include "VexaSelection.h"

#include <QKeyEvent>

#include <cmath>

VexaToolSelectionMove::VexaToolSelectionMove(QObject* parent)
    : IVexaTool(parent)
{
    toolName = QStringLiteral("Move Selection");
    toolId = QStringLiteral("95EDCB73-6A06-4479-BC81-893395270525");
    toolDescription = QStringLiteral("This tool is to move selection");
    toolVersion = QStringLiteral("1.0");
    stepTimer.start();
    nudgeBurst.setSingleShot(true);
    nudgeBurst.setInterval(700);
    connect(&nudgeBurst, &QTimer::timeout, this, &VexaToolSelectionMove::commitNudges);
}

void VexaToolSelectionMove::commitNudges()
{
    // Left pending until the next mouse release, the keys' offset was no undo step of its own:
    // an undo in between replayed the mask under a still-shifted outline, a state never shown.
    nudgeBurst.stop();
    if (!context || dragging || context->getSelection()->getTranslation().isNull())
        return;
    context->getSelection()->applyTranslation();
    context->getCanvas()->update();
}

VexaToolSelectionMove::~VexaToolSelectionMove() = default;

void VexaToolSelectionMove::init() {}
void VexaToolSelectionMove::release() {}

bool VexaToolSelectionMove::event(QEvent* e)
{
    const bool usable = context && context->getLayerManager()->getActiveLayer();
    if (e->type() != QEvent::KeyPress && e->type() != QEvent::KeyRelease) {
        // Qt's own bookkeeping; a deferred delete destroys the tool here, so nothing of it may
        // be touched afterwards.
        IVexaTool::event(e);
        return usable;
    }
    if (!usable)
        return false;
    VexaSelection* selection = context->getSelection();
    QPointF t = selection->getTranslation();
    if (e->type() == QEvent::KeyPress && !dragging && stepTimer.elapsed() >= stepInterval) {
        const int k = static_cast<QKeyEvent*>(e)->key();
        if (k == Qt::Key_Left || k == Qt::Key_Up || k == Qt::Key_Right || k == Qt::Key_Down) {
            stepTimer.restart();
            const int step = VexaToolEnvironment::keyboardModifiers() == Qt::ShiftModifier ? 10 : 1;
            if (k == Qt::Key_Left)
                t.rx() -= step;
            else if (k == Qt::Key_Up)
                t.ry() -= step;
            else if (k == Qt::Key_Right)
                t.rx() += step;
            else
                t.ry() += step;
            selection->setTranslation(t);
            context->getCanvas()->update();
            nudgeBurst.start();
            return true;
        }
    }
    return true;
}

void VexaToolSelectionMove::active(VexaContext* ctx)
{
    if (!ctx || ctx->getLayerManager()->getLayerCount() == 0 || activated || !ctx->hasSelection())
        return;
    activated = true;
    context = ctx;
    VexaCanvas* c = ctx->getCanvas();
    c->setMouseTracking(true);
    connect(c, SIGNAL(mouseRelease(int,int)), this, SLOT(onMouseReleased(int,int)));
    connect(c, SIGNAL(mousePress(int,int)), this, SLOT(onMousePressed(int,int)));
    connect(c, SIGNAL(drawFeedback()), this, SLOT(onDrawFeedback()));
    connect(c, SIGNAL(mouseMove(int,int)), this, SLOT(onMouseMoved(int,int)));
    connect(c, SIGNAL(mouseEnter()), this, SLOT(onMouseEntered()));
}

void VexaToolSelectionMove::disActive()
{
    if (!activated)
        return;
    commitNudges();
    activated = false;
    VexaCanvas* c = context->getCanvas();
    disconnect(c, SIGNAL(mouseRelease(int,int)), this, SLOT(onMouseReleased(int,int)));
    disconnect(c, SIGNAL(mousePress(int,int)), this, SLOT(onMousePressed(int,int)));
    disconnect(c, SIGNAL(drawFeedback()), this, SLOT(onDrawFeedback()));
    disconnect(c, SIGNAL(mouseMove(int,int)), this, SLOT(onMouseMoved(int,int)));
    disconnect(c, SIGNAL(mouseEnter()), this, SLOT(onMouseEntered()));
    c->unsetCursor();
}

void VexaToolSelectionMove::onMousePressed(int x, int y)
{
    if (context->toolInputBlocked || dragging)
        return;
    if (!context->getSelection()->hasSelection())
        return;
    commitNudges(); // the drag is a step of its own
    lastX = x;
    lastY = y;
    dragging = true;
    context->getCanvas()->setCursor(Qt::ClosedHandCursor);
}

void VexaToolSelectionMove::onMouseMoved(int x, int y)
{
    if (stepTimer.elapsed() < stepInterval)
        return;
    stepTimer.restart();
    if (!dragging)
        return;
    VexaSelection* selection = context->getSelection();
    const QPointF t = selection->getTranslation();
    const double s = context->getCanvas()->getScale();
    const double dx = x - lastX, dy = y - lastY;
    lastX = x;
    lastY = y;
    // Each step is truncated on its own: less than a canvas pixel per step is lost.
    selection->setTranslation(QPointF(std::trunc(t.x() + dx * s), std::trunc(t.y() + dy * s)));
    context->getCanvas()->update();
}

void VexaToolSelectionMove::onMouseReleased(int, int)
{
    if (context->toolInputBlocked)
        return;
    dragging = false;
    nudgeBurst.stop();
    context->getCanvas()->setCursor(Qt::OpenHandCursor);
    context->getSelection()->applyTranslation();
}

void VexaToolSelectionMove::onDrawFeedback() {}

void VexaToolSelectionMove::onMouseEntered() { context->getCanvas()->setCursor(Qt::OpenHandCursor); }
