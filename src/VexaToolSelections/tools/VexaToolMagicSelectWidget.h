#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class VexaToolMagicSelectWidgetClass;
}
class VexaToolMagicSelection;

// The threshold field of the magic select tool.
class VexaToolMagicSelectWidget : public QWidget
{
    Q_OBJECT
public:
    explicit VexaToolMagicSelectWidget(QWidget* parent = nullptr);
    ~VexaToolMagicSelectWidget() override;

    void setMagicSelectTool(VexaToolMagicSelection* tool) { this->tool = tool; }
    Ui::VexaToolMagicSelectWidgetClass* form() const { return ui.get(); }

private slots:
    void on_thresholdEdit_textChanged(const QString& text);

private:
    VexaToolMagicSelection* tool = nullptr;
    std::unique_ptr<Ui::VexaToolMagicSelectWidgetClass> ui;
};
