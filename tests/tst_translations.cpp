// Every text the sources hand to tr() must have a finished translation in each of the seven
// catalogues, of the plug-in and of the editor. lupdate extracts the texts at test time, so a
// text added anywhere without a translation fails here, named with its locale and context.
//
// Catalogue conventions this test enforces:
// - A translation counts when it is neither "unfinished", "vanished" nor "obsolete" and not
//   empty (lrelease leaves such entries out, so the user would see English).
// - Texts that must stay as they are (style-sheet hooks, object names, initial values, key
//   sequences parsed by QKeySequence) carry a translator comment starting with "notr:" and
//   the reason; their translation is the source text, unchanged, or the hook would break.
// - A translation keeps the source's placeholders (%1, %2, %n), its menu mnemonic (a single
//   '&') and the patterns of a file filter (*.png).

#include "VexaEditorTranslations.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibrary>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QtTest>

#include <memory>

namespace {

const QStringList locales = {QStringLiteral("de_DE"), QStringLiteral("es_ES"), QStringLiteral("fr_FR"), QStringLiteral("ja_JP"),
                             QStringLiteral("ko_KR"), QStringLiteral("zh_CN"), QStringLiteral("zh_TW")};

struct Message {
    QString context;
    QString source;
    QString comment; // disambiguation
    bool numerus = false;
    QStringList translations; // one, or the numerus forms
    QString type; // "", "unfinished", "vanished", "obsolete"
    QString translatorComment;
};

struct Catalogue {
    QString language;
    QList<Message> messages;
    QString error;
};

QString key(const QString& context, const QString& source, const QString& comment)
{
    return context + QChar(0x1F) + source + QChar(0x1F) + comment;
}

Catalogue readCatalogue(const QString& path)
{
    Catalogue cat;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        cat.error = QStringLiteral("cannot read %1").arg(path);
        return cat;
    }
    QXmlStreamReader xml(&file);
    QString context;
    Message msg;
    bool inMessage = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const auto name = xml.name();
            if (name == QLatin1String("TS")) {
                cat.language = xml.attributes().value(QLatin1String("language")).toString();
            } else if (name == QLatin1String("name") && !inMessage) {
                context = xml.readElementText();
            } else if (name == QLatin1String("message")) {
                msg = Message();
                msg.context = context;
                msg.numerus = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
                inMessage = true;
            } else if (inMessage && name == QLatin1String("source")) {
                msg.source = xml.readElementText();
            } else if (inMessage && name == QLatin1String("comment")) {
                msg.comment = xml.readElementText();
            } else if (inMessage && name == QLatin1String("translatorcomment")) {
                msg.translatorComment = xml.readElementText();
            } else if (inMessage && name == QLatin1String("translation")) {
                msg.type = xml.attributes().value(QLatin1String("type")).toString();
                if (!msg.numerus)
                    msg.translations = QStringList{xml.readElementText()};
            } else if (inMessage && msg.numerus && name == QLatin1String("numerusform")) {
                msg.translations.append(xml.readElementText());
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("message")) {
            cat.messages.append(msg);
            inMessage = false;
        }
    }
    if (xml.hasError())
        cat.error = QStringLiteral("%1: %2 at line %3").arg(path, xml.errorString()).arg(xml.lineNumber());
    return cat;
}

QSet<QString> matches(const QString& text, const QRegularExpression& re)
{
    QSet<QString> found;
    for (auto it = re.globalMatch(text); it.hasNext();)
        found.insert(it.next().captured(0));
    return found;
}

bool hasMnemonic(const QString& text)
{
    return text.contains(QRegularExpression(QStringLiteral("(^|[^&])&[^&\\s]")));
}

// What is wrong with the translation of one extracted text, or nothing.
QString problemOf(const Message& wanted, const Message* have)
{
    if (!have)
        return QStringLiteral("missing");
    if (!have->type.isEmpty())
        return have->type;
    if (have->translations.isEmpty())
        return QStringLiteral("no translation");
    for (const QString& t : have->translations)
        if (t.isEmpty())
            return QStringLiteral("empty translation");
    const QString& t = have->translations.value(0);
    if (have->translatorComment.startsWith(QLatin1String("notr:")))
        return t == wanted.source ? QString() : QStringLiteral("marked notr but translated as \"%1\"").arg(t);
    static const QRegularExpression placeholder(QStringLiteral("%(\\d+|n)"));
    static const QRegularExpression pattern(QStringLiteral("\\*\\.\\w+"));
    for (const QString& form : have->translations) {
        if (matches(form, placeholder) != matches(wanted.source, placeholder))
            return QStringLiteral("placeholders differ in \"%1\"").arg(form);
        if (!matches(wanted.source, pattern).subtract(matches(form, pattern)).isEmpty())
            return QStringLiteral("file patterns lost in \"%1\"").arg(form);
        if (hasMnemonic(wanted.source) && !hasMnemonic(form))
            return QStringLiteral("mnemonic lost in \"%1\"").arg(form);
    }
    return QString();
}

// The quick select steps live in the widget-free core, in namespace VexaQuickSelect, and look
// their texts up under the worker's context, Thread. When they reach tr() through a helper of
// that namespace, lupdate files them under the namespace; they are checked where they are
// looked up.
QString runtimeContext(const QString& extracted)
{
    return extracted == QLatin1String("VexaQuickSelect") ? QStringLiteral("Thread") : extracted;
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QHash<QString, QList<Message>> m_extracted; // "plugin", "editor"

    QStringList extract(const QString& name, const QStringList& sourceDirs)
    {
        const QString ts = m_dir.filePath(name + QStringLiteral(".ts"));
        QProcess lupdate;
        QStringList args{QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none")};
        for (const QString& dir : sourceDirs)
            args << QStringLiteral(VEXA_SOURCE_DIR "/") + dir;
        args << QStringLiteral("-ts") << ts;
        lupdate.start(QStringLiteral(VEXA_LUPDATE), args);
        if (!lupdate.waitForFinished(120000) || lupdate.exitCode() != 0)
            return {QStringLiteral("lupdate failed: %1 %2").arg(lupdate.errorString(), QString::fromLocal8Bit(lupdate.readAllStandardError()))};
        const Catalogue cat = readCatalogue(ts);
        if (!cat.error.isEmpty())
            return {cat.error};
        QList<Message> found;
        for (Message m : cat.messages) {
            m.context = runtimeContext(m.context);
            found.append(m);
        }
        m_extracted.insert(name, found);
        return {};
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QStringList errors = extract(QStringLiteral("plugin"), {QStringLiteral("src/VexaToolSelections")});
        // The editor's catalogue covers its window and the host services it is built on.
        errors += extract(QStringLiteral("editor"), {QStringLiteral("src/editor"), QStringLiteral("src/host")});
        QVERIFY2(errors.isEmpty(), qPrintable(errors.join(QLatin1Char('\n'))));
        // Sanity: the extraction sees the texts the catalogues are about.
        QVERIFY(m_extracted.value(QStringLiteral("plugin")).size() >= 30);
        QVERIFY(m_extracted.value(QStringLiteral("editor")).size() >= 30);
    }

    void everyTextTranslated_data()
    {
        QTest::addColumn<QString>("part");
        QTest::addColumn<QString>("catalogue");
        QTest::addColumn<QString>("locale");
        for (const QString& loc : locales) {
            QTest::addRow("plugin %s", qPrintable(loc))
                << QStringLiteral("plugin")
                << QStringLiteral(VEXA_SOURCE_DIR "/src/VexaToolSelections/resources/translations/vexatoolselections_%1.ts").arg(loc)
                << loc;
            QTest::addRow("editor %s", qPrintable(loc))
                << QStringLiteral("editor")
                << QStringLiteral(VEXA_SOURCE_DIR "/src/editor/translations/vexa-editor_%1.ts").arg(loc) << loc;
        }
    }

    void everyTextTranslated()
    {
        QFETCH(QString, part);
        QFETCH(QString, catalogue);
        QFETCH(QString, locale);
        const Catalogue cat = readCatalogue(catalogue);
        QVERIFY2(cat.error.isEmpty(), qPrintable(cat.error));
        QCOMPARE(cat.language, locale);

        QHash<QString, const Message*> byKey;
        for (const Message& m : cat.messages)
            byKey.insert(key(m.context, m.source, m.comment), &m);
        QStringList problems;
        for (const Message& wanted : m_extracted.value(part)) {
            const QString problem = problemOf(wanted, byKey.value(key(wanted.context, wanted.source, wanted.comment)));
            if (!problem.isEmpty())
                problems << QStringLiteral("%1: %2: \"%3\": %4").arg(locale, wanted.context, wanted.source, problem);
        }
        // One line each: a failure message would be cut short.
        for (const QString& p : problems)
            qWarning().noquote() << p;
        QVERIFY2(problems.isEmpty(),
                 qPrintable(QStringLiteral("%1 problem(s) in %2, listed above").arg(problems.size()).arg(catalogue)));
    }

    // The compiled catalogues reach the running code: the plug-in's through setInternational
    // (the worker's texts under Thread included), the editor's through its own translator.
    void compiledCataloguesInstall_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("featherLabel");
        QTest::addColumn<QString>("markDone");
        QTest::newRow("ja_JP") << QStringLiteral("ja_JP") << QStringLiteral("ファイル(&F)") << QStringLiteral("境界をぼかす:")
                               << QStringLiteral("マーク処理完了");
        QTest::newRow("de_DE") << QStringLiteral("de_DE") << QStringLiteral("&Datei") << QStringLiteral("Weiche Kante:")
                               << QStringLiteral("Markieren abgeschlossen");
        // Simplified Chinese lies under a folder of its own in the plug-in's resources.
        QTest::newRow("zh_CN") << QStringLiteral("zh_CN") << QStringLiteral("文件(&F)") << QStringLiteral("羽化:")
                               << QStringLiteral("标记完成");
    }

    void compiledCataloguesInstall()
    {
        QFETCH(QString, locale);
        QFETCH(QString, file);
        QFETCH(QString, featherLabel);
        QFETCH(QString, markDone);

        QLibrary plugin(QStringLiteral(VEXA_PLUGIN_PATH));
        QVERIFY2(plugin.load(), qPrintable(plugin.errorString()));
        using InternationalFn = QTranslator* (*)(const QString&);
        auto setInternational = reinterpret_cast<InternationalFn>(plugin.resolve("setInternational"));
        QVERIFY(setInternational);
        std::unique_ptr<QTranslator> pluginTr(setInternational(locale));
        QVERIFY(pluginTr);
        auto editorTr = std::make_unique<VexaEditorTranslations>(locale);
        QVERIFY(editorTr->isLoaded());

        QCOMPARE(QCoreApplication::translate("VexaEditorWindow", "&File"), file);
        QCOMPARE(QCoreApplication::translate("VexaToolSelectionWidgetClass", "Feather:"), featherLabel);
        QCOMPARE(QCoreApplication::translate("Thread", "Mark done"), markDone);
        // Qt's own buttons and dialogs follow the editor's language (scripts/setup installs
        // Qt's catalogues).
        QVERIFY2(QCoreApplication::translate("QPlatformTheme", "Cancel") != QLatin1String("Cancel"),
                 "Qt's catalogue for the locale is not installed");
        // A style-sheet hook goes through the translator unchanged.
        QCOMPARE(QCoreApplication::translate("VexaToolSelectionWidgetClass", "selection"), QStringLiteral("selection"));

        editorTr.reset();
        pluginTr.reset();
        QCOMPARE(QCoreApplication::translate("VexaEditorWindow", "&File"), QStringLiteral("&File"));
        QCOMPARE(QCoreApplication::translate("Thread", "Mark done"), QStringLiteral("Mark done"));
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
    }

    void unknownLocaleInstallsNothing()
    {
        VexaEditorTranslations italian(QStringLiteral("it_IT"));
        QVERIFY(!italian.isLoaded());
        QCOMPARE(QCoreApplication::translate("VexaEditorWindow", "&File"), QStringLiteral("&File"));
    }
};

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
