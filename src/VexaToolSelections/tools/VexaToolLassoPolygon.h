#pragma once

#include "VexaToolEnvironment.h"
#include "VexaToolSelectionBase.h"

#include <QPointer>
#include <QUndoStack>

class VexaToolLassoPolygonWidget;

// Selects a polygon whose corners are placed one click at a time; a double click, or a click
// within 5 screen pixels of the first corner, closes it. Corner edits are undoable steps of
// the tool's own stack until the polygon is handed to the selection.
class VexaToolLassoPolygon : public VexaToolSelectionBase
{
    Q_OBJECT
    // True from the first corner until the polygon is closed or dropped. A host that groups
    // the changes of one gesture into one undo step keeps the group open meanwhile, so the
    // selection dropped at the first corner and the polygon added at the last are undone together.
    Q_PROPERTY(bool shapeInProgress READ shapeInProgress)
public:
    explicit VexaToolLassoPolygon(QObject* parent = nullptr);
    ~VexaToolLassoPolygon() override;

    void active(VexaContext* context) override;
    void disActive() override;
    QWidget* getWidget() override;
    void toolUndo() override;
    void toolRedo() override;
    void processEvent(const QString& name) override;
    void clearPath() override;

    QUndoStack* getUndoStack() { return &undoStack; }
    // A new copy of the polygon (empty without one); the caller owns it.
    VexaSelectionPath* getPath() const;
    // Replaces the polygon by a copy of `source`.
    void setPath(VexaSelectionPath* source);
    void deletePoint();
    void finishSelection();
    VexaToolLassoPolygonWidget* getPointsWidget() const { return pointsWidget; }
    // The corners placed so far (null without a polygon).
    const VexaSelectionPath* currentPath() const { return path; }
    bool shapeInProgress() const { return pressed && path; }

protected slots:
    void onMouseReleased(int x, int y) override;
    void onMouseMoved(int x, int y) override;
    void onMousePressed(int x, int y) override;
    void onDrawFeedback() override;
    void onMouseEntered() override;
    void onMouseDoubleClicked(int x, int y) override;

private:
    double startX = -1, startY = -1;
    // Where the pointer was last seen while a polygon is open: the end of the live edge.
    QPointF pointer;
    bool pointerKnown = false;
    VexaStopwatch finishTime;
    QWidget* container;
    VexaToolLassoPolygonWidget* pointsWidget;
    QUndoStack undoStack;
    QPointer<QWidget> m_containerOwned;
};
