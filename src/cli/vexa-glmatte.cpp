// vexa-glmatte: the GPU matting view's matte of an image and a picture of marks, from the
// command line.
//
//   vexa-glmatte IMAGE MARKS OUT [--passes N] [--working-size N] [--timings] [--shaders RCC]
//
// MARKS has IMAGE's size: red pixels mark the object, green ones the unknown band, blue ones
// the background; any other colour is unmarked. OUT receives the matte as an 8-bit grey PNG
// of IMAGE's size, made at the working size (at most 1536 pixels a side unless --working-size
// says otherwise) and resampled as quick select's matte is. The view needs an OpenGL 2.1 context, so a display (an X server such as
// xvfb-run's) must be at hand. Exit status: 0 done, 2 bad arguments or files, 3 no OpenGL 2.1
// context or a matting program that does not build (its log goes to stderr; no matte is
// written then, since it would lack a pass).
#include "QuickSelectGLWidget.h"
#include "VexaImageFile.h"
#include "VexaImageSave.h"
#include "VexaMatteResample.h"
#include "VexaSegmentation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QResource>
#include <QSurfaceFormat>

#include <GL/gl.h>

#include <algorithm>
#include <csignal>
#include <cstdio>

extern "C" int qCleanupResources_Resources();

namespace {

int fail(int status, const QString& why)
{
    std::fprintf(stderr, "vexa-glmatte: %s\n", qPrintable(why));
    return status;
}

// The view's encoding of a mark: red object, green unknown, blue background, at alpha 0.5.
QRgb markOf(QRgb p)
{
    const bool r = qRed(p) >= 128, g = qGreen(p) >= 128, b = qBlue(p) >= 128;
    if (r && !g && !b)
        return qRgba(255, 0, 0, 128);
    if (g && !r && !b)
        return qRgba(0, 255, 0, 128);
    if (b && !r && !g)
        return qRgba(0, 0, 255, 128);
    return 0;
}

// Whether an OpenGL 2.1 context can be had; if so, also the largest image side it takes.
bool probeOpenGL(QString* why, int* largestSide)
{
    QSurfaceFormat fmt;
    fmt.setVersion(2, 1);
    fmt.setProfile(QSurfaceFormat::CompatibilityProfile);
    QOpenGLContext context;
    context.setFormat(fmt);
    if (!context.create()) {
        *why = QStringLiteral("no OpenGL 2.1 context can be created on the platform '%1'%2")
                   .arg(QGuiApplication::platformName(),
                        qEnvironmentVariableIsEmpty("DISPLAY") ? QStringLiteral(" (no display: run it under an X server, "
                                                                                "for example with xvfb-run)")
                                                               : QString());
        return false;
    }
    const QSurfaceFormat got = context.format();
    if (got.version() < qMakePair(2, 1) || context.isOpenGLES()) {
        *why = QStringLiteral("no OpenGL 2.1 context: the driver offers only %1 %2.%3")
                   .arg(context.isOpenGLES() ? QStringLiteral("OpenGL ES") : QStringLiteral("OpenGL"))
                   .arg(got.majorVersion())
                   .arg(got.minorVersion());
        return false;
    }
    QOffscreenSurface surface;
    surface.setFormat(got);
    surface.create();
    if (!context.makeCurrent(&surface)) {
        *why = QStringLiteral("no OpenGL 2.1 context: the context cannot be made current");
        return false;
    }
    GLint texture = 0, viewport[2] = {0, 0};
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &texture);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    *largestSide = std::min({int(texture), int(viewport[0]), int(viewport[1])});
    context.doneCurrent();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    // Without any display the arguments are still checked; the missing OpenGL is reported
    // afterwards with its own status instead of an abort in the platform plug-in.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QPA_OFFSCREEN_NO_GLX", "1");
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vexa-glmatte"));
    QCommandLineParser cli;
    cli.setApplicationDescription(QStringLiteral("Mattes IMAGE on the GPU from the marks painted in MARKS "
                                                 "(red: object, green: unknown, blue: background) and writes "
                                                 "the matte to OUT as an 8-bit grey PNG."));
    cli.addHelpOption();
    const QCommandLineOption passes(QStringLiteral("passes"), QStringLiteral("Closed-form smoothing passes (default 4)."),
                                    QStringLiteral("N"), QStringLiteral("4"));
    const QCommandLineOption timings(QStringLiteral("timings"), QStringLiteral("Print the time of the matte."));
    const QCommandLineOption shaders(QStringLiteral("shaders"),
                                     QStringLiteral("Take the matting programs from this compiled resource file instead "
                                                    "of the built-in ones (to try changed programs)."),
                                     QStringLiteral("RCC"));
    const QCommandLineOption workingSize(
        QStringLiteral("working-size"),
        QStringLiteral("Matte at most N pixels a side (default 1536, as quick select works; 0: at IMAGE's own size). "
                       "A larger IMAGE is scaled down as quick select scales it, the marks take the nearest pixel, and "
                       "the matte is resampled bilinearly to IMAGE's size as vexa-quickselect writes its own."),
        QStringLiteral("N"), QStringLiteral("1536"));
    cli.addOptions({passes, timings, shaders, workingSize});
    cli.addPositionalArgument(QStringLiteral("IMAGE"), QStringLiteral("The picture."));
    cli.addPositionalArgument(QStringLiteral("MARKS"), QStringLiteral("The marks, a picture of IMAGE's size."));
    cli.addPositionalArgument(QStringLiteral("OUT"), QStringLiteral("Where the matte goes (PNG)."));
    if (!cli.parse(app.arguments()))
        return fail(2, cli.errorText());
    if (cli.isSet(QStringLiteral("help"))) {
        std::printf("%s", qPrintable(cli.helpText()));
        return 0;
    }
    const QStringList files = cli.positionalArguments();
    if (files.size() != 3)
        return fail(2, QStringLiteral("expected IMAGE, MARKS and OUT (see --help)"));
    bool number = false;
    const int passCount = cli.value(passes).toInt(&number);
    if (!number || passCount < 0 || passCount > 1000)
        return fail(2, QStringLiteral("--passes must be a whole number from 0 to 1000, not '%1'").arg(cli.value(passes)));
    const int workingSide = cli.value(workingSize).toInt(&number);
    if (!number || workingSide < 0 || (workingSide > 0 && workingSide < 16))
        return fail(2, QStringLiteral("--working-size must be 0 or a whole number of at least 16, not '%1'").arg(cli.value(workingSize)));

    // A full disk fails the write with an error instead of killing the process mid-file.
    std::signal(SIGXFSZ, SIG_IGN);
    QString why;
    // OUT is opened before the work, and replaced only by a matte written in full.
    VexaImageSave out(files[2], "png");
    if (!out.open(&why))
        return fail(2, why);
    const QImage image = VexaImageFile::read(files[0], &why);
    if (image.isNull())
        return fail(2, QStringLiteral("cannot read the image %1: %2").arg(files[0], why));
    const QImage marksRead = VexaImageFile::read(files[1], &why);
    if (marksRead.isNull())
        return fail(2, QStringLiteral("cannot read the marks %1: %2").arg(files[1], why));
    if (marksRead.size() != image.size())
        return fail(2, QStringLiteral("the marks are %1 x %2 but the image is %3 x %4")
                           .arg(marksRead.width())
                           .arg(marksRead.height())
                           .arg(image.width())
                           .arg(image.height()));
    // A camera-sized photo ran for ten minutes on a software renderer: the matte is made at the
    // working size and brought back to the photo's size afterwards.
    QImage work = image;
    QImage marksPicture = marksRead;
    if (workingSide > 0) {
        VexaSegmentation sizing;
        sizing.maxWidth = sizing.maxHeight = workingSide;
        work = sizing.workingImage(image);
        if (work.size() != image.size())
            marksPicture = VexaMatteResample::nearest(marksRead.convertToFormat(QImage::Format_ARGB32), work.width(), work.height());
    }

    if (cli.isSet(shaders)) {
        qCleanupResources_Resources();
        if (!QResource::registerResource(cli.value(shaders)))
            return fail(2, QStringLiteral("cannot read the programs %1").arg(cli.value(shaders)));
    }

    int largestSide = 0;
    if (!probeOpenGL(&why, &largestSide))
        return fail(3, why);
    if (work.width() > largestSide || work.height() > largestSide)
        return fail(2, QStringLiteral("the image is %1 x %2, larger than this OpenGL's largest texture (%3 pixels a side)")
                           .arg(work.width())
                           .arg(work.height())
                           .arg(largestSide));

    QElapsedTimer clock;
    clock.start();
    QuickSelectGLWidget view;
    // Nobody is at the screen to close a message box: failures go to stderr.
    view.messageBoxes = false;
    QObject::connect(&view, &QuickSelectGLWidget::failed, [](const QString& message) {
        std::fprintf(stderr, "vexa-glmatte: %s\n", qPrintable(message.trimmed()));
    });
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.loadFromImage(work); // taken when the view gets its context
    view.show();
    QCoreApplication::processEvents();
    if (!view.programsReady())
        return fail(3, QStringLiteral("the matting programs cannot run on this OpenGL"));
    if (!view.fbo)
        return fail(3, QStringLiteral("no OpenGL 2.1 context for the matting view"));

    QImage marks(work.size(), QImage::Format_ARGB32);
    const QImage picture = marksPicture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < picture.height(); ++y) {
        const auto* in = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        auto* out = reinterpret_cast<QRgb*>(marks.scanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            out[x] = markOf(in[x]);
    }
    // The view keeps its textures bottom row first.
    const QImage rows = marks.convertToFormat(QImage::Format_RGBA8888).mirrored();
    view.makeCurrent();
    glBindTexture(GL_TEXTURE_2D, view.marksTexture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, rows.width(), rows.height(), GL_RGBA, GL_UNSIGNED_BYTE, rows.constBits());
    glBindTexture(GL_TEXTURE_2D, 0);
    glFinish();
    const qint64 loadNs = clock.nsecsElapsed();

    view.brushRadius = passCount;
    clock.restart();
    if (!view.matte())
        return fail(3, QStringLiteral("a matting pass could not run"));
    view.makeCurrent();
    glFinish();
    const qint64 matteNs = clock.nsecsElapsed();

    QImage matte;
    view.saveToImage(matte);
    const QImage grey = matte.size() == image.size() ? matte.convertToFormat(QImage::Format_Grayscale8)
                                                     : VexaMatteResample::toGray(matte, image.width(), image.height());
    if (grey.isNull())
        return fail(2, QStringLiteral("cannot write %1: no matte was read back").arg(files[2]));
    if (!out.write(grey, &why) || !out.commit(&why))
        return fail(2, why);
    if (cli.isSet(timings)) {
        std::printf("renderer %s\n", reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
        std::printf("load %.1f ms\n", double(loadNs) / 1e6);
        std::printf("matte %.1f ms (%d x %d, %d closed passes)\n", double(matteNs) / 1e6, work.width(), work.height(), passCount);
    }
    return 0;
}
