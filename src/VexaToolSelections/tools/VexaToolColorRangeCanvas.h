#pragma once

#include <QImage>
#include <QWidget>

// The preview of the color range dialog: a thumbnail scaled to fit, centred, with a frame.
class VexaToolColorRangeCanvas : public QWidget
{
    Q_OBJECT
public:
    explicit VexaToolColorRangeCanvas(QWidget* parent = nullptr);
    ~VexaToolColorRangeCanvas() override;

    const QImage& currentImage() const { return image; }

public slots:
    void setImage(const QImage& img);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage image;
};
