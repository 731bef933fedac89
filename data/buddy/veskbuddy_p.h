#ifndef VESKBUDDY_P_H
#define VESKBUDDY_P_H

// Internal to the library: the lock behind every container link.

#include <QtCore/QMutex>

// Guards the links from children to their containers (a contact's parent, a
// meta-contact's or temporary contact's group). It is the innermost lock:
// taken on its own or under at most two container locks, and nothing else is
// locked while it is held.
QMutex& vesk_buddy_link_mutex();

#endif // VESKBUDDY_P_H
