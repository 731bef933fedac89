#include "veskbuddycontact.h"
#include "veskbuddy_p.h"

#include <new>

VeskBuddyContactPrivate::VeskBuddyContactPrivate(VeskAccountConnection* account, QString const& id,
                                                 VeskBuddyType const& buddyType,
                                                 VeskPresence const& presence,
                                                 VeskSubscriptionType const& subscription)
    : account(account), buddyType(buddyType), id(id), presence(presence), subscription(subscription)
{
}

VeskBuddyContactPrivate::~VeskBuddyContactPrivate() = default;

VeskBuddyContact::VeskBuddyContact() = default;

VeskBuddyContact::VeskBuddyContact(VeskBuddy const& other)
    : VeskBuddy(other, Contact)
{
}

VeskBuddyContact::VeskBuddyContact(VeskAccountConnection* account, QString const& id,
                                   QString const& display, VeskBuddyType const& type,
                                   VeskPresence const& presence,
                                   VeskSubscriptionType const& subscription)
    : VeskBuddy(display, Contact)
{
    if (d)
        attachKindData(new (std::nothrow)
                           VeskBuddyContactPrivate(account, id, type, presence, subscription));
}

VeskBuddyContactPrivate* VeskBuddyContact::data() const
{
    return static_cast<VeskBuddyContactPrivate*>(kindData());
}

bool VeskBuddyContact::isValid() const
{
    return d != nullptr;
}

QString VeskBuddyContact::getDisplay() const
{
    if (!d)
        return QString();
    return d->name.isEmpty() ? getId() : d->name;
}

QString VeskBuddyContact::getId() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->id : QString();
}

VeskAccountConnection* VeskBuddyContact::getAccount() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->account : nullptr;
}

QString VeskBuddyContact::getTypeId() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->buddyType.getId() : QString();
}

VeskPresence VeskBuddyContact::getPresence() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->presence : VeskPresence();
}

QString VeskBuddyContact::getPresenceIcon() const
{
    VeskBuddyContactPrivate const* const record = data();
    if (!record)
        return QString();
    QString const icon = record->subscription.getIcon();
    return icon.isEmpty() ? record->presence.getIcon() : icon;
}

VeskSubscriptionType VeskBuddyContact::getSubscription() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->subscription : VeskSubscriptionType();
}

QList<VeskBuddyResource> VeskBuddyContact::getResources() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->resources : QList<VeskBuddyResource>();
}

VeskBuddyResource VeskBuddyContact::getActiveResource() const
{
    VeskBuddyResource best;
    VeskBuddyContactPrivate const* const record = data();
    if (!record)
        return best;
    for (VeskBuddyResource const& resource : std::as_const(record->resources)) {
        if (resource.getPriority() > best.getPriority())
            best = resource;
    }
    return best;
}

QString VeskBuddyContact::getAvatarPath() const
{
    VeskBuddyContactPrivate const* const record = data();
    if (!record)
        return QString();
    return record->localAvatarPath.isEmpty() ? record->serverAvatarPath : record->localAvatarPath;
}

QString VeskBuddyContact::getLocalAvatarPath() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->localAvatarPath : QString();
}

QString VeskBuddyContact::getServerAvatarPath() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->serverAvatarPath : QString();
}

QList<VeskField> VeskBuddyContact::getAvailableExtraInfo() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->buddyType.getExtraInfoFields() : QList<VeskField>();
}

QList<VeskField> VeskBuddyContact::getExtraInfo() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->extraInfo : QList<VeskField>();
}

void VeskBuddyContact::setFieldValues(QList<VeskField> const& values)
{
    if (VeskBuddyContactPrivate* const record = data())
        record->extraInfo = values;
}

VeskArg VeskBuddyContact::getAttrib(QString name) const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->attribs.value(name) : VeskArg();
}

QHash<QString, VeskArg> VeskBuddyContact::getAttribs() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? record->attribs : QHash<QString, VeskArg>();
}

void VeskBuddyContact::setAttribs(QHash<QString, VeskArg> const& attribs)
{
    if (VeskBuddyContactPrivate* const record = data())
        record->attribs = attribs;
}

VeskBuddy VeskBuddyContact::getParent() const
{
    VeskBuddyContactPrivate const* const record = data();
    return record ? vesk_buddy_read_link(record->parent) : VeskBuddy();
}
