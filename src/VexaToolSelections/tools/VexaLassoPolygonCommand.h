#pragma once

#include <QUndoCommand>

#include <memory>

class VexaSelectionPath;
class VexaToolLassoPolygon;

// One corner edit of a polygon being built: the path before and after, as copies.
class VexaLassoPolygonCommand : public QUndoCommand
{
public:
    // Takes `before`; copies the tool's current path as the state after.
    VexaLassoPolygonCommand(VexaToolLassoPolygon* tool, VexaSelectionPath* before);
    ~VexaLassoPolygonCommand() override;

    void undo() override;
    void redo() override;

private:
    VexaToolLassoPolygon* tool;
    std::unique_ptr<VexaSelectionPath> before;
    std::unique_ptr<VexaSelectionPath> after;
};
