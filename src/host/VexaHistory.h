#pragma once

#include <QObject>

#include <memory>
#include <vector>

class VexaHistoryMemo;

// Undo history of a document: a list of memos and the position between done and undone ones.
class VexaHistory : public QObject
{
    Q_OBJECT
public:
    explicit VexaHistory(QObject* parent = nullptr);
    ~VexaHistory() override;

    // Takes ownership; drops what could still be redone. Null is ignored.
    virtual void pushNewMemo(VexaHistoryMemo* memo);

    bool canUndo() const { return m_index > 0; }
    bool canRedo() const { return m_index < int(m_memos.size()); }
    int count() const { return int(m_memos.size()); }
    int index() const { return m_index; }
    // The oldest steps are forgotten beyond this many.
    void setLimit(int limit);
    int limit() const { return m_limit; }
    // While replaying a memo, changes must not record new ones.
    bool isReplaying() const { return m_replaying; }

public slots:
    void undo();
    void redo();
    void clear();

signals:
    void changed();

private:
    std::vector<std::unique_ptr<VexaHistoryMemo>> m_memos;
    int m_index = 0;
    int m_limit = 64;
    bool m_replaying = false;
};
