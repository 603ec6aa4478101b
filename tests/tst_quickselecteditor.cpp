// Quick select in the demo editor: offered on the tool bar, opened modally from it, and
// offered again once its window has closed itself.
#include "IVexaTool.h"
#include "VexaContext.h"
#include "VexaEditorWindow.h"
#include "VexaPluginLoader.h"

#include <QAction>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

class TestQuickSelectEditor : public QObject
{
    Q_OBJECT
private slots:
    void toolBarOpensItAgainAndAgain()
    {
        VexaPluginLoader plugin;
        QVERIFY2(plugin.load(QStringLiteral(VEXA_PLUGIN_PATH)), qPrintable(plugin.errorString()));
        VexaEditorWindow window(plugin);
        QVERIFY(window.openImage(QStringLiteral(VEXA_DATA_DIR "/chelsea.png"), nullptr));
        IVexaTool* tool = window.tool(QStringLiteral("Quick Select Tool"));
        QAction* action = nullptr;
        for (QAction* a : window.findChildren<QAction*>())
            action = a->text() == QLatin1String("Quick Select Tool") ? a : action;
        QVERIFY(tool && action && action->isEnabled());
        QStringList titles;
        for (int round = 0; round < 3; ++round) {
            QTimer::singleShot(0, &window, [&, round] {
                QWidget* quick = tool->getWidget();
                if (!quick || !quick->isVisible())
                    return;
                titles << quick->window()->windowTitle();
                // The window stays in its own container, never in the editor's options bar.
                QVERIFY(quick->window() != &window && window.currentTool() == tool);
                if (round == 1)
                    QTest::keyClick(quick, Qt::Key_Escape); // cancels as Close does
                else
                    quick->findChild<QPushButton*>(QStringLiteral("closeButton"))->click();
            });
            action->trigger(); // returns when the modal window has closed
            QVERIFY(!tool->isActive() && !window.currentTool() && !window.document()->currentTool() && !action->isChecked());
        }
        QCOMPARE(titles, QStringList(3, QStringLiteral("451 x 300 - Quick Select Tool")));
    }
};

QTEST_MAIN(TestQuickSelectEditor)
#include "tst_quickselecteditor.moc"
