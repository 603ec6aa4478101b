#include "Thread.h"

#include "VexaQuickSelectSteps.h"
#include "VexaToolQuickSelectWidget.h"

#include <QMetaObject>
#include <QRect>

// Forwards a step's reports to the window. Signals cross to the GUI thread queued; the widget
// effects that a step asks for directly (checking the view buttons, recomposing the view) are
// queued calls on the window, so they keep their place among the signals.
class ThreadReporter : public VexaQuickSelectReporter
{
public:
    explicit ThreadReporter(Thread& thread)
        : t(thread)
    {
    }
    void progress(const QString& text, int percent) override { emit t.progress(text, percent); }
    void setPainting(bool enabled) override { emit t.setPainting(enabled); }
    void setMessage(const QString& text) override { emit t.setMessage(text); }
    void checkViewAlpha() override
    {
        VexaToolQuickSelectWidget* w = t.widget;
        QMetaObject::invokeMethod(w, [w] { w->checkViewButton(2); }, Qt::QueuedConnection);
    }
    void checkViewMatte() override
    {
        VexaToolQuickSelectWidget* w = t.widget;
        QMetaObject::invokeMethod(w, [w] { w->checkViewButton(1); }, Qt::QueuedConnection);
    }
    void updateImageBox(const QRect& area) override
    {
        // Sent after the step's last write to the images: the window may read them from here on.
        VexaToolQuickSelectWidget* w = t.widget;
        QMetaObject::invokeMethod(w, [w, area] { w->showStepResult(area); }, Qt::QueuedConnection);
    }

private:
    Thread& t;
};

Thread::Thread(VexaToolQuickSelectWidget* owner)
    : widget(owner)
{
}

Thread::~Thread() = default;

void Thread::setProcess(int code) { process.store(code); }

void Thread::startProcess(Priority priority)
{
    if (isRunning())
        return;
    runCode = process.load();
    start(priority);
}

void Thread::run()
{
    const int code = runCode;
    const int runSerial = serial.load();
    ThreadReporter report(*this);
    VexaSegmentation& seg = widget->segmentationForStep();
    switch (code) {
    case 2:
        VexaQuickSelect::matte(seg, report, cancel);
        break;
    case 1:
        VexaQuickSelect::mark(seg, report, cancel);
        break;
    case 0:
        VexaQuickSelect::init(seg, report, cancel);
        break;
    default:
        break;
    }
    VexaToolQuickSelectWidget* w = widget;
    QMetaObject::invokeMethod(w, [w, runSerial] { w->stepEnded(runSerial); }, Qt::QueuedConnection);
}
