#include "VexaSelection.h"

#include "VexaBackground.h"
#include "VexaHistory.h"
#include "VexaMaskOps.h"
#include "VexaSelectionMemo.h"
#include "VexaSelectionPath.h"

#include <QImage>
#include <QtMath>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace {
qsizetype strideFor(qsizetype width)
{
    // At least one padding byte and rows on 8-byte boundaries.
    return ((width + 1) + 7) & ~qsizetype(7);
}
int addressable(int width, int height, int size) { return VexaSelection::canAddress(width, height) ? qMax(0, size) : 0; }
} // namespace

bool VexaSelection::canAddress(int width, int height)
{
    const qsizetype w = qMax(0, width), h = qMax(0, height);
    return strideFor(w) * h <= std::numeric_limits<int>::max();
}

VexaSelection::VexaSelection(int width, int height, QObject* parent)
    : QObject(parent)
    , m_width(addressable(width, height, width))
    , m_height(addressable(width, height, height))
    , m_stride(int(strideFor(m_width)))
    , m_mask(size_t(m_stride) * size_t(m_height), 0)
{
}

VexaSelection::~VexaSelection() = default;

bool VexaSelection::hasSelection() const
{
    if (m_nonEmpty < 0) {
        m_nonEmpty = 0;
        for (int y = 0; y < m_height && !m_nonEmpty; ++y) {
            const uint8_t* row = m_mask.data() + size_t(y) * size_t(m_stride);
            m_nonEmpty = std::any_of(row, row + m_width, [](uint8_t v) { return v != 0; });
        }
    }
    return m_nonEmpty == 1;
}

unsigned char* VexaSelection::getMask()
{
    m_nonEmpty = -1; // the caller may write
    return m_mask.data();
}

void VexaSelection::modify(const QString& text, const std::function<void(std::vector<uint8_t>&)>& op)
{
    const bool record = m_history && !m_history->isReplaying();
    std::unique_ptr<VexaSelectionMemo> memo;
    auto change = [&] {
        std::vector<uint8_t> before;
        if (record)
            before = m_mask;
        op(m_mask);
        if (record)
            memo = VexaSelectionMemo::create(this, before, m_mask, m_stride, text);
        return true;
    };
    // The copy, the change and the comparison for undo take a tenth of a second or more on a
    // camera-sized mask: a pool thread makes them while the windows go on drawing.
    if (m_mask.size() >= VexaAsideBytes) {
        m_beingWritten = true;
        VexaRunAside(change);
        m_beingWritten = false;
    } else {
        change();
    }
    m_nonEmpty = -1;
    if (memo)
        m_history->pushNewMemo(memo.release());
    emit changed();
}

void VexaSelection::zeroOutside(std::vector<uint8_t>& mask, const QRect& keep) const
{
    for (int y = 0; y < m_height; ++y) {
        uint8_t* row = mask.data() + size_t(y) * size_t(m_stride);
        if (keep.isEmpty() || y < keep.top() || y > keep.bottom()) {
            std::memset(row, 0, size_t(m_width));
            continue;
        }
        std::memset(row, 0, size_t(keep.left()));
        std::memset(row + keep.right() + 1, 0, size_t(m_width - keep.right() - 1));
    }
}

void VexaSelection::addPath(VexaSelectionPath* path, float feather)
{
    if (!path)
        return;
    // The tool may still hold the pointer until its next gesture, so the path lives until the next one.
    m_lastPath.reset(path);
    if (path->parent())
        path->setParent(nullptr);
    feather = qBound(0.0f, feather, 99.0f);
    const QPainterPath shape = path->toPainterPath();
    const int reach = VexaMaskOps::featherReach(feather);
    const QRect canvas(0, 0, m_width, m_height);
    QRect area = shape.boundingRect().toAlignedRect().adjusted(-1, -1, 1, 1);
    area = area.adjusted(-reach, -reach, reach, reach) & canvas.adjusted(-reach, -reach, reach, reach);
    std::vector<uint8_t> cover;
    if (!area.isEmpty()) {
        cover = VexaMaskOps::rasterize(shape, area);
        VexaMaskOps::feather(cover, area.width(), area.height(), feather);
    }
    const int mode = combineMode;
    const QPoint shown = settleTranslation(mode != VexaMaskOps::New);
    modify(tr("Selection"), [&](std::vector<uint8_t>& mask) {
        shift(mask, shown);
        const QRect hit = area & canvas;
        if (VexaMaskOps::clearsOutside(mode))
            zeroOutside(mask, hit);
        if (hit.isEmpty())
            return;
        const uint8_t* src = cover.data() + size_t(hit.top() - area.top()) * size_t(area.width()) + size_t(hit.left() - area.left());
        uint8_t* dst = mask.data() + size_t(hit.top()) * size_t(m_stride) + size_t(hit.left());
        VexaMaskOps::combine(dst, m_stride, src, area.width(), hit.width(), hit.height(), mode);
    });
}

void VexaSelection::addMask(unsigned char* src, int width, int height, int x, int y)
{
    if (!src || width <= 0 || height <= 0)
        return;
    const QRect canvas(0, 0, m_width, m_height);
    const QRect hit = QRect(x, y, width, height) & canvas;
    const int mode = combineMode;
    const QPoint shown = settleTranslation(mode != VexaMaskOps::New);
    modify(tr("Selection"), [&](std::vector<uint8_t>& mask) {
        shift(mask, shown);
        if (VexaMaskOps::clearsOutside(mode))
            zeroOutside(mask, hit);
        if (hit.isEmpty())
            return;
        const uint8_t* from = src + size_t(hit.top() - y) * size_t(width) + size_t(hit.left() - x);
        uint8_t* to = mask.data() + size_t(hit.top()) * size_t(m_stride) + size_t(hit.left());
        VexaMaskOps::combine(to, m_stride, from, width, hit.width(), hit.height(), mode);
    });
}

void VexaSelection::copyMask(unsigned char* src)
{
    if (!src)
        return;
    settleTranslation(false);
    modify(tr("Selection"), [&](std::vector<uint8_t>& mask) {
        for (int y = 0; y < m_height; ++y)
            std::memcpy(mask.data() + size_t(y) * size_t(m_stride), src + size_t(y) * size_t(m_stride), size_t(m_width));
    });
}

void VexaSelection::clear()
{
    settleTranslation(false);
    modify(tr("Deselect"), [](std::vector<uint8_t>& mask) { std::fill(mask.begin(), mask.end(), uint8_t(0)); });
}

void VexaSelection::deselect()
{
    clear();
}

void VexaSelection::inverse()
{
    const QPoint shown = settleTranslation(true);
    if (!shown.isNull()) {
        modify(tr("Invert Selection"), [&](std::vector<uint8_t>& mask) {
            shift(mask, shown);
            invert(mask);
        });
        return;
    }
    // An inversion is its own undo: no copy of a camera-sized mask to compare and keep.
    invertMask();
    m_nonEmpty = -1;
    if (m_history && !m_history->isReplaying() && m_width > 0 && m_height > 0)
        m_history->pushNewMemo(VexaSelectionMemo::inversion(this, tr("Invert Selection")).release());
    emit changed();
}

void VexaSelection::invert(std::vector<uint8_t>& mask) const
{
    for (int y = 0; y < m_height; ++y) {
        uint8_t* row = mask.data() + size_t(y) * size_t(m_stride);
        for (int x = 0; x < m_width; ++x)
            row[x] = uint8_t(255 - row[x]);
    }
}

void VexaSelection::invertMask()
{
    // Tens of milliseconds on a camera-sized mask, twice in a quick select OK: aside, as modify
    // does, while the windows draw the outline they have.
    if (m_mask.size() >= VexaAsideBytes) {
        m_beingWritten = true;
        VexaRunAside([this] {
            invert(m_mask);
            return true;
        });
        m_beingWritten = false;
    } else {
        invert(m_mask);
    }
}

void VexaSelection::restoreInverse()
{
    invertMask();
    m_nonEmpty = -1;
    emit changed();
}

void VexaSelection::selectAll()
{
    settleTranslation(false);
    modify(tr("Select All"), [&](std::vector<uint8_t>& mask) {
        for (int y = 0; y < m_height; ++y)
            std::memset(mask.data() + size_t(y) * size_t(m_stride), 255, size_t(m_width));
    });
}

void VexaSelection::render(VexaCanvas* canvas)
{
    m_nonEmpty = -1; // written through getMask(), perhaps
    emit renderRequested(canvas);
}

void VexaSelection::setTranslation(const QPointF& offset)
{
    if (offset == m_translation)
        return;
    m_translation = offset;
    emit translationChanged();
}

void VexaSelection::applyTranslation()
{
    const QPoint by(qRound(m_translation.x()), qRound(m_translation.y()));
    m_translation = QPointF();
    emit translationChanged();
    if (by.isNull())
        return;
    modify(tr("Move Selection"), [&](std::vector<uint8_t>& mask) { shift(mask, by); });
}

QPoint VexaSelection::settleTranslation(bool keepShown)
{
    if (m_translation.isNull())
        return QPoint();
    const QPoint by(qRound(m_translation.x()), qRound(m_translation.y()));
    m_translation = QPointF();
    emit translationChanged();
    return keepShown ? by : QPoint();
}

void VexaSelection::shift(std::vector<uint8_t>& mask, const QPoint& by) const
{
    if (by.isNull())
        return;
    std::vector<uint8_t> shifted(mask.size(), 0);
    const QRect canvas(0, 0, m_width, m_height);
    const QRect target = canvas.translated(by) & canvas;
    for (int y = target.top(); y <= target.bottom(); ++y)
        std::memcpy(shifted.data() + size_t(y) * size_t(m_stride) + size_t(target.left()),
                    mask.data() + size_t(y - by.y()) * size_t(m_stride) + size_t(target.left() - by.x()), size_t(target.width()));
    mask.swap(shifted);
}

QRect VexaSelection::boundingRect() const
{
    // From each end of a row to its first set byte: a camera-sized mask is mostly long runs.
    int left = m_width, right = -1, top = m_height, bottom = -1;
    const auto set = [](uint8_t v) { return v != 0; };
    for (int y = 0; y < m_height; ++y) {
        const uint8_t* row = m_mask.data() + size_t(y) * size_t(m_stride);
        const uint8_t* first = std::find_if(row, row + m_width, set);
        if (first == row + m_width)
            continue;
        const auto last = std::find_if(std::make_reverse_iterator(row + m_width), std::make_reverse_iterator(first), set);
        left = qMin(left, int(first - row));
        right = qMax(right, int(last.base() - row) - 1);
        top = qMin(top, y);
        bottom = y;
    }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

QImage VexaSelection::toImage() const
{
    QImage img(m_width, m_height, QImage::Format_Grayscale8);
    for (int y = 0; y < m_height; ++y)
        std::memcpy(img.scanLine(y), m_mask.data() + size_t(y) * size_t(m_stride), size_t(m_width));
    return img;
}

void VexaSelection::restoreRows(int firstRow, int rowCount, const std::vector<uint8_t>& packedRows)
{
    if (firstRow < 0 || rowCount < 0 || firstRow > m_height - rowCount)
        return;
    auto write = [&] {
        const uint8_t* at = packedRows.data();
        const uint8_t* end = at + packedRows.size();
        for (int y = firstRow; y < firstRow + rowCount && at; ++y)
            at = VexaMaskOps::unpackRuns(at, end, m_mask.data() + size_t(y) * size_t(m_stride), size_t(m_stride));
        return true;
    };
    if (size_t(rowCount) * size_t(m_stride) >= VexaAsideBytes) {
        m_beingWritten = true;
        VexaRunAside(write);
        m_beingWritten = false;
    } else {
        write();
    }
    m_nonEmpty = -1;
    emit changed();
}
