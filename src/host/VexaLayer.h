#pragma once

#include "VexaLayerBase.h"
#include "VexaPictureHost.h"

#include <QImage>

// A raster layer. Its newest pixels may sit in a graphics-card copy (latest place 1) after
// GPU painting; fboTextureToHost brings them back to the host buffer (latest place 2).
class VexaLayer : public VexaLayerBase
{
    Q_OBJECT
public:
    enum Place { OnDevice = 1, InHost = 2 };

    VexaLayer(const QImage& pixels, const QPointF& position, const QString& name, QObject* parent = nullptr);
    ~VexaLayer() override;

    virtual VexaPictureHost* getPictureHost();
    virtual int getWidth() const;
    virtual int getHeight() const;

    int getLatestPlace() const { return m_latestPlace; }
    void setLatestPlace(int place) { m_latestPlace = place; }
    // Copies the graphics-card pixels into the host buffer; `wait` is honoured by always copying synchronously.
    void fboTextureToHost(bool wait);
    // Pixels painted on the graphics card that the host buffer does not have yet.
    void setDevicePixels(const QImage& pixels);
    // Replaces the host pixels (loading).
    void setPixels(const QImage& pixels);
    // The host pixels to write in place, copied first when another image shares them; null
    // when that copy does not fit in memory (the pixels stay as they were).
    QImage* writablePixels();
    // Says that the host pixels were written in place.
    void pixelsChanged() { emit changed(); }
    // True while a pool thread writes the host pixels in place: nobody on this thread reads
    // them until pixelsChanged().
    bool isBeingWritten() const { return m_beingWritten; }
    void setBeingWritten(bool writing) { m_beingWritten = writing; }

private:
    VexaPictureHost m_host;
    QImage m_device;
    int m_latestPlace = InHost;
    bool m_beingWritten = false;
};
