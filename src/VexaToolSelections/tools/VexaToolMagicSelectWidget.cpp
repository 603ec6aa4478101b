#include "VexaToolMagicSelectWidget.h"

#include "VexaToolMagicSelection.h"
#include "ui_VexaToolMagicSelectWidget.h"

#include <QIntValidator>

namespace {
// Qt lets a number above the top through while typing when it has no more digits than the
// top (300 against 255); a threshold field must refuse it outright.
class StrictIntValidator : public QIntValidator
{
public:
    using QIntValidator::QIntValidator;
    State validate(QString& input, int& pos) const override
    {
        const State state = QIntValidator::validate(input, pos);
        bool number = false;
        const int value = input.toInt(&number);
        return state == Intermediate && number && value > top() ? Invalid : state;
    }
};
} // namespace

VexaToolMagicSelectWidget::VexaToolMagicSelectWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::VexaToolMagicSelectWidgetClass>())
{
    ui->setupUi(this);
    ui->thresholdEdit->setValidator(new StrictIntValidator(0, 255, this));
}

VexaToolMagicSelectWidget::~VexaToolMagicSelectWidget() = default;

void VexaToolMagicSelectWidget::on_thresholdEdit_textChanged(const QString& text)
{
    // An empty field while typing reads as 0.
    if (tool)
        tool->threshold = float(text.toInt(nullptr, 10));
}
