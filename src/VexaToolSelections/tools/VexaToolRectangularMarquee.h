#pragma once

#include "VexaToolSelectionBase.h"

#include <QPointer>

class VexaToolRectangularMarqueeWidget;

// Selects an axis-aligned rectangle dragged on the canvas (Shift: a square) or typed into its
// X, Y, W, H panel.
class VexaToolRectangularMarquee : public VexaToolSelectionBase
{
    Q_OBJECT
public:
    explicit VexaToolRectangularMarquee(QObject* parent = nullptr);
    ~VexaToolRectangularMarquee() override;

    void active(VexaContext* context) override;
    void disActive() override;
    QWidget* getWidget() override;
    void apply();
    // The panel's apply: only an active tool and a rectangle with area. Applying an empty one
    // would move X and Y back to 0 under the user's hands while the other fields are still to
    // be typed.
    void applyTypedRegion();
    VexaToolRectangularMarqueeWidget* getRegionWidget() const { return regionWidget; }

public slots:
    void on_startXEdit_textChanged(const QString& text);
    void on_startYEdit_textChanged(const QString& text);
    void on_widthEdit_textChanged(const QString& text);
    void on_heightEdit_textChanged(const QString& text);
    void on_okBtn_clicked();

protected slots:
    void onMouseReleased(int x, int y) override;
    void onMouseMoved(int x, int y) override;
    void onMousePressed(int x, int y) override;
    void onDrawFeedback() override;
    void onMouseEntered() override;

private:
    void showRegion();
    void textEdited();

    double startX = -1, startY = -1;
    double endX = 0, endY = 0;
    QWidget* container;
    VexaToolRectangularMarqueeWidget* regionWidget;
    bool feedbackVisible = false;
    QPointer<QWidget> m_containerOwned;
};
