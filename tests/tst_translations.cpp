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

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

const QStringList locales = {QStringLiteral("de_DE"), QStringLiteral("es_ES"), QStringLiteral("fr_FR"), QStringLiteral("ja_JP"),
                             QStringLiteral("ko_KR"), QStringLiteral("zh_CN"), QStringLiteral("zh_TW")};

// Each part's catalogues, and the sources lupdate reads for it.
const struct Part {
    const char *name, *catalogue;
    QStringList sources;
} parts[] = {{"plugin", "/src/VexaToolSelections/resources/translations/vexatoolselections", {"src/VexaToolSelections"}},
             {"editor", "/src/editor/translations/vexa-editor", {"src/editor", "src/host"}}};

struct Message {
    QString context, source, type, translatorComment; // type: "", "unfinished", "vanished", "obsolete"
    QStringList translations; // one, or the numerus forms
};

// The messages of one .ts file; `language` gets its language, `error` what went wrong.
QList<Message> readCatalogue(const QString& path, QString& language, QString& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        error = QStringLiteral("cannot read %1").arg(path);
    QXmlStreamReader xml(&file);
    QList<Message> messages;
    QString context;
    bool numerus = false;
    while (file.isOpen() && !xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = xml.name();
        const auto attribute = [&](const char* key) { return xml.attributes().value(QLatin1String(key)).toString(); };
        if (name == QLatin1String("TS"))
            language = attribute("language");
        else if (name == QLatin1String("name")) // only contexts have one
            context = xml.readElementText();
        else if (name == QLatin1String("message")) {
            messages.append(Message{context, {}, {}, {}, {}});
            numerus = attribute("numerus") == QLatin1String("yes");
        }
        else if (name == QLatin1String("source"))
            messages.last().source = xml.readElementText();
        else if (name == QLatin1String("translatorcomment"))
            messages.last().translatorComment = xml.readElementText();
        else if (name == QLatin1String("translation")) {
            messages.last().type = attribute("type");
            if (!numerus)
                messages.last().translations = QStringList{xml.readElementText()};
        }
        else if (name == QLatin1String("numerusform"))
            messages.last().translations.append(xml.readElementText());
    }
    if (xml.hasError())
        error = QStringLiteral("%1: %2 at line %3").arg(path, xml.errorString()).arg(xml.lineNumber());
    return messages;
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

// What is wrong with the translation of one text the sources hand to tr(), or nothing.
QString problemOf(const Message& m)
{
    // The quick select steps live in the widget-free core, in namespace VexaQuickSelect, and look
    // their texts up under the worker's context, Thread: filed under the namespace (when they reach
    // tr() through one of its helpers), they would never be found.
    if (m.context == QLatin1String("VexaQuickSelect"))
        return QStringLiteral("looked up under Thread at run time");
    if (!m.type.isEmpty())
        return m.type;
    if (m.translations.isEmpty() || m.translations.contains(QString()))
        return QStringLiteral("no translation");
    if (m.translatorComment.startsWith(QLatin1String("notr:")))
        return m.translations[0] == m.source ? QString() : QStringLiteral("marked notr but translated as \"%1\"").arg(m.translations[0]);
    static const QRegularExpression placeholder(QStringLiteral("%(\\d+|n)"));
    static const QRegularExpression pattern(QStringLiteral("\\*\\.\\w+"));
    for (const QString& form : m.translations) {
        if (matches(form, placeholder) != matches(m.source, placeholder))
            return QStringLiteral("placeholders differ in \"%1\"").arg(form);
        if (!matches(m.source, pattern).subtract(matches(form, pattern)).isEmpty())
            return QStringLiteral("file patterns lost in \"%1\"").arg(form);
        if (hasMnemonic(m.source) && !hasMnemonic(form))
            return QStringLiteral("mnemonic lost in \"%1\"").arg(form);
    }
    return QString();
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;

private slots:
    // Copies of the catalogues are brought in line with the sources as scripts/update-translations
    // does: a text new in the code comes in unfinished, one gone from it is marked vanished.
    void initTestCase()
    {
        for (const Part& part : parts) {
            QStringList args{"-silent", "-locations", "none"};
            for (const QString& dir : part.sources)
                args << QStringLiteral(VEXA_SOURCE_DIR "/") + dir;
            args << QStringLiteral("-ts");
            for (const QString& loc : locales) {
                args << m_dir.filePath(QStringLiteral("%1_%2.ts").arg(QLatin1String(part.name), loc));
                QVERIFY(QFile::copy(QStringLiteral(VEXA_SOURCE_DIR "%1_%2.ts").arg(QLatin1String(part.catalogue), loc), args.last()));
            }
            QProcess lupdate;
            lupdate.start(QStringLiteral(VEXA_LUPDATE), args);
            QVERIFY2(lupdate.waitForFinished(120000) && lupdate.exitCode() == 0, lupdate.readAllStandardError().constData());
        }
    }

    void everyTextTranslated_data()
    {
        QTest::addColumn<QString>("part"); QTest::addColumn<QString>("locale");
        for (const QString& loc : locales)
            for (const Part& part : parts)
                QTest::addRow("%s %s", part.name, qPrintable(loc)) << QString::fromLatin1(part.name) << loc;
    }
    void everyTextTranslated()
    {
        QFETCH(QString, part); QFETCH(QString, locale);
        QString language, error;
        const QList<Message> messages = readCatalogue(m_dir.filePath(QStringLiteral("%1_%2.ts").arg(part, locale)), language, error);
        QVERIFY2(error.isEmpty() && language == locale, qPrintable(error + language));
        QStringList problems;
        int texts = 0;
        for (const Message& m : messages) {
            if (m.type == QLatin1String("vanished") || m.type == QLatin1String("obsolete"))
                continue; // no longer in the sources
            ++texts;
            if (!problemOf(m).isEmpty())
                problems << QStringLiteral("%1: %2: \"%3\": %4").arg(locale, m.context, m.source, problemOf(m));
        }
        QVERIFY(texts >= 30); // the extraction sees the texts the catalogues are about
        // One line each: a failure message would be cut short.
        for (const QString& p : problems)
            qWarning().noquote() << p;
        QVERIFY2(problems.isEmpty(), qPrintable(QStringLiteral("%1 problem(s) in %2 %3, listed above").arg(problems.size()).arg(part, locale)));
    }
};

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
