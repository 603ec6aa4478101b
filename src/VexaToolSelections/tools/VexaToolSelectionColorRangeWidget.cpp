#include "VexaToolSelectionColorRangeWidget.h"

#include "VexaConfig.h"
#include "VexaToolColorRangeCanvas.h"
#include "VexaToolSelectionColorRange.h"
#include "ui_VexaToolSelectionColorRangeWidget.h"

#include <QListView>

VexaToolSelectionColorRangeWidget::VexaToolSelectionColorRangeWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::VexaToolSelectionColorRangeWidgetClass>())
{
    ui->setupUi(this);
    ui->comboBox->setView(new QListView(ui->comboBox)); // a plain list, whatever the style
    connect(ui->toleranceSpin, SIGNAL(valueChanged(int)), ui->toleranceSlider, SLOT(setValue(int)));
    connect(ui->toleranceSlider, SIGNAL(valueChanged(int)), ui->toleranceSpin, SLOT(setValue(int)));
    initIcons();
    showSelection = true;
    updateCanvas();
}

VexaToolSelectionColorRangeWidget::~VexaToolSelectionColorRangeWidget() = default;

void VexaToolSelectionColorRangeWidget::setTool(VexaToolSelectionColorRange* t)
{
    tool = t;
    updateButtons();
    updateCanvas();
}

void VexaToolSelectionColorRangeWidget::updateCanvas()
{
    if (!tool)
        return;
    ui->canvas->setImage(showSelection ? tool->selectionThumbnail() : tool->imageThumbnail());
}

void VexaToolSelectionColorRangeWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    updateCanvas();
}

void VexaToolSelectionColorRangeWidget::initIcons()
{
    VexaConfig* config = VexaConfig::getInstance();
    const QString base = QStringLiteral("./data/skin/vexapix_replace_style/icon/selection-mode/");
    newIcon = QIcon(config->getStyleImageName(base + QStringLiteral("picker-new.png")));
    addIcon = QIcon(config->getStyleImageName(base + QStringLiteral("picker-add.png")));
    substractIcon = QIcon(config->getStyleImageName(base + QStringLiteral("picker-substract.png")));
    // The picking modes are not offered: the row is built for the style sheet, and hidden.
    ui->modeLabel->hide();
    const QIcon* icons[] = {&newIcon, &addIcon, &substractIcon};
    QPushButton* buttons[] = {ui->newModeBtn, ui->addModeBtn, ui->substractModeBtn};
    for (int i = 0; i < 3; ++i) {
        buttons[i]->hide();
        buttons[i]->resize(32, 32);
        buttons[i]->setIcon(*icons[i]);
    }
}

void VexaToolSelectionColorRangeWidget::updateButtons()
{
    QPushButton* buttons[] = {ui->newModeBtn, ui->addModeBtn, ui->substractModeBtn};
    for (int mode = 0; mode < 3; ++mode) {
        const bool current = tool && tool->getPickMode() == mode;
        buttons[mode]->setStyleSheet(QStringLiteral("background-color:") + (current ? QStringLiteral("#ff6600")
                                                                                   : QStringLiteral("#999999")));
    }
}

void VexaToolSelectionColorRangeWidget::on_toleranceSpin_valueChanged(int value)
{
    if (!tool)
        return;
    tool->setTolerance(value);
    updateCanvas();
}

void VexaToolSelectionColorRangeWidget::on_okBtn_clicked()
{
    if (tool)
        tool->apply();
}

void VexaToolSelectionColorRangeWidget::on_cancelBtn_clicked()
{
    if (tool)
        tool->disActive();
}

void VexaToolSelectionColorRangeWidget::on_selectionRadio_clicked()
{
    showSelection = true;
    updateCanvas();
}

void VexaToolSelectionColorRangeWidget::on_imageRadio_clicked()
{
    showSelection = false;
    updateCanvas();
}
