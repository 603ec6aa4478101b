#include "VexaToolQuickSelectImageBox.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QWheelEvent>

#include <algorithm>
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

void VexaToolQuickSelectImageBox::fitToZoom()
{
    const float s = getScale();
    resize(int(float(imageToDraw->width()) * s), int(float(imageToDraw->height()) * s));
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
    if (!painting)
        return;
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
        scaleIndex = std::max(std::min(scaleIndex + pendingStep, maxScaleIndex), 0);
        fitToZoom();
        update();
        pendingStep = 0;
    }
    busyTimer.start(5);
}

void VexaToolQuickSelectImageBox::paintEvent(QPaintEvent* event)
{
    if (!imageToDraw)
        return;
    const float s = getScale();
    const QRect exposed = event->rect();
    const int x1 = exposed.left(), y1 = exposed.top(), x2 = exposed.right(), y2 = exposed.bottom();
    const int sx = int(float(x1) / s), sy = int(float(y1) / s);
    const QRect source(sx, sy, int(float(x2) / s) + 1 - sx, int(float(y2) / s) + 1 - sy);
    const QRect target(x1, y1, x2 - x1 + 1, y2 - y1 + 1);
    QPainter painter(this);
    painter.drawImage(target, *imageToDraw, source);
    painter.setPen(QColor(255, 255, 255, 255));
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    const int r = int(float(radius) * s);
    painter.drawEllipse(cursorPos.x() - r, cursorPos.y() - r, 2 * r, 2 * r);
}
