// The plug-in as a host sees it: loaded with QLibrary, reached through its plain C symbols.
#include "VexaPluginLoader.h"

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
};

QTEST_MAIN(TestPlugin)
#include "tst_plugin.moc"
