#pragma once

#include <QImage>
#include <QString>

class QIODevice;

// Reading photos of any size a camera makes. Qt's image reader stops at 128 MB by default,
// which refuses a 45 Mpx photo with a message that hides the cause; this raises the limit to
// what the machine can hold and refuses anything larger with the size and the limit.
namespace VexaImageFile {

// Bytes one decoded image may take: an eighth of the physical memory (the editor keeps a few
// copies of its document), at least 512 MB.
qint64 byteLimit();

// "3.4 GB", "180 MB": a byte count as people read it.
QString formatBytes(qint64 bytes);

// Reads `fileName` (applying its orientation tag). On failure returns a null image and, in
// `error`, why: "too large: 30000 x 30000 needs 3.4 GB, more than the 2.9 GB ..." above the limit.
QImage read(const QString& fileName, QString* error = nullptr);
// From a device, with an optional bound in bytes in place of the machine's (the fuzzer keeps
// within its own memory limit this way).
QImage read(QIODevice* device, QString* error = nullptr, qint64 limit = 0);

} // namespace VexaImageFile
