#include "Thread.h"

#include "VexaQuickSelectSteps.h"
#include "VexaToolQuickSelectWidget.h"

#include <QRect>

// Forwards a step's reports to the window. Everything crosses to the GUI thread as queued
// signals, the widget effects that a step asks for directly (checking the view buttons,
// recomposing the view) too, so they keep their place among the reports. Signals rather than
// queued lambdas: the arguments are then copied by Qt itself, and a functor built here and read
// there would pass through Qt's event queue, whose locks the race checker cannot see.
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
    void checkViewAlpha() override { emit t.viewButtonRequested(2); }
    void checkViewMatte() override { emit t.viewButtonRequested(1); }
    // Sent after the step's last write to the images: the window may read them from here on.
    void updateImageBox(const QRect& area) override
    {
        t.publish();
        emit t.resultReady(area);
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
    writing.store(true);
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
    publish();
    emit stepFinished(runSerial);
}
