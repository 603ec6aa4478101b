#pragma once

#include <QString>

// Where the editor finds its plug-in and sample photo: first where an install puts them beside
// the running program (any prefix, or a package unpacked anywhere), then where the build
// tree has them, so the same binary works installed and straight from the build folder.
namespace VexaInstallLayout {

QString pluginPath();
QString samplePhoto();

} // namespace VexaInstallLayout
