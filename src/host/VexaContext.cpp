#include "VexaContext.h"

#include "IVexaTool.h"
#include "VexaCanvas.h"
#include "VexaHistory.h"
#include "VexaHistoryMemo.h"
#include "VexaLayer.h"
#include "VexaLayerManager.h"
#include "VexaAlphaMemo.h"
#include "VexaBackground.h"
#include "VexaSelection.h"

#include <QImage>

#include <memory>

VexaContext::VexaContext(const QSize& canvasSize, QObject* parent)
    : QObject(parent)
    , m_size(VexaSelection::canAddress(canvasSize.width(), canvasSize.height()) ? canvasSize : QSize(0, 0))
    , m_history(new VexaHistory(this))
    , m_layers(new VexaLayerManager(this))
    , m_selection(new VexaSelection(m_size.width(), m_size.height(), this))
{
    Q_ASSERT(!canvasSize.isEmpty());
    m_selection->setHistory(m_history);
}

VexaContext::~VexaContext()
{
    delete m_lastMemo; // a pending memo nobody took is still ours
}

QString VexaContext::notEnoughMemory(const QSize& size)
{
    const qint64 mb = (qint64(size.width()) * qint64(size.height()) * 4 + (1 << 20) - 1) >> 20;
    return tr("Not enough memory for a %1 x %2 image (%3 MB).").arg(size.width()).arg(size.height()).arg(mb);
}

std::unique_ptr<VexaContext> VexaContext::fromImage(QImage image, QString* error)
{
    if (image.isNull() || image.width() <= 0 || image.height() <= 0) {
        if (error)
            *error = tr("The image is empty: a document needs at least one pixel.");
        return nullptr;
    }
    if (!VexaSelection::canAddress(image.width(), image.height())) {
        if (error)
            *error = tr("The image is too large: a document holds at most about two billion pixels.");
        return nullptr;
    }
    auto context = std::make_unique<VexaContext>(image.size());
    image.convertTo(QImage::Format_ARGB32);
    context->getLayerManager()->addLayer(image, QPointF(0, 0), tr("Background"));
    image = QImage(); // the layer's pixels have no other owner now, so edits need no copy
    // The layer holds a 32-bit copy, four times a greyscale photo: when it does not fit, the
    // document would open blank.
    auto* layer = qobject_cast<VexaLayer*>(context->getLayerManager()->getActiveLayer());
    if (!layer || layer->getPictureHost()->image().isNull()) {
        if (error)
            *error = notEnoughMemory(context->canvasSize());
        return nullptr;
    }
    return context;
}

VexaCanvas* VexaContext::getCanvas() const { return m_canvas; }
void VexaContext::setCanvas(VexaCanvas* canvas) { m_canvas = canvas; }
bool VexaContext::hasSelection() const { return m_selection->hasSelection(); }

void VexaContext::setCurrentTool(IVexaTool* tool)
{
    if (m_tool == tool)
        return;
    // A gesture belongs to one tool: a shape left unfinished (a polygon the user walked away
    // from) does not swallow what comes after it into its undo step.
    m_history->endGesture();
    m_tool = tool;
    emit currentToolChanged(tool);
}

IVexaTool* VexaContext::currentTool() const { return m_tool; }

bool VexaContext::deleteSelectedPixels(QString* error)
{
    auto* layer = qobject_cast<VexaLayer*>(m_layers->getActiveLayer());
    if (!layer || !m_selection->hasSelection())
        return false;
    if (layer->getLatestPlace() == VexaLayer::OnDevice) {
        layer->fboTextureToHost(true);
        layer->setLatestPlace(VexaLayer::InHost);
    }
    const QPoint offset(int(layer->getPosition().x()), int(layer->getPosition().y()));
    const QRect onLayer = m_selection->boundingRect().translated(-offset) & QRect(0, 0, layer->getWidth(), layer->getHeight());
    if (onLayer.isEmpty())
        return false;
    // Written in place: a copy of a camera-sized layer is hundreds of megabytes.
    QImage* writable = layer->writablePixels();
    if (!writable) {
        if (error)
            *error = notEnoughMemory(QSize(layer->getWidth(), layer->getHeight()));
        return false;
    }
    // Only alpha changes: the undo step keeps that alone, recorded in the same pass.
    auto memo = std::make_unique<VexaAlphaMemo>(layer, onLayer, tr("Delete"));
    VexaAlphaMemo* record = memo.get();
    uchar* const bits = writable->bits(); // taken here: QImage's own calls stay on this thread
    const qsizetype bytesPerLine = writable->bytesPerLine();
    const uint8_t* mask = m_selection->mask();
    const int stride = m_selection->maskStride();
    // A pass over a camera-sized layer takes a tenth of a second: a pool thread makes it while
    // the windows go on drawing what they have.
    auto change = [=] {
        std::vector<uint8_t> before(size_t(onLayer.width())), after(size_t(onLayer.width()));
        for (int y = onLayer.top(); y <= onLayer.bottom(); ++y) {
            auto* row = reinterpret_cast<QRgb*>(bits + y * bytesPerLine) + onLayer.left();
            const uint8_t* sel = mask + size_t(y + offset.y()) * size_t(stride) + offset.x() + onLayer.left();
            for (int i = 0; i < onLayer.width(); ++i) {
                const int a = qAlpha(row[i]);
                const int kept = (a * (255 - sel[i]) + 127) / 255;
                before[size_t(i)] = uint8_t(a);
                after[size_t(i)] = uint8_t(kept);
                row[i] = (row[i] & 0x00FFFFFFu) | (QRgb(kept) << 24);
            }
            record->addRow(before.data(), after.data());
        }
        record->finish();
        return true;
    };
    if (size_t(onLayer.width()) * size_t(onLayer.height()) * 4 >= VexaAsideBytes) {
        layer->setBeingWritten(true);
        VexaRunAside(change);
        layer->setBeingWritten(false);
    } else {
        change();
    }
    layer->pixelsChanged();
    m_history->pushNewMemo(memo.release());
    return true;
}

bool VexaContext::isBeingWritten() const
{
    for (int i = 0; i < m_layers->getLayerCount(); ++i)
        if (m_layers->layerAt(i)->isBeingWritten())
            return true;
    return false;
}

QImage VexaContext::composed() const { return m_layers->compose(m_size); }
