#include "VexaToolQuickSelectImageBox.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstring>

VexaToolQuickSelectImageBox::VexaToolQuickSelectImageBox()
{
    setMouseTracking(true); // the brush circle follows the pointer without a button held
    initScaleList();
    busyTimer.setInterval(5);
    connect(&busyTimer, SIGNAL(timeout()), this, SLOT(onBusyTimeout()));
    busyTimer.start();
}

VexaToolQuickSelectImageBox::~VexaToolQuickSelectImageBox() = default;

void VexaToolQuickSelectImageBox::initScaleList()
{
    // Image pixels per widget pixel, from the strongest magnification to the weakest.
    static const double d[35] = {1.0 / 16, 1.0 / 12, 0.1,  0.125, 1.0 / 6, 0.2,  0.25, 0.3, 1.0 / 3,
                                 0.4,      0.45,     0.5,  0.55,  0.6,     2.0 / 3, 0.75, 0.8, 0.85,
                                 0.9,      0.95,     1,    1.2,   1.5,     1.8,  2,    2.5, 3,
                                 4,        5,        6,    7,     8,       12,   16,   32};
    for (int i = 0; i < 35; ++i)
        scaleList[i] = 1.0 / d[i];
    scaleIndex = 20;
    maxScaleIndex = 34;
}

void VexaToolQuickSelectImageBox::setRadius(int value) { radius = value / 2; }
void VexaToolQuickSelectImageBox::setPainting(bool enabled) { painting = enabled; }
float VexaToolQuickSelectImageBox::getScale() const { return float(scale()); }

QPoint VexaToolQuickSelectImageBox::uiToImageCoord(const QPoint& p) const { return uiToImageCoord(p.x(), p.y()); }

QPoint VexaToolQuickSelectImageBox::uiToImageCoord(int x, int y) const
{
    const double s = scale();
    return QPoint(int(float(x / s)), int(float(y / s)));
}

QPoint VexaToolQuickSelectImageBox::imageToUiCoord(int x, int y) const
{
    const double s = scale();
    return QPoint(int(float(x * s)), int(float(y * s)));
}

void VexaToolQuickSelectImageBox::allocImageToDraw(int width, int height)
{
    imageToDraw = std::make_unique<QImage>(width, height, QImage::Format_ARGB32);
    imageToDraw->fill(0u);
}

void VexaToolQuickSelectImageBox::initImageToDraw(const QImage* image)
{
    if (!image || image->isNull() || image->depth() != 32)
        return;
    if (!imageToDraw || imageToDraw->size() != image->size())
        allocImageToDraw(image->width(), image->height());
    // constBits: the source may be shared, and reading must never detach it.
    std::memcpy(imageToDraw->bits(), image->constBits(), size_t(image->width()) * size_t(image->height()) * 4);
}

void VexaToolQuickSelectImageBox::releaseImageToDraw() { imageToDraw.reset(); }

void VexaToolQuickSelectImageBox::releaseButtons()
{
    leftDown = false;
    rightDown = false;
}

void VexaToolQuickSelectImageBox::fitToZoom()
{
    if (!imageToDraw)
        return;
    const float s = getScale();
    resize(int(float(imageToDraw->width()) * s), int(float(imageToDraw->height()) * s));
}

void VexaToolQuickSelectImageBox::zoomAbout(int step, const QPointF& anchor)
{
    if (!imageToDraw)
        return;
    const QPointF imagePoint = anchor / scale();
    // The scroll area that shows the view, if any: its viewport is the view's parent.
    QWidget* viewport = parentWidget();
    auto* area = viewport ? qobject_cast<QAbstractScrollArea*>(viewport->parentWidget()) : nullptr;
    const QPointF onScreen = area ? QPointF(mapTo(viewport, QPoint(0, 0))) + anchor : anchor;
    scaleIndex = std::clamp(scaleIndex + step, 0, maxScaleIndex);
    fitToZoom(); // the scroll area takes the new size at once, scroll ranges included
    if (area) {
        // Where the view is larger than the viewport, its left edge sits at minus the scroll
        // value; elsewhere the area centres it and the value stays 0.
        const QPointF after = imagePoint * scale();
        area->horizontalScrollBar()->setValue(int(std::lround(after.x() - onScreen.x())));
        area->verticalScrollBar()->setValue(int(std::lround(after.y() - onScreen.y())));
    }
    update();
}

int VexaToolQuickSelectImageBox::evenStep(int direction) const
{
    const double now = scaleList[scaleIndex];
    int index = scaleIndex + direction;
    while (index > 0 && index < maxScaleIndex && std::abs(std::log(scaleList[index] / now)) < std::log(1.19))
        index += direction;
    return std::clamp(index, 0, maxScaleIndex) - scaleIndex;
}

void VexaToolQuickSelectImageBox::zoomToFit(const QSize& available)
{
    if (!imageToDraw)
        return;
    // The list runs from the largest factor down; where none fits, the smallest is taken.
    int index = 0;
    while (index < maxScaleIndex
           && (int(float(imageToDraw->width()) * float(scaleList[index])) > available.width()
               || int(float(imageToDraw->height()) * float(scaleList[index])) > available.height()))
        ++index;
    scaleIndex = index;
    fitToZoom();
    update();
}

void VexaToolQuickSelectImageBox::zoomStep(int step)
{
    if (!imageToDraw)
        return;
    scaleIndex = std::clamp(scaleIndex + step, 0, maxScaleIndex);
    fitToZoom();
    update();
}

void VexaToolQuickSelectImageBox::onBusyTimeout()
{
    busy = false;
    busyTimer.stop();
}

void VexaToolQuickSelectImageBox::mousePressEvent(QMouseEvent* event)
{
    if (!painting) {
        event->ignore();
        return;
    }
    if (event->button() == Qt::RightButton)
        rightDown = true;
    else if (event->button() == Qt::LeftButton)
        leftDown = true;
    lastPos = event->position().toPoint();
    // A press is a move of zero length: the window paints it as a dot.
    mouseMoveEvent(event);
}

void VexaToolQuickSelectImageBox::mouseMoveEvent(QMouseEvent* event)
{
    if (!imageToDraw)
        return;
    const QPoint pos = event->position().toPoint();
    cursorPos = pos;
    const float s = getScale();
    const int pad = int(float(radius) * s + 3.0f);
    const QRect dirty = QRect(QPoint(std::min(pos.x(), lastPos.x()) - pad, std::min(pos.y(), lastPos.y()) - pad),
                              QPoint(std::max(pos.x(), lastPos.x()) + pad - 1, std::max(pos.y(), lastPos.y()) + pad - 1))
                            .intersected(QRect(QPoint(0, 0), QPoint(int(float(imageToDraw->width()) * s) - 1,
                                                                    int(float(imageToDraw->height()) * s) - 1)));
    // Only a button that the event says is held paints. A release the view never took (it
    // came while a step ran, or after the window was hidden) would otherwise leave a flag set,
    // and the next hover without a button would paint.
    leftDown = leftDown && (event->buttons() & Qt::LeftButton);
    rightDown = rightDown && (event->buttons() & Qt::RightButton);
    if (leftDown)
        emit line(uiToImageCoord(lastPos), uiToImageCoord(pos), false);
    if (rightDown)
        emit line(uiToImageCoord(lastPos), uiToImageCoord(pos), false);
    lastPos = pos;
    event->accept();
    repaint(dirty);
}

void VexaToolQuickSelectImageBox::mouseReleaseEvent(QMouseEvent* event)
{
    // A release ends its drag even while painting is off: keeping the flag of a button that
    // is up would let the pen paint without one.
    if (event->button() == Qt::RightButton)
        rightDown = false;
    else if (event->button() == Qt::LeftButton)
        leftDown = false;
    event->accept();
}

void VexaToolQuickSelectImageBox::wheelEvent(QWheelEvent* event)
{
    event->accept(); // the scroll area never scrolls with the wheel
    if (QApplication::keyboardModifiers() != Qt::NoModifier)
        return;
    // One pending step for every view: a burst of notches zooms once per busy period.
    static int pendingStep = 0;
    const int delta = event->angleDelta().y();
    if (delta > 0)
        pendingStep = -1;
    else if (delta < 0)
        pendingStep = 1;
    if (busy)
        return;
    busyTimer.stop();
    busy = true;
    if (pendingStep != 0 && imageToDraw) {
        // About the pointer, as in any editor: the point under it stays under it.
        zoomAbout(evenStep(pendingStep), event->position());
        pendingStep = 0;
        // The view moved under a pointer that did not: the pen's ring and the next stroke
        // segment start where the pointer is now, not where it was on the view before.
        cursorPos = lastPos = mapFromGlobal(event->globalPosition()).toPoint();
        update();
    }
    busyTimer.start(5);
}

void VexaToolQuickSelectImageBox::paintEvent(QPaintEvent* event)
{
    if (!imageToDraw)
        return;
    const float s = getScale();
    // The source is the exposed rectangle divided by the factor, fractions kept: cut to whole
    // image pixels and stretched into the exposed rectangle, a partial repaint would shift or
    // stretch its part against the rest, and every brush move would leave seams.
    const QRect exposed = event->rect();
    const QRectF source(exposed.x() / s, exposed.y() / s, exposed.width() / s, exposed.height() / s);
    QPainter painter(this);
    painter.drawImage(QRectF(exposed), *imageToDraw, source);
    painter.setPen(QColor(255, 255, 255, 255));
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    const int r = int(float(radius) * s);
    painter.drawEllipse(cursorPos.x() - r, cursorPos.y() - r, 2 * r, 2 * r);
}

void VexaToolQuickSelectImageBox::hideEvent(QHideEvent* event)
{
    releaseButtons(); // the release of a drag cut short by hiding never reaches the view
    QLabel::hideEvent(event);
}
