#pragma once

#include "VexaHistoryMemo.h"

#include <QPointer>

#include <cstdint>
#include <memory>
#include <vector>

class VexaSelection;

// Undo step of a selection change: keeps only the band of rows that changed, before and after,
// each row packed in runs (VexaMaskOps::packRuns).
class VexaSelectionMemo : public VexaHistoryMemo
{
public:
    // Returns null when nothing changed between the two masks.
    static std::unique_ptr<VexaSelectionMemo> create(VexaSelection* selection, const std::vector<uint8_t>& before,
                                     const std::vector<uint8_t>& after, int stride, const QString& text);

    // The undo step of an inversion, which is its own inverse: it keeps no rows.
    static std::unique_ptr<VexaSelectionMemo> inversion(VexaSelection* selection, const QString& text);
    void undo() override;
    void redo() override;
    QString text() const override { return m_text; }
    size_t byteCount() const { return m_before.size() + m_after.size(); }

    VexaSelectionMemo() = default;

private:
    void restore(const std::vector<uint8_t>& rows);

    QPointer<VexaSelection> m_selection;
    int m_firstRow = 0;
    int m_rowCount = 0;
    bool m_inversion = false;
    std::vector<uint8_t> m_before;
    std::vector<uint8_t> m_after;
    QString m_text;
};
