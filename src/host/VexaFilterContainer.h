#pragma once

#include "VexaDialog.h"
#include "VexaTitleWidget.h"

// A framed host window around a plug-in's content widget, with the host's title bar.
class VexaFilterContainer : public VexaDialog
{
    Q_OBJECT
public:
    // `resizable`: the user may resize the window, otherwise it keeps the content's size.
    // `stayOnTop`: the window stays above the editor.
    VexaFilterContainer(QWidget* content, VexaTitleWidget::TitleButtonFlag buttons, bool resizable,
                        QWidget* parent, bool stayOnTop);
    ~VexaFilterContainer() override;

    QWidget* content() const { return m_content; }
    VexaTitleWidget* titleWidget() const { return m_title; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_content;
    VexaTitleWidget* m_title;
};
