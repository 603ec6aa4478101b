#pragma once

#include <QLibrary>
#include <QString>
#include <QStringList>

class IVexaTool;
class QObject;
class QTranslator;

// Loads a tools plug-in by file name and resolves its entry points by their plain C names,
// the way the editor finds plug-ins it was not linked against.
class VexaPluginLoader
{
public:
    using NamesFn = QStringList* (*)();
    using InstanceFn = IVexaTool* (*)(QObject*, const QString&);
    using InternationalFn = QTranslator* (*)(const QString&);

    VexaPluginLoader() = default;
    VexaPluginLoader(const VexaPluginLoader&) = delete;
    VexaPluginLoader& operator=(const VexaPluginLoader&) = delete;

    // Loads the library and resolves all three entry points; on failure says why, naming the
    // file or each missing symbol, and leaves nothing loaded.
    bool load(const QString& fileName);
    bool isLoaded() const { return m_names && m_instance && m_international; }
    QString errorString() const { return m_error; }
    QString fileName() const { return m_library.fileName(); }

    QStringList toolNames() const;
    IVexaTool* createTool(QObject* parent, const QString& name) const;
    QTranslator* setInternational(const QString& locale) const;

    // Where an install or the build puts the plug-in, relative to the running program.
    static QString defaultPluginPath();

private:
    QLibrary m_library;
    NamesFn m_names = nullptr;
    InstanceFn m_instance = nullptr;
    InternationalFn m_international = nullptr;
    QString m_error;
};
