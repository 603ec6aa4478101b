#include "VexaEditorWindow.h"

#include "IVexaTool.h"
#include "VexaActionManager.h"
#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaHistory.h"
#include "VexaMattingWindow.h"
#include "VexaPluginLoader.h"
#include "VexaSelection.h"

#include <QAction>
#include <QActionGroup>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

VexaEditorWindow::VexaEditorWindow(const VexaPluginLoader& plugin, QWidget* parent)
    : QMainWindow(parent)
    , m_canvas(new VexaCanvas(this))
    , m_mattingClass(VexaMattingWindow::viewClass(plugin.fileName()))
{
    setCentralWidget(m_canvas);
    resize(1100, 760);
    buildMenus();
    buildToolBars(plugin);
    m_position = new QLabel(this);
    statusBar()->addPermanentWidget(m_position);
    connect(m_canvas, &VexaCanvas::mouseMove, this, [this](int x, int y) {
        const QPointF c = m_canvas->uiToCanvasCoord(x, y, false);
        m_position->setText(tr("%1, %2  (%3 %)").arg(int(c.x())).arg(int(c.y())).arg(qRound(100.0 / m_canvas->getScale())));
    });
    connect(m_canvas, &VexaCanvas::FgColorChange, this, &VexaEditorWindow::updateColorButton);
    updateColorButton();
    updateTitle();
}

VexaEditorWindow::~VexaEditorWindow()
{
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
    edit->addAction(tr("&Undo"), QKeySequence::Undo, this, [this] {
        if (m_document)
            m_document->getHistory()->undo();
    });
    edit->addAction(tr("&Redo"), QKeySequence::Redo, this, [this] {
        if (m_document)
            m_document->getHistory()->redo();
    });
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
    m_toolGroup->setExclusive(true);

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
    if (tool == m_current)
        return;
    deactivateTool();
    if (!tool || !m_document)
        return;
    m_current = tool;
    m_document->setCurrentTool(tool);
    const int i = int(m_tools.indexOf(tool));
    if (i >= 0)
        m_toolGroup->actions().at(i)->setChecked(true);
    showOptions(tool);
    // A tool with a modal window of its own returns from active() only when that window closes.
    tool->active(m_document.get());
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
    if (!panel)
        return;
    m_shownOptions = panel;
    m_optionsLayout->addWidget(panel);
}

bool VexaEditorWindow::openImage(const QString& fileName, QString* error)
{
    QImageReader reader(fileName);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull()) {
        if (error)
            *error = tr("Cannot open %1: %2").arg(QDir::toNativeSeparators(fileName), reader.errorString());
        return false;
    }
    QString why;
    std::unique_ptr<VexaContext> document = VexaContext::fromImage(image, &why);
    if (!document) {
        if (error)
            *error = tr("Cannot open %1: %2").arg(QDir::toNativeSeparators(fileName), why);
        return false;
    }
    IVexaTool* keep = m_current;
    deactivateTool();
    m_canvas->setContext(document.get());
    VexaContextManager::getInstance()->setCurrentContext(document.get());
    m_document = std::move(document);
    m_fileName = fileName;
    updateTitle();
    if (keep)
        activateTool(keep);
    return true;
}

bool VexaEditorWindow::saveImage(const QString& fileName, QString* error) const
{
    if (!m_document) {
        if (error)
            *error = tr("There is no document to save.");
        return false;
    }
    if (!m_document->composed().save(fileName)) {
        if (error)
            *error = tr("Cannot write %1.").arg(QDir::toNativeSeparators(fileName));
        return false;
    }
    return true;
}

bool VexaEditorWindow::exportSelectionMask(const QString& fileName, QString* error) const
{
    if (!m_document) {
        if (error)
            *error = tr("There is no document.");
        return false;
    }
    if (!m_document->getSelection()->toImage().save(fileName, "PNG")) {
        if (error)
            *error = tr("Cannot write %1.").arg(QDir::toNativeSeparators(fileName));
        return false;
    }
    return true;
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

void VexaEditorWindow::onOpen()
{
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Open Image"), QFileInfo(m_fileName).path(),
                                                          tr("Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)"));
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
