#pragma once

#include <QLabel>
#include <QPoint>
#include <QPointF>
#include <QTimer>

#include <memory>

class QImage;

// The zoomable image area of the quick select window: shows the buffer the window composes,
// draws the brush circle under the pointer and turns drags into stroke segments in image
// coordinates. It lives in a scroll area, so its own size is the zoomed image size.
class VexaToolQuickSelectImageBox : public QLabel
{
    Q_OBJECT
public:
    VexaToolQuickSelectImageBox();
    ~VexaToolQuickSelectImageBox() override;

    // The pen width of the window's slider; the circle shows half of it.
    void setRadius(int value);
    int getRadius() const { return radius; }
    void setPainting(bool enabled);
    bool isPainting() const { return painting; }
    float getScale() const;
    int getScaleIndex() const { return scaleIndex; }

    QPoint uiToImageCoord(const QPoint& p) const;
    QPoint uiToImageCoord(int x, int y) const;
    QPoint imageToUiCoord(int x, int y) const;

    // A new transparent buffer of that size.
    void allocImageToDraw(int width, int height);
    // The buffer becomes a copy of `image` (32 bits per pixel), reallocated if the size differs.
    void initImageToDraw(const QImage* image);
    QImage* getImageToDraw() const { return imageToDraw.get(); }
    void releaseImageToDraw();

    // Forgets the buttons held in the view: a drag that the view will not see end (the window
    // was hidden or loads another document) must not go on painting when the pointer comes back.
    void releaseButtons();
    // Zooms by `step` indices about `anchor` (widget pixels): the image point under it stays
    // under it on screen, as far as the enclosing scroll area can scroll.
    void zoomAbout(int step, const QPointF& anchor);
    // The index step from the current zoom to the next factor at least about 1.2 times larger
    // (`direction` -1) or smaller (+1): the list's neighbours lie 5 % apart near 1 but 20 % and
    // more elsewhere, so single index steps make the wheel crawl in and jump out.
    int evenStep(int direction) const;
    // The largest factor at which the whole buffer fits into `available` widget pixels.
    void zoomToFit(const QSize& available);
    // Sizes the view to the buffer at the current factor.
    void fitToZoom();

signals:
    void line(QPoint p1, QPoint p2, bool inverse = false);
    // Never emitted: a graph cut runs only when the user asks for it.
    void mark();

public slots:
    void zoomStep(int step);
    void onBusyTimeout();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void initScaleList();
    double scale() const { return scaleList[scaleIndex]; }

    bool leftDown = false;
    bool rightDown = false;
    QPoint lastPos;
    QPoint cursorPos;
    int radius = 10;
    std::unique_ptr<QImage> imageToDraw;
    bool painting = true;
    double scaleList[35] = {};
    int maxScaleIndex = 34;
    int scaleIndex = 20;
    bool busy = false;
    QTimer busyTimer;
};
