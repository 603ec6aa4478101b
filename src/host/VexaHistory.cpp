#include "VexaHistory.h"

#include "VexaHistoryMemo.h"

VexaHistory::VexaHistory(QObject* parent)
    : QObject(parent)
{
}

VexaHistory::~VexaHistory() = default;

void VexaHistory::pushNewMemo(VexaHistoryMemo* memo)
{
    if (!memo)
        return;
    std::unique_ptr<VexaHistoryMemo> owned(memo);
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
    if (!canUndo())
        return;
    m_replaying = true;
    m_memos[size_t(--m_index)]->undo();
    m_replaying = false;
    emit changed();
}

void VexaHistory::redo()
{
    if (!canRedo())
        return;
    m_replaying = true;
    m_memos[size_t(m_index++)]->redo();
    m_replaying = false;
    emit changed();
}

void VexaHistory::clear()
{
    m_memos.clear();
    m_index = 0;
    emit changed();
}
