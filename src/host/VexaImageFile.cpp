#include "VexaImageFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <cstdio>
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

QImage readFrom(QImageReader& reader, qint64 limit, QString* error)
{
    const QuietStandardError quiet; // the header is decoded as early as size()
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid()) {
        // Documents are 32 bits per pixel, whatever the file holds.
        const qint64 needs = qint64(size.width()) * qint64(size.height()) * 4;
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
    if (image.isNull() && error)
        *error = reader.errorString();
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
    const qint64 limit = byteLimit();
    raiseReaderLimit(limit);
    QImageReader reader(fileName);
    return readFrom(reader, limit, error);
}

QImage read(QIODevice* device, QString* error, qint64 limit)
{
    if (limit <= 0)
        limit = byteLimit();
    raiseReaderLimit(limit);
    QImageReader reader(device);
    return readFrom(reader, limit, error);
}

} // namespace VexaImageFile
