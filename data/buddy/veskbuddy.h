#ifndef VESKBUDDY_H
#define VESKBUDDY_H

#include "veskdata_global.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QDebug>
#include <QtCore/QMetaType>
#include <QtCore/QString>

class VeskBuddy;
class VeskBuddyPrivate;

// The address of the entry's record (folded to the hash width), or 0 for an
// invalid handle, mixed with the seed: consistent with operator==.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
VESK_DATA_EXPORT uint qHash(VeskBuddy const& buddy, uint seed = 0);
#else
VESK_DATA_EXPORT size_t qHash(VeskBuddy const& buddy, size_t seed = 0);
#endif

// A handle onto one entry of the contact list. Every copy of a handle refers
// to the same shared record, and that record is the entry's identity: a change
// made through one handle is seen through all of them, and two handles are
// equal exactly when they share a record. The six kind classes derive from
// this one; a base handle converts to a kind handle through the kind's
// constructor, which yields an invalid handle when the kinds differ.
class VESK_DATA_EXPORT VeskBuddy
{
public:
    enum Type : qint32 {
        Invalid = 0,
        Group = 1,
        Meta = 2,
        Contact = 3,
        Merged = 4,
        Temporary = 5,
        Custom = 6
    };

    VeskBuddy();
    VeskBuddy(QString const& name, Type type);
    VeskBuddy(VeskBuddy const& other);
    VeskBuddy& operator=(VeskBuddy const& other);
    // Moving hands the record over without touching its count.
    VeskBuddy(VeskBuddy&& other) noexcept : d(other.d) { other.d = nullptr; }
    VeskBuddy& operator=(VeskBuddy&& other) noexcept
    {
        qSwap(d, other.d);
        return *this;
    }
    virtual ~VeskBuddy();

    virtual bool isValid() const;
    virtual QString getDisplay() const;
    Type getType() const;

    // Shared by every handle of the entry.
    int unreadMessages() const;
    void setUnreadMessages(int count);

    bool operator==(VeskBuddy const& other) const;
    bool operator!=(VeskBuddy const& other) const;

protected:
    // What a kind's conversion constructor does: shares other's record when
    // it is of the wanted kind, and stays invalid otherwise.
    VeskBuddy(VeskBuddy const& other, Type wanted);

    // Hands the kind's own record, just allocated, to the shared record. A
    // null one (the allocation failed) drops the shared record as well, so a
    // failed construction leaves an invalid handle rather than half an entry.
    void attachKindData(void* kindData);
    void* kindData() const;

    VeskBuddyPrivate* d;

    // The child lists of groups and meta-contacts index their entries by
    // record address.
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

// The record shared by all handles of one entry. kindData points to the
// kind's own record (VeskBuddyGroupPrivate, VeskBuddyContactPrivate, ...,
// according to type) and is destroyed with this one.
class VESK_DATA_EXPORT VeskBuddyPrivate
{
public:
    VeskBuddyPrivate(QString const& name, VeskBuddy::Type type);
    ~VeskBuddyPrivate();

    QAtomicInt ref;
    QString name;
    VeskBuddy::Type type;
    qint32 unreadMessages;
    void* kindData;

private:
    Q_DISABLE_COPY(VeskBuddyPrivate)
};

// Drops one reference to a shared record; the caller whose release brings the
// count to zero destroys it.
template<typename T>
void tAtomicDetach(T* d)
{
    if (d && !d->ref.deref())
        delete d;
}

VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddy const& buddy);
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddy::Type type);

Q_DECLARE_METATYPE(VeskBuddy)
Q_DECLARE_METATYPE(VeskBuddy::Type)

#endif // VESKBUDDY_H
