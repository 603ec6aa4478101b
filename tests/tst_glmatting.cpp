// The GPU matting view and its six programs, against the CPU versions in GLMattingReference.h.
// Runs under an X server (Mesa's llvmpipe in CI).
#include "GLMattingReference.h"
#include "QuickSelectGLWidget.h"
#include "VexaMatteResample.h"

#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QProcess>
#include <QRandomGenerator>
#include <QResource>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <GL/gl.h>

#include <functional>
#include <memory>

extern "C" int qInitResources_Resources();
extern "C" int qCleanupResources_Resources();

namespace {


QOpenGLFunctions* glf() { return QOpenGLContext::currentContext()->functions(); }

// Reads `texture` through the view's frame buffer, top row first, bytes as stored.
QImage readTexture(QuickSelectGLWidget& v, GLuint texture)
{
    v.makeCurrent();
    v.fbo->bind();
    glf()->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    QImage out(v.texWidth, v.texHeight, QImage::Format_RGBA8888);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, v.texWidth, v.texHeight, GL_RGBA, GL_UNSIGNED_BYTE, out.bits());
    glf()->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, v.fbo->texture(), 0);
    v.fbo->release();
    return out.mirrored();
}

void writeTexture(QuickSelectGLWidget& v, GLuint texture, const QImage& image)
{
    v.makeCurrent();
    const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888).mirrored();
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, rgba.width(), rgba.height(), GL_RGBA, GL_UNSIGNED_BYTE, rgba.constBits());
    glBindTexture(GL_TEXTURE_2D, 0);
}

// One full quad of `program` with the view's uniforms into the view's own texture; its pixels.
// `input` goes to the alpha texture on unit 0 with the photo on unit 1, or with `marks` to the
// marks texture alone.
QImage runProgram(QuickSelectGLWidget& v, QOpenGLShaderProgram& program, const QImage& input, bool marks = false)
{
    writeTexture(v, marks ? v.marksTexture : v.alphaTexture, input);
    v.fbo->bind();
    glViewport(0, 0, v.texWidth, v.texHeight);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, v.texWidth, v.texHeight, 0, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClearColor(0.2f, 0.4f, 0.6f, 0.8f); // so that an unwritten pixel shows
    glClear(GL_COLOR_BUFFER_BIT);
    glClearColor(0, 0, 0, 0);
    program.bind();
    glf()->glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, marks ? 0 : v.colorTexture);
    glf()->glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, marks ? v.marksTexture : v.alphaTexture);
    drawQuad(v.texWidth, v.texHeight);
    program.release();
    v.fbo->release();
    return readTexture(v, v.fbo->texture());
}

// A pass as matte() runs it (llvmpipe has compute programs) over a cleared target, so that an
// unwritten pixel shows; a null image when it could not run.
QImage runFast(QuickSelectGLWidget& v, bool (QuickSelectGLWidget::*step)(), const QImage& input)
{
    writeTexture(v, v.alphaTexture, input);
    v.fbo->bind();
    glClear(GL_COLOR_BUFFER_BIT);
    const bool ran = v.onCompute() && (v.*step)();
    v.fbo->release();
    return ran ? readTexture(v, v.fbo->texture()) : QImage();
}

// Largest difference of any channel in byte steps (256 for another size); `sum` gets them all.
int maxDiff(const QImage& a, const QImage& b, qint64* sum = nullptr)
{
    const QImage x = a.convertToFormat(QImage::Format_RGBA8888), y = b.convertToFormat(QImage::Format_RGBA8888);
    if (x.size() != y.size())
        return 256;
    int worst = 0;
    for (int r = 0; r < x.height(); ++r)
        for (int c = 0; c < x.width() * 4; ++c) {
            const int d = std::abs(int(x.constScanLine(r)[c]) - int(y.constScanLine(r)[c]));
            if (sum)
                *sum += d;
            worst = std::max(worst, d);
        }
    return worst;
}

// Marks as the view stores them: red object, green unknown, blue background, alpha 0.5.
QImage marksImage(int w, int h, const std::function<char(int, int)>& kind)
{
    QImage m(w, h, QImage::Format_RGBA8888);
    for (int i = 0; i < w * h; ++i) {
        const char k = kind(i % w, i / w);
        m.setPixelColor(i % w, i / w, QColor(k == 'r' ? 255 : 0, k == 'g' ? 255 : 0, k == 'b' ? 255 : 0, k == '.' ? 0 : 128));
    }
    return m;
}

QImage greyImage(int w, int h, const std::function<int(int, int)>& level)
{
    QImage m(w, h, QImage::Format_RGBA8888);
    for (int i = 0; i < w * h; ++i)
        m.setPixelColor(i % w, i / w, QColor(level(i % w, i / w), level(i % w, i / w), level(i % w, i / w), 255));
    return m;
}

// A photo-like picture, as bytes: smooth colour ramps, a disc of another colour and some noise.
QImage syntheticPhoto(int w, int h, quint32 seed)
{
    QRandomGenerator rng(seed);
    QImage img(w, h, QImage::Format_RGBA8888);
    const double cx = w * 0.45, cy = h * 0.55, r = std::min(w, h) * 0.3;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const bool inside = std::hypot(x - cx, y - cy) < r;
            const int n = int(rng.bounded(7)) - 3;
            img.setPixel(x, y, qRgb(std::clamp(inside ? 210 + n : 40 + 4 * x % 60 + n, 0, 255), std::clamp(inside ? 120 + 2 * y % 40 + n : 90 + n, 0, 255),
                                    std::clamp(inside ? 30 + n : 160 + 3 * y % 50 + n, 0, 255)));
        }
    return img;
}

// Marks for syntheticPhoto: object inside the disc, unknown band around its edge, background
// in a frame near the border, the rest unmarked.
QImage syntheticMarks(int w, int h, int band)
{
    const double cx = w * 0.45, cy = h * 0.55, r = std::min(w, h) * 0.3;
    return marksImage(w, h, [&](int x, int y) {
        const double d = std::hypot(x - cx, y - cy) - r;
        return std::abs(d) <= band ? 'g' : d < -band ? 'r' : x < 2 || y < 2 || x >= w - 2 || y >= h - 2 ? 'b' : '.';
    });
}

void drag(QWidget& w, Qt::MouseButton button, QPoint from, QPoint to)
{
    const auto send = [&](QEvent::Type type, Qt::MouseButton which, Qt::MouseButtons held, QPoint at) {
        QMouseEvent e(type, QPointF(at), w.mapToGlobal(QPointF(at)), which, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&w, &e);
    };
    send(QEvent::MouseButtonPress, button, button, from);
    send(QEvent::MouseMove, Qt::NoButton, button, to);
    send(QEvent::MouseButtonRelease, button, Qt::NoButton, to);
}

// What the widget's frame buffer holds, taken as written (the grab calls the bytes premultiplied).
QImage shownBytes(QuickSelectGLWidget& v, int mode)
{
    v.viewMode = mode;
    const QImage raw = v.grabFramebuffer().convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    return QImage(raw.constBits(), raw.width(), raw.height(), raw.bytesPerLine(), QImage::Format_RGBA8888).copy();
}

// Whether `shown` (device pixels, `scale` of them to a widget pixel) is `image` drawn one image
// pixel per widget pixel from the top-left corner, transparent black beyond it. A device pixel
// centre that falls on the border of two image pixels may take either.
QString drawnAt(const QImage& shown, const QImage& image, qreal scale)
{
    const QImage img = image.convertToFormat(QImage::Format_RGBA8888);
    auto candidates = [&](int device) {
        const double u = (device + 0.5) / scale;
        return std::abs(u - std::round(u)) < 1e-3 ? QVector<int>{int(std::round(u)) - 1, int(std::round(u))} : QVector<int>{int(std::floor(u))};
    };
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x) {
            bool matches = false;
            for (int ix : candidates(x))
                for (int iy : candidates(y))
                    matches |= shown.pixel(x, y) == (ix >= 0 && iy >= 0 && ix < img.width() && iy < img.height() ? img.pixel(ix, iy) : 0u);
            if (!matches)
                return QStringLiteral("device pixel (%1, %2) of %3 x %4 is %5").arg(x).arg(y).arg(shown.width()).arg(shown.height()).arg(shown.pixel(x, y), 8, 16, QLatin1Char('0'));
        }
    return QString();
}

// Settings that hold for the whole process (a screen's scale, Mesa's version) are tried in a
// child that runs `function` with `name` set to `value`; true when this is that child.
bool inChild(const char* name, const QString& value, const QString& function)
{
    if (qEnvironmentVariable(name) == value)
        return true;
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QLatin1String(name), value);
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {function});
    if (!child.waitForFinished(120000) || child.exitCode() != 0)
        QTest::qFail(child.readAll().constData(), __FILE__, __LINE__);
    return false;
}

} // namespace

class TestGLMatting : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { m_view.reset(); }

    // ---- The programs ---------------------------------------------------------------------------

    void trimapProgram()
    {
        // Marks along the top row and the alphas they give: red object, green unknown, blue or
        // unmarked background; red wins over green; 128 is above a half, 127 is not.
        const QColor marks[] = {{255, 0, 0, 128}, {0, 255, 0, 128}, {0, 0, 255, 128}, {0, 0, 0, 0}, {255, 255, 0, 128}, {128, 0, 0, 128}, {127, 128, 0, 128}};
        const int alphas[] = {255, 128, 0, 0, 255, 255, 128};
        QImage row(7, 2, QImage::Format_RGBA8888);
        row.fill(Qt::transparent);
        for (int x = 0; x < 7; ++x)
            row.setPixelColor(x, 0, marks[x]);
        QuickSelectGLWidget& v = view(syntheticPhoto(7, 2, 1));
        const QImage gpu = runProgram(v, *v.trimapShader, row, true), cpu = ref::toImage(ref::trimap(ref::fromImage(row)));
        for (int x = 0; x < 7; ++x) {
            // A half is stored as 127.5: the driver may round it either way.
            QVERIFY2(std::abs(gpu.pixelColor(x, 0).red() - alphas[x]) <= (alphas[x] == 128) && gpu.pixelColor(x, 0).alpha() == 255, qPrintable(QString::number(x)));
            QVERIFY(qRed(cpu.pixel(x, 0)) == alphas[x] && gpu.pixelColor(x, 1) == QColor(0, 0, 0, 255));
        }
    }

    void fastFill_data()
    {
        // One line of marks, laid along a row or a column: each pass grows object and background
        // seeds by one pixel into unmarked pixels, object first; unknown marks never spread.
        QTest::addColumn<QString>("marks"); QTest::addColumn<int>("passes"); QTest::addColumn<QString>("filled");
        QTest::newRow("no passes") << "r..g..b" << 0 << "r..g..b";
        QTest::newRow("negative passes") << "r..g..b" << -3 << "r..g..b";
        QTest::newRow("one pass") << "r..g..b" << 1 << "rr.g.bb";
        QTest::newRow("two passes") << "r..g..b" << 2 << "rrrgbbb";
        QTest::newRow("object wins a shared gap") << "..r.b.." << 1 << ".rrrbb.";
        QTest::newRow("object wins from the other side") << "..b.r.." << 1 << ".bbrrr.";
    }
    void fastFill()
    {
        QFETCH(QString, marks); QFETCH(int, passes); QFETCH(QString, filled);
        for (const bool column : {false, true}) {
            const int w = column ? 1 : 7, h = column ? 7 : 1;
            auto line = [&](const QString& s) { return marksImage(w, h, [&](int x, int y) { return s[x + y].toLatin1(); }); };
            QuickSelectGLWidget& v = view(syntheticPhoto(w, h, 1));
            writeTexture(v, v.marksTexture, line(marks));
            v.flood(passes);
            QCOMPARE(readTexture(v, v.marksTexture), line(filled));
            // The photo and the alphas are left alone: the view still shows the photo.
            QCOMPARE(readTexture(v, v.alphaTexture), greyImage(w, h, [](int, int) { return 128; }));
            v.showMarks = false;
            QCOMPARE(shownBytes(v, 0), syntheticPhoto(w, h, 1));
        }
    }

    void expandProgram()
    {
        // Every pixel has its own colour except the centre (10, 10) and two pixels three steps
        // from it, right (13, 10: background) and below (10, 13: object). Both are at distance 9;
        // the scan runs window rows upwards, so the row below in the image comes first and the
        // centre takes its value, 1. A lone unknown pixel without a close colour stays unknown:
        // (3, 3) differs from (3, 4) by 12/255 in green, far above the limit.
        QImage colours(21, 21, QImage::Format_ARGB32);
        for (int y = 0; y < 21; ++y)
            for (int x = 0; x < 21; ++x)
                colours.setPixel(x, y, (x == 10 && (y == 10 || y == 13)) || (x == 13 && y == 10) ? qRgb(0, 0, 255) : qRgb(12 * x, 12 * y, 0));
        const QImage tri = greyImage(21, 21, [](int x, int y) { return (x == 10 && y == 10) || (x == 3 && y == 3) ? 128 : (x == 10 && y == 13) ? 255 : 0; });
        QuickSelectGLWidget& v = view(colours);
        QImage gpu = runProgram(v, *v.expandShader, tri);
        QVERIFY(qRed(gpu.pixel(10, 10)) == 255 && qRed(gpu.pixel(3, 3)) == 128);
        // Colours within the limit: 5/255 in one channel qualifies (25 / 65025 <= 0.0004), 6/255
        // does not (36 / 65025).
        for (const int nearer : {250, 249}) {
            colours.setPixel(10, 13, qRgb(0, 0, nearer));
            colours.setPixel(13, 10, qRgb(0, 0, 499 - nearer));
            writeTexture(v, v.colorTexture, colours);
            QCOMPARE(qRed(runProgram(v, *v.expandShader, tri).pixel(10, 10)), nearer == 250 ? 255 : 0);
        }

        // Byte for byte against the literal reading: few colours with a little noise, so that many
        // offsets qualify and many do not.
        QRandomGenerator rng(11);
        const QRgb palette[] = {qRgb(200, 40, 40), qRgb(40, 200, 40), qRgb(40, 40, 200), qRgb(120, 120, 120)};
        QImage noisy(31, 26, QImage::Format_ARGB32);
        for (int i = 0; i < 31 * 26; ++i) {
            const QRgb c = palette[rng.bounded(4)];
            const int d = int(rng.bounded(9)) - 4;
            noisy.setPixel(i % 31, i / 31, qRgb(qRed(c) + d, qGreen(c), qBlue(c) - d));
        }
        const QImage randomTri = greyImage(31, 26, [&](int, int) { return std::array<int, 4>{0, 128, 128, 255}[rng.bounded(4)]; });
        QuickSelectGLWidget& big = view(noisy);
        const QImage literal = ref::toImage(ref::expand(ref::fromImage(randomTri), ref::fromImage(noisy)));
        QCOMPARE(maxDiff(runProgram(big, *big.expandShader, randomTri), literal), 0);
        // As a compute program, on a size that is no multiple of its 8 x 8 groups.
        QCOMPARE(maxDiff(runFast(big, &QuickSelectGLWidget::runExpand, randomTri), literal), 0);
    }

    void robustByHand_data()
    {
        QTest::addColumn<QString>("layout"); // per column of a 9 x 9 image: f object, b background, u unknown
        QTest::addColumn<QRgb>("objectColour"); QTest::addColumn<QRgb>("backgroundColour"); QTest::addColumn<QRgb>("pixelColour");
        QTest::addColumn<int>("alpha");
        // Rays that reach only unknown pixels or leave the image: 0.5.
        QTest::newRow("nothing known") << "uuuuuuuuu" << 0u << 0u << qRgb(9, 9, 9) << 128;
        QTest::newRow("only object") << "ffffuffff" << qRgb(200, 0, 0) << 0u << qRgb(9, 9, 9) << 255;
        QTest::newRow("only background") << "bbbbubbbb" << 0u << qRgb(200, 0, 0) << qRgb(9, 9, 9) << 0;
        // The pixel lies a quarter of the way from the background to the object colour:
        // df = 0.75 |cf - cb|, db = 0.25 |cf - cb|, alpha = db / (df + db) = 0.25, and every pair
        // is the same, so the mean of the three slots is 0.25 (63.75, stored 64).
        QTest::newRow("a quarter") << "ffffubbbb" << qRgb(0, 0, 200) << qRgb(200, 0, 0) << qRgb(150, 0, 50) << 64;
        // Both samples have the pixel's colour: 0 / 0, settled as 0.5.
        QTest::newRow("both distances 0") << "ffffubbbb" << qRgb(60, 60, 60) << qRgb(60, 60, 60) << qRgb(60, 60, 60) << 128;
    }
    void robustByHand()
    {
        QFETCH(QString, layout); QFETCH(QRgb, objectColour); QFETCH(QRgb, backgroundColour); QFETCH(QRgb, pixelColour);
        QFETCH(int, alpha);
        QImage colours(9, 9, QImage::Format_ARGB32);
        const auto at = [&](int x, int y) { return x == 4 && y == 4 ? 'u' : layout[x].toLatin1(); };
        const QImage tri = greyImage(9, 9, [&](int x, int y) { return at(x, y) == 'f' ? 255 : at(x, y) == 'b' ? 0 : 128; });
        for (int i = 0; i < 81; ++i)
            colours.setPixel(i % 9, i / 9, at(i % 9, i / 9) == 'f' ? objectColour : at(i % 9, i / 9) == 'b' ? backgroundColour : pixelColour);
        QuickSelectGLWidget& v = view(colours);
        // The stored value of a mean the driver computes in its own precision: within one level.
        QVERIFY(std::abs(qRed(runProgram(v, *v.robustShader, tri).pixel(4, 4)) - alpha) <= 1);
        QCOMPARE(qRed(ref::toImage(ref::robust(ref::fromImage(tri), ref::fromImage(colours))).pixel(4, 4)), alpha);
    }

    void robustPassesOverUnknownOnly()
    {
        // Mostly unknown, with a few small known patches, so that rays cross long unknown stretches
        // that the map of unknown blocks lets them pass over. Passing over must not change a byte.
        const int w = 72, h = 60;
        const QImage colours = syntheticPhoto(w, h, 21);
        const QImage marks = marksImage(w, h, [](int x, int y) {
            const bool object = x >= 6 && x < 10 && y >= 40 && y < 44;
            return object ? 'r' : (x >= 60 && x < 63 && y >= 8 && y < 12) || (x >= 30 && x < 33 && y >= 2 && y < 4) ? 'b' : 'g';
        });
        const QImage tri = ref::toImage(ref::trimap(ref::fromImage(marks)));
        QuickSelectGLWidget& v = view(colours);
        const QImage plain = runProgram(v, *v.robustShader, tri);
        const GLuint clearMap = v.buildClearMap();
        QVERIFY(clearMap);
        const auto bindMap = [&](GLuint map) {
            glf()->glActiveTexture(GL_TEXTURE2);
            glBindTexture(GL_TEXTURE_2D, map);
            glf()->glActiveTexture(GL_TEXTURE0);
        };
        bindMap(clearMap);
        const QImage passing = runProgram(v, *v.robustShader, tri);
        bindMap(0);
        QCOMPARE(maxDiff(passing, plain), 0);
        QCOMPARE(maxDiff(runFast(v, &QuickSelectGLWidget::runRobust, tri), passing), 0);
        QVERIFY(maxDiff(plain, ref::toImage(ref::robust(ref::fromImage(tri), ref::fromImage(colours)))) <= 1);
        // Rays from many unknown pixels found a patch.
        int found = 0;
        for (int i = 0; i < w * h; ++i)
            found += marks.pixelColor(i % w, i / w).green() && plain.pixelColor(i % w, i / w).red() != 128;
        QVERIFY2(found > w * h / 4, qPrintable(QString::number(found)));
    }

    void closedByHand()
    {
        // 3 x 3 around (1, 1). Top row grey 0.6 with alpha 1, the rest grey 0.2 with alpha 0
        // except the centre: grey 0.6, alpha 0.5 (stored 128).
        //   g = 0.6 x 4, 0.2 x 5; mean m = 3.4 / 9 = 0.37778; d = 0.22222 (x 4), -0.17778 (x 5)
        //   s = (4 x 0.049383 + 5 x 0.031605) / 9 + 0.001 / 9 = 0.039506 + 0.000111 = 0.039617
        //   bright neighbours: w = (1 + 0.22222 x 0.22222 / 0.039617) / 9 = (1 + 1.24649) / 9 = 0.24961
        //   dark neighbours:   w = (1 - 0.22222 x 0.17778 / 0.039617) / 9 = (1 - 0.99719) / 9 = 0.000312
        //   alpha = 3 x 0.24961 / (3 x 0.24961 + 5 x 0.000312) = 0.74883 / 0.75039 = 0.99792 -> 254
        // Pixels outside the 3 x 3 repeat the edge; the image is exactly 3 x 3.
        const QImage colours = greyImage(3, 3, [](int x, int y) { return y == 0 || (x == 1 && y == 1) ? 153 : 51; });
        const QImage tri = greyImage(3, 3, [](int x, int y) { return x == 1 && y == 1 ? 128 : y == 0 ? 255 : 0; });
        QuickSelectGLWidget& v = view(colours);
        const QImage gpu = runProgram(v, *v.closedShader, tri);
        QCOMPARE(qRed(gpu.pixel(1, 1)), 254);
        QCOMPARE(qRed(ref::toImage(ref::closed(ref::fromImage(tri), ref::fromImage(colours))).pixel(1, 1)), 254);
        // Known pixels never change.
        QVERIFY(qRed(gpu.pixel(0, 0)) == 255 && qRed(gpu.pixel(0, 2)) == 0);

        // Uniform grey: all deviations 0, every weight 1/9, the plain mean of the eight
        // neighbours; six at 1 and two at 0 give 0.75 (191.25 -> 191).
        writeTexture(v, v.colorTexture, greyImage(3, 3, [](int, int) { return 90; }));
        QCOMPARE(qRed(runProgram(v, *v.closedShader, greyImage(3, 3, [](int x, int y) { return x == 1 && y == 1 ? 128 : y == 2 && x < 2 ? 0 : 255; })).pixel(1, 1)), 191);

        // Above 0.95 and below 0.05 stay; 0.95 itself (242) and 0.05 (13) are smoothed.
        for (const auto& [stored, stays] : {std::pair{243, true}, {242, false}, {12, true}, {13, false}}) {
            const int centre = stored; // a lambda may not capture a structured binding in C++17
            const QImage gpuAt = runProgram(v, *v.closedShader, greyImage(3, 3, [centre](int x, int y) { return x == 1 && y == 1 ? centre : 128; }));
            QCOMPARE(qRed(gpuAt.pixel(1, 1)) == stored, stays);
        }
    }

    void resultByHand()
    {
        // Colour (200, 100, 50, 255), alpha 0.2 (51): over the background (0, 0, 1, 1)
        // (40, 20, 10 + 204, 51 + 204), over transparent black (40, 20, 10, 51).
        QImage colours(2, 1, QImage::Format_ARGB32);
        colours.fill(qRgb(200, 100, 50));
        QuickSelectGLWidget& v = view(colours);
        for (const ref::Px& bkg : {ref::Px{0, 0, 0, 0}, ref::Px{0, 0, 1, 1}}) {
            v.makeCurrent();
            v.resultShader->bind();
            v.resultShader->setUniformValue("BkgColor", bkg[0], bkg[1], bkg[2], bkg[3]);
            const QImage gpu = runProgram(v, *v.resultShader, greyImage(2, 1, [](int x, int) { return x ? 255 : 51; }));
            QCOMPARE(gpu.pixelColor(0, 0), bkg[3] == 1 ? QColor(40, 20, 214, 255) : QColor(40, 20, 10, 51));
            QCOMPARE(gpu.pixelColor(1, 0), QColor(200, 100, 50, 255));
        }
    }

    // ---- The view -------------------------------------------------------------------------------

    void strokeBand()
    {
        QuickSelectGLWidget& v = view(syntheticPhoto(40, 20, 1));
        // Radius 4, from (10, 10) to (30, 10): rows 6 to 13 and columns 6 to 33, with the corners
        // of the band cut off by the half-octagon caps. The tips are (6, 10) and (34, 10): the pixel
        // centres next to them are inside. Vertices are truncated toward zero: the lower cap corners
        // (7.17, 12.83) and (32.83, 12.83) become (7, 12) and (32, 12), which leaves those two out.
        QCOMPARE(v.brushRadius, 4);
        drag(v, Qt::LeftButton, QPoint(10, 10), QPoint(30, 10));
        const QImage marks = readTexture(v, v.marksTexture);
        QRect box;
        for (int y = 0; y < marks.height(); ++y)
            for (int x = 0; x < marks.width(); ++x)
                if (marks.pixelColor(x, y).alpha()) {
                    QCOMPARE(marks.pixelColor(x, y), QColor(255, 0, 0, 128));
                    box |= QRect(x, y, 1, 1);
                }
        QCOMPARE(box, QRect(QPoint(6, 6), QPoint(33, 13)));
        for (int i = 0; i < 20 * 8; ++i)
            QCOMPARE(marks.pixelColor(10 + i % 20, 6 + i / 20).alpha(), 128);
        for (QPoint in : {QPoint(6, 9), QPoint(6, 10), QPoint(33, 9), QPoint(7, 7)})
            QCOMPARE(marks.pixelColor(in).alpha(), 128);
        for (QPoint out : {QPoint(6, 6), QPoint(6, 13), QPoint(33, 6), QPoint(33, 13), QPoint(7, 12), QPoint(32, 12)})
            QCOMPARE(marks.pixelColor(out).alpha(), 0);
    }

    void markColours()
    {
        // What the left, right and middle buttons paint in mark modes 0 to 3: r object, g unknown,
        // b background, . erased.
        const QString paints[] = {"rg.", "brg", "gr.", ".."};
        const Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
        QuickSelectGLWidget& v = view(syntheticPhoto(30, 20, 1));
        v.brushRadius = 2;
        const auto marksAt = [&](int x, int y) { return readTexture(v, v.marksTexture).pixelColor(x, y); };
        for (int mode = 0; mode < 4; ++mode)
            for (int b = 0; b < paints[mode].size(); ++b) {
                writeTexture(v, v.marksTexture, marksImage(30, 20, [](int, int) { return 'b'; })); // something to erase
                v.markMode = mode;
                drag(v, buttons[b], QPoint(5, 10), QPoint(25, 10));
                const char painted = paints[mode][b].toLatin1();
                QCOMPARE(marksAt(15, 10), marksImage(1, 1, [&](int, int) { return painted; }).pixelColor(0, 0));
                QCOMPARE(marksAt(15, 2), QColor(0, 0, 255, 128));
            }
        // With autoFill a stroke of object floods 16 passes (all of this image); one of unknown none:
        // the background seed in a corner shows whether a flood ran.
        v.markMode = 0;
        v.autoFill = true;
        writeTexture(v, v.marksTexture, marksImage(30, 20, [](int x, int y) { return x + y ? '.' : 'b'; }));
        drag(v, Qt::RightButton, QPoint(5, 10), QPoint(25, 10));
        QCOMPARE(marksAt(1, 0).alpha(), 0);
        drag(v, Qt::LeftButton, QPoint(5, 10), QPoint(25, 10));
        QVERIFY(marksAt(29, 0) == QColor(255, 0, 0, 128) && marksAt(15, 10) == QColor(255, 0, 0, 128));
    }

    void matteRunsClosedBrushRadiusTimes_data()
    {
        QTest::addColumn<int>("radius");
        for (const int radius : {4, 1, 0}) // 4 is the default
            QTest::addRow("%d", radius) << radius;
    }

    void matteRunsClosedBrushRadiusTimes()
    {
        QFETCH(int, radius);
        const QImage colours = syntheticPhoto(36, 30, 8), marks = syntheticMarks(36, 30, 5);
        QuickSelectGLWidget& v = view(colours);
        if (radius != 4)
            v.brushRadius = radius;
        writeTexture(v, v.marksTexture, marks);
        QImage gpu, again;
        QVERIFY(v.matte());
        v.saveToImage(gpu);
        QCOMPARE(gpu.format(), QImage::Format_ARGB32);
        const auto diff = [&](int passes) {
            qint64 sum = 0;
            return maxDiff(gpu, ref::toImage(ref::matte(ref::fromImage(marks), ref::fromImage(colours), passes)), &sum) <= 1 ? sum : -sum - 1;
        };
        // One pass more or fewer lies clearly farther away, so the count is what it is.
        const qint64 own = diff(radius);
        QVERIFY(own >= 0 && std::abs(diff(radius + 1)) > own + 20 && (radius == 0 || std::abs(diff(radius - 1)) > own + 20));
        // The marks stay as painted: matte starts again from them each time.
        QCOMPARE(readTexture(v, v.marksTexture), marks);
        v.matte();
        v.saveToImage(again);
        QCOMPARE(again, gpu);
    }

    void drawsInDevicePixels_data()
    {
        QTest::addColumn<QString>("scale");
        QTest::newRow("1") << QStringLiteral("1");
        QTest::newRow("1.5") << QStringLiteral("1.5"); // a fractional scale: device pixels straddle widget pixels
    }

    void drawsInDevicePixels()
    {
        QFETCH(QString, scale);
        if (scale != QLatin1String("1") && !inChild("QT_SCALE_FACTOR", scale, QStringLiteral("drawsInDevicePixels:") + scale))
            return;
        const int w = 40, h = 30;
        const QImage colours = syntheticPhoto(w, h, 5);
        QuickSelectGLWidget& v = view(colours);
        const qreal dpr = v.devicePixelRatio();
        QCOMPARE(dpr, scale.toDouble());
        v.showMarks = false;
        QString wrong = drawnAt(shownBytes(v, 0), colours, dpr);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        // A stroke lands under the pointer: marks in image pixels, blended at alpha 0.5 over those
        // pixels, unmarked pixels as they are.
        v.showMarks = true;
        v.brushRadius = 2;
        drag(v, Qt::LeftButton, QPoint(10, 10), QPoint(30, 10));
        const QImage marks = readTexture(v, v.marksTexture);
        QVERIFY(marks.pixelColor(20, 10) == QColor(255, 0, 0, 128) && marks.pixelColor(20, 14).alpha() == 0);
        const QImage withMarks = shownBytes(v, 0);
        const auto atWidget = [&](int x, int y) { return withMarks.pixelColor(int((x + 0.5) * dpr), int((y + 0.5) * dpr)); };
        const float a = 128.0f / 255.0f;
        QVERIFY(std::abs(atWidget(20, 10).red() - std::lround(255 * a + colours.pixelColor(20, 10).red() * (1 - a))) <= 1);
        QCOMPARE(atWidget(20, 14), colours.pixelColor(20, 14));

        // Matte and composite (the photo times the matte over transparent black), also in a widget
        // larger than the image: everything stays on the image. Any other view draws nothing.
        writeTexture(v, v.marksTexture, syntheticMarks(w, h, 2));
        QVERIFY(v.matte());
        QImage matte;
        v.saveToImage(matte);
        QImage composite = colours;
        for (int y = 0; y < h; ++y)
            for (int i = 0; i < 4 * w; ++i)
                composite.scanLine(y)[i] = uchar(std::lround(composite.constScanLine(y)[i] * (qRed(matte.pixel(i / 4, y)) / 255.0f)));
        for (QSize size : {QSize(w, h), QSize(81, 61)}) {
            v.resize(size);
            QCOMPARE(shownBytes(v, 0).size(), size * dpr);
            wrong = drawnAt(shownBytes(v, 1), matte, dpr) + drawnAt(shownBytes(v, 2), composite, dpr) + drawnAt(shownBytes(v, 7), QImage(), dpr);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }

    // ---- What the driver refuses -----------------------------------------------------------------

    // An image wider than the driver's largest texture is refused with its size named; the image
    // loaded before it stays and still works.
    void refusesImagesBeyondTheDriver()
    {
        QuickSelectGLWidget& v = view(syntheticPhoto(20, 10, 1));
        v.messageBoxes = false;
        GLint largest = 0;
        v.makeCurrent();
        glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
        const QImage wide = syntheticPhoto(largest + 1, 1, 2);
        QSignalSpy failures(&v, &QuickSelectGLWidget::failed);
        v.loadFromImage(wide);
        QVERIFY(failures.size() == 1 && v.lastError() == failures[0][0].toString());
        QVERIFY2(v.lastError().contains(QString::number(largest + 1)), qPrintable(v.lastError()));
        QCOMPARE(readTexture(v, v.colorTexture), syntheticPhoto(20, 10, 1));
        QVERIFY(v.matte());
    }

    // A driver that rejects one shipped program: the host hears of it through the signal and the
    // status (a box only if it asks for one), and matte says it fell short.
    void brokenProgramReported_data()
    {
        QTest::addColumn<QString>("rcc"); QTest::addColumn<QString>("message");
        QTest::newRow("Robust does not compile") << QStringLiteral(VEXA_BROKEN_COMPILE_RCC)
                                                 << QStringLiteral("Failed to compile: 'RobustShader.fp'\n");
        QTest::newRow("Closed does not link") << QStringLiteral(VEXA_BROKEN_LINK_RCC) << QStringLiteral("Failed to link 'closedShader'\n");
    }

    void brokenProgramReported()
    {
        QFETCH(QString, rcc); QFETCH(QString, message);
        qCleanupResources_Resources(); // the plug-in's programs give way to a set with one broken
        QVERIFY(QResource::registerResource(rcc));
        QuickSelectGLWidget& v = *(m_view = std::make_unique<QuickSelectGLWidget>());
        v.messageBoxes = false;
        QSignalSpy failures(&v, &QuickSelectGLWidget::failed);
        v.show();
        QVERIFY(QTest::qWaitForWindowExposed(&v));
        QVERIFY(QResource::unregisterResource(rcc));
        qInitResources_Resources();
        const QString said = failures.size() == 1 ? failures[0][0].toString() : QString(); // the log follows the message
        QVERIFY2(said.startsWith(message) && said.size() > message.size() && v.lastError() == said && !v.programsReady(), qPrintable(said));
        v.loadFromImage(syntheticPhoto(30, 24, 8)); // the view goes on, and matte says it fell short
        QVERIFY(v.fbo && !v.matte());
    }

    // ---- The command line ----------------------------------------------------------------------

    void commandLineExitStatuses_data()
    {
        QTest::addColumn<QStringList>("args"); QTest::addColumn<bool>("withGL"); QTest::addColumn<int>("status");
        QTest::addColumn<QString>("says");
        // Files are made in the test: in.png 20 x 16, marks.png 20 x 16, small.png 8 x 8.
        const QStringList files{"in.png", "marks.png", "out.png"};
        QTest::newRow("done") << files << true << 0 << QString();
        QTest::newRow("no arguments") << QStringList{} << true << 2 << QString();
        QTest::newRow("two arguments") << QStringList{"in.png", "marks.png"} << true << 2 << QString();
        QTest::newRow("unreadable image") << QStringList{"missing.png", "marks.png", "out.png"} << true << 2 << QString();
        QTest::newRow("unreadable marks") << QStringList{"in.png", "missing.png", "out.png"} << true << 2 << QString();
        QTest::newRow("marks of another size") << QStringList{"in.png", "small.png", "out.png"} << true << 2 << QString();
        QTest::newRow("passes not a number") << files + QStringList{"--passes", "x"} << true << 2 << QString();
        QTest::newRow("negative passes") << files + QStringList{"--passes", "-1"} << true << 2 << QString();
        QTest::newRow("working size not a number") << files + QStringList{"--working-size", "x"} << true << 2 << QString();
        QTest::newRow("negative working size") << files + QStringList{"--working-size", "-1"} << true << 2 << QString();
        QTest::newRow("unwritable output") << QStringList{"in.png", "marks.png", "nodir/out.png"} << true << 2 << QString();
        QTest::newRow("no OpenGL") << files << false << 3 << QStringLiteral("OpenGL 2.1");
        // No box waits for a click: the log goes to stderr and no matte lacking a pass is written.
        QTest::newRow("program does not compile") << files + QStringList{"--shaders", VEXA_BROKEN_COMPILE_RCC} << true << 3
                                                  << QStringLiteral("Failed to compile: 'RobustShader.fp'\n");
        QTest::newRow("program does not link") << files + QStringList{"--shaders", VEXA_BROKEN_LINK_RCC} << true << 3
                                               << QStringLiteral("Failed to link 'closedShader'\n");
    }

    void commandLineExitStatuses()
    {
        QFETCH(QStringList, args); QFETCH(bool, withGL); QFETCH(int, status); QFETCH(QString, says);
        QTemporaryDir dir;
        QVERIFY(syntheticPhoto(20, 16, 1).save(dir.filePath("in.png")) && syntheticMarks(20, 16, 2).save(dir.filePath("marks.png"))
                && syntheticPhoto(8, 8, 1).save(dir.filePath("small.png")));
        QProcess cli;
        cli.setWorkingDirectory(dir.path());
        if (!withGL) {
            // No display and a platform without OpenGL.
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.insert("QT_QPA_PLATFORM", "offscreen");
            env.insert("QT_QPA_OFFSCREEN_NO_GLX", "1");
            env.remove("DISPLAY");
            cli.setProcessEnvironment(env);
        }
        cli.start(QStringLiteral(VEXA_GLMATTE_PATH), args);
        QVERIFY2(cli.waitForFinished(30000), "blocked");
        const QString err = QString::fromLocal8Bit(cli.readAllStandardError());
        QVERIFY2(cli.exitStatus() == QProcess::NormalExit && cli.exitCode() == status, qPrintable(err));
        QVERIFY2(err.contains(says) && (status != 2 || !err.isEmpty()), qPrintable(err));
        QCOMPARE(QFile::exists(dir.filePath("out.png")), status == 0);
    }

    void commandLineMatchesView()
    {
        // The marks picture in the command-line convention: near-pure colours count; grey and
        // yellow are unmarked.
        const int w = 48, h = 36;
        const QImage colours = syntheticPhoto(w, h, 12), viewMarks = syntheticMarks(w, h, 3);
        QImage picture(w, h, QImage::Format_RGB32);
        for (int i = 0; i < w * h; ++i) {
            const QColor m = viewMarks.pixelColor(i % w, i / w);
            picture.setPixelColor(i % w, i / w, m.red() ? QColor(230, 20, 30) : m.green() ? QColor(10, 200, 60) : m.blue() ? QColor(0, 0, 255) : i % 2 ? QColor(200, 200, 0) : QColor(128, 128, 128));
        }
        QTemporaryDir dir;
        QVERIFY(colours.save(dir.filePath("in.png")) && picture.save(dir.filePath("marks.png")));
        auto run = [&](QStringList args, const char* out) {
            QProcess cli;
            cli.start(QStringLiteral(VEXA_GLMATTE_PATH), QStringList{dir.filePath(args.takeFirst()), dir.filePath(args.takeFirst()), dir.filePath(out)} + args);
            const bool done = cli.waitForFinished(60000) && cli.exitStatus() == QProcess::NormalExit && cli.exitCode() == 0;
            return done && (!args.contains("--timings") || cli.readAllStandardOutput().contains("matte")) ? QImage(dir.filePath(out)) : QImage();
        };
        for (int passes : {4, 2}) {
            const QImage out = run(QStringList{"in.png", "marks.png", "--timings"} + (passes == 4 ? QStringList() : QStringList{"--passes", "2"}), "out.png");
            QuickSelectGLWidget& v = view(colours);
            v.brushRadius = passes;
            writeTexture(v, v.marksTexture, viewMarks);
            QImage matte;
            v.matte();
            v.saveToImage(matte);
            QVERIFY(out.format() == QImage::Format_Grayscale8 && out == matte.convertToFormat(QImage::Format_Grayscale8));
        }

        // Larger than the working size: matted at 24 x 18 (the photo scaled as quick select scales
        // it, the marks by nearest pixel), then resampled to the photo's size like a quick select matte.
        QVERIFY(colours.scaled(24, 18, Qt::KeepAspectRatio, Qt::FastTransformation).save(dir.filePath("small.png")));
        QVERIFY(VexaMatteResample::nearest(picture.convertToFormat(QImage::Format_ARGB32), 24, 18).save(dir.filePath("smallmarks.png")));
        const QImage out = run({"in.png", "marks.png", "--working-size", "24"}, "out.png");
        QCOMPARE(out.size(), QSize(w, h));
        const QImage work = run({"small.png", "smallmarks.png", "--working-size", "0"}, "work.png");
        QCOMPARE(out.convertToFormat(QImage::Format_Grayscale8), VexaMatteResample::toGray(work, w, h));
    }

private:
    // Shows a view holding `image`.
    QuickSelectGLWidget& view(const QImage& image)
    {
        m_view = std::make_unique<QuickSelectGLWidget>();
        m_view->show();
        if (!QTest::qWaitForWindowExposed(m_view.get()))
            qFatal("the view does not appear");
        m_view->loadFromImage(image);
        if (!m_view->fbo)
            qFatal("no OpenGL context for the view");
        return *m_view;
    }
    std::unique_ptr<QuickSelectGLWidget> m_view;
};

QTEST_MAIN(TestGLMatting)
#include "tst_glmatting.moc"
