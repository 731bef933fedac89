#ifndef VESKGARBAGECOLLECTOR_P_H
#define VESKGARBAGECOLLECTOR_P_H

#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QObject>

#include "veskdata_global.h"

class QTimer;
class VeskGarbageCollector;
class VeskRemovable;

// The collector's working part: the list, its lock and the one-second timer.
// It lives in the thread that made it; timeout() runs there.
class VeskGarbageCollectorPrivate : public QObject
{
    Q_OBJECT
public:
    explicit VeskGarbageCollectorPrivate(VeskGarbageCollector* owner);
    ~VeskGarbageCollectorPrivate() override;

    void add(VeskRemovable* object);
    void remove();
    // Called by a handle that lets go of this object.
    void forget();

    // The handle that refers to this object; null once either has let go of
    // the other. Changed under both the lock that guards the handle's d and
    // mutex, so either is enough to read it.
    VeskGarbageCollector* owner;

    static VeskGarbageCollectorPrivate* of(VeskGarbageCollector* handle);

public slots:
    void timeout();

private:
    bool endIfDone();

    QList<VeskRemovable*> removables;
    bool removeWhenEmpty;
    QMutex mutex;
    QTimer* timer;
};

// The working part behind handle, or null when it has none: lets a test run a
// tick by invoking its timeout() slot instead of waiting a second for it.
VESK_DATA_EXPORT QObject* veskCollectorWorker(VeskGarbageCollector* handle);

#endif // VESKGARBAGECOLLECTOR_P_H
