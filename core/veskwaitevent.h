#ifndef VESKWAITEVENT_H
#define VESKWAITEVENT_H

#include "veskcore_global.h"

#include <QtCore/QEvent>

class VeskWait;

// An event that carries a wait object to its receiver. The receiver stores
// its answer in the wait object and wakes the sender; the event never owns
// the wait object.
class VESK_CORE_EXPORT VeskWaitEvent : public QEvent
{
public:
    static constexpr QEvent::Type DefaultType = static_cast<QEvent::Type>(QEvent::User + 10);

    explicit VeskWaitEvent(VeskWait* waitObject, QEvent::Type type = VeskWaitEvent::DefaultType);
    ~VeskWaitEvent() override;

    VeskWait* waitObject;
};

#endif // VESKWAITEVENT_H
