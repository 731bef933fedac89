#include "veskbuddygroup.h"
#include "veskbuddylink_p.h"

#include <new>

using namespace VeskBuddyLink;

namespace {

template<typename Match>
int countContacts(VeskBuddyGroupPrivate* record, Match&& match)
{
    return underLock(record, -1, [&match](VeskBuddyGroupPrivate& locked) {
        int count = 0;
        for (VeskBuddy const& child : std::as_const(locked.children)) {
            if (child.getType() == VeskBuddy::Contact
                && match(VeskBuddyContact(child).getPresence().getFlag()))
                ++count;
        }
        return count;
    });
}

} // namespace

VeskBuddyGroupPrivate::VeskBuddyGroupPrivate()
    : pos(0), expanded(false)
{
}

VeskBuddyGroupPrivate::~VeskBuddyGroupPrivate() = default;

VeskBuddyGroup::VeskBuddyGroup() = default;

VeskBuddyGroup::VeskBuddyGroup(VeskBuddy const& other)
    : VeskBuddy(other, Group)
{
}

VeskBuddyGroup::VeskBuddyGroup(QString const& name)
    : VeskBuddy(name, Group)
{
    if (d)
        attachKindData(new (std::nothrow) VeskBuddyGroupPrivate);
}

VeskBuddyGroupPrivate* VeskBuddyGroup::data() const
{
    return static_cast<VeskBuddyGroupPrivate*>(kindData());
}

bool VeskBuddyGroup::addBuddy(VeskBuddy const& buddy)
{
    if (!VeskBuddyChildren::hasKindRecord(buddy))
        return false;
    switch (buddy.getType()) {
    case Contact:
    case Custom:
        return moveInto(*this, data(), buddy);
    case Meta:
    case Merged:
    case Temporary:
        return appendLinked(*this, data(), buddy);
    case Group:
    case Invalid:
        break;
    }
    return false;
}

int VeskBuddyGroup::removeBuddy(VeskBuddy const& buddy)
{
    return underLock(data(), -1, [this, &buddy](VeskBuddyGroupPrivate& record) {
        bool const unlinked = clearLinkIf(buddy, *this);
        return VeskBuddyChildren::removeFromGroup(record, buddy, unlinked && buddy.getType() == Meta);
    });
}

void VeskBuddyGroup::clear()
{
    while (childCount() > 0) {
        VeskBuddy const child = buddyAt(0);
        VeskBuddyMeta meta(child);
        if (meta.getGroup() == *this) {
            for (VeskBuddy inner = meta.removeAt(0); inner.isValid(); inner = meta.removeAt(0))
                clearLinkIf(inner, meta);
        }
        // Every copy of it, linked or not, kind record or not.
        removeBuddy(child);
    }
}

VeskBuddy VeskBuddyGroup::removeAt(int index)
{
    return takeChildAt(data(), index);
}

VeskBuddyMeta VeskBuddyGroup::addMeta(QString const& name)
{
    return underLock(data(), VeskBuddyMeta(), [this, &name](VeskBuddyGroupPrivate& record) {
        auto const found = record.metas.constFind(name);
        if (found != record.metas.constEnd())
            return found.value();
        VeskBuddyMeta meta(name);
        if (!meta.isValid())
            return meta;
        setLink(meta, *this);
        VeskBuddyChildren::insertMeta(record, name, meta);
        return meta;
    });
}

VeskBuddy VeskBuddyGroup::buddyAt(int index) const
{
    return childAt(data(), index);
}

int VeskBuddyGroup::childCount() const
{
    return countChildren(data());
}

int VeskBuddyGroup::onlineChildCount() const
{
    return countContacts(data(), [](VeskPresence::Flag flag) { return flag != VeskPresence::Offline; });
}

int VeskBuddyGroup::statusChildCount(VeskPresence::Flag flag) const
{
    return countContacts(data(), [flag](VeskPresence::Flag other) { return other == flag; });
}

bool VeskBuddyGroup::containsBuddy(VeskBuddy const& buddy) const
{
    VeskBuddyGroupPrivate* const record = data();
    return record && VeskBuddyChildren::holds(*record, buddy);
}

bool VeskBuddyGroup::containsContact(VeskBuddyContact const& contact) const
{
    return holdsContact(data(), contact, true);
}

bool VeskBuddyGroup::containsMeta(QString const& name) const
{
    VeskBuddyGroupPrivate* const record = data();
    return record && VeskBuddyChildren::holdsMeta(*record, name);
}

bool VeskBuddyGroup::isExpanded() const
{
    VeskBuddyGroupPrivate const* const record = data();
    return record && record->expanded;
}

int VeskBuddyGroup::getPos() const
{
    VeskBuddyGroupPrivate const* const record = data();
    return record ? record->pos : -1;
}

bool groupLessThan(VeskBuddy const& a, VeskBuddy const& b)
{
    if (a.getType() == VeskBuddy::Group && b.getType() == VeskBuddy::Group)
        return a.getDisplay().toLower() < b.getDisplay().toLower();
    return true;
}
