#include "VexaLassoPolygonCommand.h"

#include "VexaSelectionPath.h"
#include "VexaToolLassoPolygon.h"

VexaLassoPolygonCommand::VexaLassoPolygonCommand(VexaToolLassoPolygon* tool, VexaSelectionPath* before)
    : tool(tool)
    , before(before)
    , after(tool->getPath())
{
}

VexaLassoPolygonCommand::~VexaLassoPolygonCommand() = default;

void VexaLassoPolygonCommand::undo() { tool->setPath(before.get()); }
void VexaLassoPolygonCommand::redo() { tool->setPath(after.get()); }
