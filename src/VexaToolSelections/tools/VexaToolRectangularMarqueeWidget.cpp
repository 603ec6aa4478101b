#include "VexaToolRectangularMarqueeWidget.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaToolRectangularMarquee.h"
#include "ui_VexaToolRectangularMarqueeWidget.h"

#include <QIntValidator>

VexaCanvas* VexaToolRectangularMarqueeWidget::documentCanvas() const
{
    // The document the tool works on, which need not be the one in front; before the tool
    // has one, the current document.
    VexaContext* context = tool && tool->context ? tool->context : VexaContextManager::getInstance()->getCurrentContext();
    return context ? context->getCanvas() : nullptr;
}

VexaToolRectangularMarqueeWidget::VexaToolRectangularMarqueeWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::VexaToolRectangularMarqueeWidgetClass>())
{
    ui->setupUi(this);
}

VexaToolRectangularMarqueeWidget::~VexaToolRectangularMarqueeWidget() = default;

void VexaToolRectangularMarqueeWidget::setRectangularMarqueeTool(VexaToolRectangularMarquee* t)
{
    tool = t;
    connect(ui->startXEdit, SIGNAL(textChanged(QString)), tool, SLOT(on_startXEdit_textChanged(QString)));
    connect(ui->startYEdit, SIGNAL(textChanged(QString)), tool, SLOT(on_startYEdit_textChanged(QString)));
    connect(ui->widthEdit, SIGNAL(textChanged(QString)), tool, SLOT(on_widthEdit_textChanged(QString)));
    connect(ui->heightEdit, SIGNAL(textChanged(QString)), tool, SLOT(on_heightEdit_textChanged(QString)));
    // Enter applies; leaving a field applies only what the user typed there. Focus that leaves
    // because the tool was switched, or a field merely clicked into, applies nothing: the
    // fields may still show a rectangle from long ago.
    for (QLineEdit* field : {ui->startXEdit, ui->startYEdit, ui->widthEdit, ui->heightEdit}) {
        connect(field, SIGNAL(returnPressed()), this, SLOT(onFieldReturnPressed()));
        connect(field, SIGNAL(editingFinished()), this, SLOT(onFieldEditingFinished()));
    }
    connect(ui->okBtn, SIGNAL(clicked()), tool, SLOT(on_okBtn_clicked()));
}

void VexaToolRectangularMarqueeWidget::onFieldReturnPressed()
{
    if (auto* field = qobject_cast<QLineEdit*>(sender()))
        field->setModified(false); // the editingFinished that follows applies nothing more
    if (tool)
        tool->applyTypedRegion();
}

void VexaToolRectangularMarqueeWidget::onFieldEditingFinished()
{
    auto* field = qobject_cast<QLineEdit*>(sender());
    if (!field || !field->isModified())
        return;
    field->setModified(false);
    if (tool)
        tool->applyTypedRegion();
}

void VexaToolRectangularMarqueeWidget::dropTyping()
{
    for (QLineEdit* field : {ui->startXEdit, ui->startYEdit, ui->widthEdit, ui->heightEdit})
        field->setModified(false);
}

void VexaToolRectangularMarqueeWidget::initRegionValidators()
{
    VexaCanvas* canvas = documentCanvas();
    if (!canvas)
        return;
    const int w = canvas->getCanvasWidth(), h = canvas->getCanvasHeight();
    ui->startXEdit->setValidator(new QIntValidator(0, w, ui->startXEdit));
    ui->widthEdit->setValidator(new QIntValidator(0, w, ui->widthEdit));
    ui->startYEdit->setValidator(new QIntValidator(0, h, ui->startYEdit));
    ui->heightEdit->setValidator(new QIntValidator(0, h, ui->heightEdit));
}

void VexaToolRectangularMarqueeWidget::setRegion(int x0, int y0, int x1, int y1)
{
    VexaCanvas* canvas = documentCanvas();
    if (!canvas)
        return;
    const int W = canvas->getCanvasWidth(), H = canvas->getCanvasHeight();
    if (W <= 0 || H <= 0)
        return; // a canvas showing no document has no pixel to clamp to
    // Each setText below may run one of the tool's text slots, which writes the shown value
    // back into the rectangle and calls this again; it settles once no text changes.
    // A field the user is typing in keeps its text: rewritten after every key press (a cleared
    // field to "0", a value to its clamp) it could not be typed at all.
    auto show = [](QLineEdit* field, int value) {
        if (!field->isModified())
            field->setText(QString::number(value));
    };
    const int sx = qBound(0, x0, W - 1);
    const int sy = qBound(0, y0, H - 1);
    show(ui->startXEdit, sx);
    show(ui->startYEdit, sy);
    const int w = qBound(0, x1, W - 1) - sx;
    show(ui->widthEdit, w < 1 ? 1 : w + 1);
    const int h = qBound(0, y1, H - 1) - sy;
    show(ui->heightEdit, h < 1 ? 1 : h + 1);
}
