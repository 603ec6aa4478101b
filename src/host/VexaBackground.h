#pragma once

#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>

#include <cstddef>
#include <mutex>
#include <utility>

// Work on this many bytes (8 MB: a mask of 8 Mpx, a layer of 2 Mpx) or more goes to a pool
// thread; less takes a few milliseconds, under what handing it over costs, and stays in step
// with the caller.
constexpr size_t VexaAsideBytes = size_t(1) << 23;

// Qt hands work to its pool and reports it done through locks inside its own libraries, where
// race checkers cannot see them. This lock, taken by the work and by its caller before and
// after, states the same order in the open: what the caller wrote before is seen by the work,
// and what the work wrote is seen by the caller after.
class VexaHandOff
{
public:
    VexaHandOff() = default;
    VexaHandOff(const VexaHandOff&) = delete;
    VexaHandOff& operator=(const VexaHandOff&) = delete;

    void pass() { const std::lock_guard<std::mutex> hold(m_lock); }
    template <class Work>
    auto wrap(Work work)
    {
        return [this, work = std::move(work)]() mutable {
            const std::lock_guard<std::mutex> hold(m_lock);
            return work();
        };
    }

private:
    std::mutex m_lock;
};

// Runs `work` on a pool thread and returns its result. Meanwhile this thread's event loop goes
// on, so windows keep drawing and timers keep firing, while user input waits in the queue: no
// second command starts on data the work is still writing. `work` must touch no widget, and
// nothing on this thread may write what it reads, or read what it writes, until it returns.
template <class Work>
auto VexaRunAside(Work work) -> decltype(work())
{
    using Result = decltype(work());
    VexaHandOff handOff;
    QFutureWatcher<Result> watcher;
    QEventLoop wait;
    QObject::connect(&watcher, &QFutureWatcher<Result>::finished, &wait, &QEventLoop::quit);
    handOff.pass();
    watcher.setFuture(QtConcurrent::run(handOff.wrap(std::move(work))));
    if (!watcher.isFinished())
        wait.exec(QEventLoop::ExcludeUserInputEvents);
    handOff.pass();
    return watcher.result();
}
