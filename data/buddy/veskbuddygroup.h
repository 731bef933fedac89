#ifndef VESKBUDDYGROUP_H
#define VESKBUDDYGROUP_H

#include "veskdata_global.h"
#include "veskbuddy.h"
#include "veskpresence.h"

#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QString>

class VeskBuddyContact;
class VeskBuddyGroupPrivate;
class VeskBuddyMeta;
class VeskBuddyMetaPrivate;

// A heading of the contact list. It holds contacts, meta-contacts, merged,
// custom and temporary entries (never another group) in insertion order, and
// keeps the parent link of each child in step with its child list: placing a
// contact or custom entry here takes it out of the container it was in.
class VESK_DATA_EXPORT VeskBuddyGroup : public VeskBuddy
{
public:
    VeskBuddyGroup();
    VeskBuddyGroup(VeskBuddyGroup const& other) = default;
    VeskBuddyGroup(VeskBuddy const& other);
    explicit VeskBuddyGroup(QString const& name);
    VeskBuddyGroup& operator=(VeskBuddyGroup const& other) = default;

    // The group's own record, for the members the library has no setter
    // for (pos, expanded); null for an invalid handle.
    VeskBuddyGroupPrivate* data() const;

    bool addBuddy(VeskBuddy const& buddy);
    int removeBuddy(VeskBuddy const& buddy);
    // Out-of-range indexes give an invalid handle and change nothing.
    VeskBuddy removeAt(int index);
    VeskBuddyMeta addMeta(QString const& name);

    VeskBuddy buddyAt(int index) const;
    int childCount() const;
    int onlineChildCount() const;
    int statusChildCount(VeskPresence::Flag flag) const;
    bool containsBuddy(VeskBuddy const& buddy) const;
    bool containsContact(VeskBuddyContact const& contact) const;
    bool containsMeta(QString const& name) const;
    bool isExpanded() const;
    int getPos() const;
};

// Several contacts shown as one entry inside a group. It holds contacts,
// merged and custom entries.
class VESK_DATA_EXPORT VeskBuddyMeta : public VeskBuddy
{
public:
    VeskBuddyMeta();
    VeskBuddyMeta(VeskBuddyMeta const& other) = default;
    VeskBuddyMeta(VeskBuddy const& other);
    explicit VeskBuddyMeta(QString const& name);
    VeskBuddyMeta& operator=(VeskBuddyMeta const& other);

    VeskBuddyMetaPrivate* data() const;

    bool addBuddy(VeskBuddy const& buddy);
    // Leaves the removed child's parent link as it was.
    int removeBuddy(VeskBuddy const& buddy);
    VeskBuddy removeAt(int index);

    VeskBuddy buddyAt(int index) const;
    int childCount() const;
    bool containsContact(VeskBuddyContact const& contact) const;
    bool isExpanded() const;
    VeskBuddyGroup getGroup() const;
};

// The kind record of a group. The library reads pos and expanded and never
// changes them; protocol and interface code write them here.
//
// children and metas may be read and changed from outside the library too,
// as long as mutex is held: assigning, swapping, clearing, appending and
// replacing entries in place are all seen by the next operation. The library
// keeps an index of children beside the list and notices any such change
// because the index holds a shared copy of the list it was built from, which
// a change through children must detach from. Entries taken out of children
// directly are therefore released by the container's next operation (any
// one, childCount() included), not at once.
//
// containsBuddy, containsContact and containsMeta never wait for mutex: when
// it is free they take it for a moment and read the list itself; while
// another thread (or the calling thread) holds it they answer from the index
// as of the last operation that held it, so changes made directly to
// children while mutex is still held are seen once it is released.
class VESK_DATA_EXPORT VeskBuddyGroupPrivate
{
public:
    VeskBuddyGroupPrivate();
    ~VeskBuddyGroupPrivate();

    QList<VeskBuddy> children;
    QHash<QString, VeskBuddyMeta> metas;
    QMutex mutex;
    qint32 pos;
    bool expanded;

private:
    friend struct VeskBuddyChildren;
    // All guarded by indexMutex, which is only ever taken innermost.
    QList<VeskBuddy> indexed;
    QHash<VeskBuddyPrivate const*, int> childIndex;
    QHash<QString, VeskBuddyMeta> indexedMetas;
    QMutex indexMutex;

    Q_DISABLE_COPY(VeskBuddyGroupPrivate)
};

// The kind record of a meta-contact; expanded is written by code outside the
// library. children follows the same rules as a group's.
class VESK_DATA_EXPORT VeskBuddyMetaPrivate
{
public:
    VeskBuddyMetaPrivate();
    ~VeskBuddyMetaPrivate();

    QList<VeskBuddy> children;
    VeskBuddyGroup group;
    QMutex mutex;
    bool expanded;

private:
    friend struct VeskBuddyChildren;
    QList<VeskBuddy> indexed;
    QHash<VeskBuddyPrivate const*, int> childIndex;
    QMutex indexMutex;

    Q_DISABLE_COPY(VeskBuddyMetaPrivate)
};

// Orders groups by name, ignoring letter case. Anything that is not a pair of
// valid groups compares as "less" in both directions: sort lists of groups only.
VESK_DATA_EXPORT bool groupLessThan(VeskBuddy const& a, VeskBuddy const& b);

VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyGroup const& group);
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyMeta const& meta);

Q_DECLARE_METATYPE(VeskBuddyGroup)
Q_DECLARE_METATYPE(VeskBuddyMeta)

#endif // VESKBUDDYGROUP_H
