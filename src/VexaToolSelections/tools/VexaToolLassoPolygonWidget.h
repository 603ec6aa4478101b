#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class VexaToolLassoPolygonWidgetClass;
}
class VexaToolLassoPolygon;

// The control-points panel of the polygonal lasso: undo, redo and clear of corners.
class VexaToolLassoPolygonWidget : public QWidget
{
    Q_OBJECT
public:
    explicit VexaToolLassoPolygonWidget(QWidget* parent = nullptr);
    ~VexaToolLassoPolygonWidget() override;

    void setLassoPolygonTool(VexaToolLassoPolygon* tool);
    Ui::VexaToolLassoPolygonWidgetClass* form() const { return ui.get(); }

public slots:
    void updateButtons();

private slots:
    void on_undoBtn_clicked();
    void on_redoBtn_clicked();
    void on_clearBtn_clicked();

private:
    VexaToolLassoPolygon* tool = nullptr;
    std::unique_ptr<Ui::VexaToolLassoPolygonWidgetClass> ui;
};
