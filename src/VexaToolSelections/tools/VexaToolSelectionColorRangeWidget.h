#pragma once

#include <QIcon>
#include <QWidget>

#include <memory>

namespace Ui {
class VexaToolSelectionColorRangeWidgetClass;
}
class VexaToolSelectionColorRange;

// The color range dialog: tolerance, the preview of the graded selection or of the image,
// OK and Cancel.
class VexaToolSelectionColorRangeWidget : public QWidget
{
    Q_OBJECT
public:
    explicit VexaToolSelectionColorRangeWidget(QWidget* parent = nullptr);
    ~VexaToolSelectionColorRangeWidget() override;

    void setTool(VexaToolSelectionColorRange* tool);
    // Puts the thumbnail chosen by the Quick View buttons on the preview.
    void updateCanvas();
    void updateButtons();
    void initIcons();
    Ui::VexaToolSelectionColorRangeWidgetClass* form() const { return ui.get(); }

protected:
    void showEvent(QShowEvent* event) override;

private slots:
    void on_toleranceSpin_valueChanged(int value);
    void on_okBtn_clicked();
    void on_cancelBtn_clicked();
    void on_selectionRadio_clicked();
    void on_imageRadio_clicked();

private:
    std::unique_ptr<Ui::VexaToolSelectionColorRangeWidgetClass> ui;
    QIcon newIcon, addIcon, substractIcon;
    VexaToolSelectionColorRange* tool = nullptr;
    bool showSelection = true;
};
