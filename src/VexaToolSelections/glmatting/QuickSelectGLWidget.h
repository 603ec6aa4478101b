#pragma once

#include <QImage>
#include <QOpenGLWidget>
#include <QPoint>
#include <QString>
#include <QtGui/qopengl.h>

#include <memory>

class QOpenGLFramebufferObject;
class QOpenGLShaderProgram;

// An OpenGL view for matting one image on the graphics processor. It shows the image, takes
// brush marks (object, background, unknown), floods marked regions, turns the marks into a
// trimap and refines the unknown band into an alpha matte with six fragment programs, and
// shows the image, the matte or the image composited over a background colour.
//
// Nothing in the plug-in creates it. Its owner sets the public settings below, loads an image
// and calls flood(), matte(), reset() and saveToImage(). The settings are also properties and
// the operations invokable, so a host that loads the plug-in at run time can drive the view
// through its meta-object without linking against it.
//
// Failures (a program that does not build, an image or driver the view cannot work with) are
// reported through failed() and lastError; by default the view also shows them in a message
// box, which a host without a user at the screen turns off with messageBoxes.
//
// Textures hold the image bottom row first, like the frame buffer, so a fragment's window
// position times DimT is its own texel and the drawing coordinates (widget pixels, y down)
// are image pixels.
class Q_DECL_EXPORT QuickSelectGLWidget : public QOpenGLWidget
{
    Q_OBJECT
    // Widget pixels per image pixel when shown; the owner sizes the view to match and hands
    // the view pointer positions in image pixels.
    Q_PROPERTY(double zoom MEMBER zoom)
    Q_PROPERTY(bool showMarks MEMBER showMarks)
    Q_PROPERTY(bool autoFill MEMBER autoFill)
    Q_PROPERTY(int brushRadius MEMBER brushRadius)
    Q_PROPERTY(int markMode MEMBER markMode)
    Q_PROPERTY(int viewMode MEMBER viewMode)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(bool messageBoxes MEMBER messageBoxes)
    Q_PROPERTY(QString lastError READ lastError)
    Q_PROPERTY(bool programsReady READ programsReady)

public:
    Q_INVOKABLE explicit QuickSelectGLWidget(QWidget* parent = nullptr);
    ~QuickSelectGLWidget() override;

    // Reads an image file and loads it; on failure says so in a message box and keeps the
    // current image.
    Q_INVOKABLE bool input(const QString& fileName);
    // Loads an image: all unknown, no marks. Before the view has its OpenGL context the image
    // waits and is loaded when the context arrives. An image larger than the driver's textures,
    // or one it cannot render into, is refused with a failure and the current image stays.
    Q_INVOKABLE void loadFromImage(const QImage& image);
    // The matte as an opaque grey image of the view's size; null while no image is loaded.
    Q_INVOKABLE void saveToImage(QImage& out);
    // Grows the object and background marks by one pixel per pass; no passes, nothing happens.
    Q_INVOKABLE void flood(int passes);
    // Marks to trimap, then Expand, Robust and brushRadius Closed passes into the matte.
    // False when no image is loaded or a program could not be built, so that a pass is missing.
    Q_INVOKABLE bool matte();
    // No marks and an all-unknown trimap.
    Q_INVOKABLE void reset();
    void deleteGLObjects();
    // The text of the latest failure; empty while there was none.
    QString lastError() const { return m_lastError; }
    // Whether the OpenGL context is usable and all six programs were built.
    bool programsReady() const;
    // Makes, from the trimap in alphaTexture, the map of all-unknown blocks that lets Robust
    // pass over long unknown stretches (matte() binds it to unit 2 for Robust); the texture
    // holding it, or 0 where it cannot be made, and Robust then reads every point.
    GLuint buildClearMap();
    // Expand, or Robust with the map of unknown blocks made anew, over the trimap and image in
    // alphaTexture and colorTexture into the scratch texture (matte() then copies it back);
    // false when the program could not be built. They run as compute programs where the driver
    // has them and VEXA_GL_COMPUTE is not 0: the same bytes.
    bool runExpand();
    bool runRobust();
    bool onCompute() const;

    bool leftDown = false;
    bool midDown = false;
    bool rightDown = false;
    bool showMarks = true;
    bool autoFill = false;
    int imageWidth = 0;
    int imageHeight = 0;
    int texWidth = 0;
    int texHeight = 0;
    int brushRadius = 4;
    int markMode = 0;
    int viewMode = 0;
    double zoom = 1.0;
    GLuint colorTexture = 0;
    GLuint alphaTexture = 0;
    GLuint marksTexture = 0;
    std::unique_ptr<QOpenGLFramebufferObject> fbo;
    std::unique_ptr<QOpenGLShaderProgram> trimapShader;
    std::unique_ptr<QOpenGLShaderProgram> expandShader;
    std::unique_ptr<QOpenGLShaderProgram> fastFillShader;
    std::unique_ptr<QOpenGLShaderProgram> robustShader;
    std::unique_ptr<QOpenGLShaderProgram> closedShader;
    std::unique_ptr<QOpenGLShaderProgram> resultShader;
    QPoint lastPos;
    QString caption;
    bool messageBoxes = true;

signals:
    // A program that did not build (with its log), an unreadable file, an image or a driver the
    // view cannot work with.
    void failed(const QString& message);

protected:
    void initializeGL() override;
    void resizeGL(int w, int h) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void createPrograms();
    void setUniforms();
    // Binds fbo with `texture` as its colour attachment and makes its pixels the drawing area.
    void renderInto(GLuint texture);
    // Back to the view's own frame buffer and drawing area.
    void releaseTarget();
    // One full quad of `program` reading unit 0 and 1, into the current target; false when
    // the program is unusable, so that the caller leaves the target as it was.
    bool pass(QOpenGLShaderProgram& program, GLuint unit0, GLuint unit1);
    // `compute` where it was built, else `fragment`, into the scratch texture.
    bool fastPass(QOpenGLShaderProgram& fragment, QOpenGLShaderProgram& compute);
    // `compute` over the whole image, or over its first group of pixels only, into `target`;
    // false when it was not built.
    bool dispatch(QOpenGLShaderProgram& compute, GLuint target, bool wholeImage);
    void copyIntoAlpha();

    void drawTexture(GLuint texture);
    void contextLost();
    void report(const QString& message);
    // The view's own frame buffer as the drawing area: widget pixels are drawing coordinates,
    // the viewport covers every device pixel.
    void drawIntoWidget();

    // The image that is loaded, or waits for the context; loaded again when a new context
    // replaces a lost one.
    QImage m_image;
    bool m_glReady = false;
    // The map of all-unknown blocks: its program, and two textures of a block's pixel each.
    std::unique_ptr<QOpenGLShaderProgram> m_clearShader;
    std::unique_ptr<QOpenGLFramebufferObject> m_clearFbo;
    GLuint m_clearTexture = 0;
    // Expand and Robust as compute programs (OpenGL 4.3), or unlinked where the driver has
    // none, where VEXA_GL_COMPUTE=0 asks for the fragment programs, or where they failed.
    std::unique_ptr<QOpenGLShaderProgram> m_expandCompute;
    std::unique_ptr<QOpenGLShaderProgram> m_robustCompute;
    // The context is OpenGL ES or older than 2.1: nothing is built or loaded.
    bool m_glUnsupported = false;
    QString m_lastError;
};

// Draws one stroke segment as a filled polygon in the current colour: half-width `radius`
// along the segment, half-octagon caps; two equal points draw nothing.
Q_DECL_EXPORT void line(const QPoint& from, const QPoint& to, int radius);
// Draws the quad with the corners (0, h), (0, 0), (w, 0), (w, h), texture coordinates from
// (0, 0) at the first: every pass covers its whole target with it.
Q_DECL_EXPORT void drawQuad(int w, int h);
