#include "VexaSegmentation.h"

QImage VexaSegmentation::workingImage(const QImage& rendered) const
{
    if (rendered.isNull())
        return QImage();
    QImage img = rendered.convertToFormat(QImage::Format_ARGB32);
    if (img.width() > maxWidth || img.height() > maxHeight)
        img = img.scaled(maxWidth, maxHeight, Qt::KeepAspectRatio, Qt::FastTransformation);
    for (int y = 0; y < img.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(img.scanLine(y));
        for (int x = 0; x < img.width(); ++x)
            row[x] |= 0xFF000000u;
    }
    return img;
}

void VexaSegmentation::load(const QImage& rendered)
{
    sourceImage = workingImage(rendered);
    alphaImage = QImage(sourceImage.size(), QImage::Format_ARGB32);
    markImage = QImage(sourceImage.size(), QImage::Format_ARGB32);
    userBoundary = QImage(sourceImage.size(), QImage::Format_Alpha8);
    reset();
}

void VexaSegmentation::reset()
{
    resultImage = sourceImage.copy();
    alphaImage.fill(0xFFFFFFFFu);
    markImage.fill(0u);
    userBoundary.fill(0u);
}

void VexaSegmentation::release()
{
    sourceImage = QImage();
    resultImage = QImage();
    alphaImage = QImage();
    markImage = QImage();
    userBoundary = QImage();
    graph.reset();
}
