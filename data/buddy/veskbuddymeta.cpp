#include "veskbuddygroup.h"
#include "veskbuddylink_p.h"
#include "veskbuddy_p.h"

#include <new>

using namespace VeskBuddyLink;

VeskBuddyMetaPrivate::VeskBuddyMetaPrivate()
    : expanded(false)
{
}

VeskBuddyMetaPrivate::~VeskBuddyMetaPrivate() = default;

VeskBuddyMeta::VeskBuddyMeta() = default;

VeskBuddyMeta::VeskBuddyMeta(VeskBuddy const& other)
    : VeskBuddy(other, Meta)
{
}

VeskBuddyMeta::VeskBuddyMeta(QString const& name)
    : VeskBuddy(name, Meta)
{
    if (d)
        attachKindData(new (std::nothrow) VeskBuddyMetaPrivate);
}

VeskBuddyMeta& VeskBuddyMeta::operator=(VeskBuddyMeta const& other)
{
    if (*this != other)
        VeskBuddy::operator=(other);
    return *this;
}

VeskBuddyMetaPrivate* VeskBuddyMeta::data() const
{
    return static_cast<VeskBuddyMetaPrivate*>(kindData());
}

bool VeskBuddyMeta::addBuddy(VeskBuddy const& buddy)
{
    if (!VeskBuddyChildren::hasKindRecord(buddy))
        return false;
    switch (buddy.getType()) {
    case Contact:
    case Custom:
        return moveInto(*this, data(), buddy);
    case Merged:
        return appendLinked(*this, data(), buddy);
    case Invalid:
    case Group:
    case Meta:
    case Temporary:
        break;
    }
    return false;
}

int VeskBuddyMeta::removeBuddy(VeskBuddy const& buddy)
{
    return underLock(data(), -1, [&buddy](VeskBuddyMetaPrivate& record) {
        return VeskBuddyChildren::removeAll(record, buddy);
    });
}

VeskBuddy VeskBuddyMeta::removeAt(int index)
{
    return takeChildAt(data(), index);
}

VeskBuddy VeskBuddyMeta::buddyAt(int index) const
{
    return childAt(data(), index);
}

int VeskBuddyMeta::childCount() const
{
    return countChildren(data());
}

bool VeskBuddyMeta::containsContact(VeskBuddyContact const& contact) const
{
    return holdsContact(data(), contact, false);
}

bool VeskBuddyMeta::isExpanded() const
{
    VeskBuddyMetaPrivate const* const record = data();
    return record && record->expanded;
}

VeskBuddyGroup VeskBuddyMeta::getGroup() const
{
    VeskBuddyMetaPrivate const* const record = data();
    return record ? vesk_buddy_read_link(record->group) : VeskBuddyGroup();
}
