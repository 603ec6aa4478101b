#pragma once

// Image files for tests of reading photos: a header that claims a huge picture, and a large
// camera-sized JPEG written on the fly.
#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QString>

#include <cstdint>

namespace VexaTestImages {

inline uint32_t crc32(const char* data, int size)
{
    uint32_t c = 0xFFFFFFFFu;
    for (int i = 0; i < size; ++i) {
        c ^= uint8_t(data[i]);
        for (int k = 0; k < 8; ++k)
            c = (c >> 1) ^ (0xEDB88320u & (0u - (c & 1u)));
    }
    return c ^ 0xFFFFFFFFu;
}

// A PNG whose header says width x height (its pixel data is that of a 1 x 1 picture): readers
// learn the size without decoding anything.
inline QByteArray pngClaiming(quint32 width, quint32 height)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImage(1, 1, QImage::Format_RGB32).save(&buffer, "PNG");
    auto put = [&](int at, quint32 v) {
        for (int i = 0; i < 4; ++i)
            png[at + i] = char((v >> (24 - 8 * i)) & 0xFF);
    };
    // Signature (8), IHDR length (4), "IHDR" at 12, width at 16, height at 20, CRC at 29.
    put(16, width);
    put(20, height);
    put(29, crc32(png.constData() + 12, 17));
    return png;
}

// A 45 Mpx camera-sized JPEG: a left half of one colour, a right half of another.
inline bool writeCameraJpeg(const QString& file, QRgb left = qRgb(200, 40, 40), QRgb right = qRgb(40, 40, 200))
{
    QImage img(8256, 5504, QImage::Format_RGB32);
    if (img.isNull())
        return false;
    for (int y = 0; y < img.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(img.scanLine(y));
        std::fill(row, row + img.width() / 2, left);
        std::fill(row + img.width() / 2, row + img.width(), right);
    }
    return img.save(file, "JPEG", 60);
}

} // namespace VexaTestImages
