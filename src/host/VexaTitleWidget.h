#pragma once

#include <QPoint>
#include <QWidget>

class QLabel;
class QToolButton;

// The title bar of the host's framed windows: the title, optional buttons, and dragging
// the window by it.
class VexaTitleWidget : public QWidget
{
    Q_OBJECT
public:
    enum TitleButtonFlag { NoButton = 0x0, CloseButton = 0x1, MinimizeButton = 0x2 };

    explicit VexaTitleWidget(TitleButtonFlag buttons, QWidget* parent = nullptr);
    ~VexaTitleWidget() override;

    void setTitle(const QString& title);
    QString title() const;

signals:
    void closeClicked();
    void minimizeClicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QLabel* m_title;
    QPoint m_grab;
    bool m_dragging = false;
};
