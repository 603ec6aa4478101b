#include "VexaConfig.h"

#include <QFileInfo>

namespace {
const char defaultSkinPrefix[] = "./data/skin/vexapix_replace_style/";
}

VexaConfig::VexaConfig()
    : iconDirectory(QStringLiteral(":/vexahost/icons/"))
    , m_skinRoot(QStringLiteral(":/vexahost/skin/"))
{
}

VexaConfig* VexaConfig::getInstance()
{
    static VexaConfig config;
    return &config;
}

QString VexaConfig::getStyleImageName(const QString& path) const
{
    const QString prefix = QLatin1String(defaultSkinPrefix);
    if (!path.startsWith(prefix))
        return path;
    const QString styled = m_skinRoot + path.mid(prefix.size());
    return QFileInfo::exists(styled) ? styled : path;
}
