#include "veskwaitevent.h"

VeskWaitEvent::VeskWaitEvent(VeskWait* waitObject, QEvent::Type type)
    : QEvent(type)
    , waitObject(waitObject)
{
}

VeskWaitEvent::~VeskWaitEvent() = default;
