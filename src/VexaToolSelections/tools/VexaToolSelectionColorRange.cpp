#include "VexaToolSelectionColorRange.h"

#include "VexaCanvas.h"
#include "VexaColorGrading.h"
#include "VexaColorPicker.h"
#include "VexaContext.h"
#include "VexaFilterContainer.h"
#include "VexaLayerManager.h"
#include "VexaPluginEntry.h"
#include "VexaSelection.h"
#include "VexaToolSelectionColorRangeWidget.h"

#include <vector>

VexaToolSelectionColorRange* VexaToolSelectionColorRange::getInstance(QObject* parent)
{
    if (!instance)
        instance = new VexaToolSelectionColorRange(parent); // a child of `parent`
    return instance;
}

VexaToolSelectionColorRange::VexaToolSelectionColorRange(QObject* parent)
    : IVexaTool(parent)
{
    toolName = QStringLiteral("Color Range");
    toolCategory = QStringLiteral("Selection");
    toolId = QStringLiteral("95EDCB73-6A06-4479-BC81-8933952705Q3");
    toolDescription = QStringLiteral("From color to selection");
    toolVersion = QStringLiteral("1.0");
    registerEvent(QStringLiteral("DOUBLE_CLICK"));
    // One recomputation per interval: a later request waits for a canvas tick.
    busyTimer.setSingleShot(true);
    connect(&busyTimer, SIGNAL(timeout()), this, SLOT(onBusyTimeout()));
}

VexaToolSelectionColorRange::~VexaToolSelectionColorRange()
{
    if (instance == this)
        instance = nullptr; // the next request builds a fresh one
    delete m_containerOwned.data();
}

void VexaToolSelectionColorRange::init() {}
void VexaToolSelectionColorRange::release() {}

QColor VexaToolSelectionColorRange::foreground() const
{
    return context && context->getCanvas() ? context->getCanvas()->getFgColor() : QColor(Qt::black);
}

void VexaToolSelectionColorRange::active(VexaContext* ctx)
{
    if (!ctx || ctx->getLayerManager()->getLayerCount() == 0)
        return;
    if (!dialog) {
        dialog = new VexaToolSelectionColorRangeWidget(nullptr);
        container = new VexaFilterContainer(dialog, VexaTitleWidget::TitleButtonFlag(0), false, nullptr, false);
        m_containerOwned = container; // the tool's, with the dialog inside
        dialog->setTool(this);
    }
    if (activated)
        return;
    activated = true;
    context = ctx;
    VexaCanvas* canvas = ctx->getCanvas();
    connect(this, SIGNAL(pickStart()), canvas->getColorPickerWidget(), SLOT(onColorRangeToolPickStarted()));
    connect(this, SIGNAL(pickStop()), canvas->getColorPickerWidget(), SLOT(onColorRangeToolPickStoped()));
    connect(canvas, SIGNAL(FgColorChange(QColor)), this, SLOT(onFgColorChanged()));
    connect(canvas, SIGNAL(timeOut()), this, SLOT(onCanvasTimeout()));
    initImageThumb();
    calcSelectionThumb();
    dialog->show();
    container->show(true);
    emit pickStart();
}

void VexaToolSelectionColorRange::disActive()
{
    if (!activated)
        return;
    activated = false;
    emit pickStop();
    VexaCanvas* canvas = context->getCanvas();
    disconnect(this, SIGNAL(pickStart()), canvas->getColorPickerWidget(), SLOT(onColorRangeToolPickStarted()));
    disconnect(this, SIGNAL(pickStop()), canvas->getColorPickerWidget(), SLOT(onColorRangeToolPickStoped()));
    disconnect(canvas, SIGNAL(FgColorChange(QColor)), this, SLOT(onFgColorChanged()));
    disconnect(canvas, SIGNAL(timeOut()), this, SLOT(onCanvasTimeout()));
    dialog->hide();
    container->hide();
    renderedImage.reset();
    busy = false;
    thumbUpToDate = true;
    context->setCurrentTool(nullptr);
}

void VexaToolSelectionColorRange::initImageThumb()
{
    if (context->getLayerManager()->getLayerCount() == 0) {
        activated = false;
        return;
    }
    renderedImage.reset(context->getCanvas()->renderToImage(context));
    imageThumb = VexaColorGrading::thumbnail(*renderedImage, thumbSize);
}

void VexaToolSelectionColorRange::calcSelectionThumb()
{
    if (busy) {
        thumbUpToDate = false;
        return;
    }
    busyTimer.stop();
    busy = true;
    selectionThumb = VexaColorGrading::gradeThumbnail(imageThumb, foreground().rgb(), tolerance);
    if (dialog)
        dialog->repaint();
    thumbUpToDate = true;
    busyTimer.start(5);
}

void VexaToolSelectionColorRange::onBusyTimeout() { busy = false; }

void VexaToolSelectionColorRange::onCanvasTimeout()
{
    if (thumbUpToDate)
        return;
    calcSelectionThumb();
    // The deferred preview would otherwise wait for the next tolerance or colour change.
    if (dialog)
        dialog->updateCanvas();
}

void VexaToolSelectionColorRange::setTolerance(int t)
{
    if (t == tolerance)
        return;
    tolerance = t;
    calcSelectionThumb();
}

void VexaToolSelectionColorRange::onFgColorChanged()
{
    calcSelectionThumb();
    if (dialog)
        dialog->updateCanvas();
}

void VexaToolSelectionColorRange::apply()
{
    VexaSelection* selection = context ? context->getSelection() : nullptr;
    // A rendering of another size than the selection (the canvas showed another document)
    // would be written past the mask's rows: the selection is kept as it is.
    if (renderedImage && selection && renderedImage->size() == QSize(selection->width(), selection->height())) {
        const int w = selection->maskStride();
        const int h = renderedImage->height();
        std::vector<unsigned char> mask(size_t(w) * size_t(h), 0);
        VexaColorGrading::gradeImage(*renderedImage, foreground().rgb(), tolerance, mask.data(), w);
        selection->copyMask(mask.data());
        selection->render(context->getCanvas());
    }
    disActive();
}
