#include "VexaToolLassoPolygonWidget.h"

#include "VexaToolLassoPolygon.h"
#include "ui_VexaToolLassoPolygonWidget.h"

#include <QUndoStack>

VexaToolLassoPolygonWidget::VexaToolLassoPolygonWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::VexaToolLassoPolygonWidgetClass>())
{
    ui->setupUi(this);
}

VexaToolLassoPolygonWidget::~VexaToolLassoPolygonWidget() = default;

void VexaToolLassoPolygonWidget::setLassoPolygonTool(VexaToolLassoPolygon* t) { tool = t; }

void VexaToolLassoPolygonWidget::updateButtons()
{
    if (!tool)
        return;
    ui->undoBtn->setEnabled(tool->getUndoStack()->canUndo());
    ui->redoBtn->setEnabled(tool->getUndoStack()->canRedo());
}

void VexaToolLassoPolygonWidget::on_undoBtn_clicked()
{
    if (tool)
        tool->toolUndo();
}

void VexaToolLassoPolygonWidget::on_redoBtn_clicked()
{
    if (tool)
        tool->toolRedo();
}

void VexaToolLassoPolygonWidget::on_clearBtn_clicked()
{
    if (tool)
        tool->clearPath();
}
