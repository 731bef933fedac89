#ifndef VESKBUDDYGROUP_H
#define VESKBUDDYGROUP_H

/// \file
/// The containers of the contact list: groups and meta-contacts.

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

/// A heading of the contact list. It holds contacts, meta-contacts, merged,
/// custom and temporary entries (never another group) in insertion order, and
/// keeps the parent link of each child in step with its child list: placing a
/// contact or custom entry here takes it out of the container it was in.
class VESK_DATA_EXPORT VeskBuddyGroup : public VeskBuddy
{
public:
    /// An invalid handle.
    VeskBuddyGroup();
    /// Another handle onto other's entry.
    VeskBuddyGroup(VeskBuddyGroup const& other) = default;
    /// Shares other's entry when it is of this kind; invalid otherwise.
    VeskBuddyGroup(VeskBuddy const& other);
    /// A new, empty entry of this name.
    explicit VeskBuddyGroup(QString const& name);
    /// Makes this handle refer to other's entry.
    VeskBuddyGroup& operator=(VeskBuddyGroup const& other) = default;

    /// The group's own record, for the members the library has no setter
    /// for (pos, expanded); null for an invalid handle.
    VeskBuddyGroupPrivate* data() const;

    /// Appends buddy as a child and sets its parent link; false when the container refuses it. Any
    /// thread may call: the container's mutex orders the change.
    bool addBuddy(VeskBuddy const& buddy);
    /// Takes buddy out of the children and clears its parent link; the number of entries removed,
    /// -1 on an invalid group.
    int removeBuddy(VeskBuddy const& buddy);
    /// Out-of-range indexes give an invalid handle and change nothing.
    VeskBuddy removeAt(int index);
    /// Takes every child out as removeBuddy() does, and empties the
    /// meta-contacts whose group this is, clearing their children's parent
    /// links. A container and its children hold each other, so a contact list
    /// that is thrown away is cleared first; entries held elsewhere stay valid.
    void clear();
    /// The meta-contact of this name, made and appended when the group has none; an invalid handle
    /// on an invalid group.
    VeskBuddyMeta addMeta(QString const& name);

    /// The child at index; an invalid handle outside the list.
    VeskBuddy buddyAt(int index) const;
    /// The number of children; 0 for an invalid handle.
    int childCount() const;
    /// The number of children that are online.
    int onlineChildCount() const;
    /// The number of children whose presence has this flag.
    int statusChildCount(VeskPresence::Flag flag) const;
    /// True when buddy is a direct child. Never waits for the group's mutex.
    bool containsBuddy(VeskBuddy const& buddy) const;
    /// True when contact is a child, directly or inside a child entry. Never waits for the mutex.
    bool containsContact(VeskBuddyContact const& contact) const;
    /// True when the group has a meta-contact of this name. Never waits for the mutex.
    bool containsMeta(QString const& name) const;
    /// Whether the interface shows the children; false for an invalid handle.
    bool isExpanded() const;
    /// The group's position as the interface keeps it; -1 for an invalid handle.
    int getPos() const;
};

/// Several contacts shown as one entry inside a group. It holds contacts,
/// merged and custom entries.
class VESK_DATA_EXPORT VeskBuddyMeta : public VeskBuddy
{
public:
    /// An invalid handle.
    VeskBuddyMeta();
    /// Another handle onto other's entry.
    VeskBuddyMeta(VeskBuddyMeta const& other) = default;
    /// Shares other's entry when it is of this kind; invalid otherwise.
    VeskBuddyMeta(VeskBuddy const& other);
    /// A new, empty entry of this name.
    explicit VeskBuddyMeta(QString const& name);
    /// Makes this handle refer to other's entry.
    VeskBuddyMeta& operator=(VeskBuddyMeta const& other);

    /// The kind record; null for an invalid handle.
    VeskBuddyMetaPrivate* data() const;

    /// Appends buddy as a child and sets its parent link; false when the container refuses it. Any
    /// thread may call: the container's mutex orders the change.
    bool addBuddy(VeskBuddy const& buddy);
    /// Leaves the removed child's parent link as it was.
    int removeBuddy(VeskBuddy const& buddy);
    /// Takes the child at index out and returns it; out-of-range indexes give an invalid handle.
    VeskBuddy removeAt(int index);

    /// The child at index; an invalid handle outside the list.
    VeskBuddy buddyAt(int index) const;
    /// The number of children; 0 for an invalid handle.
    int childCount() const;
    /// True when contact is a child, directly or inside a child entry. Never waits for the mutex.
    bool containsContact(VeskBuddyContact const& contact) const;
    /// Whether the interface shows the children; false for an invalid handle.
    bool isExpanded() const;
    /// The group the meta-contact belongs to; invalid when none.
    VeskBuddyGroup getGroup() const;
};

/// The kind record of a group. The library reads pos and expanded and never
/// changes them; protocol and interface code write them here.
///
/// children and metas may be read and changed from outside the library too,
/// as long as mutex is held: assigning, swapping, clearing, appending and
/// replacing entries in place are all seen by the next operation. The library
/// keeps an index of children beside the list and notices any such change
/// because the index holds a shared copy of the list it was built from, which
/// a change through children must detach from. Entries taken out of children
/// directly are therefore released by the container's next operation (any
/// one, childCount() included), not at once.
///
/// containsBuddy, containsContact and containsMeta never wait for mutex: when
/// it is free they take it for a moment and read the list itself; while
/// another thread (or the calling thread) holds it they answer from the index
/// as of the last operation that held it, so changes made directly to
/// children while mutex is still held are seen once it is released.
class VESK_DATA_EXPORT VeskBuddyGroupPrivate
{
public:
    /// An empty record.
    VeskBuddyGroupPrivate();
    /// Destroys the record and its members.
    ~VeskBuddyGroupPrivate();

    /// The children in order; read or change it only while holding mutex.
    QList<VeskBuddy> children;
    /// The meta-contacts by name; read or change it only while holding mutex.
    QHash<QString, VeskBuddyMeta> metas;
    /// Guards the child list.
    QMutex mutex;
    /// The position the interface gives the group.
    qint32 pos;
    /// Whether the interface shows the children.
    bool expanded;

private:
    friend struct VeskBuddyChildren;
    /// All guarded by indexMutex, which is only ever taken innermost.
    QList<VeskBuddy> indexed;
    QHash<VeskBuddyPrivate const*, int> childIndex;
    QHash<QString, VeskBuddyMeta> indexedMetas;
    QMutex indexMutex;

    Q_DISABLE_COPY(VeskBuddyGroupPrivate)
};

/// The kind record of a meta-contact; expanded is written by code outside the
/// library. children follows the same rules as a group's.
class VESK_DATA_EXPORT VeskBuddyMetaPrivate
{
public:
    /// An empty record.
    VeskBuddyMetaPrivate();
    /// Destroys the record and its members.
    ~VeskBuddyMetaPrivate();

    /// The children in order; read or change it only while holding mutex.
    QList<VeskBuddy> children;
    /// The group the meta-contact belongs to.
    VeskBuddyGroup group;
    /// Guards the child list.
    QMutex mutex;
    /// Whether the interface shows the children.
    bool expanded;

private:
    friend struct VeskBuddyChildren;
    QList<VeskBuddy> indexed;
    QHash<VeskBuddyPrivate const*, int> childIndex;
    QMutex indexMutex;

    Q_DISABLE_COPY(VeskBuddyMetaPrivate)
};

/// Orders groups by name, ignoring letter case. Anything that is not a pair of
/// valid groups compares as "less" in both directions: sort lists of groups only.
VESK_DATA_EXPORT bool groupLessThan(VeskBuddy const& a, VeskBuddy const& b);

/// Writes the container's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyGroup const& group);
/// Writes the container's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyMeta const& meta);

Q_DECLARE_METATYPE(VeskBuddyGroup)
Q_DECLARE_METATYPE(VeskBuddyMeta)

#endif // VESKBUDDYGROUP_H
