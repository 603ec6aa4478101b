#include "VexaInstallLayout.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>

namespace {

// The first candidate that exists; the first one otherwise, so a failure names where an
// installed editor expected the file.
QString firstExisting(const QString& installed, const QString& buildTree)
{
    const QString file = QFileInfo::exists(installed) || !QFileInfo::exists(buildTree) ? installed : buildTree;
    return QDir::cleanPath(file);
}

} // namespace

namespace VexaInstallLayout {

QString pluginPath()
{
    const QString bin = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    return firstExisting(bin + QStringLiteral(VEXA_BIN_TO_PLUGINDIR "/" VEXA_PLUGIN_FILE),
                         bin + QStringLiteral("../lib/" VEXA_PLUGIN_FILE));
}

QString samplePhoto()
{
    const QString bin = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    return firstExisting(bin + QStringLiteral(VEXA_BIN_TO_PKGDATADIR "/coffee.png"),
                         QStringLiteral(VEXA_SOURCE_DATA_DIR "/coffee.png"));
}

void setDesktopIdentity()
{
    const QString name = QStringLiteral("vexa-editor");
    QGuiApplication::setDesktopFileName(name);
    const QDir icons(QCoreApplication::applicationDirPath() + QStringLiteral("/" VEXA_BIN_TO_ICONDIR));
    QIcon icon;
    for (const QString& size : icons.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString file = icons.filePath(size + QStringLiteral("/apps/") + name + QStringLiteral(".png"));
        if (QFileInfo::exists(file))
            icon.addFile(file);
    }
    QApplication::setWindowIcon(icon.isNull() ? QIcon::fromTheme(name) : icon);
}

} // namespace VexaInstallLayout
