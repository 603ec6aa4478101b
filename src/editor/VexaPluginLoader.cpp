#include "VexaPluginLoader.h"

#include "VexaInstallLayout.h"

#include <QCoreApplication>
#include <QFileInfo>

bool VexaPluginLoader::load(const QString& fileName)
{
    m_names = nullptr;
    m_instance = nullptr;
    m_international = nullptr;
    if (!QFileInfo::exists(fileName)) {
        m_error = QCoreApplication::translate("VexaPluginLoader", "The plug-in file %1 does not exist.").arg(fileName);
        return false;
    }
    m_library.setFileName(fileName);
    if (!m_library.load()) {
        m_error = QCoreApplication::translate("VexaPluginLoader", "The plug-in %1 cannot be loaded: %2")
                      .arg(fileName, m_library.errorString());
        return false;
    }
    auto names = reinterpret_cast<NamesFn>(m_library.resolve("getInstanceNames"));
    auto instance = reinterpret_cast<InstanceFn>(m_library.resolve("getInstance"));
    auto international = reinterpret_cast<InternationalFn>(m_library.resolve("setInternational"));
    QStringList missing;
    if (!names)
        missing << QStringLiteral("getInstanceNames");
    if (!instance)
        missing << QStringLiteral("getInstance");
    if (!international)
        missing << QStringLiteral("setInternational");
    if (!missing.isEmpty()) {
        m_error = QCoreApplication::translate("VexaPluginLoader", "%1 is not a tools plug-in: it lacks %2.")
                      .arg(fileName, missing.join(QStringLiteral(", ")));
        m_library.unload();
        return false;
    }
    m_names = names;
    m_instance = instance;
    m_international = international;
    m_error.clear();
    return true;
}

QStringList VexaPluginLoader::toolNames() const
{
    if (!m_names)
        return {};
    const QStringList* names = m_names();
    return names ? *names : QStringList();
}

IVexaTool* VexaPluginLoader::createTool(QObject* parent, const QString& name) const
{
    return m_instance ? m_instance(parent, name) : nullptr;
}

QTranslator* VexaPluginLoader::setInternational(const QString& locale) const
{
    return m_international ? m_international(locale) : nullptr;
}

QString VexaPluginLoader::defaultPluginPath()
{
    return VexaInstallLayout::pluginPath();
}
