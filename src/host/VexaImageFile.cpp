#include "VexaImageFile.h"

#include <QImageReader>

namespace VexaImageFile {

namespace {
QImage readFrom(QImageReader& reader, QString* error)
{
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (image.isNull() && error)
        *error = reader.errorString();
    return image;
}
} // namespace

QImage read(QIODevice* device, QString* error)
{
    QImageReader reader(device);
    return readFrom(reader, error);
}

QImage read(const QString& fileName, QString* error)
{
    QImageReader reader(fileName);
    return readFrom(reader, error);
}

} // namespace VexaImageFile
