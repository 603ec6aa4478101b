#pragma once

#include <QObject>

// The canvas's colour picker. While picking, a click on the canvas takes the colour under
// the pointer as the foreground colour instead of reaching the current tool.
class VexaColorPicker : public QObject
{
    Q_OBJECT
public:
    explicit VexaColorPicker(QObject* parent = nullptr);
    ~VexaColorPicker() override;

    bool isPicking() const { return m_picking; }

public slots:
    void onColorRangeToolPickStarted();
    void onColorRangeToolPickStoped();

signals:
    void pickingChanged(bool picking);

private:
    bool m_picking = false;
};
