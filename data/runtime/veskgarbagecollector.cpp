#include "veskgarbagecollector.h"
#include "veskgarbagecollector_p.h"

#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <new>

namespace {

// Guards VeskGarbageCollector::instance. Taken on its own only, so that an
// object asked during a tick (under the private object's mutex) may call
// getInstance().
QBasicMutex instanceLock;

// Guards the link between a handle and its private object, in both
// directions: the private object may end itself in its own thread while
// another thread calls add(). Taken before the private object's own mutex,
// never after it.
QBasicMutex linkLock;

} // namespace

VeskGarbageCollector* VeskGarbageCollector::instance = nullptr;

VeskRemovable::~VeskRemovable() = default;

VeskGarbageCollector* VeskGarbageCollector::getInstance()
{
    QMutexLocker locker(&instanceLock);
    if (!instance)
        instance = new (std::nothrow) VeskGarbageCollector;
    return instance;
}

VeskGarbageCollector::VeskGarbageCollector()
    : d(new VeskGarbageCollectorPrivate(this))
{
}

VeskGarbageCollector::~VeskGarbageCollector()
{
    {
        QMutexLocker locker(&instanceLock);
        if (instance == this)
            instance = nullptr;
    }
    VeskGarbageCollectorPrivate* collector = nullptr;
    {
        QMutexLocker locker(&linkLock);
        collector = d;
        d = nullptr;
        if (collector)
            collector->forget();
    }
    if (!collector)
        return;
    // Its timer may only be stopped in its own thread.
    if (collector->thread() == QThread::currentThread())
        delete collector;
    else
        collector->deleteLater();
}

// Makes a new private object in the calling thread when the last one has
// ended itself after remove(). Called under linkLock.
void VeskGarbageCollector::start()
{
    if (!d)
        d = new (std::nothrow) VeskGarbageCollectorPrivate(this);
}

void VeskGarbageCollector::add(VeskRemovable* object)
{
    if (!object)
        return;
    QMutexLocker locker(&linkLock);
    start();
    if (d)
        d->add(object);
}

void VeskGarbageCollector::remove()
{
    QMutexLocker locker(&linkLock);
    if (d)
        d->remove();
}

VeskGarbageCollectorPrivate::VeskGarbageCollectorPrivate(VeskGarbageCollector* owner)
    : owner(owner)
    , removeWhenEmpty(false)
    , timer(new QTimer)
{
    connect(timer, &QTimer::timeout, this, &VeskGarbageCollectorPrivate::timeout);
    timer->start(1000);
}

VeskGarbageCollectorPrivate::~VeskGarbageCollectorPrivate()
{
    delete timer;
}

void VeskGarbageCollectorPrivate::add(VeskRemovable* object)
{
    QMutexLocker locker(&mutex);
    if (object)
        removables.append(object);
}

void VeskGarbageCollectorPrivate::remove()
{
    QMutexLocker locker(&mutex);
    removeWhenEmpty = true;
}

void VeskGarbageCollectorPrivate::forget()
{
    QMutexLocker locker(&mutex);
    owner = nullptr;
}

void VeskGarbageCollectorPrivate::timeout()
{
    VeskRemovable* unused = nullptr;
    bool found = false;
    {
        // Only this object's own lock is held while the objects are asked,
        // so isUnused() may reach the collector through getInstance().
        QMutexLocker locker(&mutex);
        // A handle that let go has forgotten the list: nothing is asked.
        if (!owner)
            return;
        QList<VeskRemovable*> const snapshot = removables;
        for (VeskRemovable* object : snapshot) {
            if (!object->isUnused())
                continue;
            found = true;
            removables.removeOne(object);
            if (!removables.contains(object))
                unused = object;
            break;
        }
    }
    // Outside the locks: a destructor may wait for other threads, or hand
    // further objects to the collector.
    delete unused;
    if (!found && endIfDone()) {
        timer->stop();
        deleteLater();
    }
}

// After remove(), unties this object from its handle once the list is empty;
// an add() on the handle afterwards starts a new private object.
bool VeskGarbageCollectorPrivate::endIfDone()
{
    QMutexLocker link(&linkLock);
    QMutexLocker locker(&mutex);
    if (!owner || !removables.isEmpty() || !removeWhenEmpty)
        return false;
    owner->d = nullptr;
    owner = nullptr;
    return true;
}

VeskGarbageCollectorPrivate* VeskGarbageCollectorPrivate::of(VeskGarbageCollector* handle)
{
    QMutexLocker locker(&linkLock);
    return handle ? handle->d : nullptr;
}

QObject* veskCollectorWorker(VeskGarbageCollector* handle)
{
    return VeskGarbageCollectorPrivate::of(handle);
}
