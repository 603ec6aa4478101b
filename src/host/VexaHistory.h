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
    // What the next undo and redo would undo or redo ("Selection", "Delete"); empty when none.
    QString undoText() const;
    QString redoText() const;

    // One user gesture is one undo step: the memos pushed between beginGesture() and
    // endGesture() become a single step (a shape that first clears the old selection, then
    // adds itself, is undone at once). Beginning again, undo and redo end an open gesture.
    // A gesture with a name is one step under that name whatever it holds ("Quick Select" for
    // a selection, its inversion and a deletion); without one it is named by its last step.
    void beginGesture(const QString& text = QString());
    void endGesture();
    bool inGesture() const { return m_gesture != nullptr; }

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
    std::unique_ptr<class VexaCompositeMemo> m_gesture;
};
