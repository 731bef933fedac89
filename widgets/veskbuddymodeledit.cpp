// The operations of VeskBuddyModel that change the contact list and tell
// the views.
#include "veskbuddymodel_p.h"

#include <veskbuddycontact.h>
#include <veskbuddygroup.h>

namespace {

bool addTo(VeskBuddy const& container, VeskBuddy const& entry)
{
    return container.getType() == VeskBuddy::Group ? VeskBuddyGroup(container).addBuddy(entry)
                                                   : VeskBuddyMeta(container).addBuddy(entry);
}

// A meta-contact leaves its former child's link as it was; the model clears
// it, so the entry no longer keeps the meta-contact alive.
void clearLinkTo(VeskBuddy const& entry, VeskBuddy const& container)
{
    auto clear = [&](VeskBuddy& parent) {
        if (parent == container)
            parent = VeskBuddy();
    };
    if (VeskBuddyContactPrivate* const contact = VeskBuddyContact(entry).data())
        clear(contact->parent);
    else if (VeskBuddyCustomPrivate* const custom = VeskBuddyCustom(entry).data())
        clear(custom->parent);
    else if (VeskBuddyMergedPrivate* const merged = VeskBuddyMerged(entry).data())
        clear(merged->parent);
}

void removeFrom(VeskBuddy const& container, VeskBuddy const& entry)
{
    if (container.getType() == VeskBuddy::Group) {
        VeskBuddyGroup(container).removeBuddy(entry);
    } else {
        VeskBuddyMeta(container).removeBuddy(entry);
        clearLinkTo(entry, container);
    }
}

bool acceptsKind(VeskBuddy const& container, VeskBuddy::Type kind)
{
    if (container.getType() == VeskBuddy::Group)
        return kind != VeskBuddy::Group && kind != VeskBuddy::Invalid;
    return kind == VeskBuddy::Contact || kind == VeskBuddy::Merged || kind == VeskBuddy::Custom;
}

} // namespace

QList<VeskBuddyGroup> VeskBuddyModel::groups() const
{
    QList<VeskBuddyGroup> result;
    for (auto const& child : d->root.children)
        result.append(VeskBuddyGroup(child->entry));
    return result;
}

void VeskBuddyModel::setGroups(QList<VeskBuddyGroup> const& groups)
{
    beginResetModel();
    d->root.children.clear();
    for (VeskBuddyGroup const& group : groups) {
        if (!group.isValid() || d->find(group, &d->root))
            continue;
        auto node = d->makeNode(group, &d->root);
        int const row = d->sortedRow(&d->root, group, nullptr);
        d->root.children.insert(d->root.children.begin() + row, std::move(node));
    }
    endResetModel();
}

bool VeskBuddyModel::addGroup(VeskBuddyGroup const& group)
{
    if (!group.isValid() || d->find(group, &d->root))
        return false;
    d->insert(&d->root, d->makeNode(group, &d->root));
    return true;
}

bool VeskBuddyModel::removeGroup(VeskBuddyGroup const& group)
{
    for (auto const& child : d->root.children) {
        if (child->entry == group) {
            d->remove(child.get());
            return true;
        }
    }
    return false;
}

bool VeskBuddyModel::addBuddy(VeskBuddy const& container, VeskBuddy const& entry)
{
    if (d->find(entry, &d->root))
        return moveBuddy(entry, container);
    VeskBuddyModelNode* const target = d->find(container, &d->root);
    if (!target || !target->isContainer() || !addTo(container, entry))
        return false;
    d->insert(target, d->makeNode(entry, target));
    d->touch(target);
    return true;
}

VeskBuddyMeta VeskBuddyModel::addMeta(VeskBuddyGroup const& group, QString const& name)
{
    VeskBuddyModelNode* const target = d->find(group, &d->root);
    if (!target || target->entry.getType() != VeskBuddy::Group)
        return VeskBuddyMeta();
    VeskBuddyMeta meta = VeskBuddyGroup(group).addMeta(name);
    if (meta.isValid() && !d->find(meta, target)) {
        d->insert(target, d->makeNode(meta, target));
        d->touch(target);
    }
    return meta;
}

bool VeskBuddyModel::removeBuddy(VeskBuddy const& entry)
{
    VeskBuddyModelNode* const node = d->find(entry, &d->root);
    if (!node || node->parent == &d->root)
        return false;
    VeskBuddyModelNode* const container = node->parent;
    removeFrom(container->entry, entry);
    d->remove(node);
    d->touch(container);
    return true;
}

bool VeskBuddyModel::moveBuddy(VeskBuddy const& entry, VeskBuddy const& container)
{
    VeskBuddyModelNode* const node = d->find(entry, &d->root);
    VeskBuddyModelNode* const target = d->find(container, &d->root);
    if (!node || !target || node->parent == &d->root || !target->isContainer()
        || !acceptsKind(container, entry.getType()))
        return false;
    VeskBuddyModelNode* const oldParent = node->parent;
    if (target == oldParent)
        return true;
    for (VeskBuddyModelNode* n = target; n != &d->root; n = n->parent) {
        if (n == node)
            return false;
    }

    VeskBuddy const oldContainer = oldParent->entry;
    VeskBuddy::Type const kind = entry.getType();
    if (kind == VeskBuddy::Contact || kind == VeskBuddy::Custom) {
        // addBuddy takes the entry out of the container its link names.
        if (!addTo(container, entry))
            return false;
        if (oldContainer.getType() == VeskBuddy::Group && VeskBuddyGroup(oldContainer).containsBuddy(entry))
            VeskBuddyGroup(oldContainer).removeBuddy(entry);
    } else {
        // The contact list does not tell the old container of these kinds.
        removeFrom(oldContainer, entry);
        if (!addTo(container, entry)) {
            addTo(oldContainer, entry);
            return false;
        }
    }
    d->move(node, target);
    d->touch(oldParent);
    d->touch(node);
    return true;
}

bool VeskBuddyModel::setPresence(VeskBuddy const& entry, VeskPresence const& presence)
{
    VeskBuddyContact const contact(entry);
    if (VeskBuddyContactPrivate* const record = contact.data())
        record->presence = presence;
    else if (VeskBuddyTemporaryPrivate* const temporary = VeskBuddyTemporary(entry).data())
        temporary->presence = presence;
    else
        return false;

    // Every row that shows the entry, merged entries that speak for it among them.
    std::vector<VeskBuddyModelNode*> const showing = d->nodesWhere([&](VeskBuddy const& shown) {
        VeskBuddyMerged const merged(shown);
        return shown == entry || (contact.isValid() && merged.isValid() && merged.containsContact(contact));
    });
    for (VeskBuddyModelNode* node : showing)
        d->touch(node);
    return true;
}

bool VeskBuddyModel::setUnreadCount(VeskBuddy const& entry, int count)
{
    if (!entry.isValid())
        return false;
    VeskBuddy(entry).setUnreadMessages(count);
    for (VeskBuddyModelNode* node : d->nodesWhere([&](VeskBuddy const& shown) { return shown == entry; })) {
        QModelIndex const index = d->indexOf(node);
        Q_EMIT dataChanged(index, index);
    }
    return true;
}

void VeskBuddyModel::refresh()
{
    setGroups(groups());
}

