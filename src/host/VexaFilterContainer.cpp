#include "VexaFilterContainer.h"

#include <QEvent>
#include <QLayout>
#include <QVBoxLayout>

VexaFilterContainer::VexaFilterContainer(QWidget* content, VexaTitleWidget::TitleButtonFlag buttons, bool resizable,
                                         QWidget* parent, bool stayOnTop)
    : VexaDialog(parent, Qt::Dialog | Qt::FramelessWindowHint | (stayOnTop ? Qt::WindowStaysOnTopHint : Qt::WindowFlags()))
    , m_content(content)
    , m_title(new VexaTitleWidget(buttons, this))
{
    setObjectName(QStringLiteral("VexaFilterContainer"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    if (m_content) {
        m_content->setParent(this);
        layout->addWidget(m_content, 1);
        m_title->setTitle(m_content->windowTitle());
        setWindowTitle(m_content->windowTitle());
        m_content->installEventFilter(this);
    }
    if (!resizable)
        layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_title, &VexaTitleWidget::closeClicked, this, &QDialog::reject);
    connect(m_title, &VexaTitleWidget::minimizeClicked, this, &QWidget::showMinimized);
}

VexaFilterContainer::~VexaFilterContainer() = default;

bool VexaFilterContainer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_content && event->type() == QEvent::WindowTitleChange) {
        m_title->setTitle(m_content->windowTitle());
        setWindowTitle(m_content->windowTitle());
    }
    return VexaDialog::eventFilter(watched, event);
}
