#pragma once

#include "IVexaTool.h"
#include "VexaToolEnvironment.h"

#include <QTimer>

// Moves the selection outline, not the pixels: by dragging anywhere on the canvas or with the
// arrow keys (Shift: 10 pixels). A drag's offset enters the mask at the mouse release; a burst
// of arrow keys enters it once the keys rest (or at the next press, release or tool change),
// so each burst is one undo step.
class VexaToolSelectionMove : public IVexaTool
{
    Q_OBJECT
public:
    explicit VexaToolSelectionMove(QObject* parent = nullptr);
    ~VexaToolSelectionMove() override;

    bool event(QEvent* e) override;
    void active(VexaContext* context) override;
    void disActive() override;
    void init() override;
    void release() override;

protected slots:
    void onMouseReleased(int x, int y);
    void onMouseMoved(int x, int y);
    void onMousePressed(int x, int y);
    void onDrawFeedback();
    void onMouseEntered();

private slots:
    void commitNudges();

private:
    bool dragging = false;
    // Arrow keys closer together than this belong to one burst.
    QTimer nudgeBurst;
    double lastX = 0, lastY = 0;
    VexaStopwatch stepTimer;
    // Steps closer together than this are dropped, so a held key or a fast pointer moves at
    // most one step per interval.
    float stepInterval = 50;
};
