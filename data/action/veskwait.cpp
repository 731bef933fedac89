#include "veskwait.h"
#include "vesksync_p.h"

#include <veskwaitevent.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QThread>

#include <limits>

VeskWait::VeskWait()
    : woken(false)
{
}

VeskWait::~VeskWait() = default;

bool VeskWait::wait(unsigned long timeout)
{
    QDeadlineTimer const deadline = timeout == Forever
        ? QDeadlineTimer(QDeadlineTimer::Forever)
        : QDeadlineTimer(qint64(qMin<unsigned long>(timeout, std::numeric_limits<qint64>::max())));
    QMutexLocker locker(&mutex);
    // The loop absorbs spurious wake-ups of the condition.
    while (!woken) {
        if (!VeskSync::wait(condition, mutex, deadline))
            break;
    }
    return woken;
}

void VeskWait::wakeUp()
{
    QMutexLocker locker(&mutex);
    woken = true;
    condition.wakeAll();
}

void VeskWait::setRetValue(QList<VeskArg> const& values)
{
    retValues = values;
}

void VeskWait::setRetValue(VeskArg const& value)
{
    retValues.clear();
    retValues.append(value);
}

QList<VeskArg> VeskWait::getRetValue() const
{
    return retValues;
}

VeskArg VeskWait::sendMessage(VeskWaitEvent* event, QObject* receiver)
{
    if (!event)
        return VeskArg();
    // Read before delivery: a posted event is deleted by the receiver's queue.
    VeskWait* const waitObject = event->waitObject;
    if (!receiver || !waitObject) {
        delete event;
        delete waitObject;
        return VeskArg();
    }

    if (receiver->thread() != QThread::currentThread()) {
        {
            // The receiver's wakeUp() takes this lock after this point, so
            // what this thread did to the event comes before the receiver's
            // queue deletes it. The queue's own lock orders that too, but
            // inside QtCore, where race detectors do not look.
            QMutexLocker const locker(&waitObject->mutex);
        }
        QCoreApplication::postEvent(receiver, event);
        waitObject->wait(Forever);
    } else {
        QCoreApplication::sendEvent(receiver, event);
        delete event;
    }

    // The first value, or None when the receiver stored none.
    VeskArg const answer = waitObject->retValues.value(0);
    delete waitObject;
    return answer;
}
