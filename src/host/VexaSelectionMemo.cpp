#include "VexaSelectionMemo.h"

#include "VexaMaskOps.h"
#include "VexaSelection.h"

#include <cstring>

std::unique_ptr<VexaSelectionMemo> VexaSelectionMemo::create(VexaSelection* selection, const std::vector<uint8_t>& before,
                                             const std::vector<uint8_t>& after, int stride, const QString& text)
{
    if (before.size() != after.size() || stride <= 0)
        return nullptr;
    const int rows = int(before.size() / size_t(stride));
    int first = 0;
    while (first < rows && std::memcmp(&before[size_t(first) * stride], &after[size_t(first) * stride], size_t(stride)) == 0)
        ++first;
    if (first == rows)
        return nullptr;
    int last = rows - 1;
    while (last > first && std::memcmp(&before[size_t(last) * stride], &after[size_t(last) * stride], size_t(stride)) == 0)
        --last;
    auto memo = std::make_unique<VexaSelectionMemo>();
    memo->m_selection = selection;
    memo->m_firstRow = first;
    memo->m_rowCount = last - first + 1;
    // Row by row, so that undo writes each row straight into the mask.
    for (int y = first; y <= last; ++y) {
        VexaMaskOps::packRuns(&before[size_t(y) * stride], size_t(stride), memo->m_before);
        VexaMaskOps::packRuns(&after[size_t(y) * stride], size_t(stride), memo->m_after);
    }
    memo->m_before.shrink_to_fit();
    memo->m_after.shrink_to_fit();
    memo->m_text = text;
    return memo;
}

std::unique_ptr<VexaSelectionMemo> VexaSelectionMemo::inversion(VexaSelection* selection, const QString& text)
{
    auto memo = std::make_unique<VexaSelectionMemo>();
    memo->m_selection = selection;
    memo->m_inversion = true;
    memo->m_text = text;
    return memo;
}

void VexaSelectionMemo::restore(const std::vector<uint8_t>& rows)
{
    if (!m_selection)
        return;
    if (m_inversion)
        m_selection->restoreInverse();
    else
        m_selection->restoreRows(m_firstRow, m_rowCount, rows);
}

void VexaSelectionMemo::undo() { restore(m_before); }
void VexaSelectionMemo::redo() { restore(m_after); }
