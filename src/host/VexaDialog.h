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
    // Shows the dialog without blocking; with `centred`, first over its parent or the screen.
    void show(bool centred);
};
