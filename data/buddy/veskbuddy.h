#ifndef VESKBUDDY_H
#define VESKBUDDY_H

/// \file
/// VeskBuddy, the base handle of every contact-list entry.

#include "veskdata_global.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QDebug>
#include <QtCore/QMetaType>
#include <QtCore/QString>

class VeskBuddy;
class VeskBuddyPrivate;

/// The address of the entry's record (folded to the hash width), or 0 for an
/// invalid handle, mixed with the seed: consistent with operator==.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
VESK_DATA_EXPORT uint qHash(VeskBuddy const& buddy, uint seed = 0);
#else
VESK_DATA_EXPORT size_t qHash(VeskBuddy const& buddy, size_t seed = 0);
#endif

/// A handle onto one entry of the contact list. Every copy of a handle refers
/// to the same shared record, and that record is the entry's identity: a change
/// made through one handle is seen through all of them, and two handles are
/// equal exactly when they share a record. The six kind classes derive from
/// this one; a base handle converts to a kind handle through the kind's
/// constructor, which yields an invalid handle when the kinds differ.
class VESK_DATA_EXPORT VeskBuddy
{
public:
    /// The kind of an entry; fixed when the entry is made.
    enum Type : qint32 {
        Invalid = 0, ///< An invalid handle: it refers to no entry.
        Group = 1, ///< A VeskBuddyGroup.
        Meta = 2, ///< A VeskBuddyMeta.
        Contact = 3, ///< A VeskBuddyContact.
        Merged = 4, ///< A VeskBuddyMerged.
        Temporary = 5, ///< A VeskBuddyTemporary.
        Custom = 6 ///< A VeskBuddyCustom.
    };

    /// An invalid handle.
    VeskBuddy();
    /// A new entry of this name and kind, without kind data; kind classes make their entries
    /// through their own constructors.
    VeskBuddy(QString const& name, Type type);
    /// Another handle onto other's entry.
    VeskBuddy(VeskBuddy const& other);
    /// Makes this handle refer to other's entry.
    VeskBuddy& operator=(VeskBuddy const& other);
    /// Moving hands the record over without touching its count.
    VeskBuddy(VeskBuddy&& other) noexcept : d(other.d) { other.d = nullptr; }
    /// Exchanges the records; never throws.
    VeskBuddy& operator=(VeskBuddy&& other) noexcept
    {
        qSwap(d, other.d);
        return *this;
    }
    /// Drops this handle's reference; the entry's records go with the last one.
    virtual ~VeskBuddy();

    /// True when the handle refers to an entry.
    virtual bool isValid() const;
    /// The name shown for the entry; a null string for an invalid handle.
    virtual QString getDisplay() const;
    /// The entry's kind; Invalid for an invalid handle.
    Type getType() const;

    /// Shared by every handle of the entry.
    int unreadMessages() const;
    /// Sets the count for every handle of the entry; does nothing on an invalid handle.
    void setUnreadMessages(int count);

    /// True when both handles share one record (or both are invalid).
    bool operator==(VeskBuddy const& other) const;
    /// The negation of operator==().
    bool operator!=(VeskBuddy const& other) const;

protected:
    /// What a kind's conversion constructor does: shares other's record when
    /// it is of the wanted kind, and stays invalid otherwise.
    VeskBuddy(VeskBuddy const& other, Type wanted);

    /// Hands the kind's own record, just allocated, to the shared record. A
    /// null one (the allocation failed) drops the shared record as well, so a
    /// failed construction leaves an invalid handle rather than half an entry.
    void attachKindData(void* kindData);
    /// The kind's own record; null for an invalid handle.
    void* kindData() const;

    /// The shared record; null for an invalid handle.
    VeskBuddyPrivate* d;

    /// The child lists of groups and meta-contacts index their entries by
    /// record address.
    friend struct VeskBuddyChildren;
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    friend uint qHash(VeskBuddy const& buddy, uint seed);
#else
    friend size_t qHash(VeskBuddy const& buddy, size_t seed);
#endif
};

// A handle is a vtable pointer and a record pointer; its bytes may be moved
// as they are, so child lists shift their entries with a plain memory move.
Q_DECLARE_TYPEINFO(VeskBuddy, Q_RELOCATABLE_TYPE);

/// The record shared by all handles of one entry. kindData points to the
/// kind's own record (VeskBuddyGroupPrivate, VeskBuddyContactPrivate, ...,
/// according to type) and is destroyed with this one.
class VESK_DATA_EXPORT VeskBuddyPrivate
{
public:
    /// A record with one reference and no kind data.
    VeskBuddyPrivate(QString const& name, VeskBuddy::Type type);
    /// Destroys the kind record with this one.
    ~VeskBuddyPrivate();

    /// The number of handles that share the record.
    QAtomicInt ref;
    /// The entry's name.
    QString name;
    /// The entry's kind.
    VeskBuddy::Type type;
    /// The unread message count shared by every handle.
    qint32 unreadMessages;
    /// The kind's own record, owned by this one.
    void* kindData;

private:
    Q_DISABLE_COPY(VeskBuddyPrivate)
};

/// Drops one reference to a shared record; the caller whose release brings the
/// count to zero destroys it.
template<typename T>
void tAtomicDetach(T* d)
{
    if (d && !d->ref.deref())
        delete d;
}

/// Writes the entry's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddy const& buddy);
/// Writes the kind's name.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddy::Type type);

Q_DECLARE_METATYPE(VeskBuddy)
Q_DECLARE_METATYPE(VeskBuddy::Type)

#endif // VESKBUDDY_H
