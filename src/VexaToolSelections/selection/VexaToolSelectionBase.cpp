#include "VexaToolSelectionBase.h"

#include "VexaCanvas.h"
#include "VexaConfig.h"
#include "VexaContext.h"
#include "VexaHistory.h"
#include "VexaLayerManager.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"
#include "VexaToolEnvironment.h"
#include "VexaToolSelectionWidget.h"

#include <QEvent>
#include <QPainter>
#include <QPixmap>
#include <QtMath>

#include <cmath>

VexaToolSelectionBase::VexaToolSelectionBase(QObject* parent)
    : IVexaTool(parent)
    , cursor(Qt::CrossCursor)
    , optionsWidget(new VexaToolSelectionWidget(this, nullptr))
    , m_optionsOwned(optionsWidget)
{
    toolCategory = QStringLiteral("Selection");
    toolVersion = QStringLiteral("1.0");
    registerEvent(QStringLiteral("DOUBLE_CLICK"));
    // Window managers take Alt + drag for moving windows, so Alt never reaches the canvas
    // there; a drag with the right button subtracts as well (the canvas then carries a true
    // "subtractDrag" property, read with the held keys).
    setProperty("rightButtonSubtracts", true);
    optionsWidget->hide();
}

VexaToolSelectionBase::~VexaToolSelectionBase()
{
    delete path;
    // Gone already if a container of a derived tool held it.
    delete m_optionsOwned.data();
}

VexaCanvas* VexaToolSelectionBase::canvas() const { return context ? context->getCanvas() : nullptr; }
VexaSelection* VexaToolSelectionBase::selection() const { return context ? context->getSelection() : nullptr; }
bool VexaToolSelectionBase::inputBlocked() const { return context && context->toolInputBlocked; }

QCursor VexaToolSelectionBase::pictureCursor(const QString& fileName)
{
    const QPixmap picture(VexaConfig::getInstance()->iconDirectory + fileName);
    if (picture.isNull())
        return QCursor(Qt::CrossCursor);
    return QCursor(picture, picture.width() / 2, picture.height() / 2);
}

QCursor VexaToolSelectionBase::modeCursor() const
{
    const int mode = getMode();
    if (mode < 1 || mode > 3)
        return cursor;
    if (!m_badged[mode].pixmap().isNull())
        return m_badged[mode];
    const QPixmap picture = cursor.pixmap();
    const int side = std::max(32, std::max(picture.width(), picture.height()));
    QPixmap badged(side, side);
    badged.fill(Qt::transparent);
    QPainter p(&badged);
    p.setRenderHint(QPainter::Antialiasing);
    QPoint hot = cursor.hotSpot();
    if (picture.isNull()) {
        // A plain cross hair in the upper left, white under black so it shows on any photo;
        // the badge takes the lower right.
        hot = QPoint(11, 11);
        for (int pass = 0; pass < 2; ++pass) {
            p.setPen(QPen(pass ? Qt::black : Qt::white, pass ? 1.0 : 3.0));
            p.drawLine(QPointF(hot.x() + 0.5, 2), QPointF(hot.x() + 0.5, 21));
            p.drawLine(QPointF(2, hot.y() + 0.5), QPointF(21, hot.y() + 0.5));
        }
    } else {
        p.drawPixmap(0, 0, picture);
    }
    const QRectF badge(side - 11.5, side - 11.5, 11, 11);
    p.setPen(QPen(Qt::black, 1.0));
    p.setBrush(Qt::white);
    p.drawEllipse(badge);
    p.setPen(QPen(Qt::black, 1.6));
    const QPointF c = badge.center();
    if (mode == 3) { // intersect: a cross
        p.drawLine(c + QPointF(-2.5, -2.5), c + QPointF(2.5, 2.5));
        p.drawLine(c + QPointF(-2.5, 2.5), c + QPointF(2.5, -2.5));
    } else {
        p.drawLine(c + QPointF(-3, 0), c + QPointF(3, 0));
        if (mode == 1)
            p.drawLine(c + QPointF(0, -3), c + QPointF(0, 3));
    }
    p.end();
    m_badged[mode] = QCursor(badged, hot.x(), hot.y());
    return m_badged[mode];
}

bool VexaToolSelectionBase::event(QEvent* e)
{
    // Qt's bookkeeping runs with or without a context (a deferred delete of a tool never
    // activated must still delete it); it may delete the tool, so nothing follows it.
    if (e->type() != QEvent::KeyPress && e->type() != QEvent::KeyRelease)
        return IVexaTool::event(e);
    if (context)
        updateMode();
    return true;
}

bool VexaToolSelectionBase::takeDocument(VexaContext* ctx)
{
    activated = true;
    context = ctx;
    if (ctx->getLayerManager()->getLayerCount() == 0) {
        activated = false;
        return false;
    }
    if (VexaHistoryMemo* memo = ctx->getLastMemo()) {
        ctx->getHistory()->pushNewMemo(memo);
        ctx->setLastMemo(nullptr);
    }
    return true;
}

void VexaToolSelectionBase::active(VexaContext* ctx)
{
    path = nullptr;
    if (activated || !ctx || !takeDocument(ctx))
        return;
    VexaCanvas* c = ctx->getCanvas();
    c->setMouseTracking(true);
    m_cursorMode = -1; // the canvas shows another tool's cursor until this one sets its own
    connect(c, SIGNAL(mouseRelease(int,int)), this, SLOT(onMouseReleased(int,int)));
    connect(c, SIGNAL(mousePress(int,int)), this, SLOT(onMousePressed(int,int)));
    connect(c, SIGNAL(drawFeedback()), this, SLOT(onDrawFeedback()));
    connect(c, SIGNAL(mouseMove(int,int)), this, SLOT(onMouseMoved(int,int)));
    connect(c, SIGNAL(mouseEnter()), this, SLOT(onMouseEntered()));
    connect(c, SIGNAL(mouseDoubleClick(int,int)), this, SLOT(onMouseDoubleClicked(int,int)));
    connect(c, SIGNAL(timeOut()), this, SLOT(onTimeout()));
    optionsWidget->updateButtons();
    optionsWidget->show();
}

void VexaToolSelectionBase::disActive()
{
    if (!activated)
        return;
    activated = false;
    movingSelection = false;
    VexaCanvas* c = canvas();
    disconnect(c, SIGNAL(mouseRelease(int,int)), this, SLOT(onMouseReleased(int,int)));
    disconnect(c, SIGNAL(mousePress(int,int)), this, SLOT(onMousePressed(int,int)));
    disconnect(c, SIGNAL(drawFeedback()), this, SLOT(onDrawFeedback()));
    disconnect(c, SIGNAL(mouseMove(int,int)), this, SLOT(onMouseMoved(int,int)));
    disconnect(c, SIGNAL(mouseEnter()), this, SLOT(onMouseEntered()));
    disconnect(c, SIGNAL(mouseDoubleClick(int,int)), this, SLOT(onMouseDoubleClicked(int,int)));
    disconnect(c, SIGNAL(timeOut()), this, SLOT(onTimeout()));
    c->unsetCursor();
    // Whatever shape was under way is dropped; a path still here is the tool's, never the
    // selection's (tools let go of a path as soon as they hand it over).
    delete path;
    path = nullptr;
    optionsWidget->hide();
    pressed = false;
    context->setCurrentTool(nullptr);
}

void VexaToolSelectionBase::init() {}
void VexaToolSelectionBase::release() {}
QWidget* VexaToolSelectionBase::getWidget() { return optionsWidget; }

void VexaToolSelectionBase::setClickedMode(int mode)
{
    clickedMode = mode;
    if (context) {
        context->getSelection()->combineMode = mode;
        showModeCursor();
    }
}

void VexaToolSelectionBase::showModeCursor()
{
    // The pointer shows a new mode at once, unless it is a hand over a selection to drag.
    const int mode = getMode();
    VexaCanvas* c = canvas();
    if (mode != m_cursorMode && c && !selectionMoveable && !movingSelection)
        c->setCursor(modeCursor());
    m_cursorMode = mode;
}

void VexaToolSelectionBase::setMode(int mode)
{
    if (context)
        context->getSelection()->combineMode = mode;
}

int VexaToolSelectionBase::getMode() const { return context ? context->getSelection()->combineMode : 0; }

void VexaToolSelectionBase::updateMode()
{
    if (!context)
        return;
    const Qt::KeyboardModifiers mods = VexaToolEnvironment::keyboardModifiers();
    const bool control = mods & Qt::ControlModifier;
    const bool alt = mods & Qt::AltModifier;
    int mode = clickedMode;
    if (control && alt)
        mode = 3;
    else if (control)
        mode = 1;
    else if (alt)
        mode = 2;
    VexaCanvas* c = canvas();
    if (c && c->property("subtractDrag").toBool())
        mode = 2;
    context->getSelection()->combineMode = mode;
    optionsWidget->updateButtons();
    showModeCursor();
}

void VexaToolSelectionBase::onTimeout() { updateMode(); }

bool VexaToolSelectionBase::isInSelection(int x, int y)
{
    VexaSelection* sel = selection();
    if (!sel || !sel->hasSelection() || sel->combineMode != 0)
        return false;
    const QPointF p = canvas()->uiToCanvasCoord(x, y, false);
    const qsizetype px = qRound64(p.x()), py = qRound64(p.y());
    if (px < 0 || py < 0 || px >= canvas()->getCanvasWidth() || py >= canvas()->getCanvasHeight())
        return false;
    return sel->mask()[px + py * qsizetype(sel->maskStride())] >= 128;
}

bool VexaToolSelectionBase::checkSelectionMoveable(int x, int y)
{
    if (isInSelection(x, y)) {
        selectionMoveable = true;
        canvas()->setCursor(Qt::OpenHandCursor);
        return true;
    }
    selectionMoveable = false;
    if (canvas())
        canvas()->setCursor(modeCursor());
    return false;
}

void VexaToolSelectionBase::startMoveSelection(int x, int y)
{
    movingSelection = true;
    moveStart[0] = x;
    moveStart[1] = y;
    canvas()->setCursor(Qt::ClosedHandCursor);
    const QPointF t = selection()->getTranslation();
    moveStartTranslation[0] = t.x();
    moveStartTranslation[1] = t.y();
}

void VexaToolSelectionBase::moveSelection(int x, int y)
{
    if (!movingSelection)
        return;
    const double s = canvas()->getScale();
    // Measured from the drag's start, so no fraction of a pixel is lost along the way.
    const double tx = std::trunc(moveStartTranslation[0] + (x - moveStart[0]) * s);
    const double ty = std::trunc(moveStartTranslation[1] + (y - moveStart[1]) * s);
    selection()->setTranslation(QPointF(tx, ty));
    canvas()->update();
}

void VexaToolSelectionBase::endMoveSelection(int, int)
{
    movingSelection = false;
    canvas()->setCursor(Qt::OpenHandCursor);
    selection()->applyTranslation();
}

void VexaToolSelectionBase::clearPath() {}

void VexaToolSelectionBase::applyPath(VexaSelectionPath* shape)
{
    selection()->addPath(shape, featherRadius);
    selection()->render(canvas());
}

void VexaToolSelectionBase::dropSelectionForNewShape()
{
    if (selection()->combineMode == 0 && context->hasSelection()) {
        selection()->deselect();
        canvas()->repaint();
    }
}

QPointF VexaToolSelectionBase::boxEnd(double startX, double startY, const QPointF& p)
{
    if (VexaToolEnvironment::keyboardModifiers() != Qt::ShiftModifier)
        return p;
    const double dx = std::trunc(p.x() - startX);
    const double dy = std::trunc(p.y() - startY);
    const double d = std::max(std::abs(dx), std::abs(dy));
    return QPointF(dx > 0 ? startX + d : startX - d, dy > 0 ? startY + d : startY - d);
}

void VexaToolSelectionBase::onMouseReleased(int, int) {}
void VexaToolSelectionBase::onMouseMoved(int, int) {}
void VexaToolSelectionBase::onMousePressed(int, int) {}
void VexaToolSelectionBase::onDrawFeedback() {}
void VexaToolSelectionBase::onMouseEntered() {}
void VexaToolSelectionBase::onMouseDoubleClicked(int, int) {}
