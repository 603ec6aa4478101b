#pragma once

#include <QList>
#include <QMainWindow>
#include <QPointer>

#include <memory>

#include "IVexaTool.h"

class QActionGroup;
class QHBoxLayout;
class QLabel;
class QToolButton;
class VexaCanvas;
class VexaContext;
class VexaMattingWindow;
class VexaPluginLoader;

// The demo editor's window: a canvas showing one document, the plug-in's tools in a tool bar,
// the active tool's options above the canvas, and the usual file, edit and select commands.
class VexaEditorWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit VexaEditorWindow(const VexaPluginLoader& plugin, QWidget* parent = nullptr);
    ~VexaEditorWindow() override;

    // Opens an image as the document. On failure the current document stays and `error` says why.
    bool openImage(const QString& fileName, QString* error);
    // Shows the window, then opens `fileName`; a failure is reported in a message box over it.
    void showAndOpen(const QString& fileName);
    bool saveImage(const QString& fileName, QString* error);
    // Writes the selection as an 8-bit grey PNG of the canvas size.
    bool exportSelectionMask(const QString& fileName, QString* error);

    VexaCanvas* canvas() const { return m_canvas; }
    VexaContext* document() const { return m_document.get(); }
    // Tools in tool-box order; null where the plug-in does not provide one of its names.
    const QList<IVexaTool*>& tools() const { return m_tools; }
    const QStringList& toolNames() const { return m_toolNames; }
    IVexaTool* tool(const QString& name) const;
    IVexaTool* currentTool() const { return m_current; }
    // Picks `tool`: it is activated on the document now, or on the next one opened.
    void activateTool(IVexaTool* tool);
    void deactivateTool();
    // The tool the tool bar shows as picked (active whenever a document is open).
    IVexaTool* chosenTool() const { return m_chosen; }
    // Select > Matting View: the plug-in's GPU matting view on the document, in a window of its
    // own (a new one each time). Null without a document or without the view in the plug-in.
    VexaMattingWindow* openMattingView();
    // The Open dialog's filter: the image files this machine can open.
    static QString openFilter();

private:
    void buildMenus();
    void buildToolBars(const VexaPluginLoader& plugin);
    void showOptions(IVexaTool* tool);
    void updateTitle();
    void updateColorButton();
    void onOpen();
    void onSaveImage();
    void onExportMask();
    void refreshSelection();
    void buildViewMenu();
    void updateUndoActions();
    void settleSelectionOffset();
    void updateZoomLabel();
    void updateToolActions();
    void checkToolAction(IVexaTool* tool);
    void onToolLeft(IVexaTool* now);
    // Tools whose activation opens a window of their own (color range, quick select): they are
    // opened by picking them, never by opening a document.
    static bool opensWindow(const IVexaTool* tool);

    VexaCanvas* m_canvas;
    std::unique_ptr<VexaContext> m_document;
    QString m_fileName;
    QList<IVexaTool*> m_tools;
    QStringList m_toolNames;
    QActionGroup* m_toolGroup = nullptr;
    QPointer<IVexaTool> m_current;
    QPointer<IVexaTool> m_chosen;
    QAction* m_undoAction = nullptr;
    QAction* m_redoAction = nullptr;
    QLabel* m_zoom = nullptr;
    QWidget* m_optionsHolder = nullptr;
    QHBoxLayout* m_optionsLayout = nullptr;
    QPointer<QWidget> m_shownOptions;
    QToolButton* m_colorButton = nullptr;
    QLabel* m_position = nullptr;
    const QMetaObject* m_mattingClass = nullptr;
    QPointer<VexaMattingWindow> m_matting;
};
