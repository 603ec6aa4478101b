#include "VexaImageFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <mutex>

#include <unistd.h>

namespace VexaImageFile {

qint64 byteLimit()
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    const qint64 physical = pages > 0 && pageSize > 0 ? qint64(pages) * qint64(pageSize) : 0;
    return std::max<qint64>(physical / 8, qint64(512) << 20);
}

QString formatBytes(qint64 bytes)
{
    const double mb = double(bytes) / double(1 << 20);
    if (mb >= 1024.0)
        return QCoreApplication::translate("VexaImageFile", "%1 GB").arg(mb / 1024.0, 0, 'f', 1);
    return QCoreApplication::translate("VexaImageFile", "%1 MB").arg(qMax(1.0, mb), 0, 'f', 0);
}

namespace {

// libpng tells of a broken file on the standard error itself, before Qt's reader returns its
// own message: "libpng error: Read Error" would reach the terminal beside ours. While a file
// is decoded the standard error goes to a scratch file instead. The descriptor is the
// process's, so decodes on two threads (the editor opens on a pool thread) take turns: one that
// saved the other's scratch file as "the" standard error would restore a closed descriptor.
class QuietStandardError
{
public:
    QuietStandardError()
        : m_turn(turnLock())
        , m_sink(std::tmpfile())
    {
        std::fflush(stderr);
        if (m_sink)
            m_saved = dup(2);
        if (m_saved >= 0 && dup2(fileno(m_sink), 2) < 0) {
            close(m_saved);
            m_saved = -1;
        }
    }
    ~QuietStandardError()
    {
        if (m_saved >= 0) {
            std::fflush(stderr);
            dup2(m_saved, 2);
            close(m_saved);
        }
        if (m_sink)
            std::fclose(m_sink);
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;

private:
    static std::mutex& turnLock()
    {
        static std::mutex lock;
        return lock;
    }

    std::lock_guard<std::mutex> m_turn;
    std::FILE* m_sink;
    int m_saved = -1;
};

void raiseReaderLimit(qint64 limit)
{
    // The reader's own limit (in MB) stays a little above ours, so that our check, with its
    // clear message, is the one that refuses.
    QImageReader::setAllocationLimit(int(std::min<qint64>(limit / (1 << 20) + 64, 1 << 30)));
}

// Bytes per pixel of the largest image the reading makes: what the decoder produces (16-bit
// PNGs decode to 8 bytes a pixel), and never less than the 4 of a document's own copy.
int bytesPerPixel(QImage::Format decoded)
{
    const int bits = decoded == QImage::Format_Invalid ? 0 : int(QImage::toPixelFormat(decoded).bitsPerPixel());
    return std::max(4, (bits + 7) / 8);
}

// More than 8 bits a channel: the editor's documents, the quick select steps and the matting
// all work on 8 bits, so the photo is narrowed once here.
QImage::Format eightBitFormat(const QImage& image)
{
    const QImage::Format f = image.format();
    if (f == QImage::Format_Grayscale16)
        return QImage::Format_Grayscale8;
    const QPixelFormat pixel = image.pixelFormat();
    if (pixel.bitsPerPixel() > 32 || pixel.typeInterpretation() == QPixelFormat::FloatingPoint)
        return image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    return f;
}

// A PNG chunk declares its own length, and the decoder allocates what an ancillary chunk (text,
// colour profile) declares before it finds the file short: a 1 KB file declaring a 1.9 GB text
// chunk took 2 GB for a moment. Walking the chunk headers first costs a read per chunk. Picture
// data running past the end is left to the decoder, which streams it and shows what arrived.
bool pngChunksFit(QIODevice* device)
{
    if (!device->isOpen() || device->isSequential())
        return true;
    static const char signature[8] = {'\x89', 'P', 'N', 'G', '\r', '\n', '\x1a', '\n'};
    const qint64 start = device->pos();
    const qint64 size = device->size();
    char head[8];
    bool fits = true;
    if (device->read(head, 8) == 8 && std::memcmp(head, signature, 8) == 0) {
        for (qint64 at = start + 8; at + 8 <= size && device->seek(at) && device->read(head, 8) == 8;) {
            const qint64 end = at + 12 + qint64(qFromBigEndian<quint32>(head));
            if (end > size) {
                fits = std::memcmp(head + 4, "IDAT", 4) == 0;
                break;
            }
            if (std::memcmp(head + 4, "IEND", 4) == 0)
                break;
            at = end;
        }
    }
    device->seek(start);
    return fits;
}

QImage damaged(QString* error)
{
    if (error)
        *error = QCoreApplication::translate("VexaImageFile", "damaged file: it ends before the data it declares");
    return QImage();
}

QImage readFrom(QImageReader& reader, qint64 limit, QString* error)
{
    const QuietStandardError quiet; // the header is decoded as early as size()
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid()) {
        const qint64 needs = qint64(size.width()) * qint64(size.height()) * bytesPerPixel(reader.imageFormat());
        if (needs > limit) {
            if (error)
                *error = QCoreApplication::translate("VexaImageFile",
                                                     "too large: %1 x %2 needs %3, more than the %4 this machine allows for one image")
                             .arg(size.width())
                             .arg(size.height())
                             .arg(formatBytes(needs), formatBytes(limit));
            return QImage();
        }
    }
    QImage image = reader.read();
    if (image.isNull()) {
        if (error)
            *error = reader.errorString();
        return image;
    }
    const QImage::Format narrow = eightBitFormat(image);
    if (narrow != image.format()) {
        const QSize decoded = image.size();
        image = image.convertToFormat(narrow);
        if (image.isNull() && error)
            *error = QCoreApplication::translate("VexaImageFile", "not enough memory to convert the %1 x %2 picture to 8 bits a channel")
                         .arg(decoded.width())
                         .arg(decoded.height());
    }
    return image;
}

} // namespace

QImage read(const QString& fileName, QString* error)
{
    // The reader would call an empty file an unsupported format, which sends people looking
    // for a plug-in instead of at the file.
    const QFileInfo file(fileName);
    if (file.isFile() && file.size() == 0) {
        if (error)
            *error = QCoreApplication::translate("VexaImageFile", "empty file");
        return QImage();
    }
    QFile probe(fileName);
    if (probe.open(QIODevice::ReadOnly) && !pngChunksFit(&probe))
        return damaged(error);
    probe.close();
    const qint64 limit = byteLimit();
    raiseReaderLimit(limit);
    QImageReader reader(fileName);
    return readFrom(reader, limit, error);
}

QImage read(QIODevice* device, QString* error, qint64 limit)
{
    if (limit <= 0)
        limit = byteLimit();
    if (!pngChunksFit(device))
        return damaged(error);
    raiseReaderLimit(limit);
    QImageReader reader(device);
    return readFrom(reader, limit, error);
}

} // namespace VexaImageFile
