#ifndef VESKBUDDYTYPE_H
#define VESKBUDDYTYPE_H

#include "veskdata_global.h"
#include "veskfield.h"
#include "veskpresence.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

// One subscription state of a protocol (who sees whose presence).
class VESK_DATA_EXPORT VeskSubscriptionType
{
public:
    // Null strings and priority 0: not valid.
    VeskSubscriptionType();
    VeskSubscriptionType(QString const& display, QString const& id, unsigned int priority,
                         QString const& icon);

    // Both id and display are non-empty.
    bool isValid() const;
    QString getDisplay() const;
    QString getId() const;
    unsigned int getPriority() const;
    QString getIcon() const;

    QString display;
    QString id;
    quint32 priority;
    QString icon;
};

// The shared record of a contact kind. The protocol code fills in its
// presence types, subscription types and extra-information fields directly;
// the record owns the presence and subscription types and deletes each of
// them once, when the last VeskBuddyType handle lets go.
class VESK_DATA_EXPORT VeskBuddyTypePrivate
{
public:
    VeskBuddyTypePrivate();
    ~VeskBuddyTypePrivate();

    // A presence type whose flag is flag, or null. When several share the
    // flag, which one is found follows the table's iteration order.
    VeskPresenceType* getPresenceWithFlag(VeskPresence::Flag flag) const;

    QAtomicInt ref;
    QString id;
    QString display;
    // Holds only records that are also in presences.
    QList<VeskPresenceType*> presenceList;
    QHash<QString, VeskPresenceType*> presences;
    // In the order in which lookups by id try them.
    QList<VeskSubscriptionType*> subscriptions;
    QList<VeskField> extraInfoFields;

private:
    Q_DISABLE_COPY(VeskBuddyTypePrivate)
};

// A handle onto a contact kind. Copies share the record; every copy sees
// every change made to it.
class VESK_DATA_EXPORT VeskBuddyType
{
public:
    VeskBuddyType();
    // A failed allocation leaves the handle invalid.
    VeskBuddyType(QString const& id, QString const& display);
    VeskBuddyType(VeskBuddyType const& other);
    VeskBuddyType& operator=(VeskBuddyType const& other);
    ~VeskBuddyType();

    // The record, for the protocol code to fill in; null for an invalid kind.
    VeskBuddyTypePrivate* data() const;

    bool isValid() const;
    QString getId() const;
    QString getDisplay() const;
    QList<VeskField> getExtraInfoFields() const;
    // The first subscription type with exactly this id; otherwise one with
    // empty (not null) display and id, priority 0 and a null icon.
    VeskSubscriptionType getSubscriptionWithId(QString const& id) const;

private:
    void release();

    VeskBuddyTypePrivate* d;
};

// A kind of resource (a client program a contact is connected from). Made and
// kept by the protocol code; the library never deletes one.
class VESK_DATA_EXPORT VeskBuddyResourceType
{
public:
    VeskBuddyResourceType(QString const& name, QString const& icon);

    QString name;
    QString icon;
};

// One connection of a contact: its kind and its own presence.
class VESK_DATA_EXPORT VeskBuddyResource
{
public:
    VeskBuddyResource();
    VeskBuddyResource(VeskBuddyResourceType* type, VeskPresence const& presence);

    bool isValid() const;
    QString getName() const;
    QString getIcon() const;
    VeskPresence getPresence() const;
    // -1 without a type; otherwise the presence's priority read as signed.
    int getPriority() const;

    // Same resource type; the presences take no part.
    bool operator==(VeskBuddyResource const& other) const;

    VeskBuddyResourceType* type;
    VeskPresence presence;
};

VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyType* type);
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, QList<VeskBuddyType*> const& types);

Q_DECLARE_METATYPE(VeskBuddyResource)

#endif // VESKBUDDYTYPE_H
