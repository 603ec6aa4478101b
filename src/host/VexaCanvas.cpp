#include "VexaCanvas.h"

#include "IVexaTool.h"
#include "VexaColorPicker.h"
#include "VexaHistory.h"
#include "VexaContext.h"
#include "VexaLayer.h"
#include "VexaLayerManager.h"
#include "VexaMaskOps.h"
#include "VexaSelection.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QSurfaceFormat>
#include <QWheelEvent>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace {
constexpr int tickMs = 100;

} // namespace

VexaCanvas::VexaCanvas(QWidget* parent)
    : QOpenGLWidget(parent)
    , m_picker(new VexaColorPicker(this))
{
    // Tools draw their rubber bands with immediate-mode OpenGL.
    QSurfaceFormat fmt = format();
    fmt.setVersion(2, 1);
    fmt.setProfile(QSurfaceFormat::CompatibilityProfile);
    setFormat(fmt);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(64, 64);
    connect(&m_timer, &QTimer::timeout, this, &VexaCanvas::onTick);
    m_timer.start(tickMs);
    connect(m_picker, &VexaColorPicker::pickingChanged, this, [this](bool picking) {
        if (picking)
            setCursor(Qt::CrossCursor);
        else
            unsetCursor();
    });
}

VexaCanvas::~VexaCanvas()
{
    if (m_antsTexture && context()) {
        makeCurrent();
        dropStrips();
        glDeleteTextures(1, &m_antsTexture);
        glDeleteTextures(1, &m_checkerTexture);
        doneCurrent();
    }
}

void VexaCanvas::setContext(VexaContext* context)
{
    if (m_context) {
        disconnect(m_context, nullptr, this, nullptr);
        disconnect(m_context->getSelection(), nullptr, this, nullptr);
        disconnect(m_context->getLayerManager(), nullptr, this, nullptr);
    }
    m_context = context;
    m_viewChosen = false;
    if (context) {
        context->setCanvas(this);
        connect(context->getSelection(), &VexaSelection::changed, this, &VexaCanvas::selectionChanged);
        connect(context->getSelection(), &VexaSelection::renderRequested, this, &VexaCanvas::selectionChanged);
        connect(context->getSelection(), &VexaSelection::translationChanged, this, qOverload<>(&QWidget::update));
        connect(context->getLayerManager(), &VexaLayerManager::changed, this, &VexaCanvas::documentChanged);
    }
    documentChanged();
    selectionChanged();
    fitToWindow();
}

int VexaCanvas::getCanvasWidth() const { return m_context ? m_context->canvasSize().width() : 0; }
int VexaCanvas::getCanvasHeight() const { return m_context ? m_context->canvasSize().height() : 0; }

QPointF VexaCanvas::uiToCanvasCoord(int x, int y, bool clampToCanvas) const
{
    QPointF p = (QPointF(x, y) - m_origin) * double(m_scale);
    if (clampToCanvas) {
        p.setX(qBound(0.0, p.x(), double(getCanvasWidth())));
        p.setY(qBound(0.0, p.y(), double(getCanvasHeight())));
    }
    return p;
}

QPointF VexaCanvas::canvasToUi(const QPointF& point) const { return point / double(m_scale) + m_origin; }

void VexaCanvas::setView(float scale, const QPointF& origin)
{
    if (!(scale > 0.0f))
        return;
    m_scale = scale;
    m_origin = origin;
    m_viewChosen = true;
    viewMoved();
}

void VexaCanvas::snapOrigin()
{
    const double zoom = 1.0 / double(m_scale);
    const bool whole = std::abs(zoom - std::round(zoom)) < 1e-4 || std::abs(double(m_scale) - std::round(double(m_scale))) < 1e-4;
    if (whole)
        m_origin = QPointF(std::round(m_origin.x()), std::round(m_origin.y()));
}

void VexaCanvas::viewMoved()
{
    snapOrigin();
    update();
    emit viewChanged();
}

namespace {
// Zoom levels in percent that the zoom commands and the wheel step through.
constexpr double zoomLevels[] = {3.125, 6.25, 12.5, 25, 100.0 / 3.0, 50, 200.0 / 3.0, 100, 150, 200, 300,
                                 400,   600,  800,  1200, 1600, 3200, 6400};
} // namespace

void VexaCanvas::stepZoom(const QPointF& widgetPos, int direction)
{
    const double now = zoomPercent();
    double target = now;
    if (direction > 0) {
        for (double level : zoomLevels)
            if (level > now * 1.001) {
                target = level;
                break;
            }
    } else {
        for (double level : zoomLevels)
            if (level < now / 1.001)
                target = level;
    }
    if (target == now)
        return;
    const QPointF at = widgetPos.x() < 0 ? QPointF(width() / 2.0, height() / 2.0) : widgetPos;
    zoomAt(at, float(target / now));
    m_scale = float(100.0 / target); // exact, so the level counts as whole
    viewMoved();
}

void VexaCanvas::zoomIn(const QPointF& widgetPos) { stepZoom(widgetPos, 1); }
void VexaCanvas::zoomOut(const QPointF& widgetPos) { stepZoom(widgetPos, -1); }

void VexaCanvas::fitToWindow()
{
    const int w = getCanvasWidth(), h = getCanvasHeight();
    if (w <= 0 || h <= 0 || width() <= 16 || height() <= 16)
        return;
    const float margin = 16.0f;
    float s = std::max(float(w) / (float(width()) - margin), float(h) / (float(height()) - margin));
    s = std::max(s, 1.0f); // small pictures are shown at 100 %, never blown up
    m_scale = s;
    m_origin = QPointF((width() - w / s) / 2.0, (height() - h / s) / 2.0);
    viewMoved();
}

void VexaCanvas::zoomAt(const QPointF& widgetPos, float factor)
{
    const float s = qBound(1.0f / 32.0f, m_scale / factor, 64.0f);
    const QPointF anchor = (widgetPos - m_origin) * double(m_scale);
    m_scale = s;
    m_origin = widgetPos - anchor / double(s);
    m_viewChosen = true;
    viewMoved();
}

void VexaCanvas::syncLayerPixels()
{
    if (!m_context)
        return;
    VexaLayerManager* layers = m_context->getLayerManager();
    for (int i = 0; i < layers->getLayerCount(); ++i) {
        VexaLayer* layer = layers->layerAt(i);
        if (layer->getLatestPlace() == VexaLayer::OnDevice) {
            layer->fboTextureToHost(true);
            layer->setLatestPlace(VexaLayer::InHost);
        }
    }
}

void VexaCanvas::setFgColor(const QColor& color)
{
    if (color == m_fgColor)
        return;
    m_fgColor = color;
    emit FgColorChange(color);
}

QImage* VexaCanvas::renderToImage(VexaContext* context)
{
    if (!context)
        context = m_context;
    if (!context)
        return nullptr;
    return std::make_unique<QImage>(context->composed()).release();
}

void VexaCanvas::onTick()
{
    m_antsPhase = (m_antsPhase + 1) % 8;
    emit timeOut();
    if (!isVisible())
        return;
    settleOutline();
    if (!m_outline.empty())
        update();
}

void VexaCanvas::documentChanged()
{
    m_textureDirty = true;
    update();
}

void VexaCanvas::selectionChanged()
{
    m_outlineStale = true;
    update();
}

void VexaCanvas::settleOutline()
{
    if (!m_outlineStale || (m_context && m_context->getSelection()->isBeingWritten()))
        return;
    m_outlineStale = false;
    // A photo just opened has no selection, and knows it without a pass over its mask.
    if (m_context && m_context->getSelection()->hasSelection()) {
        VexaSelection* sel = m_context->getSelection();
        m_outline = VexaMaskOps::outline(sel->mask(), sel->width(), sel->height(), sel->maskStride());
    } else {
        m_outline.clear();
    }
}

int VexaCanvas::outlineSegmentCount()
{
    settleOutline();
    return int(m_outline.size() / 4);
}

void VexaCanvas::initializeGL()
{
    m_strips.clear(); // of another context, if any: gone with it
    m_textureSize = QSize();
    m_textureDirty = true;
    const unsigned char dashes[8 * 4] = {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255,
                                         255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
    glGenTextures(1, &m_antsTexture);
    glBindTexture(GL_TEXTURE_1D, m_antsTexture);
    glTexImage1D(GL_TEXTURE_1D, 0, GL_RGBA, 8, 0, GL_RGBA, GL_UNSIGNED_BYTE, dashes);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glBindTexture(GL_TEXTURE_1D, 0);
    // Grey and white cells of 8 document pixels under the document, where it is transparent:
    // drawn by the card, so the document's own pixels go to the texture as they are.
    const unsigned char cells[4 * 4] = {255, 255, 255, 255, 204, 204, 204, 255, 204, 204, 204, 255, 255, 255, 255, 255};
    glGenTextures(1, &m_checkerTexture);
    glBindTexture(GL_TEXTURE_2D, m_checkerTexture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, cells);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void VexaCanvas::resizeGL(int, int)
{
    if (!m_viewChosen)
        fitToWindow();
}

void VexaCanvas::dropStrips()
{
    if (!m_strips.empty())
        glDeleteTextures(GLsizei(m_strips.size()), m_strips.data());
    m_strips.clear();
    m_textureSize = QSize();
}

void VexaCanvas::uploadTexture(const QElapsedTimer& frame)
{
    if (!m_context || m_context->isBeingWritten())
        return; // a pool thread is writing the document: the last picture stays meanwhile
    const bool restart = m_textureDirty;
    m_textureDirty = false;
    if (restart) {
        m_uploadedRows = 0;
        m_uploadSource = QImage();
    }
    // A layer's own pixels are fetched again for each frame rather than held: held, they would
    // be shared, and the next edit of the layer would copy all of them first.
    QImage document = !m_uploadSource.isNull() ? m_uploadSource : m_context->getLayerManager()->shown(m_context->canvasSize());
    if (document.isNull()) {
        dropStrips();
        return;
    }
    if (restart) {
        // A photo wider or taller than the card's largest texture is shown from a reduced copy
        // (the document itself keeps every pixel).
        GLint maxSize = 0;
        glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSize);
        if (maxSize > 0 && (document.width() > maxSize || document.height() > maxSize))
            document = document.scaled(QSize(maxSize, maxSize), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        if (document.isDetached())
            m_uploadSource = document;
        if (document.size() != m_textureSize) {
            dropStrips();
            m_textureSize = document.size();
            m_stripRows = std::max(1, int((16 << 20) / std::max<qsizetype>(1, document.bytesPerLine())));
            m_textureNew = true;
        }
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    // Up to 15 ms of the frame, the outline's pass included; a new document gets at least its
    // first strip, an edit of the one shown keeps its last picture until the next frame.
    const int height = m_textureSize.height();
    while (m_uploadedRows < height && (frame.elapsed() < 15 || (m_textureNew && m_uploadedRows == 0))) {
        const size_t index = size_t(m_uploadedRows / m_stripRows);
        const int rows = std::min(m_stripRows, height - m_uploadedRows);
        // The card reads 32-bit ARGB words (0xAARRGGBB) as they stand, on any byte order: no
        // display copy of a camera-sized photo.
        const uchar* pixels = document.constScanLine(m_uploadedRows);
        if (index < m_strips.size()) {
            glBindTexture(GL_TEXTURE_2D, m_strips[index]);
            glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, m_textureSize.width(), rows, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels);
        } else {
            GLuint strip = 0;
            glGenTextures(1, &strip);
            m_strips.push_back(strip);
            glBindTexture(GL_TEXTURE_2D, strip);
            glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, m_textureSize.width(), rows, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        }
        m_uploadedRows += rows;
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    if (m_uploadedRows < height) {
        // The next frame sends the next strips, after the timers that fell due meanwhile: an
        // update request at once would be served first, frame after frame.
        QTimer::singleShot(1, this, qOverload<>(&QWidget::update));
    } else {
        m_textureNew = false;
        m_uploadSource = QImage();
    }
}

void VexaCanvas::paintGL()
{
    glClearColor(0.24f, 0.24f, 0.25f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    if (!m_context)
        return;
    QElapsedTimer frame;
    frame.start();
    settleOutline();
    if (m_textureDirty || m_uploadedRows < m_textureSize.height())
        uploadTexture(frame);

    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, width(), height(), 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(m_origin.x(), m_origin.y(), 0);
    glScaled(1.0 / m_scale, 1.0 / m_scale, 1.0);

    // The document over its checkerboard: sharp pixels when zoomed in, smoothed when zoomed out.
    const GLint filter = m_scale <= 1.0f ? GL_NEAREST : GL_LINEAR;
    const double w = getCanvasWidth();
    // A new document appears top down as its strips arrive: the rest holds nothing of it yet.
    const int shownRows = m_textureNew ? m_uploadedRows : m_textureSize.height();
    const double rowHeight = m_textureSize.height() > 0 ? getCanvasHeight() / double(m_textureSize.height()) : 0.0;
    const double h = shownRows * rowHeight;
    glEnable(GL_TEXTURE_2D);
    glColor4f(1, 1, 1, 1);
    glBindTexture(GL_TEXTURE_2D, m_checkerTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    glBegin(GL_QUADS);
    glTexCoord2d(0, 0); glVertex2d(0, 0);
    glTexCoord2d(w / 16, 0); glVertex2d(w, 0);
    glTexCoord2d(w / 16, h / 16); glVertex2d(w, h);
    glTexCoord2d(0, h / 16); glVertex2d(0, h);
    glEnd();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    for (size_t i = 0; i < m_strips.size() && int(i) * m_stripRows < shownRows; ++i) {
        const double top = double(i) * m_stripRows * rowHeight;
        const double bottom = std::min(double(i + 1) * m_stripRows, double(m_textureSize.height())) * rowHeight;
        glBindTexture(GL_TEXTURE_2D, m_strips[i]);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
        glBegin(GL_QUADS);
        glTexCoord2d(0, 0); glVertex2d(0, top);
        glTexCoord2d(1, 0); glVertex2d(w, top);
        glTexCoord2d(1, 1); glVertex2d(w, bottom);
        glTexCoord2d(0, 1); glVertex2d(0, bottom);
        glEnd();
    }
    glDisable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, 0);

    // Marching ants: black and white dashes laid along the window diagonal by a 1-D texture,
    // so they stay even on the short pixel-edge segments of any outline and shift every tick.
    if (!m_outline.empty()) {
        const QPointF t = m_context->getSelection()->getTranslation();
        glPushMatrix();
        glLoadIdentity();
        const GLfloat plane[4] = {1.0f / 8.0f, 1.0f / 8.0f, 0.0f, float(m_antsPhase) / 8.0f};
        glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR);
        glTexGenfv(GL_S, GL_EYE_PLANE, plane); // given in widget pixels: the modelview is identity here
        // Half a pixel puts the lines on pixel centres, so they never fall between two columns.
        glTranslated(m_origin.x() + 0.5, m_origin.y() + 0.5, 0);
        glScaled(1.0 / m_scale, 1.0 / m_scale, 1.0);
        glTranslated(t.x(), t.y(), 0);
        glEnable(GL_TEXTURE_GEN_S);
        glBindTexture(GL_TEXTURE_1D, m_antsTexture);
        glEnable(GL_TEXTURE_1D);
        glColor4f(1, 1, 1, 1);
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(2, GL_FLOAT, 0, m_outline.data());
        glDrawArrays(GL_LINES, 0, GLsizei(m_outline.size() / 2));
        glDisableClientState(GL_VERTEX_ARRAY);
        glDisable(GL_TEXTURE_1D);
        glDisable(GL_TEXTURE_GEN_S);
        glBindTexture(GL_TEXTURE_1D, 0);
        glPopMatrix();
    }

    emit drawFeedback();
    glDisable(GL_BLEND);
}

QString VexaCanvas::namedEventFor(int key)
{
    switch (key) {
    case Qt::Key_Escape:
        return QStringLiteral("ESC");
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        return QStringLiteral("DELETE");
    default:
        return QString();
    }
}

bool VexaCanvas::toolWants(const QString& name) const
{
    IVexaTool* tool = m_context ? m_context->currentTool() : nullptr;
    return tool && !name.isEmpty() && tool->eventRegistered(name);
}

bool VexaCanvas::toolHoldsShape() const
{
    IVexaTool* tool = m_context ? m_context->currentTool() : nullptr;
    return tool && tool->property("shapeInProgress").toBool();
}

bool VexaCanvas::toolTakesRightButton() const
{
    IVexaTool* tool = m_context ? m_context->currentTool() : nullptr;
    return tool && tool->property("rightButtonSubtracts").toBool();
}

void VexaCanvas::beginGesture()
{
    if (!m_context)
        return;
    VexaHistory* history = m_context->getHistory();
    if (!(history->inGesture() && toolHoldsShape()))
        history->beginGesture();
}

void VexaCanvas::endGesture()
{
    if (m_context && !toolHoldsShape())
        m_context->getHistory()->endGesture();
}

bool VexaCanvas::event(QEvent* event)
{
    // A tool that registered "DELETE" or "ESC" gets those keys before the editor's shortcuts.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (toolWants(namedEventFor(key->key()))) {
            event->accept();
            return true;
        }
    }
    return QOpenGLWidget::event(event);
}

void VexaCanvas::keyPressEvent(QKeyEvent* event)
{
    // Space is the editor's hand: held, a drag pans instead of drawing. Its repeats are
    // swallowed, so a tool never sees them.
    if (event->key() == Qt::Key_Space && m_context) {
        if (!event->isAutoRepeat() && m_toolButton == Qt::NoButton)
            holdSpace(true);
        return;
    }
    IVexaTool* tool = m_context ? m_context->currentTool() : nullptr;
    if (!tool) {
        QOpenGLWidget::keyPressEvent(event);
        return;
    }
    tool->event(event);
    const QString name = namedEventFor(event->key());
    if (!event->isAutoRepeat() && toolWants(name))
        tool->processEvent(name);
    update();
}

void VexaCanvas::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && m_context) {
        if (!event->isAutoRepeat())
            holdSpace(false);
        return;
    }
    IVexaTool* tool = m_context ? m_context->currentTool() : nullptr;
    if (!tool) {
        QOpenGLWidget::keyReleaseEvent(event);
        return;
    }
    tool->event(event);
    update();
}

void VexaCanvas::focusOutEvent(QFocusEvent* event)
{
    // The release of a Space held while the focus leaves never comes here.
    holdSpace(false);
    QOpenGLWidget::focusOutEvent(event);
}

void VexaCanvas::holdSpace(bool held)
{
    if (held == m_spaceHeld)
        return;
    m_spaceHeld = held;
    if (m_panning)
        return;
    if (held) {
        if (!m_cursorTaken) {
            m_toolHadCursor = testAttribute(Qt::WA_SetCursor);
            m_toolCursor = cursor();
            m_cursorTaken = true;
        }
        setCursor(Qt::OpenHandCursor);
    } else {
        restoreToolCursor();
    }
}

void VexaCanvas::startPan(const QPointF& at)
{
    m_panning = true;
    m_panLast = at;
    if (!m_cursorTaken) {
        m_toolHadCursor = testAttribute(Qt::WA_SetCursor);
        m_toolCursor = cursor();
        m_cursorTaken = true;
    }
    setCursor(Qt::ClosedHandCursor);
}

void VexaCanvas::endPan()
{
    m_panning = false;
    m_panButton = Qt::NoButton;
    if (m_spaceHeld)
        setCursor(Qt::OpenHandCursor);
    else
        restoreToolCursor();
}

void VexaCanvas::restoreToolCursor()
{
    if (!m_cursorTaken)
        return;
    m_cursorTaken = false;
    if (m_toolHadCursor)
        setCursor(m_toolCursor);
    else
        unsetCursor();
}

void VexaCanvas::pickAt(const QPointF& widgetPos)
{
    if (!m_context)
        return;
    const QPointF c = (widgetPos - m_origin) * double(m_scale);
    const int x = int(std::floor(c.x())), y = int(std::floor(c.y()));
    if (x < 0 || y < 0 || x >= getCanvasWidth() || y >= getCanvasHeight())
        return;
    const QImage pixel = m_context->getLayerManager()->compose(m_context->canvasSize(), QRect(x, y, 1, 1));
    setFgColor(QColor::fromRgba(pixel.pixel(0, 0)).toRgb());
}

void VexaCanvas::mousePressEvent(QMouseEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    // A gesture whose button is pressed anew, or no longer held, lost its release (to a grab
    // elsewhere, say): it is over, or the canvas would refuse every press from now on.
    const auto lost = [event](Qt::MouseButton held) { return event->button() == held || !(event->buttons() & held); };
    if (m_toolButton != Qt::NoButton && lost(m_toolButton))
        m_toolButton = Qt::NoButton;
    if (m_panning && lost(m_panButton))
        endPan();
    // One gesture at a time: a second button pressed during a drag or a pan changes nothing.
    if (m_panning || m_picking || m_toolButton != Qt::NoButton)
        return;
    const Qt::MouseButton button = event->button();
    const QPoint p = event->position().toPoint();
    if (button == Qt::MiddleButton || (button == Qt::LeftButton && m_spaceHeld)) {
        m_panButton = button;
        startPan(event->position());
        return;
    }
    if (button == Qt::LeftButton && m_picker->isPicking()) {
        m_picking = true;
        pickAt(event->position());
        return;
    }
    const bool subtractDrag = button == Qt::RightButton && toolTakesRightButton();
    if (button != Qt::LeftButton && !subtractDrag)
        return;
    m_toolButton = button;
    setProperty("subtractDrag", subtractDrag);
    // The press always re-reads the keys (see noteModifiers): it decides how a shape combines.
    // Keys that changed since the last pointer event also change what the pointer is over
    // (a selection to drag in New mode, a place to add in Add mode), so the tool sees the
    // pointer there again first.
    const bool keysChanged = event->modifiers() != m_lastModifiers || subtractDrag;
    m_lastModifiers = event->modifiers();
    emit timeOut();
    if (keysChanged)
        emit mouseMove(p.x(), p.y());
    beginGesture();
    emit mousePress(p.x(), p.y());
    update();
}

void VexaCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panning) {
        const QPointF moved = event->position() - m_panLast;
        const QPointF before = m_origin;
        m_origin += moved;
        viewMoved();
        // Whatever snapping took is owed to the next move, so the photo follows the pointer.
        m_panLast = event->position() - (moved - (m_origin - before));
        m_viewChosen = true;
        return;
    }
    if (m_picking) {
        pickAt(event->position());
        return;
    }
    // With Space held the pointer is the hand; the tool neither sees it nor changes the cursor.
    if (m_spaceHeld && m_toolButton == Qt::NoButton)
        return;
    const QPoint p = event->position().toPoint();
    noteModifiers(event->modifiers());
    emit mouseMove(p.x(), p.y());
    update();
}

void VexaCanvas::noteModifiers(Qt::KeyboardModifiers modifiers)
{
    // Tools read the application's modifier state on key events and ticks. On X11 that state
    // trails the keys: a modifier's own key press reports the keys as they were before it, so
    // a held Ctrl reaches the application's state only with the next pointer event (and not at
    // all while the keyboard focus is elsewhere). Pointer events carry the current state, so a
    // change seen there ticks the tool at once, before it sees the event itself; a held Ctrl
    // thus adds from the very first click.
    if (modifiers == m_lastModifiers)
        return;
    m_lastModifiers = modifiers;
    emit timeOut();
}

void VexaCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    const Qt::MouseButton button = event->button();
    if (m_panning) {
        if (button == m_panButton)
            endPan();
        return;
    }
    if (m_picking) {
        if (button == Qt::LeftButton)
            m_picking = false;
        return;
    }
    // A left release always reaches the tool (the second release of a double click has no
    // press of its own); a right one only ends the right-button drag that it began.
    const bool ends = button == Qt::LeftButton ? m_toolButton != Qt::RightButton
                                               : button == Qt::RightButton && m_toolButton == Qt::RightButton;
    if (!ends)
        return;
    const QPoint p = event->position().toPoint();
    noteModifiers(event->modifiers());
    emit mouseRelease(p.x(), p.y());
    m_toolButton = Qt::NoButton;
    if (property("subtractDrag").toBool()) {
        setProperty("subtractDrag", false);
        emit timeOut(); // the mode the keys choose is back at once
    }
    endGesture();
    update();
}

void VexaCanvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second press of a quick pair of right clicks is a press like the first.
    if (event->button() == Qt::RightButton) {
        mousePressEvent(event);
        return;
    }
    if (event->button() != Qt::LeftButton || m_picker->isPicking() || m_spaceHeld || m_panning)
        return;
    const QPoint p = event->position().toPoint();
    beginGesture();
    emit mouseDoubleClick(p.x(), p.y());
    if (toolWants(QStringLiteral("DOUBLE_CLICK")))
        m_context->currentTool()->processEvent(QStringLiteral("DOUBLE_CLICK"));
    endGesture();
    update();
}

void VexaCanvas::wheelEvent(QWheelEvent* event)
{
    // One zoom level per notch (120 eighths of a degree); wheels and touch pads that report
    // finer steps add them up first, so they zoom at the same pace instead of a level per event.
    const int delta = event->angleDelta().y();
    if (delta == 0)
        return;
    if ((delta > 0) != (m_wheelRest > 0))
        m_wheelRest = 0;
    m_wheelRest += delta;
    while (std::abs(m_wheelRest) >= 120) {
        const int direction = m_wheelRest > 0 ? 1 : -1;
        m_wheelRest -= direction * 120;
        stepZoom(event->position(), direction);
    }
}

void VexaCanvas::enterEvent(QEnterEvent* event)
{
    QOpenGLWidget::enterEvent(event);
    // Keys held over the canvas are meant for its tool; text being typed elsewhere keeps its focus.
    QWidget* focus = QApplication::focusWidget();
    if (window()->isActiveWindow() && focus != this
        && !(qobject_cast<QLineEdit*>(focus) || qobject_cast<QAbstractSpinBox*>(focus)))
        setFocus(Qt::MouseFocusReason);
    emit mouseEnter();
}
