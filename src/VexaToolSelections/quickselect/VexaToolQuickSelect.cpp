#include "VexaToolQuickSelect.h"

#include "VexaActionManager.h"
#include "VexaBackground.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaFilterContainer.h"
#include "VexaHistory.h"
#include "VexaLayerManager.h"
#include "VexaMatteResample.h"
#include "VexaMemory.h"
#include "VexaSelection.h"
#include "VexaToolQuickSelectWidget.h"

#include <QAction>
#include <QGuiApplication>
#include <QImage>

#include <cstring>

VexaToolQuickSelect::VexaToolQuickSelect(QObject* parent)
    : VexaToolSelectionBase(parent)
{
    toolName = QStringLiteral("Quick Select Tool");
    toolCategory = QString();
    toolId = QStringLiteral("C19B4288-9DD2-4308-9D38-1EE056F7D9C3");
    toolDescription = QStringLiteral("This tool is to make quick selection");
    toolVersion = QStringLiteral("1.0");
    dialog = nullptr;
}

VexaToolQuickSelect::~VexaToolQuickSelect() = default;

QWidget* VexaToolQuickSelect::getWidget() { return dialog; }

void VexaToolQuickSelect::active(VexaContext* ctx)
{
    if (!ctx || ctx->getLayerManager()->getLayerCount() == 0)
        return;
    if (!dialog) {
        auto* window = new VexaToolQuickSelectWidget(nullptr); // adopted by the container below
        window->setQuickSelectTool(this);
        containerOwned = std::make_unique<VexaFilterContainer>(window, VexaTitleWidget::TitleButtonFlag(0), false,
                                                               nullptr, false);
        container = containerOwned.get();
        dialog = window;
        dialog->setVisible(false);
        container->setVisible(false);
    }
    if (activated || !takeDocument(ctx))
        return;
    dialog->show();
    dialog->load(ctx);
    if (dialog->segmentation().sourceImage.isNull()) {
        disActive(); // nothing rendered: the window has said so, and does not open
        return;
    }
    container->exec();
    // Closing the container by other means than the window's buttons (Escape) is a Cancel.
    if (activated)
        disActive();
}

void VexaToolQuickSelect::disActive()
{
    if (!activated)
        return;
    activated = false;
    if (dialog) {
        container->move(64, 64);
        dialog->stopThread();
        dialog->hide();
        container->hide();
        dialog->releaseData();
    }
    if (context)
        context->setCurrentTool(nullptr);
}

void VexaToolQuickSelect::apply(const QImage& alpha)
{
    if (!context)
        return;
    VexaCanvas* canvas = context->getCanvas();
    VexaSelection* selection = context->getSelection();
    const int S = selection->maskStride();
    const int W = canvas ? canvas->getCanvasWidth() : selection->width();
    const int H = canvas ? canvas->getCanvasHeight() : selection->height();
    const int w = alpha.width(), h = alpha.height();
    const bool sameSize = w == W && h == H;
    // Nothing to sample, or a one-pixel canvas the resampling cannot map a matte onto.
    if (alpha.isNull() || (!sameSize && (W < 2 || H < 2))) {
        disActive();
        return;
    }
    VexaMemory* pool = VexaMemory::getInstance();
    unsigned char* mask = pool->alloc(H * S);
    if (!mask) {
        disActive();
        return;
    }
    // Writing a camera-sized document takes a second or more: the pointer says the editor is at
    // work, and the window's bar how far it has come.
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const QString applying = tr("Applying...");
    auto progress = [&](int percent) {
        if (dialog)
            dialog->showProgress(applying, percent);
    };
    progress(0);
    std::memset(mask, 0, size_t(H) * size_t(S));
    if (canvas)
        canvas->syncLayerPixels();

    // The same resampling as the command line's outputs, so both give the same bytes. To a
    // camera-sized canvas it takes a few hundred milliseconds: a pool thread does it while the
    // windows go on drawing, and input waits until it is done.
    {
        const QImage matte = alpha; // a copy the window cannot change under the worker
        VexaRunAside([matte, W, H, mask, S] { return VexaMatteResample::toMask(matte, W, H, mask, S); });
    }
    progress(30);
    // The user pressed one button: the selection, its inversions and the deletion are one undo
    // step under the tool's name, not four steps through selections never shown.
    VexaHistory* history = context->getHistory();
    if (history)
        history->beginGesture(tr("Quick Select"));
    selection->copyMask(mask);
    progress(45);
    selection->inverse();
    progress(55);
    if (QAction* erase = VexaActionManager::getInstance(QString())->getActionByName(QStringLiteral("Delete")))
        erase->activate(QAction::Trigger);
    progress(90);
    selection->inverse();
    progress(100);
    if (history)
        history->endGesture();
    pool->release(mask);
    QGuiApplication::restoreOverrideCursor();
    disActive();
}
