#include "VexaHistory.h"

#include "VexaHistoryMemo.h"

// The steps of one gesture, undone in reverse order and redone in order.
class VexaCompositeMemo : public VexaHistoryMemo
{
public:
    void undo() override
    {
        for (auto it = steps.rbegin(); it != steps.rend(); ++it)
            (*it)->undo();
    }
    void redo() override
    {
        for (auto& step : steps)
            step->redo();
    }
    // The last step names an unnamed gesture: "Selection" rather than the "Deselect" it began with.
    QString text() const override { return !name.isEmpty() || steps.empty() ? name : steps.back()->text(); }

    std::vector<std::unique_ptr<VexaHistoryMemo>> steps;
    QString name;
};

VexaHistory::VexaHistory(QObject* parent)
    : QObject(parent)
{
}

VexaHistory::~VexaHistory() = default;

void VexaHistory::beginGesture(const QString& text)
{
    endGesture();
    m_gesture = std::make_unique<VexaCompositeMemo>();
    m_gesture->name = text;
}

QString VexaHistory::undoText() const { return canUndo() ? m_memos[size_t(m_index - 1)]->text() : QString(); }

QString VexaHistory::redoText() const { return canRedo() ? m_memos[size_t(m_index)]->text() : QString(); }

void VexaHistory::endGesture()
{
    if (!m_gesture)
        return;
    std::unique_ptr<VexaCompositeMemo> gesture = std::move(m_gesture);
    if (gesture->steps.size() == 1 && gesture->name.isEmpty())
        pushNewMemo(gesture->steps.front().release());
    else if (!gesture->steps.empty())
        pushNewMemo(gesture.release());
}

void VexaHistory::pushNewMemo(VexaHistoryMemo* memo)
{
    if (!memo)
        return;
    std::unique_ptr<VexaHistoryMemo> owned(memo);
    if (m_gesture) {
        // Undone and redone as a part of the gesture's step once the gesture ends.
        m_gesture->steps.push_back(std::move(owned));
        return;
    }
    m_memos.erase(m_memos.begin() + m_index, m_memos.end());
    m_memos.push_back(std::move(owned));
    while (int(m_memos.size()) > m_limit)
        m_memos.erase(m_memos.begin());
    m_index = int(m_memos.size());
    emit changed();
}

void VexaHistory::setLimit(int limit)
{
    m_limit = qMax(1, limit);
    while (int(m_memos.size()) > m_limit) {
        m_memos.erase(m_memos.begin());
        m_index = qMax(0, m_index - 1);
    }
}

void VexaHistory::undo()
{
    endGesture();
    if (!canUndo())
        return;
    m_replaying = true;
    m_memos[size_t(--m_index)]->undo();
    m_replaying = false;
    emit changed();
}

void VexaHistory::redo()
{
    endGesture();
    if (!canRedo())
        return;
    m_replaying = true;
    m_memos[size_t(m_index++)]->redo();
    m_replaying = false;
    emit changed();
}

void VexaHistory::clear()
{
    m_gesture.reset();
    m_memos.clear();
    m_index = 0;
    emit changed();
}
