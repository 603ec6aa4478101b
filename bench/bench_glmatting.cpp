// bench-glmatting: the GPU matting view's matte() at 1536 x 1536, and each of its passes,
// median of 5, with the graphics processor's own time for each pass where the driver can
// measure it. "(cs)": the pass ran as a compute program (VEXA_GL_COMPUTE=0 runs the fragment
// program instead). Needs a display (xvfb-run on a machine without a GPU: Mesa's llvmpipe).
//
//   bench-glmatting [SIDE] [BAND] [--no-check] [--checksum HEX] [--shaders RCC]
//
// The photo is the astronaut sample scaled to SIDE x SIDE (default 1536); the marks are an
// object disc with an unknown band of BAND pixels (default 12) on each side of its edge, the
// rest background, like a user's strokes after a flood. A BAND of SIDE or more leaves every
// pixel unknown.
//
// A checksum of the matte is printed, so that a change meant to save time can be seen to keep
// the output bytes on the same renderer; with --checksum the run fails (exit status 1) when
// the matte's checksum is another. The matte is also compared with the plain CPU reading of
// the programs (the tests' reference): the count of bytes that differ and the largest
// difference are printed. At this size they are not all equal on llvmpipe (a few hundred
// bytes of 2.4 million at the default band, before any of the savings as after), so that
// comparison is reported, not enforced. It takes long where most pixels are unknown and is
// skipped there and with --no-check. --shaders loads the programs from a resource file built
// with `rcc -binary` (as vexa-glmatte does), so that a variant can be timed without a build.
#include "GLMattingReference.h"
#include "QuickSelectGLWidget.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QImage>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QResource>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

#ifndef GL_TIME_ELAPSED
#define GL_TIME_ELAPSED 0x88BF
#endif
#ifndef GL_QUERY_RESULT
#define GL_QUERY_RESULT 0x8866
#endif

extern "C" int qCleanupResources_Resources();

namespace {

constexpr int runs = 5;

// The driver's timer queries (OpenGL 3.3 or GL_ARB_timer_query), when it has them.
struct GpuTimer {
    using GenQueries = void(QOPENGLF_APIENTRYP)(GLsizei, GLuint*);
    using DeleteQueries = void(QOPENGLF_APIENTRYP)(GLsizei, const GLuint*);
    using BeginQuery = void(QOPENGLF_APIENTRYP)(GLenum, GLuint);
    using EndQuery = void(QOPENGLF_APIENTRYP)(GLenum);
    using GetQueryObjectui64v = void(QOPENGLF_APIENTRYP)(GLuint, GLenum, quint64*);
    GenQueries gen = nullptr;
    DeleteQueries del = nullptr;
    BeginQuery begin = nullptr;
    EndQuery end = nullptr;
    GetQueryObjectui64v result = nullptr;

    explicit GpuTimer(QOpenGLContext* context)
    {
        const QSurfaceFormat f = context->format();
        if (f.version() < qMakePair(3, 3) && !context->hasExtension("GL_ARB_timer_query"))
            return;
        gen = reinterpret_cast<GenQueries>(context->getProcAddress("glGenQueries"));
        del = reinterpret_cast<DeleteQueries>(context->getProcAddress("glDeleteQueries"));
        begin = reinterpret_cast<BeginQuery>(context->getProcAddress("glBeginQuery"));
        end = reinterpret_cast<EndQuery>(context->getProcAddress("glEndQuery"));
        result = reinterpret_cast<GetQueryObjectui64v>(context->getProcAddress("glGetQueryObjectui64v"));
        if (!gen || !del || !begin || !end || !result)
            gen = nullptr;
    }
    bool available() const { return gen != nullptr; }
    // Milliseconds of the graphics processor's time for `work`; -1 without timer queries.
    double measure(const std::function<void()>& work) const
    {
        if (!available()) {
            work();
            return -1;
        }
        GLuint query = 0;
        gen(1, &query);
        begin(GL_TIME_ELAPSED, query);
        work();
        end(GL_TIME_ELAPSED);
        quint64 ns = 0;
        result(query, GL_QUERY_RESULT, &ns);
        del(1, &query);
        return double(ns) / 1e6;
    }
};

struct Timing {
    double wallMs, gpuMs;
};

Timing median(const GpuTimer& timer, const std::function<void()>& work)
{
    std::vector<double> wall, gpu;
    work(); // warm-up: shader compilation on first use, caches
    glFinish();
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        t.start();
        gpu.push_back(timer.measure(work));
        glFinish();
        wall.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    std::sort(wall.begin(), wall.end());
    std::sort(gpu.begin(), gpu.end());
    return {wall[runs / 2], gpu[runs / 2]};
}

void print(const char* what, const Timing& t)
{
    if (t.gpuMs >= 0)
        std::printf("%-12s %9.2f ms   (GPU time %9.2f ms)\n", what, t.wallMs, t.gpuMs);
    else
        std::printf("%-12s %9.2f ms\n", what, t.wallMs);
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

void copyIntoAlpha(QuickSelectGLWidget& v)
{
    v.fbo->bind();
    glBindTexture(GL_TEXTURE_2D, v.alphaTexture);
    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, v.texWidth, v.texHeight);
    glBindTexture(GL_TEXTURE_2D, 0);
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
    std::vector<const char*> numbers;
    bool check = true;
    QByteArray expected;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--no-check") == 0)
            check = false;
        else if (std::strcmp(argv[i], "--checksum") == 0 && i + 1 < argc)
            expected = argv[++i];
        else if (std::strcmp(argv[i], "--shaders") == 0 && i + 1 < argc) {
            qCleanupResources_Resources();
            if (!QResource::registerResource(QString::fromLocal8Bit(argv[++i]))) {
                std::fprintf(stderr, "bench-glmatting: cannot read the programs %s\n", argv[i]);
                return 2;
            }
        }
        else
            numbers.push_back(argv[i]);
    }
    const int side = numbers.size() > 0 ? std::max(16, atoi(numbers[0])) : 1536;
    const int band = numbers.size() > 1 ? std::max(1, atoi(numbers[1])) : 12;

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
    const double unknownShare = double(unknown) / (double(side) * side);

    QuickSelectGLWidget view;
    view.messageBoxes = false;
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.loadFromImage(photo);
    view.show();
    QCoreApplication::processEvents();
    if (!view.fbo || !view.programsReady()) {
        std::fprintf(stderr, "bench-glmatting: no OpenGL 2.1 context or no working programs (run it under an X server): %s\n",
                     qPrintable(view.lastError()));
        return 3;
    }
    view.makeCurrent();
    const GpuTimer timer(QOpenGLContext::currentContext());
    upload(view.marksTexture, marks);
    std::printf("renderer %s, OpenGL %s\n", reinterpret_cast<const char*>(glGetString(GL_RENDERER)),
                reinterpret_cast<const char*>(glGetString(GL_VERSION)));
    std::printf("image %d x %d, unknown band %lld pixels (%.1f %%), %d closed passes, median of %d%s\n", side, side,
                unknown, 100.0 * unknownShare, view.brushRadius, runs,
                timer.available() ? ", GPU times from timer queries" : ", no timer queries: wall-clock times only");

    // The first matte of a view pays for what the driver puts off until a program first runs.
    QElapsedTimer first;
    first.start();
    view.matte();
    view.makeCurrent();
    glFinish();
    std::printf("%-12s %9.2f ms   (first call)\n", "matte", double(first.nsecsElapsed()) / 1e6);
    const auto matteOnce = [&] {
        view.matte();
        view.makeCurrent();
    };
    print("matte", median(timer, matteOnce));
    QImage matte;
    view.saveToImage(matte);
    view.makeCurrent();
    const QImage grey = matte.convertToFormat(QImage::Format_Grayscale8);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (int y = 0; y < grey.height(); ++y)
        hash.addData(QByteArrayView(reinterpret_cast<const char*>(grey.constScanLine(y)), grey.width()));
    const QByteArray checksum = hash.result().toHex().left(16);
    std::printf("matte checksum %s\n", checksum.constData());
    if (!expected.isEmpty() && checksum != expected) {
        std::printf("the matte is not the expected one (%s): its bytes changed\n", expected.constData());
        return 1;
    }

    // The passes one by one, on the trimap and intermediate results matte() leaves behind.
    upload(view.marksTexture, marks);
    print("trimap", median(timer, [&] { runPass(view, *view.trimapShader, view.marksTexture, 0); }));
    // Expand reads the trimap, Robust Expand's result and Closed Robust's, as in matte().
    runPass(view, *view.trimapShader, view.marksTexture, 0);
    copyIntoAlpha(view);
    const bool cs = view.onCompute();
    print(cs ? "expand (cs)" : "expand", median(timer, [&] {
              view.runExpand();
              view.fbo->release();
          }));
    copyIntoAlpha(view);
    // With the map of unknown blocks, made anew each time, as matte() does.
    print(cs ? "robust (cs)" : "robust", median(timer, [&] {
              view.runRobust();
              view.fbo->release();
          }));
    copyIntoAlpha(view);
    print("closed", median(timer, [&] { runPass(view, *view.closedShader, view.alphaTexture, view.colorTexture); }));
    print("copy", median(timer, [&] { copyIntoAlpha(view); }));
    print("result", median(timer, [&] { runPass(view, *view.resultShader, view.alphaTexture, view.colorTexture); }));
    print("flood(16)", median(timer, [&] {
              view.flood(16);
              view.makeCurrent();
          }));
    // Again after every pass has run many times: a driver that swaps in a better build of a
    // program after its first runs shows here.
    print("matte again", median(timer, matteOnce));
    QImage out;
    print("saveToImage", median(timer, [&] {
              view.saveToImage(out);
              view.makeCurrent();
          }));

    if (!check || unknownShare > 0.5) {
        std::printf("CPU reading: not compared%s\n", check ? " (most pixels unknown: it would take minutes)" : "");
        return 0;
    }
    QElapsedTimer t;
    t.start();
    const QImage cpu = ref::toImage(ref::matte(ref::fromImage(marks), ref::fromImage(photo), view.brushRadius))
                           .convertToFormat(QImage::Format_Grayscale8);
    qint64 differing = 0;
    int largest = 0;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const int d = std::abs(int(grey.constScanLine(y)[x]) - int(cpu.constScanLine(y)[x]));
            differing += d != 0;
            largest = std::max(largest, d);
        }
    std::printf("CPU reading (%.1f s): %lld of %lld bytes differ, by at most %d\n", double(t.nsecsElapsed()) / 1e9,
                differing, qint64(side) * side, largest);
    return 0;
}
