// Edge refinement on tiny photos whose alpha follows from the matting model by hand.
#include "VexaQuickSelectSteps.h"
#include "VexaRefine.h"
#include "VexaSegmentation.h"

#include <QtTest>

using VexaQuickSelect::RefineResult;

namespace {

// A photo and trimap drawn as strings, one per row and one letter per pixel: F object, B
// background, U unknown; `colour` gives each letter's photo colour at a column.
struct Drawing {
    QImage photo, trimap;
};

Drawing draw(const QStringList& rows, const std::function<QRgb(int x, int y)>& colour)
{
    const int W = rows[0].size(), H = rows.size();
    Drawing d{QImage(W, H, QImage::Format_ARGB32), QImage(W, H, QImage::Format_Grayscale8)};
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            d.photo.setPixel(x, y, colour(x, y));
            const QChar c = rows[y][x];
            d.trimap.scanLine(y)[x] = c == 'F' ? 255 : c == 'B' ? 0 : 128;
        }
    return d;
}

} // namespace

class TestRefine : public QObject
{
    Q_OBJECT
private slots:
    void solves_data()
    {
        QTest::addColumn<QStringList>("rows"); QTest::addColumn<QVector<QRgb>>("columnColours");
        QTest::addColumn<QVector<float>>("columnAlpha");

        // Every window's colours lie on the line from F = (240, 40, 80) to B = (40, 240, 160), so
        // alpha is an affine function of colour in each window and the true ramp 1, .75, .5, .25, 0
        // has zero energy (up to the tiny colour-line regulariser).
        const QVector<QRgb> edge{qRgb(240, 40, 80), qRgb(240, 40, 80), qRgb(190, 90, 100), qRgb(140, 140, 120),
                                 qRgb(90, 190, 140), qRgb(40, 240, 160), qRgb(40, 240, 160)};
        const QStringList edgeRows(5, QStringLiteral("FFUUUBB"));
        QTest::newRow("two-colour edge") << edgeRows << edge << QVector<float>{1, 1, 0.75f, 0.5f, 0.25f, 0, 0};
        // The same edge nine pixels wide, 8 rows: large enough to start from its half-size
        // solution (the half-size photo's colours are averages along the same line).
        QVector<QRgb> wide{qRgb(240, 40, 80)};
        QVector<float> ramp{1};
        for (int k = 0; k <= 10; ++k) {
            wide << qRgb(240 - 20 * k, 40 + 20 * k, 80 + 8 * k);
            ramp << 1.0f - 0.1f * float(k);
        }
        wide << qRgb(40, 240, 160);
        ramp << 0;
        QTest::newRow("wide edge, from half size") << QStringList(8, QStringLiteral("FFUUUUUUUUUBB")) << wide << ramp;
        // One flat colour: every window averages, mirroring the strip swaps object and background,
        // so the single unknown column sits at exactly one half.
        const QVector<QRgb> flat(5, qRgb(100, 110, 120));
        QTest::newRow("flat strip") << QStringList(5, QStringLiteral("FFUBB")) << flat
                                    << QVector<float>{1, 1, 0.5f, 0, 0};
        // A flat hole inside the object: alpha 1 everywhere has zero energy and is the only such.
        QTest::newRow("flat hole") << QStringList{"FFFFF", "FUUUF", "FUUUF", "FFFFF", "FFFFF"} << flat
                                   << QVector<float>{1, 1, 1, 1, 1};
        // No unknown pixel: the trimap itself, however the colours go.
        QTest::newRow("nothing unknown") << QStringList(4, QStringLiteral("FBFBB"))
                                         << QVector<QRgb>{qRgb(0, 0, 0), qRgb(255, 0, 0), qRgb(9, 9, 9), qRgb(0, 0, 255),
                                                          qRgb(1, 2, 3)}
                                         << QVector<float>{1, 0, 1, 0, 0};
    }

    void solves()
    {
        QFETCH(QStringList, rows); QFETCH(QVector<QRgb>, columnColours); QFETCH(QVector<float>, columnAlpha);
        const Drawing d = draw(rows, [&](int x, int) { return columnColours[x]; });
        const std::atomic<bool> never{false};
        // The answer must not hang on where the solve starts: from the middle, and from a prior
        // that is wrong everywhere.
        const std::vector<float> wrongPrior(size_t(d.photo.width() * d.photo.height()), 0.1f);
        // Every problem of 8 x 8 pixels or more starts from half size.
        VexaQuickSelect::RefineParameters parameters;
        parameters.halfSizeFrom = 1;
        for (const float* prior : {static_cast<const float*>(nullptr), wrongPrior.data()}) {
            std::vector<float> alpha;
            int last = -1;
            QCOMPARE(VexaQuickSelect::refine(d.photo, d.trimap, prior, alpha, [&](int p) { last = p; }, never, parameters),
                     RefineResult::Done);
            QCOMPARE(last, 100);
            QCOMPARE(alpha.size(), size_t(d.photo.width() * d.photo.height()));
            for (int i = 0; i < int(alpha.size()); ++i) {
                const float a = alpha[size_t(i)], expected = columnAlpha[i % d.photo.width()];
                QVERIFY2(std::abs(a - expected) <= 1e-3f,
                         qPrintable(QStringLiteral("alpha %1 at pixel %2, expected %3").arg(a).arg(i).arg(expected)));
            }
        }
    }

    void refusesAndCancels()
    {
        // Scrambled colours: with a mirror symmetry the start of 0.5 would already be the answer.
        const Drawing d = draw(QStringList(5, QStringLiteral("FFUBB")), [](int x, int y) {
            return qRgb((x * 73 + y * 31) % 256, (x * 19 + y * 89) % 256, (x * x * 41 + y * y * 13) % 256);
        });
        const Drawing allUnknown = draw(QStringList(5, QStringLiteral("UUUUU")), [](int, int) { return qRgb(1, 2, 3); });
        std::atomic<bool> cancel{false};
        std::vector<float> alpha;
        QCOMPARE(VexaQuickSelect::refine(d.photo, d.trimap.copy(0, 0, 5, 4), nullptr, alpha, {}, cancel), RefineResult::BadInput);
        QCOMPARE(VexaQuickSelect::refine(QImage(), QImage(), nullptr, alpha, {}, cancel), RefineResult::BadInput);
        QCOMPARE(VexaQuickSelect::refine(allUnknown.photo, allUnknown.trimap, nullptr, alpha, {}, cancel),
                 RefineResult::BadInput);
        // Cancelled once the rows are built (progress 10): the solve's own loop must notice.
        QCOMPARE(VexaQuickSelect::refine(d.photo, d.trimap, nullptr, alpha, [&](int p) { cancel = p >= 10; }, cancel),
                 RefineResult::Cancelled);
        QCOMPARE(VexaQuickSelect::refine(d.photo, d.trimap, nullptr, alpha, {}, cancel), RefineResult::Cancelled);
    }

    void matteStepRefinesItsBand()
    {
        // A band of another flat colour wholly inside the object: refined, it is the object (a
        // constant alpha has zero energy whatever the colours); the step's own sampling finds no
        // background sample there and leaves it far from opaque. Left as the segmentation comes,
        // the switch is off.
        const QStringList rows{"FFFFFF", "FUUUUF", "FUUUUF", "FUUUUF", "FFFFFF"};
        const Drawing d = draw(rows, [&](int x, int y) { return rows[y][x] == 'F' ? qRgb(90, 60, 30) : qRgb(200, 100, 50); });
        for (const bool refine : {true, false}) {
            VexaSegmentation seg;
            seg.load(d.photo);
            if (refine)
                seg.refineEdges = true;
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 6; ++x)
                    seg.markImage.setPixel(x, y, d.trimap.constScanLine(y)[x] == 255 ? VexaSegmentation::ForegroundMark
                                                                                    : VexaSegmentation::BoundaryMark);
            VexaQuickSelectQuietReporter quiet;
            const std::atomic<bool> never{false};
            VexaQuickSelect::matte(seg, quiet, never);
            for (int y = 0; y < 5; ++y)
                for (int x = 0; x < 6; ++x) {
                    const int got = qBlue(seg.alphaImage.pixel(x, y));
                    QCOMPARE(qAlpha(seg.resultImage.pixel(x, y)), got);
                    if (refine || d.trimap.constScanLine(y)[x] == 255)
                        QCOMPARE(got, 255);
                }
            if (!refine)
                QVERIFY(qBlue(seg.alphaImage.pixel(2, 2)) < 200);
        }
    }
};

QTEST_GUILESS_MAIN(TestRefine)
#include "tst_refine.moc"
