#include "veskbuddycontact.h"
#include "veskbuddy_p.h"

#include "veskdebug_p.h"

#include <new>

namespace {

// Container links are written by the containers under the link lock, so
// they are read under it too.
template<typename Handle>
Handle readLocked(Handle const& link)
{
    QMutexLocker locker(&vesk_buddy_link_mutex());
    return link;
}

} // namespace

VeskBuddyContactPrivate::VeskBuddyContactPrivate(VeskAccountConnection* account, QString const& id,
                                                 VeskBuddyType const& buddyType,
                                                 VeskPresence const& presence,
                                                 VeskSubscriptionType const& subscription)
    : account(account), buddyType(buddyType), id(id), presence(presence), subscription(subscription)
{
}

VeskBuddyContactPrivate::~VeskBuddyContactPrivate() = default;

VeskBuddyMergedPrivate::VeskBuddyMergedPrivate(QList<VeskBuddyContact> const& contacts)
    : contacts(contacts)
{
}

VeskBuddyMergedPrivate::~VeskBuddyMergedPrivate() = default;

VeskBuddyCustomPrivate::VeskBuddyCustomPrivate(QString const& subType, QString const& ownerId,
                                               QHash<QString, VeskArg> const& attribs,
                                               QString const& description,
                                               QString const& presenceIconPath,
                                               QString const& avatarPath)
    : description(description), presenceIconPath(presenceIconPath), avatarPath(avatarPath),
      subType(subType), ownerId(ownerId), attribs(attribs)
{
}

VeskBuddyCustomPrivate::~VeskBuddyCustomPrivate() = default;

VeskBuddyTemporaryPrivate::VeskBuddyTemporaryPrivate(VeskAccountConnection* account, QString const& id,
                                                     VeskPresence const& presence,
                                                     VeskBuddyGroup const& group)
    : account(account), id(id), presence(presence), group(group)
{
}

VeskBuddyTemporaryPrivate::~VeskBuddyTemporaryPrivate() = default;

// Contact

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
    return record ? readLocked(record->parent) : VeskBuddy();
}

// Merged

VeskBuddyMerged::VeskBuddyMerged() = default;

VeskBuddyMerged::VeskBuddyMerged(VeskBuddy const& other)
    : VeskBuddy(other, Merged)
{
}

VeskBuddyMerged::VeskBuddyMerged(QString const& name, QList<VeskBuddyContact> const& contacts)
    : VeskBuddy(name.isEmpty() && !contacts.isEmpty() ? contacts.first().getId() : name, Merged)
{
    if (d)
        attachKindData(new (std::nothrow) VeskBuddyMergedPrivate(contacts));
}

VeskBuddyMergedPrivate* VeskBuddyMerged::data() const
{
    return static_cast<VeskBuddyMergedPrivate*>(kindData());
}

VeskBuddyContact VeskBuddyMerged::first() const
{
    VeskBuddyMergedPrivate const* const record = data();
    return record && !record->contacts.isEmpty() ? record->contacts.first() : VeskBuddyContact();
}

QString VeskBuddyMerged::getDisplay() const
{
    return first().getDisplay();
}

QString VeskBuddyMerged::getId() const
{
    return first().getId();
}

VeskPresence VeskBuddyMerged::getPresence() const
{
    return first().getPresence();
}

QString VeskBuddyMerged::getAvatarPath() const
{
    return first().getAvatarPath();
}

QList<VeskBuddyResource> VeskBuddyMerged::getResources() const
{
    return first().getResources();
}

QList<VeskAccountConnection*> VeskBuddyMerged::getAccounts() const
{
    QList<VeskAccountConnection*> accounts;
    if (VeskBuddyMergedPrivate const* const record = data()) {
        for (VeskBuddyContact const& contact : record->contacts)
            accounts.append(contact.getAccount());
    }
    return accounts;
}

VeskBuddyContact VeskBuddyMerged::getContactForAccount(VeskAccountConnection* account) const
{
    if (VeskBuddyMergedPrivate const* const record = data()) {
        for (VeskBuddyContact const& contact : record->contacts) {
            if (contact.getAccount() == account)
                return contact;
        }
    }
    return VeskBuddyContact();
}

bool VeskBuddyMerged::containsContact(VeskBuddyContact const& contact) const
{
    VeskBuddyMergedPrivate const* const record = data();
    return record && record->contacts.contains(contact);
}

VeskBuddy VeskBuddyMerged::getParent() const
{
    VeskBuddyMergedPrivate const* const record = data();
    return record ? readLocked(record->parent) : VeskBuddy();
}

// Custom

VeskBuddyCustom::VeskBuddyCustom() = default;

VeskBuddyCustom::VeskBuddyCustom(VeskBuddy const& other)
    : VeskBuddy(other, Custom)
{
}

VeskBuddyCustom::VeskBuddyCustom(QString const& name, QString const& subType, QString const& ownerId,
                                 QHash<QString, VeskArg> const& attribs, QString const& description,
                                 QString const& presenceIconPath, QString const& avatarPath)
    : VeskBuddy(name, Custom)
{
    if (d)
        attachKindData(new (std::nothrow) VeskBuddyCustomPrivate(
            subType, ownerId, attribs, description, presenceIconPath, avatarPath));
}

VeskBuddyCustomPrivate* VeskBuddyCustom::data() const
{
    return static_cast<VeskBuddyCustomPrivate*>(kindData());
}

QString VeskBuddyCustom::getOwnerId() const
{
    VeskBuddyCustomPrivate const* const record = data();
    return record ? record->ownerId : QString();
}

QString VeskBuddyCustom::getSubType() const
{
    VeskBuddyCustomPrivate const* const record = data();
    return record ? record->subType : QString();
}

QString VeskBuddyCustom::getDescription() const
{
    VeskBuddyCustomPrivate const* const record = data();
    return record ? record->description : QString();
}

QString VeskBuddyCustom::getPresenceIconPath() const
{
    VeskBuddyCustomPrivate const* const record = data();
    return record ? record->presenceIconPath : QString();
}

QString VeskBuddyCustom::getAvatarPath() const
{
    VeskBuddyCustomPrivate const* const record = data();
    return record ? record->avatarPath : QString();
}

QHash<QString, VeskArg> VeskBuddyCustom::getAttribs() const
{
    VeskBuddyCustomPrivate const* const record = data();
    return record ? record->attribs : QHash<QString, VeskArg>();
}

void VeskBuddyCustom::setAttribs(QHash<QString, VeskArg> const& attribs)
{
    if (VeskBuddyCustomPrivate* const record = data())
        record->attribs = attribs;
}

VeskBuddy VeskBuddyCustom::getParent() const
{
    VeskBuddyCustomPrivate const* const record = data();
    return record ? readLocked(record->parent) : VeskBuddy();
}

// Temporary

VeskBuddyTemporary::VeskBuddyTemporary() = default;

VeskBuddyTemporary::VeskBuddyTemporary(VeskBuddy const& other)
    : VeskBuddy(other, Temporary)
{
}

VeskBuddyTemporary::VeskBuddyTemporary(VeskAccountConnection* account, QString const& id,
                                       VeskPresence const& presence, VeskBuddyGroup const& group)
    : VeskBuddy(id, Temporary)
{
    if (d)
        attachKindData(new (std::nothrow) VeskBuddyTemporaryPrivate(account, id, presence, group));
}

VeskBuddyTemporaryPrivate* VeskBuddyTemporary::data() const
{
    return static_cast<VeskBuddyTemporaryPrivate*>(kindData());
}

VeskAccountConnection* VeskBuddyTemporary::getAccount() const
{
    VeskBuddyTemporaryPrivate const* const record = data();
    return record ? record->account : nullptr;
}

QString VeskBuddyTemporary::getId() const
{
    VeskBuddyTemporaryPrivate const* const record = data();
    return record ? record->id : QString();
}

VeskPresence VeskBuddyTemporary::getPresence() const
{
    VeskBuddyTemporaryPrivate const* const record = data();
    return record ? record->presence : VeskPresence();
}

VeskBuddyGroup VeskBuddyTemporary::getGroup() const
{
    VeskBuddyTemporaryPrivate const* const record = data();
    return record ? readLocked(record->group) : VeskBuddyGroup();
}

QList<VeskBuddyResource> VeskBuddyTemporary::getResources() const
{
    VeskBuddyTemporaryPrivate const* const record = data();
    return record ? record->resources : QList<VeskBuddyResource>();
}

// Debug texts

namespace {

void writeHead(QDebug& dbg, char const* opening, VeskBuddy const& entry)
{
    dbg.nospace() << opening;
    dbg << "valid   :" << entry.isValid() << "\n\t";
    dbg << "display :";
    VeskDebug::quoted(dbg, entry.getDisplay());
    dbg << "\n\t";
}

void writeId(QDebug& dbg, QString const& id)
{
    dbg << "id      :";
    VeskDebug::quoted(dbg, id);
}

} // namespace

QDebug operator<<(QDebug dbg, VeskBuddyContact const& contact)
{
    writeHead(dbg, "VeskBuddyContact(\n\t", contact);
    writeId(dbg, contact.getId());
    dbg << "\n" << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddyMerged const& merged)
{
    writeHead(dbg, "VeskBuddyMerged(\n\t", merged);
    writeId(dbg, merged.getId());
    dbg << "\n" << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddyCustom const& custom)
{
    writeHead(dbg, "VeskBuddyCustom(\n\t", custom);
    dbg << ")";
    return dbg.space();
}

QDebug operator<<(QDebug dbg, VeskBuddyTemporary const& temporary)
{
    writeHead(dbg, "VeskBuddyTemporary(\n\t", temporary);
    writeId(dbg, temporary.getId());
    dbg << "\n\t" << "account :";
    VeskDebug::pointer(dbg, temporary.getAccount());
    dbg << "\n" << ")";
    return dbg.space();
}
