#pragma once

#include <QString>

// Where the editor finds its plug-in and sample photo: first where an install puts them beside
// the running program (any prefix, or a package unpacked anywhere), then where the build
// tree has them, so the same binary works installed and straight from the build folder.
namespace VexaInstallLayout {

QString pluginPath();
QString samplePhoto();
// Names the application's desktop entry and gives its windows the installed icon (the theme's
// when the program runs from the build tree).
void setDesktopIdentity();

} // namespace VexaInstallLayout
