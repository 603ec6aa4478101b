#pragma once

#include <QDialog>

// The host's dialog base.
class VexaDialog : public QDialog
{
    Q_OBJECT
public:
    explicit VexaDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = {});
    ~VexaDialog() override;

    using QDialog::show;
    // Shows the dialog without blocking. A dialog without a parent becomes a tool window of
    // the host window (above it, never behind), placed beside the current document's canvas;
    // without a host window, with `centred`, it is centred over its parent or the screen.
    void show(bool centred);

    // The editor's main window, which owns plug-in tool windows; null: none.
    static void setHostWindow(QWidget* window);
    static QWidget* hostWindow();

private:
    bool placeBesideCanvas();
};
