#include "veskbuddycontact.h"
#include "veskbuddy_p.h"

#include <new>

VeskBuddyTemporaryPrivate::VeskBuddyTemporaryPrivate(VeskAccountConnection* account, QString const& id,
                                                     VeskPresence const& presence,
                                                     VeskBuddyGroup const& group)
    : account(account), id(id), presence(presence), group(group)
{
}

VeskBuddyTemporaryPrivate::~VeskBuddyTemporaryPrivate() = default;

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
    return record ? vesk_buddy_read_link(record->group) : VeskBuddyGroup();
}

QList<VeskBuddyResource> VeskBuddyTemporary::getResources() const
{
    VeskBuddyTemporaryPrivate const* const record = data();
    return record ? record->resources : QList<VeskBuddyResource>();
}
