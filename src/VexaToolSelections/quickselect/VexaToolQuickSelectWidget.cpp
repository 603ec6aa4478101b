#include "VexaToolQuickSelectWidget.h"

#include "Thread.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaToolQuickSelect.h"
#include "VexaToolQuickSelectImageBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QSlider>
#include <QStatusBar>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <memory>

namespace {

const QColor foregroundPen(255, 0, 0, 128);
const QColor backgroundPen(0, 0, 255, 128);
const QColor boundaryPen(0, 255, 0, 128);
// The band a mark step computed, shown apart from the boundary the user painted: a user widening
// the band must see which part is theirs and which the step will redraw at the next Preview.
constexpr QRgb computedBandColour = 0x80FFB000u;

QString chosenStyle(const QColor& colour) { return QStringLiteral("background:") + colour.name(); }

QPushButton* penButton(const QString& text, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setFixedWidth(140);
    return button;
}

QSlider* penSlider(QWidget* parent)
{
    auto* slider = new QSlider(Qt::Horizontal, parent);
    slider->setRange(0, 100);
    slider->setValue(10);
    slider->setTickInterval(10);
    slider->setTickPosition(QSlider::TicksBothSides);
    return slider;
}

} // namespace

VexaToolQuickSelectWidget::VexaToolQuickSelectWidget(QMainWindow* parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("QuickSelectWidget"));
    QRect desktop(0, 0, 1024, 768);
    if (QScreen* screen = QGuiApplication::primaryScreen())
        desktop = screen->availableGeometry();
    const QSize windowSize(desktop.width() - 192, desktop.height() - 192);
    setMinimumSize(windowSize);

    auto* central = new QWidget(this);
    auto* columns = new QHBoxLayout(central);
    scrollArea = new QScrollArea(central);
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setAlignment(Qt::AlignCenter);
    scrollArea->setBackgroundRole(QPalette::Dark);
    imageBox = new VexaToolQuickSelectImageBox;
    imageBox->setObjectName(QStringLiteral("imageBox"));
    imageBox->resize(0, 0);
    scrollArea->setWidget(imageBox);
    // The wheel zooms over the grey margin around the image as over the image.
    scrollArea->viewport()->installEventFilter(this);
    columns->addWidget(scrollArea, 1);
    auto* right = new QVBoxLayout;
    columns->addLayout(right);

    markGroup = new QGroupBox(tr("Step1:Mark Fore/Background"), central);
    markGroup->setObjectName(QStringLiteral("markGroup"));
    auto* markLayout = new QVBoxLayout(markGroup);
    markObjButton = penButton(tr("Mark Foreground"), markGroup);
    markObjButton->setObjectName(QStringLiteral("markObjButton"));
    markObjButton->setCheckable(true);
    markObjButton->setChecked(true);
    markObjButton->setStyleSheet(chosenStyle(foregroundPen));
    markLayout->addWidget(markObjButton);
    markBkgButton = penButton(tr("Mark Background"), markGroup);
    markBkgButton->setObjectName(QStringLiteral("MarkBkg"));
    markBkgButton->setCheckable(true);
    markLayout->addWidget(markBkgButton);
    previewButton = penButton(tr("Preview"), markGroup);
    previewButton->setObjectName(QStringLiteral("previewButton"));
    markLayout->addWidget(previewButton);
    right->addWidget(markGroup);

    auto* borderGroup = new QGroupBox(tr("Step2:Modify Boundary"), central);
    borderGroup->setObjectName(QStringLiteral("MarkBorderBox"));
    auto* borderLayout = new QVBoxLayout(borderGroup);
    markBndButton = penButton(tr("Mark Boundary"), borderGroup);
    markBndButton->setObjectName(QStringLiteral("markBndButton"));
    markBndButton->setCheckable(true);
    borderLayout->addWidget(markBndButton);
    // Named for what it does: a pen that erases the marks under it. "Clear" read as a button that
    // wipes every mark at once, which users pressed and then found only a pen chosen; "Reset"
    // is the one that clears everything.
    markClrButton = penButton(tr("Erase Marks"), borderGroup);
    markClrButton->setObjectName(QStringLiteral("markClrButton"));
    markClrButton->setCheckable(true);
    borderLayout->addWidget(markClrButton);
    matteButton = penButton(tr("Alpha Extract"), borderGroup);
    matteButton->setObjectName(QStringLiteral("matteButton"));
    // Off by default: "Alpha Extract" then gives the matte step's own result.
    refineEdgesBox = new QCheckBox(tr("Refine Edges"), borderGroup);
    refineEdgesBox->setObjectName(QStringLiteral("refineEdgesBox"));
    auto* matteRow = new QHBoxLayout;
    matteRow->addWidget(matteButton);
    matteRow->addWidget(refineEdgesBox);
    borderLayout->addLayout(matteRow);
    right->addWidget(borderGroup);

    penGroup = new QGroupBox(tr("Pen settings"), central);
    penGroup->setObjectName(QStringLiteral("penGroup"));
    auto* penLayout = new QVBoxLayout(penGroup);
    radiusLabel = new QLabel(penGroup);
    radiusLabel->setObjectName(QStringLiteral("radiusLabel"));
    penLayout->addWidget(radiusLabel);
    radiusSlider = penSlider(penGroup);
    radiusSlider->setObjectName(QStringLiteral("radiusSlider"));
    penLayout->addWidget(radiusSlider);
    updateRadius();
    lambdaLabel = new QLabel(penGroup);
    lambdaLabel->setObjectName(QStringLiteral("lambdaLabel"));
    penLayout->addWidget(lambdaLabel);
    lambdaSlider = penSlider(penGroup);
    lambdaSlider->setObjectName(QStringLiteral("lambdaSlider"));
    penLayout->addWidget(lambdaSlider);
    updateLambda();
    right->addWidget(penGroup);

    viewGroup = new QGroupBox(tr("View Settings"), central);
    viewGroup->setObjectName(QStringLiteral("viewGroup"));
    auto* viewLayout = new QVBoxLayout(viewGroup);
    showMarkBox = new QCheckBox(tr("Show User Marks"), viewGroup);
    showMarkBox->setObjectName(QStringLiteral("showMarkBox"));
    showMarkBox->setChecked(true);
    viewLayout->addWidget(showMarkBox);
    viewImageButton = new QRadioButton(tr("View Image"), viewGroup);
    viewImageButton->setObjectName(QStringLiteral("viewImageButton"));
    viewLayout->addWidget(viewImageButton);
    viewMatteButton = new QRadioButton(tr("View Matte"), viewGroup);
    viewMatteButton->setObjectName(QStringLiteral("viewMatteButton"));
    viewLayout->addWidget(viewMatteButton);
    viewAlphaButton = new QRadioButton(tr("View Alpha"), viewGroup);
    viewAlphaButton->setObjectName(QStringLiteral("viewAlphaButton"));
    viewLayout->addWidget(viewAlphaButton);
    viewNodesButton = std::make_unique<QRadioButton>(tr("View Nodes"));
    viewNodesButton->setObjectName(QStringLiteral("viewNodesButton"));
    right->addWidget(viewGroup);

    right->addStretch();
    resetButton = new QPushButton(tr("Reset"), central);
    resetButton->setObjectName(QStringLiteral("resetButton"));
    right->addWidget(resetButton);
    applyButton = new QPushButton(tr("OK"), central);
    applyButton->setObjectName(QStringLiteral("applyButton"));
    right->addWidget(applyButton);
    closeButton = new QPushButton(tr("Cancel"), central);
    closeButton->setObjectName(QStringLiteral("closeButton"));
    right->addWidget(closeButton);
    setCentralWidget(central);

    QStatusBar* status = statusBar();
    status->setStyleSheet(QStringLiteral("QStatusBar::item {border: 0px;}"));
    progressLabel = new QLabel(QStringLiteral("Doing ..."), status);
    progressLabel->setObjectName(QStringLiteral("progressLabel"));
    progressLabel->setMinimumWidth(150);
    progressLabel->setMaximumWidth(150);
    progressLabel->setAlignment(Qt::AlignCenter);
    status->addWidget(progressLabel);
    progressBar = new QProgressBar(status);
    progressBar->setObjectName(QStringLiteral("progressBar"));
    progressBar->setFormat(QString());
    progressBar->setValue(50);
    progressBar->setMinimumWidth(150);
    progressBar->setMaximumWidth(150);
    status->addWidget(progressBar);
    messageLabel = new QLabel(tr(""), status);
    messageLabel->setObjectName(QStringLiteral("messageLabel"));
    messageLabel->setMinimumSize(messageLabel->sizeHint());
    messageLabel->setAlignment(Qt::AlignHCenter);
    status->addWidget(messageLabel);

    title = tr("Quick Select Tool");
    setWindowTitle(title);
    resize(windowSize);

    thread = std::make_unique<Thread>(this);
    connect(thread.get(), SIGNAL(progress(QString,int)), this, SLOT(on_progress(QString,int)));
    connect(thread.get(), SIGNAL(setPainting(bool)), this, SLOT(setPainting(bool)));
    connect(thread.get(), SIGNAL(setMessage(QString)), this, SLOT(setMessage(QString)));
    connect(thread.get(), &Thread::viewButtonRequested, this, &VexaToolQuickSelectWidget::checkViewButton,
            Qt::QueuedConnection);
    connect(thread.get(), &Thread::resultReady, this, &VexaToolQuickSelectWidget::showStepResult,
            Qt::QueuedConnection);
    connect(thread.get(), &Thread::stepFinished, this, &VexaToolQuickSelectWidget::stepEnded, Qt::QueuedConnection);
    connect(showMarkBox, SIGNAL(clicked()), this, SLOT(on_showMarkBox_clicked()));
    connect(radiusSlider, SIGNAL(valueChanged(int)), this, SLOT(updateRadius()));
    connect(viewImageButton, SIGNAL(clicked()), this, SLOT(on_viewImageButton_clicked()));
    connect(viewAlphaButton, SIGNAL(clicked()), this, SLOT(on_viewAlphaButton_clicked()));
    connect(viewMatteButton, SIGNAL(clicked()), this, SLOT(on_viewMatteButton_clicked()));
    connect(viewNodesButton.get(), SIGNAL(clicked()), this, SLOT(on_viewNodesButton_clicked()));
    connect(lambdaSlider, SIGNAL(valueChanged(int)), this, SLOT(updateLambda()));
    connect(previewButton, SIGNAL(clicked()), this, SLOT(mark()));
    connect(matteButton, SIGNAL(clicked()), this, SLOT(matte()));
    connect(resetButton, SIGNAL(clicked()), this, SLOT(reset()));
    connect(applyButton, SIGNAL(clicked()), this, SLOT(apply()));
    connect(closeButton, SIGNAL(clicked()), this, SLOT(on_closeButton_clicked()));
    connect(imageBox, SIGNAL(line(QPoint,QPoint,bool)), this, SLOT(line(QPoint,QPoint,bool)));
    connect(imageBox, SIGNAL(mark()), this, SLOT(mark()));
    connect(markObjButton, SIGNAL(clicked()), this, SLOT(on_markObjButton_clicked()));
    connect(markBkgButton, SIGNAL(clicked()), this, SLOT(on_markBkgButton_clicked()));
    connect(markBndButton, SIGNAL(clicked()), this, SLOT(on_markBndButton_clicked()));
    connect(markClrButton, SIGNAL(clicked()), this, SLOT(on_markClrButton_clicked()));
    seg.maxWidth = 1536;
    seg.maxHeight = 1536;

    // One key per pen and per step, shown in the tool tips: a user painting with one hand
    // switches with the other.
    const struct {
        QPushButton* button;
        Qt::Key key;
        QString tip;
    } keys[] = {
        {markObjButton, Qt::Key_F, tr("Paint foreground marks (F)")},
        {markBkgButton, Qt::Key_B, tr("Paint background marks (B)")},
        {markBndButton, Qt::Key_M, tr("Paint the boundary band by hand (M)")},
        {markClrButton, Qt::Key_E, tr("Erase the marks you paint over (E)")},
        {previewButton, Qt::Key_P, tr("Cut the object out along the marks (P)")},
        {matteButton, Qt::Key_A, tr("Turn the boundary band into soft edges (A)")},
    };
    for (const auto& k : keys) {
        k.button->setToolTip(k.tip);
        QPushButton* button = k.button;
        new QShortcut(QKeySequence(k.key), this, [button] { button->click(); });
    }

    // Zoom from the keyboard as in any editor: "+" (or "=", the same key unshifted) and "-"
    // step about the middle of the view, Ctrl+0 fits the whole image.
    for (int key : {int(Qt::Key_Plus), int(Qt::Key_Equal)})
        new QShortcut(QKeySequence(key), this, [this] { zoomKey(-1); });
    new QShortcut(QKeySequence(Qt::Key_Minus), this, [this] { zoomKey(1); });
    new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_0), this,
                  [this] { imageBox->zoomToFit(scrollArea->maximumViewportSize()); });
}

VexaToolQuickSelectWidget::~VexaToolQuickSelectWidget()
{
    // The worker must be gone before the segmentation it works on.
    stopThread();
}

// ---------------------------------------------------------------------------------------------
// Worker steps

void VexaToolQuickSelectWidget::startStep(int code)
{
    thread->setProcess(code);
    // A start while a step runs (until the window has seen its end) is lost; the code stays stored.
    if (stepRunning || thread->isRunning())
        return;
    // The step reads the sensitivity from the segmentation, never from the slider.
    seg.sensitivity = lambdaSlider->value();
    seg.refineEdges = refineEdgesBox->isChecked();
    thread->clearCancel();
    thread->setSerial(++stepSerial);
    stepRunning = true;
    stepPeak = 0;
    stepRefused = false;
    setStepControlsEnabled(false);
    thread->startProcess(QThread::InheritPriority);
}

bool VexaToolQuickSelectWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == scrollArea->viewport() && event->type() == QEvent::Wheel) {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        const QPointF at = imageBox->mapFrom(scrollArea->viewport(), wheel->position());
        QWheelEvent onView(at, wheel->globalPosition(), wheel->pixelDelta(), wheel->angleDelta(), wheel->buttons(),
                           wheel->modifiers(), wheel->phase(), wheel->inverted());
        QCoreApplication::sendEvent(imageBox, &onView);
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void VexaToolQuickSelectWidget::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // A photo larger than the window opens fitted to it the first time; from then on the zoom
    // the user chose stays, as it does between segmentations.
    if (!fittedOnce && imageBox->getImageToDraw()) {
        fittedOnce = true;
        const QSize room = scrollArea->maximumViewportSize();
        if (imageBox->width() > room.width() || imageBox->height() > room.height())
            imageBox->zoomToFit(room);
    }
}

void VexaToolQuickSelectWidget::stepEnded(int serial)
{
    if (serial != stepSerial || !stepRunning)
        return;
    thread->wait(); // finished reports come right before the thread's own end
    thread->acquire();
    stepRunning = false;
    setStepControlsEnabled(true);
    // The step's own last report empties the bar; a step that did its work leaves it full, so
    // that its end can be seen at all (a quick step's reports arrive together). A step that
    // refused with a hint leaves it empty.
    if (stepPeak > 0 && !stepRefused)
        progressBar->setValue(100);
    if (refreshAfterStep) {
        refreshAfterStep = false;
        refreshView();
    }
}

QImage VexaToolQuickSelectWidget::markImageCopy() const
{
    if (stepRunning) {
        thread->wait();
        thread->acquire();
    }
    assert(!thread || !thread->isWriting()); // the hand-over, as in compose()
    return seg.markImage.copy();
}

void VexaToolQuickSelectWidget::stopThread()
{
    if (!thread)
        return;
    if (thread->isRunning()) {
        thread->requestCancel();
        thread->wait();
        thread->acquire();
        thread->clearCancel();
    }
    stepEnded(stepSerial);
}

void VexaToolQuickSelectWidget::setStepControlsEnabled(bool enabled)
{
    // A button that had the keyboard focus gets it back when the step ends, rather than
    // leaving it wherever disabling pushed it.
    QWidget* focused = QApplication::focusWidget();
    for (QPushButton* button : {previewButton, matteButton, resetButton, applyButton}) {
        if (!enabled && button == focused)
            focusBeforeStep = button;
        button->setEnabled(enabled);
    }
    if (enabled && focusBeforeStep) {
        focusBeforeStep->setFocus();
        focusBeforeStep = nullptr;
    }
}

void VexaToolQuickSelectWidget::checkViewButton(int which)
{
    QRadioButton* button = which == 2 ? viewAlphaButton : which == 1 ? viewMatteButton : viewImageButton;
    button->setChecked(true);
}

void VexaToolQuickSelectWidget::showStepResult(const QRect& area)
{
    if (seg.sourceImage.isNull())
        return; // the window was closed before this report arrived
    thread->acquire();
    compose(area);
}

void VexaToolQuickSelectWidget::mark() { startStep(1); }
void VexaToolQuickSelectWidget::matte() { startStep(2); }

void VexaToolQuickSelectWidget::setPainting(bool enabled) { imageBox->setPainting(enabled); }

void VexaToolQuickSelectWidget::setMessage(QString text)
{
    stepRefused = stepRefused || stepRunning;
    // A hint of a step cancelled by closing the window has nobody left to read it.
    if (!isVisible())
        return;
    QMessageBox box(QMessageBox::Information, title, text, QMessageBox::Ok);
    box.exec();
}

void VexaToolQuickSelectWidget::on_progress(QString text, int percent)
{
    if (stepRunning)
        stepPeak = std::max(stepPeak, percent);
    progressLabel->setText(text);
    progressBar->setValue(percent);
    // Queued reports may arrive in a burst: show each one, not only the last.
    progressLabel->repaint();
    progressBar->repaint();
}

// ---------------------------------------------------------------------------------------------
// Loading, resetting, applying

void VexaToolQuickSelectWidget::load(VexaContext* context)
{
    stopThread();
    setWindowTitle(tr("Initializing..."));
    QImage rendered;
    if (context && context->getCanvas()) {
        std::unique_ptr<QImage> image(context->getCanvas()->renderToImage(context));
        if (image)
            rendered = *image;
    }
    imageBox->releaseButtons(); // a drag of the last session never goes on in this one
    seg.load(rendered);
    if (seg.sourceImage.isNull()) {
        // Nothing to segment: the tool refuses to open rather than show an empty "0 x 0" window.
        releaseData();
        setWindowTitle(title);
        QMessageBox box(QMessageBox::Information, title,
                        tr("The document could not be rendered: there is nothing to select from."), QMessageBox::Ok);
        box.exec();
        return;
    }
    const int W = seg.sourceImage.width(), H = seg.sourceImage.height();
    imageBox->initImageToDraw(&seg.sourceImage);
    // The zoom survives between sessions; the view takes the size it gives this image, so
    // that all of it can be seen and marked.
    imageBox->fitToZoom();
    imageBox->repaint();
    repaint();
    reset();
    startStep(0);
    setWindowTitle(QString::number(W) + QStringLiteral(" x ") + QString::number(H) + QStringLiteral(" - ") + title);
}

void VexaToolQuickSelectWidget::reset()
{
    if (stepRunning)
        return; // the worker owns the images until its step ends
    if (!seg.sourceImage.isNull())
        seg.reset();
    showMarkBox->setChecked(true);
    // As a click on it would: checking it alone left another chosen pen checked and coloured,
    // and that one, not the foreground pen the button shows, painted the next stroke.
    choosePen(markObjButton);
    radiusSlider->setValue(10);
    lambdaSlider->setValue(10);
    viewImageButton->setChecked(true);
    imageBox->initImageToDraw(&seg.sourceImage);
    updateImageBox(QRect(0, 0, seg.markImage.width(), seg.markImage.height()));
}

void VexaToolQuickSelectWidget::apply()
{
    if (stepRunning || !quickSelectTool)
        return;
    quickSelectTool->apply(seg.alphaImage);
}

void VexaToolQuickSelectWidget::releaseData()
{
    stopThread();
    seg.release();
    imageBox->releaseImageToDraw();
    imageBox->resize(0, 0);
}

void VexaToolQuickSelectWidget::save()
{
    if (seg.sourceImage.isNull())
        return;
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Save Image"), tr(""),
                                                          tr("Image Files (*.bmp *.gif *.jpg *.jpeg *.png)"));
    if (!fileName.isEmpty() && imageBox->getImageToDraw())
        imageBox->getImageToDraw()->save(fileName);
}

void VexaToolQuickSelectWidget::on_closeButton_clicked()
{
    if (quickSelectTool)
        quickSelectTool->disActive();
}

// ---------------------------------------------------------------------------------------------
// Strokes

void VexaToolQuickSelectWidget::line(QPoint p1, QPoint p2) { line(p1, p2, false); }

void VexaToolQuickSelectWidget::line(QPoint p1, QPoint p2, bool inverse)
{
    const int v = radiusSlider->value();
    if (!viewImageButton->isChecked() || v == 0)
        return;
    // A drag that began before the step keeps sending segments; the step reads the marks.
    if (stepRunning || seg.markImage.isNull())
        return;
    QColor colour;
    if (markObjButton->isChecked())
        colour = inverse ? backgroundPen : foregroundPen;
    else if (markBkgButton->isChecked())
        colour = inverse ? foregroundPen : backgroundPen;
    else if (markBndButton->isChecked())
        colour = boundaryPen;
    else if (markClrButton->isChecked())
        colour = Qt::transparent;
    else
        return; // no pen chosen: nothing to paint with
    // A boundary stroke goes into the record of the user's own boundary marks as well. Other pens
    // leave it: a bit under their marks shows nothing, as only the boundary mark is told apart,
    // and only this pen or the mark step writes that again.
    const std::pair<QImage*, QColor> layers[] = {{&seg.markImage, colour}, {&seg.userBoundary, Qt::white}};
    for (const auto& [image, paint] : layers) {
        if (image->isNull() || (image == &seg.userBoundary && colour != boundaryPen))
            continue;
        QPainter painter(image);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.setPen(QPen(QBrush(paint), qreal(v), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (p1 != p2)
            painter.drawLine(p1, p2);
        else
            painter.drawLine(QPointF(p1.x(), p1.y()), QPointF(p1.x(), p1.y() + 0.001));
    }
    showMarkBox->setChecked(true);
    const QRect dirty = QRect(QPoint(std::min(p1.x(), p2.x()) - v - 3, std::min(p1.y(), p2.y()) - v - 3),
                              QPoint(std::max(p1.x(), p2.x()) + v + 2, std::max(p1.y(), p2.y()) + v + 2))
                            .intersected(seg.markImage.rect());
    updateImageBox(dirty);
}

// ---------------------------------------------------------------------------------------------
// View

void VexaToolQuickSelectWidget::updateImageBox(QRect rect)
{
    if (stepRunning) {
        refreshAfterStep = true; // the step may be writing these very pixels
        return;
    }
    if (seg.sourceImage.isNull())
        return;
    compose(rect);
}

QImage VexaToolQuickSelectWidget::marksToShow(const QRect& rect) const
{
    assert(rect.isEmpty() || seg.markImage.rect().contains(rect));
    QImage shown = seg.markImage.copy(rect);
    const bool known = seg.userBoundary.size() == seg.markImage.size();
    for (int y = 0; y < shown.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(shown.scanLine(y));
        const uchar* own = known ? seg.userBoundary.constScanLine(y + rect.top()) + rect.left() : nullptr;
        for (int x = 0; x < shown.width(); ++x)
            if (row[x] == VexaSegmentation::BoundaryMark && !(own && own[x]))
                row[x] = computedBandColour;
    }
    return shown;
}

void VexaToolQuickSelectWidget::compose(const QRect& rect)
{
    // The hand-over: a step's images are read only once it has written its last pixel.
    assert(!thread || !thread->isWriting());
    const QRect marksRect = rect.intersected(seg.markImage.rect());
    if (!imageBox->getImageToDraw())
        imageBox->allocImageToDraw(seg.sourceImage.width(), seg.sourceImage.height());
    QPainter painter(imageBox->getImageToDraw());
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (viewImageButton->isChecked()) {
        painter.drawImage(rect.topLeft(), seg.sourceImage, rect);
        if (showMarkBox->isChecked()) {
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
            painter.drawImage(marksRect.topLeft(), marksToShow(marksRect));
        }
    } else if (viewMatteButton->isChecked()) {
        painter.fillRect(rect, Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.drawImage(rect.topLeft(), seg.resultImage, rect);
    } else if (viewAlphaButton->isChecked()) {
        painter.drawImage(rect.topLeft(), seg.alphaImage, rect);
    }
    // "Show User Marks" ticked means marks on every view: a user checking a matte against the
    // strokes that made it needs both at once.
    if (showMarkBox->isChecked() && (viewMatteButton->isChecked() || viewAlphaButton->isChecked())) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.drawImage(marksRect.topLeft(), marksToShow(marksRect));
    }
    painter.end();
    // The changed image rectangle, in widget pixels at the current zoom.
    const double s = imageBox->getScale();
    const QRect onScreen(QPoint(int(std::floor(rect.left() * s)) - 1, int(std::floor(rect.top() * s)) - 1),
                         QPoint(int(std::ceil((rect.right() + 1) * s)) + 1, int(std::ceil((rect.bottom() + 1) * s)) + 1));
    imageBox->update(onScreen);
}

void VexaToolQuickSelectWidget::refreshView()
{
    if (viewImageButton->isChecked())
        on_viewImageButton_clicked();
    else if (viewMatteButton->isChecked())
        on_viewMatteButton_clicked();
    else if (viewAlphaButton->isChecked())
        on_viewAlphaButton_clicked();
    else
        updateImageBox(seg.sourceImage.rect());
}

void VexaToolQuickSelectWidget::on_viewImageButton_clicked()
{
    if (stepRunning) {
        refreshAfterStep = true;
        return;
    }
    imageBox->initImageToDraw(&seg.sourceImage);
    updateImageBox(seg.sourceImage.rect());
}

void VexaToolQuickSelectWidget::on_viewNodesButton_clicked() { on_viewImageButton_clicked(); }

void VexaToolQuickSelectWidget::on_viewAlphaButton_clicked()
{
    if (stepRunning) {
        refreshAfterStep = true;
        return;
    }
    imageBox->initImageToDraw(&seg.alphaImage);
    updateImageBox(seg.sourceImage.rect());
}

void VexaToolQuickSelectWidget::on_viewMatteButton_clicked()
{
    if (stepRunning) {
        refreshAfterStep = true;
        return;
    }
    if (!imageBox->getImageToDraw() && !seg.sourceImage.isNull())
        imageBox->allocImageToDraw(seg.sourceImage.width(), seg.sourceImage.height());
    updateImageBox(seg.sourceImage.rect());
}

void VexaToolQuickSelectWidget::on_showMarkBox_clicked() { refreshView(); }

void VexaToolQuickSelectWidget::chooseMarkButton(QPushButton* chosen)
{
    choosePen(chosen);
    viewImageButton->setChecked(true);
    on_viewImageButton_clicked();
}

void VexaToolQuickSelectWidget::choosePen(QPushButton* chosen)
{
    const std::pair<QPushButton*, QColor> pens[] = {
        {markObjButton, foregroundPen},
        {markBkgButton, backgroundPen},
        {markBndButton, boundaryPen},
        {markClrButton, QColor(Qt::white)}, // the eraser's button shows white
    };
    for (const auto& [button, colour] : pens) {
        button->setChecked(button == chosen);
        button->setStyleSheet(button == chosen ? chosenStyle(colour) : QString());
    }
}

void VexaToolQuickSelectWidget::zoomKey(int step)
{
    const QWidget* viewport = scrollArea->viewport();
    imageBox->zoomAbout(step, imageBox->mapFrom(viewport, QPointF(viewport->width() / 2.0, viewport->height() / 2.0)));
}

void VexaToolQuickSelectWidget::on_markObjButton_clicked() { chooseMarkButton(markObjButton); }
void VexaToolQuickSelectWidget::on_markBkgButton_clicked() { chooseMarkButton(markBkgButton); }
void VexaToolQuickSelectWidget::on_markClrButton_clicked() { chooseMarkButton(markClrButton); }
void VexaToolQuickSelectWidget::on_markBndButton_clicked() { chooseMarkButton(markBndButton); }

// ---------------------------------------------------------------------------------------------
// Sliders

void VexaToolQuickSelectWidget::updateRadius()
{
    radiusLabel->setText(tr("Mark Radius: ") + QString::number(radiusSlider->value()));
    radiusLabel->adjustSize();
    imageBox->setRadius(radiusSlider->value());
}

void VexaToolQuickSelectWidget::updateLambda()
{
    lambdaLabel->setText(tr("Sensitivity: ") + QString::number(lambdaSlider->value()));
    lambdaLabel->adjustSize();
}
