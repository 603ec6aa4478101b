#include "VexaDemoScript.h"
#include "VexaEditorWindow.h"
#include "VexaInstallLayout.h"
#include "VexaPluginLoader.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>
#include <QMessageBox>
#include <QTranslator>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vexa-editor"));
    VexaInstallLayout::setDesktopIdentity();

    QCommandLineParser cli;
    cli.setApplicationDescription(QStringLiteral("Demo editor for the Vexa selection tools."));
    cli.addHelpOption();
    QCommandLineOption localeOpt(QStringLiteral("locale"), QStringLiteral("Locale of the plug-in's texts, such as de_DE."),
                                 QStringLiteral("locale"), QLocale::system().name());
    QCommandLineOption pluginOpt(QStringLiteral("plugin"), QStringLiteral("The tools plug-in to load."), QStringLiteral("file"),
                                 VexaPluginLoader::defaultPluginPath());
    QCommandLineOption scriptOpt(QStringLiteral("script"),
                                 QStringLiteral("Run the scripted demo and write its results into this folder."),
                                 QStringLiteral("folder"));
    cli.addOption(localeOpt);
    cli.addOption(pluginOpt);
    cli.addOption(scriptOpt);
    cli.addPositionalArgument(QStringLiteral("image"), QStringLiteral("Image to open (default: a bundled sample photo)."));
    cli.process(app);
    const bool scripted = cli.isSet(scriptOpt);

    auto fail = [&](const QString& message) {
        std::fprintf(stderr, "vexa-editor: %s\n", qPrintable(message));
        if (!scripted)
            QMessageBox::critical(nullptr, QStringLiteral("Vexa Selections"), message);
        return 1;
    };

    VexaPluginLoader plugin;
    if (!plugin.load(cli.value(pluginOpt)))
        return fail(plugin.errorString());
    // Translations first: the tools build their panels when they are created.
    std::unique_ptr<QTranslator> translator(plugin.setInternational(cli.value(localeOpt)));

    VexaEditorWindow window(plugin);
    const QString image = cli.positionalArguments().value(0, VexaInstallLayout::samplePhoto());
    QString error;
    if (!window.openImage(image, &error)) {
        if (scripted)
            return fail(error);
        QMessageBox::warning(&window, QStringLiteral("Vexa Selections"), error);
    }
    window.show();
    if (scripted) {
        VexaDemoScript script(window, cli.value(scriptOpt));
        return script.run();
    }
    return app.exec();
}
