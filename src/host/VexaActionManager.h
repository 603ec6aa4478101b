#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

class QAction;

// Named host actions, grouped in registries. The default registry (empty name) holds the
// editing actions every host offers, "Delete" among them, acting on the current document.
class VexaActionManager : public QObject
{
    Q_OBJECT
public:
    static VexaActionManager* getInstance(const QString& registry);

    QAction* getActionByName(const QString& name) const;
    // Adds `action` under `name`; the manager takes it as a child.
    void addAction(const QString& name, QAction* action);

private:
    explicit VexaActionManager(QObject* parent);
    void addStandardActions();
    QHash<QString, QPointer<QAction>> m_actions;
};
