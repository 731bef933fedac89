#ifndef VESKBUDDY_P_H
#define VESKBUDDY_P_H

// Internal to the library: the lock behind every container link and the
// reader that takes it.

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

// Guards the links from children to their containers (a contact's parent, a
// meta-contact's or temporary contact's group). It is the innermost lock:
// taken on its own or under at most two container locks, and nothing else is
// locked while it is held.
QMutex& vesk_buddy_link_mutex();

// Container links are written by the containers under the link lock, so
// they are read under it too.
template<typename Handle>
Handle vesk_buddy_read_link(Handle const& link)
{
    QMutexLocker locker(&vesk_buddy_link_mutex());
    return link;
}

#endif // VESKBUDDY_P_H
