#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class VexaToolRectangularMarqueeWidgetClass;
}
class VexaCanvas;
class VexaToolRectangularMarquee;

// The X, Y, W, H panel of the rectangular marquee: shows the rectangle being dragged and
// sets it exactly when edited.
class VexaToolRectangularMarqueeWidget : public QWidget
{
    Q_OBJECT
public:
    explicit VexaToolRectangularMarqueeWidget(QWidget* parent = nullptr);
    ~VexaToolRectangularMarqueeWidget() override;

    void setRectangularMarqueeTool(VexaToolRectangularMarquee* tool);
    void initRegionValidators();
    // Shows the rectangle between the two corners, clamped to the canvas; W and H count
    // pixels inclusively.
    void setRegion(int x0, int y0, int x1, int y1);
    // A drag takes over from typing: the fields show the dragged rectangle again.
    void dropTyping();
    Ui::VexaToolRectangularMarqueeWidgetClass* form() const { return ui.get(); }

private slots:
    void onFieldReturnPressed();
    void onFieldEditingFinished();

private:
    VexaCanvas* documentCanvas() const;

    VexaToolRectangularMarquee* tool = nullptr;
    std::unique_ptr<Ui::VexaToolRectangularMarqueeWidgetClass> ui;
};
