#pragma once

#include <QEventLoop>
#include <QObject>
#include <QTimer>

// Runs the event loop (sleeping between events, as a GUI does) until `done` holds.
template <class Done>
void runUntil(Done done)
{
    QEventLoop loop;
    QTimer poll;
    poll.setInterval(1);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (done())
            loop.quit();
    });
    poll.start();
    if (!done())
        loop.exec();
}
