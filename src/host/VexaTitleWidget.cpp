#include "VexaTitleWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QStyle>
#include <QToolButton>

VexaTitleWidget::VexaTitleWidget(TitleButtonFlag buttons, QWidget* parent)
    : QWidget(parent)
    , m_title(new QLabel(this))
{
    setObjectName(QStringLiteral("VexaTitleWidget"));
    setAutoFillBackground(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    layout->addWidget(m_title, 1);
    if (buttons & MinimizeButton) {
        auto* min = new QToolButton(this);
        min->setIcon(style()->standardIcon(QStyle::SP_TitleBarMinButton));
        min->setAutoRaise(true);
        connect(min, &QToolButton::clicked, this, &VexaTitleWidget::minimizeClicked);
        layout->addWidget(min);
    }
    if (buttons & CloseButton) {
        auto* close = new QToolButton(this);
        close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
        close->setAutoRaise(true);
        connect(close, &QToolButton::clicked, this, &VexaTitleWidget::closeClicked);
        layout->addWidget(close);
    }
}

VexaTitleWidget::~VexaTitleWidget() = default;

void VexaTitleWidget::setTitle(const QString& title) { m_title->setText(title); }
QString VexaTitleWidget::title() const { return m_title->text(); }

void VexaTitleWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        m_dragging = true;
        m_grab = event->globalPosition().toPoint() - window()->frameGeometry().topLeft();
    }
}

void VexaTitleWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging)
        window()->move(event->globalPosition().toPoint() - m_grab);
}

void VexaTitleWidget::mouseReleaseEvent(QMouseEvent*) { m_dragging = false; }
