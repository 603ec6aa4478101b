// The quick select command line end to end, as a batch job runs it: a photo and its marks (or a
// trimap) on disk, options picked from the input, the outputs read back. Every run exits 0, 1
// or 2; 2 exactly when the arguments or files are wrong; a run that does not exit 0 leaves no
// output behind; outputs have the photo's size, the cut-out carries the matte as its alpha and
// a trimap's known pixels keep their value.
//
// Input: steps byte (0-4 the valid lists, 5 --trimap, 6-7 lists the program must refuse), option
// bits (--alpha, --result, --marks-out, --working-size, marks one row short), the sensitivity
// byte, width and height (1..64), then a byte a pixel: the photo's colour, its low two bits the
// mark (none, object, background, boundary) or the trimap value (unknown, object, background,
// unknown). Missing bytes read as 0.
#include "VexaQuickSelectCli.h"

#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void fail(const char* what, int detail = 0)
{
    std::fprintf(stderr, "fuzz-cli: %s (%d)\n", what, detail);
    std::abort();
}

QTemporaryDir* folder;
std::FILE* quiet;

QString path(const char* name) { return folder->filePath(QLatin1String(name)); }

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QCoreApplication app(*argc, *argv);
    static QTemporaryDir dir;
    folder = &dir;
    quiet = std::fopen("/dev/null", "w");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    auto byte = [&](size_t i) { return i < size ? data[i] : uint8_t(0); };
    static const char* const stepLists[8] = {"mark", "matte", "mark,matte", "matte,refine", "mark,matte,refine",
                                             "", "refine", "mark,refine"};
    const int which = byte(0) % 8, flags = byte(1), sensitivity = byte(2);
    const int w = 1 + byte(3) % 64, h = 1 + byte(4) % 64;
    const bool trimap = which == 5, wantAlpha = flags & 1, wantResult = flags & 2, wantMarks = flags & 4;
    const bool shortMarks = flags & 16;
    QImage photo(w, h, QImage::Format_RGB32), marks(w, shortMarks && h > 1 ? h - 1 : h, QImage::Format_RGB32);
    static const QRgb markColour[4] = {qRgb(0, 0, 0), qRgb(255, 0, 0), qRgb(0, 0, 255), qRgb(0, 255, 0)};
    static const int trimapGrey[4] = {128, 255, 0, 128};
    bool known = false;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const uint8_t v = byte(5 + size_t(y) * size_t(w) + size_t(x));
            photo.setPixel(x, y, qRgb(v & 0xF0, (v * 7) & 0xF0, (v << 4) & 0xF0));
            if (y < marks.height())
                marks.setPixel(x, y, trimap ? qRgb(trimapGrey[v & 3], trimapGrey[v & 3], trimapGrey[v & 3]) : markColour[v & 3]);
            known = known || trimapGrey[v & 3] != 128;
        }
    if (!photo.save(path("photo.png")) || !marks.save(path("marks.png")))
        fail("cannot write the inputs");
    const char* outputs[3] = {"alpha.png", "result.png", "marks-out.png"};
    for (const char* name : outputs)
        QFile::remove(path(name));

    QStringList args{QStringLiteral("vexa-quickselect"), path("photo.png")};
    if (trimap)
        args << QStringLiteral("--trimap") << path("marks.png");
    else
        args << path("marks.png") << QStringLiteral("--steps") << QLatin1String(stepLists[which]);
    args << QStringLiteral("--sensitivity") << QString::number(sensitivity);
    if (wantAlpha)
        args << QStringLiteral("--alpha") << path(outputs[0]);
    if (wantResult)
        args << QStringLiteral("--result") << path(outputs[1]);
    if (wantMarks)
        args << QStringLiteral("--marks-out") << path(outputs[2]);
    if (flags & 8)
        args << QStringLiteral("--working-size");
    const int status = VexaQuickSelectCli::run(args, quiet);

    const bool wrong = which >= 6 || sensitivity > 100 || !(wantAlpha || wantResult || wantMarks)
                       || marks.size() != photo.size() || (trimap && (wantMarks || !known));
    if (status < 0 || status > 2)
        fail("an exit status outside 0, 1, 2", status);
    if ((status == 2) != wrong)
        fail(wrong ? "wrong arguments or files accepted" : "a valid run refused", status);
    if (status == 1 && which != 0 && which != 2 && which != 4)
        fail("asked for more marks without running the mark step", which);
    const bool wanted[3] = {wantAlpha, wantResult, wantMarks};
    QImage out[3];
    for (int i = 0; i < 3; ++i) {
        const bool exists = QFile::exists(path(outputs[i]));
        if (exists != (status == 0 && wanted[i]))
            fail(exists ? "an output left behind by a failed run" : "an asked-for output missing", i);
        if (exists && (out[i] = QImage(path(outputs[i]))).size() != photo.size())
            fail("an output not at the photo's size", i);
    }
    if (status != 0)
        return 0;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int a = wantAlpha ? qGray(out[0].pixel(x, y)) : -1;
            if (wantAlpha && wantResult && qAlpha(out[1].pixel(x, y)) != a)
                fail("the cut-out's alpha is not the matte", x);
            const int t = trimapGrey[byte(5 + size_t(y) * size_t(w) + size_t(x)) & 3];
            if (trimap && wantAlpha && t != 128 && a != t)
                fail("a known trimap pixel changed", x);
        }
    return 0;
}
