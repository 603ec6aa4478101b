#pragma once

#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QRect>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class QImage;
class VexaCanvas;
class VexaHistory;
class VexaSelectionPath;

// The selection of a document: one byte per canvas pixel (0 outside, 255 inside, 128 or more
// counts as selected), rows of maskStride() bytes, which is always wider than the canvas so
// that callers honour the stride. Every change is recorded in the document's history.
class VexaSelection : public QObject
{
    Q_OBJECT
public:
    // A canvas the mask cannot address (see canAddress) gives an empty 0 x 0 selection.
    VexaSelection(int width, int height, QObject* parent = nullptr);
    ~VexaSelection() override;

    // Whether a mask of width x height fits the host's int-sized interfaces: maskStride(),
    // and blocks of maskStride() x height bytes from VexaMemory::alloc.
    static bool canAddress(int width, int height);

    // SelectionMode in which addPath and addMask combine: New 0, Add 1, Subtract 2, Intersect 3.
    int combineMode = 0;

    virtual bool hasSelection() const;
    // The mask, writable; a caller that writes through it must call render() afterwards.
    virtual unsigned char* getMask();
    const unsigned char* mask() const { return m_mask.data(); }
    virtual int maskStride() const { return m_stride; }
    int width() const { return m_width; }
    int height() const { return m_height; }

    // Adopts `path`; feather is clamped to 0..99 pixels.
    virtual void addPath(VexaSelectionPath* path, float feather);
    // Combines a width x height mask (rows of `width` bytes) placed at (x, y); parts beyond the canvas are dropped.
    virtual void addMask(unsigned char* mask, int width, int height, int x, int y);
    // Replaces the selection by a canvas-sized mask with rows of maskStride() bytes.
    virtual void copyMask(unsigned char* mask);
    // A pending translation is what the user sees, so every change settles it first: changes
    // that build on the selection (Add, Subtract, Intersect, inverse) commit it into the mask,
    // changes that replace the selection (New, copyMask, clear, deselect, selectAll) drop it.
    // The outline then always matches the mask.
    // Empties the selection.
    virtual void clear();
    // Empties the selection: the selection is gone.
    virtual void deselect();
    virtual void inverse();
    void selectAll();
    // Refreshes the outline on `canvas` (null: every canvas showing this selection).
    virtual void render(VexaCanvas* canvas);

    virtual QPointF getTranslation() const { return m_translation; }
    virtual void setTranslation(const QPointF& offset);
    // Shifts the mask by the pending offset, rounded to whole pixels; what leaves the canvas is lost.
    virtual void applyTranslation();

    // Smallest rectangle holding every nonzero byte; empty without a selection.
    QRect boundingRect() const;
    // The mask as an 8-bit grey image of the canvas size.
    QImage toImage() const;

    // True while a pool thread changes a large mask: readers on this thread (the canvas's
    // outline) keep what they have until changed() is emitted.
    bool isBeingWritten() const { return m_beingWritten; }

    void setHistory(VexaHistory* history) { m_history = history; }
    // Used by undo: writes `rowCount` whole rows from `firstRow` on back without recording, from
    // rows packed one by one by VexaMaskOps::packRuns.
    void restoreRows(int firstRow, int rowCount, const std::vector<uint8_t>& packedRows);
    // Used by undo: inverts the mask without recording.
    void restoreInverse();

signals:
    void changed();
    void translationChanged();
    void renderRequested(VexaCanvas* canvas);

private:
    // Clears every canvas pixel outside `keep`, which lies within the canvas.
    void zeroOutside(std::vector<uint8_t>& mask, const QRect& keep) const;
    void modify(const QString& text, const std::function<void(std::vector<uint8_t>&)>& op);
    // Clears the pending translation; returns it in whole pixels when `keepShown`, for the
    // change to shift the mask by it, else (0, 0).
    QPoint settleTranslation(bool keepShown);
    void shift(std::vector<uint8_t>& mask, const QPoint& by) const;
    void invert(std::vector<uint8_t>& mask) const;
    void invertMask();

    int m_width;
    int m_height;
    int m_stride;
    std::vector<uint8_t> m_mask;
    QPointF m_translation;
    VexaHistory* m_history = nullptr;
    std::unique_ptr<VexaSelectionPath> m_lastPath;
    // Whether any byte is set, known until the mask may have changed: tools ask on every
    // pointer move, and a full scan of a large mask each time is wasted.
    mutable int m_nonEmpty = 0; // 1 yes, 0 no, -1 unknown
    bool m_beingWritten = false;
};
