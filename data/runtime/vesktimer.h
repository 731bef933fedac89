#ifndef VESKTIMER_H
#define VESKTIMER_H

/// \file
/// VeskTimer, a one-shot call-back for objects that are not QObjects.

#include "veskdata_global.h"

#include <QtCore/QPointer>
#include <QtCore/QString>

class VeskTimerPrivate;
class VeskTimerReceiver;

/// Calls back an object that is not a QObject once after a delay. The work is
/// done by a private QObject in the thread that starts the timer (which must
/// run an event loop); it deletes itself after it has fired or been stopped,
/// and the handle only keeps a guarded pointer to it, so the handle may be
/// stopped or dropped at any time.
class VESK_DATA_EXPORT VeskTimer
{
public:
    /// A timer that has not been started.
    VeskTimer();

    /// After msec milliseconds, calls receiver->timerFired(name) once, in
    /// this thread; a negative delay counts as 0, so the receiver is called as
    /// soon as the event loop runs. A timer started earlier on this handle runs
    /// on by itself.
    /// A null receiver starts nothing.
    void startTimer(VeskTimerReceiver* receiver, int msec, QString const& name);
    /// The receiver of the current timer is not called. Does nothing when the
    /// timer has already fired or been stopped, or was never started.
    void stopTimer();

private:
    QPointer<VeskTimerPrivate> d;
};

#endif // VESKTIMER_H
