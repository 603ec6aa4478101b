#pragma once

#include <QWidget>

class QScrollBar;
class VexaCanvas;

// A canvas with scroll bars: each bar shows while the photo is wider (or taller) than the view
// at the current zoom, follows every zoom and pan, and moving it pans the canvas.
class VexaCanvasFrame : public QWidget
{
    Q_OBJECT
public:
    // Takes `canvas` into the frame as its child.
    explicit VexaCanvasFrame(VexaCanvas* canvas, QWidget* parent = nullptr);

    VexaCanvas* canvas() const { return m_canvas; }
    QScrollBar* horizontalBar() const { return m_horizontal; }
    QScrollBar* verticalBar() const { return m_vertical; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void syncBars();
    void barMoved();

    VexaCanvas* m_canvas;
    QScrollBar* m_horizontal;
    QScrollBar* m_vertical;
    bool m_syncing = false;
    bool m_resync = false;
};
