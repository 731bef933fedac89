#ifndef VESKBUDDYCONTACT_H
#define VESKBUDDYCONTACT_H

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

// One person on one account's contact list.
class VESK_DATA_EXPORT VeskBuddyContact : public VeskBuddy
{
public:
    VeskBuddyContact();
    VeskBuddyContact(VeskBuddyContact const& other) = default;
    VeskBuddyContact(VeskBuddy const& other);
    VeskBuddyContact(VeskAccountConnection* account, QString const& id, QString const& display,
                     VeskBuddyType const& type, VeskPresence const& presence,
                     VeskSubscriptionType const& subscription);
    VeskBuddyContact& operator=(VeskBuddyContact const& other) = default;

    // The contact's record, where the protocol code keeps presence,
    // resources and avatar paths current; null for an invalid handle.
    VeskBuddyContactPrivate* data() const;

    bool isValid() const override;
    // The name given at construction, or the id when that is empty.
    QString getDisplay() const override;

    QString getId() const;
    VeskAccountConnection* getAccount() const;
    QString getTypeId() const;
    VeskPresence getPresence() const;
    // The subscription's icon when it has one, otherwise the presence's.
    QString getPresenceIcon() const;
    VeskSubscriptionType getSubscription() const;
    QList<VeskBuddyResource> getResources() const;
    // The resource of greatest priority, the first of equals; invalid when
    // no resource has a type.
    VeskBuddyResource getActiveResource() const;
    // The local avatar when it is set, otherwise the server's.
    QString getAvatarPath() const;
    QString getLocalAvatarPath() const;
    QString getServerAvatarPath() const;
    // The fields a contact of this kind may have, and this contact's values.
    QList<VeskField> getAvailableExtraInfo() const;
    QList<VeskField> getExtraInfo() const;
    void setFieldValues(QList<VeskField> const& values);
    VeskArg getAttrib(QString name) const;
    QHash<QString, VeskArg> getAttribs() const;
    void setAttribs(QHash<QString, VeskArg> const& attribs);
    VeskBuddy getParent() const;
};

// Contacts of several accounts shown as one entry. The first contact speaks
// for the entry; the others only answer questions about accounts.
class VESK_DATA_EXPORT VeskBuddyMerged : public VeskBuddy
{
public:
    VeskBuddyMerged();
    VeskBuddyMerged(VeskBuddyMerged const& other) = default;
    VeskBuddyMerged(VeskBuddy const& other);
    // An empty name becomes the first contact's id.
    VeskBuddyMerged(QString const& name, QList<VeskBuddyContact> const& contacts);
    VeskBuddyMerged& operator=(VeskBuddyMerged const& other) = default;

    VeskBuddyMergedPrivate* data() const;

    QString getDisplay() const override;
    QString getId() const;
    VeskPresence getPresence() const;
    QString getAvatarPath() const;
    QList<VeskBuddyResource> getResources() const;
    // One entry per contact, in order, repeats and null pointers included.
    QList<VeskAccountConnection*> getAccounts() const;
    VeskBuddyContact getContactForAccount(VeskAccountConnection* account) const;
    bool containsContact(VeskBuddyContact const& contact) const;
    VeskBuddy getParent() const;

private:
    VeskBuddyContact first() const;
};

// An entry of a sub-kind defined by its owner, described by strings and free
// attributes.
class VESK_DATA_EXPORT VeskBuddyCustom : public VeskBuddy
{
public:
    VeskBuddyCustom();
    VeskBuddyCustom(VeskBuddyCustom const& other) = default;
    VeskBuddyCustom(VeskBuddy const& other);
    VeskBuddyCustom(QString const& name, QString const& subType, QString const& ownerId,
                    QHash<QString, VeskArg> const& attribs, QString const& description,
                    QString const& presenceIconPath, QString const& avatarPath);
    VeskBuddyCustom& operator=(VeskBuddyCustom const& other) = default;

    VeskBuddyCustomPrivate* data() const;

    QString getOwnerId() const;
    QString getSubType() const;
    QString getDescription() const;
    QString getPresenceIconPath() const;
    QString getAvatarPath() const;
    QHash<QString, VeskArg> getAttribs() const;
    void setAttribs(QHash<QString, VeskArg> const& attribs);
    VeskBuddy getParent() const;
};

// Someone who is not on the list, reached through an account. Its name is
// its id.
class VESK_DATA_EXPORT VeskBuddyTemporary : public VeskBuddy
{
public:
    VeskBuddyTemporary();
    VeskBuddyTemporary(VeskBuddyTemporary const& other) = default;
    VeskBuddyTemporary(VeskBuddy const& other);
    // Does not add the entry to group: that takes group.addBuddy().
    VeskBuddyTemporary(VeskAccountConnection* account, QString const& id,
                       VeskPresence const& presence, VeskBuddyGroup const& group);
    VeskBuddyTemporary& operator=(VeskBuddyTemporary const& other) = default;

    VeskBuddyTemporaryPrivate* data() const;

    VeskAccountConnection* getAccount() const;
    QString getId() const;
    VeskPresence getPresence() const;
    VeskBuddyGroup getGroup() const;
    QList<VeskBuddyResource> getResources() const;
};

// The kind record of a contact. The protocol code writes presence,
// resources and the avatar paths here; every handle sees the change at once.
// parent is kept by the containers' addBuddy and removeBuddy.
class VESK_DATA_EXPORT VeskBuddyContactPrivate
{
public:
    VeskBuddyContactPrivate(VeskAccountConnection* account, QString const& id,
                            VeskBuddyType const& buddyType, VeskPresence const& presence,
                            VeskSubscriptionType const& subscription);
    ~VeskBuddyContactPrivate();

    VeskAccountConnection* account;
    VeskBuddyType buddyType;
    QString id;
    VeskPresence presence;
    VeskSubscriptionType subscription;
    QList<VeskBuddyResource> resources;
    // Free for the protocol code; the library only initialises it.
    VeskBuddyResource resource;
    QString serverAvatarPath;
    QString localAvatarPath;
    VeskBuddy parent;
    QList<VeskField> extraInfo;
    QHash<QString, VeskArg> attribs;

private:
    Q_DISABLE_COPY(VeskBuddyContactPrivate)
};

class VESK_DATA_EXPORT VeskBuddyMergedPrivate
{
public:
    explicit VeskBuddyMergedPrivate(QList<VeskBuddyContact> const& contacts);
    ~VeskBuddyMergedPrivate();

    VeskBuddy parent;
    QList<VeskBuddyContact> contacts;

private:
    Q_DISABLE_COPY(VeskBuddyMergedPrivate)
};

class VESK_DATA_EXPORT VeskBuddyCustomPrivate
{
public:
    VeskBuddyCustomPrivate(QString const& subType, QString const& ownerId,
                           QHash<QString, VeskArg> const& attribs, QString const& description,
                           QString const& presenceIconPath, QString const& avatarPath);
    ~VeskBuddyCustomPrivate();

    // For the owner of the entry; the library never takes it.
    QMutex mutex;
    VeskBuddy parent;
    QString description;
    QString presenceIconPath;
    QString avatarPath;
    QString subType;
    QString ownerId;
    QHash<QString, VeskArg> attribs;

private:
    Q_DISABLE_COPY(VeskBuddyCustomPrivate)
};

// The protocol code keeps resources current here.
class VESK_DATA_EXPORT VeskBuddyTemporaryPrivate
{
public:
    VeskBuddyTemporaryPrivate(VeskAccountConnection* account, QString const& id,
                              VeskPresence const& presence, VeskBuddyGroup const& group);
    ~VeskBuddyTemporaryPrivate();

    VeskAccountConnection* account;
    QString id;
    VeskPresence presence;
    VeskBuddyGroup group;
    QList<VeskBuddyResource> resources;

private:
    Q_DISABLE_COPY(VeskBuddyTemporaryPrivate)
};

VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyContact const& contact);
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyMerged const& merged);
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyCustom const& custom);
VESK_DATA_EXPORT QDebug operator<<(QDebug dbg, VeskBuddyTemporary const& temporary);

Q_DECLARE_METATYPE(VeskBuddyContact)
Q_DECLARE_METATYPE(VeskBuddyMerged)
Q_DECLARE_METATYPE(VeskBuddyCustom)
Q_DECLARE_METATYPE(VeskBuddyTemporary)

#endif // VESKBUDDYCONTACT_H
