// vexa-quickselect as people script it: output sizes, the matte resampling it shares with the
// quick select tool, hints that end a run, and photos of any size a camera makes.
#include "VexaImageFile.h"
#include "VexaMatteResample.h"
#include "VexaTestImages.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QImage grey(std::initializer_list<std::initializer_list<int>> rows)
{
    QImage img(int(rows.begin()->size()), int(rows.size()), QImage::Format_Grayscale8);
    for (int y = 0; y < img.height(); ++y)
        std::copy(rows.begin()[y].begin(), rows.begin()[y].end(), img.scanLine(y));
    return img.convertToFormat(QImage::Format_ARGB32);
}

// The object on the left half, background on the right: marks of the image's size.
QImage marksFor(const QSize& size, bool background = true)
{
    QImage marks(size, QImage::Format_RGB32);
    marks.fill(qRgb(0, 0, 0));
    const int band = qMax(1, size.height() / 10), w = size.width();
    for (int y = size.height() / 2 - band; y < size.height() / 2 + band; ++y)
        for (int x = 0; x < band; ++x) {
            marks.setPixel(w / 8 + x, y, qRgb(255, 0, 0));
            if (background)
                marks.setPixel(w * 7 / 8 - band + x, y, qRgb(0, 0, 255));
        }
    return marks;
}

QImage halves(const QSize& size)
{
    QImage img(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            img.setPixel(x, y, x < size.width() / 2 ? qRgb(230, 40, 40) : qRgb(40, 40, 230));
    return img;
}

struct Run {
    int status = -1;
    QString out, err;
};

// `fileSize`: the shell's `ulimit -f` in blocks, which fails writes as a full disk does.
Run cli(const QStringList& args, int fileSize = 0)
{
    QProcess p;
    if (fileSize > 0)
        p.start(QStringLiteral("/bin/sh"),
                QStringList{"-c", QStringLiteral("ulimit -f %1; exec \"$0\" \"$@\"").arg(fileSize), VEXA_CLI_PATH} + args);
    else
        p.start(QStringLiteral(VEXA_CLI_PATH), args);
    Run r;
    if (!p.waitForFinished(240000))
        return r;
    r.status = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2;
    r.out = QString::fromLocal8Bit(p.readAllStandardOutput());
    r.err = QString::fromLocal8Bit(p.readAllStandardError());
    return r;
}

} // namespace

class TestCli : public QObject
{
    Q_OBJECT
private slots:
    void resampleWorkedByHand()
    {
        // 2 x 2 to 3 x 3: scale (2 - 1) / (3 - 1) = 0.5 on both axes. Corners take the matte's
        // corners; (1, 0) = 0 * 0.5 + 255 * 0.5 = 127.5, truncated; the centre is 127.5 too.
        QImage out = VexaMatteResample::toGray(grey({{0, 255}, {255, 0}}), 3, 3);
        QCOMPARE(out.size(), QSize(3, 3));
        auto row = [&](int y) { return QByteArray(reinterpret_cast<const char*>(out.constScanLine(y)), out.width()); };
        QCOMPARE(row(0) + row(1) + row(2), QByteArray("\x00\x7f\xff\x7f\x7f\x7f\xff\x7f\x00", 9));
        // 2 x 1 to 5 x 1: scale 0.25, so column 1 is 3/4 of 40 plus 1/4 of 200 = 80.
        out = VexaMatteResample::toGray(grey({{40, 200}}), 5, 1);
        QCOMPARE(row(0), QByteArray("\x28\x50\x78\xa0\xc8", 5)); // 40, 80, 120, 160, 200
        // Grey is (11 R + 16 G + 5 B) / 32: pure red 87, pure green 127, pure blue 39; alpha ignored.
        QImage colours(3, 1, QImage::Format_ARGB32);
        colours.setPixel(0, 0, qRgb(255, 0, 0));
        colours.setPixel(1, 0, qRgb(0, 255, 0));
        colours.setPixel(2, 0, qRgba(0, 0, 255, 0));
        out = VexaMatteResample::toGray(colours, 3, 1);
        QCOMPARE(row(0), QByteArray("\x57\x7f\x27", 3));
        // A document one pixel wide samples the first column; a null matte writes nothing.
        out = VexaMatteResample::toGray(grey({{10, 250}}), 1, 1);
        QCOMPARE(int(out.constScanLine(0)[0]), 10);
        QVERIFY(VexaMatteResample::toGray(QImage(), 4, 4).isNull());

        // A 1536 x 1024 matte to 3000 x 2000: the last canvas pixel takes the last matte pixel,
        // and mask rows honour their stride.
        QImage matte(1536, 1024, QImage::Format_ARGB32);
        matte.fill(qRgb(0, 0, 0));
        matte.setPixel(1535, 1023, qRgb(255, 255, 255));
        const int stride = 3008;
        std::vector<uint8_t> mask(size_t(stride) * 2000, 7);
        QVERIFY(VexaMatteResample::toMask(matte, 3000, 2000, mask.data(), stride));
        const uint8_t* last = mask.data() + size_t(1999) * stride;
        // Column 2998 samples 2998 * 1535 / 2999 = 1534.488: 0.488 of 255 is 124.
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(last) + 2997, 4), QByteArray("\x00\x7c\xff\x07", 4));
        // Nearest for marks: the same mapping, the nearer sample (0.5 goes up).
        QImage marks(2, 1, QImage::Format_ARGB32);
        marks.setPixel(0, 0, qRgb(255, 0, 0));
        marks.setPixel(1, 0, qRgb(0, 0, 255));
        const QImage big = VexaMatteResample::nearest(marks, 5, 1);
        QCOMPARE(big.pixel(1, 0), qRgb(255, 0, 0)); // 0.25
        QCOMPARE(big.pixel(2, 0), qRgb(0, 0, 255)); // 0.5
        QCOMPARE(VexaMatteResample::nearest(marks, 1, 1).pixel(0, 0), qRgb(255, 0, 0)); // one column: the first
    }

    void outputSizes_data()
    {
        QTest::addColumn<QSize>("photo"); QTest::addColumn<bool>("working"); QTest::addColumn<QSize>("expected");
        QTest::addColumn<QString>("steps");
        QTest::newRow("large photo: photo size") << QSize(2000, 1000) << false << QSize(2000, 1000) << "mark,matte";
        QTest::newRow("large photo, --working-size") << QSize(2000, 1000) << true << QSize(1536, 768) << "mark,matte";
        QTest::newRow("tall photo: photo size") << QSize(700, 1700) << false << QSize(700, 1700) << "mark,matte";
        QTest::newRow("small photo either way") << QSize(40, 20) << true << QSize(40, 20) << "mark,matte";
        QTest::newRow("refined, photo size") << QSize(2000, 1000) << false << QSize(2000, 1000) << "mark,matte,refine";
    }
    void outputSizes()
    {
        QFETCH(QSize, photo); QFETCH(bool, working); QFETCH(QSize, expected); QFETCH(QString, steps);
        QTemporaryDir dir;
        const QString image = dir.filePath("photo.png"), marks = dir.filePath("marks.png");
        QVERIFY(halves(photo).save(image));
        QVERIFY(marksFor(photo).save(marks));
        auto out = [&](const char* name) { return dir.filePath(QLatin1String(name)); };
        QStringList args{"--steps", steps, "--alpha", out("alpha.png"), "--result", out("result.png"), "--marks-out",
                         out("marks-out.png"), image, marks};
        if (working)
            args.prepend("--working-size");
        const Run r = cli(args << "--timings");
        QVERIFY2(r.status == 0, qPrintable(r.err));
        for (const char* figure : {"load ", "regions ", "mark ", "save "})
            QVERIFY2(r.out.contains(QLatin1String(figure)), qPrintable(r.out + r.err));
        const QImage alpha(out("alpha.png")), result(out("result.png"));
        QVERIFY(alpha.size() == expected && result.size() == expected && QImage(out("marks-out.png")).size() == expected);
        // The object (left half) is kept, the background cut away, at the output's size.
        const int y = expected.height() / 2;
        QCOMPARE(qGray(alpha.pixel(expected.width() / 8, y)), 255);
        QCOMPARE(qGray(alpha.pixel(expected.width() * 7 / 8, y)), 0);
        QCOMPARE(qAlpha(result.pixel(expected.width() * 7 / 8, y)), 0);
        QCOMPARE(qRed(result.pixel(2, 2)), 230);
        if (working || photo == QSize(40, 20))
            return;
        // At the photo's size the matte is the working matte resampled as the tool resamples it.
        QCOMPARE(cli({"--steps", steps, "--working-size", "--alpha", out("working.png"), image, marks}).status, 0);
        const QImage expectedAlpha = VexaMatteResample::toGray(QImage(out("working.png")), photo.width(), photo.height());
        QCOMPARE(alpha.convertToFormat(QImage::Format_Grayscale8), expectedAlpha);
    }

    void failuresWriteNothing_data()
    {
        // image.png 40 x 20, marks.png 40 x 20, small.png 10 x 10, hint.png marks without background;
        // alpha.png, the output every run names, is an old file that must stay as it was.
        QTest::addColumn<QStringList>("args"); QTest::addColumn<int>("status"); QTest::addColumn<QString>("says");
        QTest::newRow("hint: no background") << QStringList{"--result", "r.png", "--marks-out", "m.png", "image.png", "hint.png"}
                                             << 1 << "vexa-quickselect: Please mark background regions.";
        QTest::newRow("bad steps") << QStringList{"--steps", "cut", "image.png", "marks.png"} << 2 << "--steps";
        QTest::newRow("bad sensitivity") << QStringList{"--sensitivity", "101", "image.png", "marks.png"} << 2 << "--sensitivity";
        QTest::newRow("marks of another size") << QStringList{"image.png", "small.png"} << 2 << "the marks are";
        QTest::newRow("unreadable image") << QStringList{"missing.png", "marks.png"} << 2 << "cannot read the image";
        QTest::newRow("empty image file") << QStringList{"empty.png", "marks.png"} << 2 << "empty file";
        QTest::newRow("broken PNG") << QStringList{"broken.png", "marks.png"} << 2 << "cannot read the image";
        QTest::newRow("photo too large") << QStringList{"huge.png", "huge.png"} << 2 << "too large: 200000 x 200000";
        QTest::newRow("second output's folder missing")
            << QStringList{"--result", "/nonexistent/dir/r.png", "image.png", "marks.png"} << 2 << "/nonexistent/dir/r.png";
        QTest::newRow("output of no known format") << QStringList{"--marks-out", "marks.out", "image.png", "marks.png"} << 2
                                                   << "marks.out";
        QTest::newRow("nothing to write") << QStringList{"--alpha", "", "image.png", "marks.png"} << 2 << "nothing to write";
        QTest::newRow("refine without matte") << QStringList{"--steps", "mark,refine", "image.png", "marks.png"} << 2 << "--steps";
        QTest::newRow("trimap of another size") << QStringList{"--trimap", "small.png", "image.png"} << 2 << "the trimap is";
        QTest::newRow("trimap all unknown") << QStringList{"--trimap", "unknown.png", "image.png"} << 2 << "no known pixel";
        QTest::newRow("trimap and marks") << QStringList{"--trimap", "marks.png", "image.png", "marks.png"} << 2 << "only IMAGE";
        QTest::newRow("trimap and marks out") << QStringList{"--trimap", "marks.png", "--marks-out", "m.png", "image.png"} << 2
                                              << "no marks to write";
        // Every run may write 256 blocks of 512 bytes, as on a nearly full disk: a real run writes its matte
        // (34 KB), then fails on the cut-out, and must keep the old matte all the same.
        QTest::newRow("full disk") << QStringList{"--result", "r.png", VEXA_DATA_DIR "/coffee.png",
                                                  VEXA_DATA_DIR "/coffee-marks.png"} << 2 << "Cannot write";
    }
    void failuresWriteNothing()
    {
        QFETCH(QStringList, args); QFETCH(int, status); QFETCH(QString, says);
        QTemporaryDir dir;
        QImage unknown(40, 20, QImage::Format_Grayscale8);
        unknown.fill(128);
        QVERIFY(halves(QSize(40, 20)).save(dir.filePath("image.png")) && marksFor(QSize(40, 20)).save(dir.filePath("marks.png"))
                && marksFor(QSize(40, 20), false).save(dir.filePath("hint.png"))
                && marksFor(QSize(10, 10)).save(dir.filePath("small.png")) && unknown.save(dir.filePath("unknown.png")));
        QFile whole(dir.filePath("image.png"));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        // A signature and a header, then nothing; an empty file; one whose header claims 149 GB.
        for (auto [name, bytes] : {std::pair{"broken.png", whole.read(60)}, std::pair{"empty.png", QByteArray()},
                                   std::pair{"huge.png", VexaTestImages::pngClaiming(200000, 200000)},
                                   std::pair{"alpha.png", QByteArray("old")}}) {
            QFile file(dir.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        }
        for (QString& a : args)
            if ((a.endsWith(QLatin1String(".png")) || a.endsWith(QLatin1String(".out"))) && !a.startsWith(QLatin1Char('/')))
                a = dir.filePath(a);
        const QStringList inputs = QDir(dir.path()).entryList(QDir::Files);
        const Run r = cli(QStringList{"--alpha", dir.filePath("alpha.png")} + args, 256);
        QCOMPARE(r.status, status);
        // The library's own complaints stay off the terminal: the message says it once.
        QVERIFY2(r.err.contains(says) && r.out.isEmpty() && !r.err.contains(QStringLiteral("libpng")), qPrintable(r.out + r.err));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), inputs); // no temporary left behind either
        QFile old(dir.filePath("alpha.png"));
        QVERIFY(old.open(QIODevice::ReadOnly) && old.readAll() == "old");
    }

    void refinesFromTrimap()
    {
        // Red | blue halves, the middle fifth unknown: every window's colours lie on the red-blue
        // line, so the refined alpha steps from 255 to 0 exactly at the colour edge.
        QTemporaryDir dir;
        const QSize size(60, 40);
        QVERIFY(halves(size).save(dir.filePath("photo.png")));
        QImage trimap(size, QImage::Format_Grayscale8), expected(size, QImage::Format_Grayscale8);
        trimap.fill(0);
        expected.fill(0);
        for (int y = 0; y < size.height(); ++y) {
            std::memset(trimap.scanLine(y), 255, 24);
            std::memset(trimap.scanLine(y) + 24, 128, 12);
            std::memset(expected.scanLine(y), 255, 30);
        }
        QVERIFY(trimap.save(dir.filePath("trimap.png")));
        const Run r = cli({"--trimap", dir.filePath("trimap.png"), "--alpha", dir.filePath("alpha.png"), "--result",
                           dir.filePath("cut.png"), dir.filePath("photo.png")});
        QVERIFY2(r.status == 0, qPrintable(r.err));
        const QImage alpha = QImage(dir.filePath("alpha.png")).convertToFormat(QImage::Format_Grayscale8);
        QCOMPARE(alpha, expected);
        const QImage cut(dir.filePath("cut.png"));
        QCOMPARE(cut.pixel(29, 5), qRgba(230, 40, 40, 255));
        QCOMPARE(qAlpha(cut.pixel(30, 5)), 0);
    }

};

QTEST_MAIN(TestCli)
#include "tst_cli.moc"
