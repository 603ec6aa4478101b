#include "IVexaTool.h"

#include <QEvent>

IVexaTool::IVexaTool(QObject* parent)
    : QObject(parent)
{
}

IVexaTool::~IVexaTool() = default;

bool IVexaTool::event(QEvent* e)
{
    switch (e->type()) {
    case QEvent::MetaCall:
    case QEvent::DeferredDelete:
    case QEvent::Timer:
    case QEvent::ChildAdded:
    case QEvent::ChildRemoved:
    case QEvent::ChildPolished:
    case QEvent::ThreadChange:
    case QEvent::DynamicPropertyChange:
        QObject::event(e);
        break;
    default:
        break;
    }
    return true;
}

void IVexaTool::registerEvent(const QString& name)
{
    if (!m_events.contains(name))
        m_events.append(name);
}

void IVexaTool::init() {}
void IVexaTool::release() {}
QWidget* IVexaTool::getWidget() { return nullptr; }
void IVexaTool::toolUndo() {}
void IVexaTool::toolRedo() {}
void IVexaTool::afterUndo() {}
bool IVexaTool::isActive() { return activated; }
bool IVexaTool::eventRegistered(const QString& name) { return m_events.contains(name); }
void IVexaTool::processEvent(const QString&) {}
