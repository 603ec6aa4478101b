#pragma once

#include "IVexaTool.h"

#include <QCursor>
#include <QPointer>

class VexaCanvas;
class VexaSelection;
class VexaSelectionPath;
class VexaToolSelectionWidget;

// Base of the tools that select by pointing on the canvas: the combine mode chosen on the
// options panel and overridden by Control and Alt, the feather radius, the canvas wiring, the
// cursor, and dragging the existing selection by grabbing it from inside (in New mode).
class VexaToolSelectionBase : public IVexaTool
{
    Q_OBJECT
public:
    explicit VexaToolSelectionBase(QObject* parent = nullptr);
    ~VexaToolSelectionBase() override;

    bool event(QEvent* e) override;
    void active(VexaContext* context) override;
    void disActive() override;
    void init() override;
    void release() override;
    QWidget* getWidget() override;

    void setClickedMode(int mode);
    void setMode(int mode);
    int getMode() const;
    int getClickedMode() const { return clickedMode; }
    // Re-evaluates the mode in effect from the held modifiers and refreshes the panel.
    void updateMode();
    void setFeatherRadius(float radius) { featherRadius = radius; }
    float getFeatherRadius() const { return featherRadius; }
    VexaToolSelectionWidget* getOptionsWidget() const { return optionsWidget; }

    virtual void moveSelection(int x, int y);
    virtual void startMoveSelection(int x, int y);
    virtual void endMoveSelection(int x, int y);
    virtual bool isInSelection(int x, int y);
    virtual bool checkSelectionMoveable(int x, int y);
    virtual void clearPath();

protected slots:
    virtual void onMouseReleased(int x, int y);
    virtual void onMouseMoved(int x, int y);
    virtual void onMousePressed(int x, int y);
    virtual void onDrawFeedback();
    virtual void onMouseEntered();
    virtual void onMouseDoubleClicked(int x, int y);
    virtual void onTimeout();

protected:
    // Takes the document for an activation: refused (false, the tool stays inactive) when it
    // has no layers; otherwise a memo left pending on it goes into its history.
    bool takeDocument(VexaContext* ctx);
    VexaCanvas* canvas() const;
    VexaSelection* selection() const;
    bool inputBlocked() const;
    // A cursor made from a picture of the host's icon directory, hot spot at its centre.
    static QCursor pictureCursor(const QString& fileName);
    // The tool's cursor with a badge for the mode in effect (+ add, - subtract, x intersect),
    // so the user sees how the next shape combines before drawing it.
    QCursor modeCursor() const;
    // Hands a finished shape to the selection, which then owns it, and shows the result.
    void applyPath(VexaSelectionPath* shape);
    // A new shape starts: in New mode the old selection goes first.
    void dropSelectionForNewShape();
    // The opposite corner of a dragged box for pointer position p: p itself, or with Shift
    // alone the corner of a square whose side is the larger whole-pixel extent of the drag,
    // on the side the pointer is.
    static QPointF boxEnd(double startX, double startY, const QPointF& p);

    bool drawing = false;
    QCursor cursor;
    VexaSelectionPath* path = nullptr;
    VexaToolSelectionWidget* optionsWidget;
    bool pressed = false;
    float featherRadius = 0.0f;
    bool movingSelection = false;
    bool selectionMoveable = false;
    double moveStart[2] = {0, 0};
    double moveStartTranslation[2] = {0, 0};
    int clickedMode = 0;

private:
    void showModeCursor();

    mutable QCursor m_badged[4];
    int m_cursorMode = 0;
    // The panel has no Qt parent until a host or a container adopts it.
    QPointer<QWidget> m_optionsOwned;
};
