#include "veskbuddycontact.h"
#include "veskbuddy_p.h"

#include <new>

VeskBuddyMergedPrivate::VeskBuddyMergedPrivate(QList<VeskBuddyContact> const& contacts)
    : contacts(contacts)
{
}

VeskBuddyMergedPrivate::~VeskBuddyMergedPrivate() = default;

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
    return record ? vesk_buddy_read_link(record->parent) : VeskBuddy();
}
