#pragma once

#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>

#include <cstddef>
#include <utility>

// Work on this many bytes (8 MB: a mask of 8 Mpx, a layer of 2 Mpx) or more goes to a pool
// thread; less takes a few milliseconds, under what handing it over costs, and stays in step
// with the caller.
constexpr size_t VexaAsideBytes = size_t(1) << 23;

// Runs `work` on a pool thread and returns its result. Meanwhile this thread's event loop goes
// on, so windows keep drawing and timers keep firing, while user input waits in the queue: no
// second command starts on data the work is still writing. `work` must touch no widget, and
// nothing on this thread may write what it reads, or read what it writes, until it returns.
template <class Work>
auto VexaRunAside(Work work) -> decltype(work())
{
    using Result = decltype(work());
    QFutureWatcher<Result> watcher;
    QEventLoop wait;
    QObject::connect(&watcher, &QFutureWatcher<Result>::finished, &wait, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run(std::move(work)));
    if (!watcher.isFinished())
        wait.exec(QEventLoop::ExcludeUserInputEvents);
    return watcher.result();
}
