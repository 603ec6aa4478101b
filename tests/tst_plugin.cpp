// The plug-in as a host sees it: loaded with QLibrary, reached through its plain C symbols.
#include "VexaPluginLoader.h"

#include <QLibrary>
#include <QTranslator>
#include <QtTest>

#include <memory>

class TestPlugin : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void namesInOrderEveryCall();
    void getInstanceComparesExactly_data();
    void getInstanceComparesExactly();
    void globalsAndResources();
    void catalogues_data();
    void catalogues();
    void loaderExplainsFailures();

private:
    VexaPluginLoader m_plugin;
};

void TestPlugin::initTestCase()
{
    QVERIFY2(m_plugin.load(QStringLiteral(VEXA_PLUGIN_PATH)), qPrintable(m_plugin.errorString()));
}

void TestPlugin::namesInOrderEveryCall()
{
    const QStringList expected = {"Rectangular Marquee Tool", "Polygonal Lasso Tool", "Lasso Tool", "Move Selection",
                                  "Color Range", "Magic Select Tool", "Ellipse Select Tool", "Quick Select Tool"};
    QCOMPARE(m_plugin.toolNames(), expected);
    QCOMPARE(m_plugin.toolNames(), expected); // refilled, not appended
}

void TestPlugin::getInstanceComparesExactly_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("lower case") << QStringLiteral("rectangular marquee tool");
    QTest::newRow("trailing space") << QStringLiteral("Lasso Tool ");
    QTest::newRow("unknown") << QStringLiteral("Brush");
    QTest::newRow("empty") << QString();
}

void TestPlugin::getInstanceComparesExactly()
{
    QFETCH(QString, name);
    QObject parent;
    QVERIFY(!m_plugin.createTool(&parent, name));
    QVERIFY(parent.children().isEmpty());
}

void TestPlugin::globalsAndResources()
{
    QLibrary lib(QStringLiteral(VEXA_PLUGIN_PATH));
    QVERIFY(lib.load());
    auto* list = reinterpret_cast<QStringList*>(reinterpret_cast<void*>(lib.resolve("list")));
    QVERIFY(list);
    using Names = QStringList* (*)();
    auto names = reinterpret_cast<Names>(lib.resolve("getInstanceNames"));
    QCOMPARE(names(), list); // the list handed out is the exported global
    QVERIFY(lib.resolve("instance"));
    using ResFn = int (*)();
    auto init = reinterpret_cast<ResFn>(lib.resolve("qInitResources_Resources"));
    auto cleanup = reinterpret_cast<ResFn>(lib.resolve("qCleanupResources_Resources"));
    QVERIFY(init && cleanup);
    // Loading registered the tree; the two functions take it away and bring it back.
    QVERIFY(QFile::exists(QStringLiteral(":/Resources/TrimapShader.glsl")));
    QCOMPARE(cleanup(), 1);
    QVERIFY(!QFile::exists(QStringLiteral(":/Resources/TrimapShader.glsl")));
    QCOMPARE(init(), 1);
    QVERIFY(QFile::exists(QStringLiteral(":/Resources/TrimapShader.glsl")));
    for (const char* shader : {"ClosedShader", "ExpandShader", "FastFillShader", "ResultShader", "RobustShader", "TrimapShader"}) {
        QFile f(QStringLiteral(":/Resources/%1.glsl").arg(QLatin1String(shader)));
        QVERIFY2(f.open(QIODevice::ReadOnly), shader);
        QVERIFY(f.readAll().contains("gl_FragColor"));
    }
}

void TestPlugin::catalogues_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("feather");
    QTest::newRow("zh_CN, first path") << "zh_CN" << ":/Resources/vexatoolselections_zh_CN.qm" << QString::fromUtf8("羽化:");
    QTest::newRow("de_DE, second path") << "de_DE" << ":/vexatoolselections_de_DE.qm" << "Weiche Kante:";
    QTest::newRow("fr_FR") << "fr_FR" << ":/vexatoolselections_fr_FR.qm" << QString::fromUtf8("Contour progressif :");
    QTest::newRow("zh_TW") << "zh_TW" << ":/vexatoolselections_zh_TW.qm" << QString::fromUtf8("羽化:");
    QTest::newRow("it_IT, none") << "it_IT" << QString() << QString();
    QTest::newRow("de, partial name") << "de" << QString() << QString();
}

void TestPlugin::catalogues()
{
    QFETCH(QString, locale);
    QFETCH(QString, file);
    QFETCH(QString, feather);
    std::unique_ptr<QTranslator> tr(m_plugin.setInternational(locale));
    if (file.isEmpty()) {
        QVERIFY(!tr);
        return;
    }
    QVERIFY(tr);
    QCOMPARE(tr->filePath(), file);
    QCOMPARE(QCoreApplication::translate("VexaToolSelectionWidgetClass", "Feather:"), feather);
    QVERIFY(QCoreApplication::removeTranslator(tr.get())); // it was installed
    QCOMPARE(QCoreApplication::translate("VexaToolSelectionWidgetClass", "Feather:"), QStringLiteral("Feather:"));
}

void TestPlugin::loaderExplainsFailures()
{
    VexaPluginLoader missing;
    QVERIFY(!missing.load(QStringLiteral("/nonexistent/libNothing.so")));
    QVERIFY(missing.errorString().contains(QStringLiteral("/nonexistent/libNothing.so")));
    QVERIFY(!missing.isLoaded());
    QVERIFY(missing.toolNames().isEmpty());

    // A real library that is no tools plug-in: every missing entry point is named.
    VexaPluginLoader wrong;
    QVERIFY(!wrong.load(QStringLiteral(VEXA_HOST_LIB_PATH)));
    for (const char* symbol : {"getInstanceNames", "getInstance", "setInternational"})
        QVERIFY2(wrong.errorString().contains(QLatin1String(symbol)), qPrintable(wrong.errorString()));
    QVERIFY(!wrong.createTool(nullptr, QStringLiteral("Lasso Tool")));

    // A file that is no library at all.
    QTemporaryFile junk;
    QVERIFY(junk.open());
    junk.write("not a library");
    junk.close();
    VexaPluginLoader notLib;
    QVERIFY(!notLib.load(junk.fileName()));
    QVERIFY(notLib.errorString().contains(QStringLiteral("cannot be loaded")));
}

QTEST_MAIN(TestPlugin)
#include "tst_plugin.moc"
