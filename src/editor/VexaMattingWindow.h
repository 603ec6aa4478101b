#pragma once

#include <QMainWindow>
#include <QPointer>

class QActionGroup;
class QComboBox;
class QScrollArea;
class QSpinBox;
class VexaContext;

// The editor's window around the plug-in's GPU matting view: the current document, scaled
// down to fit 1536 x 1536 like quick select's working image, with a tool bar for the mark
// mode, brush radius, Flood, Matte, Reset, the three views and "Use as selection".
//
// The editor does not link the plug-in, so the view is made and driven through its
// meta-object, found in the loaded plug-in by the exported class's symbol.
class VexaMattingWindow : public QMainWindow
{
    Q_OBJECT
public:
    // The view's class in the plug-in file, or null when the plug-in has none.
    static const QMetaObject* viewClass(const QString& pluginFile);

    VexaMattingWindow(const QMetaObject* viewClass, VexaContext* document, QWidget* parent = nullptr);

    QWidget* view() const { return m_view; }
    // Size of the image the view works on.
    QSize workingSize() const { return m_working; }

    void setMarkMode(int mode);
    void setBrushRadius(int radius);
    // 0 image with marks, 1 matte, 2 composite.
    void setViewMode(int mode);
    // Grows the object and background marks until they meet the unknown band or each other.
    void flood();
    void matte();
    void reset();
    // The view's matte, at the working size; null without a view.
    QImage matteImage() const;
    // Replaces the document's selection by the matte at the canvas size. False (and a reason)
    // when the document is gone or has another size than when the window opened.
    bool useAsSelection(QString* error = nullptr);

private:
    QPointer<VexaContext> m_document;
    QSize m_canvasSize;
    QSize m_working;
    QWidget* m_view = nullptr;
    QScrollArea* m_scroll = nullptr;
    QComboBox* m_markMode = nullptr;
    QSpinBox* m_radius = nullptr;
    QActionGroup* m_views = nullptr;
};
