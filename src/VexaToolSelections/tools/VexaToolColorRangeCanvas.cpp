#include "VexaToolColorRangeCanvas.h"

#include <QPainter>

VexaToolColorRangeCanvas::VexaToolColorRangeCanvas(QWidget* parent)
    : QWidget(parent)
{
}

VexaToolColorRangeCanvas::~VexaToolColorRangeCanvas() = default;

void VexaToolColorRangeCanvas::setImage(const QImage& img)
{
    image = img;
    repaint();
}

void VexaToolColorRangeCanvas::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    if (!image.isNull()) {
        const QImage scaled = image.scaled(width(), height(), Qt::KeepAspectRatio, Qt::FastTransformation);
        p.drawImage((width() - scaled.width()) / 2, (height() - scaled.height()) / 2, scaled);
    }
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(0, 0, width() - 2, height() - 2);
}
