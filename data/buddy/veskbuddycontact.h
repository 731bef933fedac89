#ifndef VESKBUDDYCONTACT_H
#define VESKBUDDYCONTACT_H

/// \file
/// The contact-list entries of one person: contacts, merged, custom and temporary entries.

#include "veskdata_global.h"
#include "veskarg.h"
#include "veskbuddy.h"
#include "veskbuddygroup.h"
#include "veskbuddytype.h"
#include "veskfield.h"
#include "veskpresence.h"

#include <QtCore/QDebug>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QString>

class VeskAccountConnection;
class VeskBuddyContactPrivate;
class VeskBuddyMergedPrivate;
class VeskBuddyCustomPrivate;
class VeskBuddyTemporaryPrivate;

/// One person on one account's contact list.
class VESK_DATA_EXPORT VeskBuddyContact : public VeskBuddy
{
public:
    /// An invalid handle.
    VeskBuddyContact();
    /// Another handle onto other's entry.
    VeskBuddyContact(VeskBuddyContact const& other) = default;
    /// Shares other's entry when it is of this kind; invalid otherwise.
    VeskBuddyContact(VeskBuddy const& other);
    /// A contact of account (not owned) with this protocol id, name, kind, presence and
    /// subscription.
    VeskBuddyContact(VeskAccountConnection* account, QString const& id, QString const& display,
                     VeskBuddyType const& type, VeskPresence const& presence,
                     VeskSubscriptionType const& subscription);
    /// Makes this handle refer to other's entry.
    VeskBuddyContact& operator=(VeskBuddyContact const& other) = default;

    /// The contact's record, where the protocol code keeps presence,
    /// resources and avatar paths current; null for an invalid handle.
    VeskBuddyContactPrivate* data() const;

    /// True when the handle refers to a contact.
    bool isValid() const override;
    /// The name given at construction, or the id when that is empty.
    QString getDisplay() const override;

    /// The protocol id; a null string for an invalid handle.
    QString getId() const;
    /// The account the entry belongs to (not owned); null for an invalid handle.
    VeskAccountConnection* getAccount() const;
    /// The id of the contact's kind.
    QString getTypeId() const;
    /// The current presence; an invalid one for an invalid handle.
    VeskPresence getPresence() const;
    /// The subscription's icon when it has one, otherwise the presence's.
    QString getPresenceIcon() const;
    /// The subscription state.
    VeskSubscriptionType getSubscription() const;
    /// The connections of the entry, as the protocol code keeps them.
    QList<VeskBuddyResource> getResources() const;
    /// The resource of greatest priority, the first of equals; invalid when
    /// no resource has a type.
    VeskBuddyResource getActiveResource() const;
    /// The local avatar when it is set, otherwise the server's.
    QString getAvatarPath() const;
    /// The avatar picked on this side, or an empty string.
    QString getLocalAvatarPath() const;
    /// The avatar the server supplied, or an empty string.
    QString getServerAvatarPath() const;
    /// The fields a contact of this kind may have, and this contact's values.
    QList<VeskField> getAvailableExtraInfo() const;
    /// The contact's extra-information values.
    QList<VeskField> getExtraInfo() const;
    /// Replaces the extra-information values.
    void setFieldValues(QList<VeskField> const& values);
    /// The attribute of this name; None when there is none.
    VeskArg getAttrib(QString name) const;
    /// Every free attribute by name.
    QHash<QString, VeskArg> getAttribs() const;
    /// Replaces every free attribute.
    void setAttribs(QHash<QString, VeskArg> const& attribs);
    /// The container that holds the entry; an invalid handle when none does.
    VeskBuddy getParent() const;
};

/// Contacts of several accounts shown as one entry. The first contact speaks
/// for the entry; the others only answer questions about accounts.
class VESK_DATA_EXPORT VeskBuddyMerged : public VeskBuddy
{
public:
    /// An invalid handle.
    VeskBuddyMerged();
    /// Another handle onto other's entry.
    VeskBuddyMerged(VeskBuddyMerged const& other) = default;
    /// Shares other's entry when it is of this kind; invalid otherwise.
    VeskBuddyMerged(VeskBuddy const& other);
    /// An empty name becomes the first contact's id.
    VeskBuddyMerged(QString const& name, QList<VeskBuddyContact> const& contacts);
    /// Makes this handle refer to other's entry.
    VeskBuddyMerged& operator=(VeskBuddyMerged const& other) = default;

    /// The kind record; null for an invalid handle.
    VeskBuddyMergedPrivate* data() const;

    /// The first contact's name; a null string for an invalid handle.
    QString getDisplay() const override;
    /// The protocol id; a null string for an invalid handle.
    QString getId() const;
    /// The current presence; an invalid one for an invalid handle.
    VeskPresence getPresence() const;
    /// The avatar file; an empty string when there is none.
    QString getAvatarPath() const;
    /// The connections of the entry, as the protocol code keeps them.
    QList<VeskBuddyResource> getResources() const;
    /// One entry per contact, in order, repeats and null pointers included.
    QList<VeskAccountConnection*> getAccounts() const;
    /// The first contact of account; an invalid handle when none belongs to it.
    VeskBuddyContact getContactForAccount(VeskAccountConnection* account) const;
    /// True when contact is one of the merged contacts.
    bool containsContact(VeskBuddyContact const& contact) const;
    /// The container that holds the entry; an invalid handle when none does.
    VeskBuddy getParent() const;

private:
    VeskBuddyContact first() const;
};

/// An entry of a sub-kind defined by its owner, described by strings and free
/// attributes.
class VESK_DATA_EXPORT VeskBuddyCustom : public VeskBuddy
{
public:
    /// An invalid handle.
    VeskBuddyCustom();
    /// Another handle onto other's entry.
    VeskBuddyCustom(VeskBuddyCustom const& other) = default;
    /// Shares other's entry when it is of this kind; invalid otherwise.
    VeskBuddyCustom(VeskBuddy const& other);
    /// An entry of the owner's sub-kind with its attributes and display strings.
    VeskBuddyCustom(QString const& name, QString const& subType, QString const& ownerId,
                    QHash<QString, VeskArg> const& attribs, QString const& description,
                    QString const& presenceIconPath, QString const& avatarPath);
    /// Makes this handle refer to other's entry.
    VeskBuddyCustom& operator=(VeskBuddyCustom const& other) = default;

    /// The kind record; null for an invalid handle.
    VeskBuddyCustomPrivate* data() const;

    /// The id of the code that owns the sub-kind.
    QString getOwnerId() const;
    /// The owner's name for the sub-kind.
    QString getSubType() const;
    /// A free-text description.
    QString getDescription() const;
    /// The icon shown in place of a presence.
    QString getPresenceIconPath() const;
    /// The avatar file; an empty string when there is none.
    QString getAvatarPath() const;
    /// Every free attribute by name.
    QHash<QString, VeskArg> getAttribs() const;
    /// Replaces every free attribute.
    void setAttribs(QHash<QString, VeskArg> const& attribs);
    /// The container that holds the entry; an invalid handle when none does.
    VeskBuddy getParent() const;
};

/// Someone who is not on the list, reached through an account. Its name is
/// its id.
class VESK_DATA_EXPORT VeskBuddyTemporary : public VeskBuddy
{
public:
    /// An invalid handle.
    VeskBuddyTemporary();
    /// Another handle onto other's entry.
    VeskBuddyTemporary(VeskBuddyTemporary const& other) = default;
    /// Shares other's entry when it is of this kind; invalid otherwise.
    VeskBuddyTemporary(VeskBuddy const& other);
    /// Does not add the entry to group: that takes group.addBuddy().
    VeskBuddyTemporary(VeskAccountConnection* account, QString const& id,
                       VeskPresence const& presence, VeskBuddyGroup const& group);
    /// Makes this handle refer to other's entry.
    VeskBuddyTemporary& operator=(VeskBuddyTemporary const& other) = default;

    /// The kind record; null for an invalid handle.
    VeskBuddyTemporaryPrivate* data() const;

    /// The account the entry belongs to (not owned); null for an invalid handle.
    VeskAccountConnection* getAccount() const;
    /// The protocol id; a null string for an invalid handle.
    QString getId() const;
    /// The current presence; an invalid one for an invalid handle.
    VeskPresence getPresence() const;
    /// The group given at construction.
    VeskBuddyGroup getGroup() const;
    /// The connections of the entry, as the protocol code keeps them.
    QList<VeskBuddyResource> getResources() const;
};

/// The kind record of a contact. The protocol code writes presence,
/// resources and the avatar paths here; every handle sees the change at once.
/// parent is kept by the containers' addBuddy and removeBuddy.
class VESK_DATA_EXPORT VeskBuddyContactPrivate
{
public:
    /// Holds the members given to the contact's constructor.
    VeskBuddyContactPrivate(VeskAccountConnection* account, QString const& id,
                            VeskBuddyType const& buddyType, VeskPresence const& presence,
                            VeskSubscriptionType const& subscription);
    /// Destroys the record and its members.
    ~VeskBuddyContactPrivate();

    /// The account, not owned.
    VeskAccountConnection* account;
    /// The contact's kind.
    VeskBuddyType buddyType;
    /// The protocol id.
    QString id;
    /// The current presence.
    VeskPresence presence;
    /// The subscription state.
    VeskSubscriptionType subscription;
    /// The connections, kept current by the protocol code.
    QList<VeskBuddyResource> resources;
    /// Free for the protocol code; the library only initialises it.
    VeskBuddyResource resource;
    /// The avatar the server supplied.
    QString serverAvatarPath;
    /// The avatar picked on this side.
    QString localAvatarPath;
    /// The container that holds the entry.
    VeskBuddy parent;
    /// The extra-information values.
    QList<VeskField> extraInfo;
    /// The free attributes.
    QHash<QString, VeskArg> attribs;

private:
    Q_DISABLE_COPY(VeskBuddyContactPrivate)
};

/// The kind record of a merged entry.
class VESK_DATA_EXPORT VeskBuddyMergedPrivate
{
public:
    /// Holds the merged contacts.
    explicit VeskBuddyMergedPrivate(QList<VeskBuddyContact> const& contacts);
    /// Destroys the record and its members.
    ~VeskBuddyMergedPrivate();

    /// The container that holds the entry.
    VeskBuddy parent;
    /// The merged contacts; the first speaks for the entry.
    QList<VeskBuddyContact> contacts;

private:
    Q_DISABLE_COPY(VeskBuddyMergedPrivate)
};

/// The kind record of a custom entry.
class VESK_DATA_EXPORT VeskBuddyCustomPrivate
{
public:
    /// Holds the members given to the entry's constructor.
    VeskBuddyCustomPrivate(QString const& subType, QString const& ownerId,
                           QHash<QString, VeskArg> const& attribs, QString const& description,
                           QString const& presenceIconPath, QString const& avatarPath);
    /// Destroys the record and its members.
    ~VeskBuddyCustomPrivate();

    /// For the owner of the entry; the library never takes it.
    QMutex mutex;
    /// The container that holds the entry.
    VeskBuddy parent;
    /// A free-text description.
    QString description;
    /// The icon shown in place of a presence.
    QString presenceIconPath;
    /// The avatar file.
    QString avatarPath;
    /// The owner's name for the sub-kind.
    QString subType;
    /// The id of the code that owns the sub-kind.
    QString ownerId;
    /// The free attributes.
    QHash<QString, VeskArg> attribs;

private:
    Q_DISABLE_COPY(VeskBuddyCustomPrivate)
};

/// The protocol code keeps resources current here.
class VESK_DATA_EXPORT VeskBuddyTemporaryPrivate
{
public:
    /// Holds the members given to the entry's constructor.
    VeskBuddyTemporaryPrivate(VeskAccountConnection* account, QString const& id,
                              VeskPresence const& presence, VeskBuddyGroup const& group);
    /// Destroys the record and its members.
    ~VeskBuddyTemporaryPrivate();

    /// The account, not owned.
    VeskAccountConnection* account;
    /// The protocol id.
    QString id;
    /// The current presence.
    VeskPresence presence;
    /// The group given at construction.
    VeskBuddyGroup group;
    /// The connections, kept current by the protocol code.
    QList<VeskBuddyResource> resources;

private:
    Q_DISABLE_COPY(VeskBuddyTemporaryPrivate)
};

/// Writes the entry's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyContact const& contact);
/// Writes the entry's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyMerged const& merged);
/// Writes the entry's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyCustom const& custom);
/// Writes the entry's exact debug text.
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyTemporary const& temporary);

Q_DECLARE_METATYPE(VeskBuddyContact)
Q_DECLARE_METATYPE(VeskBuddyMerged)
Q_DECLARE_METATYPE(VeskBuddyCustom)
Q_DECLARE_METATYPE(VeskBuddyTemporary)

#endif // VESKBUDDYCONTACT_H
