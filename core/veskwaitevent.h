#ifndef VESKWAITEVENT_H
#define VESKWAITEVENT_H

/// \file
/// VeskWaitEvent, the event that carries a VeskWait to its receiver.

#include "veskcore_global.h"

#include <QtCore/QEvent>

class VeskWait;

/// An event that carries a wait object to its receiver. The receiver stores
/// its answer in the wait object and wakes the sender; the event never owns
/// the wait object.
class VESK_CORE_EXPORT VeskWaitEvent : public QEvent
{
public:
    /// The event type unless the sender asks for another one.
    static constexpr QEvent::Type DefaultType = static_cast<QEvent::Type>(QEvent::User + 10);

    /// An event of type type that carries waitObject; the event does not take ownership of it.
    explicit VeskWaitEvent(VeskWait* waitObject, QEvent::Type type = VeskWaitEvent::DefaultType);
    /// Does not delete the wait object.
    ~VeskWaitEvent() override;

    /// Where the receiver stores its answer before it calls VeskWait::wakeUp().
    VeskWait* waitObject;
};

#endif // VESKWAITEVENT_H
