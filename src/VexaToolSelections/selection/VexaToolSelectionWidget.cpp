#include "VexaToolSelectionWidget.h"

#include "VexaConfig.h"
#include "VexaToolSelectionBase.h"
#include "ui_VexaToolSelectionWidget.h"

#include <QIcon>

VexaToolSelectionWidget::VexaToolSelectionWidget(VexaToolSelectionBase* tool, QWidget* parent)
    : QWidget(parent)
    , tool(tool)
    , ui(std::make_unique<Ui::VexaToolSelectionWidgetClass>())
{
    ui->setupUi(this);
    // The button keeps its own name as the first line; the second tells the way to subtract
    // that works where the window manager takes Alt + drag.
    ui->substractBtn->setToolTip(ui->substractBtn->toolTip() + QLatin1Char('\n')
                                 + tr("Drag with the right mouse button to subtract in any mode"));
    initIcons();
    clickEnabled = true;
}

VexaToolSelectionWidget::~VexaToolSelectionWidget() = default;

void VexaToolSelectionWidget::initIcons()
{
    VexaConfig* config = VexaConfig::getInstance();
    const QString base = QStringLiteral("./data/skin/vexapix_replace_style/icon/selection-mode/");
    ui->newBtn->setIcon(QIcon(config->getStyleImageName(base + QStringLiteral("selection_new.png"))));
    ui->addBtn->setIcon(QIcon(config->getStyleImageName(base + QStringLiteral("selection_add.png"))));
    ui->substractBtn->setIcon(QIcon(config->getStyleImageName(base + QStringLiteral("selection_substract.png"))));
    ui->intersectBtn->setIcon(QIcon(config->getStyleImageName(base + QStringLiteral("selection_intersect.png"))));
}

void VexaToolSelectionWidget::updateButtons()
{
    clickEnabled = false;
    switch (tool->getMode()) {
    case 0:
        ui->newBtn->click();
        break;
    case 1:
        ui->addBtn->click();
        break;
    case 2:
        ui->substractBtn->click();
        break;
    case 3:
        ui->intersectBtn->click();
        break;
    default:
        break;
    }
    clickEnabled = true;
}

void VexaToolSelectionWidget::on_intersectBtn_clicked()
{
    if (clickEnabled)
        tool->setClickedMode(3);
}

void VexaToolSelectionWidget::on_substractBtn_clicked()
{
    if (clickEnabled)
        tool->setClickedMode(2);
}

void VexaToolSelectionWidget::on_addBtn_clicked()
{
    if (clickEnabled)
        tool->setClickedMode(1);
}

void VexaToolSelectionWidget::on_newBtn_clicked()
{
    if (clickEnabled)
        tool->setClickedMode(0);
}

void VexaToolSelectionWidget::on_featherSpin_valueChanged(double value)
{
    tool->setFeatherRadius(float(qBound(0.0, value, 99.0)));
}
