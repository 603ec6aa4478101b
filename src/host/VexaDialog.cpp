#include "VexaDialog.h"

#include "VexaCanvas.h"
#include "VexaContext.h"
#include "VexaContextManager.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

VexaDialog::VexaDialog(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
{
}

VexaDialog::~VexaDialog() = default;

namespace {
QPointer<QWidget>& hostWindowRef()
{
    static QPointer<QWidget> window;
    return window;
}
} // namespace

void VexaDialog::setHostWindow(QWidget* window)
{
    // Dialogs adopted by the previous host belong to their plug-in tools, which outlive it.
    if (QWidget* previous = hostWindowRef()) {
        for (VexaDialog* dialog : previous->findChildren<VexaDialog*>(Qt::FindDirectChildrenOnly)) {
            if (!dialog->property("vexaAdopted").toBool())
                continue;
            dialog->hide();
            dialog->setParent(nullptr, (dialog->windowFlags() & ~Qt::WindowType_Mask) | Qt::Dialog);
            dialog->setProperty("vexaAdopted", false);
        }
    }
    hostWindowRef() = window;
}
QWidget* VexaDialog::hostWindow() { return hostWindowRef(); }

bool VexaDialog::placeBesideCanvas()
{
    VexaContext* context = VexaContextManager::getInstance()->getCurrentContext();
    VexaCanvas* canvas = context ? context->getCanvas() : nullptr;
    if (!canvas || !canvas->isVisible())
        return false;
    adjustSize();
    const QRect view(canvas->mapToGlobal(QPoint(0, 0)), canvas->size());
    QScreen* screen = canvas->screen();
    const QRect room = screen ? screen->availableGeometry() : view;
    const QSize size = frameGeometry().size().expandedTo(this->size());
    // Right of the canvas where the screen has room, else inside its right edge; top-aligned.
    int x = view.right() + 1 + 8;
    if (x + size.width() > room.right() + 1)
        x = view.right() + 1 - size.width() - 8;
    x = qBound(room.left(), x, qMax(room.left(), room.right() + 1 - size.width()));
    const int y = qBound(room.top(), view.top() + 8, qMax(room.top(), room.bottom() + 1 - size.height()));
    move(x, y);
    return true;
}

void VexaDialog::show(bool centred)
{
    QWidget* host = hostWindow();
    if (!parentWidget() && host && host != this) {
        // Reparenting resets the flags: keep the frame choice, make it a tool window of the host.
        setParent(host, (windowFlags() & ~Qt::WindowType_Mask) | Qt::Tool);
        setProperty("vexaAdopted", true);
        if (placeBesideCanvas())
            centred = false;
    } else if (parentWidget() && parentWidget() == host && !isVisible()) {
        if (placeBesideCanvas())
            centred = false;
    }
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
