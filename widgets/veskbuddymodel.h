#ifndef VESKBUDDYMODEL_H
#define VESKBUDDYMODEL_H

/// \file
/// VeskBuddyModel, the contact list as an item model for Qt's views.

#include "veskwidgets_global.h"

#include <veskbuddy.h>
#include <veskbuddygroup.h>
#include <veskpresence.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QList>
#include <QtCore/QMetaType>

class VeskBuddyModelPrivate;

/// An entry handle as the value of VeskBuddyModel::EntryRole:
/// qvariant_cast<VeskBuddyModelEntry>(index.data(VeskBuddyModel::EntryRole)).buddy
struct VeskBuddyModelEntry
{
    /// The entry the row shows.
    VeskBuddy buddy;
};
Q_DECLARE_METATYPE(VeskBuddyModelEntry)

/// The contact list as a tree for Qt's item views: the groups at the top,
/// their entries below them, and the entries of a meta-contact below it.
/// Merged, custom and temporary entries are leaves. One column.
///
/// Groups are kept sorted by groupLessThan(); the entries of a container by
/// presence, higher priority first (a meta-contact ranks as its best
/// contact, entries without a presence as priority 0), then by name ignoring
/// case, then in the order they came.
///
/// The contact list tells nobody about changes, so the model makes them
/// itself: every operation below changes the contact list through its own
/// operations and tells the views with the exact row signals. Changes made
/// behind the model's back show after refresh(), which resets the model.
///
/// The model holds handles, never takes a contact list apart: containers and
/// their children keep each other alive until their owner separates them.
class VESK_WIDGETS_EXPORT VeskBuddyModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    /// The roles the model answers beyond Qt::DisplayRole and Qt::DecorationRole.
    enum Role {
        /// A VeskBuddyModelEntry with the entry's handle.
        EntryRole = Qt::UserRole + 1,
        /// The id of the entry's presence (QString); null without one.
        PresenceRole,
        /// The entry's unread message count (int).
        UnreadRole,
        /// The entry's kind, a VeskBuddy::Type (int).
        KindRole
    };

    /// An empty model owned by parent. Use it from the thread it lives in, like any item model.
    explicit VeskBuddyModel(QObject* parent = nullptr);
    /// Leaves the contact list as it is.
    ~VeskBuddyModel() override;

    /// The top-level groups, in the model's order.
    QList<VeskBuddyGroup> groups() const;
    /// Replaces every group at once (a reset).
    void setGroups(QList<VeskBuddyGroup> const& groups);
    /// Shows a group with its entries; false for an invalid group or one the
    /// model shows already.
    bool addGroup(VeskBuddyGroup const& group);
    /// Stops showing a group; the group itself is left as it is.
    bool removeGroup(VeskBuddyGroup const& group);

    /// Adds entry to container (a group or meta-contact the model shows)
    /// with the container's addBuddy(). An entry the model shows already is
    /// moved instead (moveBuddy()). False when the contact list refuses.
    bool addBuddy(VeskBuddy const& container, VeskBuddy const& entry);
    /// The group's meta-contact of that name, made and shown when it is new;
    /// an invalid one when the model does not show the group.
    VeskBuddyMeta addMeta(VeskBuddyGroup const& group, QString const& name);
    /// Takes an entry out of its container and clears its link to it.
    bool removeBuddy(VeskBuddy const& entry);
    /// Moves an entry the model shows into another container it shows
    /// (a meta-contact only into a group). Entries whose old container the
    /// contact list does not tell are taken out of it first.
    bool moveBuddy(VeskBuddy const& entry, VeskBuddy const& container);
    /// Sets the presence of a contact or temporary contact, and moves the
    /// rows that show it to their new place.
    bool setPresence(VeskBuddy const& entry, VeskPresence const& presence);
    /// Sets the entry's unread count and updates the rows that show it; false for an invalid
    /// entry.
    bool setUnreadCount(VeskBuddy const& entry, int count);
    /// Reads every shown group's entries again.
    void refresh();

    /// The first row that shows entry, or an invalid index.
    QModelIndex indexOf(VeskBuddy const& entry) const;
    /// The entry a row shows; an invalid handle for an invalid index.
    VeskBuddy entry(QModelIndex const& index) const;

    ///@{
    /// The item model interface: one column, groups at the top level.
    QModelIndex index(int row, int column, QModelIndex const& parent = QModelIndex()) const override;
    QModelIndex parent(QModelIndex const& child) const override;
    int rowCount(QModelIndex const& parent = QModelIndex()) const override;
    int columnCount(QModelIndex const& parent = QModelIndex()) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(QModelIndex const& index) const override;
    QHash<int, QByteArray> roleNames() const override;
    ///@}

private:
    friend class VeskBuddyModelPrivate;
    VeskBuddyModelPrivate* const d;
};

#endif // VESKBUDDYMODEL_H
