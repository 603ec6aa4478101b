#pragma once

#include <QRect>
#include <QString>
#include <QThread>

#include <atomic>

class VexaToolQuickSelectWidget;

// The quick select worker: each start runs one step of the segmentation that its window
// holds (0 initialise, 1 mark, 2 matte) and then finishes. It never touches a widget: its
// reports reach the window as queued signals and queued calls, in the order the step sends them.
class Thread : public QThread
{
    Q_OBJECT
public:
    explicit Thread(VexaToolQuickSelectWidget* widget);
    ~Thread() override;

    // The code of the next run; stored even while a step runs (that start is then lost).
    void setProcess(int code);
    int getProcess() const { return process.load(); }

    // Starts a run of the code stored now. A code stored after this start, while the run is
    // under way, is not the one it runs, however late the thread gets going.
    void startProcess(Priority priority = InheritPriority);

    // Asks a running step to stop at its next check; clearCancel before the next start.
    void requestCancel() { cancel.store(true); }
    void clearCancel() { cancel.store(false); }
    // Which start of the window this run belongs to, handed back when the step has ended.
    void setSerial(int value) { serial.store(value); }

    // Called by the window once a report or the thread's end has reached it: everything the
    // step wrote before that report is then the window's to read. Qt's queue and wait already
    // order this; the atomic pair makes the order visible to the race checker, which cannot see
    // inside Qt's own locks.
    void acquire() const { handoff.load(std::memory_order_acquire); }
    // From the start of a run until its step has written its last pixel: the window must not
    // read the segmentation's images meanwhile. The race checker cannot see such a read when
    // Qt's code makes it (QPainter, QImage::copy), so the window asserts on this instead.
    bool isWriting() const { return writing.load(); }

    VexaToolQuickSelectWidget* const widget;

signals:
    void progress(QString text, int percent);
    void setPainting(bool enabled);
    void setMessage(QString text);
    // The step asks the window to check a view button (1 matte, 2 alpha).
    void viewButtonRequested(int which);
    // The step has written its last pixel of `area`.
    void resultReady(QRect area);
    // The run started with `serial` has returned.
    void stepFinished(int serial);

protected:
    void run() override;

private:
    friend class ThreadReporter;
    std::atomic<int> process{0};
    int runCode = 0; // latched by startProcess before the thread starts
    std::atomic<int> serial{0};
    std::atomic<bool> cancel{false};
    std::atomic<int> handoff{0};
    std::atomic<bool> writing{false};
    void publish()
    {
        writing.store(false);
        handoff.fetch_add(1, std::memory_order_release);
    }
};
