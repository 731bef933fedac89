#include "vesktimer.h"
#include "vesktimer_p.h"

#include <veskplugin.h>

#include <QtCore/QTimer>

VeskTimer::VeskTimer() = default;

void VeskTimer::startTimer(VeskTimerReceiver* receiver, int msec, QString const& name)
{
    auto* const timer = new VeskTimerPrivate;
    d = timer;
    timer->startTimer(receiver, msec, name);
}

void VeskTimer::stopTimer()
{
    if (d)
        d->stopTimer();
}

VeskTimerPrivate::VeskTimerPrivate()
    : receiver(nullptr)
    , timer(nullptr)
{
}

VeskTimerPrivate::~VeskTimerPrivate() = default;

void VeskTimerPrivate::startTimer(VeskTimerReceiver* receiver, int msec, QString const& name)
{
    if (!receiver) {
        // Nobody would ever stop or fire it: it would only leak.
        deleteLater();
        return;
    }
    this->receiver = receiver;
    this->name = name;
    // Each start makes a new private object, so this one has no timer yet.
    timer = new QTimer(this);
    // The object goes after the first expiry anyway; single shot makes sure
    // that no second expiry reaches the receiver before it has gone.
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, &VeskTimerPrivate::timeout);
    // QTimer refuses a negative interval and would never fire, keeping this
    // object for good; a delay that has already passed fires at once.
    timer->start(qMax(msec, 0));
}

void VeskTimerPrivate::stopTimer()
{
    if (timer)
        timer->stop();
    deleteLater();
}

void VeskTimerPrivate::timeout()
{
    receiver->timerFired(name);
    deleteLater();
}
