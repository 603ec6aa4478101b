#pragma once

#include <QString>

// Host configuration: where the current skin's images and cursor pictures are.
class VexaConfig
{
public:
    static VexaConfig* getInstance();

    // Directory of cursor pictures; ends with a separator so a file name can be appended.
    QString iconDirectory;

    // Maps a default skin path ("./data/skin/vexapix_replace_style/...") to the file of the
    // current style; a path the style does not provide is returned unchanged.
    QString getStyleImageName(const QString& path) const;

private:
    VexaConfig();
    QString m_skinRoot;
};
