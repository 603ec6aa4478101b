#include "VexaEditorTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

VexaEditorTranslations::VexaEditorTranslations(const QString& locale)
{
    // Catalogues are named by the full locale, like the plug-in's; no fallback to another
    // country's variant (zh_CN and zh_TW differ in script).
    if (locale.isEmpty() || !m_editor.load(QStringLiteral(":/i18n/vexa-editor_") + locale + QStringLiteral(".qm")))
        return;
    m_editorInstalled = QCoreApplication::installTranslator(&m_editor);
    // Qt's file, colour and message dialogs in the same language, where the system has them;
    // only beside the editor's own catalogue, so that a window never mixes two languages.
    if (m_qt.load(QLocale(locale), QStringLiteral("qtbase"), QStringLiteral("_"),
                  QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        m_qtInstalled = QCoreApplication::installTranslator(&m_qt);
}

VexaEditorTranslations::~VexaEditorTranslations()
{
    if (m_qtInstalled)
        QCoreApplication::removeTranslator(&m_qt);
    if (m_editorInstalled)
        QCoreApplication::removeTranslator(&m_editor);
}
