#include "VexaImageSave.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>

VexaImageSave::VexaImageSave(const QString& fileName, const QByteArray& format)
    : m_fileName(fileName)
    , m_format(format.isEmpty() ? QFileInfo(fileName).suffix().toLower().toLatin1() : format.toLower())
{
}

VexaImageSave::~VexaImageSave() = default; // an uncommitted temporary file is removed

bool VexaImageSave::open(QString* error)
{
    const QString shown = QDir::toNativeSeparators(m_fileName);
    if (!QImageWriter::supportedImageFormats().contains(m_format)) {
        if (error)
            *error = QCoreApplication::translate("VexaImageSave", "Cannot write %1: the name has no suffix of an image format written here (such as .png).")
                         .arg(shown);
        return false;
    }
    m_file = std::make_unique<QSaveFile>(m_fileName);
    if (!m_file->open(QIODevice::WriteOnly)) {
        if (error)
            *error = QCoreApplication::translate("VexaImageSave", "Cannot write %1: %2").arg(shown, m_file->errorString());
        m_file.reset();
        return false;
    }
    return true;
}

bool VexaImageSave::write(const QImage& image, QString* error, int quality)
{
    if (!m_file)
        return false;
    // Encoded in memory first: a full disk shows as a short write, which the file device
    // does not count as an error, and the encoder's library would print its own complaint.
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, m_format);
    writer.setQuality(quality);
    QString why;
    if (!writer.write(image))
        why = writer.errorString();
    else if (m_file->write(bytes) != bytes.size() || !m_file->flush())
        // The file device reports a full disk as a short count or as "Unknown error".
        why = QCoreApplication::translate("VexaImageSave", "the disk is full or the file too large for it");
    if (why.isEmpty())
        return true;
    if (error)
        *error = QCoreApplication::translate("VexaImageSave", "Cannot write %1: %2").arg(QDir::toNativeSeparators(m_fileName), why);
    m_file->cancelWriting();
    m_file.reset();
    return false;
}

bool VexaImageSave::commit(QString* error)
{
    if (!m_file)
        return false;
    const bool done = m_file->commit();
    if (!done && error)
        *error = QCoreApplication::translate("VexaImageSave", "Cannot write %1: %2").arg(QDir::toNativeSeparators(m_fileName), m_file->errorString());
    m_file.reset();
    return done;
}

bool VexaImageSave::save(const QImage& image, const QString& fileName, QString* error, const QByteArray& format, int quality)
{
    VexaImageSave file(fileName, format);
    return file.open(error) && file.write(image, error, quality) && file.commit(error);
}
