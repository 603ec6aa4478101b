#include "VexaActionManager.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMessageBox>
#include <QMap>

VexaActionManager::VexaActionManager(QObject* parent)
    : QObject(parent)
{
}

VexaActionManager* VexaActionManager::getInstance(const QString& registry)
{
    // Managers hold QActions, so they live under the application object and die with it;
    // a later call (a new application in tests) builds a fresh one.
    static QMap<QString, QPointer<VexaActionManager>> managers;
    QPointer<VexaActionManager>& slot = managers[registry];
    if (!slot) {
        slot = new VexaActionManager(QCoreApplication::instance());
        if (registry.isEmpty())
            slot->addStandardActions();
    }
    return slot;
}

QAction* VexaActionManager::getActionByName(const QString& name) const { return m_actions.value(name); }

void VexaActionManager::addAction(const QString& name, QAction* action)
{
    if (!action)
        return;
    action->setParent(this);
    m_actions.insert(name, action);
}

void VexaActionManager::addStandardActions()
{
    auto* del = new QAction(tr("Delete"), this);
    del->setObjectName(QStringLiteral("Delete"));
    del->setShortcut(QKeySequence::Delete);
    connect(del, &QAction::triggered, this, [] {
        VexaContext* context = VexaContextManager::getInstance()->getCurrentContext();
        QString why;
        if (context && context->deleteSelectedPixels(&why)) {
            if (VexaCanvas* canvas = context->getCanvas())
                canvas->update();
        } else if (VexaCanvas* canvas = context ? context->getCanvas() : nullptr; canvas && !why.isEmpty()) {
            // Not modal: a shortcut or a tool's OK may trigger it, and neither should wait on it.
            auto* box = new QMessageBox(QMessageBox::Warning, tr("Delete"), why, QMessageBox::Ok, canvas->window());
            box->setObjectName(QStringLiteral("deleteRefused"));
            box->setAttribute(Qt::WA_DeleteOnClose);
            box->open();
        }
    });
    addAction(QStringLiteral("Delete"), del);
}
