#include "VexaEditorWindow.h"

#include "IVexaTool.h"
#include "VexaActionManager.h"
#include "VexaBackground.h"
#include "VexaCanvas.h"
#include "VexaCanvasFrame.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaDialog.h"
#include "VexaHistory.h"
#include "VexaImageFile.h"
#include "VexaImageSave.h"
#include "VexaMattingWindow.h"
#include "VexaPluginLoader.h"
#include "VexaSelection.h"

#include <QAction>
#include <QActionGroup>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QProgressDialog>
#include <QStatusBar>
#include <QThread>
#include <QToolBar>
#include <QToolButton>

#include <cmath>

namespace {
// Opening and saving a camera-sized photo take seconds: the pointer says the editor is at work.
struct BusyCursor {
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

// Decoding or encoding a camera-sized photo takes seconds: `work` runs on a pool thread while
// the window keeps drawing, and a progress window shows up once it takes longer than a moment.
// Input waits in the queue meanwhile: no second command starts before the progress window is
// up to block it.
template <class Work>
auto inBackground(QWidget* over, const QString& label, Work work) -> decltype(work())
{
    QProgressDialog progress(label, QString(), 0, 0, over->isVisible() ? over : nullptr);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(300);
    progress.setValue(0); // starts the delay after which the dialog shows itself
    return VexaRunAside(std::move(work));
}

} // namespace

VexaEditorWindow::VexaEditorWindow(const VexaPluginLoader& plugin, QWidget* parent)
    : QMainWindow(parent)
    , m_canvas(new VexaCanvas(this))
    , m_mattingClass(VexaMattingWindow::viewClass(plugin.fileName()))
{
    setCentralWidget(new VexaCanvasFrame(m_canvas, this));
    resize(1100, 760);
    buildMenus();
    buildViewMenu();
    buildToolBars(plugin);
    // Tool windows (the color range dialog) belong to this window and stay above it.
    VexaDialog::setHostWindow(this);
    m_position = new QLabel(this);
    m_zoom = new QLabel(this);
    statusBar()->addPermanentWidget(m_position);
    statusBar()->addPermanentWidget(m_zoom);
    connect(m_canvas, &VexaCanvas::mouseMove, this, [this](int x, int y) {
        // Without a document there is no pixel under the pointer to name.
        if (!m_document) {
            m_position->clear();
            return;
        }
        const QPointF c = m_canvas->uiToCanvasCoord(x, y, false);
        m_position->setText(tr("%1, %2").arg(int(std::floor(c.x()))).arg(int(std::floor(c.y()))));
    });
    connect(m_canvas, &VexaCanvas::viewChanged, this, &VexaEditorWindow::updateZoomLabel);
    updateZoomLabel();
    updateUndoActions();
    updateToolActions();
    connect(m_canvas, &VexaCanvas::FgColorChange, this, &VexaEditorWindow::updateColorButton);
    updateColorButton();
    updateTitle();
}

VexaEditorWindow::~VexaEditorWindow()
{
    if (VexaDialog::hostWindow() == this)
        VexaDialog::setHostWindow(nullptr);
    deactivateTool();
    // Panels belong to their tools: hand the one on show back before the tool bar goes.
    if (m_shownOptions)
        m_shownOptions->setParent(nullptr);
    VexaContextManager::getInstance()->setCurrentContext(nullptr);
}

void VexaEditorWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), QKeySequence::Open, this, &VexaEditorWindow::onOpen);
    file->addAction(tr("Save &Image As..."), QKeySequence::SaveAs, this, &VexaEditorWindow::onSaveImage);
    file->addAction(tr("&Export Selection Mask..."), this, &VexaEditorWindow::onExportMask);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    m_undoAction = edit->addAction(tr("&Undo"), QKeySequence::Undo, this, [this] {
        if (m_document) {
            settleSelectionOffset();
            m_document->getHistory()->undo();
        }
    });
    m_undoAction->setObjectName(QStringLiteral("undo"));
    m_redoAction = edit->addAction(tr("&Redo"), QKeySequence::Redo, this, [this] {
        if (m_document) {
            settleSelectionOffset();
            m_document->getHistory()->redo();
        }
    });
    m_redoAction->setObjectName(QStringLiteral("redo"));
    edit->addAction(tr("Undo Tool Step"), QKeySequence(tr("Alt+Z")), this, [this] {
        if (m_current)
            m_current->toolUndo();
    });
    edit->addAction(tr("Redo Tool Step"), QKeySequence(tr("Alt+Shift+Z")), this, [this] {
        if (m_current)
            m_current->toolRedo();
    });
    edit->addSeparator();
    if (QAction* del = VexaActionManager::getInstance(QString())->getActionByName(QStringLiteral("Delete")))
        edit->addAction(del);

    QMenu* select = menuBar()->addMenu(tr("&Select"));
    select->addAction(tr("&All"), QKeySequence::SelectAll, this, [this] {
        if (m_document) {
            m_document->getSelection()->selectAll();
            refreshSelection();
        }
    });
    select->addAction(tr("&None"), QKeySequence(tr("Ctrl+D")), this, [this] {
        if (m_document) {
            m_document->getSelection()->deselect();
            refreshSelection();
        }
    });
    select->addAction(tr("&Invert"), QKeySequence(tr("Ctrl+Shift+I")), this, [this] {
        if (m_document) {
            m_document->getSelection()->inverse();
            refreshSelection();
        }
    });
    select->addSeparator();
    QAction* matting = select->addAction(tr("Matting View…"), this, &VexaEditorWindow::openMattingView);
    matting->setObjectName(QStringLiteral("mattingView"));
    matting->setEnabled(m_mattingClass != nullptr);
}

VexaMattingWindow* VexaEditorWindow::openMattingView()
{
    if (!m_document || !m_mattingClass)
        return nullptr;
    if (m_matting)
        m_matting->close();
    m_matting = new VexaMattingWindow(m_mattingClass, m_document.get(), this);
    m_matting->setWindowFlag(Qt::Window);
    m_matting->show();
    return m_matting;
}

void VexaEditorWindow::buildToolBars(const VexaPluginLoader& plugin)
{
    QToolBar* toolBox = new QToolBar(tr("Tools"), this);
    toolBox->setObjectName(QStringLiteral("tools"));
    toolBox->setToolButtonStyle(Qt::ToolButtonTextOnly);
    addToolBar(Qt::LeftToolBarArea, toolBox);
    m_toolGroup = new QActionGroup(this);
    // One tool at most; none once a tool with a window of its own has closed it.
    m_toolGroup->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);

    m_toolNames = plugin.toolNames();
    for (const QString& name : m_toolNames) {
        IVexaTool* tool = plugin.createTool(this, name);
        m_tools.append(tool);
        QAction* action = toolBox->addAction(name);
        action->setCheckable(true);
        m_toolGroup->addAction(action);
        if (!tool) {
            action->setEnabled(false);
            action->setToolTip(tr("%1 is not available in this build of the plug-in").arg(name));
            continue;
        }
        action->setToolTip(tool->toolDescription);
        connect(action, &QAction::triggered, this, [this, tool] { activateTool(tool); });
    }

    m_colorButton = new QToolButton(this);
    m_colorButton->setToolTip(tr("Foreground colour"));
    toolBox->addSeparator();
    toolBox->addWidget(m_colorButton);
    connect(m_colorButton, &QToolButton::clicked, this, [this] {
        const QColor c = QColorDialog::getColor(m_canvas->getFgColor(), this, tr("Foreground colour"));
        if (c.isValid())
            m_canvas->setFgColor(c);
    });

    QToolBar* options = new QToolBar(tr("Tool options"), this);
    options->setObjectName(QStringLiteral("options"));
    addToolBar(Qt::TopToolBarArea, options);
    m_optionsHolder = new QWidget(options);
    m_optionsLayout = new QHBoxLayout(m_optionsHolder);
    m_optionsLayout->setContentsMargins(0, 0, 0, 0);
    options->addWidget(m_optionsHolder);
    // One height for every tool's options, so the canvas never jumps when the tool changes.
    int height = 0;
    for (IVexaTool* tool : std::as_const(m_tools))
        if (QWidget* panel = tool && !opensWindow(tool) ? tool->getWidget() : nullptr)
            height = qMax(height, panel->sizeHint().height());
    m_optionsHolder->setFixedHeight(qMax(height, fontMetrics().height() + 16));
}

void VexaEditorWindow::buildViewMenu()
{
    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addAction(tr("Zoom &In"), QKeySequence::ZoomIn, this, [this] { m_canvas->zoomIn(); });
    view->addAction(tr("Zoom &Out"), QKeySequence::ZoomOut, this, [this] { m_canvas->zoomOut(); });
    view->addAction(tr("&Fit to Window"), QKeySequence(tr("Ctrl+0")), this, [this] { m_canvas->fitToWindow(); });
    view->addAction(tr("&100 %"), QKeySequence(tr("Ctrl+1")), this, [this] {
        const QPointF centre(m_canvas->width() / 2.0, m_canvas->height() / 2.0);
        m_canvas->zoomAt(centre, float(m_canvas->getScale()));
    });
}

void VexaEditorWindow::updateToolActions()
{
    // A tool picked with nothing to work on would only seem broken.
    const QList<QAction*> actions = m_toolGroup->actions();
    for (int i = 0; i < actions.size(); ++i)
        actions[i]->setEnabled(m_document && m_tools.value(i));
}

void VexaEditorWindow::updateZoomLabel()
{
    if (!m_document) {
        m_zoom->clear();
        return;
    }
    const double zoom = m_canvas->zoomPercent();
    m_zoom->setText(tr("%1 %").arg(zoom, 0, 'f', zoom < 10.0 ? 1 : 0));
}

void VexaEditorWindow::updateUndoActions()
{
    VexaHistory* history = m_document ? m_document->getHistory() : nullptr;
    m_undoAction->setEnabled(history && history->canUndo());
    m_redoAction->setEnabled(history && history->canRedo());
    // The menu says what Ctrl+Z would take back: "Undo Quick Select", "Redo Move Selection".
    const QString undone = history ? history->undoText() : QString();
    const QString redone = history ? history->redoText() : QString();
    m_undoAction->setText(undone.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(undone));
    m_redoAction->setText(redone.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(redone));
}

void VexaEditorWindow::settleSelectionOffset()
{
    // An outline shifted by the move tool's keys and not yet in the mask becomes a step of its
    // own first, so undo takes back exactly that shift instead of replaying the mask under it.
    VexaSelection* selection = m_document->getSelection();
    if (!selection->getTranslation().isNull() && !m_document->getHistory()->isReplaying()) {
        selection->applyTranslation();
        refreshSelection();
    }
}

bool VexaEditorWindow::opensWindow(const IVexaTool* tool)
{
    return tool
        && (tool->toolId == QLatin1String("95EDCB73-6A06-4479-BC81-8933952705Q3")
            || tool->toolId == QLatin1String("C19B4288-9DD2-4308-9D38-1EE056F7D9C3"));
}

void VexaEditorWindow::checkToolAction(IVexaTool* tool)
{
    const int i = int(m_tools.indexOf(tool));
    if (i >= 0) {
        m_toolGroup->actions().at(i)->setChecked(true);
    } else if (QAction* checked = m_toolGroup->checkedAction()) {
        checked->setChecked(false);
    }
}

void VexaEditorWindow::onToolLeft(IVexaTool* now)
{
    // A tool that closed itself (a dialog's OK or Cancel) is no longer the picked one: picking
    // it again opens it again.
    if (now || !m_current || m_current->isActive())
        return;
    m_current = nullptr;
    m_chosen = nullptr;
    showOptions(nullptr);
    checkToolAction(nullptr);
}

IVexaTool* VexaEditorWindow::tool(const QString& name) const
{
    const int i = int(m_toolNames.indexOf(name));
    return i >= 0 ? m_tools.value(i) : nullptr;
}

void VexaEditorWindow::deactivateTool()
{
    if (!m_current)
        return;
    IVexaTool* previous = m_current;
    m_current = nullptr;
    previous->disActive();
    showOptions(nullptr);
}

void VexaEditorWindow::activateTool(IVexaTool* tool)
{
    if (tool && tool == m_current && tool->isActive()) {
        checkToolAction(tool); // a click on the checked button unchecks it
        return;
    }
    deactivateTool();
    m_chosen = tool;
    checkToolAction(tool);
    if (!tool || !m_document)
        return;
    m_current = tool;
    m_document->setCurrentTool(tool);
    if (!opensWindow(tool))
        showOptions(tool);
    // A tool with a modal window of its own returns from active() only when that window closes.
    tool->active(m_document.get());
    if (m_current == tool && !tool->isActive()) {
        // The tool's modal window closed and the tool deactivated itself without telling the
        // document: none is current, and picking it again opens it again.
        onToolLeft(nullptr);
        refreshSelection();
    }
    m_canvas->setFocus();
    m_canvas->update();
}

void VexaEditorWindow::showOptions(IVexaTool* tool)
{
    if (m_shownOptions) {
        m_optionsLayout->removeWidget(m_shownOptions);
        m_shownOptions->setParent(nullptr);
        m_shownOptions = nullptr;
    }
    QWidget* panel = tool ? tool->getWidget() : nullptr;
    // A tool's window that lives in a container of its own is no options panel.
    if (!panel || (panel->parentWidget() && panel->parentWidget() != m_optionsHolder))
        return;
    m_shownOptions = panel;
    m_optionsLayout->addWidget(panel);
}

bool VexaEditorWindow::openImage(const QString& fileName, QString* error)
{
    const BusyCursor busy;
    // The document is built where the photo is decoded: converting a camera-sized photo to the
    // layer's format and clearing its selection mask take a fifth of a second the window spends
    // drawing instead. Its objects then move to this thread, where they live from then on.
    QString why;
    std::unique_ptr<VexaContext> document;
    QThread* const home = thread();
    inBackground(this, tr("Opening %1…").arg(QFileInfo(fileName).fileName()), [fileName, home, &why, &document] {
        QImage image = VexaImageFile::read(fileName, &why);
        if (image.isNull())
            return false;
        document = VexaContext::fromImage(std::move(image), &why);
        if (document)
            document->moveToThread(home);
        return true;
    });
    if (!document) {
        if (error)
            *error = tr("Cannot open %1: %2").arg(QDir::toNativeSeparators(fileName), why);
        return false;
    }
    IVexaTool* keep = m_chosen;
    deactivateTool();
    m_canvas->setContext(document.get());
    VexaContextManager::getInstance()->setCurrentContext(document.get());
    m_document = std::move(document);
    connect(m_document->getHistory(), &VexaHistory::changed, this, &VexaEditorWindow::updateUndoActions);
    connect(m_document.get(), &VexaContext::currentToolChanged, this, &VexaEditorWindow::onToolLeft);
    m_fileName = fileName;
    updateTitle();
    updateUndoActions();
    updateToolActions();
    updateZoomLabel();
    m_position->clear();
    // The picked tool works on the new document at once; a tool with a window waits to be picked.
    activateTool(opensWindow(keep) ? nullptr : keep);
    return true;
}

namespace {
// A name without an extension gets ".png", the format written.
QString withPngSuffix(const QString& fileName)
{
    return QFileInfo(fileName).suffix().isEmpty() ? fileName + QStringLiteral(".png") : fileName;
}
} // namespace

bool VexaEditorWindow::saveImage(const QString& name, QString* error)
{
    const QString fileName = withPngSuffix(name);
    if (!m_document) {
        if (error)
            *error = tr("There is no document to save.");
        return false;
    }
    // Through a temporary file: a save that fails (full disk, lost folder) keeps the old file.
    const BusyCursor busy;
    // Composed on the pool thread too: a partly transparent photo goes through two full-size
    // conversions. Nothing changes the document meanwhile, as input waits.
    const VexaContext* document = m_document.get();
    return inBackground(this, tr("Saving %1…").arg(QFileInfo(fileName).fileName()),
                        [document, fileName, error] { return VexaImageSave::save(document->composed(), fileName, error); });
}

bool VexaEditorWindow::exportSelectionMask(const QString& name, QString* error)
{
    const QString fileName = withPngSuffix(name);
    if (!m_document) {
        if (error)
            *error = tr("There is no document.");
        return false;
    }
    const BusyCursor busy;
    const QImage mask = m_document->getSelection()->toImage();
    return inBackground(this, tr("Saving %1…").arg(QFileInfo(fileName).fileName()),
                        [mask, fileName, error] { return VexaImageSave::save(mask, fileName, error, "png"); });
}

void VexaEditorWindow::updateTitle()
{
    const QString name = m_fileName.isEmpty() ? tr("No document") : QFileInfo(m_fileName).fileName();
    setWindowTitle(tr("%1 - Vexa Selections").arg(name));
}

void VexaEditorWindow::updateColorButton()
{
    QPixmap swatch(20, 20);
    swatch.fill(m_canvas->getFgColor());
    QPainter p(&swatch);
    p.setPen(Qt::black);
    p.drawRect(0, 0, 19, 19);
    p.end();
    m_colorButton->setIcon(QIcon(swatch));
}

void VexaEditorWindow::refreshSelection()
{
    if (m_document)
        m_document->getSelection()->render(m_canvas);
}

QString VexaEditorWindow::openFilter()
{
    // Only what this machine's image plug-ins read: a format offered but not installed would
    // fail as "Unsupported image format" after the user picked the file.
    const QList<QByteArray> readable = QImageReader::supportedImageFormats();
    QStringList patterns;
    for (const char* suffix : {"png", "jpg", "jpeg", "bmp", "gif", "tif", "tiff", "webp"})
        if (readable.contains(suffix))
            patterns << QStringLiteral("*.%1").arg(QLatin1String(suffix));
    return tr("Images (%1)").arg(patterns.join(QLatin1Char(' ')));
}

void VexaEditorWindow::showAndOpen(const QString& fileName)
{
    // The window first, so that a photo that cannot be opened is reported over the editor the
    // user is looking at, not over an empty screen before it.
    show();
    QString error;
    if (!openImage(fileName, &error))
        QMessageBox::warning(this, tr("Open Image"), error);
}

void VexaEditorWindow::onOpen()
{
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Open Image"), QFileInfo(m_fileName).path(), openFilter());
    if (fileName.isEmpty())
        return;
    QString error;
    if (!openImage(fileName, &error))
        QMessageBox::warning(this, tr("Open Image"), error);
}

void VexaEditorWindow::onSaveImage()
{
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Save Image"), QString(), tr("PNG image (*.png)"));
    if (fileName.isEmpty())
        return;
    QString error;
    if (!saveImage(fileName, &error))
        QMessageBox::warning(this, tr("Save Image"), error);
}

void VexaEditorWindow::onExportMask()
{
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Export Selection Mask"), QString(), tr("PNG image (*.png)"));
    if (fileName.isEmpty())
        return;
    QString error;
    if (!exportSelectionMask(fileName, &error))
        QMessageBox::warning(this, tr("Export Selection Mask"), error);
}
