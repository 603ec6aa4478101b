#pragma once

#include <QObject>
#include <QPointer>

class VexaContext;

// Which document the user is working on.
class VexaContextManager : public QObject
{
    Q_OBJECT
public:
    static VexaContextManager* getInstance();

    // May be null: no document is open.
    VexaContext* getCurrentContext() const;
    void setCurrentContext(VexaContext* context);

signals:
    void currentContextChanged(VexaContext* context);

private:
    VexaContextManager() = default;
    QPointer<VexaContext> m_current;
};
