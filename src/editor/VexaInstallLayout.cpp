#include "VexaInstallLayout.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

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

} // namespace VexaInstallLayout
