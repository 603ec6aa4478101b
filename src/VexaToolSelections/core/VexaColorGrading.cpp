#include "VexaColorGrading.h"

#include <algorithm>
#include <cmath>

namespace VexaColorGrading {

namespace {
int squaredDistance(QRgb p, QRgb f)
{
    const int dr = qRed(p) - qRed(f), dg = qGreen(p) - qGreen(f), db = qBlue(p) - qBlue(f);
    return dr * dr + dg * dg + db * db;
}

int gradeOfSquared(int d2, int tolerance)
{
    const double d = std::sqrt(double(d2));
    const double v = 255.0 - 255.0 * d / (3.0 * tolerance);
    return v < 0 ? 0 : int(v);
}
} // namespace

int grade(QRgb pixel, QRgb reference, int tolerance)
{
    if (tolerance <= 0)
        return 0; // nothing is within a zero tolerance, not even the colour itself
    return gradeOfSquared(squaredDistance(pixel, reference), tolerance);
}

Table::Table(int tolerance)
{
    if (tolerance <= 0)
        return; // every grade is 0 (the definition divides by zero and yields -infinity or NaN)
    // Beyond (3 x tolerance)^2 every grade is 0; no squared RGB distance exceeds 3 x 255^2.
    const int reach = std::min(9 * tolerance * tolerance, 3 * 255 * 255);
    m_grades.resize(size_t(reach) + 1);
    for (int d2 = 0; d2 <= reach; ++d2)
        m_grades[size_t(d2)] = uint8_t(gradeOfSquared(d2, tolerance));
}

void gradeImage(const QImage& image, QRgb reference, int tolerance, uint8_t* out, int stride)
{
    const QImage src = image.format() == QImage::Format_ARGB32 || image.format() == QImage::Format_RGB32
        ? image
        : image.convertToFormat(QImage::Format_ARGB32);
    const Table table(tolerance);
    const int fr = qRed(reference), fg = qGreen(reference), fb = qBlue(reference);
    for (int y = 0; y < src.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(src.constScanLine(y));
        uint8_t* o = out + size_t(y) * size_t(stride);
        for (int x = 0; x < src.width(); ++x) {
            const QRgb p = row[x];
            const int dr = int(qRed(p)) - fr, dg = int(qGreen(p)) - fg, db = int(qBlue(p)) - fb;
            o[x] = table(dr * dr + dg * dg + db * db);
        }
    }
}

QImage gradeThumbnail(const QImage& image, QRgb reference, int tolerance)
{
    QImage out(image.size(), QImage::Format_ARGB32);
    const QImage src = image.convertToFormat(QImage::Format_ARGB32);
    const Table table(tolerance);
    for (int y = 0; y < src.height(); ++y) {
        const auto* in = reinterpret_cast<const QRgb*>(src.constScanLine(y));
        auto* o = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < src.width(); ++x) {
            const int g = table(squaredDistance(in[x], reference));
            o[x] = qRgba(g, g, g, 255);
        }
    }
    return out;
}

QImage thumbnail(const QImage& image, int bound)
{
    if (image.isNull())
        return QImage();
    return image.scaled(QSize(std::min(bound, image.width()), std::min(bound, image.height())), Qt::KeepAspectRatio,
                        Qt::FastTransformation);
}

} // namespace VexaColorGrading
