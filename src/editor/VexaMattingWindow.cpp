#include "VexaMattingWindow.h"

#include "VexaContext.h"
#include "VexaSelection.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLibrary>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>
#include <vector>

namespace {

// The working image is at most this large on either side, as quick select's.
constexpr int maxSide = 1536;

// The exported class's meta-object (Itanium C++ ABI name of QuickSelectGLWidget::staticMetaObject).
constexpr char viewMetaObjectSymbol[] = "_ZN19QuickSelectGLWidget16staticMetaObjectE";

} // namespace

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

    QToolBar* bar = addToolBar(tr("Matting"));
    bar->setObjectName(QStringLiteral("matting"));
    bar->addWidget(new QLabel(tr("Marks:"), bar));
    m_markMode = new QComboBox(bar);
    m_markMode->setObjectName(QStringLiteral("markMode"));
    m_markMode->addItem(tr("Left object, right unknown, middle erases"));
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
    m_radius->setToolTip(tr("Half-width of a stroke; also the number of smoothing passes of Matte"));
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
    bar->addAction(tr("Matte"), this, &VexaMattingWindow::matte)->setObjectName(QStringLiteral("matte"));
    bar->addAction(tr("Reset"), this, &VexaMattingWindow::reset)->setObjectName(QStringLiteral("reset"));
    bar->addSeparator();

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

    statusBar()->showMessage(tr("Paint an unknown band along the edge, object and background inside and outside it, "
                                "then Flood and Matte."));
    const QSize screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableSize() : QSize(1280, 1024);
    const int width = std::max(m_working.width() + 60, bar->sizeHint().width() + 20);
    resize(std::min(width, screen.width() * 9 / 10), std::min(m_working.height() + 120, screen.height() * 9 / 10));
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
    constexpr int round = 32;
    const int limit = 2 * std::max(m_working.width(), m_working.height());
    QImage before = m_view->grab().toImage();
    for (int done = 0; done < limit; done += round) {
        QMetaObject::invokeMethod(m_view, "flood", Qt::DirectConnection, Q_ARG(int, round));
        QImage after = m_view->grab().toImage();
        if (after == before)
            break;
        before = std::move(after);
    }
    QApplication::restoreOverrideCursor();
}

void VexaMattingWindow::matte()
{
    if (!m_view)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QMetaObject::invokeMethod(m_view, "matte", Qt::DirectConnection);
    QApplication::restoreOverrideCursor();
    setViewMode(1);
}

void VexaMattingWindow::reset()
{
    if (m_view)
        QMetaObject::invokeMethod(m_view, "reset", Qt::DirectConnection);
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
