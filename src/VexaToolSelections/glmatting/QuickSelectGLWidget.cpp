#include "QuickSelectGLWidget.h"

#include <QFile>
#include <QMessageBox>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QSurfaceFormat>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace {

// The unknown grey and the marks' opacity: 128 of 255.
constexpr float mid = 128.0f / 255.0f;

QOpenGLFunctions* gl()
{
    return QOpenGLContext::currentContext()->functions();
}

// Sets the drawing coordinates to w x h pixels, y down from the top, over a viewport of
// `device` pixels: on a high-density screen the widget's frame buffer has more pixels than
// the widget, and a viewport in widget pixels would cover only a corner of it.
void orthoPixels(int w, int h, QSize device)
{
    glViewport(0, 0, device.width(), device.height());
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, w, h, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

// Pixels on a side of the blocks of the map that lets Robust pass over unknown stretches.
constexpr int clearBlock = 4;
// Spreading passes of that map: it then tells of all-unknown squares up to 2^7 blocks across.
constexpr int clearPasses = 7;

void nearestClamped(GLuint texture)
{
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
}

GLuint uploadTexture(const QImage& image)
{
    // Bottom row first, like the frame buffer (see the class comment).
    const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888).mirrored();
    GLuint id = 0;
    glGenTextures(1, &id);
    glBindTexture(GL_TEXTURE_2D, id);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, rgba.width(), rgba.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE, rgba.constBits());
    // Nearest filtering: every fragment reads exact texels.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    return id;
}

struct ProgramSource {
    const char* resource;
    const char* compileFailed;
    const char* linkFailed;
};

// In the order the programs are built.
const ProgramSource programSources[] = {
    {":/Resources/TrimapShader.glsl", QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to compile: 'TrimapShader.fp'\n"),
     QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to link 'TrimapShader'\n")},
    {":/Resources/ExpandShader.glsl", QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to compile: 'ExpandShader.fp'\n"),
     QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to link 'ExpandShader'\n")},
    {":/Resources/FastFillShader.glsl", QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to compile: 'FastFillShader.fp'\n"),
     QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to link 'FastFillShader'\n")},
    {":/Resources/RobustShader.glsl", QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to compile: 'RobustShader.fp'\n"),
     QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to link 'RobustShader'\n")},
    {":/Resources/ClosedShader.glsl", QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to compile: 'closedShader.fp'\n"),
     QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to link 'closedShader'\n")},
    {":/Resources/ResultShader.glsl", QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to compile: 'resultShader.fp'\n"),
     QT_TRANSLATE_NOOP("QuickSelectGLWidget", "Failed to link 'resultShader'\n")},
};

// Exact turns of a unit vector by multiples of 45 degrees, so that the truncation of the
// polygon's vertices never sees 3.9999 for 4.
struct Turn {
    double c, s;
};
constexpr double h = 0.70710678118654752440;
constexpr Turn turnM90{0, -1}, turnM45{h, -h}, turn0{1, 0}, turnP45{h, h}, turnP90{0, 1}, turnP135{-h, h}, turn180{-1, 0},
    turnM135{-h, -h};

} // namespace

void line(const QPoint& from, const QPoint& to, int radius)
{
    const double dx = from.x() - to.x(), dy = from.y() - to.y();
    const double len = std::hypot(dx, dy);
    if (len == 0.0)
        return;
    const double ux = dx / len * radius, uy = dy / len * radius;
    auto vertex = [&](const QPoint& at, const Turn& t) {
        const double x = at.x() + ux * t.c - uy * t.s;
        const double y = at.y() + ux * t.s + uy * t.c;
        glVertex2i(int(x), int(y)); // truncated toward zero
    };
    glBegin(GL_POLYGON);
    for (const Turn& t : {turnM90, turnM45, turn0, turnP45, turnP90})
        vertex(from, t);
    for (const Turn& t : {turnP90, turnP135, turn180, turnM135, turnM90})
        vertex(to, t);
    glEnd();
}

void drawQuad(int w, int h)
{
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2i(0, h);
    glTexCoord2f(0, 1);
    glVertex2i(0, 0);
    glTexCoord2f(1, 1);
    glVertex2i(w, 0);
    glTexCoord2f(1, 0);
    glVertex2i(w, h);
    glEnd();
}

QuickSelectGLWidget::QuickSelectGLWidget(QWidget* parent)
    : QOpenGLWidget(parent)
{
    // Immediate-mode drawing needs the compatibility profile; no depth buffer.
    QSurfaceFormat fmt = format();
    fmt.setVersion(2, 1);
    fmt.setProfile(QSurfaceFormat::CompatibilityProfile);
    fmt.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
    fmt.setRedBufferSize(8);
    fmt.setGreenBufferSize(8);
    fmt.setBlueBufferSize(8);
    fmt.setAlphaBufferSize(8);
    fmt.setDepthBufferSize(0);
    setFormat(fmt);
    createPrograms();
}

QuickSelectGLWidget::~QuickSelectGLWidget()
{
    // The base class ends the context after this object is gone.
    if (context())
        disconnect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &QuickSelectGLWidget::contextLost);
    makeCurrent();
    deleteGLObjects();
    // The programs go with the context still current, so they are freed at once.
    trimapShader.reset();
    expandShader.reset();
    fastFillShader.reset();
    robustShader.reset();
    closedShader.reset();
    resultShader.reset();
    m_clearShader.reset();
    m_expandCompute.reset();
    m_robustCompute.reset();
}

void QuickSelectGLWidget::createPrograms()
{
    for (auto* program :
         {&trimapShader, &expandShader, &fastFillShader, &robustShader, &closedShader, &resultShader, &m_clearShader,
          &m_expandCompute, &m_robustCompute})
        *program = std::make_unique<QOpenGLShaderProgram>();
}

void QuickSelectGLWidget::contextLost()
{
    // Moving the view into another window replaces its context: everything made in the old
    // one goes with it, and the image is loaded again in the new one (marks and matte are lost).
    makeCurrent();
    deleteGLObjects();
    createPrograms();
    m_glReady = false;
}

void QuickSelectGLWidget::report(const QString& message)
{
    m_lastError = message;
    emit failed(message);
    if (messageBoxes) {
        QMessageBox::critical(this, caption, message, QMessageBox::Ok);
        // The box may have drawn with another context.
        makeCurrent();
    }
}

bool QuickSelectGLWidget::programsReady() const
{
    if (!m_glReady || m_glUnsupported)
        return false;
    for (const auto* program : {&trimapShader, &expandShader, &fastFillShader, &robustShader, &closedShader, &resultShader})
        if (!(*program)->isLinked())
            return false;
    return true;
}

void QuickSelectGLWidget::initializeGL()
{
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &QuickSelectGLWidget::contextLost,
            Qt::DirectConnection);
    glClearColor(0, 0, 0, 0);
    glDisable(GL_DEPTH_TEST);
    // The fixed-function drawing and the programs need desktop OpenGL 2.1; anything less would
    // fail call by call without a word.
    const QSurfaceFormat got = context()->format();
    m_glUnsupported = context()->isOpenGLES() || got.version() < qMakePair(2, 1);
    if (m_glUnsupported) {
        m_glReady = true;
        report(tr("The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.")
                   .arg(context()->isOpenGLES() ? QStringLiteral("OpenGL ES") : QStringLiteral("OpenGL"))
                   .arg(got.majorVersion())
                   .arg(got.minorVersion()));
        return;
    }
    QOpenGLShaderProgram* programs[] = {trimapShader.get(), expandShader.get(), fastFillShader.get(),
                                        robustShader.get(), closedShader.get(), resultShader.get()};
    for (int i = 0; i < 6; ++i) {
        const ProgramSource& src = programSources[i];
        QOpenGLShaderProgram& program = *programs[i];
        QString text;
        if (!program.addShaderFromSourceFile(QOpenGLShader::Fragment, QString::fromLatin1(src.resource)))
            text = tr(src.compileFailed) + program.log();
        else if (!program.link())
            text = tr(src.linkFailed) + program.log();
        if (!text.isEmpty())
            report(text);
    }
    // Without the map of unknown blocks Robust reads every point of its rays: the same matte,
    // only slower, so this is no failure of the view.
    if (!m_clearShader->addShaderFromSourceFile(QOpenGLShader::Fragment, QStringLiteral(":/Resources/ClearShader.glsl"))
        || !m_clearShader->link())
        qWarning("QuickSelectGLWidget: the map of unknown blocks cannot be built: %s", qPrintable(m_clearShader->log()));
    // Expand and Robust, the long passes, again as compute programs from the same text; without
    // them the fragment programs give the same matte, only slower where fragments get few cores.
    if (qgetenv("VEXA_GL_COMPUTE") != "0" && QOpenGLShader::hasOpenGLShaders(QOpenGLShader::Compute, context())) {
        const std::pair<QOpenGLShaderProgram*, const char*> computes[] = {{m_expandCompute.get(), programSources[1].resource},
                                                                        {m_robustCompute.get(), programSources[3].resource}};
        for (const auto& [program, resource] : computes) {
            QFile head(QStringLiteral(":/Resources/ComputePass.glsl")), body(QString::fromLatin1(resource));
            if (!head.open(QIODevice::ReadOnly) || !body.open(QIODevice::ReadOnly)
                || !program->addShaderFromSourceCode(QOpenGLShader::Compute, head.readAll() + body.readAll())
                || !program->link())
                qWarning("QuickSelectGLWidget: %s runs as a fragment program: %s", resource, qPrintable(program->log()));
        }
    }
    m_glReady = true;
    if (!m_image.isNull())
        loadFromImage(m_image);
}

void QuickSelectGLWidget::resizeGL(int w, int h)
{
    // Widget pixels are drawing coordinates; the frame buffer is sized as the base class sizes it.
    orthoPixels(w, h, QSize(w, h) * devicePixelRatio());
}

void QuickSelectGLWidget::drawIntoWidget()
{
    orthoPixels(width(), height(), size() * devicePixelRatio());
}

bool QuickSelectGLWidget::input(const QString& fileName)
{
    QImage image;
    if (!image.load(fileName)) {
        report(tr("Failed to open file:\n'%1'.").arg(fileName));
        return false;
    }
    loadFromImage(image);
    return true;
}

void QuickSelectGLWidget::loadFromImage(const QImage& image)
{
    if (image.isNull())
        return;
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    if (!m_glReady) {
        m_image = argb;
        return;
    }
    if (m_glUnsupported)
        return;
    makeCurrent();
    // A texture or a viewport beyond the driver's limits makes every later call fail quietly.
    GLint maxTexture = 0, maxViewport[2] = {0, 0};
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxTexture);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, maxViewport);
    const int largest = std::min({int(maxTexture), int(maxViewport[0]), int(maxViewport[1])});
    // The image that waited for the context was the one refused: nothing is left to load.
    auto refuse = [this](const QString& message) {
        if (!fbo)
            m_image = QImage();
        report(message);
    };
    if (argb.width() > largest || argb.height() > largest) {
        refuse(tr("The image is %1 x %2 pixels, larger than this OpenGL's largest texture (%3 pixels a side).")
                   .arg(argb.width())
                   .arg(argb.height())
                   .arg(largest));
        return;
    }
    m_image = argb;
    imageWidth = texWidth = m_image.width();
    imageHeight = texHeight = m_image.height();

    QImage grey(m_image.size(), QImage::Format_ARGB32);
    grey.fill(0xFF808080u); // unknown everywhere
    QImage clear(m_image.size(), QImage::Format_ARGB32);
    clear.fill(0u); // no marks

    deleteGLObjects();
    for (int i = 0; i < 8 && glGetError() != GL_NO_ERROR; ++i) {
        // Earlier errors are not this image's.
    }
    colorTexture = uploadTexture(m_image);
    alphaTexture = uploadTexture(grey);
    marksTexture = uploadTexture(clear);

    fbo = std::make_unique<QOpenGLFramebufferObject>(texWidth, texHeight, QOpenGLFramebufferObject::NoAttachment,
                                                      GL_TEXTURE_2D, GL_RGBA8);
    // Every texture a pass renders into must make a complete frame buffer, and the memory for
    // all of them must have been there.
    bool complete = fbo->isValid() && glGetError() == GL_NO_ERROR;
    for (GLuint texture : {alphaTexture, marksTexture}) {
        if (!complete)
            break;
        renderInto(texture);
        complete = gl()->glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
        releaseTarget();
    }
    if (!complete) {
        deleteGLObjects();
        m_image = QImage();
        imageWidth = texWidth = imageHeight = texHeight = 0;
        refuse(tr("This OpenGL cannot render into a %1 x %2 texture.").arg(argb.width()).arg(argb.height()));
        update();
        return;
    }
    // The scratch texture is read as well as written (flood alternates with it).
    glBindTexture(GL_TEXTURE_2D, fbo->texture());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    const QSize coarse((texWidth + clearBlock - 1) / clearBlock, (texHeight + clearBlock - 1) / clearBlock);
    m_clearFbo = std::make_unique<QOpenGLFramebufferObject>(coarse, QOpenGLFramebufferObject::NoAttachment, GL_TEXTURE_2D,
                                                            GL_RGBA8);
    if (m_clearFbo->isValid()) {
        nearestClamped(m_clearFbo->texture());
        glGenTextures(1, &m_clearTexture);
        glBindTexture(GL_TEXTURE_2D, m_clearTexture);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, coarse.width(), coarse.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        nearestClamped(m_clearTexture);
    } else {
        m_clearFbo.reset();
    }
    setUniforms();
    // Drivers may finish building a program only when it first runs, which would slow the first
    // matte several times over: run each compute program once now, while marks are being
    // painted, on one group of pixels written into the map of unknown blocks (made anew by
    // every matte).
    if (onCompute() && m_clearTexture) {
        QOpenGLFunctions* f = gl();
        for (QOpenGLShaderProgram* program : {m_expandCompute.get(), m_robustCompute.get()})
            dispatch(*program, m_clearTexture, false);
        glBindTexture(GL_TEXTURE_2D, 0);
        f->glActiveTexture(GL_TEXTURE1);
        glBindTexture(GL_TEXTURE_2D, 0);
        f->glActiveTexture(GL_TEXTURE0);
        f->glUseProgram(0);
    }
    resize(texWidth, texHeight);
    update();
}

void QuickSelectGLWidget::setUniforms()
{
    const GLfloat dimX = 1.0f / float(texWidth), dimY = 1.0f / float(texHeight);
    // Sixteen directions: the four axes, the four diagonals and the eight knight's moves.
    static const GLint offsets[32] = {-1, 0, 1, 0, 0, -1, 0, 1, -1, -1, 1, -1, -1, 1, 1, 1,
                                      -2, -1, 2, -1, -2, 1, 2, 1, -1, -2, 1, -2, -1, 2, 1, 2};
    auto use = [](QOpenGLShaderProgram& p) { return p.isLinked() && p.bind(); };
    if (use(*trimapShader)) {
        trimapShader->setUniformValue("DimT", dimX, dimY);
        trimapShader->setUniformValue("UsrMap", 0);
    }
    for (QOpenGLShaderProgram* expand : {expandShader.get(), m_expandCompute.get()}) {
        if (!use(*expand))
            continue;
        expand->setUniformValue("DimT", dimX, dimY);
        expand->setUniformValue("TriMap", 0);
        expand->setUniformValue("ColMap", 1);
    }
    if (use(*fastFillShader)) {
        fastFillShader->setUniformValue("DimT", dimX, dimY);
        fastFillShader->setUniformValue("UsrMap", 0);
    }
    for (QOpenGLShaderProgram* robust : {robustShader.get(), m_robustCompute.get()}) {
        if (!use(*robust))
            continue;
        robust->setUniformValue("Steps", std::max(texWidth, texHeight));
        robust->setUniformValue("DimT", dimX, dimY);
        robust->setUniformValue("TriMap", 0);
        robust->setUniformValue("ColMap", 1);
        robust->setUniformValueArray("Offsets", offsets, 32);
        robust->setUniformValue("ClearMap", 2);
        if (m_clearFbo) {
            const QSize coarse = m_clearFbo->size();
            robust->setUniformValue("ClearScale", float(texWidth) / float(clearBlock * coarse.width()),
                                    float(texHeight) / float(clearBlock * coarse.height()));
            robust->setUniformValue("ClearBlock", float(clearBlock));
        } else {
            robust->setUniformValue("ClearBlock", 0.0f);
        }
    }
    for (QOpenGLShaderProgram* compute : {m_expandCompute.get(), m_robustCompute.get()})
        if (use(*compute))
            compute->setUniformValue("Target", 0);
    if (use(*closedShader)) {
        closedShader->setUniformValue("DimT", dimX, dimY);
        closedShader->setUniformValue("TriMap", 0);
        closedShader->setUniformValue("ColMap", 1);
    }
    if (use(*resultShader)) {
        resultShader->setUniformValue("DimT", dimX, dimY);
        resultShader->setUniformValue("BkgColor", 0.0f, 0.0f, 0.0f, 0.0f);
        resultShader->setUniformValue("TriMap", 0);
        resultShader->setUniformValue("ColMap", 1);
    }
    gl()->glUseProgram(0);
}

void QuickSelectGLWidget::deleteGLObjects()
{
    if (!m_glReady)
        return;
    makeCurrent();
    for (GLuint* id : {&colorTexture, &alphaTexture, &marksTexture, &m_clearTexture}) {
        if (*id) {
            glDeleteTextures(1, id);
            *id = 0;
        }
    }
    fbo.reset();
    m_clearFbo.reset();
}

void QuickSelectGLWidget::renderInto(GLuint texture)
{
    fbo->bind();
    gl()->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    orthoPixels(texWidth, texHeight, QSize(texWidth, texHeight));
}

void QuickSelectGLWidget::releaseTarget()
{
    // Only the scratch frame buffer gets its own texture back: attached to the widget's frame
    // buffer, it would take the place of what the widget shows.
    if (fbo->isBound()) {
        gl()->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, fbo->texture(), 0);
        fbo->release();
    }
    drawIntoWidget();
}

bool QuickSelectGLWidget::pass(QOpenGLShaderProgram& program, GLuint unit0, GLuint unit1)
{
    if (!program.isLinked() || !program.bind())
        return false;
    QOpenGLFunctions* f = gl();
    f->glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, unit1);
    f->glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, unit0);
    drawQuad(texWidth, texHeight);
    return true;
}

void QuickSelectGLWidget::copyIntoAlpha()
{
    glBindTexture(GL_TEXTURE_2D, alphaTexture);
    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, texWidth, texHeight);
}

GLuint QuickSelectGLWidget::buildClearMap()
{
    if (!m_clearFbo || !m_clearTexture || !m_clearShader->isLinked() || !m_clearShader->bind())
        return 0;
    QOpenGLFunctions* f = gl();
    const QSize coarse = m_clearFbo->size();
    m_clearFbo->bind();
    orthoPixels(coarse.width(), coarse.height(), coarse);
    m_clearShader->setUniformValue("Source", 0);
    m_clearShader->setUniformValue("Block", clearBlock);
    f->glActiveTexture(GL_TEXTURE0);
    GLuint source = alphaTexture;
    GLuint target = m_clearFbo->texture();
    for (int pass = 0; pass <= clearPasses; ++pass) {
        const int reach = pass == 0 ? 0 : 1 << (pass - 1);
        m_clearShader->setUniformValue("Reach", reach);
        if (pass == 0)
            m_clearShader->setUniformValue("DimS", 1.0f / float(texWidth), 1.0f / float(texHeight));
        else
            m_clearShader->setUniformValue("DimS", 1.0f / float(coarse.width()), 1.0f / float(coarse.height()));
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, target, 0);
        glBindTexture(GL_TEXTURE_2D, source);
        drawQuad(coarse.width(), coarse.height());
        source = target;
        target = target == m_clearTexture ? m_clearFbo->texture() : m_clearTexture;
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, m_clearFbo->texture(), 0);
    m_clearFbo->release();
    m_clearShader->release();
    return source;
}

bool QuickSelectGLWidget::onCompute() const
{
    return m_expandCompute && m_expandCompute->isLinked() && m_robustCompute && m_robustCompute->isLinked();
}

bool QuickSelectGLWidget::fastPass(QOpenGLShaderProgram& fragment, QOpenGLShaderProgram& compute)
{
    renderInto(fbo->texture());
    return dispatch(compute, fbo->texture(), true) || pass(fragment, alphaTexture, colorTexture);
}

bool QuickSelectGLWidget::dispatch(QOpenGLShaderProgram& compute, GLuint target, bool wholeImage)
{
    if (!compute.isLinked() || !compute.bind())
        return false;
    QOpenGLFunctions* f = gl();
    QOpenGLExtraFunctions* x = context()->extraFunctions();
    f->glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, colorTexture);
    f->glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, alphaTexture);
    x->glBindImageTexture(0, target, 0, GL_FALSE, 0, GL_WRITE_ONLY, GL_RGBA8);
    GLint group[3] = {8, 8, 1}; // as the program declares it
    x->glGetProgramiv(compute.programId(), GL_COMPUTE_WORK_GROUP_SIZE, group);
    if (wholeImage)
        x->glDispatchCompute(GLuint((texWidth + group[0] - 1) / group[0]), GLuint((texHeight + group[1] - 1) / group[1]), 1);
    else
        x->glDispatchCompute(1, 1, 1);
    // The copy out of the target, and every later read, must see the stores.
    x->glMemoryBarrier(GL_ALL_BARRIER_BITS);
    x->glBindImageTexture(0, 0, 0, GL_FALSE, 0, GL_WRITE_ONLY, GL_RGBA8);
    return true;
}

bool QuickSelectGLWidget::runExpand()
{
    return fastPass(*expandShader, *m_expandCompute);
}

bool QuickSelectGLWidget::runRobust()
{
    QOpenGLFunctions* f = gl();
    const GLuint clearMap = buildClearMap();
    f->glActiveTexture(GL_TEXTURE2);
    glBindTexture(GL_TEXTURE_2D, clearMap);
    const bool ran = fastPass(*robustShader, *m_robustCompute);
    f->glActiveTexture(GL_TEXTURE2);
    glBindTexture(GL_TEXTURE_2D, 0);
    f->glActiveTexture(GL_TEXTURE0);
    return ran;
}

void QuickSelectGLWidget::reset()
{
    if (!fbo)
        return;
    makeCurrent();
    renderInto(alphaTexture);
    // All unknown: 128 of 255, a level 8 bits hold exactly; 0.5 lies halfway between two and
    // drivers round it either way.
    glClearColor(mid, mid, mid, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    renderInto(marksTexture);
    glClearColor(0, 0, 0, 0); // no marks
    glClear(GL_COLOR_BUFFER_BIT);
    releaseTarget();
    update();
}

void QuickSelectGLWidget::flood(int passes)
{
    if (!fbo || passes <= 0)
        return;
    // A pass that changes nothing changes nothing after it either, and no fill needs more
    // passes than the image has pixels.
    passes = int(std::min<qint64>(passes, qint64(texWidth) * texHeight));
    makeCurrent();
    // The passes alternate between the marks and the scratch texture, so that no pass reads
    // the texture it writes; the growth is one pixel per pass either way.
    GLuint source = marksTexture;
    GLuint target = fbo->texture();
    bool done = true;
    for (int i = 0; i < passes && done; ++i) {
        renderInto(target);
        done = pass(*fastFillShader, source, 0);
        if (done)
            std::swap(source, target);
    }
    fastFillShader->release();
    if (source != marksTexture) {
        renderInto(source);
        glBindTexture(GL_TEXTURE_2D, marksTexture);
        glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, texWidth, texHeight);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    releaseTarget();
    update();
}

bool QuickSelectGLWidget::matte()
{
    if (!fbo)
        return false;
    makeCurrent();
    QOpenGLFunctions* f = gl();
    renderInto(alphaTexture);
    bool all = pass(*trimapShader, marksTexture, 0);
    renderInto(fbo->texture());
    // Each pass reads the previous pass's result.
    const auto keep = [&](bool ran) {
        if (ran)
            copyIntoAlpha();
        else
            all = false;
    };
    keep(runExpand());
    keep(runRobust());
    for (int i = 0; i < brushRadius; ++i)
        keep(pass(*closedShader, alphaTexture, colorTexture));
    f->glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, 0);
    f->glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    f->glUseProgram(0);
    releaseTarget();
    update();
    return all;
}

void QuickSelectGLWidget::saveToImage(QImage& out)
{
    out = QImage();
    if (!fbo)
        return;
    makeCurrent();
    renderInto(fbo->texture());
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glClearColor(0, 0, 0, 0);
    glColor4f(1, 1, 1, 1);
    drawTexture(alphaTexture);
    out = fbo->toImage(true).convertToFormat(QImage::Format_ARGB32);
    releaseTarget();
}

void QuickSelectGLWidget::drawTexture(GLuint texture)
{
    if (!texture)
        return;
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    drawQuad(texWidth, texHeight);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_TEXTURE_2D);
}

void QuickSelectGLWidget::paintGL()
{
    drawIntoWidget();
    glClear(GL_COLOR_BUFFER_BIT);
    glColor4f(1, 1, 1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glScaled(zoom, zoom, 1.0);
    switch (viewMode) {
    case 0:
        drawTexture(colorTexture);
        if (showMarks && marksTexture) {
            glEnable(GL_BLEND);
            glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
            drawTexture(marksTexture);
            glDisable(GL_BLEND);
        }
        break;
    case 1:
        drawTexture(alphaTexture);
        break;
    case 2:
        if (fbo && pass(*resultShader, alphaTexture, colorTexture)) {
            QOpenGLFunctions* f = gl();
            f->glActiveTexture(GL_TEXTURE1);
            glBindTexture(GL_TEXTURE_2D, 0);
            f->glActiveTexture(GL_TEXTURE0);
            glBindTexture(GL_TEXTURE_2D, 0);
            resultShader->release();
        }
        break;
    default:
        break;
    }
}

void QuickSelectGLWidget::mousePressEvent(QMouseEvent* event)
{
    switch (event->button()) {
    case Qt::LeftButton:
        leftDown = true;
        break;
    case Qt::MiddleButton:
        midDown = true;
        break;
    case Qt::RightButton:
        rightDown = true;
        break;
    default:
        break;
    }
    lastPos = event->position().toPoint();
}

void QuickSelectGLWidget::mouseReleaseEvent(QMouseEvent* event)
{
    switch (event->button()) {
    case Qt::LeftButton:
        leftDown = false;
        break;
    case Qt::MiddleButton:
        midDown = false;
        break;
    case Qt::RightButton:
        rightDown = false;
        break;
    default:
        break;
    }
}

void QuickSelectGLWidget::mouseMoveEvent(QMouseEvent* event)
{
    // Only a held button paints: with mouse tracking on, a bare pointer would otherwise erase.
    if (!fbo || !(leftDown || midDown || rightDown))
        return;
    makeCurrent();
    renderInto(marksTexture);
    glDisable(GL_BLEND);
    struct Rgba {
        float r, g, b, a;
    };
    // Half opaque as 128 of 255 exactly, the same bytes on every driver.
    constexpr Rgba red{1, 0, 0, mid}, green{0, 1, 0, mid}, blue{0, 0, 1, mid}, erase{0, 0, 0, 0};
    Rgba colour = erase;
    switch (markMode) {
    case 0:
        colour = leftDown ? red : rightDown ? green : erase;
        break;
    case 1:
        colour = leftDown ? blue : rightDown ? red : green;
        break;
    case 2:
        colour = leftDown ? green : rightDown ? red : erase;
        break;
    default:
        break;
    }
    glColor4f(colour.r, colour.g, colour.b, colour.a);
    const QPoint pos = event->position().toPoint();
    line(lastPos, pos, brushRadius);
    lastPos = pos;
    glColor4f(1, 1, 1, 1);
    releaseTarget();
    if (autoFill && ((markMode == 0 && leftDown) || (markMode == 2 && rightDown)))
        flood(16);
    update();
}
