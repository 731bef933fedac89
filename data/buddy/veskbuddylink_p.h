#ifndef VESKBUDDYLINK_P_H
#define VESKBUDDYLINK_P_H

// Internal to the library: the links from children to their containers and
// the steps groups and meta-contacts share to change and read their child
// lists under their own locks.

#include "veskbuddychildren_p.h"
#include "veskbuddycontact.h"

#include <QtCore/QList>
#include <QtCore/QMutex>

#include <functional>

namespace VeskBuddyLink {

// Locks one or two container mutexes, always in address order, so that two
// moves between the same two containers in opposite directions cannot each
// hold one mutex while waiting for the other.
class PairLocker
{
public:
    PairLocker(QMutex* own, QMutex* other)
        : first(own), second(other)
    {
        if (second && std::less<QMutex*>()(second, first))
            qSwap(first, second);
        first->lock();
        if (second)
            second->lock();
    }
    ~PairLocker()
    {
        if (second)
            second->unlock();
        first->unlock();
    }

private:
    Q_DISABLE_COPY(PairLocker)
    QMutex* first;
    QMutex* second;
};

// The container child's link names; an invalid handle for kinds without one.
VeskBuddy readLink(VeskBuddy const& child);

// Points child's link at container if it still points at expected, and says
// whether it did; false for kinds without a link.
bool replaceLink(VeskBuddy const& child, VeskBuddy const& expected, VeskBuddy const& container);

// Points child's link at container, whatever it pointed at before.
void setLink(VeskBuddy const& child, VeskBuddy const& container);

// Clears child's link if it points at container; says whether it did.
bool clearLinkIf(VeskBuddy const& child, VeskBuddy const& container);

// The mutex of a group or meta-contact; null for any other entry.
QMutex* containerMutex(VeskBuddy const& container);

// Takes child out of the child list of a group or meta-contact whose mutex
// the caller holds. The child's link is the caller's business.
void removeFromContainer(VeskBuddy const& container, VeskBuddy const& child);

// Whether contact is in children, itself, in a merged entry or, when
// lookIntoMetas is set, in a meta-contact.
bool listHoldsContact(QList<VeskBuddy> const& children, VeskBuddyContact const& contact,
                      bool lookIntoMetas);

// Runs step on the kind record of a group or meta-contact under its mutex;
// an invalid handle has no record and gets the fallback.
template<typename Record, typename Result, typename Step>
Result underLock(Record* record, Result fallback, Step&& step)
{
    if (!record)
        return fallback;
    QMutexLocker locker(&record->mutex);
    VeskBuddyChildren::refresh(*record);
    return step(*record);
}

// Places a contact or custom entry into container, taking it out of the
// container its link names. Both containers are locked together in a fixed
// order; the link is re-read under those locks and the whole step retried if
// another thread moved the child in between.
template<typename Record>
bool moveInto(VeskBuddy const& container, Record* record, VeskBuddy const& child)
{
    if (!record)
        return false;
    for (;;) {
        VeskBuddy const previous = readLink(child);
        bool const elsewhere = previous != container;
        PairLocker locker(&record->mutex, elsewhere ? containerMutex(previous) : nullptr);
        if (VeskBuddyChildren::contains(*record, child))
            return false;
        if (!replaceLink(child, previous, container))
            continue;
        if (elsewhere)
            removeFromContainer(previous, child);
        VeskBuddyChildren::appendNew(*record, child);
        return true;
    }
}

// Appends a meta-contact, merged or temporary entry and points its link here;
// the container it was in is not told.
template<typename Record>
bool appendLinked(VeskBuddy const& container, Record* record, VeskBuddy const& child)
{
    return underLock(record, false, [&container, &child](Record& locked) {
        if (!VeskBuddyChildren::appendNew(locked, child))
            return false;
        setLink(child, container);
        return true;
    });
}

template<typename Record>
VeskBuddy takeChildAt(Record* record, int index)
{
    return underLock(record, VeskBuddy(), [index](Record& locked) {
        return VeskBuddyChildren::takeAt(locked, index);
    });
}

template<typename Record>
VeskBuddy childAt(Record* record, int index)
{
    return underLock(record, VeskBuddy(), [index](Record& locked) {
        return VeskBuddyChildren::at(locked, index);
    });
}

template<typename Record>
int countChildren(Record* record)
{
    return underLock(record, -1, [](Record& locked) { return int(locked.children.size()); });
}

// Containers are walked on a copy of their list, taken without waiting for
// any lock and read without holding one, so that looking into nested
// meta-contacts never holds two locks.
template<typename Record>
bool holdsContact(Record* record, VeskBuddyContact const& contact, bool lookIntoMetas)
{
    if (!record)
        return false;
    QList<VeskBuddy> children = VeskBuddyChildren::snapshot(*record);
    bool const found = listHoldsContact(children, contact, lookIntoMetas);
    VeskBuddyChildren::release(*record, children);
    return found;
}

} // namespace VeskBuddyLink

#endif // VESKBUDDYLINK_P_H
