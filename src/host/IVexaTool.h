#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;
class VexaContext;

// The interface every tool of a plug-in implements. The host creates tools through the
// plug-in's entry points, activates one per canvas, delivers canvas signals, key events and
// registered named events to it, and deletes it with its Qt parent.
class IVexaTool : public QObject
{
    Q_OBJECT
public:
    explicit IVexaTool(QObject* parent = nullptr);
    ~IVexaTool() override;

    QString toolName;
    QString toolCategory;
    QString toolId;
    QString toolDescription;
    QString toolVersion;
    VexaContext* context = nullptr;
    bool activated = false;

    // Tools swallow every event they are sent (key events from the canvas above all);
    // Qt's own object bookkeeping still runs so queued calls and deferred deletes work.
    bool event(QEvent* e) override;

    // Announces a named host event ("ESC", "DELETE", "DOUBLE_CLICK") for processEvent.
    void registerEvent(const QString& name);
    const QStringList& registeredEvents() const { return m_events; }

public slots:
    virtual void active(VexaContext* context) = 0;
    virtual void disActive() = 0;
    virtual void init();
    virtual void release();
    virtual QWidget* getWidget();
    virtual void toolUndo();
    virtual void toolRedo();
    virtual void afterUndo();
    virtual bool isActive();
    virtual bool eventRegistered(const QString& name);
    virtual void processEvent(const QString& name);

private:
    QStringList m_events;
};
