#pragma once

#include <QImage>

// The pixel buffer of a layer: 32-bit ARGB, not premultiplied.
class VexaPictureHost
{
public:
    explicit VexaPictureHost(const QImage& pixels = QImage());

    int width() const { return m_image.width(); }
    int height() const { return m_image.height(); }
    QImage& image() { return m_image; }
    const QImage& image() const { return m_image; }
    QRgb pixel(int x, int y) const { return reinterpret_cast<const QRgb*>(m_image.constScanLine(y))[x]; }

private:
    QImage m_image;
};
