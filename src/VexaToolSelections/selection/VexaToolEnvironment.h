#pragma once

#include <QtGlobal>
#include <qnamespace.h>

#include <functional>

// What the tools read from the outside world besides their events: the held keyboard
// modifiers and a monotonic clock. Production reads Qt's state and a QElapsedTimer; tests
// substitute both so that timing rules and modifier keys can be checked without real keys or
// sleeping.
namespace VexaToolEnvironment {

Qt::KeyboardModifiers keyboardModifiers();
// Milliseconds on a monotonic clock.
qint64 nowMs();

// Replace the sources; an empty function restores the real one.
void setModifierSource(std::function<Qt::KeyboardModifiers()> source);
void setClock(std::function<qint64()> clock);

} // namespace VexaToolEnvironment

// A stopwatch on the tools' clock, with the interface of QElapsedTimer the tools use.
class VexaStopwatch
{
public:
    void start() { m_start = VexaToolEnvironment::nowMs(); }
    qint64 restart()
    {
        const qint64 now = VexaToolEnvironment::nowMs();
        const qint64 passed = now - m_start;
        m_start = now;
        return passed;
    }
    qint64 elapsed() const { return VexaToolEnvironment::nowMs() - m_start; }

private:
    qint64 m_start = 0;
};
