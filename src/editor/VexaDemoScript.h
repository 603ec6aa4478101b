#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;
class VexaEditorWindow;

// The editor's headless demonstration: drives whatever tools the plug-in provides with
// scripted gestures on the canvas, then writes a screenshot of the window, the selection
// mask, the image and a short report into a folder.
class VexaDemoScript : public QObject
{
    Q_OBJECT
public:
    VexaDemoScript(VexaEditorWindow& window, const QString& outputDir, QObject* parent = nullptr);

    // Runs the whole script; returns the process exit status (0 when every file was written).
    int run();

private:
    void wait(int ms);
    bool perform(const struct DemoGesture& gesture);
    void hostSelections();
    // Opens the color range dialog, picks a colour on the canvas, photographs the screen with
    // the dialog on it and confirms. False when the plug-in has no such tool.
    bool colorRange();
    // Opens the matting view on the photo, paints scripted strokes, floods, mattes and writes
    // gl-matte.png. False when the plug-in has no matting view.
    bool glMatting();
    bool writeResults();
    // Opens quick select, paints marks, previews, extracts the alpha, photographs the window
    // and confirms; writes the marks, the window, the mask and the image.
    bool quickSelect();
    bool driveQuickSelect(QWidget* window);

    VexaEditorWindow& m_window;
    QString m_out;
    QStringList m_log;
};
