#pragma once

#include <QEvent>
#include <QMainWindow>
#include <QPoint>
#include <QPointer>
#include <QVector>

class QActionGroup;
class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;
class QUndoStack;
class VexaContext;
class VexaMattingStep;

// The editor's window around the plug-in's GPU matting view: the current document, scaled
// down to fit 1536 x 1536 like quick select's working image, with a tool bar for the mark
// mode, brush radius, Flood, Matte, Reset, the three views and "Use as selection".
//
// The editor does not link the plug-in, so the view is made and driven through its
// meta-object, found in the loaded plug-in by the exported class's symbol.
//
// Strokes, floods, mattes and resets are undoable. The view keeps its marks on the graphics
// card and offers no way to read or write them, so the window records each operation (a
// stroke as the mouse events the view received) and undoes by resetting the view and
// replaying the operations before the undone one; the view is deterministic, so the replay
// gives back exactly the earlier marks and matte.
class VexaMattingWindow : public QMainWindow
{
    Q_OBJECT
    friend class VexaMattingStep;

public:
    // One undoable operation on the view.
    struct Operation {
        enum Kind { Stroke, Flood, Matte, Reset };
        struct MouseInput {
            QEvent::Type type;
            Qt::MouseButton button;
            Qt::MouseButtons buttons;
            QPoint position;
        };
        Kind kind = Stroke;
        int markMode = 0;
        int brushRadius = 4;
        bool autoFill = false;
        QVector<MouseInput> input; // a stroke's events
        int rounds = 0;            // a flood's rounds of passes
    };

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
    QUndoStack* undoStack() const { return m_undo; }
    // Widget pixels per image pixel of the view.
    double zoom() const { return m_zoom; }
    // Shows the image at `zoom`, keeping the image point under `anchor` (a position in the
    // scroll area's viewport; its centre without one) in place.
    void setZoom(double zoom, QPoint anchor = QPoint(-1, -1));
    // The largest zoom, at most 100 %, that shows the whole image.
    void fitToWindow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void push(const Operation& operation);
    void apply(const Operation& operation);
    // Resets the view and applies the first `count` operations of the undo stack again.
    void replay(int count);
    // Where the window opens: fitted to the photo, but whole on the screen.
    void placeOnScreen(const QSize& toolBarSize);
    // Space + drag moves the photo in the scroll area, as on the editor's canvas; true when
    // the event was the hand's and must not reach the view.
    bool panByHand(QEvent* event);
    void stepZoom(QPoint anchor, int direction);

    QPointer<VexaContext> m_document;
    QSize m_canvasSize;
    QSize m_working;
    QWidget* m_view = nullptr;
    QScrollArea* m_scroll = nullptr;
    QComboBox* m_markMode = nullptr;
    QSpinBox* m_radius = nullptr;
    QActionGroup* m_views = nullptr;
    QUndoStack* m_undo = nullptr;
    bool m_replaying = false;
    bool m_stroking = false;
    // A pointer event in image pixels on its way to the view.
    bool m_forwarding = false;
    bool m_fitted = false;
    double m_zoom = 1.0;
    int m_wheelRest = 0;
    QLabel* m_zoomLabel = nullptr;
    bool m_spaceHeld = false;
    bool m_panning = false;
    QPoint m_panStart;
    QPoint m_scrollStart;
    // A Shift + left stroke in the default mode paints background: the mode it overrode.
    int m_overriddenMode = -1;
    Operation m_stroke;
};
