#pragma once

#include <QString>
#include <QTranslator>

// The editor's own texts in the language of a locale such as ja_JP, and Qt's standard dialogs
// and buttons in the same language, installed for the object's lifetime. The plug-in installs
// its catalogue itself (setInternational); the tool names it hands out stay as they are.
class VexaEditorTranslations
{
public:
    explicit VexaEditorTranslations(const QString& locale);
    ~VexaEditorTranslations();
    VexaEditorTranslations(const VexaEditorTranslations&) = delete;
    VexaEditorTranslations& operator=(const VexaEditorTranslations&) = delete;

    // Whether the editor has a catalogue for the locale; without one nothing is installed.
    bool isLoaded() const { return m_editorInstalled; }

private:
    QTranslator m_editor;
    QTranslator m_qt;
    bool m_editorInstalled = false;
    bool m_qtInstalled = false;
};
