// vexa-quickselect: runs quick select on an image and a picture of marks, headless.
//
//   vexa-quickselect [options] IMAGE MARKS
//   vexa-quickselect [options] IMAGE --trimap TRIMAP
//
// MARKS has IMAGE's size: red pixels mark the object, blue ones the background, green ones
// the boundary band. Outputs have IMAGE's size, resampled from the working image as the
// quick select tool resamples its matte; --working-size keeps the working size. With
// --trimap, edge refinement runs straight from a grey trimap (0 background, 255 object, any
// other grey unknown) of IMAGE's size.
// Exit status: 0 done, 1 the mark step asked for more marks (nothing written), 2 bad input.
#include "VexaQuickSelectCli.h"

#include "VexaImageFile.h"
#include "VexaImageSave.h"
#include "VexaMatteResample.h"
#include "VexaQuickSelectSteps.h"
#include "VexaRefine.h"
#include "VexaSegmentation.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFileInfo>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

std::FILE* messages = stderr;

int fail(const QString& why)
{
    std::fprintf(messages, "vexa-quickselect: %s\n", qPrintable(why));
    return 2;
}

QRgb markOf(QRgb p)
{
    const bool r = qRed(p) >= 128, g = qGreen(p) >= 128, b = qBlue(p) >= 128;
    if (r && !g && !b)
        return VexaSegmentation::ForegroundMark;
    if (b && !r && !g)
        return VexaSegmentation::BackgroundMark;
    if (g && !r && !b)
        return VexaSegmentation::BoundaryMark;
    return 0;
}

// Copies at the photo's own size (its 32-bit copy, the resampled matte, the cut-out) may not
// fit where the photo itself did; a null image read or written row by row would crash.
int outOfMemory(const QSize& photo)
{
    const qint64 mb = (qint64(photo.width()) * qint64(photo.height()) * 4 + (1 << 20) - 1) >> 20;
    return fail(QStringLiteral("not enough memory for a %1 x %2 photo (%3 MB)").arg(photo.width()).arg(photo.height()).arg(mb));
}

// Qt's PNG writer maps quality 80 to 89 onto zlib's level 1 (90 and above store the data
// uncompressed, four times larger). On a 2048 x 2048 photo cut-out level 1 wrote in 2.8 s
// against 12.1 s at the default, for a file 27 % larger.
constexpr int fastPngQuality = 85;

bool isPng(const QString& fileName)
{
    return QFileInfo(fileName).suffix().compare(QLatin1String("png"), Qt::CaseInsensitive) == 0;
}

// Reads a picture that must lie over IMAGE pixel for pixel (the marks, a trimap): 0, or the exit
// status of a failure already reported.
int readBesideImage(const QString& file, const char* what, const char* itsSizeIs, const QImage& image, QImage& out)
{
    QString why;
    out = VexaImageFile::read(file, &why);
    if (out.isNull())
        return fail(QStringLiteral("cannot read %1 %2: %3").arg(QLatin1String(what), file, why));
    if (out.size() != image.size())
        return fail(QStringLiteral("%1 %2 x %3 but the image is %4 x %5")
                        .arg(QLatin1String(itsSizeIs))
                        .arg(out.width())
                        .arg(out.height())
                        .arg(image.width())
                        .arg(image.height()));
    return 0;
}

// Edge refinement from a trimap: at the working size, like the steps, with the alpha and the
// cut-out brought back to IMAGE's size unless the working size is asked for. 0, or the exit
// status of a failure already reported.
int refineTrimap(const QImage& image, const QString& trimapFile, bool workingSize, bool showTimes, bool cutOut,
                 QImage& alphaOut, QImage& resultOut)
{
    QImage trimap;
    if (const int status = readBesideImage(trimapFile, "the trimap", "the trimap is", image, trimap))
        return status;
    VexaSegmentation seg;
    const QImage photo = seg.workingImage(image);
    // Nearest neighbour keeps the trimap's three values apart when it is scaled down.
    const QImage grey = photo.isNull() ? QImage()
                                       : trimap.convertToFormat(QImage::Format_Grayscale8)
                                             .scaled(photo.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
    if (grey.isNull())
        return outOfMemory(image.size());
    std::vector<float> alpha;
    const std::atomic<bool> never{false};
    QElapsedTimer t;
    t.start();
    if (VexaQuickSelect::refine(photo, grey, nullptr, alpha, {}, never) != VexaQuickSelect::RefineResult::Done)
        return fail(QStringLiteral("the trimap %1 has no known pixel (0 background or 255 object)").arg(trimapFile));
    if (showTimes)
        std::printf("refine %.1f ms\n", double(t.nsecsElapsed()) / 1e6);
    QImage matte(photo.size(), QImage::Format_ARGB32);
    if (matte.isNull())
        return outOfMemory(image.size());
    for (int y = 0; y < matte.height(); ++y) {
        auto* out = reinterpret_cast<QRgb*>(matte.scanLine(y));
        for (int x = 0; x < matte.width(); ++x) {
            const int a8 = VexaQuickSelect::refinedByte(alpha[size_t(y) * size_t(matte.width()) + size_t(x)]);
            out[x] = qRgb(a8, a8, a8);
        }
    }
    alphaOut = workingSize || matte.size() == image.size() ? matte.convertToFormat(QImage::Format_Grayscale8)
                                                          : VexaMatteResample::toGray(matte, image.width(), image.height());
    if (alphaOut.isNull())
        return outOfMemory(image.size());
    if (cutOut) {
        resultOut = (workingSize ? photo : image).convertToFormat(QImage::Format_ARGB32);
        if (resultOut.isNull())
            return outOfMemory(image.size());
        for (int y = 0; y < resultOut.height(); ++y) {
            auto* px = reinterpret_cast<QRgb*>(resultOut.scanLine(y));
            const uchar* a = alphaOut.constScanLine(y);
            for (int x = 0; x < resultOut.width(); ++x)
                px[x] = qRgba(qRed(px[x]), qGreen(px[x]), qBlue(px[x]), a[x]);
        }
    }
    return 0;
}

} // namespace

int VexaQuickSelectCli::run(const QStringList& arguments, std::FILE* messageFile)
{
    messages = messageFile;
    QCommandLineParser cli;
    cli.setApplicationDescription(QStringLiteral(
        "Cuts an object out of IMAGE from the marks painted in MARKS (red: object, blue: background, green: boundary).\n"
        "With --trimap TRIMAP in place of MARKS it refines the edges straight from a grey trimap instead.\n"
        "The outputs have IMAGE's size (see --working-size); at least one of --alpha, --result and --marks-out is needed.\n"
        "A failed run leaves every output file as it was: all are written in full, then put in place.\n"
        "Exit status: 0 done; 1 the marks are not enough (nothing is written, the hint goes to stderr); "
        "2 bad arguments or files."));
    cli.addHelpOption();
    const QCommandLineOption steps(
        QStringLiteral("steps"),
        QStringLiteral("mark, matte, mark,matte, matte,refine or mark,matte,refine (default mark); refine solves the "
                       "matte's band again by closed-form matting."),
        QStringLiteral("steps"), QStringLiteral("mark"));
    const QCommandLineOption trimapOption(
        QStringLiteral("trimap"),
        QStringLiteral("In place of MARKS: refine the edges from a grey trimap of IMAGE's size (0 background, 255 "
                       "object, any other grey unknown)."),
        QStringLiteral("TRIMAP"));
    const QCommandLineOption sensitivity(QStringLiteral("sensitivity"), QStringLiteral("0 to 100 (default 10)."),
                                         QStringLiteral("N"), QStringLiteral("10"));
    const QCommandLineOption alpha(QStringLiteral("alpha"), QStringLiteral("Write the grey matte."), QStringLiteral("FILE"));
    const QCommandLineOption result(QStringLiteral("result"),
                                    QStringLiteral("Write the cut-out with alpha. A PNG is written with fast compression: "
                                                   "about four times faster than the usual level, the file about a quarter larger."),
                                    QStringLiteral("FILE"));
    const QCommandLineOption marksOut(QStringLiteral("marks-out"), QStringLiteral("Write the marks after the steps."),
                                      QStringLiteral("FILE"));
    const QCommandLineOption timings(QStringLiteral("timings"),
                                     QStringLiteral("Print the time of loading, of each step and of saving, and the region count."));
    const QCommandLineOption workingSize(
        QStringLiteral("working-size"),
        QStringLiteral("Write the outputs at the working size (IMAGE scaled to fit 1536 x 1536) instead of IMAGE's size. "
                       "Without it the matte is resampled bilinearly as the quick select tool does, the cut-out is IMAGE "
                       "with that matte as alpha, and the marks take the nearest working pixel."));
    cli.addOptions({steps, trimapOption, sensitivity, alpha, result, marksOut, timings, workingSize});
    cli.addPositionalArgument(QStringLiteral("IMAGE"), QStringLiteral("The picture."));
    cli.addPositionalArgument(QStringLiteral("MARKS"), QStringLiteral("The marks, a picture of IMAGE's size."));
    if (!cli.parse(arguments))
        return fail(cli.errorText());
    if (cli.isSet(QStringLiteral("help"))) {
        std::printf("%s", qPrintable(cli.helpText()));
        return 0;
    }
    const QStringList files = cli.positionalArguments();
    const bool fromTrimap = cli.isSet(trimapOption);
    if (fromTrimap && files.size() != 1)
        return fail(QStringLiteral("expected only IMAGE with --trimap (see --help)"));
    if (fromTrimap && !cli.value(marksOut).isEmpty())
        return fail(QStringLiteral("--marks-out has no marks to write with --trimap"));
    if (!fromTrimap && files.size() != 2)
        return fail(QStringLiteral("expected IMAGE and MARKS (see --help)"));
    if (cli.value(alpha).isEmpty() && cli.value(result).isEmpty() && cli.value(marksOut).isEmpty())
        return fail(QStringLiteral("nothing to write: give --alpha, --result or --marks-out (see --help)"));

    QString stepList = cli.value(steps);
    const bool runRefine = stepList.endsWith(QLatin1String("matte,refine"));
    if (runRefine)
        stepList.chop(int(sizeof(",refine") - 1));
    const bool runMark = stepList == QLatin1String("mark") || stepList == QLatin1String("mark,matte");
    const bool runMatte = stepList == QLatin1String("matte") || stepList == QLatin1String("mark,matte");
    if (!runMark && !runMatte)
        return fail(QStringLiteral("--steps must be mark, matte, mark,matte, matte,refine or mark,matte,refine, not '%1'")
                        .arg(cli.value(steps)));
    bool number = false;
    const int lambda = cli.value(sensitivity).toInt(&number);
    if (!number || lambda < 0 || lambda > 100)
        return fail(QStringLiteral("--sensitivity must be a whole number from 0 to 100, not '%1'").arg(cli.value(sensitivity)));

    // A full disk then fails the write with an error instead of killing the process mid-file.
    std::signal(SIGXFSZ, SIG_IGN);
    QString why;
    // Every output is opened before the work: a bad path fails the run before it costs anything.
    std::vector<std::unique_ptr<VexaImageSave>> outputs(3);
    const QCommandLineOption* outputOptions[3] = {&alpha, &result, &marksOut};
    for (int i = 0; i < 3; ++i) {
        const QString name = cli.value(*outputOptions[i]);
        if (name.isEmpty())
            continue;
        outputs[size_t(i)] = std::make_unique<VexaImageSave>(name);
        if (!outputs[size_t(i)]->open(&why))
            return fail(why);
    }

    const bool showTimes = cli.isSet(timings);
    auto writeOutputs = [&](const QImage& alphaOut, const QImage& resultOut, const QImage& marksOutImage) {
        QElapsedTimer saving;
        saving.start();
        const QImage* images[3] = {&alphaOut, &resultOut, &marksOutImage};
        for (int i = 0; i < 3; ++i) {
            VexaImageSave* out = outputs[size_t(i)].get();
            if (!out)
                continue;
            const int quality = outputOptions[i] == &result && isPng(out->fileName()) ? fastPngQuality : -1;
            if (!out->write(*images[i], &why, quality))
                return fail(why);
        }
        // All written: only now does any of them replace what the names held.
        for (auto& out : outputs)
            if (out && !out->commit(&why))
                return fail(why);
        if (showTimes)
            std::printf("save %.1f ms\n", double(saving.nsecsElapsed()) / 1e6);
        return 0;
    };
    QElapsedTimer loading;
    loading.start();
    const QImage image = VexaImageFile::read(files[0], &why);
    if (image.isNull())
        return fail(QStringLiteral("cannot read the image %1: %2").arg(files[0], why));
    if (fromTrimap) {
        QImage refinedAlpha, refinedCutOut;
        if (const int status = refineTrimap(image, cli.value(trimapOption), cli.isSet(workingSize), showTimes,
                                            !cli.value(result).isEmpty(), refinedAlpha, refinedCutOut))
            return status;
        return writeOutputs(refinedAlpha, refinedCutOut, QImage());
    }
    QImage marks;
    if (const int status = readBesideImage(files[1], "the marks", "the marks are", image, marks))
        return status;

    VexaSegmentation seg;
    seg.load(image);
    if (seg.sourceImage.isNull() || seg.resultImage.isNull() || seg.alphaImage.isNull() || seg.markImage.isNull())
        return outOfMemory(image.size());
    seg.sensitivity = lambda;
    seg.refineEdges = runRefine;
    const QImage scaledMarks = marks.convertToFormat(QImage::Format_ARGB32)
                                   .scaled(seg.sourceImage.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
    if (scaledMarks.isNull())
        return outOfMemory(image.size());
    for (int y = 0; y < scaledMarks.height(); ++y) {
        const auto* in = reinterpret_cast<const QRgb*>(scaledMarks.constScanLine(y));
        auto* out = reinterpret_cast<QRgb*>(seg.markImage.scanLine(y));
        for (int x = 0; x < scaledMarks.width(); ++x)
            out[x] = markOf(in[x]);
    }

    if (showTimes)
        std::printf("load %.1f ms\n", double(loading.nsecsElapsed()) / 1e6);

    VexaQuickSelectQuietReporter report;
    const std::atomic<bool> never{false};
    auto timed = [&](const char* name, void (*step)(VexaSegmentation&, VexaQuickSelectReporter&, const std::atomic<bool>&)) {
        QElapsedTimer t;
        t.start();
        step(seg, report, never);
        if (showTimes)
            std::printf("%s %.1f ms\n", name, double(t.nsecsElapsed()) / 1e6);
    };
    timed("init", VexaQuickSelect::init);
    if (showTimes)
        std::printf("regions %zu\n", seg.regionColors.size());
    if (runMark) {
        timed("mark", VexaQuickSelect::mark);
        if (!report.message.isEmpty()) {
            // The step stopped for more marks: its images are not a result, so none is written.
            std::fprintf(messages, "vexa-quickselect: %s\n", qPrintable(report.message));
            return 1;
        }
    }
    if (runMatte)
        timed("matte", VexaQuickSelect::matte);

    QImage alphaOut = seg.alphaImage, resultOut = seg.resultImage, marksOutImage = seg.markImage;
    if (!cli.isSet(workingSize) && seg.alphaImage.size() != image.size()) {
        const int w = image.width(), h = image.height();
        if (!cli.value(alpha).isEmpty() || !cli.value(result).isEmpty()) {
            alphaOut = VexaMatteResample::toGray(seg.alphaImage, w, h);
            if (alphaOut.isNull())
                return outOfMemory(image.size());
        }
        if (!cli.value(result).isEmpty()) {
            resultOut = image.convertToFormat(QImage::Format_ARGB32);
            if (resultOut.isNull())
                return outOfMemory(image.size());
            for (int y = 0; y < h; ++y) {
                auto* out = reinterpret_cast<QRgb*>(resultOut.scanLine(y));
                const uchar* a = alphaOut.constScanLine(y);
                for (int x = 0; x < w; ++x)
                    out[x] = qRgba(qRed(out[x]), qGreen(out[x]), qBlue(out[x]), a[x]);
            }
        }
        if (!cli.value(marksOut).isEmpty()) {
            marksOutImage = VexaMatteResample::nearest(seg.markImage, w, h);
            if (marksOutImage.isNull())
                return outOfMemory(image.size());
        }
    }
    return writeOutputs(alphaOut, resultOut, marksOutImage);
}
