#include "VexaToolRectangularMarquee.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaLayerManager.h"
#include "VexaSelection.h"
#include "VexaSelectionPath.h"
#include "VexaToolRectangularMarqueeWidget.h"
#include "VexaToolSelectionWidget.h"

#include <QHBoxLayout>
#include <QLayout>

#include <GL/gl.h>

#include <cmath>
#include <memory>

VexaToolRectangularMarquee::VexaToolRectangularMarquee(QObject* parent)
    : VexaToolSelectionBase(parent)
    , container(new QWidget)
    , regionWidget(new VexaToolRectangularMarqueeWidget(container))
    , m_containerOwned(container)
{
    toolName = QStringLiteral("Rectangular Marquee Tool");
    toolId = QStringLiteral("95EDCB73-6A06-4479-BC81-893395270521");
    toolDescription = QStringLiteral("This tool is to make selection");
    cursor = QCursor(Qt::CrossCursor);
    regionWidget->setRectangularMarqueeTool(this);
    auto* layout = new QHBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(optionsWidget);
    regionWidget->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred); // the stretch takes the rest
    layout->addWidget(regionWidget);
    layout->addStretch();
    optionsWidget->layout()->setContentsMargins(0, 0, 0, 0);
    regionWidget->layout()->setContentsMargins(0, 0, 0, 0);
    container->hide();
}

VexaToolRectangularMarquee::~VexaToolRectangularMarquee()
{
    delete m_containerOwned.data(); // with the two panels in it
}

QWidget* VexaToolRectangularMarquee::getWidget() { return container; }

void VexaToolRectangularMarquee::showRegion()
{
    regionWidget->setRegion(int(startX), int(startY), int(endX), int(endY));
}

void VexaToolRectangularMarquee::active(VexaContext* ctx)
{
    if (!ctx)
        return;
    context = ctx;
    if (ctx->getLayerManager()->getLayerCount() == 0)
        return;
    if (!activated) {
        startX = startY = endX = endY = 0;
        regionWidget->show();
        regionWidget->initRegionValidators();
        regionWidget->setRegion(0, 0, 0, 0);
    }
    VexaToolSelectionBase::active(ctx);
    container->show();
}

void VexaToolRectangularMarquee::disActive()
{
    VexaToolSelectionBase::disActive();
    container->hide();
}

void VexaToolRectangularMarquee::onMousePressed(int x, int y)
{
    if (inputBlocked())
        return;
    if (selectionMoveable) {
        startMoveSelection(x, y);
        return;
    }
    if (pressed)
        return;
    feedbackVisible = false;
    dropSelectionForNewShape();
    regionWidget->dropTyping();
    const QPointF p = canvas()->uiToCanvasCoord(x, y, true);
    startX = endX = p.x();
    startY = endY = p.y();
    regionWidget->setRegion(int(p.x()), int(p.y()), int(p.x()), int(p.y()));
    pressed = true;
}

void VexaToolRectangularMarquee::onMouseMoved(int x, int y)
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
    showRegion();
    canvas()->update();
}

void VexaToolRectangularMarquee::onMouseReleased(int x, int y)
{
    if (inputBlocked())
        return;
    if (movingSelection) {
        endMoveSelection(x, y);
        return;
    }
    if (pressed) {
        apply();
        showRegion();
    }
    pressed = false;
}

void VexaToolRectangularMarquee::apply()
{
    if (!context)
        return;
    if (endX == startX || endY == startY) {
        startX = 0;
        startY = 0;
        return;
    }
    auto shape = std::make_unique<VexaSelectionPath>(nullptr);
    shape->addPoint(QPointF(startX, startY));
    shape->addPoint(QPointF(startX, endY));
    shape->addPoint(QPointF(endX, endY));
    shape->addPoint(QPointF(endX, startY));
    shape->setType(VexaSelectionPath::Rectangle);
    path = shape.release();
    applyPath(path); // the selection owns it now
    path = nullptr;
}

void VexaToolRectangularMarquee::textEdited()
{
    if (context && feedbackVisible)
        canvas()->update();
}

void VexaToolRectangularMarquee::on_startXEdit_textChanged(const QString& text)
{
    const int v = text.toInt();
    endX = endX + v - startX;
    startX = v;
    showRegion();
    textEdited();
}

void VexaToolRectangularMarquee::on_startYEdit_textChanged(const QString& text)
{
    const int v = text.toInt();
    endY = endY + v - startY;
    startY = v;
    showRegion();
    textEdited();
}

void VexaToolRectangularMarquee::on_widthEdit_textChanged(const QString& text)
{
    endX = startX + text.toInt() - 1;
    showRegion();
    textEdited();
}

void VexaToolRectangularMarquee::on_heightEdit_textChanged(const QString& text)
{
    endY = startY + text.toInt() - 1;
    showRegion();
    textEdited();
}

void VexaToolRectangularMarquee::applyTypedRegion()
{
    // Typed fields give W, H >= 1, so the end never lies before the start; a cleared W or H
    // (read as 0) would.
    if (activated && endX > startX && endY > startY)
        apply();
}

void VexaToolRectangularMarquee::on_okBtn_clicked() { applyTypedRegion(); }

void VexaToolRectangularMarquee::onDrawFeedback()
{
    if (!pressed || !feedbackVisible)
        return;
    glColor4f(1, 1, 1, 1);
    glBegin(GL_LINE_STRIP);
    glVertex2f(float(startX), float(startY));
    glVertex2f(float(endX), float(startY));
    glVertex2f(float(endX), float(endY));
    glVertex2f(float(startX), float(endY));
    glVertex2f(float(startX), float(startY));
    glEnd();
    glColor4f(1, 1, 1, 1);
}

void VexaToolRectangularMarquee::onMouseEntered() {}
