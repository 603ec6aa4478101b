#pragma once

#include <QColor>
#include <QCursor>
#include <QElapsedTimer>
#include <QImage>
#include <QOpenGLWidget>
#include <QPointF>
#include <QPointer>
#include <QTimer>

#include <vector>

class VexaColorPicker;
class VexaContext;

// Shows a document with zoom and pan, its selection outline and the current tool's rubber
// band. Pointer input reaches tools as signals in widget pixels; keys go to the current tool.
// Middle-button drags and Space + drag pan, the wheel zooms around the pointer.
class VexaCanvas : public QOpenGLWidget
{
    Q_OBJECT
public:
    explicit VexaCanvas(QWidget* parent = nullptr);
    ~VexaCanvas() override;

    void setContext(VexaContext* context);
    VexaContext* getContext() const { return m_context; }

    virtual int getCanvasWidth() const;
    virtual int getCanvasHeight() const;
    // Widget pixel to canvas position; with `clampToCanvas` the result lies within [0, width] x [0, height].
    virtual QPointF uiToCanvasCoord(int x, int y, bool clampToCanvas) const;
    QPointF canvasToUi(const QPointF& point) const;
    // Canvas pixels per widget pixel.
    virtual float getScale() const { return m_scale; }
    // Sets the view: `scale` canvas pixels per widget pixel, canvas (0, 0) shown at widget `origin`.
    void setView(float scale, const QPointF& origin);
    QPointF viewOrigin() const { return m_origin; }
    void fitToWindow();
    void zoomAt(const QPointF& widgetPos, float factor);
    // One step up or down the editor's zoom levels (100 %, 200 %, 50 % ... among them), keeping
    // the canvas point under `widgetPos` in place; at the centre without one.
    void zoomIn(const QPointF& widgetPos = QPointF(-1, -1));
    void zoomOut(const QPointF& widgetPos = QPointF(-1, -1));
    // The zoom in percent: widget pixels per canvas pixel, times 100.
    double zoomPercent() const { return 100.0 / double(m_scale); }

    // Brings every layer's newest pixels into host memory before a tool reads them.
    virtual void syncLayerPixels();

    virtual QColor getFgColor() const { return m_fgColor; }
    void setFgColor(const QColor& color);
    // A new image of the composed document; the caller owns it.
    virtual QImage* renderToImage(VexaContext* context);
    virtual VexaColorPicker* getColorPickerWidget() const { return m_picker; }

    // Number of line segments of the selection outline last drawn (for checks and tests).
    int outlineSegmentCount();
    // True once the card holds every row of the document as it stands; a camera-sized
    // document goes to the card in strips over a few frames.
    bool pictureComplete() const { return !m_textureDirty && m_uploadedRows >= m_textureSize.height(); }

signals:
    void mousePress(int x, int y);
    void mouseMove(int x, int y);
    void mouseRelease(int x, int y);
    void mouseDoubleClick(int x, int y);
    void mouseEnter();
    void drawFeedback();
    void timeOut();
    void FgColorChange(QColor color);
    // Zoom or pan changed.
    void viewChanged();

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int w, int h) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void onTick();
    void documentChanged();
    void selectionChanged();
    void pickAt(const QPointF& widgetPos);
    // At a whole-number zoom (or its inverse) canvas pixels start on widget pixels, so the
    // photo is drawn without resampling and a pointer over a pixel reports that pixel.
    void snapOrigin();
    void viewMoved();
    void stepZoom(const QPointF& widgetPos, int direction);
    // Space held: the pointer grabs the photo instead of reaching the tool.
    void holdSpace(bool held);
    void startPan(const QPointF& at);
    void endPan();
    // The cursor the tool had before a pan took it over, back again.
    void restoreToolCursor();
    // Lets the tool see the modifier keys of an input event before the event itself.
    void noteModifiers(Qt::KeyboardModifiers modifiers);
    // Sends the next strips of the document to the card while `frame` is young; the frames
    // that follow send the rest.
    void uploadTexture(const QElapsedTimer& frame);
    void dropStrips();
    // The named host event a key raises ("ESC", "DELETE"), or empty.
    static QString namedEventFor(int key);
    bool toolWants(const QString& name) const;
    // A tool whose shape takes several clicks (a polygon) says so by a "shapeInProgress"
    // property; until it is finished, its clicks are one gesture, so one undo step.
    bool toolHoldsShape() const;
    // A tool that combines a shape drawn with the right button by subtracting says so by a
    // "rightButtonSubtracts" property; while such a drag lasts the canvas carries a true
    // "subtractDrag" property, which the tool reads as it reads a held modifier.
    bool toolTakesRightButton() const;
    void beginGesture();
    void endGesture();

    QPointer<VexaContext> m_context;
    VexaColorPicker* m_picker;
    QTimer m_timer;
    QColor m_fgColor = Qt::black;
    float m_scale = 1.0f;
    QPointF m_origin;
    bool m_viewChosen = false;
    bool m_panning = false;
    bool m_spaceHeld = false;
    // A press that went to the tool, whose release must go there too.
    Qt::MouseButton m_toolButton = Qt::NoButton;
    Qt::MouseButton m_panButton = Qt::NoButton;
    bool m_cursorTaken = false;
    bool m_toolHadCursor = false;
    QCursor m_toolCursor;
    int m_wheelRest = 0;
    QPointF m_panLast;
    bool m_picking = false;
    int m_antsPhase = 0;
    Qt::KeyboardModifiers m_lastModifiers;

    // A change only marks these stale; they are made again when next drawn or read. On a
    // camera-sized document each costs a pass over every pixel, and one command (quick
    // select's OK) changes the selection four times before the screen shows any of it.
    void settleOutline();
    bool m_outlineStale = false;
    bool m_textureDirty = true;
    // The document on the card, in strips of rows of about 16 MB each: a camera-sized photo
    // reaches the card over a few frames, one strip's storage and pixels at a time.
    std::vector<unsigned int> m_strips;
    int m_stripRows = 1;
    QSize m_textureSize;       // of the document as the strips hold it
    int m_uploadedRows = 0;    // rows of the document sent, from the top
    bool m_textureNew = false; // the strips below m_uploadedRows hold nothing of this document
    QImage m_uploadSource;     // a composed document held between frames (never a layer's own pixels)
    unsigned int m_antsTexture = 0;
    unsigned int m_checkerTexture = 0;
    std::vector<float> m_outline;
};
