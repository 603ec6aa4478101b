#include "VexaToolEnvironment.h"

#include <QElapsedTimer>
#include <QGuiApplication>

namespace VexaToolEnvironment {

namespace {
std::function<Qt::KeyboardModifiers()>& modifierSource()
{
    static std::function<Qt::KeyboardModifiers()> source;
    return source;
}
std::function<qint64()>& clockSource()
{
    static std::function<qint64()> clock;
    return clock;
}
} // namespace

Qt::KeyboardModifiers keyboardModifiers()
{
    if (modifierSource())
        return modifierSource()();
    return QGuiApplication::keyboardModifiers();
}

qint64 nowMs()
{
    if (clockSource())
        return clockSource()();
    static QElapsedTimer timer;
    if (!timer.isValid())
        timer.start();
    return timer.elapsed();
}

void setModifierSource(std::function<Qt::KeyboardModifiers()> source) { modifierSource() = std::move(source); }
void setClock(std::function<qint64()> clock) { clockSource() = std::move(clock); }

} // namespace VexaToolEnvironment
