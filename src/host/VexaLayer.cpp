#include "VexaLayer.h"

#include <utility>

VexaLayer::VexaLayer(const QImage& pixels, const QPointF& position, const QString& name, QObject* parent)
    : VexaLayerBase(parent)
    , m_host(pixels)
{
    setPosition(position);
    setName(name);
}

VexaLayer::~VexaLayer() = default;

VexaPictureHost* VexaLayer::getPictureHost() { return &m_host; }
int VexaLayer::getWidth() const { return m_host.width(); }
int VexaLayer::getHeight() const { return m_host.height(); }

void VexaLayer::fboTextureToHost(bool)
{
    if (!m_device.isNull()) {
        QImage host = m_device.convertToFormat(QImage::Format_ARGB32);
        if (host.isNull())
            return; // out of memory: the device's pixels stay the latest ones
        m_host.image() = std::move(host);
        m_device = QImage();
        emit changed();
    }
}

void VexaLayer::setDevicePixels(const QImage& pixels)
{
    m_device = pixels;
    m_latestPlace = OnDevice;
}

void VexaLayer::setPixels(const QImage& pixels)
{
    m_host.image() = pixels.convertToFormat(QImage::Format_ARGB32);
    emit changed();
}

QImage* VexaLayer::writablePixels()
{
    QImage& pixels = m_host.image();
    // Writing to a shared image detaches it, and a detach that fails leaves a null image: the
    // layer would lose its pixels.
    if (!pixels.isDetached()) {
        QImage own = pixels.copy();
        if (own.isNull())
            return nullptr;
        pixels = std::move(own);
    }
    return &pixels;
}
