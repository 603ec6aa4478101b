// The quick select core: watershed, region graph, marking and matting against a plain
// reference, exact small cases, report sequences, hints and cancellation.
#include "QuickSelectReference.h"

#include "VexaQuickSelectKernels.h"
#include "VexaQuickSelectSteps.h"
#include "VexaSegmentation.h"
#include "VexaWatershed.h"

#include <QPainter>
#include <QtTest>

#include <future>
#include <thread>

namespace {

using Step = void (*)(VexaSegmentation&, VexaQuickSelectReporter&, const std::atomic<bool>&);

// Records every report as one line of text; with `holdAt` set, stops the step's thread at that
// report until released.
class Recorder : public VexaQuickSelectReporter
{
public:
    void progress(const QString& text, int percent) override
    {
        log << QStringLiteral("%1 %2").arg(text).arg(percent);
        if (log.last() == holdAt) {
            reached.set_value();
            release.get_future().wait();
        }
    }
    void setPainting(bool on) override { log << (on ? QStringLiteral("paint on") : QStringLiteral("paint off")); }
    void setMessage(const QString& text) override { log << QStringLiteral("message ") + text; }
    void checkViewAlpha() override { log << QStringLiteral("view alpha"); }
    void checkViewMatte() override { log << QStringLiteral("view matte"); }
    void updateImageBox(const QRect& r) override { log << QStringLiteral("update %1x%2").arg(r.width()).arg(r.height()); }
    QStringList log;
    QString holdAt;
    std::promise<void> reached, release;
};

const std::atomic<bool> running{false};

QImage flat(int w, int h, QRgb colour)
{
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(colour);
    return img;
}

// Left half one colour, right half another.
QImage halves(int w, int h, QRgb left, QRgb right)
{
    QImage img = flat(w, h, left);
    QPainter(&img).fillRect(w / 2, 0, w - w / 2, h, QColor::fromRgb(right));
    return img;
}

QImage photo(const char* name, int width)
{
    const QImage img(QStringLiteral(VEXA_DATA_DIR "/") + QLatin1String(name));
    // Nearest-neighbour scaling runs in the calling thread: Qt spreads smooth scaling of large
    // images over its own thread pool, whose ordering ThreadSanitizer cannot see.
    return img.scaledToWidth(width, Qt::FastTransformation);
}

// Strokes like a user's: the object in the middle, the background along the frame.
void scribble(VexaSegmentation& seg)
{
    const double w = seg.markImage.width(), h = seg.markImage.height();
    QPainter p(&seg.markImage);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.setPen(QPen(QColor::fromRgba(VexaSegmentation::ForegroundMark), 3));
    p.drawLine(QPointF(w * 0.40, h * 0.35), QPointF(w * 0.62, h * 0.40));
    p.drawLine(QPointF(w * 0.45, h * 0.30), QPointF(w * 0.55, h * 0.65));
    p.setPen(QPen(QColor::fromRgba(VexaSegmentation::BackgroundMark), 4));
    p.drawRect(QRectF(w * 0.04, h * 0.04, w * 0.92, h * 0.92));
}

void paintMarks(VexaSegmentation& seg, const QRect& r, QRgb colour)
{
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            seg.markImage.setPixel(x, y, colour);
}

// Each edge's ends and capacity, in list order.
QList<int> edges(VexaSegmentation::FlowGraph& g)
{
    QList<int> out;
    auto a = g.get_first_arc();
    for (int k = 0; k < g.get_arc_num(); k += 2, a = g.get_next_arc(g.get_next_arc(a))) {
        int i, j;
        g.get_arc_ends(a, i, j);
        out << i << j << g.get_rcap(a);
    }
    return out;
}

void compareSegmentations(const VexaSegmentation& a, const VexaSegmentation& b)
{
    QCOMPARE(a.regionMap, b.regionMap);
    QCOMPARE(a.regionSizes, b.regionSizes);
    QCOMPARE(a.regionColors, b.regionColors);
    QCOMPARE(a.terminalWeights, b.terminalWeights);
    QCOMPARE(a.alphaImage, b.alphaImage);
    QCOMPARE(a.resultImage, b.resultImage);
    QCOMPARE(a.markImage, b.markImage);
}

} // namespace

class TestQuickSelect : public QObject
{
    Q_OBJECT
private slots:
    // Images of vertical stripes, one colour per column, small enough to work out by hand: the
    // regions are bands of columns (`second` is the first column of the second region, -1 for
    // one region), with the given mean colours and one straddling pair per row between them.
    void regionsAndEdgesByHand_data()
    {
        QTest::addColumn<QList<QRgb>>("columns"); QTest::addColumn<int>("rows"); QTest::addColumn<int>("second");
        QTest::addColumn<QColor>("first"); QTest::addColumn<QColor>("other"); QTest::addColumn<int>("weight");
        QTest::newRow("uniform") << QList<QRgb>(17, qRgb(10, 20, 30)) << 9 << -1 << QColor(10, 20, 30) << QColor() << 0;
        QTest::newRow("1 x 1") << QList<QRgb>{qRgb(1, 2, 3)} << 1 << -1 << QColor(1, 2, 3) << QColor() << 0;
        // Squared gradient 400 inside, 100 at the clamped ends. The left end founds a region whose
        // flood climbs over the whole slope; only the right end, lower again, is left to found a
        // second. Means 1710 / 19 = 90 and 190: exp(-(100 / 255)^2) * 10000 = 8574.5.
        QList<QRgb> ramp;
        for (int x = 0; x < 20; ++x)
            ramp << qRgb(10 * x, 0, 0);
        QTest::newRow("linear ramp") << ramp << 6 << 19 << QColor(90, 0, 0) << QColor(190, 0, 0) << 8574;
        // The first flood climbs over the high-gradient column, whose colour is chosen to vanish in
        // the truncated mean, and stops before the second area. d^2 = 3, exp(-3) * 10000 = 497.87.
        const QRgb black = qRgb(0, 0, 0), white = qRgb(255, 255, 255);
        QTest::newRow("black against white") << QList<QRgb>{black, black, black, black, qRgb(1, 0, 0), white, white} << 3 << 5
                                             << QColor(0, 0, 0) << QColor(255, 255, 255) << 497;
        // Two halves of six columns: both edge columns have the high gradient, and the first flood
        // climbs over both. Means (36, 36, 36) and white: exp(-3 * (219 / 255)^2) * 10000 = 1094.6.
        auto halves = [](QRgb left, QRgb right) { return QList<QRgb>(6, left) + QList<QRgb>(6, right); };
        QTest::newRow("black and white halves") << halves(black, white) << 5 << 7 << QColor(36, 36, 36) << QColor(255, 255, 255)
                                                << 1094;
        // Means (101, 100, 100) and (110, 100, 100): exp(-(9 / 255)^2) * 10000 = 9987.6.
        QTest::newRow("close grey halves") << halves(qRgb(100, 100, 100), qRgb(110, 100, 100)) << 5 << 7 << QColor(101, 100, 100)
                                           << QColor(110, 100, 100) << 9987;
        // Means (302 / 3, ...) = 100 and 100: d^2 = 0.
        const QRgb g101 = qRgb(101, 101, 101), g100 = qRgb(100, 100, 100);
        QTest::newRow("equal colours") << QList<QRgb>{g101, g101, g100, g100} << 3 << 3 << QColor(100, 100, 100)
                                       << QColor(100, 100, 100) << 10000;
        // d^2 = (132^2 + 124^2 + 7^2) / 255^2 = 32849 / 65025 = 0.505175, exp(-d^2) * 10000 = 6034.02.
        // Channels taken as single-precision fractions give 6033.
        const QRgb x = qRgb(225, 12, 80), y = qRgb(93, 136, 73);
        QTest::newRow("(225, 12, 80) against (93, 136, 73)") << QList<QRgb>{x, x, x, x, qRgb(225, 13, 80), y, y} << 3 << 5
                                                               << QColor(225, 12, 80) << QColor(93, 136, 73) << 6034;
    }
    void regionsAndEdgesByHand()
    {
        QFETCH(QList<QRgb>, columns); QFETCH(int, rows); QFETCH(int, second);
        QFETCH(QColor, first); QFETCH(QColor, other); QFETCH(int, weight);
        const int W = int(columns.size());
        QImage img(W, rows, QImage::Format_ARGB32);
        std::vector<int> expected;
        for (int i = 0; i < W * rows; ++i) {
            img.setPixel(i % W, i / W, columns[i % W]);
            expected.push_back(second >= 0 && i % W >= second ? 1 : 0);
        }
        std::vector<int> labels{7, 7, 7};
        QCOMPARE(Reference::watershed(img, labels), second >= 0 ? 2 : 1); // the reference reads it so too
        QCOMPARE(labels, expected);
        // Cancelled before it starts, the over-segmentation founds nothing (Cancel must not wait
        // for a whole watershed).
        const std::atomic<bool> cancelled{true};
        QCOMPARE(watershed(img, labels, cancelled), 0);
        QVERIFY(std::all_of(labels.begin(), labels.end(), [](int l) { return l < 0; }));
        VexaSegmentation seg, plain;
        seg.load(img);
        plain.load(img);
        Recorder r;
        VexaQuickSelect::init(seg, r, running);
        Reference::init(plain);
        QCOMPARE(seg.regionMap, expected);
        QCOMPARE(seg.regionColors, second >= 0 ? std::vector<QColor>({first, other}) : std::vector<QColor>({first}));
        QCOMPARE(edges(*seg.graph), second >= 0 ? QList<int>({0, 1, rows * weight}) : QList<int>());
        QCOMPARE(edges(*plain.graph), edges(*seg.graph));
    }

    void stepsMatchReference_data()
    {
        QTest::addColumn<QImage>("image"); QTest::addColumn<int>("sensitivity");
        QTest::newRow("coffee") << photo("coffee.png", 180) << 10;
        QTest::newRow("chelsea, sensitivity 40") << photo("chelsea.png", 170) << 40;
        QTest::newRow("astronaut, sensitivity 0") << photo("astronaut.png", 140) << 0;
        // Tall enough (at least 128 rows) for the row passes to be split over two cores.
        QTest::newRow("coffee, rows split") << photo("coffee.png", 330) << 20;
        // A synthetic disc on a gradient.
        QImage disc(90, 70, QImage::Format_ARGB32);
        for (int i = 0; i < 90 * 70; ++i) {
            const int x = i % 90, y = i / 90;
            const bool in = (x - 45) * (x - 45) + (y - 35) * (y - 35) < 400;
            disc.setPixel(x, y, in ? qRgb(200, 40 + x, 30) : qRgb(20 + y, 60, 90 + x));
        }
        QTest::newRow("disc") << disc << 10;
        // Dark noise: many equal gradients, whose order of flooding decides the regions.
        QImage noise(61, 37, QImage::Format_ARGB32);
        std::mt19937 rng(3);
        for (int i = 0; i < 61 * 37; ++i)
            noise.setPixel(i % 61, i / 61, 0xFF000000u | (rng() & 0x3F3F3Fu));
        QTest::newRow("noise") << noise << 10;
    }

    void stepsMatchReference()
    {
        QFETCH(QImage, image); QFETCH(int, sensitivity);
        // Every processor level of the inner loops that runs here, the best one last (and kept).
        for (const char* level : VexaQuickSelect::detail::kernelLevels()) {
            QVERIFY(VexaQuickSelect::detail::useKernelLevel(level));
            VexaSegmentation fast, plain;
            fast.load(image);
            plain.load(image);
            fast.sensitivity = plain.sensitivity = sensitivity;
            Recorder r;
            VexaQuickSelect::init(fast, r, running);
            Reference::init(plain);
            QVERIFY2(edges(*fast.graph) == edges(*plain.graph), level); // same edges, same order, same capacities
            compareSegmentations(fast, plain);
            scribble(fast);
            scribble(plain);
            // Two marking runs (the second continues from the flow of the first), then the matte.
            // The window keeps shallow copies of the images for its view while a step writes them:
            // the step's threads must not detach them concurrently, and the copies must not change.
            for (Step step : {VexaQuickSelect::mark, VexaQuickSelect::mark, VexaQuickSelect::matte}) {
                const QImage shown[3] = {fast.alphaImage, fast.resultImage, fast.markImage};
                const QImage before[3] = {shown[0].copy(), shown[1].copy(), shown[2].copy()};
                step(fast, r, running);
                if (step == VexaQuickSelect::mark)
                    QCOMPARE(Reference::mark(plain), QString());
                else
                    Reference::matte(plain);
                compareSegmentations(fast, plain);
                for (int k = 0; k < 3; ++k)
                    QCOMPARE(shown[k], before[k]);
            }
            // The cut took unmarked pixels to both sides, and the matting left a soft edge between them.
            int count[3] = {0, 0, 0}; // selected, unselected, soft
            for (int i = 0; i < image.width() * image.height(); ++i) {
                const int x = i % image.width(), y = i / image.width(), a = qBlue(fast.alphaImage.pixel(x, y));
                if (!qRed(fast.markImage.pixel(x, y)) && !qBlue(fast.markImage.pixel(x, y)))
                    ++count[a == 255 ? 0 : a == 0 ? 1 : 2];
            }
            QVERIFY2(count[0] > 0 && count[1] > 0 && count[2] > 0, level);
        }
    }

    void markingRulesAndReports()
    {
        // Two flat areas: one region each side, K = 1.
        VexaSegmentation seg;
        seg.load(halves(20, 10, qRgb(250, 0, 0), qRgb(0, 0, 250)));
        seg.sensitivity = 0;
        // Each step reports from 0 in steps of 10, then closes in its own order.
        auto expect = [&](Step step, const QString& text, int last, const QStringList& end) {
            Recorder r;
            step(seg, r, running);
            QStringList log = {"paint off"};
            for (int p = 0; p <= last; p += 10)
                log << QStringLiteral("%1 %2").arg(text).arg(p);
            QCOMPARE(r.log, log + end);
        };
        expect(VexaQuickSelect::init, "Initializing ..", 80, {"Initialize done. 0", "paint on"});
        paintMarks(seg, QRect(1, 1, 2, 2), VexaSegmentation::ForegroundMark);
        paintMarks(seg, QRect(16, 1, 2, 2), VexaSegmentation::BackgroundMark);
        expect(VexaQuickSelect::mark, "Marking..", 100, {"Mark done 0", "paint on", "update 20x10"});
        QCOMPARE(seg.terminalWeights, std::vector<int>({100000000, -100000000}));
        QCOMPARE(seg.alphaImage.pixel(1, 5), 0xFFFFFFFFu);
        QCOMPARE(seg.alphaImage.pixel(18, 5), 0xFF000000u);
        // Marks survive the smoothing; the band follows the cut, marks on it included.
        QCOMPARE(seg.alphaImage.pixel(1, 1), 0xFFFFFFFFu);
        QCOMPARE(seg.markImage.pixel(9, 5), VexaSegmentation::BoundaryMark);
        QCOMPARE(seg.markImage.pixel(10, 5), VexaSegmentation::BoundaryMark);
        QCOMPARE(seg.markImage.pixel(3, 5), 0u);
        QCOMPARE(seg.resultImage.pixel(18, 5), qRgba(0, 0, 250, 0));
        // A region marked both ways is background; repeated runs give the same result.
        paintMarks(seg, QRect(5, 5, 1, 1), VexaSegmentation::BackgroundMark);
        Recorder r;
        VexaQuickSelect::mark(seg, r, running);
        QCOMPARE(seg.terminalWeights[0], -100000000);
        QCOMPARE(seg.alphaImage.pixel(7, 7), 0xFF000000u);
        const QImage once = seg.alphaImage;
        VexaQuickSelect::mark(seg, r, running);
        QCOMPARE(seg.alphaImage, once);
        expect(VexaQuickSelect::matte, "Alpha Extracting ..", 80,
               {"view alpha", "view matte", "update 20x10", "Alpha Extract done .. 0", "paint on"});
    }

    // Regions made by hand, one pixel column each, so that the colours are exactly as given. With
    // these six object colours (red only) and one background colour, K = 6, and a colour in one
    // iteration lies exactly halfway between its centre and a lower one, whose clearance is then
    // exactly twice its distance: the lower centre must take it. The models show in the soft weights
    // of the unmarked regions.
    void colourModelsBreakTiesLow()
    {
        const std::vector<int> reds{2, 20, 0, 20, 8, 2, 0, 2, 5, 8, 14};
        const int N = int(reds.size()), H = 3;
        VexaSegmentation fast, plain;
        for (VexaSegmentation* seg : {&fast, &plain}) {
            seg->load(flat(N, H, qRgb(0, 0, 0)));
            seg->sensitivity = 50;
            for (int i = 0; i < N * H; ++i)
                seg->regionMap.push_back(i % N);
            seg->regionSizes.assign(size_t(N), H);
            seg->terminalWeights.assign(size_t(N), 0);
            for (int r = 0; r < N; ++r)
                seg->regionColors.push_back(r == 6 ? QColor(200, 200, 200) : QColor(reds[size_t(r)], 0, 0));
            seg->graph = std::make_unique<VexaSegmentation::FlowGraph>(N, 6 * N);
            seg->graph->add_node(N);
            for (int r = 0; r + 1 < N; ++r)
                seg->graph->add_edge(r, r + 1, 7, 7);
            paintMarks(*seg, QRect(0, 0, 6, 1), VexaSegmentation::ForegroundMark);
            paintMarks(*seg, QRect(6, 0, 1, 1), VexaSegmentation::BackgroundMark);
        }
        Recorder r;
        VexaQuickSelect::mark(fast, r, running);
        QCOMPARE(Reference::mark(plain), QString());
        compareSegmentations(fast, plain);
    }

    void mattingCases()
    {
        // A band between an object (left) and background (right), with one unknown pixel whose
        // colour equals a known pixel 8 columns away: the shrinking takes its label across the band.
        // Without a band (a wall of background instead), the matte only softens the edges.
        for (bool band : {true, false}) {
            QImage img = halves(40, 9, qRgb(250, 250, 250), qRgb(0, 0, 0));
            for (int x = 16; x < 24; ++x)
                QPainter(&img).fillRect(x, 0, 1, 9, QColor(128 + x, 100, 100));
            img.setPixel(20, 4, qRgb(0, 0, 0)); // same colour as the background at (28, 4)
            VexaSegmentation seg, plain;
            seg.load(img);
            paintMarks(seg, QRect(0, 0, 2, 9), VexaSegmentation::ForegroundMark);
            paintMarks(seg, QRect(38, 0, 2, 9), VexaSegmentation::BackgroundMark);
            paintMarks(seg, QRect(16, 0, band ? 8 : 1, 9),
                       band ? VexaSegmentation::BoundaryMark : VexaSegmentation::BackgroundMark);
            plain.load(img);
            plain.markImage = seg.markImage;
            Recorder r;
            VexaQuickSelect::matte(seg, r, running);
            Reference::matte(plain);
            compareSegmentations(seg, plain);
            QCOMPARE(seg.alphaImage.pixel(0, 4), 0xFFFFFFFFu);  // marks keep 255
            QCOMPARE(seg.alphaImage.pixel(39, 4), 0xFF000000u); // and 0
            QCOMPARE(seg.alphaImage.pixel(8, 4), 0xFFFFFFFFu);  // far from any edge
        }
        // One foreground and one background sample: 255 * b / (f + b) of that single pair.
        const QRgb white = qRgb(255, 255, 255), black = qRgb(0, 0, 0), grey = qRgb(200, 200, 200);
        const float f = std::sqrt(3 * (200 / 255.0f - 1.0f) * (200 / 255.0f - 1.0f));
        const float b = std::sqrt(3 * (200 / 255.0f) * (200 / 255.0f));
        QCOMPARE(VexaQuickSelect::alphaFromSamples(grey, &white, 1, &black, 1), int(b / (f + b) * 255.0));
        // A sample of exactly the pixel's colour: its weight is 1 and the others' 0 (the limit of
        // 0/0), so the estimate is defined and follows the exact match.
        QCOMPARE(VexaQuickSelect::alphaFromSamples(white, &white, 1, &black, 1), 255);
        QCOMPARE(VexaQuickSelect::alphaFromSamples(black, &white, 1, &black, 1), 0);
        QCOMPARE(VexaQuickSelect::alphaFromSamples(grey, &white, 1, nullptr, 0), 0); // no background sample
    }

    void nearColoursIsTheFloatTest()
    {
        // The least and greatest square the single-precision test can meet, per channel difference
        // (-3 or less .. 3 or more): a channel 3 or more apart fails on its own, and as float addition
        // is monotonic, the nearer ones pass for every combination exactly when the greatest pass.
        float least[7] = {1, 1, 1, 1, 1, 1, 1}, most[7] = {};
        for (int a = 0; a < 256; ++a)
            for (int b = 0; b < 256; ++b) {
                const float d = float(a) / 255.0f - float(b) / 255.0f;
                const int k = std::clamp(a - b, -3, 3) + 3;
                QVERIFY(std::abs(a - b) <= 2 || d * d >= 0.0001f);
                least[k] = std::min(least[k], d * d);
                most[k] = std::max(most[k], d * d);
            }
        for (int d = 0; d < 125; ++d) { // differences -2 .. 2 per channel: indices 1 .. 5
            const int r = d % 5 + 1, g = d / 5 % 5 + 1, b = d / 25 + 1;
            const bool near = VexaQuickSelect::detail::nearColours(qRgb(97 + r, 97 + g, 97 + b), qRgb(100, 100, 100));
            QVERIFY2(near ? most[r] + most[g] + most[b] < 0.0001f : least[r] + least[g] + least[b] >= 0.0001f,
                     qPrintable(QString::number(d)));
        }
        QVERIFY(VexaQuickSelect::detail::nearColours(qRgb(10, 11, 12), qRgb(12, 10, 11)));  // 4 + 1 + 1
        QVERIFY(!VexaQuickSelect::detail::nearColours(qRgb(10, 10, 10), qRgb(12, 12, 10))); // 4 + 4
    }

    void cancellation()
    {
        VexaSegmentation big;
        big.load(photo("coffee.png", 600));
        Recorder r;
        // Cancelled while running on another thread: the worker's reporter holds the step at one
        // of its reports until the test has raised the flag; the step must then stop within one
        // stage, without its closing reports.
        const std::pair<Step, const char*> holds[] = {
            {VexaQuickSelect::init, "Initializing .. 20"}, {VexaQuickSelect::mark, "Marking.. 80"},
            {VexaQuickSelect::matte, "Alpha Extracting .. 40"}};
        for (auto [step, holdAt] : holds) {
            if (step != VexaQuickSelect::init) {
                VexaQuickSelect::init(big, r, running);
                scribble(big);
            }
            std::atomic<bool> stop{false};
            Recorder holder;
            holder.holdAt = QLatin1String(holdAt);
            std::thread worker([&, step = step] { step(big, holder, stop); });
            holder.reached.get_future().wait();
            stop = true;
            holder.release.set_value();
            worker.join();
            const QStringList& log = holder.log;
            const bool stopped = log.contains(holder.holdAt) && log.size() - log.indexOf(holder.holdAt) <= 2;
            QVERIFY2(stopped && !log.contains(QStringLiteral("paint on")), qPrintable(log.join(", ")));
        }
    }
};

QTEST_MAIN(TestQuickSelect)
#include "tst_quickselect.moc"
