// Turning a grey matte into a canvas-sized selection mask.
#include "VexaMatte.h"

#include <QtTest>

#include <vector>

class TestMatte : public QObject
{
    Q_OBJECT
private slots:
    void sameSizeCopiesGrey_data();
    void sameSizeCopiesGrey();
    void resamplesCornerToCorner();
    void bilinearInBetween();
    void refusesWhatCannotBeResampled_data();
    void refusesWhatCannotBeResampled();
};

void TestMatte::sameSizeCopiesGrey_data()
{
    QTest::addColumn<uint>("pixel");
    QTest::addColumn<int>("expected");
    QTest::newRow("white") << 0xFFFFFFFFu << 255;
    QTest::newRow("mid grey") << 0xFF808080u << 128;
    QTest::newRow("black") << 0xFF000000u << 0;
    QTest::newRow("alpha ignored") << 0x00FFFFFFu << 255;
    QTest::newRow("weights 11 16 5") << 0xFFFF0000u << (11 * 255) / 32;
    QTest::newRow("green") << 0xFF00FF00u << (16 * 255) / 32;
}

void TestMatte::sameSizeCopiesGrey()
{
    QFETCH(uint, pixel);
    QFETCH(int, expected);
    QImage matte(3, 2, QImage::Format_ARGB32);
    matte.fill(pixel);
    const int stride = 8;
    std::vector<uint8_t> mask(size_t(stride) * 2, 0);
    QVERIFY(VexaMatte::toMask(matte, 3, 2, stride, mask.data()));
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x)
            QCOMPARE(int(mask[size_t(y * stride + x)]), expected);
        for (int x = 3; x < stride; ++x)
            QCOMPARE(int(mask[size_t(y * stride + x)]), 0); // padding untouched
    }
}

void TestMatte::resamplesCornerToCorner()
{
    // A 3000 x 2000 document whose working image is 1536 x 1024.
    QImage matte(1536, 1024, QImage::Format_ARGB32);
    matte.fill(0xFF000000u);
    matte.setPixel(1535, 1023, 0xFFFFFFFFu);
    matte.setPixel(0, 0, 0xFF404040u);
    const int W = 3000, H = 2000, S = 3008;
    std::vector<uint8_t> mask(size_t(S) * H, 7);
    QVERIFY(VexaMatte::toMask(matte, W, H, S, mask.data()));
    QCOMPARE(int(mask[size_t(H - 1) * S + (W - 1)]), 255);
    QCOMPARE(int(mask[0]), 64);
    QCOMPARE(int(mask[size_t(1000) * S + 1500]), 0);
    QCOMPARE(int(mask[size_t(H - 1) * S + W]), 7); // past the width: left alone
}

void TestMatte::bilinearInBetween()
{
    QImage matte(2, 2, QImage::Format_ARGB32);
    matte.setPixel(0, 0, 0xFF000000u);
    matte.setPixel(1, 0, 0xFFFFFFFFu);
    matte.setPixel(0, 1, 0xFF000000u);
    matte.setPixel(1, 1, 0xFF646464u);
    std::vector<uint8_t> mask(3 * 3, 0);
    QVERIFY(VexaMatte::toMask(matte, 3, 3, 3, mask.data()));
    // Middle row: half way between rows; middle column: half way between columns, truncated.
    const std::vector<uint8_t> expected = {0, 127, 255, 0, 88, 177, 0, 50, 100};
    QCOMPARE(mask, expected);
}

void TestMatte::refusesWhatCannotBeResampled_data()
{
    QTest::addColumn<QSize>("matte");
    QTest::addColumn<QSize>("canvas");
    QTest::newRow("null matte") << QSize() << QSize(4, 4);
    QTest::newRow("one column canvas") << QSize(2, 2) << QSize(1, 5);
    QTest::newRow("one row canvas") << QSize(2, 2) << QSize(5, 1);
}

void TestMatte::refusesWhatCannotBeResampled()
{
    QFETCH(QSize, matte);
    QFETCH(QSize, canvas);
    QImage img = matte.isEmpty() ? QImage() : QImage(matte, QImage::Format_ARGB32);
    if (!img.isNull())
        img.fill(0xFFFFFFFFu);
    std::vector<uint8_t> mask(size_t(canvas.width() + 3) * size_t(canvas.height()), 9);
    QVERIFY(!VexaMatte::toMask(img, canvas.width(), canvas.height(), canvas.width() + 3, mask.data()));
    QVERIFY(std::all_of(mask.begin(), mask.end(), [](uint8_t v) { return v == 9; }));
}

QTEST_MAIN(TestMatte)
#include "tst_matte.moc"
