#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class VexaToolSelectionWidgetClass;
}
class VexaToolSelectionBase;

// The options bar of every pointing selection tool: four mode buttons and the feather field.
// The check mark shows the mode in effect, including one forced by modifier keys.
class VexaToolSelectionWidget : public QWidget
{
    Q_OBJECT
public:
    VexaToolSelectionWidget(VexaToolSelectionBase* tool, QWidget* parent = nullptr);
    ~VexaToolSelectionWidget() override;

    // Checks the button of the tool's effective mode without changing the clicked mode.
    void updateButtons();
    void initIcons();
    Ui::VexaToolSelectionWidgetClass* form() const { return ui.get(); }

private slots:
    void on_intersectBtn_clicked();
    void on_substractBtn_clicked();
    void on_addBtn_clicked();
    void on_newBtn_clicked();
    void on_featherSpin_valueChanged(double value);

private:
    VexaToolSelectionBase* tool;
    bool clickEnabled = true;
    std::unique_ptr<Ui::VexaToolSelectionWidgetClass> ui;
};
