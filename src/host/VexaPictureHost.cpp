#include "VexaPictureHost.h"

VexaPictureHost::VexaPictureHost(const QImage& pixels)
    : m_image(pixels.isNull() ? QImage() : pixels.convertToFormat(QImage::Format_ARGB32))
{
}
