#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

class QImage;
class QSaveFile;

// An image file that is written whole or not at all. The bytes go to a temporary file beside
// the target, which replaces the target only at commit(): a full disk, a missing folder or a
// killed process leaves whatever the file held before. A program with several outputs opens
// all of them before its work starts (so a bad path costs nothing), writes all, then commits
// all.
class VexaImageSave
{
public:
    // The format follows the name's suffix; `format` overrides it.
    explicit VexaImageSave(const QString& fileName, const QByteArray& format = QByteArray());
    ~VexaImageSave();
    VexaImageSave(const VexaImageSave&) = delete;
    VexaImageSave& operator=(const VexaImageSave&) = delete;

    // Checks the format and creates the temporary file. False with the reason in `error`.
    bool open(QString* error);
    // `quality` as QImageWriter takes it (for PNG, 0 is the smallest file and 100 the fastest
    // write); -1 leaves the format's default.
    bool write(const QImage& image, QString* error, int quality = -1);
    // Puts the written file in place of the target.
    bool commit(QString* error);

    // open, write and commit in one.
    static bool save(const QImage& image, const QString& fileName, QString* error, const QByteArray& format = QByteArray(),
                     int quality = -1);

    const QString& fileName() const { return m_fileName; }

private:
    QString m_fileName;
    QByteArray m_format;
    std::unique_ptr<QSaveFile> m_file;
};
