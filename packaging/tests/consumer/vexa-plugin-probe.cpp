// Loads the installed plug-in the way a host does: by file name, through its three plain entry
// points, with nothing linked. Prints what it checked; exits 1 on the first surprise.
#include <IVexaTool.h>
#include <VexaPluginEntry.h>

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QTranslator>

#include <cstdio>
#include <memory>

namespace {

int fail(const QString& why)
{
    std::fprintf(stderr, "FAIL: %s\n", qPrintable(why));
    return 1;
}

// The file a library named `name` was mapped from, if it is loaded.
QString mappedFrom(const QString& name)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& line : maps.readAll().split('\n')) {
        const int slash = line.indexOf('/');
        if (slash >= 0 && line.mid(slash).contains(name.toUtf8()))
            return QString::fromUtf8(line.mid(slash));
    }
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QString file = QStringLiteral(VEXA_SELECTIONS_PLUGIN);
    // The package config and the pkg-config file must agree on where the plug-in lies.
    if (QFileInfo(file).absolutePath() != QFileInfo(QStringLiteral(VEXA_PKGCONFIG_PLUGINDIR)).absoluteFilePath())
        return fail(QStringLiteral("plug-in folder %1 (CMake) differs from %2 (pkg-config)")
                        .arg(QFileInfo(file).absolutePath(), QStringLiteral(VEXA_PKGCONFIG_PLUGINDIR)));

    if (!mappedFrom(QStringLiteral("libvexahost")).isEmpty())
        return fail(QStringLiteral("libvexahost is loaded before the plug-in"));
    QLibrary library(file);
    if (!library.load())
        return fail(QStringLiteral("cannot load %1: %2").arg(file, library.errorString()));
    // Found through the plug-in's run path, beside it in the installed tree.
    const QString host = mappedFrom(QStringLiteral("libvexahost"));
    const QString libDir = QFileInfo(QFileInfo(file).absolutePath() + QStringLiteral("/../..")).canonicalFilePath();
    if (QFileInfo(host).canonicalPath() != libDir)
        return fail(QStringLiteral("libvexahost came from %1, not from %2").arg(host, libDir));
    std::printf("host library: %s\n", qPrintable(host));

    const auto names = reinterpret_cast<decltype(&getInstanceNames)>(library.resolve("getInstanceNames"));
    const auto create = reinterpret_cast<decltype(&getInstance)>(library.resolve("getInstance"));
    const auto international = reinterpret_cast<decltype(&setInternational)>(library.resolve("setInternational"));
    if (!names || !create || !international)
        return fail(QStringLiteral("an entry point is missing"));

    // The catalogues travel inside the library.
    const std::unique_ptr<QTranslator> german(international(QStringLiteral("de_DE")));
    if (!german || german->isEmpty())
        return fail(QStringLiteral("no German catalogue"));
    if (international(QStringLiteral("xx_XX")))
        return fail(QStringLiteral("a catalogue for an unknown locale"));

    const QStringList* list = names();
    if (!list || list->size() != 8)
        return fail(QStringLiteral("expected eight tool names"));
    QObject owner;
    int made = 0;
    for (const QString& name : *list) {
        IVexaTool* tool = create(&owner, name);
        std::printf("  %-26s %s\n", qPrintable(name), tool ? tool->metaObject()->className() : "(not in this build)");
        if (!tool)
            continue;
        if (tool->parent() != &owner || tool->toolName.isEmpty())
            return fail(QStringLiteral("tool %1 is not owned by its parent or has no name").arg(name));
        ++made;
    }
    if (!create(&owner, QStringLiteral("rectangular marquee tool")))
        std::printf("  names are case-sensitive\n");
    else
        return fail(QStringLiteral("a tool for a wrongly cased name"));
    if (made < 7)
        return fail(QStringLiteral("only %1 tools were made").arg(made));
    std::printf("plug-in works: %d tools\n", made);
    return 0;
}
