// bench-glmatting: the GPU matting view's matte() at 1536 x 1536, and each of its passes,
// median of 5. Needs a display (xvfb-run on a machine without a GPU: Mesa's llvmpipe).
//
//   bench-glmatting [SIDE] [BAND]
//
// The photo is the astronaut sample scaled to SIDE x SIDE (default 1536); the marks are an
// object disc with an unknown band of BAND pixels (default 12) on each side of its edge, the
// rest background, like a user's strokes after a flood.
#include "QuickSelectGLWidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int runs = 5;

double medianMs(const std::function<void()>& work)
{
    std::vector<double> ms;
    work(); // warm-up: shader compilation on first use, caches
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        t.start();
        work();
        glFinish();
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return ms[runs / 2];
}

// One full quad of `program` into the view's scratch texture, as matte() draws each pass.
void runPass(QuickSelectGLWidget& v, QOpenGLShaderProgram& program, GLuint unit0, GLuint unit1)
{
    QOpenGLFunctions* f = QOpenGLContext::currentContext()->functions();
    v.fbo->bind();
    glViewport(0, 0, v.texWidth, v.texHeight);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, v.texWidth, v.texHeight, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    program.bind();
    f->glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, unit1);
    f->glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, unit0);
    drawQuad(v.texWidth, v.texHeight);
    program.release();
    v.fbo->release();
}

void upload(GLuint texture, const QImage& image)
{
    const QImage rows = image.convertToFormat(QImage::Format_RGBA8888).mirrored();
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, rows.width(), rows.height(), GL_RGBA, GL_UNSIGNED_BYTE, rows.constBits());
    glBindTexture(GL_TEXTURE_2D, 0);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const int side = argc > 1 ? std::max(16, atoi(argv[1])) : 1536;
    const int band = argc > 2 ? std::max(1, atoi(argv[2])) : 12;

    QImage photo(QStringLiteral(VEXA_DATA_DIR "/astronaut.png"));
    if (photo.isNull()) {
        std::fprintf(stderr, "bench-glmatting: the sample photo is missing\n");
        return 1;
    }
    photo = photo.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_ARGB32);
    QImage marks(side, side, QImage::Format_ARGB32);
    const double cx = side * 0.5, cy = side * 0.45, r = side * 0.3;
    qint64 unknown = 0;
    for (int y = 0; y < side; ++y) {
        auto* row = reinterpret_cast<QRgb*>(marks.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const double d = std::hypot(x - cx, y - cy) - r;
            row[x] = std::abs(d) <= band ? qRgba(0, 255, 0, 128) : d < 0 ? qRgba(255, 0, 0, 128) : qRgba(0, 0, 255, 128);
            unknown += std::abs(d) <= band;
        }
    }

    QuickSelectGLWidget view;
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.loadFromImage(photo);
    view.show();
    QCoreApplication::processEvents();
    if (!view.fbo) {
        std::fprintf(stderr, "bench-glmatting: no OpenGL 2.1 context (run it under an X server)\n");
        return 3;
    }
    view.makeCurrent();
    upload(view.marksTexture, marks);
    std::printf("renderer %s\n", reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    std::printf("image %d x %d, unknown band %lld pixels (%.1f %%), %d closed passes, median of %d\n", side, side,
                unknown, 100.0 * double(unknown) / (double(side) * side), view.brushRadius, runs);

    const double matte = medianMs([&] {
        view.matte();
        view.makeCurrent();
    });
    std::printf("matte %.1f ms\n", matte);

    // The passes one by one, on the trimap and intermediate results matte() leaves behind.
    view.makeCurrent();
    upload(view.marksTexture, marks);
    std::printf("pass trimap %.2f ms\n", medianMs([&] { runPass(view, *view.trimapShader, view.marksTexture, 0); }));
    // Expand and Robust read the trimap, as in matte(): put it in the alpha texture first.
    runPass(view, *view.trimapShader, view.marksTexture, 0);
    view.fbo->bind();
    glBindTexture(GL_TEXTURE_2D, view.alphaTexture);
    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, view.texWidth, view.texHeight);
    view.fbo->release();
    std::printf("pass expand %.2f ms\n",
                medianMs([&] { runPass(view, *view.expandShader, view.alphaTexture, view.colorTexture); }));
    std::printf("pass robust %.2f ms\n",
                medianMs([&] { runPass(view, *view.robustShader, view.alphaTexture, view.colorTexture); }));
    std::printf("pass closed %.2f ms\n",
                medianMs([&] { runPass(view, *view.closedShader, view.alphaTexture, view.colorTexture); }));
    std::printf("pass copy %.2f ms\n", medianMs([&] {
                    view.fbo->bind();
                    glBindTexture(GL_TEXTURE_2D, view.alphaTexture);
                    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, view.texWidth, view.texHeight);
                    view.fbo->release();
                }));
    std::printf("pass result %.2f ms\n",
                medianMs([&] { runPass(view, *view.resultShader, view.alphaTexture, view.colorTexture); }));
    std::printf("flood(16) %.1f ms\n", medianMs([&] {
                    view.flood(16);
                    view.makeCurrent();
                }));
    QImage out;
    std::printf("saveToImage %.1f ms\n", medianMs([&] {
                    view.saveToImage(out);
                    view.makeCurrent();
                }));
    return 0;
}
