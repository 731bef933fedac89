#ifndef VESKBUDDYTYPE_H
#define VESKBUDDYTYPE_H

/// \file
/// Protocol descriptors: VeskBuddyType, subscription types and resources.

#include "veskdata_global.h"
#include "veskfield.h"
#include "veskpresence.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

/// One subscription state of a protocol (who sees whose presence).
class VESK_DATA_EXPORT VeskSubscriptionType
{
public:
    /// Null strings and priority 0: not valid.
    VeskSubscriptionType();
    /// A subscription state with these members.
    VeskSubscriptionType(QString const& display, QString const& id, unsigned int priority,
                         QString const& icon);

    /// Both id and display are non-empty.
    bool isValid() const;
    /// The name shown to the user.
    QString getDisplay() const;
    /// The protocol's id.
    QString getId() const;
    /// The rank among its kind's states.
    unsigned int getPriority() const;
    /// The icon file; may be empty.
    QString getIcon() const;

    /// The name shown to the user.
    QString display;
    /// The protocol's id.
    QString id;
    /// The rank among its kind's states.
    quint32 priority;
    /// The icon file.
    QString icon;
};

/// The shared record of a contact kind. The protocol code fills in its
/// presence types, subscription types and extra-information fields directly;
/// the record owns the presence and subscription types and deletes each of
/// them once, when the last VeskBuddyType handle lets go.
class VESK_DATA_EXPORT VeskBuddyTypePrivate
{
public:
    /// An empty kind record with no handle yet.
    VeskBuddyTypePrivate();
    /// Deletes the presence and subscription types, each once.
    ~VeskBuddyTypePrivate();

    /// A presence type whose flag is flag, or null. When several share the
    /// flag, which one is found follows the table's iteration order.
    VeskPresenceType* getPresenceWithFlag(VeskPresence::Flag flag) const;

    /// The number of handles that share the record.
    QAtomicInt ref;
    /// The protocol's id.
    QString id;
    /// The name shown to the user.
    QString display;
    /// Holds only records that are also in presences.
    QList<VeskPresenceType*> presenceList;
    /// The presence types by id; owned.
    QHash<QString, VeskPresenceType*> presences;
    /// In the order in which lookups by id try them.
    QList<VeskSubscriptionType*> subscriptions;
    /// The extra-information fields a contact of the kind may have.
    QList<VeskField> extraInfoFields;

private:
    Q_DISABLE_COPY(VeskBuddyTypePrivate)
};

/// A handle onto a contact kind. Copies share the record; every copy sees
/// every change made to it.
class VESK_DATA_EXPORT VeskBuddyType
{
public:
    /// An invalid kind, without a record.
    VeskBuddyType();
    /// A failed allocation leaves the handle invalid.
    VeskBuddyType(QString const& id, QString const& display);
    /// Shares other's record.
    VeskBuddyType(VeskBuddyType const& other);
    /// Shares other's record and lets go of the old one.
    VeskBuddyType& operator=(VeskBuddyType const& other);
    /// Drops this handle; the last one deletes the record with its presence and subscription types.
    ~VeskBuddyType();

    /// The record, for the protocol code to fill in; null for an invalid kind.
    VeskBuddyTypePrivate* data() const;

    /// True when the handle has a record.
    bool isValid() const;
    /// The protocol's id.
    QString getId() const;
    /// The name shown to the user.
    QString getDisplay() const;
    /// The extra-information fields; empty for an invalid kind.
    QList<VeskField> getExtraInfoFields() const;
    /// The first subscription type with exactly this id; otherwise one with
    /// empty (not null) display and id, priority 0 and a null icon.
    VeskSubscriptionType getSubscriptionWithId(QString const& id) const;

private:
    void release();

    VeskBuddyTypePrivate* d;
};

/// A kind of resource (a client program a contact is connected from). Made and
/// kept by the protocol code; the library never deletes one.
class VESK_DATA_EXPORT VeskBuddyResourceType
{
public:
    /// A resource kind of this name and icon.
    VeskBuddyResourceType(QString const& name, QString const& icon);

    /// The resource kind's name.
    QString name;
    /// The icon file.
    QString icon;
};

/// One connection of a contact: its kind and its own presence.
class VESK_DATA_EXPORT VeskBuddyResource
{
public:
    /// A resource without a type: invalid.
    VeskBuddyResource();
    /// A connection of kind type (not owned) with its presence.
    VeskBuddyResource(VeskBuddyResourceType* type, VeskPresence const& presence);

    /// True when the handle has a record.
    bool isValid() const;
    /// The name of the resource kind; a null string without a type.
    QString getName() const;
    /// The icon file; may be empty.
    QString getIcon() const;
    /// The connection's presence.
    VeskPresence getPresence() const;
    /// -1 without a type; otherwise the presence's priority read as signed.
    int getPriority() const;

    /// Same resource type; the presences take no part.
    bool operator==(VeskBuddyResource const& other) const;

    /// The resource kind; not owned.
    VeskBuddyResourceType* type;
    /// The connection's presence.
    VeskPresence presence;
};

/// Writes the kind's exact debug text; a null pointer is written as such.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyType* type);
/// Writes each kind in turn.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, QList<VeskBuddyType*> const& types);

Q_DECLARE_METATYPE(VeskBuddyResource)

#endif // VESKBUDDYTYPE_H
