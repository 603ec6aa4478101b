#pragma once

#include <QImage>
#include <QString>

class QIODevice;

// Reading an image file, the one way every program of the suite does it (the editor, the
// command-line tools): the format from the content, the orientation the file records applied,
// and Qt's bound on the memory a decoder may take, so a header that declares a huge size is
// refused before anything is allocated.
namespace VexaImageFile {

// The image, or a null image and the reason in `error`.
QImage read(QIODevice* device, QString* error = nullptr);
QImage read(const QString& fileName, QString* error = nullptr);

} // namespace VexaImageFile
