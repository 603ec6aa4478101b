#include "VexaMattingWindow.h"

#include "VexaContext.h"
#include "VexaSelection.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLibrary>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>
#include <QUndoCommand>
#include <QUndoStack>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// The working image is at most this large on either side, as quick select's.
constexpr int maxSide = 1536;

// The exported class's meta-object (Itanium C++ ABI name of QuickSelectGLWidget::staticMetaObject).
constexpr char viewMetaObjectSymbol[] = "_ZN19QuickSelectGLWidget16staticMetaObjectE";

} // namespace

// An operation already applied when it is pushed; redone by applying it once more on top,
// undone by replaying the operations before it.
class VexaMattingStep : public QUndoCommand
{
public:
    VexaMattingStep(VexaMattingWindow* window, const VexaMattingWindow::Operation& operation)
        : m_window(window)
        , m_operation(operation)
    {
    }
    void redo() override
    {
        if (m_fresh)
            m_fresh = false;
        else
            m_window->apply(m_operation);
    }
    void undo() override
    {
        const QUndoStack* stack = m_window->m_undo;
        for (int i = 0; i < stack->count(); ++i)
            if (stack->command(i) == this) {
                m_window->replay(i);
                return;
            }
    }
    const VexaMattingWindow::Operation& operation() const { return m_operation; }

private:
    VexaMattingWindow* m_window;
    VexaMattingWindow::Operation m_operation;
    bool m_fresh = true;
};

const QMetaObject* VexaMattingWindow::viewClass(const QString& pluginFile)
{
    // The editor has loaded the plug-in already; this only takes another reference, and the
    // library stays loaded for the life of the process.
    QLibrary library(pluginFile);
    if (!library.load())
        return nullptr;
    return reinterpret_cast<const QMetaObject*>(library.resolve(viewMetaObjectSymbol));
}

VexaMattingWindow::VexaMattingWindow(const QMetaObject* viewClass, VexaContext* document, QWidget* parent)
    : QMainWindow(parent)
    , m_document(document)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Matting View"));
    QImage image;
    if (document) {
        m_canvasSize = document->canvasSize();
        image = document->composed();
        if (image.width() > maxSide || image.height() > maxSide)
            image = image.scaled(maxSide, maxSide, Qt::KeepAspectRatio, Qt::FastTransformation);
    }
    m_working = image.size();

    QObject* made = viewClass ? viewClass->newInstance(Q_ARG(QWidget*, nullptr)) : nullptr;
    m_view = qobject_cast<QWidget*>(made);
    m_scroll = new QScrollArea(this);
    m_scroll->setBackgroundRole(QPalette::Dark);
    m_scroll->setAlignment(Qt::AlignCenter);
    setCentralWidget(m_scroll);
    if (!m_view) {
        delete made;
        auto* missing = new QLabel(tr("This build of the plug-in has no matting view."), m_scroll);
        missing->setAlignment(Qt::AlignCenter);
        m_scroll->setWidget(missing);
        m_scroll->setWidgetResizable(true);
        return;
    }
    m_view->setProperty("caption", tr("Matting View"));
    // The view sizes itself to the image: one image pixel per screen pixel, scrolled.
    m_scroll->setWidget(m_view);
    m_scroll->setWidgetResizable(false);
    m_view->resize(m_working);
    QMetaObject::invokeMethod(m_view, "loadFromImage", Qt::DirectConnection, Q_ARG(QImage, image));
    m_view->installEventFilter(this);
    m_scroll->viewport()->installEventFilter(this); // the wheel zooms over the margin too
    m_view->setFocusPolicy(Qt::StrongFocus); // for the Space hand
    m_undo = new QUndoStack(this);

    QToolBar* bar = addToolBar(tr("Matting"));
    bar->setObjectName(QStringLiteral("matting"));
    bar->addWidget(new QLabel(tr("Marks:"), bar));
    m_markMode = new QComboBox(bar);
    m_markMode->setObjectName(QStringLiteral("markMode"));
    m_markMode->addItem(tr("Left object, Shift + left background, right unknown, middle erases"));
    m_markMode->addItem(tr("Left background, right object, middle unknown"));
    m_markMode->addItem(tr("Left unknown, right object, middle erases"));
    m_markMode->setToolTip(tr("What the mouse buttons paint"));
    bar->addWidget(m_markMode);
    connect(m_markMode, &QComboBox::currentIndexChanged, this, &VexaMattingWindow::setMarkMode);

    bar->addWidget(new QLabel(tr(" Brush:"), bar));
    m_radius = new QSpinBox(bar);
    m_radius->setObjectName(QStringLiteral("brushRadius"));
    m_radius->setRange(1, 64);
    m_radius->setValue(m_view->property("brushRadius").toInt());
    m_radius->setSuffix(tr(" px"));
    m_radius->setToolTip(tr("Half-width of a stroke; also the number of smoothing passes of Compute Matte"));
    bar->addWidget(m_radius);
    connect(m_radius, &QSpinBox::valueChanged, this, &VexaMattingWindow::setBrushRadius);

    QAction* autoFlood = bar->addAction(tr("Auto Flood"));
    autoFlood->setObjectName(QStringLiteral("autoFlood"));
    autoFlood->setCheckable(true);
    autoFlood->setToolTip(tr("Flood 16 pixels after each object stroke"));
    connect(autoFlood, &QAction::toggled, this, [this](bool on) { m_view->setProperty("autoFill", on); });
    bar->addSeparator();
    QAction* floodAction = bar->addAction(tr("Flood"), this, &VexaMattingWindow::flood);
    floodAction->setObjectName(QStringLiteral("flood"));
    floodAction->setToolTip(tr("Grow the object and background marks up to the unknown band"));
    // Named for what they do: this one computes the matte, the view button below shows it.
    QAction* run = bar->addAction(tr("Compute Matte"), this, &VexaMattingWindow::matte);
    run->setObjectName(QStringLiteral("matte"));
    run->setToolTip(tr("Turn the marks into a trimap and refine its unknown band into the matte"));
    bar->addAction(tr("Reset"), this, &VexaMattingWindow::reset)->setObjectName(QStringLiteral("reset"));
    QAction* undo = bar->addAction(tr("Undo"), m_undo, &QUndoStack::undo);
    undo->setObjectName(QStringLiteral("undo"));
    undo->setShortcut(QKeySequence::Undo);
    undo->setEnabled(false);
    connect(m_undo, &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
    QAction* redo = bar->addAction(tr("Redo"), m_undo, &QUndoStack::redo);
    redo->setObjectName(QStringLiteral("redo"));
    redo->setShortcut(QKeySequence::Redo);
    redo->setEnabled(false);
    connect(m_undo, &QUndoStack::canRedoChanged, redo, &QAction::setEnabled);
    bar->addSeparator();
    bar->addWidget(new QLabel(tr("Show:"), bar));

    m_views = new QActionGroup(this);
    const QString names[] = {tr("Image"), tr("Matte"), tr("Composite")};
    const char* ids[] = {"viewImage", "viewMatte", "viewComposite"};
    for (int i = 0; i < 3; ++i) {
        QAction* a = bar->addAction(names[i]);
        a->setObjectName(QLatin1String(ids[i]));
        a->setCheckable(true);
        a->setChecked(i == 0);
        m_views->addAction(a);
        connect(a, &QAction::triggered, this, [this, i] { setViewMode(i); });
    }
    bar->addSeparator();
    QAction* use = bar->addAction(tr("Use as selection"));
    use->setObjectName(QStringLiteral("useAsSelection"));
    connect(use, &QAction::triggered, this, [this] {
        QString error;
        if (useAsSelection(&error))
            statusBar()->showMessage(tr("The matte is now the selection."), 4000);
        else
            QMessageBox::warning(this, tr("Use as selection"), error);
    });

    statusBar()->showMessage(tr("Paint an unknown band along the edge with the right button, the object inside it with "
                                "the left and the background outside it with Shift + left, then Flood and Compute Matte."));
    m_zoomLabel = new QLabel(this);
    m_zoomLabel->setToolTip(tr("Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %"));
    statusBar()->addPermanentWidget(m_zoomLabel);
    QAction* fit = new QAction(tr("Fit to Window"), this);
    fit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
    connect(fit, &QAction::triggered, this, &VexaMattingWindow::fitToWindow);
    addAction(fit);
    QAction* actual = new QAction(tr("100 %"), this);
    actual->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_1));
    connect(actual, &QAction::triggered, this, [this] { setZoom(1.0); });
    addAction(actual);
    setZoom(1.0);
    placeOnScreen(bar->sizeHint());
}

void VexaMattingWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // The first time the window shows, its scroll area has its size: the photo fits in it.
    if (!m_fitted && m_view) {
        m_fitted = true;
        fitToWindow();
    }
}

void VexaMattingWindow::fitToWindow()
{
    if (!m_view || m_working.isEmpty())
        return;
    const QSize room = m_scroll->viewport()->size() - QSize(4, 4);
    const double fit = std::min(double(room.width()) / m_working.width(), double(room.height()) / m_working.height());
    setZoom(std::clamp(fit, 1.0 / 16.0, 1.0));
}

void VexaMattingWindow::setZoom(double zoom, QPoint anchor)
{
    if (!m_view || !(zoom > 0.0))
        return;
    QWidget* viewport = m_scroll->viewport();
    if (anchor.x() < 0)
        anchor = QPoint(viewport->width() / 2, viewport->height() / 2);
    const QPointF image = QPointF(m_view->mapFrom(viewport, anchor)) / m_zoom;
    m_zoom = zoom;
    m_view->setProperty("zoom", zoom);
    m_view->resize(std::max(1, int(std::lround(m_working.width() * zoom))), std::max(1, int(std::lround(m_working.height() * zoom))));
    // The scroll area follows the view's new size at once; bars it no longer needs ignore this.
    m_scroll->horizontalScrollBar()->setValue(int(std::lround(image.x() * zoom - anchor.x())));
    m_scroll->verticalScrollBar()->setValue(int(std::lround(image.y() * zoom - anchor.y())));
    m_view->update();
    if (m_zoomLabel)
        m_zoomLabel->setText(tr("%1 %").arg(zoom * 100.0, 0, 'f', 0));
}

namespace {
// The zoom levels the wheel steps through, as on the editor's canvas.
constexpr double zoomLevels[] = {1.0 / 16, 1.0 / 8, 1.0 / 4, 1.0 / 3, 1.0 / 2, 2.0 / 3, 1, 1.5, 2, 3, 4, 6, 8};
} // namespace

void VexaMattingWindow::stepZoom(QPoint anchor, int direction)
{
    double target = m_zoom;
    if (direction > 0) {
        for (double level : zoomLevels)
            if (level > m_zoom * 1.001) {
                target = level;
                break;
            }
    } else {
        for (double level : zoomLevels)
            if (level < m_zoom / 1.001)
                target = level;
    }
    if (target != m_zoom)
        setZoom(target, anchor);
}

void VexaMattingWindow::placeOnScreen(const QSize& toolBarSize)
{
    // The screen the editor is on (the primary one without a parent), less panels and docks.
    QScreen* screen = parentWidget() ? parentWidget()->screen() : QGuiApplication::primaryScreen();
    const QRect room = screen ? screen->availableGeometry() : QRect(0, 0, 1280, 1024);
    // The photo with the window's tool bar, status bar and scroll area frame around it; at
    // most nine tenths of the screen, which leaves room for the window manager's frame.
    const QSize chrome(40, toolBarSize.height() + statusBar()->sizeHint().height() + 40);
    const int width = std::max(m_working.width() + chrome.width(), toolBarSize.width() + 20);
    const QSize size(std::min(width, room.width() * 9 / 10), std::min(m_working.height() + chrome.height(), room.height() * 9 / 10));
    setGeometry(QRect(room.center() - QPoint(size.width() / 2, size.height() / 2), size));
}

bool VexaMattingWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && m_view && (watched == m_view || watched == m_scroll->viewport())) {
        // A notch's worth of turning per level, in even steps, over the photo and its margin.
        const auto* wheel = static_cast<QWheelEvent*>(event);
        const int delta = wheel->angleDelta().y();
        if ((delta > 0) != (m_wheelRest > 0))
            m_wheelRest = 0;
        m_wheelRest += delta;
        const QPoint anchor = static_cast<QWidget*>(watched)->mapTo(m_scroll->viewport(), wheel->position().toPoint());
        while (std::abs(m_wheelRest) >= 120) {
            const int direction = m_wheelRest > 0 ? 1 : -1;
            m_wheelRest -= direction * 120;
            stepZoom(anchor, direction);
        }
        return true;
    }
    if (watched != m_view || m_replaying)
        return QMainWindow::eventFilter(watched, event);
    if (!m_forwarding && panByHand(event))
        return true;
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove && type != QEvent::MouseButtonRelease)
        return QMainWindow::eventFilter(watched, event);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (!m_forwarding && m_zoom != 1.0) {
        // The view draws in image pixels: it gets the pointer there (and this filter sees the
        // copy on its way, to record it).
        const QPointF at = mouse->position() / m_zoom;
        QMouseEvent inImage(type, at, mouse->globalPosition(), mouse->button(), mouse->buttons(), mouse->modifiers());
        m_forwarding = true;
        QCoreApplication::sendEvent(m_view, &inImage);
        m_forwarding = false;
        return true;
    }
    if (type == QEvent::MouseButtonPress && !m_stroking) {
        m_stroking = true;
        // The default mode has no background brush of its own: Shift turns the left button
        // into the background brush of the second mode for this stroke.
        const int mode = m_view->property("markMode").toInt();
        if (mode == 0 && mouse->button() == Qt::LeftButton && (mouse->modifiers() & Qt::ShiftModifier)) {
            m_overriddenMode = mode;
            m_view->setProperty("markMode", 1);
        }
        m_stroke = Operation();
        m_stroke.markMode = m_view->property("markMode").toInt();
        m_stroke.brushRadius = m_view->property("brushRadius").toInt();
        m_stroke.autoFill = m_view->property("autoFill").toBool();
    }
    if (!m_stroking || (type == QEvent::MouseMove && mouse->buttons() == Qt::NoButton))
        return QMainWindow::eventFilter(watched, event);
    m_stroke.input.append({type, mouse->button(), mouse->buttons(), mouse->position().toPoint()});
    if (type == QEvent::MouseButtonRelease && mouse->buttons() == Qt::NoButton) {
        // A release paints nothing, so the stroke is complete before the view sees it.
        if (m_overriddenMode >= 0) {
            m_view->setProperty("markMode", m_overriddenMode);
            m_overriddenMode = -1;
        }
        m_stroking = false;
        push(m_stroke);
    }
    return QMainWindow::eventFilter(watched, event);
}

bool VexaMattingWindow::panByHand(QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_Space)
            return false;
        if (!key->isAutoRepeat() && !m_stroking) {
            m_spaceHeld = event->type() == QEvent::KeyPress;
            if (m_spaceHeld)
                m_view->setCursor(Qt::OpenHandCursor);
            else if (!m_panning)
                m_view->unsetCursor();
        }
        return true;
    }
    case QEvent::FocusOut:
        m_spaceHeld = false;
        if (!m_panning)
            m_view->unsetCursor();
        return false;
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (!m_spaceHeld || m_stroking || mouse->button() != Qt::LeftButton)
            return m_panning;
        m_panning = true;
        m_panStart = mouse->globalPosition().toPoint();
        m_scrollStart = QPoint(m_scroll->horizontalScrollBar()->value(), m_scroll->verticalScrollBar()->value());
        m_view->setCursor(Qt::ClosedHandCursor);
        return true;
    }
    case QEvent::MouseMove:
        if (m_panning) {
            // Measured in screen pixels: the view moves under the pointer while it pans.
            const QPoint moved = static_cast<QMouseEvent*>(event)->globalPosition().toPoint() - m_panStart;
            m_scroll->horizontalScrollBar()->setValue(m_scrollStart.x() - moved.x());
            m_scroll->verticalScrollBar()->setValue(m_scrollStart.y() - moved.y());
        }
        return m_panning;
    case QEvent::MouseButtonRelease:
        if (!m_panning)
            return false;
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            m_panning = false;
            if (m_spaceHeld)
                m_view->setCursor(Qt::OpenHandCursor);
            else
                m_view->unsetCursor();
        }
        return true;
    default:
        return false;
    }
}

void VexaMattingWindow::push(const Operation& operation)
{
    if (m_undo && !m_replaying)
        m_undo->push(new VexaMattingStep(this, operation)); // the stack owns it
}

void VexaMattingWindow::apply(const Operation& operation)
{
    if (!m_view)
        return;
    const bool wasReplaying = m_replaying;
    m_replaying = true;
    switch (operation.kind) {
    case Operation::Stroke: {
        const QVariant mode = m_view->property("markMode"), radius = m_view->property("brushRadius"),
                       fill = m_view->property("autoFill");
        m_view->setProperty("markMode", operation.markMode);
        m_view->setProperty("brushRadius", operation.brushRadius);
        m_view->setProperty("autoFill", operation.autoFill);
        for (const Operation::MouseInput& in : operation.input) {
            QMouseEvent e(in.type, QPointF(in.position), m_view->mapToGlobal(QPointF(in.position)), in.button, in.buttons,
                          Qt::NoModifier);
            QCoreApplication::sendEvent(m_view, &e);
        }
        m_view->setProperty("markMode", mode);
        m_view->setProperty("brushRadius", radius);
        m_view->setProperty("autoFill", fill);
        break;
    }
    case Operation::Flood:
        for (int i = 0; i < operation.rounds; ++i)
            QMetaObject::invokeMethod(m_view, "flood", Qt::DirectConnection, Q_ARG(int, 32));
        break;
    case Operation::Matte:
        QMetaObject::invokeMethod(m_view, "matte", Qt::DirectConnection);
        break;
    case Operation::Reset:
        QMetaObject::invokeMethod(m_view, "reset", Qt::DirectConnection);
        break;
    }
    m_replaying = wasReplaying;
    m_view->update();
}

void VexaMattingWindow::replay(int count)
{
    if (!m_view)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_replaying = true;
    QMetaObject::invokeMethod(m_view, "reset", Qt::DirectConnection);
    for (int i = 0; i < count; ++i)
        apply(static_cast<const VexaMattingStep*>(m_undo->command(i))->operation());
    m_replaying = false;
    QApplication::restoreOverrideCursor();
}

void VexaMattingWindow::setMarkMode(int mode)
{
    if (m_view)
        m_view->setProperty("markMode", mode);
    if (m_markMode && m_markMode->currentIndex() != mode)
        m_markMode->setCurrentIndex(mode);
}

void VexaMattingWindow::setBrushRadius(int radius)
{
    if (m_view)
        m_view->setProperty("brushRadius", radius);
    if (m_radius && m_radius->value() != radius)
        m_radius->setValue(radius);
}

void VexaMattingWindow::setViewMode(int mode)
{
    if (!m_view)
        return;
    m_view->setProperty("viewMode", mode);
    if (m_views && m_views->actions().value(mode))
        m_views->actions().at(mode)->setChecked(true);
    m_view->update();
}

void VexaMattingWindow::flood()
{
    if (!m_view)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    // Each pass grows the marks by one pixel. Passes go in rounds until a round changes
    // nothing (the marks, shown over the image, look the same), at most twice the longer
    // side: enough for regions that wind, without a fixed count that is too short for large
    // regions and wasted on small ones.
    setViewMode(0);
    m_view->setProperty("showMarks", true);
    constexpr int round = 32; // as replayed by apply()
    const int limit = 2 * std::max(m_working.width(), m_working.height());
    Operation done;
    done.kind = Operation::Flood;
    QImage before = m_view->grab().toImage();
    for (int passes = 0; passes < limit; passes += round) {
        QMetaObject::invokeMethod(m_view, "flood", Qt::DirectConnection, Q_ARG(int, round));
        ++done.rounds;
        QImage after = m_view->grab().toImage();
        if (after == before)
            break;
        before = std::move(after);
    }
    QApplication::restoreOverrideCursor();
    push(done);
}

void VexaMattingWindow::matte()
{
    if (!m_view)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QMetaObject::invokeMethod(m_view, "matte", Qt::DirectConnection);
    QApplication::restoreOverrideCursor();
    Operation done;
    done.kind = Operation::Matte;
    push(done);
    setViewMode(1);
}

void VexaMattingWindow::reset()
{
    if (!m_view)
        return;
    QMetaObject::invokeMethod(m_view, "reset", Qt::DirectConnection);
    Operation done;
    done.kind = Operation::Reset;
    push(done);
}

QImage VexaMattingWindow::matteImage() const
{
    QImage out;
    if (m_view)
        QMetaObject::invokeMethod(m_view, "saveToImage", Qt::DirectConnection, Q_ARG(QImage&, out));
    return out;
}

bool VexaMattingWindow::useAsSelection(QString* error)
{
    auto refuse = [error](const QString& why) {
        if (error)
            *error = why;
        return false;
    };
    if (!m_document)
        return refuse(tr("The document this matte was made for is closed."));
    if (m_document->canvasSize() != m_canvasSize)
        return refuse(tr("The document has changed size since the matting view opened."));
    const QImage matte = matteImage();
    if (matte.isNull())
        return refuse(tr("There is no matte yet."));
    const QImage grey = matte.convertToFormat(QImage::Format_Grayscale8)
                            .scaled(m_canvasSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    VexaSelection* selection = m_document->getSelection();
    const int stride = selection->maskStride();
    std::vector<uchar> mask(size_t(stride) * size_t(grey.height()), 0);
    for (int y = 0; y < grey.height(); ++y)
        std::copy_n(grey.constScanLine(y), grey.width(), mask.data() + size_t(y) * size_t(stride));
    selection->copyMask(mask.data());
    selection->render(nullptr);
    return true;
}
