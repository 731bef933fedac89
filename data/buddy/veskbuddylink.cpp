// The links from children to their containers.

#include "veskbuddylink_p.h"
#include "veskbuddy_p.h"

namespace {

// Where a child keeps the link to its container: a VeskBuddy parent for
// contacts, custom and merged entries, a VeskBuddyGroup for meta-contacts and
// temporary contacts. Both null for kinds that have no link.
struct Link
{
    VeskBuddy* parent = nullptr;
    VeskBuddyGroup* group = nullptr;
};

template<typename Kind>
auto* kindRecord(VeskBuddy const& child)
{
    return Kind(child).data();
}

// The link of a kind that keeps its container as a VeskBuddy parent.
template<typename Kind>
Link parentLink(VeskBuddy const& child)
{
    auto* const record = kindRecord<Kind>(child);
    return record ? Link{&record->parent, nullptr} : Link{};
}

// The link of a kind that keeps its container as a VeskBuddyGroup.
template<typename Kind>
Link groupLink(VeskBuddy const& child)
{
    auto* const record = kindRecord<Kind>(child);
    return record ? Link{nullptr, &record->group} : Link{};
}

Link linkOf(VeskBuddy const& child)
{
    switch (child.getType()) {
    case VeskBuddy::Contact: return parentLink<VeskBuddyContact>(child);
    case VeskBuddy::Custom: return parentLink<VeskBuddyCustom>(child);
    case VeskBuddy::Merged: return parentLink<VeskBuddyMerged>(child);
    case VeskBuddy::Meta: return groupLink<VeskBuddyMeta>(child);
    case VeskBuddy::Temporary: return groupLink<VeskBuddyTemporary>(child);
    default: return {};
    }
}

} // namespace

namespace VeskBuddyLink {

VeskBuddy readLink(VeskBuddy const& child)
{
    Link const link = linkOf(child);
    QMutexLocker locker(&vesk_buddy_link_mutex());
    if (link.parent)
        return *link.parent;
    // Not reached: only contacts and custom entries move this way.
    return link.group ? *link.group : VeskBuddy();
}

// The handle let go is released after the link lock, since releasing the
// last handle of a container destroys it.
bool replaceLink(VeskBuddy const& child, VeskBuddy const& expected, VeskBuddy const& container)
{
    Link const link = linkOf(child);
    VeskBuddy previous;
    QMutexLocker locker(&vesk_buddy_link_mutex());
    if (link.parent && *link.parent == expected) {
        previous = *link.parent;
        *link.parent = container;
        return true;
    }
    if (link.group && *link.group == expected) {
        previous = *link.group;
        *link.group = VeskBuddyGroup(container);
        return true;
    }
    return false;
}

void setLink(VeskBuddy const& child, VeskBuddy const& container)
{
    Link const link = linkOf(child);
    VeskBuddy previous;
    QMutexLocker locker(&vesk_buddy_link_mutex());
    if (link.parent) {
        previous = *link.parent;
        *link.parent = container;
    } else if (link.group) {
        previous = *link.group;
        *link.group = VeskBuddyGroup(container);
    }
}

bool clearLinkIf(VeskBuddy const& child, VeskBuddy const& container)
{
    return replaceLink(child, container, VeskBuddy());
}

QMutex* containerMutex(VeskBuddy const& container)
{
    if (container.getType() == VeskBuddy::Group) {
        if (VeskBuddyGroupPrivate* const record = kindRecord<VeskBuddyGroup>(container))
            return &record->mutex;
    } else if (container.getType() == VeskBuddy::Meta) {
        if (VeskBuddyMetaPrivate* const record = kindRecord<VeskBuddyMeta>(container))
            return &record->mutex;
    }
    return nullptr;
}

void removeFromContainer(VeskBuddy const& container, VeskBuddy const& child)
{
    if (container.getType() == VeskBuddy::Group) {
        if (VeskBuddyGroupPrivate* const record = kindRecord<VeskBuddyGroup>(container))
            VeskBuddyChildren::removeAll(*record, child);
    } else if (container.getType() == VeskBuddy::Meta) {
        if (VeskBuddyMetaPrivate* const record = kindRecord<VeskBuddyMeta>(container))
            VeskBuddyChildren::removeAll(*record, child);
    }
}

bool listHoldsContact(QList<VeskBuddy> const& children, VeskBuddyContact const& contact,
                      bool lookIntoMetas)
{
    for (VeskBuddy const& child : children) {
        switch (child.getType()) {
        case VeskBuddy::Contact:
            if (child == contact)
                return true;
            break;
        case VeskBuddy::Merged:
            if (VeskBuddyMerged(child).containsContact(contact))
                return true;
            break;
        case VeskBuddy::Meta:
            if (lookIntoMetas && VeskBuddyMeta(child).containsContact(contact))
                return true;
            break;
        default:
            break;
        }
    }
    return false;
}

} // namespace VeskBuddyLink
