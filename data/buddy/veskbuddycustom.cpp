#include "veskbuddycontact.h"
#include "veskbuddy_p.h"

#include <new>

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
    return record ? vesk_buddy_read_link(record->parent) : VeskBuddy();
}
