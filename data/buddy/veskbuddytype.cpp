#include "veskbuddytype.h"

#include "veskdebug_p.h"

#include <QtCore/QSet>

#include <new>

VeskSubscriptionType::VeskSubscriptionType()
    : priority(0)
{
}

VeskSubscriptionType::VeskSubscriptionType(QString const& display, QString const& id,
                                           unsigned int priority, QString const& icon)
    : display(display), id(id), priority(priority), icon(icon)
{
}

bool VeskSubscriptionType::isValid() const
{
    return !id.isEmpty() && !display.isEmpty();
}

QString VeskSubscriptionType::getDisplay() const { return display; }
QString VeskSubscriptionType::getId() const { return id; }
unsigned int VeskSubscriptionType::getPriority() const { return priority; }
QString VeskSubscriptionType::getIcon() const { return icon; }

VeskBuddyTypePrivate::VeskBuddyTypePrivate()
    : ref(1)
{
}

// The same record may have been filed twice (under two ids, or twice in the
// list); each one is still deleted only once.
VeskBuddyTypePrivate::~VeskBuddyTypePrivate()
{
    QSet<VeskPresenceType*> presenceTypes;
    for (VeskPresenceType* type : std::as_const(presences))
        presenceTypes.insert(type);
    qDeleteAll(presenceTypes);

    QSet<VeskSubscriptionType*> subscriptionTypes;
    for (VeskSubscriptionType* type : std::as_const(subscriptions))
        subscriptionTypes.insert(type);
    qDeleteAll(subscriptionTypes);
}

VeskPresenceType* VeskBuddyTypePrivate::getPresenceWithFlag(VeskPresence::Flag flag) const
{
    for (VeskPresenceType* type : presences) {
        if (type && type->flag == flag)
            return type;
    }
    return nullptr;
}

VeskBuddyType::VeskBuddyType()
    : d(nullptr)
{
}

VeskBuddyType::VeskBuddyType(QString const& id, QString const& display)
    : d(new (std::nothrow) VeskBuddyTypePrivate)
{
    if (d) {
        d->id = id;
        d->display = display;
    }
}

VeskBuddyType::VeskBuddyType(VeskBuddyType const& other)
    : d(other.d)
{
    if (d)
        d->ref.ref();
}

VeskBuddyType& VeskBuddyType::operator=(VeskBuddyType const& other)
{
    if (d == other.d)
        return *this;
    release();
    d = other.d;
    if (d)
        d->ref.ref();
    return *this;
}

VeskBuddyType::~VeskBuddyType()
{
    release();
}

// The handle whose release brings the count to zero deletes the record, and
// with it the presence and subscription types it owns.
void VeskBuddyType::release()
{
    if (d && !d->ref.deref())
        delete d;
}

VeskBuddyTypePrivate* VeskBuddyType::data() const
{
    return d;
}

bool VeskBuddyType::isValid() const
{
    return d != nullptr;
}

QString VeskBuddyType::getId() const
{
    return d ? d->id : QString();
}

QString VeskBuddyType::getDisplay() const
{
    return d ? d->display : QString();
}

QList<VeskField> VeskBuddyType::getExtraInfoFields() const
{
    return d ? d->extraInfoFields : QList<VeskField>();
}

VeskSubscriptionType VeskBuddyType::getSubscriptionWithId(QString const& id) const
{
    if (d) {
        for (VeskSubscriptionType const* type : std::as_const(d->subscriptions)) {
            if (type && type->id == id)
                return *type;
        }
    }
    return VeskSubscriptionType(QStringLiteral(""), QStringLiteral(""), 0, QString());
}

VeskBuddyResourceType::VeskBuddyResourceType(QString const& name, QString const& icon)
    : name(name), icon(icon)
{
}

VeskBuddyResource::VeskBuddyResource()
    : type(nullptr)
{
}

VeskBuddyResource::VeskBuddyResource(VeskBuddyResourceType* type, VeskPresence const& presence)
    : type(type), presence(presence)
{
}

bool VeskBuddyResource::isValid() const
{
    return type != nullptr;
}

QString VeskBuddyResource::getName() const
{
    return type ? type->name : QString();
}

QString VeskBuddyResource::getIcon() const
{
    return type ? type->icon : QString();
}

VeskPresence VeskBuddyResource::getPresence() const
{
    return presence;
}

int VeskBuddyResource::getPriority() const
{
    return type ? static_cast<int>(presence.getPriority()) : -1;
}

bool VeskBuddyResource::operator==(VeskBuddyResource const& other) const
{
    return type == other.type;
}

QDebug operator<<(QDebug dbg, VeskBuddyType* type)
{
    // A null pointer prints like a pointer to an invalid kind.
    VeskBuddyType const invalid;
    VeskBuddyType const& kind = type ? *type : invalid;
    dbg.nospace();
    VeskDebug::pointer(dbg, type);
    dbg << " VeskBuddyType(";
    VeskDebug::quoted(dbg, kind.getId());
    dbg << ", ";
    VeskDebug::quoted(dbg, kind.getDisplay());
    dbg << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, QList<VeskBuddyType*> const& types)
{
    dbg.nospace() << "QList<VeskBuddyType *> (" << "\n";
    for (VeskBuddyType* type : types) {
        dbg.nospace() << "\t";
        dbg << type;
        // Spacing is on again here, so the line break is followed by a blank.
        dbg << "\n";
    }
    dbg.nospace() << ") element count: " << types.size() << "\n";
    return dbg.space();
}
