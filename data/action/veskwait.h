#ifndef VESKWAIT_H
#define VESKWAIT_H

/// \file
/// VeskWait, the one synchronous round trip between threads.

#include "veskdata_global.h"
#include "veskarg.h"

#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QWaitCondition>

class QObject;
class VeskWaitEvent;

/// Carries an answer back to a thread that waits for it. The receiver of a
/// VeskWaitEvent stores its return values in the event's wait object, then
/// calls wakeUp(); the sender, blocked in wait(), reads them afterwards.
/// A wait object serves one round trip: once woken it stays woken.
class VESK_DATA_EXPORT VeskWait
{
public:
    /// wait(Forever) has no time limit.
    static constexpr unsigned long Forever = static_cast<unsigned long>(-1);

    /// A wait object that has not been woken.
    VeskWait();
    /// Nothing may wait on the object any more.
    ~VeskWait();

    /// Blocks until wakeUp() has been called or timeout milliseconds have
    /// passed; true when woken. A wakeUp() that came first is not lost.
    bool wait(unsigned long timeout);
    /// Wakes the sender; called by the receiver once its answer is stored.
    void wakeUp();

    /// The return values are not locked: the receiver writes them before
    /// wakeUp(), the sender reads them after wait() has returned.
    void setRetValue(QList<VeskArg> const& values);
    /// Replaces the return values by exactly this one value.
    void setRetValue(VeskArg const& value);
    /// The return values the receiver stored; read them after wait() returned true.
    QList<VeskArg> getRetValue() const;

    /// Delivers event to receiver and returns the first value the receiver
    /// stored in the event's wait object (None when it stored none). A
    /// receiver in the calling thread gets the event at once; one in another
    /// thread gets it through its event loop while the caller blocks until
    /// the receiver calls wakeUp(). Takes ownership of the event and of its
    /// wait object. A null receiver or an event without a wait object
    /// delivers nothing and gives None.
    static VeskArg sendMessage(VeskWaitEvent* event, QObject* receiver);

private:
    Q_DISABLE_COPY(VeskWait)

    bool woken;
    QWaitCondition condition;
    QMutex mutex;
    QList<VeskArg> retValues;
};

#endif // VESKWAIT_H
