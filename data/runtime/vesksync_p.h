#ifndef VESKSYNC_P_H
#define VESKSYNC_P_H

// Internal to the library: waiting on a QWaitCondition in a way that
// ThreadSanitizer follows.

#include <QtCore/QDeadlineTimer>
#include <QtCore/QMutex>
#include <QtCore/QWaitCondition>

namespace VeskSync {

// condition.wait(&mutex, deadline). QMutex tells ThreadSanitizer about its
// lock and unlock from inline code, but QWaitCondition unlocks and relocks
// the mutex inside QtCore, which is normally built without the sanitizer:
// it would take the sleeping thread for the mutex's owner, and the thread
// that wakes it for a second owner. The two annotations here say what
// QtCore does; outside a ThreadSanitizer build they are empty.
inline bool wait(QWaitCondition& condition, QMutex& mutex,
                 QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever))
{
#ifdef QT_BUILDING_UNDER_TSAN
    QtTsan::mutexPreUnlock(&mutex, 0u);
    QtTsan::mutexPostUnlock(&mutex, 0u);
#endif
    bool const woken = condition.wait(&mutex, deadline);
#ifdef QT_BUILDING_UNDER_TSAN
    QtTsan::mutexPreLock(&mutex, 0u);
    QtTsan::mutexPostLock(&mutex, 0u, 0);
#endif
    return woken;
}

} // namespace VeskSync

#endif // VESKSYNC_P_H
