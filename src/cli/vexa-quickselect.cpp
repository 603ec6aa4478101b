#include "VexaQuickSelectCli.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vexa-quickselect"));
    return VexaQuickSelectCli::run(QCoreApplication::arguments());
}
