#include "VexaDemoScript.h"
#include "VexaEditorTranslations.h"
#include "VexaEditorWindow.h"
#include "VexaInstallLayout.h"
#include "VexaPluginLoader.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>
#include <QMessageBox>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QSurfaceFormat>
#include <QTranslator>

#include <cstdio>
#include <memory>

namespace {

// Options that only print: answered before any window system is touched, so that they work
// over ssh, in a build without a display, and for the manual page.
bool onlyPrints(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "-h" || arg == "--help" || arg == "-?" || arg == "--help-all" || arg == "-v" || arg == "--version")
            return true;
    }
    return false;
}

struct EditorOptions {
    QCommandLineOption locale{QStringLiteral("locale"), QStringLiteral("Locale of the editor's and the plug-in's texts, such as de_DE."),
                              QStringLiteral("locale"), QLocale::system().name()};
    QCommandLineOption plugin{QStringLiteral("plugin"), QStringLiteral("The tools plug-in to load."), QStringLiteral("file"),
                              VexaPluginLoader::defaultPluginPath()};
    QCommandLineOption script{QStringLiteral("script"), QStringLiteral("Run the scripted demo and write its results into this folder."),
                              QStringLiteral("folder")};

    void describe(QCommandLineParser& cli) const
    {
        QCoreApplication::setApplicationName(QStringLiteral("vexa-editor"));
        QCoreApplication::setApplicationVersion(QStringLiteral(VEXA_VERSION));
        cli.setApplicationDescription(QStringLiteral("Demo editor for the Vexa selection tools."));
        cli.addHelpOption();
        cli.addVersionOption();
        cli.addOption(locale);
        cli.addOption(plugin);
        cli.addOption(script);
        cli.addPositionalArgument(QStringLiteral("image"), QStringLiteral("Image to open (default: a bundled sample photo)."));
    }
};

} // namespace

int main(int argc, char** argv)
{
    if (onlyPrints(argc, argv)) {
        QCoreApplication app(argc, argv);
        QCommandLineParser cli;
        const EditorOptions options;
        options.describe(cli);
        cli.process(app); // prints and exits
        return 0;
    }
    QApplication app(argc, argv);
    VexaInstallLayout::setDesktopIdentity();

    QCommandLineParser cli;
    const EditorOptions options;
    options.describe(cli);
    const QCommandLineOption& localeOpt = options.locale;
    const QCommandLineOption& pluginOpt = options.plugin;
    const QCommandLineOption& scriptOpt = options.script;
    cli.process(app);
    const bool scripted = cli.isSet(scriptOpt);

    auto fail = [&](const QString& message) {
        std::fprintf(stderr, "vexa-editor: %s\n", qPrintable(message));
        if (!scripted)
            QMessageBox::critical(nullptr, QStringLiteral("Vexa Selections"), message);
        return 1;
    };

    // The editor's texts before anything can report in them; the plug-in's before its tools
    // build their panels.
    const VexaEditorTranslations editorTexts(cli.value(localeOpt));

    // The canvas is an OpenGL 2.1 widget; where none can be made (no GL driver, or a platform
    // such as "offscreen" that cannot host one) the first paint would crash deep in the driver,
    // so say so and stop. A hidden widget of the canvas's kind tells.
    {
        QSurfaceFormat format;
        format.setVersion(2, 1);
        format.setProfile(QSurfaceFormat::CompatibilityProfile);
        QOpenGLWidget probe;
        probe.setFormat(format);
        probe.resize(16, 16);
        // Raster-only platforms may still make a context (through the X display), but cannot
        // put a GL widget into a window: Qt crashes on their first window flush.
        static const QStringList rasterOnly{QStringLiteral("offscreen"), QStringLiteral("minimal"),
                                            QStringLiteral("linuxfb"), QStringLiteral("vnc")};
        const bool composes = !rasterOnly.contains(QGuiApplication::platformName());
        const QImage drawn = composes ? probe.grabFramebuffer() : QImage();
        QOpenGLContext* gl = probe.context();
        if (drawn.isNull() || !gl || !gl->isValid() || gl->format().version() < qMakePair(2, 1)) {
            std::fprintf(stderr, "vexa-editor: %s\n",
                         qPrintable(QCoreApplication::translate("main", "needs OpenGL 2.1 or later, and no usable OpenGL "
                                                                        "context could be created on this display (%1)")
                                        .arg(QGuiApplication::platformName())));
            return 3;
        }
    }

    VexaPluginLoader plugin;
    if (!plugin.load(cli.value(pluginOpt)))
        return fail(plugin.errorString());
    std::unique_ptr<QTranslator> translator(plugin.setInternational(cli.value(localeOpt)));

    VexaEditorWindow window(plugin);
    const QString image = cli.positionalArguments().value(0, VexaInstallLayout::samplePhoto());
    if (!scripted) {
        // The window first: a camera-sized photo takes seconds to open, and the user sees the
        // editor and its progress meanwhile instead of nothing; a photo that cannot be opened
        // is reported over it.
        window.showAndOpen(image);
        return app.exec();
    }
    QString error;
    if (!window.openImage(image, &error))
        return fail(error);
    window.show();
    VexaDemoScript script(window, cli.value(scriptOpt));
    return script.run();
}
