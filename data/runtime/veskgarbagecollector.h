#ifndef VESKGARBAGECOLLECTOR_H
#define VESKGARBAGECOLLECTOR_H

/// \file
/// VeskRemovable and the process-wide VeskGarbageCollector.

#include "veskdata_global.h"

class VeskGarbageCollectorPrivate;

/// An object that may have to outlive its owner until other threads are done
/// with it. Hand it to the garbage collector instead of deleting it.
class VESK_DATA_EXPORT VeskRemovable
{
public:
    /// True when nothing uses the object any more and it may go. Called in the
    /// collector's thread while the collector's own lock is held: it may call
    /// VeskGarbageCollector::getInstance(), but not add(), remove() or the
    /// collector's destructor.
    virtual bool isUnused() = 0;
    /// Virtual: the collector deletes objects through this base.
    virtual ~VeskRemovable();
};

/// The process-wide collector of removable objects. Once a second it asks the
/// objects it holds, in the order they were added, whether they are unused,
/// and takes the first one that is out of its list and deletes it; at most one
/// object goes per second.
///
/// The collector lives in the thread of the first getInstance() call, which
/// must run an event loop. After remove() its working part ends itself at the
/// first tick that finds its list empty. The handle stays usable: the next
/// add() starts a new working part in the calling thread, which must then run
/// an event loop, so nothing handed over afterwards is lost. The handle may
/// be destroyed at any time.
class VESK_DATA_EXPORT VeskGarbageCollector
{
public:
    /// Made on the first call; null when it could not be allocated, in which
    /// case the next call tries again.
    static VeskGarbageCollector* getInstance();

    /// A collector of its own; hosts use the one getInstance() returns.
    VeskGarbageCollector();
    /// Forgets the listed objects without asking or deleting them. When called
    /// in another thread than the collector's, the collector's object is
    /// deleted later by its own thread.
    ~VeskGarbageCollector();

    /// Hands object over to the collector, which deletes it once it reports
    /// itself unused. An object added twice is asked until it has left the
    /// list twice and deleted once. A null object is ignored.
    void add(VeskRemovable* object);
    /// Ends the collector once it holds nothing.
    void remove();

private:
    Q_DISABLE_COPY(VeskGarbageCollector)
    void start();
    friend class VeskGarbageCollectorPrivate;

    VeskGarbageCollectorPrivate* d;

    static VeskGarbageCollector* instance;
};

#endif // VESKGARBAGECOLLECTOR_H
