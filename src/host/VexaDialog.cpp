#include "VexaDialog.h"

#include <QGuiApplication>
#include <QScreen>

VexaDialog::VexaDialog(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
{
}

VexaDialog::~VexaDialog() = default;

void VexaDialog::show(bool centred)
{
    if (centred) {
        adjustSize();
        QRect area;
        if (parentWidget())
            area = parentWidget()->window()->geometry();
        else if (QScreen* screen = QGuiApplication::primaryScreen())
            area = screen->availableGeometry();
        if (area.isValid())
            move(area.center() - rect().center());
    }
    QDialog::show();
}
