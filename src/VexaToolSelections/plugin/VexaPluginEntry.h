#pragma once

#include <QString>
#include <QStringList>

class IVexaTool;
class QObject;


class QTranslator;
class VexaToolSelectionColorRange;

// The plug-in's entry points, exported under plain C names so a host can resolve them with
// dlsym/QLibrary without knowing the compiler's name mangling.
extern "C" {
// The names of the tools offered, in tool-box order; the list belongs to the library.
Q_DECL_EXPORT QStringList* getInstanceNames();
// A new tool for an exact, case-sensitive name (the one color range tool for "Color Range"), or null.
Q_DECL_EXPORT IVexaTool* getInstance(QObject* parent, const QString& name);
// Installs the catalogue for `locale` (such as "de_DE") and returns it, or null when there is none.
Q_DECL_EXPORT QTranslator* setInternational(const QString& locale);
// Register and unregister the embedded resources; both return 1. Loading the library registers them.
Q_DECL_EXPORT int qInitResources_Resources();
Q_DECL_EXPORT int qCleanupResources_Resources();

Q_DECL_EXPORT extern QStringList list;
Q_DECL_EXPORT extern VexaToolSelectionColorRange* instance;
}
