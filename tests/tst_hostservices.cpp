// Host services a plug-in relies on: region grow, memory pool, layers, documents, mask packing,
// the Delete action with its undo, and reading image files.
#include "VexaActionManager.h"
#include "VexaAlgorithmGrow.h"
#include "VexaContext.h"
#include "VexaContextManager.h"
#include "VexaHistory.h"
#include "VexaImageFile.h"
#include "VexaLayer.h"
#include "VexaLayerManager.h"
#include "VexaMaskOps.h"
#include "VexaMemory.h"
#include "VexaSelection.h"

#include <QAction>
#include <QtTest>


namespace {

// A 6 x 4 picture: a left block of red, a right block of blue, one near-red pixel inside the
// blue area that is not connected to the red block, and a dark-red bridge cell.
QImage growPicture()
{
    QImage img(6, 4, QImage::Format_ARGB32);
    img.fill(qRgb(0, 0, 255));
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 3; ++x)
            img.setPixel(x, y, qRgb(200, 0, 0));
    img.setPixel(1, 1, qRgb(190, 5, 0)); // within 10 of the red
    img.setPixel(5, 3, qRgb(200, 0, 0)); // same red, but an island
    return img;
}

QByteArray maskText(const std::vector<unsigned char>& m, int w)
{
    QByteArray out;
    for (size_t i = 0; i < m.size(); ++i) {
        if (i && i % size_t(w) == 0)
            out.append(' ');
        out.append(m[i] == 255 ? '#' : m[i] == 0 ? '.' : '?');
    }
    return out;
}

} // namespace

class TestHostServices : public QObject
{
    Q_OBJECT
private slots:
    void grow_data()
    {
        QTest::addColumn<int>("x"); QTest::addColumn<int>("y"); QTest::addColumn<float>("threshold");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("red, tolerant") << 0 << 0 << 10.0f << QByteArray("###... ###... ###... ###...");
        QTest::newRow("red, exact skips the odd pixel") << 0 << 0 << 0.0f << QByteArray("###... #.#... ###... ###...");
        QTest::newRow("fraction acts as its floor") << 0 << 0 << 9.9f << QByteArray("###... #.#... ###... ###...");
        QTest::newRow("blue surrounds the island") << 4 << 0 << 0.0f << QByteArray("...### ...### ...### ...##.");
        QTest::newRow("island alone") << 5 << 3 << 50.0f << QByteArray("...... ...... ...... .....#");
        QTest::newRow("everything") << 0 << 0 << 255.0f << QByteArray("###### ###### ###### ######");
        QTest::newRow("seed outside") << 6 << 0 << 255.0f << QByteArray("...... ...... ...... ......");
        QTest::newRow("negative seed") << -1 << 2 << 255.0f << QByteArray("...... ...... ...... ......");
    }

    void grow()
    {
        QFETCH(int, x); QFETCH(int, y); QFETCH(float, threshold); QFETCH(QByteArray, expected);
        VexaPictureHost picture(growPicture());
        std::vector<unsigned char> mask(24, 0);
        VexaAlgorithmGrow::grow(&picture, mask.data(), threshold, x, y);
        QCOMPARE(maskText(mask, 6), expected);
    }

    void memoryAccounting()
    {
        VexaMemory* pool = VexaMemory::getInstance();
        const size_t blocks = pool->liveBlocks(), bytes = pool->liveBytes();
        unsigned char *a = pool->alloc(1000), *b = pool->alloc(0);
        QVERIFY(a && b && a != b && !pool->alloc(-1));
        QCOMPARE(pool->liveBlocks(), blocks + 2);
        QCOMPARE(pool->liveBytes(), bytes + 1000);
        pool->release(a);
        QCOMPARE(pool->liveBytes(), bytes);
        // A foreign pointer is refused, not freed.
        unsigned char local = 0;
        QTest::ignoreMessage(QtWarningMsg, "VexaMemory: release of a block that was not allocated here");
        pool->release(&local);
        pool->release(b);
        pool->release(nullptr);
        QCOMPARE(pool->liveBlocks(), blocks);
    }

    void documentFromImage()
    {
        QString why;
        QVERIFY(!VexaContext::fromImage(QImage(), &why) && !why.isEmpty());
        QVERIFY(!VexaContext::fromImage(QImage(0, 5, QImage::Format_ARGB32)));
        // A picture whose 32-bit copy Qt cannot make (its row would pass 2 GB), as when memory runs
        // out: refused with the cause, not opened blank.
        QVERIFY(!VexaContext::fromImage(QImage(1 << 26, 1, QImage::Format_Mono), &why));
        QCOMPARE(why, QStringLiteral("Not enough memory for a 67108864 x 1 image (256 MB)."));
        auto doc = VexaContext::fromImage(growPicture(), &why);
        QCOMPARE(doc->canvasSize(), QSize(6, 4));
        QCOMPARE(doc->getLayerManager()->getLayerCount(), 1);
        QVERIFY(qobject_cast<VexaLayer*>(doc->getLayerManager()->getActiveLayer()) && !doc->hasSelection());
    }

    void compose()
    {
        VexaLayerManager layers;
        QImage base(4, 3, QImage::Format_ARGB32);
        base.fill(qRgb(10, 20, 30));
        QImage patch(2, 2, QImage::Format_ARGB32);
        patch.fill(qRgba(255, 0, 0, 255));
        layers.addLayer(base, QPointF(0, 0), QStringLiteral("base"));
        layers.addLayer(patch, QPointF(2.7, -1.2), QStringLiteral("patch")); // lands at (2, -1)
        const QImage doc = layers.compose(QSize(4, 3));
        for (QPoint p : {QPoint(2, 0), QPoint(3, 0), QPoint(2, 1), QPoint(1, 0)})
            QCOMPARE(doc.pixel(p), p.y() == 0 && p.x() >= 2 ? qRgb(255, 0, 0) : qRgb(10, 20, 30));
        QCOMPARE(layers.activeIndex(), 1);

        // One layer over the whole canvas takes a shorter way than drawing: the same bytes at every
        // alpha, and an opaque layer's own pixels rather than a copy.
        QImage img(256, 3, QImage::Format_ARGB32);
        for (int a = 0; a < 256; ++a) {
            img.setPixel(a, 0, qRgba(255, 128, 1, a));
            img.setPixel(a, 1, qRgba(a, 255 - a, 77, a));
            img.setPixel(a, 2, qRgba(3, 200, a, 255));
        }
        VexaLayerManager one, drawn;
        one.addLayer(img, QPointF(0, 0), QStringLiteral("one"));
        drawn.addLayer(img, QPointF(0, 0), QStringLiteral("one"));
        drawn.addLayer(img.copy(0, 0, 1, 1), QPointF(0, 0), QStringLiteral("clear")); // its alpha is 0; two layers: drawn
        QCOMPARE(one.compose(img.size()), drawn.compose(img.size()));
        VexaLayerManager opaque;
        opaque.addLayer(img.copy(0, 2, 256, 1), QPointF(0, 0), QStringLiteral("opaque"));
        QCOMPARE(opaque.compose(QSize(256, 1)).constBits(), opaque.layerAt(0)->getPictureHost()->image().constBits());
    }

    void packedRuns_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("packedSize"); // worked out by hand
        QByteArray ramp;
        for (int i = 0; i < 200; ++i)
            ramp.append(char(i));
        QTest::newRow("nothing") << QByteArray() << 0;
        QTest::newRow("one byte") << QByteArray("\x05") << 2;
        QTest::newRow("two equal, as they stand") << QByteArray("aa") << 3;
        QTest::newRow("three equal, a run") << QByteArray("aaa") << 2;
        QTest::newRow("longest run") << QByteArray(129, 'z') << 2;
        QTest::newRow("run of 130") << QByteArray(130, 'z') << 4;
        QTest::newRow("300 zeros") << QByteArray(300, '\0') << 6;
        QTest::newRow("200 unequal: 128 + 72") << ramp << 202;
        QTest::newRow("run at the end") << QByteArray("xyzzz") << 5;
        QTest::newRow("run between") << QByteArray("abccccd") << 7;
    }

    void packedRuns()
    {
        QFETCH(QByteArray, bytes); QFETCH(int, packedSize);
        const auto* src = reinterpret_cast<const uint8_t*>(bytes.constData());
        const size_t n = size_t(bytes.size());
        std::vector<uint8_t> packed{0x7F}; // appended to what is there
        VexaMaskOps::packRuns(src, n, packed);
        QCOMPARE(int(packed.size()) - 1, packedSize);
        std::vector<uint8_t> back(n + 1, 0xEE);
        const uint8_t* end = packed.data() + packed.size();
        QCOMPARE(VexaMaskOps::unpackRuns(packed.data() + 1, end, back.data(), n), end);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(back.data()), int(n)), bytes);
        QCOMPARE(back[n], uint8_t(0xEE));
        if (n > 0) {
            // Data cut short is refused; a row shorter than the data is never written past.
            QVERIFY(!VexaMaskOps::unpackRuns(packed.data() + 1, end - 1, back.data(), n));
            std::fill(back.begin(), back.end(), uint8_t(0xEE));
            VexaMaskOps::unpackRuns(packed.data() + 1, end, back.data(), n - 1);
            QCOMPARE(back[n - 1], uint8_t(0xEE));
        }
    }

    void outlineOfOnePixel_data()
    {
        // One selected pixel in the second row of a 20 x 2 mask: its edges whether it sits in the
        // first eight bytes, at the start or end of a later eight, or in the last few.
        QTest::addColumn<int>("x");
        for (int x : {0, 7, 8, 16, 17, 19})
            QTest::newRow(qPrintable(QString::number(x))) << x;
    }

    void outlineOfOnePixel()
    {
        QFETCH(int, x);
        std::vector<uint8_t> mask(2 * 24, 0);
        mask[24 + size_t(x)] = 255;
        const float l = float(x), r = float(x + 1);
        QCOMPARE(VexaMaskOps::outline(mask.data(), 20, 2, 24),
                 (std::vector<float>{l, 1, r, 1, l, 2, r, 2, l, 1, l, 2, r, 1, r, 2}));
    }

    void deleteClearsSelectedPixels_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("in step") << QSize(4, 1);
        // 8 Mpx selected from corner to corner: the selection and Delete both run on a pool thread.
        QTest::newRow("pool thread") << QSize(4096, 2048);
    }

    void deleteClearsSelectedPixels()
    {
        QFETCH(QSize, size);
        QImage img(size, QImage::Format_ARGB32);
        img.fill(qRgba(100, 150, 200, 200));
        auto doc = VexaContext::fromImage(img);
        VexaContextManager::getInstance()->setCurrentContext(doc.get());
        QAction* del = VexaActionManager::getInstance(QString())->getActionByName(QStringLiteral("Delete"));
        QVERIFY(del && VexaActionManager::getInstance(QString()) == VexaActionManager::getInstance(QString()));
        QVERIFY(!VexaActionManager::getInstance(QStringLiteral("other"))->getActionByName(QStringLiteral("Delete")));

        // Without a selection nothing happens and nothing is recorded.
        del->activate(QAction::Trigger);
        QCOMPARE(doc->getHistory()->count(), 0);

        // A soft selection: 255, 128, 0 and 64 on the four pixels.
        VexaSelection* sel = doc->getSelection();
        std::vector<unsigned char> mask(size_t(sel->maskStride()) * size_t(size.height()), 0);
        std::copy_n(std::initializer_list<unsigned char>{255, 128, 0, 64}.begin(), 4, mask.begin());
        const QPoint corner(size.width() - 1, size.height() - 1);
        const bool wide = size.height() > 1;
        if (wide)
            mask[size_t(corner.y()) * size_t(sel->maskStride()) + size_t(corner.x())] = 255;
        sel->copyMask(mask.data());
        QCOMPARE(sel->boundingRect(), QRect(QPoint(0, 0), size));
        del->activate(QAction::Trigger);
        auto* layer = qobject_cast<VexaLayer*>(doc->getLayerManager()->getActiveLayer());
        const VexaPictureHost* pic = layer->getPictureHost();
        // The first row, then the far corner (selected) and the last row's first pixel (not).
        auto alphas = [&] {
            return QList<int>{qAlpha(pic->pixel(0, 0)), qAlpha(pic->pixel(1, 0)), qAlpha(pic->pixel(2, 0)),
                              qAlpha(pic->pixel(3, 0)), qAlpha(pic->pixel(corner.x(), corner.y())), qAlpha(pic->pixel(0, corner.y()))};
        };
        // 200 * 127 / 255 and 200 * 191 / 255, rounded
        const QList<int> deleted = wide ? QList<int>({0, 100, 200, 150, 0, 200}) : QList<int>({0, 100, 200, 150, 150, 0});
        QCOMPARE(alphas(), deleted);
        QCOMPARE(qRed(pic->pixel(1, 0)), 100); // colour kept, only opacity goes
        QCOMPARE(doc->getHistory()->count(), 2);

        // Undo brings the pixels back; redo removes them again.
        doc->getHistory()->undo();
        QCOMPARE(pic->pixel(0, 0), qRgba(100, 150, 200, 200));
        QCOMPARE(pic->pixel(corner.x(), corner.y()), qRgba(100, 150, 200, 200));
        doc->getHistory()->redo();
        QCOMPARE(alphas(), deleted);
        // Inverting and undoing it (aside too on the large mask) change every byte, and back.
        const size_t far = size_t(corner.y()) * size_t(sel->maskStride()) + size_t(corner.x());
        auto bytes = [&] { return std::pair(sel->getMask()[1], sel->getMask()[far]); };
        const auto before = bytes();
        sel->inverse();
        QCOMPARE(bytes(), std::pair(uint8_t(127), uint8_t(255 - before.second)));
        doc->getHistory()->undo();
        QCOMPARE(bytes(), before);
        doc->getHistory()->undo();
        doc->getHistory()->undo(); // the selection as it was: none
        QVERIFY(!sel->hasSelection());
        VexaContextManager::getInstance()->setCurrentContext(nullptr);
    }

    void imageFiles_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<qint64>("limit"); // 0: the machine's bound
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("refusal"); // the start of the refusal, where it matters which one
        // The fuzz seeds: each photo at 16 pixels, and the same files with headers declaring a
        // picture far beyond the decoders' memory bound.
        for (const char* ext : {"png", "jpg", "bmp", "gif", "ico", "xpm", "xbm", "ppm", "pgm", "pbm"}) {
            QTest::newRow(ext) << QStringLiteral("coffee.%1").arg(QLatin1String(ext)) << qint64(0) << QSize(16, 11) << QString();
            if (QFileInfo::exists(QStringLiteral(VEXA_DATA_DIR "/../fuzz/corpus/imageload/huge.%1").arg(QLatin1String(ext))))
                QTest::newRow(qPrintable(QStringLiteral("huge %1").arg(QLatin1String(ext))))
                    << QStringLiteral("huge.%1").arg(QLatin1String(ext)) << qint64(0) << QSize(0, 0) << QString();
        }
        // 16 bits a channel open at 8; the bound counts the 8 bytes a pixel they decode to.
        QTest::newRow("16-bit png") << QStringLiteral("coffee16.png") << qint64(0) << QSize(16, 11) << QString();
        QTest::newRow("8-bit png at its bound") << "coffee.png" << qint64(16 * 11 * 4) << QSize(16, 11) << QString();
        QTest::newRow("16-bit png over it") << "coffee16.png" << qint64(16 * 11 * 4) << QSize(0, 0) << QString();
        QTest::newRow("16-bit png at its bound") << "coffee16.png" << qint64(16 * 11 * 8) << QSize(16, 11) << QString();
        // A text chunk declaring 1.9 GB in a 1 KB file: refused before the decoder allocates it.
        QTest::newRow("chunk past the end") << "longchunk16.png" << qint64(0) << QSize(0, 0) << "damaged file";
    }

    void imageFiles()
    {
        QFETCH(QString, file); QFETCH(qint64, limit); QFETCH(QSize, size); QFETCH(QString, refusal);
        const QString path = QStringLiteral(VEXA_DATA_DIR "/../fuzz/corpus/imageload/") + file;
        QFile device(path);
        QVERIFY(device.open(QIODevice::ReadOnly));
        QString why, whyByName;
        const QImage image = VexaImageFile::read(&device, &why, limit); // and the same by name below
        QCOMPARE(image.size(), size);
        QCOMPARE(why.isEmpty(), !size.isEmpty()); // a refusal always says why
        QVERIFY2(why.startsWith(refusal), qPrintable(why));
        if (limit == 0) {
            QCOMPARE(VexaImageFile::read(path, &whyByName).size(), size);
            QCOMPARE(whyByName, why);
        }
        if (!image.isNull()) // every channel at 8 bits, as documents and steps expect
            QVERIFY2(image.depth() <= 32 && image.format() != QImage::Format_Grayscale16,
                     qPrintable(QString::number(image.format())));
    }
};

QTEST_MAIN(TestHostServices)
#include "tst_hostservices.moc"
