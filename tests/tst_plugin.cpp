// The plug-in as a host sees it: loaded with QLibrary, reached through its plain C symbols.
#include "VexaPluginLoader.h"

#include <QLibrary>
#include <QTranslator>
#include <QtTest>

#include <memory>

class TestPlugin : public QObject
{
    Q_OBJECT
    VexaPluginLoader m_plugin;

private slots:
    void initTestCase() { QVERIFY2(m_plugin.load(QStringLiteral(VEXA_PLUGIN_PATH)), qPrintable(m_plugin.errorString())); }

    void namesAndExactLookUp()
    {
        const QStringList expected = {"Rectangular Marquee Tool", "Polygonal Lasso Tool", "Lasso Tool", "Move Selection",
                                      "Color Range", "Magic Select Tool", "Ellipse Select Tool", "Quick Select Tool"};
        QCOMPARE(m_plugin.toolNames(), expected);
        QCOMPARE(m_plugin.toolNames(), expected); // refilled, not appended
        QObject parent;
        for (const QString& name : {QStringLiteral("rectangular marquee tool"), QStringLiteral("Lasso Tool "),
                                    QStringLiteral("Brush"), QString()})
            QVERIFY2(!m_plugin.createTool(&parent, name), qPrintable(name));
        QVERIFY(parent.children().isEmpty());
    }

    void globalsAndResources()
    {
        QLibrary lib(QStringLiteral(VEXA_PLUGIN_PATH));
        QVERIFY(lib.load());
        auto* list = reinterpret_cast<QStringList*>(reinterpret_cast<void*>(lib.resolve("list")));
        QVERIFY(list && lib.resolve("instance"));
        QCOMPARE(reinterpret_cast<QStringList* (*)()>(lib.resolve("getInstanceNames"))(), list); // the exported global
        auto init = reinterpret_cast<int (*)()>(lib.resolve("qInitResources_Resources"));
        auto cleanup = reinterpret_cast<int (*)()>(lib.resolve("qCleanupResources_Resources"));
        QVERIFY(init && cleanup);
        // Loading registered the tree; the two functions take it away and bring it back.
        const QString trimap = QStringLiteral(":/Resources/TrimapShader.glsl");
        QVERIFY(QFile::exists(trimap));
        QVERIFY(cleanup() == 1 && !QFile::exists(trimap));
        QVERIFY(init() == 1 && QFile::exists(trimap));
    }

    void catalogues_data()
    {
        QTest::addColumn<QString>("locale"); QTest::addColumn<QString>("file"); QTest::addColumn<QString>("feather");
        QTest::newRow("zh_CN, first path") << "zh_CN" << ":/Resources/vexatoolselections_zh_CN.qm" << QString::fromUtf8("羽化:");
        QTest::newRow("de_DE, second path") << "de_DE" << ":/vexatoolselections_de_DE.qm" << "Weiche Kante:";
        QTest::newRow("zh_TW, a script of its own") << "zh_TW" << ":/vexatoolselections_zh_TW.qm" << QString::fromUtf8("羽化:");
        QTest::newRow("it_IT, none") << "it_IT" << QString() << QString();
        QTest::newRow("de, partial name") << "de" << QString() << QString();
    }
    void catalogues()
    {
        QFETCH(QString, locale); QFETCH(QString, file); QFETCH(QString, feather);
        std::unique_ptr<QTranslator> tr(m_plugin.setInternational(locale));
        QCOMPARE(tr ? tr->filePath() : QString(), file);
        if (!tr)
            return;
        QCOMPARE(QCoreApplication::translate("VexaToolSelectionWidgetClass", "Feather:"), feather);
        // The worker's texts are looked up under its own context.
        QVERIFY(QCoreApplication::translate("Thread", "Mark done") != QLatin1String("Mark done"));
        QVERIFY(QCoreApplication::removeTranslator(tr.get())); // it was installed
        QCOMPARE(QCoreApplication::translate("VexaToolSelectionWidgetClass", "Feather:"), QStringLiteral("Feather:"));
    }

    void loaderExplainsFailures()
    {
        VexaPluginLoader missing;
        QVERIFY(!missing.load(QStringLiteral("/nonexistent/libNothing.so")) && !missing.isLoaded() && missing.toolNames().isEmpty());
        QVERIFY(missing.errorString().contains(QStringLiteral("/nonexistent/libNothing.so")));
        // A real library that is no tools plug-in: every missing entry point is named.
        VexaPluginLoader wrong;
        QVERIFY(!wrong.load(QStringLiteral(VEXA_HOST_LIB_PATH)));
        for (const char* symbol : {"getInstanceNames", "getInstance", "setInternational"})
            QVERIFY2(wrong.errorString().contains(QLatin1String(symbol)), qPrintable(wrong.errorString()));
        QVERIFY(!wrong.createTool(nullptr, QStringLiteral("Lasso Tool")));
        // A file that is no library at all.
        QTemporaryFile junk;
        QVERIFY(junk.open() && junk.write("not a library") > 0 && junk.flush());
        VexaPluginLoader notLib;
        QVERIFY(!notLib.load(junk.fileName()) && notLib.errorString().contains(QStringLiteral("cannot be loaded")));
    }
};

QTEST_MAIN(TestPlugin)
#include "tst_plugin.moc"
